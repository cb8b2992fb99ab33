// Replaces functions that a loaded module imports.
#pragma once

#include <windows.h>

/// Writes a pointer into memory that may be read-only; returns what was there.
void* ExchangePointer(void** place, void* replacement);

/// Lets a module call `replacement` for a function that it imports by name; returns what it called until now,
/// null when it does not import the function.
void* HookImport(HMODULE module, const char* function, void* replacement);

/// Replaces a function that this program itself imports, until the end of its scope.
template <class Function>
class ImportHook {
public:
    ImportHook(const char* name, Function* replacement)
        : m_name(name), m_real(reinterpret_cast<Function*>(HookImport(
                            GetModuleHandleW(nullptr), name, reinterpret_cast<void*>(replacement)))) {}
    ~ImportHook() {
        if (m_real) {
            HookImport(GetModuleHandleW(nullptr), m_name, reinterpret_cast<void*>(m_real));
        }
    }
    ImportHook(const ImportHook&) = delete;
    ImportHook& operator=(const ImportHook&) = delete;

    /// The function that was replaced; null when this program does not import it.
    [[nodiscard]] Function* Real() const { return m_real; }

private:
    const char* m_name;
    Function* m_real;
};
