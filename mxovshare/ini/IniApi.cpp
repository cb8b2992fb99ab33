#include "mxovshare.h"

#include "common/SystemError.h"
#include "host/MessageBoxes.h"
#include "ini/IniRetry.h"
#include "ini/IniStore.h"

namespace mxovshare {
namespace {

// Only std::bad_alloc can come from below; callers get what a missing file returns.
template <typename Action>
auto Guarded(Action action) noexcept -> decltype(action()) {
    try {
        return action();
    } catch (...) {
        return decltype(action())();
    }
}

void ReportRefusal(const std::wstring& file, DWORD error) {
    const std::wstring text = L"The information file \"" + file + L"\" could not be read: " +
                              common::SystemErrorText(error) +
                              L".\n\nIt was left as it is; your change was not made.";
    ShowError(text.c_str());
}

template <typename Action>
void Edit(const std::wstring& file, Action action) noexcept {
    Guarded([&] {
        const IniOutcome outcome = action(IniStore::Instance());
        if (outcome.firstRefused) {
            ReportRefusal(file, outcome.error);
        } else if (outcome.error != ERROR_SUCCESS && !outcome.refused) {
            ScheduleRetry();
        }
    });
}

} // namespace

std::wstring INIFile::GetKeyValueFromINI(std::wstring section, std::wstring key, std::wstring file) {
    return Guarded([&] { return IniStore::Instance().Value(section, key, file); });
}

void INIFile::AddRecordToINI(std::wstring section, std::wstring key, std::wstring value, std::wstring file) {
    Edit(file, [&](IniStore& store) { return store.SetValue(section, key, value, file); });
}

std::vector<std::wstring> INIFile::GetSectionNamesFromINI(std::wstring prefix, std::wstring file) {
    return Guarded([&] { return IniStore::Instance().SectionNames(prefix, file); });
}

int INIFile::GetLastIndexOfSectionFromINI(std::wstring prefix, std::wstring file) {
    return Guarded([&] { return IniStore::Instance().LastIndex(prefix, file); });
}

void INIFile::RemoveSectionFromINI(std::wstring section, std::wstring file) {
    Edit(file, [&](IniStore& store) { return store.RemoveSection(section, file); });
}

} // namespace mxovshare
