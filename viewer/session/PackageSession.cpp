#include "session/PackageSession.h"

#include "common/Paths.h"
#include "session/SessionStore.h"

#include <algorithm>

namespace viewer {

PackageSession::PackageSession(SessionStore& store, std::wstring packageFile, std::wstring folder,
                               SessionFile file)
    : m_store(store), m_packageFile(std::move(packageFile)), m_folder(std::move(folder)),
      m_file(std::move(file)) {}

// The session file goes first: what cannot be removed then counts as no longer needed.
PackageSession::~PackageSession() {
    if (!m_keep) {
        m_file.Remove();
        m_store.Remove(m_folder);
    }
}

void PackageSession::Record(const std::wstring& stamp) {
    if (stamp == m_stamp && !stamp.empty()) {
        return;
    }
    m_stamp = stamp;
    mxovshare::ListPackage(m_packageFile, m_entries);
    m_file.WriteUnpacked(m_packageFile, stamp);
}

void PackageSession::MoveTo(const std::wstring& packageFile) {
    m_packageFile = packageFile;
    m_stamp.clear();
    RecordSave();
}

bool PackageSession::RecordSave() {
    const std::wstring stamp = mxovshare::StampOfFolder(m_folder);
    const bool isNew = stamp != m_stamp;
    Record(stamp);
    return isNew;
}

void PackageSession::Accept(const std::wstring& name) {
    std::vector<mxovshare::PackageEntry> files;
    mxovshare::ListFolder(m_folder, files);
    const auto hasName = [&name](const mxovshare::PackageEntry& entry) {
        return common::IsSamePath(entry.name, name);
    };
    const auto file = std::ranges::find_if(files, hasName);
    const auto entry = std::ranges::find_if(m_entries, hasName);
    if (file == files.end()) {
        std::erase_if(m_entries, hasName);
    } else if (entry == m_entries.end()) {
        m_entries.push_back(*file);
    } else {
        entry->size = file->size;
        entry->modified = file->modified;
    }
}

void PackageSession::Resume() {
    mxovshare::ResumeFolder(m_folder, m_packageFile, m_stamp);
    mxovshare::ListPackage(m_packageFile, m_entries);
}

} // namespace viewer
