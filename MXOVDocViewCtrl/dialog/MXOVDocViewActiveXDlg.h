// The dialog that shows the documents of a package in four foldable sections.
#pragma once

#include "controls/ModelessDialog.h"
#include "controls/MXOVGroupBoxEx.h"
#include "package/ItemText.h"
#include "resources/resource.h"

#include "afxcmn.h"
#include "afxwin.h"

#include <map>
#include <string>
#include <vector>

/// The whole user interface of the control. A package can be loaded before the window exists. The sources are
/// split by subject: lists, catalogue, actions, saving.
class MXOVDocViewActiveXDlg : public ModelessDialog {
public:
    enum { IDD = IDD_MAIN };

    explicit MXOVDocViewActiveXDlg(CWnd* parent = nullptr);

    /// Path of the information file, the folder that holds the unpacked package, and the package file itself.
    /// All are stored unchanged; paths inside the package are appended to the folder as it stands.
    void SetInformationFile(const std::wstring& path) { m_informationFile = path; }
    void SetPackageFolder(const std::wstring& folder) { m_packageFolder = folder; }
    void SetPackageFile(const std::wstring& path) { m_packageFile = path; }

    /// Stores the size that the host gave the control, in pixels.
    void SetSize(int width, int height);

    /// Replaces the shown documents with what the information file and the package folder contain now.
    void LoadCatalogue();

    /// Clears records and lists. Paths, flags, preview and history stay.
    void ClearAll();

    /// Asks whether to save when there are unsaved changes, and rebuilds the package on Yes. The dialog stays
    /// as it is.
    void SaveOnClose();

protected:
    void DoDataExchange(CDataExchange* dx) override;
    BOOL OnInitDialog() override;
    void PostNcDestroy() override;

    afx_msg void OnPaint();
    afx_msg HBRUSH OnCtlColor(CDC* dc, CWnd* window, UINT kind);
    afx_msg void OnSize(UINT type, int cx, int cy);
    afx_msg void OnContextMenu(CWnd* window, CPoint point);
    afx_msg void OnClickPart(NMHDR* header, LRESULT* result);
    afx_msg void OnClickGCode(NMHDR* header, LRESULT* result);
    afx_msg void OnClickSetup(NMHDR* header, LRESULT* result);
    afx_msg void OnClickAdditional(NMHDR* header, LRESULT* result);
    afx_msg void OnDoubleClickGCode(NMHDR* header, LRESULT* result);
    afx_msg void OnDoubleClickSetup(NMHDR* header, LRESULT* result);
    afx_msg void OnDoubleClickAdditional(NMHDR* header, LRESULT* result);
    afx_msg void OnKillFocusAdditional(NMHDR* header, LRESULT* result);
    afx_msg void OnAdd();
    afx_msg void OnDelete();
    afx_msg void OnSave();
    afx_msg void OnUpdate();
    DECLARE_MESSAGE_MAP()

private:
    /// What a list shows of a document. The record behind it may be replaced by another control.
    struct ListRow {
        std::wstring name;
        std::wstring size;
        std::wstring date;
        int image = 0;
    };
    using ListRows = std::vector<ListRow>;

    // Lists
    void CreateImageLists();
    void SetUpList(CListCtrl& list);
    void LoadButtonImages();
    CListCtrl* ListOf(DocumentCategory category);
    ListRows& RowsOf(DocumentCategory category) { return m_rows[category]; }
    static void ShowRow(CListCtrl& list, const ListRow& row);
    void ClickPackageDocument(DocumentCategory category);
    void ShowDocumentProperties(DocumentCategory category, int item);
    void EnableItem(int id, bool enable);
    void EnableDeleteButton(bool enable);

    // Catalogue
    void ShowAdditionalDocuments(bool show);
    void ShowItem(int id, bool show);
    void ReadPackageSummary();
    void FillLists(std::vector<docview::CatalogueItem> items);
    void AddItemToList(const docview::CatalogueItem& item);
    void ShowLoadedPackage();

    // Actions
    void OpenSelectedDocument(DocumentCategory category);
    void OpenDocument(const DocumentRecord& record);
    void AddAdditionalDocument();
    void WriteAdditionalDocument(const DocumentRecord& record);
    void DeleteAdditionalDocument();
    void RemoveAdditionalDocument(const DocumentRecord& record);

    // Saving
    void SetModified(bool modified);
    void RegeneratePackage();

    CListCtrl m_partList;
    CListCtrl m_gCodeList;
    CListCtrl m_setupList;
    CListCtrl m_additionalList;
    BOOL m_buttonImagesMissing = TRUE; // until the button bitmaps are loaded
    MXOVGroupBoxEx m_partBox;
    MXOVGroupBoxEx m_gCodeBox;
    MXOVGroupBoxEx m_setupBox;
    MXOVGroupBoxEx m_additionalBox;
    CButton m_addButton;
    CButton m_deleteButton;
    CImageList m_smallImages;
    CImageList m_largeImages;
    std::map<DocumentCategory, ListRows> m_rows; // as in the lists; a new window shows them again
    std::wstring m_thumbnailPath;                // empty without a preview
    int m_width = 0;                             // pixels, from the host's last call
    int m_height = 0;
    std::vector<docview::HistoryEntry> m_history;
    BOOL m_modified = FALSE;     // the folder holds changes that the package file does not
    BOOL m_recentPackage = TRUE; // the package can hold additional documents
    std::wstring m_informationFile;
    std::wstring m_packageFolder;
    std::wstring m_packageFile;
    CBitmap m_addBitmap; // the buttons show the bitmaps, but do not own them
    CBitmap m_deleteBitmap;
};
