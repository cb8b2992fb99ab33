#include "Commands.h"
#include "output/LineText.h"
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
        for (const auto* pair : care::ValuesByKey(section)) {
            PrintLine(Escaped(pair->first).append(L"=").append(Escaped(pair->second)));
        }
        PrintLine(L"");
    }
}

// Takes whole characters, and no half of a line end, off the front of `bytes`: as text they take several
// times the memory.
std::string_view TakePiece(std::string_view& bytes) {
    constexpr std::size_t kLength = std::size_t{64} << 10;
    constexpr std::size_t kLongestCharacter = 4;
    const auto isInside = [&bytes](std::size_t at) {
        return (static_cast<unsigned char>(bytes[at]) & 0xC0) == 0x80 || bytes.substr(at - 1, 2) == "\r\n";
    };
    std::size_t length = std::min(kLength, bytes.size());
    while (length < bytes.size() && length < kLength + kLongestCharacter && isInside(length)) {
        ++length;
    }
    const std::string_view piece = bytes.substr(0, length);
    bytes.remove_prefix(length);
    return piece;
}

bool IsText(std::string_view bytes) {
    const auto isBinary = [](char unit) {
        return static_cast<unsigned char>(unit) < 0x20 && unit != '\t' && unit != '\r' && unit != '\n';
    };
    while (!bytes.empty()) {
        const std::string_view piece = TakePiece(bytes);
        if (std::ranges::any_of(piece, isBinary) || common::ToUtf8(common::FromUtf8(piece)) != piece) {
            return false;
        }
    }
    return true;
}

// Line ends become "\n".
std::wstring Printable(const std::wstring& text) {
    std::wstring printable;
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t end = std::min(text.find_first_of(L"\r\n", begin), text.size());
        printable += Escaped(text.substr(begin, end - begin));
        printable += end < text.size() ? L"\n" : L"";
        begin = end + (text.compare(end, 2, L"\r\n") == 0 ? 2 : 1);
    }
    return printable;
}

void PrintContent(const std::wstring& name, std::string_view bytes) {
    if (!IsText(bytes)) {
        return;
    }
    PrintLine(L"-- " + Escaped(name));
    const bool isOpen = !bytes.ends_with('\n') && !bytes.ends_with('\r');
    while (!bytes.empty()) {
        PrintText(Printable(common::FromUtf8(TakePiece(bytes))));
    }
    PrintText(isOpen ? L"\n\n" : L"\n");
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
