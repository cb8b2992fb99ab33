// The control has no files, settings or logs of its own: what a whole session of it leaves behind.
#include "ControlClient.h"
#include "PackageBuilder.h"
#include "RealMouse.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <set>

namespace {

namespace fs = std::filesystem;

constexpr int kDescriptionEdit = 1037;

using Names = std::set<std::wstring>;

// All files and folders below a folder, but for what is the system's.
void AddFiles(const fs::path& folder, Names& names) {
    for (fs::recursive_directory_iterator entry(folder), end; entry != end; ++entry) {
        names.insert(entry->path().wstring());
        if (entry->path().filename() == L"Microsoft") {
            entry.disable_recursion_pending();
        }
    }
}

// Where programs put what they keep.
Names FilesOfTheComputer() {
    Names names;
    for (const wchar_t* variable : {L"TEMP", L"APPDATA", L"LOCALAPPDATA", L"ProgramData"}) {
        AddFiles(_wgetenv(variable), names);
    }
    return names;
}

// A key's values with their contents, and those of the keys below.
void AddValues(HKEY parent, const std::wstring& path, Names& names) {
    HKEY key = nullptr;
    if (RegOpenKeyExW(parent, path.c_str(), 0, KEY_READ, &key) != ERROR_SUCCESS) {
        return;
    }
    names.insert(path);
    std::wstring name(1000, L'\0');
    std::vector<BYTE> data(100'000);
    for (DWORD i = 0;; ++i) {
        DWORD length = static_cast<DWORD>(name.size());
        DWORD size = static_cast<DWORD>(data.size());
        if (RegEnumValueW(key, i, name.data(), &length, nullptr, nullptr, data.data(), &size) ==
            ERROR_NO_MORE_ITEMS) {
            break;
        }
        names.insert(path + L" " + name.substr(0, length) + L"=" +
                     std::wstring(data.begin(), data.begin() + size));
    }
    for (DWORD i = 0; RegEnumKeyW(key, i, name.data(), static_cast<DWORD>(name.size())) == ERROR_SUCCESS;
         ++i) {
        AddValues(parent, path + L"\\" + name.c_str(), names);
    }
    RegCloseKey(key);
}

Names SettingsOfTheComputer() {
    Names names;
    AddValues(HKEY_CURRENT_USER, L"Software", names);
    AddValues(HKEY_LOCAL_MACHINE, L"Software\\MXOVDocView", names);
    AddValues(HKEY_CLASSES_ROOT, L"MXOVTREETAB.MXOVDocViewCtrlVS2015.13", names);
    return names;
}

Names Added(const Names& before, const Names& after) {
    Names added;
    std::set_difference(after.begin(), after.end(), before.begin(), before.end(),
                        std::inserter(added, added.end()));
    return added;
}

// Loads, looks, edits, saves and closes, as users do.
void UseTheControl(const PackageBuilder& package) {
    ControlClient client;
    client.CallNumbers(L"OnSizeChange", {600, 620});
    ASSERT_EQ(S_OK, client.Call(L"LoadFile", {package.Path(), package.Folder() / L"saved.mxov"}));
    client.Click(client.Item(kGCodeList), 30, 30);
    const HWND popup = FindWindowW(L"#32770", L"Document Properties");
    ASSERT_TRUE(popup);
    SendDlgItemMessageW(popup, kDescriptionEdit, EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(L"faster"));
    EXPECT_TRUE(PumpUntil([&client] { return IsWindowEnabled(client.Item(kSaveButton)) != FALSE; }));
    DestroyWindow(popup);
    SendMessageW(client.Dialog(), WM_COMMAND, kSaveButton, 0);
    EXPECT_TRUE(fs::exists(package.Folder() / L"saved.mxov"));
    client.Call(L"Close");
}

} // namespace

TEST(TracesTest, ASessionLeavesNothingButThePackage) {
    const ComApartment apartment;
    {
        const ControlClient first; // what the system keeps of the first window
    }
    const PackageBuilder package;
    Names files;
    AddFiles(package.Folder().Path(), files);
    const Names elsewhere = FilesOfTheComputer();
    const Names settings = SettingsOfTheComputer();
    ASSERT_GT(settings.size(), 20u);
    UseTheControl(package);
    EXPECT_EQ(Added(settings, SettingsOfTheComputer()), Names());
    Names changed;
    AddFiles(package.Folder().Path(), changed);
    changed = Added(files, changed);
    EXPECT_EQ(changed, Names{package.Folder() / L"saved.mxov"});
    EXPECT_EQ(Added(elsewhere, FilesOfTheComputer()), changed);
}
