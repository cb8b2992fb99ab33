// The floating window that shows and edits the properties of one document.
#pragma once

#include "afxcmn.h"
#include "afxwin.h"

#include "common/Handles.h"
#include "controls/ModelessDialog.h"
#include "controls/MXOVGroupBoxEx.h"
#include "DialogKeyboard.h"
#include "HistoryList.h"
#include "package/DocumentRecord.h"
#include "resources/resource.h"

#include <string>
#include <vector>

/// Shows name, path, size and description of a document with the package's preview and history. Changes are
/// written to the information file at once, and the owner is sent the command of its Update button.
///
/// There is at most one. It closes when a mouse button is pressed anywhere else on its thread, and deletes
/// itself with its window.
class MXOVPopupDlg : public ModelessDialog {
public:
    enum { IDD = IDD_DOCUMENT_PROPERTIES };

    /// The existing popup, or a new one, hidden and empty, that belongs to the owner. Null when it cannot be
    /// created. The owner must call CloseOf before it is destroyed.
    static MXOVPopupDlg* Open(CWnd& owner);

    /// Closes the popup if it belongs to the owner.
    static void CloseOf(const CWnd& owner);

    /// The existing popup, or null.
    static MXOVPopupDlg* Current() { return current; }

    /// Shows a document of a category's record list. A category or an index that does not exist shows
    /// nothing. `recent`: the package can be edited.
    void FillProperties(const std::wstring& previewPath, const std::vector<docview::HistoryEntry>& history,
                        DocumentCategory category, int index, const std::wstring& informationFile,
                        const std::wstring& packageFolder, const std::wstring& packageFile, bool recent);

    /// Moves the popup beside a control of this width at the left edge of the screen, in pixels.
    void PlaceBeside(int controlWidth);

    /// Writes path and description of the document into the information file and notifies the owner.
    void SaveProperties();

    BOOL DestroyWindow() override;

protected:
    void DoDataExchange(CDataExchange* dx) override;
    void PostNcDestroy() override;
    BOOL OnInitDialog() override;

    afx_msg void OnPaint();
    afx_msg HBRUSH OnCtlColor(CDC* dc, CWnd* window, UINT kind);
    afx_msg void OnBrowse();
    afx_msg void OnDescriptionChanged();
    afx_msg void OnHelp();
    DECLARE_MESSAGE_MAP()

private:
    explicit MXOVPopupDlg(CWnd& owner);
    ~MXOVPopupDlg() override;

    // Closing
    static LRESULT CALLBACK MouseHook(int code, WPARAM message, LPARAM parameter) noexcept;
    void CloseOnPress(POINT screen);
    static void CloseByCommand();
    void Close();
    bool IsEdited() const;

    // Content
    void SetLabels();
    void ShowPreview(const std::wstring& path);
    void ShowHistory(const std::vector<docview::HistoryEntry>& history);
    void ShowFields(bool recent);
    void ShowSize(const std::wstring& path);
    void ShowPicture(int id, CBitmap& shown, common::UniqueBitmap picture);
    void DisableItem(int id);

    // Saving
    void ShareDescription(docview::RecordList& records);
    void WriteValue(const wchar_t* key, const std::wstring& value);
    void PostUpdate();

    static MXOVPopupDlg* current;
    static bool browsing; // the file dialog is open

    CWnd* m_owner;
    HHOOK m_hook = nullptr; // never removed
    docview::DialogKeyboard m_keyboard;
    DocumentCategory m_category{}; // none until filled
    int m_index = -1;              // in the category's record list
    std::wstring m_informationFile;
    std::wstring m_packageFolder;
    std::wstring m_packageFile;
    DocumentRecord m_record;   // edits go here first
    DocumentRecord m_snapshot; // as it was when the popup was filled
    CString m_pathText;
    CString m_descriptionText;
    CBitmap m_helpBitmap;
    CBitmap m_previewBitmap;
    MXOVGroupBoxEx m_previewBox;
    MXOVGroupBoxEx m_historyBox;
    MXOVGroupBoxEx m_propertiesBox;
    docview::HistoryList m_history;
    CStatic m_name;
    CStatic m_size;
    CStatic m_nameLabel;
    CStatic m_pathLabel;
    CStatic m_sizeLabel;
    CStatic m_descriptionLabel;
};
