// Runs the tests of one program. A crash ends it with a fixed code and names the place, where Wine alone
// would open a dialog or end with a random code.
#include "CrashReport.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace {

constexpr UINT kCrashed = 99;

LONG WINAPI ReportCrash(EXCEPTION_POINTERS* info) {
    crash::Print(stderr, *info);
    TerminateProcess(GetCurrentProcess(), kCrashed);
    return EXCEPTION_EXECUTE_HANDLER;
}

} // namespace

int main(int argc, char** argv) {
    SetUnhandledExceptionFilter(ReportCrash);
    if (std::getenv("MXOV_DOTS") != nullptr) { // of the display: not to be hidden from this program
        SetProcessDpiAwarenessContext(DPI_AWARENESS_CONTEXT_SYSTEM_AWARE);
    }
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
