#include "DocumentSelection.h"

#include "control/ControlHost.h"
#include "MainPages.h"
#include "session/PackageSession.h"

namespace viewer {

void DocumentSelection::Select(const PackageSession& session, DocumentRow row) {
    m_row = row;
    m_reader->Read(session.FolderWithSeparator(), row);
    m_pages.Select(MainPages::Page::Document);
}

void DocumentSelection::Refresh(const PackageSession* session) {
    if (!m_row) {
        return;
    }
    if (session && m_control.SelectedRow(m_row->list) == m_row->row) {
        m_reader->Read(session->FolderWithSeparator(), *m_row);
    } else {
        Clear();
    }
}

void DocumentSelection::Clear() {
    m_row.reset();
    m_reader->Cancel();
    m_pages.ShowDocument(nullptr);
    m_pages.Select(MainPages::Page::Picture);
}

void DocumentSelection::OnRead() {
    if (std::optional<std::unique_ptr<DocumentContent>> content = m_reader->Take()) {
        m_pages.ShowDocument(std::move(*content));
    }
}

} // namespace viewer
