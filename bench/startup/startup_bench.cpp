// The start of the control in the system's ATL container until everything of it is painted, beside that of a
// control with one list view, and beside the windows of its dialog when the system alone makes them.
#include "Process.h"
#include "Report.h"
#include "StartupSubjects.h"
#include "Timing.h"

#include <windows.h>

#include <ole2.h>

#include <cstdio>
#include <string>

extern "C" BOOL WINAPI AtlAxWinInit();

namespace {

constexpr int kRuns = 41;
constexpr double kLimit = 1.5; // of a program that shows the control

using bench::Now;

/// Milliseconds since `begin` until the subject is shown and painted; negative when it did not come up.
double TimeUntilPainted(const Subject& subject, HWND frame, double begin) {
    const HWND shown = subject.show(frame);
    HandleMessages();
    const double spent = Now() - begin;
    const bool well = IsPainted(shown) && CountLists(shown) == subject.lists;
    DestroyWindow(shown);
    HandleMessages();
    return well ? spent : -1;
}

/// What a program of its own does. Its exit code is the microseconds that it took; 0: the subject did not
/// come up. `begin` is the time at which its parent started it; 0: the time counts from the subject's
/// creation.
int RunChild(const Subject& subject, double begin) {
    OleInitialize(nullptr);
    AtlAxWinInit();
    const HWND frame = CreateFrame();
    const double spent = TimeUntilPainted(subject, frame, begin > 0 ? begin : Now());
    return spent > 0 ? static_cast<int>(spent * 1000) : 0;
}

/// The first start in a process of its own, from the start of the process or from the creation of the
/// subject.
double FirstOfAProcess(const wchar_t* program, const Subject& subject, bool wholeProgram) {
    const Process child(L"\"" + std::wstring(program) + L"\" " + subject.name + L" " +
                        (wholeProgram ? std::to_wstring(Now()) : L"0"));
    const DWORD code = child ? child.Wait() : 0;
    return code ? code / 1000.0 : -1;
}

/// Negative when one of the starts failed.
double MedianOf(const std::vector<double>& times) {
    return std::ranges::min(times) < 0 ? -1 : bench::MedianOf(times);
}

/// Prints one line of the table and returns the ratio; negative when a start failed.
template <typename Measure>
double Compare(const char* what, const Subject& other, Measure measure) {
    std::vector<double> controlTimes;
    std::vector<double> otherTimes;
    for (int run = 0; run < kRuns; ++run) { // in turns, so that a busy machine slows both alike
        controlTimes.push_back(measure(kControl));
        otherTimes.push_back(measure(other));
    }
    const double control = MedianOf(controlTimes);
    const double compared = MedianOf(otherTimes);
    if (control < 0 || compared < 0) {
        std::printf("%-34s did not come up\n", what);
        return -1;
    }
    std::printf("%-34s control %7.2f ms   %-8ls %7.2f ms   ratio %4.2f\n", what, control, other.name,
                compared, control / compared);
    return control / compared;
}

} // namespace

int wmain(int count, wchar_t** arguments) {
    for (const Subject& subject : {kControl, kMinimal, kWindows}) {
        if (count > 2 && lstrcmpW(arguments[1], subject.name) == 0) {
            return RunChild(subject, _wtof(arguments[2]));
        }
    }
    const wchar_t* const program = arguments[0];
    const double ratio = Compare("a program, from its start", kMinimal,
                                 [&](const Subject& it) { return FirstOfAProcess(program, it, true); });
    Compare("the first of a process", kMinimal,
            [&](const Subject& it) { return FirstOfAProcess(program, it, false); });
    Compare("the first of a process", kWindows,
            [&](const Subject& it) { return FirstOfAProcess(program, it, false); });
    OleInitialize(nullptr);
    AtlAxWinInit();
    const HWND frame = CreateFrame();
    const auto next = [&](const Subject& it) { return TimeUntilPainted(it, frame, Now()); };
    Compare("the next ones", kMinimal, next);
    Compare("the next ones", kWindows, next);
    bench::LimitedNumber("a program's start, control beside minimal control", ratio, kLimit);
    return ratio > 0 ? 0 : 1;
}
