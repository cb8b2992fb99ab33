#include "pack/JobQueue.h"

#include <gtest/gtest.h>

#include <chrono>
#include <mutex>
#include <stdexcept>
#include <thread>
#include <vector>

using namespace mxovshare;

namespace {

// Counts what is made and taken.
struct Ledger {
    std::atomic<int> given = 0;
    std::atomic<int> made = 0;
    std::atomic<int> farthest = 0; ///< most jobs given but not taken at one moment
    std::vector<int> taken;
    int failing = -1; ///< the job whose making fails
    std::atomic<int> takenCount = 0;
};

class CountingJob : public Job {
public:
    CountingJob(Ledger& ledger, int number) : m_ledger(ledger), m_number(number) {}
    void Make(const std::atomic<bool>&) override {
        // Later jobs are done before earlier ones.
        std::this_thread::sleep_for(std::chrono::microseconds(m_number % 3 == 0 ? 300 : 0));
        if (m_number == m_ledger.failing) {
            throw std::runtime_error("failed");
        }
        ++m_ledger.made;
    }
    void Take() override {
        m_ledger.taken.push_back(m_number);
        ++m_ledger.takenCount;
    }

private:
    Ledger& m_ledger;
    int m_number;
};

NextJob Jobs(Ledger& ledger, int count) {
    return [&ledger, count]() -> std::unique_ptr<Job> {
        if (ledger.given == count) {
            return nullptr;
        }
        ledger.farthest = std::max<int>(ledger.farthest, ledger.given - ledger.takenCount);
        return std::make_unique<CountingJob>(ledger, ledger.given++);
    };
}

void Nothing() {}

TEST(JobQueue, TakesEverythingInOrder) {
    for (const unsigned threads : {0u, 1u, 2u, 7u}) {
        Ledger ledger;
        RunJobs(threads, Jobs(ledger, 200), Nothing);
        ASSERT_EQ(ledger.taken.size(), 200u) << threads;
        for (int i = 0; i < 200; ++i) {
            EXPECT_EQ(ledger.taken[static_cast<std::size_t>(i)], i);
        }
    }
}

TEST(JobQueue, IsDoneWithoutAnyJob) {
    Ledger ledger;
    RunJobs(3, Jobs(ledger, 0), Nothing);
    EXPECT_TRUE(ledger.taken.empty());
}

TEST(JobQueue, MakesFewAhead) {
    Ledger ledger;
    RunJobs(4, Jobs(ledger, 500), Nothing);
    EXPECT_LE(ledger.farthest, 2 * 4 + static_cast<int>(kJobsAhead) + 1);
}

TEST(JobQueue, ThrowsTheFirstFailureInOrder) {
    for (const unsigned threads : {0u, 3u}) {
        Ledger ledger;
        ledger.failing = 50;
        EXPECT_THROW(RunJobs(threads, Jobs(ledger, 200), Nothing), std::runtime_error);
        EXPECT_EQ(ledger.taken.size(), 50u);
        EXPECT_LE(ledger.made, 50 + 2 * 3 + static_cast<int>(kJobsAhead) + 1)
            << "no more than are made ahead";
    }
}

TEST(JobQueue, ThrowsTheFailureToGiveAJobBehindThoseBeforeIt) {
    for (const unsigned threads : {0u, 3u}) {
        Ledger ledger;
        const NextJob inner = Jobs(ledger, 200);
        const NextJob next = [&]() -> std::unique_ptr<Job> {
            if (ledger.given == 20) {
                throw std::runtime_error("no more");
            }
            return inner();
        };
        EXPECT_THROW(RunJobs(threads, next, Nothing), std::runtime_error);
        EXPECT_EQ(ledger.taken.size(), 20u);
    }
}

class EndlessJob : public Job {
public:
    void Make(const std::atomic<bool>& stop) override {
        while (!stop) {
            std::this_thread::yield();
        }
    }
    void Take() override {}
};

TEST(JobQueue, StopsLongWorkWhenTheIdleCallThrows) {
    int calls = 0;
    const auto idle = [&calls] {
        if (++calls == 3) {
            throw std::runtime_error("cancelled");
        }
    };
    EXPECT_THROW(RunJobs(
                     2, [] { return std::make_unique<EndlessJob>(); }, idle),
                 std::runtime_error);
    EXPECT_EQ(calls, 3);
}

} // namespace
