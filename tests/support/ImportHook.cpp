#include "ImportHook.h"

#include <cstring>

namespace {

template <class Type>
Type* At(HMODULE module, DWORD offset) {
    return reinterpret_cast<Type*>(reinterpret_cast<BYTE*>(module) + offset);
}

} // namespace

void* ExchangePointer(void** place, void* replacement) {
    DWORD protection = 0;
    VirtualProtect(place, sizeof *place, PAGE_READWRITE, &protection);
    void* const old = *place;
    *place = replacement;
    VirtualProtect(place, sizeof *place, protection, &protection);
    return old;
}

void* HookImport(HMODULE module, const char* function, void* replacement) {
    const auto* dos = At<IMAGE_DOS_HEADER>(module, 0);
    const auto* headers = At<IMAGE_NT_HEADERS>(module, static_cast<DWORD>(dos->e_lfanew));
    const auto& directory = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    for (auto* library = At<IMAGE_IMPORT_DESCRIPTOR>(module, directory.VirtualAddress); library->Name;
         ++library) {
        const auto* names = At<IMAGE_THUNK_DATA>(module, library->OriginalFirstThunk);
        auto* places = At<void*>(module, library->FirstThunk);
        for (size_t i = 0; names[i].u1.AddressOfData; ++i) {
            if (IMAGE_SNAP_BY_ORDINAL(names[i].u1.Ordinal)) {
                continue;
            }
            const auto* name =
                At<IMAGE_IMPORT_BY_NAME>(module, static_cast<DWORD>(names[i].u1.AddressOfData));
            if (!std::strcmp(name->Name, function)) {
                return ExchangePointer(&places[i], replacement);
            }
        }
    }
    return nullptr;
}
