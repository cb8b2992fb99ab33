#include "document/DocumentReader.h"

#include <condition_variable>
#include <mutex>
#include <utility>

#include <objbase.h>

namespace viewer {

// The part that the thread shares with the object, and outlives it when the thread has to be left to itself.
class DocumentReader::Worker {
public:
    Worker(HWND notify, UINT message) : m_notify(notify), m_message(message) {}

    void Run() {
        const HRESULT apartment = CoInitializeEx(nullptr, COINIT_MULTITHREADED);
        while (const std::optional<Request> request = WaitForRequest()) {
            Answer(*request);
        }
        if (SUCCEEDED(apartment)) {
            CoUninitialize();
        }
    }

    void Ask(const std::wstring& folder, DocumentRow row) {
        const std::lock_guard guard(m_lock);
        m_request = {folder, row, ++m_lastNumber};
        m_answer.reset();
        m_wake.notify_one();
    }

    void Cancel() {
        const std::lock_guard guard(m_lock);
        ++m_lastNumber;
        m_request.reset();
        m_answer.reset();
    }

    std::optional<std::unique_ptr<DocumentContent>> Take() {
        const std::lock_guard guard(m_lock);
        return std::exchange(m_answer, std::nullopt);
    }

    void Stop() {
        const std::lock_guard guard(m_lock);
        m_stopping = true;
        m_wake.notify_one();
    }

private:
    struct Request {
        std::wstring folder;
        DocumentRow row;
        int number = 0;
    };

    // Nothing when the thread is to end.
    std::optional<Request> WaitForRequest() {
        std::unique_lock guard(m_lock);
        m_wake.wait(guard, [this] { return m_stopping || m_request; });
        return m_stopping ? std::nullopt : std::exchange(m_request, std::nullopt);
    }

    void Answer(const Request& request) {
        std::unique_ptr<DocumentContent> content;
        if (const std::optional<DocumentDetails> details = FindDocument(request.folder, request.row)) {
            content = std::make_unique<DocumentContent>(ReadContent(*details));
        }
        const std::lock_guard guard(m_lock);
        if (request.number == m_lastNumber) {
            m_answer = std::move(content);
            PostMessageW(m_notify, m_message, 0, 0);
        }
    }

    const HWND m_notify;
    const UINT m_message;
    std::mutex m_lock; // guards the rest
    std::condition_variable m_wake;
    std::optional<Request> m_request;
    int m_lastNumber = 0; // of a request or a cancel
    std::optional<std::unique_ptr<DocumentContent>> m_answer;
    bool m_stopping = false;
};

DocumentReader::DocumentReader(HWND notify, UINT message)
    : m_worker(std::make_shared<Worker>(notify, message)), m_thread([worker = m_worker] { worker->Run(); }) {}

DocumentReader::~DocumentReader() {
    m_worker->Stop();
}

void DocumentReader::Read(const std::wstring& folder, DocumentRow row) {
    m_worker->Ask(folder, row);
}

void DocumentReader::Cancel() {
    m_worker->Cancel();
}

std::optional<std::unique_ptr<DocumentContent>> DocumentReader::Take() {
    return m_worker->Take();
}

} // namespace viewer
