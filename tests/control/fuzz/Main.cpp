// control_fuzz RUN [COUNT] [SEED] [crash|leak|hang] [PATIENCE]: hammers the registered control. Prints "done"
// and ends with 0 when nothing was found, with 3 when something was; a crash ends it with 99, a step that
// takes longer than PATIENCE seconds with 98.
#include "CrashReport.h"
#include "Fuzz.h"
#include "Progress.h"

#include <ole2.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>

// Of oleaut32; no header here declares it.
extern "C" void WINAPI SetOaNoCache();

namespace {

constexpr int kFound = 3;
constexpr int kUsage = 2;
constexpr UINT kCrashed = 99;
constexpr unsigned kPatience = 60; // seconds; the longest step of a sound run takes a few

LONG WINAPI ReportCrash(EXCEPTION_POINTERS* info) {
    crash::Print(stdout, *info);
    std::printf("  in %s\n", Words(doing).c_str());
    std::fflush(stdout);
    TerminateProcess(GetCurrentProcess(), kCrashed);
    return EXCEPTION_EXECUTE_HANDLER;
}

Plant PlantOf(const char* name) {
    if (!std::strcmp(name, "crash")) {
        return Plant::kCrash;
    }
    if (!std::strcmp(name, "leak")) {
        return Plant::kLeak;
    }
    return std::strcmp(name, "hang") ? Plant::kNone : Plant::kHang;
}

std::string Run(const std::string& run, uint64_t count, uint32_t seed, Plant plant) {
    if (run == "invoke") {
        return FuzzInvoke(count, seed, plant);
    }
    if (run == "messages") {
        return FuzzMessages(count, seed, plant);
    }
    if (run == "allocations") {
        return FailAllocations(plant);
    }
    if (run == "cycles") {
        return RunCycles(count, plant);
    }
    return "no such run: " + run;
}

} // namespace

void Spring(Plant plant) {
    if (plant == Plant::kCrash) {
        RaiseException(EXCEPTION_ACCESS_VIOLATION, 0, 0, nullptr);
    }
    if (plant == Plant::kHang) {
        Sleep(INFINITE);
    }
    if (plant == Plant::kLeak) {
        constexpr size_t kBytes = 0x20000;
        HeapAlloc(GetProcessHeap(), HEAP_ZERO_MEMORY, kBytes);
        CreateSolidBrush(RGB(1, 2, 3));
        GetDC(nullptr);
        CreateMenu();
        CreateEventW(nullptr, FALSE, FALSE, nullptr);
    }
}

int main(int argc, char** argv) {
    SetUnhandledExceptionFilter(ReportCrash);
    SetOaNoCache(); // freed strings that are kept for the next one would count as heap in use
    if (argc < 2) {
        std::puts("control_fuzz invoke|messages|allocations|cycles [COUNT] [SEED] [crash|leak|hang] "
                  "[PATIENCE]");
        return kUsage;
    }
    const uint64_t count = argc > 2 ? std::strtoull(argv[2], nullptr, 10) : 1000;
    const auto seed = static_cast<uint32_t>(argc > 3 ? std::strtoul(argv[3], nullptr, 10) : 1);
    WatchProgress(argc > 5 ? static_cast<unsigned>(std::strtoul(argv[5], nullptr, 10)) : kPatience);
    std::string found;
    OleInitialize(nullptr);
    const ULONGLONG start = GetTickCount64();
    try {
        found = Run(argv[1], count, seed, PlantOf(argc > 4 ? argv[4] : ""));
    } catch (const std::exception& error) {
        found = error.what();
    }
    OleUninitialize();
    std::printf("%s: %llu ms, seed %u\n", argv[1], GetTickCount64() - start, seed);
    if (!found.empty()) {
        std::printf("found: %s\n", found.c_str());
        return kFound;
    }
    std::puts("done");
    return 0;
}
