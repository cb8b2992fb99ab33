#include "ZipEnd.h"

#include "PackageError.h"
#include "ZipFormat.h"

#include <algorithm>
#include <optional>

namespace mxovshare {

using namespace zip;

namespace {

constexpr std::uint64_t kLongestComment = 0xFFFF;

struct EndRecord {
    std::uint64_t position = 0;
    std::uint32_t disk = 0;
    std::uint32_t directoryDisk = 0;
    std::uint64_t diskCount = 0;
    DirectoryPlace directory;
};

// The last end record whose comment reaches exactly to the end of the file.
EndRecord ReadEndRecord(const ByteSource& source) {
    const std::uint64_t size = source.Size();
    if (size < kEndSize) {
        throw PackageError("the file is too short to be a package");
    }
    std::vector<std::uint8_t> tail(std::min(size, kEndSize + kLongestComment));
    source.Read(size - tail.size(), tail);
    for (std::size_t at = tail.size() - kEndSize + 1; at-- > 0;) {
        FieldReader fields(Bytes(tail).subspan(at));
        if (fields.U32() != kEndSignature) {
            continue;
        }
        EndRecord end;
        end.position = size - tail.size() + at;
        end.disk = fields.U16();
        end.directoryDisk = fields.U16();
        end.diskCount = fields.U16();
        end.directory.count = fields.U16();
        end.directory.size = fields.U32();
        end.directory.offset = fields.U32();
        const std::size_t comment = fields.U16();
        if (comment == fields.Left()) {
            return end;
        }
    }
    throw PackageError("the file is not a package, or its end is missing");
}

// Position of the ZIP64 end record, when the locator in front of the end record names one.
std::optional<std::uint64_t> FindZip64End(const ByteSource& source, std::uint64_t endPosition) {
    if (endPosition < kZip64LocatorSize) {
        return {};
    }
    std::vector<std::uint8_t> bytes(kZip64LocatorSize);
    source.Read(endPosition - kZip64LocatorSize, bytes);
    FieldReader fields(bytes);
    if (fields.U32() != kZip64LocatorSignature) {
        return {};
    }
    const std::uint32_t disk = fields.U32();
    const std::uint64_t position = fields.U64();
    const std::uint32_t disks = fields.U32();
    if (disk != 0 || disks > 1) {
        throw PackageError("the package is spread over several disks");
    }
    const std::uint64_t locator = endPosition - kZip64LocatorSize;
    if (locator < kZip64EndSize || position > locator - kZip64EndSize) {
        throw PackageError("the ZIP64 end record lies outside the file");
    }
    return position;
}

EndRecord ReadZip64End(const ByteSource& source, std::uint64_t position, std::uint64_t locator) {
    std::vector<std::uint8_t> bytes(kZip64EndSize);
    source.Read(position, bytes);
    FieldReader fields(bytes);
    if (fields.U32() != kZip64EndSignature) {
        throw PackageError("the ZIP64 end record is missing");
    }
    if (fields.U64() != locator - position - 12) {
        throw PackageError("the ZIP64 end record has a wrong size");
    }
    fields.Skip(4);
    EndRecord end;
    end.position = position;
    end.disk = fields.U32();
    end.directoryDisk = fields.U32();
    end.diskCount = fields.U64();
    end.directory.count = fields.U64();
    end.directory.size = fields.U64();
    end.directory.offset = fields.U64();
    return end;
}

// A field of the plain record is either full or equals that of the ZIP64 record.
void CheckAgreement(const EndRecord& plain, const EndRecord& wide) {
    const auto agree = [](std::uint64_t narrow, std::uint64_t full, std::uint64_t value) {
        return narrow == full || narrow == value;
    };
    if (!agree(plain.directory.count, kFull16, wide.directory.count) ||
        !agree(plain.directory.size, kFull32, wide.directory.size) ||
        !agree(plain.directory.offset, kFull32, wide.directory.offset)) {
        throw PackageError("the two end records contradict each other");
    }
}

} // namespace

DirectoryPlace FindDirectory(const ByteSource& source) {
    EndRecord end = ReadEndRecord(source);
    if (const auto position = FindZip64End(source, end.position)) {
        const EndRecord wide = ReadZip64End(source, *position, end.position - kZip64LocatorSize);
        CheckAgreement(end, wide);
        end = wide;
    }
    if (end.disk != 0 || end.directoryDisk != 0 || end.diskCount != end.directory.count) {
        throw PackageError("the package is spread over several disks");
    }
    const DirectoryPlace& place = end.directory;
    if (place.offset > end.position || place.size != end.position - place.offset) {
        throw PackageError("the directory does not end where the end record says");
    }
    if (place.count > place.size / kCentralSize) {
        throw PackageError("the end record counts more entries than the directory holds");
    }
    return place;
}

} // namespace mxovshare
