#include "earlier/VersionsDialog.h"

#include "earlier/VersionChanges.h"
#include "package/Paths.h"
#include "package/ValueText.h"
#include "resources/resource.h"
#include "texts/Texts.h"
#include "window/Dialog.h"
#include "window/ReportList.h"

namespace viewer {

namespace {

constexpr int kSavedWidth = 160; // of its column, at 96 dots per inch
constexpr int kByWidth = 90;
constexpr int kRemarksWidth = 130;
constexpr int kFileWidth = 400;

class VersionsDialog : public Dialog {
public:
    VersionsDialog(const ShownVersions& shown, VersionActions& actions)
        : m_shown(shown), m_versions(shown.list.versions), m_actions(actions) {
        for (std::size_t i = 0; i < m_versions.size(); ++i) {
            m_changes.push_back(i == 0 ? Text(IDS_FIRST_VERSION)
                                       : ChangesText(m_versions[i - 1], m_versions[i]));
        }
    }

    void Show(HWND owner) { ShowModal(IDD_VERSIONS, owner); }

private:
    bool OnInit() override {
        SetWindowTextW(Handle(), Text(IDS_VERSIONS_TITLE).c_str());
        SetItemText(IDC_VERSIONS_SUMMARY, Summary());
        SetItemText(IDC_VERSIONS_LIST, Text(IDS_VERSIONS_TITLE));
        SetItemText(IDC_VERSIONS_SINCE, Text(IDS_SINCE_THEN));
        SetItemText(IDC_VERSIONS_DOCUMENTS, Text(IDS_SINCE_THEN));
        SetItemText(IDC_VERSIONS_LOOK, Text(IDS_LOOK_AT));
        SetItemText(IDC_VERSIONS_COMPARE, Text(IDS_COMPARE_VERSION));
        SetItemText(IDC_VERSIONS_TAKE_DOCUMENT, Text(IDS_TAKE_DOCUMENT));
        SetItemText(IDC_VERSIONS_TAKE_ALL, Text(IDS_TAKE_ALL));
        SetItemText(IDC_VERSIONS_KEEP, Text(IDS_KEEP_VERSIONS));
        SetItemText(IDCANCEL, Text(IDS_CLOSE));
        CheckDlgButton(Handle(), IDC_VERSIONS_KEEP, m_shown.areKept ? BST_CHECKED : BST_UNCHECKED);
        EnableWindow(Item(IDC_VERSIONS_KEEP), !m_shown.isDecided);
        AddReportColumns(Item(IDC_VERSIONS_LIST), {{Text(IDS_COLUMN_SAVED), kSavedWidth},
                                                   {Text(IDS_COLUMN_BY), kByWidth},
                                                   {Text(IDS_COLUMN_REMARKS), kRemarksWidth},
                                                   {Text(IDS_COLUMN_CHANGES)}});
        AddReportColumns(Item(IDC_VERSIONS_DOCUMENTS),
                         {{Text(IDS_COLUMN_DOCUMENT), kFileWidth}, {Text(IDS_COLUMN_CHANGE)}});
        FillReport(Item(IDC_VERSIONS_LIST), m_versions.size(), 0);
        ShowVersion();
        return true;
    }

    void OnDpiChanged(UINT before, UINT after) override {
        for (const int list : {IDC_VERSIONS_LIST, IDC_VERSIONS_DOCUMENTS}) {
            ScaleReportColumns(Item(list), before, after);
        }
    }

    // A version that cannot be read comes first.
    [[nodiscard]] std::wstring Summary() const {
        if (!m_shown.list.damaged.empty()) {
            const FILETIME kept = TimeOfId(m_shown.list.damaged.back());
            return Text(IDS_VERSION_DAMAGED, {ShortLocalTimeText(kept)});
        }
        return Text(m_versions.empty() ? IDS_NO_VERSIONS : IDS_VERSIONS_SUMMARY, {m_shown.package});
    }

    bool OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override {
        switch (message) {
        case WM_NOTIFY:
            OnNotify(*reinterpret_cast<NMHDR*>(lParam));
            return true;
        case WM_COMMAND:
            return OnCommand(LOWORD(wParam));
        default:
            return false;
        }
    }

    void OnNotify(NMHDR& header) {
        const bool isVersion = header.idFrom == IDC_VERSIONS_LIST;
        if (!isVersion && header.idFrom != IDC_VERSIONS_DOCUMENTS) {
            return;
        }
        if (header.code == LVN_GETDISPINFOW) {
            LVITEMW& item = reinterpret_cast<NMLVDISPINFOW&>(header).item;
            const auto line = static_cast<std::size_t>(item.iItem);
            AnswerText(item,
                       isVersion ? VersionText(line, item.iSubItem) : DocumentText(line, item.iSubItem));
        } else if (header.code == LVN_ITEMCHANGED && isVersion) {
            ShowVersion();
        } else if (header.code == LVN_ITEMCHANGED) {
            EnableButtons();
        } else if (header.code == NM_DBLCLK && isVersion) {
            OnCommand(IDC_VERSIONS_LOOK);
        }
    }

    bool OnCommand(int command) {
        if (command == IDCANCEL) {
            return End();
        }
        if (command == IDC_VERSIONS_KEEP) {
            m_actions.KeepVersions(IsDlgButtonChecked(Handle(), IDC_VERSIONS_KEEP) == BST_CHECKED);
            return true;
        }
        const Version* version = Selected();
        return version && IsWindowEnabled(Item(command)) && Run(command, *version);
    }

    bool Run(int command, const Version& version) {
        switch (command) {
        case IDC_VERSIONS_LOOK:
            m_actions.LookAt(Handle(), version);
            return true;
        case IDC_VERSIONS_COMPARE:
            m_actions.CompareWith(Handle(), version);
            return true;
        case IDC_VERSIONS_TAKE_DOCUMENT:
            TakeDocumentBack(version);
            return true;
        case IDC_VERSIONS_TAKE_ALL:
            return m_actions.TakeAllBack(Handle(), version) && End();
        default:
            return false;
        }
    }

    // The focus leaves a button that is disabled afterwards.
    void TakeDocumentBack(const Version& version) {
        const care::FileChange* document = Document();
        if (document && m_actions.TakeBack(Handle(), version, *document)) {
            SendMessageW(Handle(), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(Item(IDC_VERSIONS_DOCUMENTS)),
                         TRUE);
            ShowVersion();
        }
    }

    void ShowVersion() {
        const Version* version = Selected();
        m_documents =
            version ? care::CompareFiles(ContentOf(*version), m_shown.open) : std::vector<care::FileChange>();
        FillReport(Item(IDC_VERSIONS_DOCUMENTS), m_documents.size(), 0);
        InvalidateRect(Item(IDC_VERSIONS_DOCUMENTS), nullptr, TRUE);
        EnableButtons();
    }

    void EnableButtons() const {
        const Version* version = Selected();
        const care::FileChange* document = Document();
        EnableWindow(Item(IDC_VERSIONS_LOOK), version != nullptr);
        EnableWindow(Item(IDC_VERSIONS_COMPARE), version != nullptr);
        EnableWindow(Item(IDC_VERSIONS_TAKE_ALL), version && !IsSame(*version, m_shown.open));
        EnableWindow(Item(IDC_VERSIONS_TAKE_DOCUMENT),
                     document && document->kind != care::FileChangeKind::Added);
    }

    [[nodiscard]] std::wstring VersionText(std::size_t line, int column) const {
        const std::size_t number = m_versions.size() - 1 - line; // the newest comes first
        const Version& version = m_versions.at(number);
        switch (column) {
        case 0:
            return ShortLocalTimeText(version.saved);
        case 1:
            return version.by;
        case 2:
            return version.remarks;
        default:
            return m_changes.at(number);
        }
    }

    [[nodiscard]] std::wstring DocumentText(std::size_t line, int column) const {
        const care::FileChange& document = m_documents.at(line);
        if (column > 0) {
            return Text(KindText(document.kind));
        }
        return document.kind == care::FileChangeKind::Renamed
                   ? Text(IDS_BEFORE_AND_AFTER, {FileName(document.oldName), FileName(document.name)})
                   : FileName(document.name);
    }

    [[nodiscard]] const Version* Selected() const {
        const int line = SelectedLine(Item(IDC_VERSIONS_LIST));
        return line < 0 ? nullptr : &m_versions.at(m_versions.size() - 1 - static_cast<std::size_t>(line));
    }

    [[nodiscard]] const care::FileChange* Document() const {
        const int line = SelectedLine(Item(IDC_VERSIONS_DOCUMENTS));
        return line < 0 || static_cast<std::size_t>(line) >= m_documents.size()
                   ? nullptr
                   : &m_documents[static_cast<std::size_t>(line)];
    }

    const ShownVersions& m_shown;
    const std::vector<Version>& m_versions; // the oldest first
    VersionActions& m_actions;
    std::vector<std::wstring> m_changes;       // of each version
    std::vector<care::FileChange> m_documents; // from the selected version to what is open
};

} // namespace

void ShowVersions(HWND owner, const ShownVersions& shown, VersionActions& actions) {
    VersionsDialog(shown, actions).Show(owner);
}

} // namespace viewer
