// Replaces functions that a loaded module imports.
#pragma once

#include <windows.h>

/// Lets a module call `replacement` for a function that it imports by name; returns what it called until now,
/// null when it does not import the function.
void* HookImport(HMODULE module, const char* function, void* replacement);
