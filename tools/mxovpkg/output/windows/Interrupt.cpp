#include "output/Interrupt.h"

#include <windows.h>

#include <atomic>

namespace {

std::atomic<bool> g_interrupted = false;
std::atomic<int> g_watches = 0;

BOOL WINAPI OnControl(DWORD event) {
    if (event != CTRL_C_EVENT && event != CTRL_BREAK_EVENT) {
        return FALSE;
    }
    g_interrupted = true;
    return TRUE;
}

} // namespace

InterruptWatch::InterruptWatch() {
    if (g_watches++ == 0) {
        SetConsoleCtrlHandler(OnControl, TRUE);
    }
}

InterruptWatch::~InterruptWatch() {
    if (--g_watches == 0) {
        SetConsoleCtrlHandler(OnControl, FALSE);
    }
}

bool InterruptWatch::IsInterrupted() {
    return g_interrupted;
}
