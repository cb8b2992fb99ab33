// A thread that may be left to itself.
#pragma once

#include <chrono>
#include <functional>
#include <future>
#include <thread>
#include <utility>

namespace common {

class BackgroundThread {
public:
    /// `work` shares whatever it uses, since it may outlive its owner.
    explicit BackgroundThread(std::function<void()> work) {
        std::packaged_task<void()> task(std::move(work));
        m_ended = task.get_future();
        m_thread = std::thread(std::move(task));
    }

    /// The work has been told to end. A file server that does not answer may hold it up: after two seconds it
    /// is left to itself.
    ~BackgroundThread() {
        if (m_ended.wait_for(std::chrono::seconds{2}) == std::future_status::ready) {
            m_thread.join();
        } else {
            m_thread.detach();
        }
    }
    BackgroundThread(const BackgroundThread&) = delete;
    BackgroundThread& operator=(const BackgroundThread&) = delete;

private:
    std::future<void> m_ended;
    std::thread m_thread;
};

} // namespace common
