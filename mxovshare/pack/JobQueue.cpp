#include "pack/JobQueue.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <exception>
#include <mutex>
#include <thread>
#include <vector>

namespace mxovshare {

namespace {

constexpr std::chrono::milliseconds kIdleInterval(20);

struct Slot {
    std::unique_ptr<Job> job;
    std::exception_ptr error;
    bool isMade = false;
};

class WorkerPool {
public:
    WorkerPool(unsigned threads, const NextJob& next)
        : m_next(next), m_ahead(2 * std::size_t{threads} + kJobsAhead) {
        try {
            m_threads.reserve(threads);
            while (m_threads.size() < threads) {
                m_threads.emplace_back([this] { Work(); });
            }
        } catch (const std::exception&) {
            // Fewer threads do the same work.
        }
    }
    ~WorkerPool() {
        {
            const std::lock_guard lock(m_mutex);
            m_stop = true;
        }
        m_room.notify_all();
        for (std::thread& thread : m_threads) {
            thread.join();
        }
    }
    WorkerPool(const WorkerPool&) = delete;
    WorkerPool& operator=(const WorkerPool&) = delete;

    // The next slot in order with its job done; nullptr at the end.
    std::unique_ptr<Slot> Next(const std::function<void()>& idle) {
        if (m_threads.empty()) {
            if (Slot* slot = Claim()) {
                Make(*slot);
            }
        }
        std::unique_lock lock(m_mutex);
        while (!m_made.wait_for(lock, kIdleInterval, [this] { return IsFrontMade() || IsAtEnd(); })) {
            lock.unlock();
            idle();
            lock.lock();
        }
        if (IsAtEnd()) {
            if (m_nextError) {
                std::rethrow_exception(m_nextError);
            }
            return nullptr;
        }
        std::unique_ptr<Slot> slot = std::move(m_slots.front());
        m_slots.pop_front();
        m_room.notify_one();
        return slot;
    }

private:
    bool IsFrontMade() const { return !m_slots.empty() && m_slots.front()->isMade; }
    bool IsAtEnd() const { return m_slots.empty() && m_isExhausted; }

    void Work() noexcept {
        while (Slot* slot = Claim()) {
            Make(*slot);
        }
    }

    // A new slot with a job in it; nullptr when there is no more to do.
    Slot* Claim() noexcept {
        std::unique_lock lock(m_mutex);
        m_room.wait(lock, [this] { return m_stop || m_isExhausted || m_slots.size() < m_ahead; });
        if (m_stop || m_isExhausted) {
            return nullptr;
        }
        try {
            auto slot = std::make_unique<Slot>();
            slot->job = m_next();
            if (slot->job) {
                m_slots.push_back(std::move(slot));
                return m_slots.back().get();
            }
        } catch (...) {
            m_nextError = std::current_exception();
        }
        m_isExhausted = true; // workers that wait for room end with the pool
        m_made.notify_one();
        return nullptr;
    }

    void Make(Slot& slot) noexcept {
        try {
            slot.job->Make(m_stop);
        } catch (...) {
            slot.error = std::current_exception();
        }
        const std::lock_guard lock(m_mutex);
        slot.isMade = true;
        if (IsFrontMade()) {
            m_made.notify_one();
        }
    }

    const NextJob& m_next;
    std::size_t m_ahead;
    std::mutex m_mutex;             // of everything below but the threads
    std::condition_variable m_made; // the front slot is, or there will be no more
    std::condition_variable m_room; // for one more slot, or there is nothing more to do
    std::deque<std::unique_ptr<Slot>> m_slots;
    bool m_isExhausted = false;
    std::exception_ptr m_nextError;
    std::atomic<bool> m_stop = false;
    std::vector<std::thread> m_threads;
};

} // namespace

unsigned ProcessorCount() {
    return std::max(1u, std::thread::hardware_concurrency());
}

void RunJobs(unsigned threads, const NextJob& next, const std::function<void()>& idle) {
    WorkerPool workers(threads, next);
    while (const std::unique_ptr<Slot> slot = workers.Next(idle)) {
        if (slot->error) {
            std::rethrow_exception(slot->error);
        }
        slot->job->Take();
    }
}

} // namespace mxovshare
