#include "mxovshare.h"

#include "ini/IniStore.h"

namespace mxovshare {
namespace {

// Nothing but want of memory can go wrong below; callers get what a missing file gives.
template <typename Action>
auto Guarded(Action action) noexcept -> decltype(action()) {
    try {
        return action();
    } catch (...) {
        return decltype(action())();
    }
}

} // namespace

std::wstring INIFile::GetKeyValueFromINI(std::wstring section, std::wstring key, std::wstring file) {
    return Guarded([&] { return IniStore::Instance().Value(section, key, file); });
}

void INIFile::AddRecordToINI(std::wstring section, std::wstring key, std::wstring value, std::wstring file) {
    Guarded([&] { IniStore::Instance().SetValue(section, key, value, file); });
}

std::vector<std::wstring> INIFile::GetSectionNamesFromINI(std::wstring prefix, std::wstring file) {
    return Guarded([&] { return IniStore::Instance().SectionNames(prefix, file); });
}

int INIFile::GetLastIndexOfSectionFromINI(std::wstring prefix, std::wstring file) {
    return Guarded([&] { return IniStore::Instance().LastIndex(prefix, file); });
}

void INIFile::RemoveSectionFromINI(std::wstring section, std::wstring file) {
    Guarded([&] { IniStore::Instance().RemoveSection(section, file); });
}

} // namespace mxovshare
