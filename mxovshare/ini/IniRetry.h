// Writing edits that met a lock.
#pragma once

namespace mxovshare {

/// Has the store of this process write its kept edits from a timer of the calling thread until none is left.
/// On a thread without a message loop nothing happens; the store writes them with the next edit and at the
/// end of the process.
void ScheduleRetry();

} // namespace mxovshare
