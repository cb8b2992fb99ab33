// How findings are made.
#pragma once

#include "care/check/Findings.h"

namespace care {

/// Where a finding was made: a key of a section of the information file.
struct FindingPlace {
    std::wstring section;
    std::wstring key;
};

/// A finding with the severity and the name that its text has.
[[nodiscard]] Finding MakeFinding(FindingText text, FindingPlace place, std::wstring document,
                                  std::vector<std::wstring> inserts);

} // namespace care
