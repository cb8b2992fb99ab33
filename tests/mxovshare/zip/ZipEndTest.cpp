#include "zip/ZipEnd.h"

#include "MemoryFile.h"
#include "zip/PackageError.h"
#include "ZipForge.h"

#include <gtest/gtest.h>

using namespace mxovshare;

namespace {

// What an end record says of the directory.
struct Place {
    std::uint64_t count;
    std::uint64_t size;
    std::uint64_t offset;
};

constexpr Place kTrue = {1, 51, 42}; // of "a.txt" with 7 bytes

// A package of one file whose end has a ZIP64 record before the plain one.
std::string WideZip(const Place& plain, const Place& wide = kTrue) {
    std::string zip = ForgeZip({MakeEntry("a.txt")});
    zip.resize(zip.rfind("PK\5\6"));
    const std::uint64_t position = zip.size();
    zip += "PK\6\6" + Number(44, 8) + Number(45, 2) + Number(45, 2) + Number(0, 8) + Number(wide.count, 8) +
           Number(wide.count, 8) + Number(wide.size, 8) + Number(wide.offset, 8);
    zip += "PK\6\7" + Number(0, 4) + Number(position, 8) + Number(1, 4);
    return zip + "PK\5\6" + Number(0, 4) + Number(plain.count, 2) + Number(plain.count, 2) +
           Number(plain.size, 4) + Number(plain.offset, 4) + Number(0, 2);
}

// What is wrong with the end of a package; empty when nothing is.
std::string FaultOf(const std::string& zip) {
    try {
        const DirectoryPlace place = FindDirectory(MemoryFile(zip));
        EXPECT_EQ(place.count, kTrue.count);
        EXPECT_EQ(place.size, kTrue.size);
        EXPECT_EQ(place.offset, kTrue.offset);
        return {};
    } catch (const PackageError& error) {
        return error.what();
    }
}

TEST(ZipEnd, AFieldOfThePlainRecordIsFullOrThatOfTheOther) {
    EXPECT_EQ(FaultOf(WideZip(kTrue)), "");
    EXPECT_EQ(FaultOf(WideZip({0xFFFF, 0xFFFFFFFF, 0xFFFFFFFF})), "");
    EXPECT_EQ(FaultOf(WideZip({kTrue.count, 0xFFFFFFFF, kTrue.offset})), "");
}

TEST(ZipEnd, RecordsThatContradictEachOtherAreRefused) {
    for (const Place& plain :
         {Place{kTrue.count + 1, kTrue.size, kTrue.offset}, Place{kTrue.count, kTrue.size + 1, kTrue.offset},
          Place{kTrue.count, kTrue.size, kTrue.offset + 1}, Place{0, 0, 0}}) {
        EXPECT_EQ(FaultOf(WideZip(plain)), "the two end records contradict each other");
    }
    EXPECT_NE(FaultOf(WideZip({0xFFFF, 0xFFFFFFFF, 0xFFFFFFFF}, {2, kTrue.size, kTrue.offset})), "");
}

} // namespace
