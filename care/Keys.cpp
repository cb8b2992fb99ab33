#include "care/Keys.h"

#include "common/Paths.h"

#include <package/PackageInformation.h>

#include <algorithm>
#include <span>

using namespace docview;

namespace care {

namespace {

constexpr const wchar_t* kFileInfoKeys[] = {
    inikey::kVersion,        inikey::kCadPath,          inikey::kCadTime,
    inikey::kCadDescription, inikey::kSetupSheets,      inikey::kSetupSheetsDescription,
    inikey::kGCode,          inikey::kGCodeDescription, inikey::kThumbnail};
constexpr const wchar_t* kDocumentKeys[] = {inikey::kIsReferenced, inikey::kDescription, inikey::kTimestamp,
                                            inikey::kFilePath};
constexpr const wchar_t* kHistoryKeys[] = {inikey::kOperation, inikey::kTime, inikey::kBy, inikey::kRemarks};

std::span<const wchar_t* const> KeysOfSection(const std::wstring& section) {
    if (common::IsSamePath(section, inikey::kFileInfo)) {
        return kFileInfoKeys;
    }
    if (HasPrefix(section, inikey::kAdditionalPrefix)) {
        return kDocumentKeys;
    }
    return HasPrefix(section, inikey::kHistoryPrefix) ? kHistoryKeys : std::span<const wchar_t* const>();
}

} // namespace

KeyName FindKey(const PackageEditor& editor, const std::wstring& name) {
    const std::size_t slash = name.find(L'/');
    const std::wstring section = slash == std::wstring::npos ? inikey::kFileInfo : name.substr(0, slash);
    const std::wstring key = slash == std::wstring::npos ? name : name.substr(slash + 1);
    const auto keys = KeysOfSection(section);
    const auto known =
        std::ranges::find_if(keys, [&key](const wchar_t* other) { return common::IsSamePath(other, key); });
    if (known == keys.end()) {
        throw Refusal{L"the information file has no key \"" + name + L"\""};
    }
    if (common::IsSamePath(section, inikey::kFileInfo)) {
        return {inikey::kFileInfo, *known};
    }
    const std::optional<Section> present = editor.Information().Find(section);
    if (!present) {
        throw Refusal{L"the package has no section \"" + section + L"\""};
    }
    return {present->name, *known};
}

} // namespace care
