#include "JsonText.h"

#include "Report.h"

#include <common/Utf8.h>
#include <package/ItemText.h>

using namespace docview;

std::string JsonObject(const JsonMembers& members) {
    std::string text = "{";
    for (const auto& [name, value] : members) {
        text += text.size() > 1 ? ",\"" : "\"";
        text.append(name).append("\":").append(value);
    }
    return text + "}";
}

std::string JsonTime(const FILETIME& utc) {
    std::wstring text = FormatFileTime(utc);
    const std::size_t blank = text.find(L' ');
    if (blank != std::wstring::npos) {
        text[blank] = L'T';
    }
    return JsonString(text + L"Z");
}

JsonListing::JsonListing(const JsonMembers& members, const std::string& name) {
    std::string text = JsonObject(members);
    text.back() = ',';
    PrintText(common::FromUtf8(text + "\"" + name + "\":["));
}

void JsonListing::Print(const std::string& item) {
    PrintText(m_isFirst ? L"" : L",");
    PrintText(common::FromUtf8(item));
    m_isFirst = false;
}

void JsonListing::Next(const std::string& name) {
    PrintText(common::FromUtf8("],\"" + name + "\":["));
    m_isFirst = true;
}

void JsonListing::End(const JsonMembers& members) {
    const std::string text = JsonObject(members);
    PrintLine(common::FromUtf8((members.empty() ? "]" : "],") + text.substr(1)));
}
