// Work that several threads share and whose results are used in order.
#pragma once

#include <atomic>
#include <cstddef>
#include <functional>
#include <memory>

namespace mxovshare {

class Job {
public:
    virtual ~Job() = default;
    /// Does the work, on any thread. May end early by an exception once `stop` is set: nobody takes it then.
    virtual void Make(const std::atomic<bool>& stop) = 0;
    /// Uses what was made, on the calling thread, in the order of the jobs.
    virtual void Take() = 0;
};

/// Gives the jobs one after the other, nullptr at the end. Called on any thread, by one at a time.
using NextJob = std::function<std::unique_ptr<Job>()>;

/// How many small jobs may be made while a large one in front of them is, besides two for each thread.
inline constexpr std::size_t kJobsAhead = 24;

/// Makes all jobs on `threads` threads and takes them. No more than that are made ahead of the one that is
/// taken, so memory stays bounded. `idle` is called now and then, at the latest every 20 milliseconds, while
/// the calling thread waits. The first exception of a job in order, of `next` or of `idle` ends the work,
/// stops and joins the threads, and is thrown. When no thread can be had the calling one does all.
void RunJobs(unsigned threads, const NextJob& next, const std::function<void()>& idle);

} // namespace mxovshare
