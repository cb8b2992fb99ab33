#include "versions/VersionLimits.h"

#include "versions/Version.h"

#include <algorithm>

namespace viewer {

namespace {

// Of the user's calendar; 0 for a time that it does not have.
unsigned DayOf(const std::wstring& id) {
    const FILETIME time = TimeOfId(id);
    SYSTEMTIME utc = {};
    SYSTEMTIME local = {};
    if (!FileTimeToSystemTime(&time, &utc) || !SystemTimeToTzSpecificLocalTime(nullptr, &utc, &local)) {
        return 0;
    }
    return (local.wYear * 16U + local.wMonth) * 32U + local.wDay;
}

} // namespace

std::vector<std::wstring> SurplusVersions(const std::vector<std::wstring>& ids, std::size_t most) {
    std::vector<std::wstring> surplus;
    const std::size_t older = ids.size() - std::min(ids.size(), most);
    for (std::size_t i = 0; i + 1 < older; ++i) {
        if (DayOf(ids[i]) == DayOf(ids[i + 1])) {
            surplus.push_back(ids[i]);
        }
    }
    return surplus;
}

} // namespace viewer
