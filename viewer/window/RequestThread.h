// A thread of its own that answers one request at a time, the latest.
#pragma once

#include "common/BackgroundThread.h"

#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <utility>

#include <windows.h>

#include <objbase.h>

namespace viewer {

template <class Request, class Answer>
class RequestThread {
public:
    using Work = std::function<Answer(const Request&)>;

    /// Posts `message` to `notify` after each answer. `work` runs on the thread, in a COM apartment, and
    /// shares nothing with its owner.
    RequestThread(HWND notify, UINT message, Work work)
        : m_state(std::make_shared<State>(notify, message, std::move(work))),
          m_thread([state = m_state] { state->Run(); }) {}

    /// Ends the thread. One that is held up by a file server which does not answer is left to itself.
    ~RequestThread() { m_state->Stop(); }
    RequestThread(const RequestThread&) = delete;
    RequestThread& operator=(const RequestThread&) = delete;

    /// Asks something; replaces what was asked before.
    void Ask(Request request) { m_state->Ask(std::move(request)); }

    /// Forgets what was asked.
    void Cancel() { m_state->Cancel(); }

    /// The answer to what was asked last, once; nothing while there is none or after it was taken.
    [[nodiscard]] std::optional<Answer> Take() { return m_state->Take(); }

private:
    // Outlives the object when the thread has to be left to itself.
    class State {
    public:
        State(HWND notify, UINT message, Work work)
            : m_notify(notify), m_message(message), m_work(std::move(work)) {}

        void Run() {
            const HRESULT apartment = CoInitializeEx(nullptr, COINIT_MULTITHREADED);
            while (std::optional<Numbered> request = WaitForRequest()) {
                Publish(m_work(request->second), request->first);
            }
            if (SUCCEEDED(apartment)) {
                CoUninitialize();
            }
        }

        void Ask(Request request) {
            const std::lock_guard guard(m_lock);
            m_request.emplace(++m_lastNumber, std::move(request));
            m_answer.reset();
            m_wake.notify_one();
        }

        void Cancel() {
            const std::lock_guard guard(m_lock);
            ++m_lastNumber;
            m_request.reset();
            m_answer.reset();
        }

        std::optional<Answer> Take() {
            const std::lock_guard guard(m_lock);
            return std::exchange(m_answer, std::nullopt);
        }

        void Stop() {
            const std::lock_guard guard(m_lock);
            m_stopping = true;
            m_wake.notify_one();
        }

    private:
        using Numbered = std::pair<int, Request>;

        // Nothing when the thread is to end.
        std::optional<Numbered> WaitForRequest() {
            std::unique_lock guard(m_lock);
            m_wake.wait(guard, [this] { return m_stopping || m_request; });
            return m_stopping ? std::nullopt : std::exchange(m_request, std::nullopt);
        }

        void Publish(Answer answer, int number) {
            const std::lock_guard guard(m_lock);
            if (number == m_lastNumber) {
                m_answer = std::move(answer);
                PostMessageW(m_notify, m_message, 0, 0);
            }
        }

        const HWND m_notify;
        const UINT m_message;
        const Work m_work;
        std::mutex m_lock; // guards the rest
        std::condition_variable m_wake;
        std::optional<Numbered> m_request;
        int m_lastNumber = 0; // of a request or a cancel
        std::optional<Answer> m_answer;
        bool m_stopping = false;
    };

    std::shared_ptr<State> m_state;
    common::BackgroundThread m_thread;
};

} // namespace viewer
