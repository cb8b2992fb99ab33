#include "FolderComparison.h"

#include "mxovpackage.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <optional>

namespace {

using Files = std::filesystem::recursive_directory_iterator;

constexpr std::array<std::uint32_t, 256> MakeTable() {
    std::array<std::uint32_t, 256> table = {};
    for (std::uint32_t byte = 0; byte < 256; ++byte) {
        std::uint32_t value = byte;
        for (int bit = 0; bit < 8; ++bit)
            value = (value >> 1) ^ ((value & 1) != 0 ? 0xEDB88320U : 0);
        table[byte] = value;
    }
    return table;
}

// The checksum that packages keep of every file; nothing when the file cannot be read.
std::optional<std::uint32_t> Checksum(const std::filesystem::path& path) {
    static constexpr std::array<std::uint32_t, 256> kTable = MakeTable();
    std::ifstream file(path, std::ios::binary);
    if (!file)
        return std::nullopt;
    std::vector<char> block(1 << 16);
    std::uint32_t checksum = 0xFFFFFFFF;
    do {
        file.read(block.data(), static_cast<std::streamsize>(block.size()));
        for (std::streamsize i = 0; i < file.gcount(); ++i)
            checksum =
                (checksum >> 8) ^
                kTable[(checksum ^ static_cast<unsigned char>(block[static_cast<std::size_t>(i)])) & 0xFF];
    } while (file);
    return ~checksum;
}

bool IsSame(const std::filesystem::path& path, const mxovshare::PackageEntry& entry) {
    std::error_code error;
    return std::filesystem::file_size(path, error) == entry.size && !error && Checksum(path) == entry.crc32;
}

bool Differs(const std::wstring& folder, const std::wstring& packageFile) {
    std::vector<mxovshare::PackageEntry> entries;
    if (!mxovshare::ListPackage(packageFile, entries).ok)
        return true;
    std::erase_if(entries, [](const mxovshare::PackageEntry& entry) { return entry.isFolder; });
    const auto files =
        std::ranges::count_if(Files(folder), [](const auto& entry) { return entry.is_regular_file(); });
    return static_cast<std::size_t>(files) != entries.size() ||
           !std::ranges::all_of(entries, [&folder](const mxovshare::PackageEntry& entry) {
               return IsSame(folder + L"\\" + entry.name, entry);
           });
}

} // namespace

bool DiffersFromPackage(const std::wstring& folder, const std::wstring& packageFile) {
    try {
        return Differs(folder, packageFile);
    } catch (const std::filesystem::filesystem_error&) {
        return true;
    }
}

FILETIME LastWriteBelow(const std::wstring& folder) {
    FILETIME last = {};
    std::error_code ignored;
    for (const auto& entry : Files(folder, ignored)) {
        WIN32_FILE_ATTRIBUTE_DATA data = {};
        if (entry.is_regular_file(ignored) &&
            GetFileAttributesExW(entry.path().c_str(), GetFileExInfoStandard, &data) &&
            CompareFileTime(&data.ftLastWriteTime, &last) > 0)
            last = data.ftLastWriteTime;
    }
    return last;
}
