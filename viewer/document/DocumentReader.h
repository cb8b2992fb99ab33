// Finds and reads documents on a thread of its own.
#pragma once

#include "document/DocumentContent.h"
#include "window/RequestThread.h"

#include <memory>
#include <optional>
#include <string>

namespace viewer {

class DocumentReader {
public:
    /// Posts `message` to `notify` after each document.
    DocumentReader(HWND notify, UINT message);

    /// Reads the document in a row for the package in `folder`, which ends with a separator. Replaces what
    /// was asked before.
    void Read(const std::wstring& folder, DocumentRow row) { m_thread.Ask({folder, row}); }

    /// Forgets what was asked.
    void Cancel() { m_thread.Cancel(); }

    /// The document that was asked last, once, null when there is none in its row; nothing while it is not
    /// read or after it was taken.
    [[nodiscard]] std::optional<std::unique_ptr<DocumentContent>> Take() { return m_thread.Take(); }

private:
    struct Place {
        std::wstring folder;
        DocumentRow row;
    };

    RequestThread<Place, std::unique_ptr<DocumentContent>> m_thread;
};

} // namespace viewer
