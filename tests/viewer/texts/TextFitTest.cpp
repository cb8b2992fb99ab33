// Whether every text and control of the viewer's parts and dialogs has its place, in each language. The test
// runs this program with the dots per inch of 100 to 200 percent.
#include "care/FindingsWindow.h"
#include "compare/DifferencesDialog.h"
#include "compare/TextPairDialog.h"
#include "document/DocumentPane.h"
#include "earlier/VersionsDialog.h"
#include "FittingTexts.h"
#include "LayoutFaults.h"
#include "news/NewsBar.h"
#include "news/NewsButtons.h"
#include "preview/HistoryPane.h"
#include "preview/PreviewPane.h"
#include "prompts/AttachPrompt.h"
#include "prompts/NoteDialog.h"
#include "prompts/ProgressDialog.h"
#include "prompts/UnsavedPrompts.h"
#include "RealMouse.h"
#include "resources/resource.h"
#include "start/StartPane.h"
#include "TempFolder.h"
#include "texts/Texts.h"
#include "window/ReportList.h"

#include <gtest/gtest.h>

#include <functional>

using namespace viewer;

namespace {

constexpr int kLeastWidth = 220; // of the pages, at 96 dots per inch
constexpr int kLeastStart = 590; // of the page without a package
constexpr int kPaneHeight = 600;
constexpr const wchar_t* kLanguages[] = {L"English", L"German", L"French", L"Japanese", L"Portuguese"};

using Texts = std::vector<std::wstring>;

// The texts that are cut off in a window, and what is wrong with the places of the windows inside.
Texts FaultsOf(HWND window) {
    Texts faults = CutControlTexts(window);
    for (const std::wstring& fault : LayoutFaults(window)) {
        faults.push_back(fault);
    }
    return faults;
}

class TextFitTest : public testing::TestWithParam<const wchar_t*> {
protected:
    TextFitTest() { UseTexts(GetParam(), GetModuleHandleW(L"mxovshare.dll")); }
    ~TextFitTest() override {
        UseTexts(L"English", GetModuleHandleW(L"mxovshare.dll"));
        m_frame.reset();
        SetThreadDpiAwarenessContext(m_before);
    }

    // The system has the dots that the caller has set.
    void SetUp() override {
        wchar_t dots[8] = L"";
        if (GetEnvironmentVariableW(L"MXOV_DOTS", dots, ARRAYSIZE(dots)) > 0) {
            ASSERT_EQ(std::to_wstring(GetDpiForWindow(m_frame.get())), dots);
        }
    }

    [[nodiscard]] int Scaled(int length) const { return ScaleFor(GetDpiForWindow(m_frame.get()), length); }

    // What is wrong in a page of this width, at 96 dots per inch.
    template <class Pane>
    [[nodiscard]] Texts FaultsIn(Pane& pane, int width) const {
        MoveWindow(pane.Handle(), 0, 0, Scaled(width), Scaled(kPaneHeight), FALSE);
        ShowWindow(pane.Handle(), SW_SHOWNA);
        const DrawnTexts drawn;
        RedrawWindow(pane.Handle(), nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_ALLCHILDREN);
        Texts faults = FaultsOf(pane.Handle());
        faults.insert(faults.end(), drawn.Cut().begin(), drawn.Cut().end());
        return faults;
    }

    const DPI_AWARENESS_CONTEXT m_before = SetThreadDpiAwarenessContext(DPI_AWARENESS_CONTEXT_SYSTEM_AWARE);
    common::UniqueWindow m_frame{CreateWindowW(L"STATIC", L"", WS_POPUP | WS_VISIBLE, 0, 0, 1200, 1000,
                                               nullptr, nullptr, nullptr, nullptr)};
};
INSTANTIATE_TEST_SUITE_P(Languages, TextFitTest, testing::ValuesIn(kLanguages));

std::unique_ptr<DocumentContent> ContentOf(bool exists, bool isLink, bool isFromOutside) {
    auto content = std::make_unique<DocumentContent>();
    content->details.name = L"plan.pdf";
    content->details.path = L"C:\\Temp\\plan.pdf";
    content->details.isLink = isLink;
    content->details.exists = exists;
    content->details.size = 1'234'567;
    content->details.modified = {0, 31'000'000};
    content->kind = exists ? DocumentContent::Kind::Other : DocumentContent::Kind::Missing;
    content->isCut = exists && !isFromOutside;
    content->isFromOutside = isFromOutside;
    return content;
}

// The dialog of this thread that a modal loop runs; null for none.
HWND ModalDialog() {
    HWND found = nullptr;
    EnumThreadWindows(
        GetCurrentThreadId(),
        [](HWND window, LPARAM result) -> BOOL {
            wchar_t name[16] = L"";
            GetClassNameW(window, name, ARRAYSIZE(name));
            if (IsWindowVisible(window) && std::wstring(name) == L"#32770") {
                *reinterpret_cast<HWND*>(result) = window;
            }
            return TRUE;
        },
        reinterpret_cast<LPARAM>(&found));
    return found;
}

// What is wrong in the dialog that `show` shows until it is closed.
Texts FaultsInDialog(const std::function<void()>& show) {
    static Texts faults;
    static RECT before;
    faults = {L"no dialog"};
    before = {};
    const UINT_PTR timer = SetTimer(nullptr, 0, 100, [](HWND, UINT, UINT_PTR, DWORD) {
        RECT place = {};
        const HWND dialog = ModalDialog();
        if (!dialog || !GetWindowRect(dialog, &place)) {
            return;
        }
        if (EqualRect(&place, &before)) { // the window manager has placed it
            faults = FaultsOf(dialog);
            PostMessageW(dialog, WM_CLOSE, 0, 0);
        }
        before = place;
    });
    show();
    KillTimer(nullptr, timer);
    return faults;
}

} // namespace

TEST_P(TextFitTest, ThePageWithoutAPackage) {
    StartPane pane;
    pane.Create(m_frame.get(), 1);
    pane.ShowRecent({L"C:\\a.mxov"});
    EXPECT_EQ(FaultsIn(pane, kLeastStart), Texts());
}

TEST_P(TextFitTest, ThePictureAndTheHistory) {
    PreviewPane picture;
    picture.Create(m_frame.get(), 1);
    picture.Show({L"plan", L"Maxtrel Orvando 2024", L"",
                  Text(IDS_LAST_ENTRY, {Text(IDS_ENTRY_TIME, {Text(IDS_ENTRY_BY, {L"Released", L"M. Keller"}),
                                                              L"2024-05-13 08:44"})})});
    EXPECT_EQ(FaultsIn(picture, kLeastWidth), Texts());
    HistoryPane history;
    history.Create(m_frame.get(), 2);
    EXPECT_EQ(FaultsIn(history, kLeastWidth), Texts());
}

TEST_P(TextFitTest, ThePageOfADocument) {
    DocumentPane pane;
    pane.Create(m_frame.get(), 1);
    EXPECT_EQ(FaultsIn(pane, kLeastWidth), Texts());
    for (const bool isLink : {false, true}) {
        pane.Show(ContentOf(false, isLink, false));
        EXPECT_EQ(FaultsIn(pane, kLeastWidth), Texts());
        for (const bool isFromOutside : {false, true}) {
            pane.Show(ContentOf(true, isLink, isFromOutside));
            EXPECT_EQ(FaultsIn(pane, kLeastWidth), Texts());
        }
    }
}

TEST_P(TextFitTest, TheBarForNews) {
    NewsBar bar;
    bar.Create(m_frame.get(), 1);
    for (const std::wstring& text :
         {Text(IDS_DOCUMENT_CHANGED, {L"setup.html"}), Text(IDS_SAVED_BY, {L"S. Lindqvist", L"09:12"}),
          Text(IDS_HOLDS_PROGRAMS, {Text(IDS_MORE_PROGRAMS, {L"a.exe, b.exe", L"3"})})}) {
        bar.Show(text, NewsButtons({NewsAction::Reload, NewsAction::Compare}));
        for (const int width : {kLeastWidth, 2 * kLeastWidth, 3 * kLeastWidth}) {
            MoveWindow(bar.Handle(), 0, 0, Scaled(width), bar.HeightFor(Scaled(width)), FALSE);
            const DrawnTexts drawn;
            RedrawWindow(bar.Handle(), nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
            EXPECT_GT(drawn.Count(), 0);
            EXPECT_EQ(drawn.Cut(), Texts()) << width;
            EXPECT_EQ(FaultsOf(bar.Handle()), Texts()) << width;
        }
    }
}

TEST_P(TextFitTest, TheListOfFindings) {
    FindingsWindow findings([](CureCommand) {});
    std::vector<care::Finding> found;
    for (const care::Severity severity :
         {care::Severity::Error, care::Severity::Error, care::Severity::Warning, care::Severity::Warning,
          care::Severity::Note}) {
        found.emplace_back().severity = severity;
        found.back().inserts = {L"a.nc", L"b.nc", L"c.nc"};
    }
    findings.Show(m_frame.get(), L"bracket.mxov", found);
    EXPECT_EQ(FaultsOf(findings.Handle()), Texts());
}

TEST_P(TextFitTest, TheDialogs) {
    EXPECT_EQ(FaultsInDialog([this] { static_cast<void>(AskForNote(m_frame.get(), L"C:\\bracket.mxov")); }),
              Texts());
    ComparedPackages packages;
    packages.summary = Text(IDS_DIFFERS_FROM, {L"bracket.mxov"});
    DifferenceReport report;
    report.lines = {{Text(IDS_DOCUMENT_NEW), L"plan.pdf", Text(IDS_COPY_AT, {L"ReferanceFiles\\plan.pdf"})}};
    EXPECT_EQ(FaultsInDialog([&] { ShowDifferences(m_frame.get(), packages, report); }), Texts());
    WorkProgress work;
    EXPECT_EQ(FaultsInDialog([&] {
                  const ProgressDialog progress(m_frame.get(), work, Text(IDS_OPENING, {L"bracket.mxov"}));
                  PumpUntil([&work] { return work.IsCancelled(); });
              }),
              Texts());
}

// The system lays these out; their buttons and texts are the viewer's.
TEST_P(TextFitTest, TheQuestions) {
    const std::wstring package = L"C:\\Jobs\\2024\\Customer\\bracket.mxov";
    const Texts names(12, L"setup sheet of the second side.html");
    const std::vector<FileChange> changes(12, {names.front(), FileChangeKind::Removed});
    const HWND owner = m_frame.get();
    const std::function<void()> questions[] = {
        [&] {
            static_cast<void>(AskToRecover(owner, package, {0, 31'000'000}));
        },
        [&] { static_cast<void>(AskAboutChanges(owner, package, changes, false)); },
        [&] { static_cast<void>(AskAboutChanges(owner, package, changes, true)); },
        [&] { static_cast<void>(AskAboutOpenDocuments(owner, package, names)); },
        [&] { static_cast<void>(AskAboutFailedSave(owner, package)); },
        [&] { static_cast<void>(AskHowToAttach(owner, package, names)); },
        [&] { static_cast<void>(AskAboutSharedName(owner, names.front())); }};
    for (const std::function<void()>& ask : questions) {
        EXPECT_EQ(FaultsInDialog(ask), Texts()) << &ask - questions;
    }
}

TEST_P(TextFitTest, TheEarlierVersions) {
    class : public VersionActions {
        void LookAt(HWND, const Version&) override {}
        void CompareWith(HWND, const Version&) override {}
        bool TakeBack(HWND, const Version&, const care::FileChange&) override { return false; }
        bool TakeAllBack(HWND, const Version&) override { return false; }
        void KeepVersions(bool) override {}
    } actions;
    ShownVersions shown;
    shown.package = L"bracket.mxov";
    EXPECT_EQ(FaultsInDialog([&] { ShowVersions(m_frame.get(), shown, actions); }), Texts());
    Version version;
    version.saved = {0, 31'000'000};
    version.files = {{L"GCode\\a.nc", 1, 1, L""}};
    shown.list.versions = {version};
    EXPECT_EQ(FaultsInDialog([&] { ShowVersions(m_frame.get(), shown, actions); }), Texts());
}

TEST_P(TextFitTest, TheTextsBesideEachOther) {
    const TempFolder folder;
    folder.Write(L"a\\GCode\\a.nc", "G0 X0\n");
    folder.Write(L"b\\GCode\\a.nc", "G0 X1\n");
    const ComparedPackages packages = {folder / L"a", folder / L"b", L"a.mxov", Text(IDS_OPEN_NOW), L""};
    const DifferenceLine line = {Text(IDS_CONTENT_CHANGED), L"a.nc", L"", L"GCode\\a.nc", TextKind::GCode};
    EXPECT_EQ(FaultsInDialog([&] { ShowTextPair(m_frame.get(), packages, line, false); }), Texts());
}
