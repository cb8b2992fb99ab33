// Packages made field by field, so that any field can be made to lie.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

struct ForgedHeader {
    std::string name;
    std::uint16_t flags = 0;
    std::uint16_t method = 0;
    std::uint32_t crc32 = 0;
    std::uint32_t packedSize = 0;
    std::uint32_t size = 0;
    std::string extra;
};

struct ForgedEntry {
    ForgedHeader local;
    ForgedHeader central;
    std::string data; ///< as it stands in the package, a descriptor behind it included
    std::uint32_t attributes = 0;
    std::uint16_t disk = 0;
    std::optional<std::uint32_t> offset; ///< offset of the header in the directory
};

/// An honest entry: stored, or deflated. A name that ends in "/" makes a folder.
ForgedEntry MakeEntry(const std::string& name, const std::string& content = "content", bool deflated = false);

struct ForgedEnd {
    int countError = 0;
    int sizeError = 0;
    int offsetError = 0;
    std::uint16_t disk = 0;
    std::string comment = {};
};

/// The whole package.
std::string ForgeZip(const std::vector<ForgedEntry>& entries, const ForgedEnd& end = {});

/// Little-endian bytes of a number.
std::string Number(std::uint64_t value, int bytes);
