#include "Progress.h"

#include <windows.h>

#include <cstdio>

namespace {

DWORD WINAPI Watch(void* patience) {
    const auto seconds = static_cast<unsigned>(reinterpret_cast<UINT_PTR>(patience));
    constexpr DWORD kSecond = 1000;
    uint64_t last = steps;
    for (unsigned still = 0; still < seconds;) {
        Sleep(kSecond);
        const uint64_t now = steps;
        still = now == last ? still + 1 : 0;
        last = now;
    }
    // Not through the streams: the thread that hangs may hold them.
    const std::string report =
        "hung: nothing for " + std::to_string(seconds) + " s in " + Words(doing) + "\n";
    DWORD written = 0;
    WriteFile(GetStdHandle(STD_OUTPUT_HANDLE), report.data(), static_cast<DWORD>(report.size()), &written,
              nullptr);
    TerminateProcess(GetCurrentProcess(), kHung);
    return 0;
}

} // namespace

std::string Words(const Step& step) {
    char words[200];
    std::snprintf(words, sizeof words, "step %llu: %s (%llx, %llx, %llx, %llx)", step.number, step.what,
                  step.details[0], step.details[1], step.details[2], step.details[3]);
    return words;
}

void WatchProgress(unsigned seconds) {
    const HANDLE thread =
        CreateThread(nullptr, 0, Watch, reinterpret_cast<void*>(UINT_PTR{seconds}), 0, nullptr);
    if (thread) {
        CloseHandle(thread);
    }
}
