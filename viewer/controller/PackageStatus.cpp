#include "controller/PackageStatus.h"

namespace viewer {

void PackageStatus::Start(const PackageSession& session, HWND notify, UINT message) {
    m_state.reset();
    m_programs = FindPrograms(session.Entries());
    m_watch = std::make_unique<PackageWatch>(session, notify, message);
}

void PackageStatus::Stop() {
    m_watch.reset();
    m_state.reset();
    m_programs = {};
}

void PackageStatus::LookAgain(const PackageSession& session) {
    m_state.reset();
    m_programs = FindPrograms(session.Entries());
    if (m_watch) {
        m_watch->Update(session);
    }
}

bool PackageStatus::Take() {
    std::optional<PackageState> state = m_watch ? m_watch->Take() : std::nullopt;
    if (!state) {
        return false;
    }
    m_state = std::move(state);
    return true;
}

bool PackageStatus::Update(const PackageSession* session, bool hasChanges) {
    const bool isCurrent = session && IsCurrent(*session);
    const bool unsaved = session && (hasChanges || (isCurrent && !m_state->changes.empty()));
    PackageNews news = isCurrent ? FindNews(*m_state, session->PackageFile()) : PackageNews();
    if (session && news.text.empty()) {
        news = m_programs;
    }
    if (unsaved == m_unsaved && news == m_news) {
        return false;
    }
    m_unsaved = unsaved;
    m_news = std::move(news);
    return true;
}

// A state from before the last recorded save is outdated; the next one is on its way.
bool PackageStatus::IsCurrent(const PackageSession& session) const {
    return m_state && m_state->knownStamp == session.Stamp() &&
           session.Stamp() == mxovshare::StampOfFolder(session.Folder());
}

} // namespace viewer
