#include "common/Programs.h"

#include <gtest/gtest.h>

#include <vector>

using namespace common;

namespace {

struct NamedEntry {
    std::wstring name;
    bool isFolder = false;
};

} // namespace

TEST(Programs, AreKnownByTheirExtension) {
    for (const wchar_t* name :
         {L"a.exe", L"A.EXE", L"Tools\\run.Js", L"b.lnk", L"c.hta", L"setup.msi", L"d.ps1", L"e.com",
          L"f.cpl", L"plan.pdf.scr", L"g.dll", L".bat", L"h.vbs", L"i.reg"}) {
        EXPECT_TRUE(IsProgramName(name)) << name;
    }
    for (const wchar_t* name : {L"op10.nc", L"setup.html", L"exe", L"a.exe.txt", L"a.", L"", L"folder.exe\\a",
                                L"note.json", L"plan.pdf"}) {
        EXPECT_FALSE(IsProgramName(name)) << name;
    }
}

TEST(Programs, OfAPackageAreNamedUpToThree) {
    std::vector<NamedEntry> entries = {{L"a.nc"}, {L"folder.exe", true}};
    EXPECT_EQ(ProgramNames(entries), L"");
    entries.push_back({L"Tools\\a.exe"});
    EXPECT_EQ(ProgramNames(entries), L"Tools\\a.exe");
    entries.insert(entries.end(), {{L"b.js"}, {L"c.lnk"}});
    EXPECT_EQ(ProgramNames(entries), L"Tools\\a.exe, b.js, c.lnk");
    entries.insert(entries.end(), {{L"d.nc"}, {L"e.dll"}, {L"f.msi"}, {L"g.hta"}});
    EXPECT_EQ(ProgramNames(entries), L"Tools\\a.exe, b.js, c.lnk and 3 more");
}

TEST(Programs, LongNamesKeepTheirEnd) {
    const std::vector<NamedEntry> entries = {{std::wstring(200, L'x') + L"plan.pdf.exe"}};
    const std::wstring names = ProgramNames(entries);
    EXPECT_EQ(names.size(), 61u);
    EXPECT_TRUE(names.ends_with(L"plan.pdf.exe"));
}
