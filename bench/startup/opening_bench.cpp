// A package of 200 files and 100 MB opened in the viewer's window, and the viewer started with it, until its
// rows are painted, beside a plain copy of the unpacked folder; and the time from closing it until its
// window is gone.
#include "mxovpackage.h"
#include "mxovshare.h"
#include "PackageFolder.h"
#include "Process.h"
#include "Report.h"
#include "resources/resource.h"
#include "ShownWindow.h"
#include "Timing.h"

#include <commctrl.h>

#include <cstdio>
#include <string>
#include <vector>

namespace {

constexpr int kRuns = 7;
constexpr double kOpeningLimit = 1.5; // times the copy
constexpr double kClosingLimit = 100; // milliseconds
constexpr DWORD kPatience = 120'000;  // milliseconds
constexpr DWORD kPollPeriod = 10;     // milliseconds; each poll takes time from the viewer
constexpr int kProgramList = 1005;    // of the control
constexpr LRESULT kPrograms = 100;    // half of the files
constexpr wchar_t kFrameClass[] = L"MXOVViewerFrame";

double TimePlainCopy(const PackageFolder& folder) {
    const TempFolder target;
    target.Write(L"GCode\\x", "");
    target.Write(L"ReferanceFiles\\x", "");
    return bench::Time([&] {
        for (const std::wstring& name : folder.Names()) {
            CopyFileW((folder.Path() + L"\\" + name).c_str(), (target / name).c_str(), FALSE);
        }
    });
}

HWND FindList(HWND frame) {
    HWND list = nullptr;
    EnumChildWindows(
        frame,
        [](HWND child, LPARAM found) -> BOOL {
            if (GetDlgCtrlID(child) == kProgramList) {
                *reinterpret_cast<HWND*>(found) = child;
            }
            return TRUE;
        },
        reinterpret_cast<LPARAM>(&list));
    return list;
}

bool HasPaintedRows(HWND frame) {
    const HWND list = FindList(frame);
    return list && IsWindowVisible(list) && SendMessageW(list, LVM_GETITEMCOUNT, 0, 0) == kPrograms &&
           !GetUpdateRect(list, nullptr, FALSE);
}

template <typename Condition>
bool WaitFor(Condition condition) {
    const ULONGLONG end = GetTickCount64() + kPatience;
    while (!condition()) {
        if (GetTickCount64() > end) {
            return false;
        }
        Sleep(kPollPeriod);
    }
    return true;
}

struct Times {
    std::vector<double> copy; // milliseconds
    std::vector<double> start;
    std::vector<double> startWithIt;
    std::vector<double> opening;
    std::vector<double> closing;
    std::vector<double> end;
};

// Starts the viewer, with the package or without, until `condition` holds for its window; null when it does
// not.
template <typename Condition>
HWND StartUntil(const Process& viewer, std::vector<double>& times, double begin, Condition condition) {
    HWND frame = nullptr;
    if (!viewer || !WaitFor([&] {
            frame = ShownWindowOf(viewer.Id(), kFrameClass);
            return frame && condition(frame);
        })) {
        return nullptr;
    }
    times.push_back(bench::Now() - begin);
    return frame;
}

// Closes the viewer; false when it does not end.
bool Close(const Process& viewer, HWND frame, Times& times) {
    const double begin = bench::Now();
    PostMessageW(frame, WM_CLOSE, 0, 0);
    if (!WaitFor([&] { return !IsWindowVisible(frame); })) {
        return false;
    }
    times.closing.push_back(bench::Now() - begin);
    const bool ended = viewer.EndsWithin(kPatience);
    times.end.push_back(bench::Now() - begin);
    return ended;
}

// Starts the viewer with the package, which is the first of the recent packages from then on.
bool StartWithPackage(const std::wstring& package, Times& times) {
    const double begin = bench::Now();
    const Process viewer(L"viewer.exe \"" + package + L"\"");
    const HWND frame = StartUntil(viewer, times.startWithIt, begin, HasPaintedRows);
    return frame && Close(viewer, frame, times);
}

// Starts the viewer without a package, and chooses the first recent one when the window is at rest.
bool OpenInWindow(Times& times) {
    constexpr DWORD kRest = 500; // milliseconds
    const double begin = bench::Now();
    const Process viewer(L"viewer.exe");
    const HWND frame = StartUntil(viewer, times.start, begin,
                                  [](HWND window) { return !GetUpdateRect(window, nullptr, FALSE); });
    if (!frame) {
        return false;
    }
    Sleep(kRest);
    const double opening = bench::Now();
    PostMessageW(frame, WM_COMMAND, IDM_RECENT_FIRST, 0);
    if (!WaitFor([frame] { return HasPaintedRows(frame); })) {
        return false;
    }
    times.opening.push_back(bench::Now() - opening);
    return Close(viewer, frame, times);
}

} // namespace

int main() {
    const PackageFolder folder;
    const TempFolder work;
    const std::wstring package = work / L"large.mxov";
    mxovshare::INIFile::AddRecordToINI(L"FILEINFO", L"GCode", L"GCode\\0", folder.Path() + L"\\mxinfo.ini");
    Times times;
    bool well = mxovshare::CreatePackage(folder.Path(), package).ok;
    for (int run = 0; run < kRuns && well; ++run) { // in turns, so that a busy machine slows both alike
        times.copy.push_back(TimePlainCopy(folder));
        well = StartWithPackage(package, times) && OpenInWindow(times);
    }
    if (!well) {
        std::puts("the viewer did not show the package");
        return 1;
    }
    const double copy = bench::MedianOf(times.copy);
    const double closing = bench::MedianOf(times.closing);
    bench::Row("plain copy of the unpacked folder, 100 MB", copy);
    bench::Limited("opening it in the viewer's window, until painted rows", bench::MedianOf(times.opening),
                   copy, kOpeningLimit);
    bench::Limited("start of the viewer with it, until painted rows", bench::MedianOf(times.startWithIt),
                   copy, kOpeningLimit);
    bench::Compared("start of the viewer without a package", bench::MedianOf(times.start), copy);
    bench::LimitedTime("closing, until the window is gone", closing, kClosingLimit);
    bench::Row("closing, until the process has ended", bench::MedianOf(times.end));
    return 0;
}
