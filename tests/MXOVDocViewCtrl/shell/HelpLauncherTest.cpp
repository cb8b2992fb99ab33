#include "shell/HelpLauncher.h"

#include "TempFolder.h"

#include <gtest/gtest.h>
#include <mxovshare.h>

using namespace docview;

namespace {

constexpr wchar_t kEngineKey[] = L"CLSID\\{ADB880A6-D8FF-11CF-9377-00AA003B7A11}\\InprocServer32";
constexpr wchar_t kScratchKey[] = L"Software\\MxovHelpLauncherTest";
constexpr char kNoEngine[] = "no-such-engine.ocx";

std::wstring TestFolder() {
    wchar_t path[MAX_PATH] = L"";
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    const std::wstring program = path;
    return program.substr(0, program.rfind(L'\\'));
}

std::wstring RecordingEngine() {
    return TestFolder() + L"\\recording_engine.dll";
}

/// The class registrations as this process sees them: empty, and the test's own.
class HelpLauncherTest : public testing::Test {
protected:
    HelpLauncherTest() {
        RegDeleteTreeW(HKEY_CURRENT_USER, kScratchKey);
        RegCreateKeyExW(HKEY_CURRENT_USER, kScratchKey, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &m_classes,
                        nullptr);
        RegOverridePredefKey(HKEY_CLASSES_ROOT, m_classes);
        SetEnvironmentVariableW(L"MXOV_HELP_RECORD", (m_folder / L"record.txt").c_str());
    }
    ~HelpLauncherTest() override {
        RegOverridePredefKey(HKEY_CLASSES_ROOT, nullptr);
        RegCloseKey(m_classes);
        RegDeleteTreeW(HKEY_CURRENT_USER, kScratchKey);
    }

    void Register(const std::wstring& engine, DWORD type = REG_SZ) {
        HKEY key = nullptr;
        ASSERT_EQ(
            RegCreateKeyExW(m_classes, kEngineKey, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &key, nullptr), 0);
        RegSetValueExW(key, nullptr, 0, type, reinterpret_cast<const BYTE*>(engine.c_str()),
                       static_cast<DWORD>((engine.size() + 1) * sizeof(wchar_t)));
        RegCloseKey(key);
    }

    std::wstring Recorded() const {
        const std::string bytes = m_folder.Read(L"record.txt");
        return {reinterpret_cast<const wchar_t*>(bytes.data()), bytes.size() / sizeof(wchar_t)};
    }

    std::string Found() {
        char path[MAX_PATH] = "";
        return FindRegisteredHelpEngine(path) ? path : "not found";
    }

    TempFolder m_folder;
    HKEY m_classes = nullptr;
};

} // namespace

TEST_F(HelpLauncherTest, TheMainFileOfTheLanguageComesFirst) {
    const std::wstring german = m_folder.Write(L"plugins\\etc\\mx\\lang\\German\\Orvando.chm", "x");
    const std::wstring english = m_folder.Write(L"plugins\\etc\\mx\\lang\\english\\Orvando.chm", "x");
    const HelpTarget target = FindHelp(m_folder.Path(), L"German");
    EXPECT_EQ(target.file, german);
    EXPECT_EQ(target.topic, 7018u);
    EXPECT_EQ(FindHelp(m_folder.Path(), L"French").file, english);
    EXPECT_EQ(FindHelp(m_folder.Path(), L"French").topic, 7018u);
}

TEST_F(HelpLauncherTest, OnlyPortugueseExactlyIsMapped) {
    const std::wstring brazilian =
        m_folder.Write(L"plugins\\etc\\mx\\lang\\portuguese-brazilian\\Orvando.chm", "x");
    const std::wstring english = m_folder.Write(L"plugins\\etc\\mx\\lang\\english\\Orvando.chm", "x");
    EXPECT_EQ(FindHelp(m_folder.Path(), L"Portuguese").file, brazilian);
    for (const wchar_t* name : {L"portuguese", L"Portuguese ", L"PORTUGUESE", L"Portuguese-Brazil"}) {
        EXPECT_EQ(FindHelp(m_folder.Path(), name).file, english);
    }
}

TEST_F(HelpLauncherTest, WithoutMainFilesTheSecondaryOfTheLanguageIsTaken) {
    m_folder.Write(L"lang\\english\\KVT.chm", "x");
    const HelpTarget target = FindHelp(m_folder.Path(), L"Japanese");
    EXPECT_EQ(target.file, m_folder / L"lang\\Japanese\\KVT.chm");
    EXPECT_EQ(target.topic, 7806u);
    EXPECT_EQ(FindHelp(m_folder.Path(), L"Portuguese").file,
              m_folder / L"lang\\portuguese-brazilian\\KVT.chm");
    EXPECT_EQ(FindHelp(L"", L"French").file, L"\\lang\\French\\KVT.chm");
}

TEST_F(HelpLauncherTest, TheRegisteredEngineIsRead) {
    EXPECT_EQ(Found(), "not found");
    Register(L"C:\\engine.dll");
    EXPECT_EQ(Found(), "C:\\engine.dll");
    SetEnvironmentVariableW(L"MXOV_ENGINES", L"C:\\engines");
    Register(L"%MXOV_ENGINES%\\e.dll", REG_EXPAND_SZ);
    EXPECT_EQ(Found(), "C:\\engines\\e.dll");
    Register(L"%MXOV_ENGINES%\\e.dll");
    EXPECT_EQ(Found(), "%MXOV_ENGINES%\\e.dll");
}

TEST_F(HelpLauncherTest, LongRegistrationsDoNotFit) {
    Register(std::wstring(259, L'a'));
    EXPECT_EQ(Found(), std::string(259, 'a'));
    Register(std::wstring(260, L'a'));
    EXPECT_EQ(Found(), "not found");
    SetEnvironmentVariableW(L"MXOV_LONG", std::wstring(300, L'b').c_str());
    Register(L"%MXOV_LONG%", REG_EXPAND_SZ);
    EXPECT_EQ(Found(), "not found");
    SetEnvironmentVariableW(L"MXOV_LONG", std::wstring(259, L'b').c_str());
    EXPECT_EQ(Found(), std::string(259, 'b'));
}

TEST_F(HelpLauncherTest, TheEngineGetsTheArgumentsUnchanged) {
    Register(RecordingEngine());
    HtmlHelpEngine engine(kNoEngine);
    EXPECT_EQ(engine.Call(nullptr, L"C:\\a.chm", 15, 42), GetDesktopWindow());
    EXPECT_EQ(Recorded(), L"15 42 C:\\a.chm\n");
    const auto caller = reinterpret_cast<HWND>(INT_PTR{0x1234});
    EXPECT_EQ(engine.Call(caller, nullptr, 18, 0), caller);
    EXPECT_EQ(Recorded(), L"15 42 C:\\a.chm\n18 0 none\n");
}

TEST_F(HelpLauncherTest, TheBindingIsKept) {
    Register(RecordingEngine());
    HtmlHelpEngine engine(kNoEngine);
    ASSERT_TRUE(engine.Call(nullptr, L"1", 15, 1));
    Register(L"C:\\gone.dll");
    EXPECT_TRUE(engine.Call(nullptr, L"2", 15, 2));
}

TEST_F(HelpLauncherTest, UnregisteredAndBrokenRegistrationsFallBackOnTheName) {
    HtmlHelpEngine unregistered("recording_engine.dll");
    EXPECT_TRUE(unregistered.Call(nullptr, L"1", 15, 1));
    Register(L"C:\\gone.dll");
    HtmlHelpEngine broken("recording_engine.dll");
    EXPECT_TRUE(broken.Call(nullptr, L"2", 15, 2));
    EXPECT_EQ(Recorded(), L"15 1 1\n15 2 2\n");
}

TEST_F(HelpLauncherTest, AMissingEngineIsNotTriedAgain) {
    HtmlHelpEngine engine(kNoEngine);
    EXPECT_FALSE(engine.Call(nullptr, L"1", 15, 1));
    Register(RecordingEngine());
    EXPECT_FALSE(engine.Call(nullptr, L"2", 15, 2));
    EXPECT_EQ(Recorded(), L"");
}

TEST_F(HelpLauncherTest, ALibraryWithoutTheEntryIsNotTriedAgain) {
    Register(TestFolder() + L"\\empty_engine.dll");
    HtmlHelpEngine engine("recording_engine.dll");
    EXPECT_FALSE(engine.Call(nullptr, L"1", 15, 1));
    Register(RecordingEngine());
    EXPECT_FALSE(engine.Call(nullptr, L"2", 15, 2));
    EXPECT_EQ(Recorded(), L"");
}

TEST_F(HelpLauncherTest, TheSystemsEngineIsTheDefault) {
    HtmlHelpEngine engine;
    engine.Call(nullptr, nullptr, 18, 0); // closes the help windows, of which there are none
    EXPECT_TRUE(GetModuleHandleW(L"hhctrl.ocx"));
}

TEST_F(HelpLauncherTest, LaunchingOpensTheHelpOfTheHost) {
    Register(RecordingEngine());
    mxovshare::OVApplication::mxLanguageName = L"Portuguese";
    LaunchHelp();
    EXPECT_EQ(Recorded(), L"15 7806 " + TestFolder() + L"\\lang\\portuguese-brazilian\\KVT.chm\n");
    mxovshare::OVApplication::mxLanguageName = L"English";
}
