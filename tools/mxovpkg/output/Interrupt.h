// Ctrl+C.
#pragma once

/// While one lives, Ctrl+C does not end the program but is noted.
class InterruptWatch {
public:
    InterruptWatch();
    ~InterruptWatch();
    InterruptWatch(const InterruptWatch&) = delete;
    InterruptWatch& operator=(const InterruptWatch&) = delete;

    /// Whether it was pressed since the program started.
    static bool IsInterrupted();
};
