// Shows the document that is selected in the control.
#pragma once

#include "document/DocumentReader.h"

#include <memory>
#include <optional>

namespace viewer {

class ControlHost;
class MainPages;
class PackageSession;

class DocumentSelection {
public:
    /// Control and pages outlive it.
    DocumentSelection(ControlHost& control, MainPages& pages) : m_control(control), m_pages(pages) {}

    /// From now on `message` is posted to `frame` when a document is read.
    void Start(HWND frame, UINT message) { m_reader = std::make_unique<DocumentReader>(frame, message); }

    /// Reads the document that the user has selected and brings its page to the front.
    void Select(const PackageSession& session, DocumentRow row);

    /// Reads the document again, whose file or place may have changed. Forgets it when it is no longer
    /// selected.
    void Refresh(const PackageSession* session);

    /// Forgets the document.
    void Clear();

    /// Shows the document that was read.
    void OnRead();

    /// The row of the document; nothing when there is none.
    [[nodiscard]] const std::optional<DocumentRow>& Row() const { return m_row; }

private:
    ControlHost& m_control;
    MainPages& m_pages;
    std::unique_ptr<DocumentReader> m_reader;
    std::optional<DocumentRow> m_row;
};

} // namespace viewer
