// Where a test program crashed.
#pragma once

#include <windows.h>

#include <cstdio>

namespace crash {

/// Prints an address as a module and the offset in it. Allocates nothing.
inline void PrintPlace(std::FILE* file, DWORD64 address) {
    HMODULE module = nullptr;
    char name[MAX_PATH] = "?";
    if (GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS |
                               GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                           reinterpret_cast<LPCSTR>(address), &module)) {
        GetModuleFileNameA(module, name, MAX_PATH);
    }
    std::fprintf(file, "%s + %llx", name, address - reinterpret_cast<DWORD64>(module));
}

/// Turns a context into that of the caller. False at the end of the stack.
inline bool Unwind(CONTEXT& context) {
    DWORD64 base = 0;
    PRUNTIME_FUNCTION function = RtlLookupFunctionEntry(context.Rip, &base, nullptr);
    if (function != nullptr) {
        void* data = nullptr;
        DWORD64 frame = 0;
        RtlVirtualUnwind(UNW_FLAG_NHANDLER, base, context.Rip, function, &context, &data, &frame, nullptr);
    } else { // a function without a frame
        context.Rip = *reinterpret_cast<const DWORD64*>(context.Rsp);
        context.Rsp += sizeof(DWORD64);
    }
    return context.Rip != 0;
}

/// Prints what happened, where, and the callers, innermost first.
inline void Print(std::FILE* file, const EXCEPTION_POINTERS& info) {
    constexpr int kMostCallers = 20;
    std::fprintf(file, "crashed: code %08lx at ", info.ExceptionRecord->ExceptionCode);
    CONTEXT context = *info.ContextRecord;
    PrintPlace(file, context.Rip);
    for (int i = 0; i < kMostCallers && Unwind(context); ++i) {
        std::fputs("\n  called from ", file);
        std::fflush(file); // a damaged stack can end the walk
        PrintPlace(file, context.Rip);
    }
    std::fputs("\n", file);
    std::fflush(file);
}

} // namespace crash
