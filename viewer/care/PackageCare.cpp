#include "care/PackageCare.h"

#include "care/PackageCheck.h"
#include "care/PortableCopy.h"
#include "common/Paths.h"
#include "compare/ShowComparison.h"
#include "control/PropertiesWindow.h"
#include "controller/PackageController.h"
#include "package/Paths.h"
#include "package/Sentence.h"
#include "prompts/FileDialog.h"
#include "prompts/TaskPrompt.h"
#include "prompts/WorkPrompt.h"
#include "texts/Texts.h"

#include <memory>

namespace viewer {

PackageCare::PackageCare(PackageView& view, PackageController& packages)
    : m_view(view), m_packages(packages), m_findings([this](CureCommand command) { Cure(command); }) {}

void PackageCare::Check() {
    m_packages.Change([this](const PackageSession& session) {
        CheckNow(session);
        return false;
    });
}

void PackageCare::CheckNow(const PackageSession& session) {
    const std::wstring name = FileName(session.PackageFile());
    const auto report = std::make_shared<CheckReport>();
    const auto check = [report, folder = session.FolderWithSeparator()](WorkProgress& progress) {
        *report = CheckUnpacked(folder, progress);
    };
    if (!WaitForWork(m_view.Frame(), Text(IDS_CHECKING, {name}), check) || report->cancelled) {
        return;
    }
    if (!report->ok) {
        m_view.ShowError(Text(IDS_CANNOT_CHECK, {name, Sentence(report->message)}));
        return;
    }
    m_checked = session.Folder();
    m_findings.Show(m_view.Frame(), name, std::move(report->findings));
}

void PackageCare::Cure(CureCommand command) {
    m_packages.Change([this, command](PackageSession& session) {
        const care::Finding* finding = m_findings.Selected();
        if (!finding) {
            return false;
        }
        CloseProperties(m_view.Frame());
        CureActions actions(m_findings.Handle(), session, m_findings.Findings());
        const bool changed = actions.Run(command, *finding);
        if (changed && actions.Cured() > 1) {
            m_view.ShowNote(Text(IDS_LINKS_MENDED, {std::to_wstring(actions.Cured())}));
        }
        CheckNow(session);
        return changed;
    });
}

void PackageCare::SavePortableCopy() {
    m_packages.Change([this](const PackageSession& session) {
        CloseProperties(m_view.Frame());
        SavePortableCopy(session);
        return false;
    });
}

void PackageCare::SavePortableCopy(const PackageSession& session) {
    const std::optional<std::wstring> path = AskForCopy(
        m_view.Frame(), Text(IDS_PORTABLE_NAME, {FileStem(session.PackageFile())}), IDS_SAVE_PORTABLE);
    if (!path) {
        return;
    }
    if (common::IsSamePath(*path, session.PackageFile())) {
        m_view.ShowError(Text(IDS_PORTABLE_IS_OPEN));
        return;
    }
    const auto copy = std::make_shared<PortableCopy>();
    const auto write = [copy, folder = session.Folder(), path](WorkProgress& progress) {
        *copy = WritePortableCopy(folder, *path, progress);
    };
    const std::wstring name = FileName(*path);
    if (!WaitForWork(m_view.Frame(), Text(IDS_SAVING_PORTABLE, {name}), write) || copy->result.cancelled) {
        return;
    }
    if (!copy->result.ok) {
        m_view.ShowError(Text(IDS_PORTABLE_FAILED, {Sentence(copy->result.message)}));
        return;
    }
    ShowTaskPrompt(m_view.Frame(), Text(IDS_PORTABLE_SAVED, {name}), PortableSummary(*copy),
                   {Text(IDS_CLOSE)}, TD_INFORMATION_ICON);
}

void PackageCare::Compare() {
    m_packages.Change([this](const PackageSession& session) {
        CloseProperties(m_view.Frame());
        if (const std::optional<std::wstring> older =
                AskForPackageOrFolder(m_view.Frame(), IDS_CHOOSE_OLDER, IDS_CHOOSE_FOLDER)) {
            const std::wstring name = FileName(*older).empty() ? *older : FileName(*older); // of a drive
            Compare(name, {.before = *older,
                           .after = session.Folder(),
                           .beforeTitle = name,
                           .afterTitle = Text(IDS_OPEN_NOW),
                           .summary = Text(IDS_DIFFERS_FROM, {name})});
        }
        return false;
    });
}

void PackageCare::CompareFile() {
    m_packages.Change([this](const PackageSession& session) {
        CloseProperties(m_view.Frame());
        const std::wstring name = FileName(session.PackageFile());
        Compare(name, {.before = session.Folder(),
                       .after = session.PackageFile(),
                       .beforeTitle = Text(IDS_OPEN_NOW),
                       .afterTitle = name,
                       .summary = Text(IDS_FILE_DIFFERS, {name})});
        return false;
    });
}

void PackageCare::Compare(const std::wstring& name, const ComparedPackages& packages) {
    if (const std::wstring error = ShowComparison(m_view.Frame(), name, packages); !error.empty()) {
        m_view.ShowError(error);
    }
}

void PackageCare::OnPackageChanged() {
    const PackageSession* session = m_packages.Session();
    if (!session || session->Folder() != m_checked) {
        m_findings.Close();
    }
}

} // namespace viewer
