// The keys of the information file that can be set by name.
#pragma once

#include "care/PackageEditor.h"

namespace care {

/// A key with the section that holds it.
struct KeyName {
    std::wstring section;
    std::wstring key;
};

/// "KEY" of [FILEINFO] or "SECTION/KEY", spelled as the format has it. Throws Refusal for a key that the
/// format does not have and for a section that the package does not have.
KeyName FindKey(const PackageEditor& editor, const std::wstring& name);

} // namespace care
