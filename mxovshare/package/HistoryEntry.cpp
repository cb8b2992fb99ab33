#include "package/HistoryEntry.h"

#include "common/NumberedSection.h"
#include "package/SaveAuthor.h"
#include "text/SystemText.h"

#include <algorithm>
#include <iterator>

namespace mxovshare {

IniValues NewHistoryEntry(const std::wstring& operation, const std::wstring& remarks) {
    return {
        {L"Operation", operation}, {L"Time", LocalTimeText()}, {L"By", UserName()}, {L"Remarks", remarks}};
}

void AddHistoryEntry(IniDocument& document, const IniValues& entry) {
    const std::u16string prefix = ToUtf16(kHistoryPrefix);
    const std::wstring section = common::NextSection(kHistoryPrefix, document.LastIndex(prefix), [&] {
        std::vector<std::wstring> names;
        std::ranges::transform(document.SectionNames(prefix), std::back_inserter(names), ToWide);
        return names;
    });
    for (const auto& [key, value] : entry) {
        document.SetValue(ToUtf16(section), ToUtf16(key), ToUtf16(value));
    }
}

} // namespace mxovshare
