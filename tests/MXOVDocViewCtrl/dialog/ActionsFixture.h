// The dialog with a package, for tests of "+", "x" and the double click.
#pragma once

#include "DialogFixture.h"
#include "FileDialogDriver.h"
#include "package/RecordLists.h"
#include "RealMouse.h"
#include "shell/HostText.h"

#include <commctrl.h>
#include <mxovshare.h>
#include <ole2.h>

class ActionsFixture : public DialogFixture {
protected:
    void SetUp() override {
        ASSERT_TRUE(SUCCEEDED(OleInitialize(nullptr)));
        Create();
    }
    void TearDown() override { OleUninitialize(); }

    /// Double-clicks an item as the list view reports it.
    void DoubleClick(int list, int item) {
        Select(list, item);
        Notify(list, NM_DBLCLK);
    }

    /// Waits until the associated program has been given a document with this content.
    bool WasOpened(const std::string& content) {
        return PumpUntil([&] { return m_elsewhere.Read(L"opened") == content; });
    }

    /// Presses "+" and chooses a file.
    void Add(const std::wstring& path, bool linked) {
        const FileDialogDriver driver([&](HWND dialog) {
            const HWND box = FileDialogDriver::CheckBox(dialog, docview::HostText(151));
            if ((SendMessageW(box, BM_GETCHECK, 0, 0) == BST_CHECKED) != linked) {
                SendMessageW(box, BM_CLICK, 0, 0);
            }
            FileDialogDriver::Choose(dialog, path);
        });
        Command(IDC_ADD);
    }

    void RemoveAdditional(int item) {
        Select(IDC_ADDITIONAL_LIST, item);
        Notify(IDC_ADDITIONAL_LIST, NM_CLICK);
        Command(IDC_DELETE);
    }

    std::wstring Stored(const std::wstring& section, const std::wstring& key) const {
        return mxovshare::INIFile::GetKeyValueFromINI(section, key, m_package / L"mxinfo.ini");
    }
    std::vector<std::wstring> Sections() const {
        return mxovshare::INIFile::GetSectionNamesFromINI(L"REFERANCE_FILE", m_package / L"mxinfo.ini");
    }
    bool Exists(const std::wstring& name) const {
        return GetFileAttributesW((m_package / name).c_str()) != INVALID_FILE_ATTRIBUTES;
    }

    TempFolder m_elsewhere;
};
