#include "session/PackageNews.h"

#include <gtest/gtest.h>

using namespace viewer;

namespace {

constexpr wchar_t kPackage[] = L"\\\\server\\jobs\\bracket.mxov";

// A package without changes.
PackageState Untouched() {
    PackageState state;
    state.stamp = state.knownStamp = L"1-2";
    return state;
}

std::wstring TextOf(const PackageState& state) {
    return FindNews(state, kPackage).text;
}

using Actions = std::vector<NewsAction>;

} // namespace

TEST(PackageNews, NothingIsNewsOfAnUntouchedPackage) {
    EXPECT_EQ(FindNews(Untouched(), kPackage), PackageNews());
}

TEST(PackageNews, NamesTheDocumentThatWasChangedAddedOrRemoved) {
    PackageState state = Untouched();
    state.changes = {{L"SetupSheets\\setup.html", FileChangeKind::Changed}};
    EXPECT_EQ(FindNews(state, kPackage),
              (PackageNews{L"setup.html was changed by another program.", Actions{NewsAction::Save}}));
    state.changes[0].kind = FileChangeKind::Added;
    EXPECT_EQ(TextOf(state), L"setup.html was added by another program.");
    state.changes[0].kind = FileChangeKind::Removed;
    EXPECT_EQ(TextOf(state), L"setup.html was removed by another program.");
}

TEST(PackageNews, ProgramsInThePackageAreNamed) {
    std::vector<mxovshare::PackageEntry> entries(2);
    entries[0].name = L"mxinfo.ini";
    entries[1].name = L"GCode\\a.nc";
    EXPECT_EQ(FindPrograms(entries), PackageNews());
    entries[1].name = L"Tools\\setup.exe";
    EXPECT_EQ(
        FindPrograms(entries),
        (PackageNews{L"This package holds programs: Tools\\setup.exe. Open them only if you trust their "
                     L"origin.",
                     Actions{}}));
}

TEST(PackageNews, CountsSeveralDocumentsButNotWhatTheControlDoes) {
    PackageState state = Untouched();
    state.changes = {{L"mxinfo.ini", FileChangeKind::Changed},
                     {L"Private\\MXINFO.INI", FileChangeKind::Changed},
                     {L"ReferanceFiles\\new.pdf", FileChangeKind::Added},
                     {L"ReferanceFiles\\old.pdf", FileChangeKind::Removed}};
    EXPECT_EQ(FindNews(state, kPackage), PackageNews());
    state.changes.push_back({L"ReferanceFiles\\plan.pdf", FileChangeKind::Changed});
    EXPECT_EQ(TextOf(state), L"plan.pdf was changed by another program.");
    state.changes.push_back({L"GCode\\a.nc", FileChangeKind::Changed});
    EXPECT_EQ(TextOf(state), L"2 documents were changed by another program.");
}

TEST(PackageNews, ASaveElsewhereComesBeforeChangedDocuments) {
    PackageState state = Untouched();
    state.changes = {{L"GCode\\a.nc", FileChangeKind::Changed}};
    state.stamp = L"3-4";
    state.savedBy = L"S. Lindqvist";
    const PackageNews news = FindNews(state, kPackage);
    EXPECT_TRUE(news.text.starts_with(L"S. Lindqvist saved this package at "));
    EXPECT_EQ(news.actions, (Actions{NewsAction::Reload, NewsAction::Compare}));
    state.savedBy.clear();
    EXPECT_TRUE(TextOf(state).starts_with(L"Another program saved this package at "));
}

TEST(PackageNews, APackageThatIsNotThereComesFirst) {
    PackageState state = Untouched();
    state.changes = {{L"GCode\\a.nc", FileChangeKind::Changed}};
    state.stamp.clear();
    EXPECT_EQ(
        FindNews(state, kPackage),
        (PackageNews{L"bracket.mxov was moved or deleted by another program.", Actions{NewsAction::Save}}));
    state.folderFound = false;
    EXPECT_EQ(FindNews(state, kPackage),
              (PackageNews{L"The folder \\\\server\\jobs is offline.", Actions{}}));
}
