// Packages that somebody made to do harm, or that lost something on the way.
#include "mxovpackage.h"

#include "FolderSnapshot.h"
#include "TempFolder.h"
#include "ZipForge.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>

using namespace mxovshare;

namespace {

struct Hostile {
    std::string title;
    std::string zip;
    std::wstring reason; ///< part of the message
};

Hostile Named(const std::string& title, const std::string& name, const std::wstring& reason) {
    return {title, ForgeZip({MakeEntry("good.txt"), MakeEntry(name)}), reason};
}

Hostile Changed(const std::string& title, const std::function<void(ForgedEntry&)>& change,
                const std::wstring& reason) {
    ForgedEntry entry = MakeEntry("bad.txt", std::string(2000, 'x'), true);
    change(entry);
    return {title, ForgeZip({MakeEntry("good.txt"), entry}), reason};
}

Hostile Cut(const std::string& title, std::size_t keep) {
    const std::string zip = ForgeZip({MakeEntry("a.txt", std::string(3000, 'a'), true), MakeEntry("b.txt")});
    return {title, zip.substr(0, std::min(keep, zip.size() - 1)), L"p.mxov"};
}

std::string Bomb() {
    std::string zeros;
    zeros.resize(100'000'000);
    return ForgeZip({MakeEntry("bomb.txt", zeros, true)});
}

std::vector<Hostile> NamesThatLeadAway() {
    return {
        Named("parent", "../evil.txt", L"\"../evil.txt\": the name leads"),
        Named("parentInside", "a/../../evil.txt", L"leads through"),
        Named("parentBackslash", "..\\evil.txt", L"\"/\" separates"),
        Named("absolute", "/tmp/evil.txt", L"absolute"),
        Named("unc", "\\\\server\\share\\evil.txt", L"absolute"),
        Named("drive", "C:/evil.txt", L"drive"),
        Named("driveRelative", "C:evil.txt", L"drive"),
        Named("stream", "good.txt:evil", L"stream"),
        Named("device", "sub/NUL", L"device"),
        Named("deviceExtension", "com1.txt", L"device"),
        Named("deviceSuperscript", "COM\xC2\xB9", L"device"),
        Named("deviceConsole", "CONIN$", L"device"),
        Named("dot", "evil.", L"dot or a blank"),
        Named("blank", "evil ", L"dot or a blank"),
        Named("control", "evil\x07.txt", L"\"evil\\x07.txt\": the name holds a control"),
        Named("newline", "evil\n\r.txt", L"\\x0A\\x0D"),
        Named("wildcard", "evil?.txt", L"characters"),
        Named("emptyPart", "a//evil.txt", L"empty part"),
        Named("utf8", "evil\xFF", L"UTF-8"),
        Named("overlong", "\xC0\xAE\xC0\xAE/evil", L"UTF-8"),
        Named("surrogate", "\xED\xA0\x80", L"UTF-8"),
        Named("caseOnly", "GOOD.TXT", L"differs only in case"),
        Named("twice", "good.txt", L"occurs twice"),
        Named("insideAFile", "good.txt/evil.txt", L"which is a file"),
        Named("reserved", "mxinfo.ini.mxov-new", L"reserved"),
        Named("direction", "a\xE2\x80\xAEtxt.exe", L"direction"),
        Named("longPart", std::string(300, 'x'), L"255"),
        Named("longName", std::string(65000, 'x'), L"32000"),
    };
}

std::vector<Hostile> FieldsThatLie() {
    return {
        Changed(
            "link", [](ForgedEntry& e) { e.attributes = 0120777u << 16; }, L"\"bad.txt\": it is a link"),
        Changed(
            "reparse", [](ForgedEntry& e) { e.attributes = 0x400; }, L"link"),
        Changed(
            "encrypted", [](ForgedEntry& e) { e.local.flags = e.central.flags = 0x801; }, L"encrypted"),
        Changed(
            "method", [](ForgedEntry& e) { e.local.method = e.central.method = 99; }, L"method 99"),
        Changed(
            "localName", [](ForgedEntry& e) { e.local.name = "../x.txt"; }, L"contradicts"),
        Changed(
            "localSize", [](ForgedEntry& e) { e.local.size = 1; }, L"contradicts"),
        Changed(
            "sizeTooLarge", [](ForgedEntry& e) { e.local.size = e.central.size = 0x70000000; }, L"can hold"),
        Changed(
            "packedTooLarge", [](ForgedEntry& e) { e.local.packedSize = e.central.packedSize = 0x7FFFFFFF; },
            L"overlaps"),
        Changed(
            "offset", [](ForgedEntry& e) { e.offset = 0x7FFFFFFF; }, L"overlaps"),
        Changed(
            "sameData", [](ForgedEntry& e) { e.offset = 0; }, L"overlaps"),
        Changed(
            "zip64", [](ForgedEntry& e) { e.central.size = 0xFFFFFFFF; }, L"ZIP64"),
        Changed(
            "disk", [](ForgedEntry& e) { e.disk = 7; }, L"another disk"),
        {"bomb", Bomb(), L"\"bomb.txt\": the package would unpack to more than"},
        {"count", ForgeZip({MakeEntry("a")}, {.countError = 1}), L"directory"},
        {"manyCounted", ForgeZip({MakeEntry("a")}, {.countError = 60000}), L"more entries"},
        {"directorySize", ForgeZip({MakeEntry("a")}, {.sizeError = 1}), L"directory"},
        {"directoryOffset", ForgeZip({MakeEntry("a")}, {.offsetError = 1}), L"directory"},
        {"disks", ForgeZip({MakeEntry("a")}, {.disk = 1}), L"several disks"},
    };
}

std::vector<Hostile> WhatIsNoPackage() {
    return {
        {"empty", "", L"too short"},
        {"text", std::string(1000, 't'), L"not a package"},
        {"appended", ForgeZip({MakeEntry("a")}) + "x", L"not a package"},
        Cut("cutInHeader", 10),
        Cut("cutInData", 40),
        Cut("cutBeforeDirectory", 100),
        Cut("cutInDirectory", 130),
        Cut("cutInEnd", 100'000),
    };
}

std::vector<Hostile> All() {
    std::vector<Hostile> all = NamesThatLeadAway();
    for (const auto& group : {FieldsThatLie(), WhatIsNoPackage()}) {
        all.insert(all.end(), group.begin(), group.end());
    }
    return all;
}

class HostilePackage : public testing::TestWithParam<Hostile> {};

// The milliseconds that the processor spent on this process: what else the computer does is left out.
ULONGLONG ProcessorTime() {
    FILETIME ignored = {};
    FILETIME kernel = {};
    FILETIME user = {};
    EXPECT_TRUE(GetProcessTimes(GetCurrentProcess(), &ignored, &ignored, &kernel, &user));
    const auto units = [](const FILETIME& time) {
        return ULARGE_INTEGER{{time.dwLowDateTime, time.dwHighDateTime}}.QuadPart;
    };
    constexpr ULONGLONG kUnitsPerMillisecond = 10000;
    return (units(kernel) + units(user)) / kUnitsPerMillisecond;
}

TEST_P(HostilePackage, IsRefusedInOneLineWithoutATrace) {
    const TempFolder work;
    const std::wstring package = work.Write(L"p.mxov", GetParam().zip);
    const auto before = TakeSnapshot(work.Path());
    const ULONGLONG start = ProcessorTime();
    std::vector<PackageEntry> entries;
    Information information;
    for (const PackageResult& result : {UnpackPackage(package, work / L"out"), ListPackage(package, entries),
                                        VerifyPackage(package), ReadInformation(package, information)}) {
        EXPECT_FALSE(result.ok);
        EXPECT_FALSE(result.cancelled);
        EXPECT_EQ(result.message.find(L"\"" + package + L"\": "), 0u);
        EXPECT_NE(result.message.find(GetParam().reason), std::wstring::npos)
            << std::filesystem::path(result.message).string();
        EXPECT_EQ(result.message.find_first_of(L"\r\n\x07"), std::wstring::npos);
    }
    EXPECT_TRUE(entries.empty());
    EXPECT_LT(ProcessorTime() - start, 2000u);
    EXPECT_EQ(TakeSnapshot(work.Path()), before);
}

INSTANTIATE_TEST_SUITE_P(All, HostilePackage, testing::ValuesIn(All()),
                         [](const auto& info) { return info.param.title; });

// An honest package of two entries, one of them deflated.
std::string Honest() {
    return ForgeZip(
        {MakeEntry("a.txt", std::string(300, 'a') + "end", true), MakeEntry("d/b.txt", "content")});
}

// Expects the bytes to be refused without a trace in the folder.
void ExpectRefused(const TempFolder& work, const std::string& bytes, const std::string& what) {
    const std::wstring package = work.Write(L"p.mxov", bytes);
    const PackageResult result = UnpackPackage(package, work / L"out");
    EXPECT_FALSE(result.ok) << what;
    EXPECT_EQ(result.message.find(L"\"" + package + L"\": "), 0u) << what;
    EXPECT_EQ(work.EntryCount(), 1) << what;
}

TEST(HostilePackages, AreRefusedWhenTruncatedAnywhere) {
    const TempFolder work;
    const std::string honest = Honest();
    for (std::size_t size = 0; size < honest.size(); ++size) {
        ExpectRefused(work, honest.substr(0, size), std::to_string(size));
    }
}

TEST(HostilePackages, NeverUnpackToOtherContentForAFlippedBit) {
    const TempFolder work;
    const std::string honest = Honest();
    int refused = 0;
    for (std::size_t bit = 0; bit < honest.size() * 8; bit += 3) {
        std::string bytes = honest;
        bytes[bit / 8] = static_cast<char>(bytes[bit / 8] ^ (1 << bit % 8));
        const std::wstring package = work.Write(L"p.mxov", bytes);
        if (!UnpackPackage(package, work / L"out").ok) {
            ++refused;
            EXPECT_EQ(work.EntryCount(), 1) << bit;
            continue;
        }
        // What the bit was in does not matter for the content: times, attributes, versions.
        for (const auto& [name, file] : TakeSnapshot(work / L"out")) {
            EXPECT_TRUE(file.isFolder || file.content.ends_with("end") || file.content == "content") << bit;
        }
        RemoveTree(work / L"out");
    }
    EXPECT_GT(refused, static_cast<int>(honest.size()));
}

TEST(HostilePackages, AreManyEnough) {
    EXPECT_GE(All().size(), 40u);
}

} // namespace
