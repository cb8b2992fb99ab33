// Work shared by several threads, with results used in order.
#pragma once

#include <atomic>
#include <cstddef>
#include <functional>
#include <memory>

namespace mxovshare {

class Job {
public:
    virtual ~Job() = default;
    /// Does the work, on any thread. May throw early once `stop` is set: the result is then dropped.
    virtual void Make(const std::atomic<bool>& stop) = 0;
    /// Uses the result, on the thread that called RunJobs, in the order of the jobs.
    virtual void Take() = 0;
};

/// Returns the next job, nullptr at the end. Called on any thread, never by two at a time.
using NextJob = std::function<std::unique_ptr<Job>()>;

/// How many jobs may be done ahead of a long one in front of them, besides two for each thread.
inline constexpr std::size_t kJobsAhead = 24;

/// How many processors this process may use.
unsigned ProcessorCount();

/// Does all jobs on `threads` threads and takes their results in order. Few jobs are done ahead of the one
/// that is taken next, so memory stays bounded. `idle` is called at least every 20 milliseconds while the
/// calling thread waits. The first exception of a job in order, of `next` or of `idle` stops and joins the
/// threads and is rethrown. When no thread can be started the calling thread does everything.
void RunJobs(unsigned threads, const NextJob& next, const std::function<void()>& idle);

} // namespace mxovshare
