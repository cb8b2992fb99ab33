// What the control, the workers and the watched files report to the controller, by messages to the frame.
#include "common/ScopedFlag.h"
#include "control/ControlHost.h"
#include "controller/PackageController.h"
#include "package/Paths.h"
#include "package/Sentence.h"
#include "texts/Texts.h"

namespace viewer {

bool PackageController::OnMessage(UINT message) {
    switch (message) {
    case kUnpacked:
        OnUnpacked();
        return true;
    case kControlChanged:
        OnControlChanged();
        return true;
    case kWatched:
        OnWatched();
        return true;
    case kAdding:
        OnAdding();
        return true;
    case kAdded:
        OnAdded();
        return true;
    case kNotKept:
        m_versions.ShowFailure();
        return true;
    default:
        return false;
    }
}

void PackageController::OnUnpacked() {
    if (!IsOpening()) {
        return;
    }
    auto [result, session] = m_opening.Finish();
    m_control.Enable(true);
    if (result.ok) {
        SwitchTo(std::move(session));
        return;
    }
    const std::wstring name = FileName(session->PackageFile());
    session.reset();
    m_view.OnPackageChanged();
    if (!result.cancelled) {
        m_view.ShowError(Text(IDS_NO_PACKAGE, {name, Sentence(result.message)}));
    }
}

// The control saves by its own button, which leaves it unmodified even when saving failed.
void PackageController::OnControlChanged() {
    if (!m_session || m_prompting) {
        return;
    }
    if (m_session->RecordSave()) {
        m_status.LookAgain(*m_session);
        m_versions.Keep(*m_session);
        if (!IsOpening()) {
            m_view.OnPackageChanged();
        }
    }
    if (mxovshare::TakeSaveFailure(m_session->Folder())) {
        m_control.MarkChanged();
    }
    UpdateNews();
}

// While another package is being opened, the session may end before the button has finished.
void PackageController::OnAdding() {
    if (m_session && !IsOpening()) {
        m_adding = std::make_unique<PackageAdding>(m_view, m_control, *m_session);
    }
}

void PackageController::OnAdded() {
    if (m_adding) {
        const common::ScopedFlag prompting(m_prompting);
        m_adding->Finish();
        m_adding.reset();
        m_status.LookAgain(*m_session);
    }
    OnControlChanged();
}

void PackageController::OnWatched() {
    if (m_status.Take()) {
        UpdateNews();
    }
}

// What the control does while it adds a document is no news. What the file holds is kept before the first
// save replaces it.
void PackageController::UpdateNews() {
    if (!m_adding && m_status.Update(m_session.get(), m_control.HasChanges())) {
        m_view.OnNewsChanged();
    }
    if (m_session && m_status.IsUnsaved()) {
        m_versions.Keep(*m_session);
    }
}

} // namespace viewer
