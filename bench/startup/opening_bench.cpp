// The viewer started with a package of 200 files and 100 MB, until its rows are painted, beside a plain copy
// of the unpacked folder and beside its start without a package; and the time from closing it until its
// window is gone.
#include "mxovpackage.h"
#include "mxovshare.h"
#include "PackageFolder.h"
#include "Process.h"
#include "Report.h"
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
    std::vector<double> copy;  // milliseconds
    std::vector<double> start; // without a package
    std::vector<double> opening;
    std::vector<double> closing;
    std::vector<double> end;
};

// Starts the viewer and closes it again; false when it does not come up.
bool Start(Times& times) {
    HWND frame = nullptr;
    const double begin = bench::Now();
    const Process viewer(L"viewer.exe");
    if (!viewer || !WaitFor([&] {
            frame = ShownWindowOf(viewer.Id(), kFrameClass);
            return frame && !GetUpdateRect(frame, nullptr, FALSE);
        })) {
        return false;
    }
    times.start.push_back(bench::Now() - begin);
    PostMessageW(frame, WM_CLOSE, 0, 0);
    return viewer.EndsWithin(kPatience);
}

// The same with the package.
bool OpenAndClose(const std::wstring& package, Times& times) {
    HWND frame = nullptr;
    const double begin = bench::Now();
    const Process viewer(L"viewer.exe \"" + package + L"\"");
    if (!viewer || !WaitFor([&] {
            frame = ShownWindowOf(viewer.Id(), kFrameClass);
            return frame && HasPaintedRows(frame);
        })) {
        return false;
    }
    times.opening.push_back(bench::Now() - begin);
    const double closing = bench::Now();
    PostMessageW(frame, WM_CLOSE, 0, 0);
    if (!WaitFor([&] { return !IsWindowVisible(frame); })) {
        return false;
    }
    times.closing.push_back(bench::Now() - closing);
    const bool ended = viewer.EndsWithin(kPatience);
    times.end.push_back(bench::Now() - closing);
    return ended;
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
        well = Start(times) && OpenAndClose(package, times);
    }
    if (!well) {
        std::puts("the viewer did not show the package");
        return 1;
    }
    const double copy = bench::MedianOf(times.copy);
    const double start = bench::MedianOf(times.start);
    const double opening = bench::MedianOf(times.opening);
    const double closing = bench::MedianOf(times.closing);
    bench::Row("plain copy of the unpacked folder, 100 MB", copy);
    bench::Compared("start of the viewer without a package", start, copy);
    bench::Limited("start of the viewer with it, until painted rows", opening, copy, kOpeningLimit);
    bench::Limited("what the package adds to the start", opening - start, copy, kOpeningLimit);
    bench::LimitedTime("closing, until the window is gone", closing, kClosingLimit);
    bench::Row("closing, until the process has ended", bench::MedianOf(times.end));
    return 0;
}
