// Finds and reads documents on a thread of its own.
#pragma once

#include "common/BackgroundThread.h"
#include "document/DocumentContent.h"

#include <memory>
#include <optional>
#include <string>

namespace viewer {

class DocumentReader {
public:
    /// Posts `message` to `notify` after each document.
    DocumentReader(HWND notify, UINT message);

    /// Ends the thread. One that is held up by a file server which does not answer is left to itself.
    ~DocumentReader();
    DocumentReader(const DocumentReader&) = delete;
    DocumentReader& operator=(const DocumentReader&) = delete;

    /// Reads the document in a row for the package in `folder`, which ends with a separator. Replaces what
    /// was asked before.
    void Read(const std::wstring& folder, DocumentRow row);

    /// Forgets what was asked.
    void Cancel();

    /// The document that was asked last, once, null when there is none in its row; nothing while it is not
    /// read or after it was taken.
    [[nodiscard]] std::optional<std::unique_ptr<DocumentContent>> Take();

private:
    class Worker;

    std::shared_ptr<Worker> m_worker;
    common::BackgroundThread m_thread;
};

} // namespace viewer
