// Runs the tests of one program. A crash ends it with a fixed code and names the place, where Wine alone
// would open a dialog or end with a random code.
#include <windows.h>

#include <gtest/gtest.h>

#include <cstdio>

namespace {

constexpr UINT kCrashed = 99;

LONG WINAPI ReportCrash(EXCEPTION_POINTERS* info) {
    const auto address = reinterpret_cast<BYTE*>(info->ExceptionRecord->ExceptionAddress);
    HMODULE module = nullptr;
    char name[MAX_PATH] = "?";
    if (GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS |
                               GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                           reinterpret_cast<LPCSTR>(address), &module)) {
        GetModuleFileNameA(module, name, MAX_PATH);
    }
    std::fprintf(stderr, "crashed: code %08lx at %s + %llx\n", info->ExceptionRecord->ExceptionCode, name,
                 static_cast<unsigned long long>(address - reinterpret_cast<BYTE*>(module)));
    std::fflush(stderr);
    TerminateProcess(GetCurrentProcess(), kCrashed);
    return EXCEPTION_EXECUTE_HANDLER;
}

} // namespace

int main(int argc, char** argv) {
    SetUnhandledExceptionFilter(ReportCrash);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
