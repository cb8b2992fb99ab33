// Any bytes as a package: the reader ends with a PackageError or with entries whose names may be unpacked and
// whose content is as long as stated.
#include "MemoryFile.h"
#include "zip/EntryName.h"
#include "zip/EntryReader.h"
#include "zip/PackageError.h"
#include "zip/ZipDirectory.h"

#include <cstdlib>

using namespace mxovshare;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const MemoryFile file(std::string_view(reinterpret_cast<const char*>(data), size));
    ZipLimits limits;
    limits.freeExpansion = 1 << 20;
    try {
        for (const ZipEntry& entry : ReadZipDirectory(file, limits)) {
            std::uint64_t unpacked = 0;
            try {
                ReadEntry(file, entry, [&unpacked](Bytes piece) { unpacked += piece.size(); });
                if (unpacked != entry.size) {
                    std::abort();
                }
            } catch (const PackageError&) {
                if (unpacked > entry.size) {
                    std::abort();
                }
            }
            if (!EntryNameFault(entry.name).empty()) {
                std::abort();
            }
        }
    } catch (const PackageError&) {
    }
    return 0;
}
