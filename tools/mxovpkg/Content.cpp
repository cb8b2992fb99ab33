#include "Content.h"

#include "Progress.h"
#include "Report.h"

#include <common/Utf8.h>

#include <cwchar>

#include <mxovchange.h>

std::optional<care::PackageContent> ReadPackageContent(const std::wstring& path) {
    care::PackageContent content;
    Progress progress(L"Reading");
    const mxovshare::PackageResult result =
        mxovshare::ReadContent(path, content.entries, content.sections, &progress);
    if (!result.ok) {
        PrintFailure(result);
        return {};
    }
    return content;
}

std::optional<care::Texts> ReadTexts(const std::wstring& path, const std::vector<std::wstring>& names) {
    care::Texts texts;
    const mxovshare::PackageResult result = mxovshare::ReadContentFiles(
        path, names, care::kLargestComparedText,
        [&texts](const std::wstring& name, std::string bytes) { texts.emplace(name, std::move(bytes)); });
    if (!result.ok) {
        PrintFailure(result);
        return {};
    }
    return texts;
}

std::wstring Decoded(std::string_view bytes) {
    std::wstring text = common::FromUtf8(bytes);
    if (common::ToUtf8(text) != bytes) {
        text.clear();
        for (const char byte : bytes) {
            text += static_cast<unsigned char>(byte);
        }
    }
    return text;
}

std::wstring Escaped(const std::wstring& text) {
    std::wstring escaped;
    for (const wchar_t unit : text) {
        const bool isControl = (unit < 0x20 && unit != L'\t') || (unit >= 0x7F && unit < 0xA0) ||
                               unit == 0x2028 || unit == 0x2029;
        if (!isControl) {
            escaped += unit;
            continue;
        }
        wchar_t code[8] = {};
        std::swprintf(code, std::size(code), L"\\u%04X", static_cast<unsigned>(unit));
        escaped += code;
    }
    return escaped;
}
