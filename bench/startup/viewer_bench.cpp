// The start of the viewer until its window is shown and waits for input, beside the system's own editor, and
// the time until it has ended after it was closed.
#include "Process.h"
#include "Report.h"
#include "ShownWindow.h"
#include "Timing.h"

#include <windows.h>

#include <cstdio>
#include <string>

namespace {

constexpr int kRuns = 15;
constexpr double kLimit = 1.5;
constexpr DWORD kPatience = 60'000; // milliseconds

struct Times {
    std::vector<double> start; // milliseconds
    std::vector<double> end;
};

/// Starts a program, closes it and notes both times; false when it did not come up.
bool StartAndClose(const wchar_t* program, Times& times) {
    HWND window = nullptr;
    const double begin = bench::Now();
    const Process process(program);
    if (!process) {
        return false;
    }
    process.WaitForInput(kPatience);
    const ULONGLONG end = GetTickCount64() + kPatience;
    while (!(window = ShownWindowOf(process.Id())) && GetTickCount64() < end) {
        Sleep(1);
    }
    times.start.push_back(bench::Now() - begin);
    times.end.push_back(bench::Time([&] {
        PostMessageW(window, WM_CLOSE, 0, 0);
        static_cast<void>(process.EndsWithin(kPatience));
    }));
    return window != nullptr;
}

} // namespace

int wmain(int count, wchar_t** arguments) {
    const wchar_t* const viewer = count > 1 ? arguments[1] : L"viewer.exe";
    Times ours;
    Times editors;
    bool well = true;
    for (int run = 0; run < kRuns && well; ++run) { // in turns, so that a busy machine slows both alike
        well = StartAndClose(viewer, ours) && StartAndClose(L"notepad.exe", editors);
    }
    if (!well) {
        std::puts("a program did not come up");
        return 1;
    }
    bench::Limited("start of the viewer beside the system's editor, until it waits",
                   bench::MedianOf(ours.start), bench::MedianOf(editors.start), kLimit);
    bench::Compared("closing, until it has ended", bench::MedianOf(ours.end), bench::MedianOf(editors.end));
    return 0;
}
