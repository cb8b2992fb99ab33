#include "controller/PackageAdding.h"

#include "control/ControlHost.h"
#include "controller/PackageView.h"
#include "package/PackageInformation.h"
#include "prompts/AttachPrompt.h"
#include "session/PackageSession.h"
#include "texts/Texts.h"

namespace viewer {

PackageAdding::PackageAdding(PackageView& view, ControlHost& control, PackageSession& session)
    : m_view(view), m_control(control), m_session(session), m_hadChanges(control.HasChanges()),
      m_repair(session.FolderWithSeparator()) {}

void PackageAdding::Finish() {
    const std::optional<AddedDocument> document = m_repair.Find();
    if (!document) {
        return;
    }
    const bool kept = Resolve(*document);
    m_control.LoadFile(m_session.FolderWithSeparator(), m_session.PackageFile());
    if (kept || m_hadChanges) {
        m_control.MarkChanged();
    }
}

// False when the package is as it was before.
bool PackageAdding::Resolve(const AddedDocument& document) {
    switch (document.state) {
    case AddedDocument::State::Shared:
        return ResolveShared(document);
    case AddedDocument::State::NotCopied:
        ShowFailure(m_repair.Undo(document));
        ShowFailure(Text(IDS_NOT_COPIED, {document.name}));
        return false;
    default:
        return true;
    }
}

bool PackageAdding::ResolveShared(const AddedDocument& document) {
    switch (AskAboutSharedName(m_view.Frame(), document.name)) {
    case SharedNameAnswer::KeepBoth:
        ShowFailure(m_repair.KeepBoth(document));
        return true;
    case SharedNameAnswer::Replace:
        m_repair.Replace(document);
        m_session.Accept(docview::kCopiesFolder + document.name);
        return true;
    default:
        ShowFailure(m_repair.Undo(document));
        return false;
    }
}

void PackageAdding::ShowFailure(const std::wstring& message) {
    if (!message.empty()) {
        m_view.ShowError(message);
    }
}

} // namespace viewer
