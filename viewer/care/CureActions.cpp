#include "care/CureActions.h"

#include "care/FileSearch.h"
#include "care/FolderChanges.h"
#include "care/UnpackedContent.h"
#include "package/Paths.h"
#include "package/Sentence.h"
#include "prompts/ChoiceMenu.h"
#include "prompts/FileDialog.h"
#include "prompts/TaskPrompt.h"
#include "prompts/WorkPrompt.h"
#include "session/PackageSession.h"
#include "texts/Texts.h"

#include <care/Links.h>

#include <memory>

namespace viewer {

care::Cure CureOf(CureCommand command) {
    switch (command) {
    case CureCommand::MakeCopy:
        return care::Cure::MakeCopy;
    case CureCommand::Remove:
        return care::Cure::Remove;
    case CureCommand::Attach:
        return care::Cure::Attach;
    case CureCommand::SetDate:
        return care::Cure::SetDate;
    default:
        return care::Cure::Find;
    }
}

bool CureActions::Run(CureCommand command, const care::Finding& finding) {
    std::wstring path;
    if (CureOf(command) == care::Cure::Find) {
        std::optional<std::wstring> chosen = AskForFile(command, FileName(finding.document));
        if (!chosen) {
            return false;
        }
        path = std::move(*chosen);
    }
    try {
        return Change(CureOf(command), finding, path);
    } catch (const care::Refusal& refusal) {
        ShowFailure(Sentence(refusal.message));
        return false;
    }
}

std::optional<std::wstring> CureActions::AskForFile(CureCommand command, const std::wstring& name) const {
    return command == CureCommand::Find ? AskForDocument(m_owner, name) : Search(name);
}

std::optional<std::wstring> CureActions::Search(const std::wstring& name) const {
    const std::optional<std::wstring> folder = AskForFolder(m_owner, IDS_FIND_BELOW);
    if (!folder) {
        return std::nullopt;
    }
    struct Found {
        std::vector<std::wstring> files;
        bool cancelled = false;
    };
    const auto found = std::make_shared<Found>();
    const auto search = [found, folder, name](WorkProgress& progress) {
        found->files = FindBelow(*folder, name, progress);
        found->cancelled = progress.IsCancelled();
    };
    if (!WaitForWork(m_owner, Text(IDS_SEARCHING, {*folder}), search) || found->cancelled) {
        return std::nullopt;
    }
    if (found->files.empty()) {
        ShowFailure(Text(IDS_NOT_BELOW, {name, *folder}));
        return std::nullopt;
    }
    return found->files.size() == 1 ? found->files.front() : ChooseFromMenu(m_owner, found->files);
}

bool CureActions::Change(care::Cure cure, const care::Finding& finding, const std::wstring& path) {
    care::PackageContent content;
    if (const mxovshare::PackageResult result = ReadUnpacked(m_session.Folder(), content); !result.ok) {
        ShowFailure(Sentence(result.message));
        return false;
    }
    if (!care::IsCurrent(finding, content)) {
        ShowFailure(Text(IDS_OUTDATED));
        return false;
    }
    care::FindingCure edit(content, m_session.FolderWithSeparator());
    edit.Apply(cure, finding, path);
    m_cured = 1;
    if (cure == care::Cure::Find && finding.code == std::wstring_view(care::finding::kLinkMissing)) {
        MendLinksBeside(edit, content, finding, path);
    }
    return Apply(edit.Changes());
}

void CureActions::MendLinksBeside(care::FindingCure& edit, const care::PackageContent& content,
                                  const care::Finding& finding, const std::wstring& path) {
    for (const care::Finding& other : m_findings) {
        if (other.code != std::wstring_view(care::finding::kLinkMissing) || &other == &finding ||
            !care::IsCurrent(other, content)) {
            continue;
        }
        const std::optional<std::wstring> moved = care::MovedWith(other.document, finding.document, path);
        if (moved && FileExists(*moved)) {
            edit.Apply(care::Cure::Find, other, *moved);
            ++m_cured;
        }
    }
}

bool CureActions::Apply(const mxovshare::PackageChanges& changes) {
    const std::wstring failure = ApplyToFolder(m_session.FolderWithSeparator(), changes);
    if (!failure.empty()) {
        ShowFailure(failure);
        return false;
    }
    for (const mxovshare::AddedFile& added : changes.added) {
        m_session.Accept(added.name);
    }
    for (const std::wstring& removed : changes.removed) {
        m_session.Accept(removed);
    }
    return true;
}

void CureActions::ShowFailure(const std::wstring& text) const {
    ShowTaskPrompt(m_owner, text, {}, {Text(IDS_CLOSE)}, TD_WARNING_ICON);
}

} // namespace viewer
