// The value that -fstack-protector puts before return addresses, drawn when the file is loaded. The compiler's own
// start-up opens a cryptographic provider for it, which loads three more libraries and takes as long as the rest of
// loading a control.
#include <windows.h>

#include <intrin.h>
#include <ntsecapi.h>

void* __stack_chk_guard;

__attribute__((constructor, optimize("no-stack-protector"))) static void DrawGuard(void) {
    UINT_PTR drawn = 0;
    if (!RtlGenRandom(&drawn, sizeof drawn))
        drawn = __rdtsc() ^ (UINT_PTR)&drawn;
    __stack_chk_guard = (void*)(drawn & ~(UINT_PTR)0xFF); // a text that runs over the end cannot bring a zero byte
}

__attribute__((noreturn)) void __stack_chk_fail(void) {
    __asm__ volatile("int $0x29" : : "c"(FAST_FAIL_STACK_COOKIE_CHECK_FAILURE)); // ends the process at once
    __builtin_unreachable();
}
