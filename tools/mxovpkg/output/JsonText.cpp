#include "JsonText.h"

#include "Report.h"

#include <common/Utf8.h>
#include <package/ItemText.h>

using namespace docview;

std::string JsonObject(const std::vector<std::pair<std::string, std::string>>& members) {
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

void PrintJson(const std::string& json) {
    PrintLine(common::FromUtf8(json));
}
