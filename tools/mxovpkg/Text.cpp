#include "Commands.h"
#include "output/Output.h"
#include "output/Report.h"
#include "PackageAccess.h"

#include <common/InformationFile.h>
#include <common/Paths.h>
#include <common/Utf8.h>

#include <algorithm>
#include <cwchar>

#include <mxovchange.h>

namespace {

using mxovshare::PackageEntry;

constexpr std::uint64_t kLargestPrintedText = std::uint64_t{16} << 20;

bool IsInformation(const std::wstring& name) {
    return common::IsSamePath(name, common::kInformationFile) ||
           common::IsSamePath(name, common::kPrivateInformationFile);
}

// Sections in their order, since that is the order of the documents; keys by name, since theirs means
// nothing.
void PrintSections(const care::Sections& sections) {
    for (const care::Section& section : sections) {
        PrintLine(L"[" + Escaped(section.name) + L"]");
        std::vector<const std::pair<std::wstring, std::wstring>*> values;
        std::ranges::transform(section.values, std::back_inserter(values),
                               [](const auto& pair) { return &pair; });
        std::ranges::sort(values, care::NameLess(),
                          [](const auto* pair) -> const std::wstring& { return pair->first; });
        for (const auto* pair : values) {
            PrintLine(Escaped(pair->first).append(L"=").append(Escaped(pair->second)));
        }
        PrintLine(L"");
    }
}

bool IsText(const std::string& bytes) {
    const auto isBinary = [](char unit) {
        return static_cast<unsigned char>(unit) < 0x20 && unit != '\t' && unit != '\r' && unit != '\n';
    };
    return std::ranges::none_of(bytes, isBinary) && common::ToUtf8(common::FromUtf8(bytes)) == bytes;
}

void PrintContent(const std::wstring& name, const std::string& bytes) {
    if (!IsText(bytes)) {
        return;
    }
    const std::wstring text = common::FromUtf8(bytes);
    std::wstring printed = L"-- " + Escaped(name) + L"\n";
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t end = std::min(text.find_first_of(L"\r\n", begin), text.size());
        printed += Escaped(text.substr(begin, end - begin)) + L"\n";
        begin = end + (text.compare(end, 2, L"\r\n") == 0 ? 2 : 1);
    }
    PrintLine(printed);
}

void PrintHeader(const PackageEntry& entry) {
    wchar_t checksum[16] = {};
    std::swprintf(checksum, std::size(checksum), L"%08x", static_cast<unsigned>(entry.crc32));
    PrintLine(L"== " + Escaped(entry.name) + L", " + std::to_wstring(entry.size) + L" bytes, CRC-32 " +
              checksum);
}

} // namespace

int Text(const Arguments& arguments) {
    std::optional<care::PackageContent> content = ReadPackage(arguments[0]);
    if (!content) {
        return kFailed;
    }
    std::erase_if(content->entries,
                  [](const PackageEntry& entry) { return entry.isFolder || IsInformation(entry.name); });
    std::ranges::sort(content->entries, care::NameLess(), &PackageEntry::name);
    PrintSections(content->sections);
    std::vector<std::wstring> texts;
    for (const PackageEntry& entry : content->entries) {
        PrintHeader(entry);
        if (entry.size > 0 && entry.size <= kLargestPrintedText) {
            texts.push_back(entry.name);
        }
    }
    PrintLine(L"");
    const mxovshare::PackageResult result =
        mxovshare::ReadContentFiles(arguments[0], texts, kLargestPrintedText, PrintContent);
    if (!result.ok) {
        PrintFailure(result);
    }
    return result.ok ? kDone : kFailed;
}
