// Work that may wait for a computer that does not answer.
#pragma once

#include <functional>

/// Runs a command on a thread of its own and returns its exit code. Ctrl+C ends the program at once, which
/// reports that, whatever the command waits for. It must leave nothing behind then.
int RunInterruptibly(const std::function<int()>& command);
