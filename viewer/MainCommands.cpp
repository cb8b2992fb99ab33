#include "MainCommands.h"

#include "care/PackageCare.h"
#include "control/ControlHost.h"
#include "control/PropertiesWindow.h"
#include "controller/PackageController.h"
#include "document/DocumentActions.h"
#include "DocumentSelection.h"
#include "earlier/PackageVersions.h"
#include "HelpMenu.h"
#include "MainPages.h"
#include "news/NewsBar.h"
#include "package/DocumentDetails.h"
#include "package/PackageSummary.h"
#include "package/Paths.h"
#include "prompts/FileDialog.h"
#include "prompts/TaskPrompt.h"
#include "resources/resource.h"
#include "texts/Texts.h"
#include "window/DroppedFiles.h"

namespace viewer {

void MainCommands::Run(int command) {
    switch (command) {
    case IDM_FILE_OPEN:
        BrowseForPackage();
        break;
    case IDM_FILE_SAVE:
        m_packages.Save();
        break;
    case IDM_FILE_SAVE_NOTE:
        m_packages.SaveWithNote();
        break;
    case IDM_FILE_SAVE_AS:
        m_packages.SaveAs();
        break;
    case IDM_FILE_SAVE_PORTABLE:
        m_care.SavePortableCopy();
        break;
    case IDM_FILE_CHECK:
        m_care.Check();
        break;
    case IDM_FILE_COMPARE:
        m_care.Compare();
        break;
    case IDM_FILE_VERSIONS:
        m_versions.Show();
        break;
    case IDM_FILE_SHOW_FOLDER:
        ShowPackageFolder();
        break;
    case IDM_FILE_PROPERTIES:
        ShowPackageProperties();
        break;
    case IDM_FILE_CLOSE:
        m_packages.Close();
        break;
    case IDM_FILE_EXIT:
        SendMessageW(m_view.Frame(), WM_CLOSE, 0, 0);
        break;
    case IDM_EDIT_PASTE:
        Paste();
        break;
    case IDM_VIEW_REFRESH:
        m_packages.Reload();
        break;
    case IDM_PACKAGE_COMPARE:
        m_care.CompareFile();
        break;
    case IDM_VIEW_NEXT_PANE:
        FocusNextPane();
        break;
    case IDM_DOCUMENT_FIND:
        FindDocumentFile();
        break;
    case IDM_HELP_TOPICS:
        if (const std::wstring error = ShowHelpTopics(); !error.empty()) {
            m_view.ShowError(error);
        }
        break;
    case IDM_HELP_ABOUT:
        ShowAbout(m_view.Frame(), m_control.File());
        break;
    default:
        if (command >= IDM_RECENT_FIRST && command <= IDM_RECENT_LAST) {
            OpenRecent(static_cast<std::size_t>(command - IDM_RECENT_FIRST));
        }
        break;
    }
}

void MainCommands::ShowPackageFolder() {
    const PackageSession* session = m_packages.Session();
    const std::wstring error =
        session ? ShowInFolder(m_view.Frame(), session->PackageFile()) : std::wstring();
    if (!error.empty()) {
        m_view.ShowError(error);
    }
}

void MainCommands::ShowPackageProperties() {
    if (const PackageSession* session = m_packages.Session()) {
        CloseProperties(m_view.Frame());
        ShowTaskPrompt(
            m_view.Frame(), FileName(session->PackageFile()),
            PropertiesText(session->FolderWithSeparator(), session->PackageFile(), session->Entries()),
            {Text(IDS_CLOSE)}, TD_INFORMATION_ICON);
    }
}

void MainCommands::Paste() {
    const std::vector<std::wstring> files = PastedFiles(m_view.Frame());
    if (files.empty()) {
        m_view.ShowNote(Text(IDS_NOTHING_TO_PASTE));
    } else {
        m_packages.TakeFiles(files, std::nullopt);
    }
}

void MainCommands::BrowseForPackage() {
    CloseProperties(m_view.Frame());
    if (const std::optional<std::wstring> path = AskForPackage(m_view.Frame(), IDS_OPEN_PACKAGE)) {
        m_packages.Open(*path);
    }
}

void MainCommands::OpenRecent(std::size_t index) {
    const std::vector<std::wstring>& recent = m_packages.Recent().Items();
    if (index < recent.size()) {
        m_packages.Open(std::wstring(recent[index]));
    }
}

// Points the document at another file and shows that.
void MainCommands::FindDocumentFile() {
    if (!m_pages.Document() || !m_selection.Row()) {
        return;
    }
    const DocumentDetails document = *m_pages.Document();
    const DocumentRow row = *m_selection.Row();
    const std::optional<std::wstring> path = AskForDocument(m_view.Frame(), document.name);
    const auto relink = [&](const PackageSession& session) {
        Relink(session.FolderWithSeparator(), document, *path);
        return true;
    };
    if (path && m_packages.Change(relink)) {
        m_control.SelectRow(row.list, row.row);
    }
}

// From the control to the bar, if it has buttons, to the pages, and to the control again.
void MainCommands::FocusNextPane() {
    const bool isInControl = m_control.HasFocus();
    if (isInControl && m_news.TakeFocus()) {
        return;
    }
    if (isInControl || m_news.HasFocus()) {
        m_pages.TakeFocus();
    } else {
        SetFocus(m_view.Frame());
    }
}

} // namespace viewer
