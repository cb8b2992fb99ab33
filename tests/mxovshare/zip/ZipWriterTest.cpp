#include "zip/ZipWriter.h"

#include "MemoryFile.h"
#include "zip/EntryReader.h"
#include "zip/PackageError.h"
#include "zip/ZipDirectory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

using namespace mxovshare;

namespace {

std::string Random(std::size_t size) {
    std::mt19937 generator(7);
    std::string text(size, '\0');
    for (char& byte : text) {
        byte = static_cast<char>(generator());
    }
    return text;
}

std::string Text(std::size_t size) {
    std::mt19937 generator(7);
    std::string text;
    while (text.size() < size) {
        text += "N" + std::to_string(text.size()) + " G1 X" + std::to_string(generator() % 1000) + "\r\n";
    }
    text.resize(size);
    return text;
}

struct Item {
    std::string name;
    std::string content;
};

ZipItem Ranked(const std::string& name, std::size_t rank = 0) {
    return {.name = name, .modified = {}, .attributes = 0, .rank = rank};
}

void AddFile(ZipWriter& writer, const ZipItem& item, const std::string& content) {
    const MemoryFile file(content);
    const Bytes bytes(reinterpret_cast<const std::uint8_t*>(content.data()), content.size());
    writer.BeginFile(item, content.size());
    std::size_t done = 0;
    do {
        const std::size_t size = std::min(kDeflatePiece, bytes.size() - done);
        const std::size_t front = std::min(kDeflateDictionary, done);
        const Bytes piece = bytes.subspan(done, size);
        writer.AddPiece(PackPiece(piece, bytes.subspan(done - front, front), done + size == bytes.size()),
                        file);
        done += size;
    } while (done < bytes.size());
}

MemoryFile Pack(const std::vector<Item>& items, std::uint64_t wideFrom = 0xFFF00000) {
    MemoryFile file;
    ZipWriter writer(file, wideFrom);
    for (const Item& item : items) {
        AddFile(writer, Ranked(item.name), item.content);
    }
    writer.Finish();
    return file;
}

std::string Content(const ByteSource& file, const ZipEntry& entry) {
    return ReadWholeEntry(file, entry, entry.size);
}

void ExpectRoundTrip(const std::vector<Item>& items, std::uint64_t wideFrom = 0xFFF00000) {
    const MemoryFile file = Pack(items, wideFrom);
    const std::vector<ZipEntry> entries = ReadZipDirectory(file);
    ASSERT_EQ(entries.size(), items.size());
    for (std::size_t i = 0; i < items.size(); ++i) {
        EXPECT_EQ(entries[i].name, items[i].name);
        EXPECT_EQ(Content(file, entries[i]), items[i].content) << items[i].name;
    }
}

TEST(ZipWriter, RoundTripsEveryKindOfContent) {
    ExpectRoundTrip({{"empty", ""},
                     {"byte", "x"},
                     {"text", Text(100'000)},
                     {"random", Random(100'000)},
                     {"zeros", std::string(100'000, '\0')},
                     {"\xE5\x9B\xB3/\xF0\x9F\x94\xA7.nc", "G0"}});
    ExpectRoundTrip({});
}

TEST(ZipWriter, RoundTripsAroundThePiecesOfCompression) {
    for (const std::size_t size :
         {kDeflatePiece - 1, kDeflatePiece, kDeflatePiece + 1, 3 * kDeflatePiece + 5}) {
        ExpectRoundTrip({{"text", Text(size)}, {"random", Random(size)}});
    }
}

TEST(ZipWriter, CompressesOverTheEdgesOfPieces) {
    const std::string text = Text(2 * kDeflatePiece);
    const auto whole = ReadZipDirectory(Pack({{"a", text}}))[0].packedSize;
    const auto halves = ReadZipDirectory(Pack({{"a", text.substr(0, kDeflatePiece)}}))[0].packedSize +
                        ReadZipDirectory(Pack({{"a", text.substr(kDeflatePiece)}}))[0].packedSize;
    EXPECT_LT(whole, halves);
    EXPECT_LT(whole, text.size() / 3);
}

TEST(ZipWriter, NeverMakesContentLarger) {
    const MemoryFile file = Pack({{"random", Random(500'000)}, {"empty", ""}});
    for (const ZipEntry& entry : ReadZipDirectory(file)) {
        EXPECT_EQ(entry.method, 0);
        EXPECT_EQ(entry.packedSize, entry.size);
    }
    EXPECT_LT(file.Size(), 500'300u);
}

TEST(ZipWriter, NeverMakesWhatAReaderTakesForABomb) {
    std::vector<Item> items;
    items.reserve(40);
    for (int i = 0; i < 40; ++i) {
        items.push_back({"zeros" + std::to_string(i), std::string(2'000'000, '\0')});
    }
    const MemoryFile file = Pack(items);
    EXPECT_LT(file.Size(), 80'000'000u / 7);
    EXPECT_EQ(ReadZipDirectory(file).size(), 40u);
}

TEST(ZipWriter, PacksZerosAsSmallAsAReaderAllows) {
    for (const std::size_t size : {20'000, 100'000, 3'000'000, 90'000'000}) {
        const std::string zeros(size, '\0');
        const MemoryFile file = Pack({{"zeros", zeros}});
        const auto entries = ReadZipDirectory(file);
        EXPECT_LT(entries.at(0).packedSize, size / 150 + 5000) << size;
        EXPECT_EQ(Content(file, entries.at(0)), zeros) << size;
    }
}

TEST(ZipWriter, RepeatsNothingOfTheMachineThatPacked) {
    const std::vector<Item> items = {{"a", Text(5000)}, {"b", Random(5000)}};
    EXPECT_EQ(Pack(items).AllBytes(), Pack(items).AllBytes());
}

TEST(ZipWriter, WritesZip64WhereAFieldIsTooSmall) {
    const std::vector<Item> items = {
        {"small", "x"}, {"text", Text(5000)}, {"random", Random(5000)}, {"last", "y"}};
    ExpectRoundTrip(items, 3000);
    ExpectRoundTrip(items, 1);
}

TEST(ZipWriter, WritesMoreThan65535Entries) {
    MemoryFile file;
    ZipWriter writer(file);
    for (int i = 0; i < 70'000; ++i) {
        AddFile(writer, Ranked("f" + std::to_string(i)), "");
    }
    writer.Finish();
    const auto entries = ReadZipDirectory(file);
    ASSERT_EQ(entries.size(), 70'000u);
    EXPECT_EQ(entries.back().name, "f69999");
}

TEST(ZipWriter, KeepsTimesAttributesAndFolders) {
    MemoryFile file;
    ZipWriter writer(file);
    const ZipTime time = {.fileTime = 133'444'736'001'234'567, .dosTime = 0x58216000};
    writer.AddFolder({.name = "a/b", .modified = time, .attributes = kAttributeHidden, .rank = 0});
    AddFile(writer,
            {.name = "c", .modified = time, .attributes = kAttributeHidden | kAttributeReadOnly, .rank = 0},
            "");
    writer.Finish();
    const auto entries = ReadZipDirectory(file);
    ASSERT_EQ(entries.size(), 2u);
    EXPECT_TRUE(entries[0].isFolder);
    EXPECT_EQ(entries[0].name, "a/b");
    EXPECT_EQ(entries[0].attributes, kAttributeHidden | kAttributeFolder);
    EXPECT_EQ(entries[1].modified.fileTime, time.fileTime);
    EXPECT_EQ(entries[1].modified.dosTime, time.dosTime);
    EXPECT_EQ(entries[1].attributes, kAttributeHidden | kAttributeReadOnly);
}

TEST(ZipWriter, RoundTripsFilesWhosePiecesDiffer) {
    const std::string noise = Random(kDeflatePiece);
    const std::string text = Text(kDeflatePiece);
    ExpectRoundTrip({{"noiseFirst", noise + noise + text + noise},
                     {"textFirst", text + noise + text},
                     {"textLast", noise + text},
                     {"noiseLast", text + noise}});
    const auto entries = ReadZipDirectory(Pack({{"a", noise + text + noise}, {"b", noise + noise}}));
    EXPECT_LT(entries[0].packedSize, 2 * noise.size() + text.size() / 3);
    EXPECT_EQ(entries[1].packedSize, 2 * noise.size());
}

TEST(ZipWriter, FindsWhatCanBeCompressedBehindNoise) {
    const std::string content = Random(200'000) + Text(200'000) + Random(200'000);
    EXPECT_LT(ReadZipDirectory(Pack({{"a", content}}))[0].packedSize, 500'000u);
}

// Copies entries of `old` behind a prefix of their names, the last one first and after everything else.
MemoryFile CopyPacked(const MemoryFile& old, const std::vector<ZipEntry>& entries,
                      const std::vector<Item>& anew = {}, const std::vector<std::size_t>& ranks = {}) {
    MemoryFile file;
    ZipWriter writer(file);
    std::vector<const ZipEntry*> places;
    places.reserve(entries.size());
    const auto rank = [&ranks](std::size_t i) { return i < ranks.size() ? ranks[i] : 0; };
    for (const ZipEntry& entry : entries) {
        places.push_back(&writer.Reserve(Ranked("new/" + entry.name, rank(places.size())), entry));
    }
    for (std::size_t i = 0; i < anew.size(); ++i) {
        AddFile(writer, Ranked(anew[i].name, rank(entries.size() + i)), anew[i].content);
    }
    for (std::size_t i = entries.size(); i-- > 0;) {
        std::uint64_t copied = 0;
        writer.CopyReserved(*places[i], old, entries[i], [&copied](Bytes piece) { copied += piece.size(); });
        EXPECT_EQ(copied, entries[i].packedSize);
    }
    writer.Finish();
    return file;
}

TEST(ZipWriter, LeavesRoomForWhatIsPackedAlready) {
    const MemoryFile old = Pack({{"text", Text(2'500'000)}, {"random", Random(100'000)}, {"empty", ""}});
    const auto packed = ReadZipDirectory(old);
    for (const ZipEntry& entry : packed) {
        EXPECT_TRUE(ZipWriter::CanCopyPacked(entry)) << entry.name;
    }
    const MemoryFile file = CopyPacked(old, packed);
    const auto entries = ReadZipDirectory(file);
    ASSERT_EQ(entries.size(), 3u);
    EXPECT_EQ(entries[0].name, "new/text");
    EXPECT_EQ(entries[0].packedSize, packed[0].packedSize);
    EXPECT_EQ(Content(file, entries[0]), Text(2'500'000));
    EXPECT_EQ(Content(file, entries[1]), Random(100'000));
    EXPECT_EQ(Content(file, entries[2]), "");
}

TEST(ZipWriter, ListsEntriesByTheirRank) {
    const MemoryFile old = Pack({{"b", Text(3000)}, {"d", Random(3000)}});
    const MemoryFile file =
        CopyPacked(old, ReadZipDirectory(old), {{"c", "content"}, {"a", Text(5000)}}, {1, 3, 2, 0});
    const auto entries = ReadZipDirectory(file);
    ASSERT_EQ(entries.size(), 4u);
    EXPECT_EQ(entries[0].name, "a");
    EXPECT_EQ(Content(file, entries[0]), Text(5000));
    EXPECT_EQ(entries[1].name, "new/b");
    EXPECT_EQ(entries[2].name, "c");
    EXPECT_EQ(Content(file, entries[2]), "content");
    EXPECT_EQ(entries[3].name, "new/d");
    EXPECT_EQ(Content(file, entries[3]), Random(3000));
}

TEST(ZipWriter, TakesNothingThatIsPackedToMoreThanItsSize) {
    ZipEntry entry;
    entry.method = 8;
    entry.size = 100;
    entry.packedSize = 101;
    EXPECT_FALSE(ZipWriter::CanCopyPacked(entry));
    entry.packedSize = 100;
    EXPECT_TRUE(ZipWriter::CanCopyPacked(entry));
}

TEST(ZipWriter, TakesWhatIsOutOfProportionUpTo16Kilobytes) {
    ZipEntry entry;
    entry.method = 8;
    entry.packedSize = 1;
    entry.size = 16 << 10;
    EXPECT_TRUE(ZipWriter::CanCopyPacked(entry));
    entry.size += 1;
    EXPECT_FALSE(ZipWriter::CanCopyPacked(entry));
}

} // namespace
