// The dialog's catalogue: reads a package and shows its documents.
#include "MXOVDocViewActiveXDlg.h"

#include "controls/RedrawPause.h"
#include "package/CatalogueLoader.h"
#include "package/DiskCatalogueSource.h"
#include "package/PackageInformation.h"
#include "package/RecordLists.h"

#include <algorithm>
#include <climits>
#include <iterator>
#include <optional>
#include <utility>

using namespace docview;

namespace {

constexpr int kSizeColumn = 1;
constexpr int kDateColumn = 2;
constexpr int kBehindAll = INT_MAX;
constexpr DocumentCategory kCategories[] = {DocumentCategory::PartAssembly, DocumentCategory::GCode,
                                            DocumentCategory::SetupSheets,
                                            DocumentCategory::AdditionalDocument};

} // namespace

void MXOVDocViewActiveXDlg::SetSize(int width, int height) {
    m_width = width;
    m_height = height;
}

void MXOVDocViewActiveXDlg::LoadCatalogue() {
    ClearAll();
    m_modified = FALSE;
    m_recentPackage = FALSE;
    const DiskCatalogueSource source(m_informationFile);
    m_recentPackage = IsRecentVersion(source.Value(inikey::kFileInfo, inikey::kVersion));
    EnableItem(IDC_SAVE, false);
    EnableDeleteButton(false);
    ShowAdditionalDocuments(m_recentPackage != FALSE);
    ReadPackageSummary();
    FillLists(CatalogueLoader(source, m_packageFolder).Load());
    if (GetSafeHwnd()) {
        UpdateData(FALSE);
    }
}

void MXOVDocViewActiveXDlg::ClearAll() {
    for (const DocumentCategory category : kCategories) {
        RecordsOf(category)->clear();
        RowsOf(category).clear();
    }
    for (const DocumentCategory category : kCategories) {
        if (ListOf(category)->GetItemCount() > 0) { // otherwise the system paints it again for nothing
            ListOf(category)->DeleteAllItems();
        }
    }
}

void MXOVDocViewActiveXDlg::ShowAdditionalDocuments(bool show) {
    m_recentPackage = show;
    ShowItem(IDC_ADD, show);
    ShowItem(IDC_DELETE, show);
    ShowItem(IDC_ADDITIONAL_BOX, show);
    if (!m_additionalBox.IsCollapsed()) {
        ShowItem(IDC_ADDITIONAL_LIST, show);
    }
}

void MXOVDocViewActiveXDlg::ShowItem(int id, bool show) {
    if (CWnd* item = GetDlgItem(id)) {
        item->ShowWindow(show ? SW_SHOW : SW_HIDE);
    }
}

void MXOVDocViewActiveXDlg::ReadPackageSummary() {
    PackageSummary summary = ReadSummary(DiskCatalogueSource(m_informationFile), m_packageFolder);
    m_thumbnailPath = std::move(summary.thumbnailPath);
    m_history = std::move(summary.history);
}

void MXOVDocViewActiveXDlg::FillLists(std::vector<CatalogueItem> items) {
    std::optional<RedrawPause> pauses[std::size(kCategories)]; // none for a list that stays empty
    for (std::size_t i = 0; i < std::size(kCategories); ++i) {
        const DocumentCategory category = kCategories[i];
        const auto count = static_cast<std::size_t>(std::ranges::count_if(
            items, [category](const CatalogueItem& item) { return item.record.category == category; }));
        if (count > 0) {
            pauses[i].emplace(*ListOf(category));
            RecordsOf(category)->reserve(count);
            ListOf(category)->SendMessage(LVM_SETITEMCOUNT, count); // reserves memory only
        }
    }
    for (CatalogueItem& item : items) {
        AddItemToList(item);
        RecordsOf(item.record.category)->push_back(std::move(item.record));
    }
}

void MXOVDocViewActiveXDlg::AddItemToList(const CatalogueItem& item) {
    if (CListCtrl* list = ListOf(item.record.category)) {
        ListRows& rows = RowsOf(item.record.category);
        rows.push_back({item.record.fileName, item.sizeText, item.record.timestamp, item.image});
        ShowRow(*list, rows.back());
    }
}

void MXOVDocViewActiveXDlg::ShowRow(CListCtrl& list, const ListRow& row) {
    if (!list.GetSafeHwnd()) {
        return;
    }
    const int place = list.InsertItem(kBehindAll, row.name.c_str(), row.image);
    list.SetItemText(place, kSizeColumn, row.size.c_str());
    list.SetItemText(place, kDateColumn, row.date.c_str());
}

// Reads nothing: what was loaded, edited or cleared while there was another window, or none, stays so. The
// records may belong to another control by now.
void MXOVDocViewActiveXDlg::ShowLoadedPackage() {
    ShowAdditionalDocuments(m_recentPackage != FALSE);
    for (const DocumentCategory category : kCategories) {
        CListCtrl& list = *ListOf(category);
        const RedrawPause pause(list);
        for (const ListRow& row : RowsOf(category)) {
            ShowRow(list, row);
        }
    }
    SetModified(m_modified != FALSE);
}
