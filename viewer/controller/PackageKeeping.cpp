#include "controller/PackageKeeping.h"

#include "controller/PackageView.h"
#include "session/PackageSession.h"
#include "texts/Texts.h"

namespace viewer {

void PackageKeeping::Keep(const PackageSession& session) {
    std::wstring stamp = mxovshare::StampOfFolder(session.Folder());
    if (stamp != m_stamp) {
        m_stamp = std::move(stamp);
        m_keeper.Keep(session.PackageFile(), m_view.Frame(), m_message);
    }
}

void PackageKeeping::ShowFailure() {
    if (const std::wstring reason = m_keeper.TakeFailure(); !reason.empty()) {
        m_view.ShowNote(Text(IDS_NOT_KEPT, {reason}));
    }
}

bool PackageKeeping::IsVersion(const PackageSession* session) const {
    return session && m_keeper.IsShown(session->PackageFile());
}

} // namespace viewer
