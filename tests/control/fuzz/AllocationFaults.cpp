#include "AllocationMethods.h"
#include "Fuzz.h"
#include "ImportHook.h"
#include "PackageBuilder.h"
#include "Progress.h"

#include <cstdio>
#include <cstdlib>

namespace {

/// Allocations of the module are counted; the one with this number fails.
uint64_t allocation = 0;
uint64_t failing = 0; // 0: none
bool counting = false;
int64_t outstanding = 0; // blocks of the module's own heap

bool Fails() {
    return counting && ++allocation == failing;
}

decltype(&std::malloc) realMalloc;
decltype(&std::calloc) realCalloc;
decltype(&std::realloc) realRealloc;
decltype(&std::free) realFree;
decltype(&CoTaskMemAlloc) realTaskAlloc;
decltype(&SysAllocString) realSysAllocString;
decltype(&SysAllocStringLen) realSysAllocStringLen;

void* FailingMalloc(size_t size) {
    void* const block = Fails() ? nullptr : realMalloc(size);
    outstanding += block != nullptr;
    return block;
}
void* FailingCalloc(size_t count, size_t size) {
    void* const block = Fails() ? nullptr : realCalloc(count, size);
    outstanding += block != nullptr;
    return block;
}
void* FailingRealloc(void* old, size_t size) {
    void* const block = Fails() ? nullptr : realRealloc(old, size);
    outstanding += block && !old;
    return block;
}
void CountedFree(void* block) {
    outstanding -= block != nullptr;
    realFree(block);
}
LPVOID WINAPI FailingTaskAlloc(SIZE_T size) {
    return Fails() ? nullptr : realTaskAlloc(size);
}
BSTR WINAPI FailingSysAllocString(const OLECHAR* text) {
    return Fails() ? nullptr : realSysAllocString(text);
}
BSTR WINAPI FailingSysAllocStringLen(const OLECHAR* text, UINT length) {
    return Fails() ? nullptr : realSysAllocStringLen(text, length);
}

template <class Function>
void Hook(HMODULE module, const char* name, Function* replacement, Function*& real) {
    real = reinterpret_cast<Function*>(HookImport(module, name, reinterpret_cast<void*>(replacement)));
    if (!real) {
        throw std::runtime_error(std::string("the module does not import ") + name);
    }
}

void HookAllocations(HMODULE module) {
    Hook(module, "malloc", FailingMalloc, realMalloc);
    Hook(module, "calloc", FailingCalloc, realCalloc);
    Hook(module, "realloc", FailingRealloc, realRealloc);
    Hook(module, "free", CountedFree, realFree);
    Hook(module, "CoTaskMemAlloc", FailingTaskAlloc, realTaskAlloc);
    Hook(module, "SysAllocString", FailingSysAllocString, realSysAllocString);
    Hook(module, "SysAllocStringLen", FailingSysAllocStringLen, realSysAllocStringLen);
}

void* CountedMalloc(size_t size) {
    void* const block = realMalloc(size);
    outstanding += block != nullptr;
    return block;
}
void* CountedCalloc(size_t count, size_t size) {
    void* const block = realCalloc(count, size);
    outstanding += block != nullptr;
    return block;
}
void* CountedRealloc(void* old, size_t size) {
    void* const block = realRealloc(old, size);
    outstanding += block && !old;
    return block;
}

/// Strings that the library makes are freed by the control: they are counted, and never fail.
void CountBlocks(HMODULE library) {
    HookImport(library, "malloc", reinterpret_cast<void*>(CountedMalloc));
    HookImport(library, "calloc", reinterpret_cast<void*>(CountedCalloc));
    HookImport(library, "realloc", reinterpret_cast<void*>(CountedRealloc));
    HookImport(library, "free", reinterpret_cast<void*>(CountedFree));
}

/// One call with the given allocation failing. FALSE when the call made fewer allocations.
bool CallWithFault(const Method& method, uint64_t number, Plant plant) {
    BeginStep(method.name, number);
    HostedControl control;
    if (method.active && control.Activate() != S_OK) {
        throw std::runtime_error(std::string(method.name) + ": a sound activation failed");
    }
    allocation = 0;
    failing = number;
    counting = true;
    const HRESULT result = method.call(control);
    if (number == 3) {
        Spring(plant);
    }
    counting = false;
    const bool reached = allocation >= number;
    HostedControl::Pump();
    if (!reached && FAILED(result)) {
        throw std::runtime_error(std::string(method.name) + ": fails without a fault");
    }
    // Whatever failed, the next call works.
    Value number1(1L);
    if (Invoke(control.Automation(), kOnSizeChange, DISPATCH_METHOD, {number1.Get(), number1.Get()}) !=
        S_OK) {
        throw std::runtime_error(std::string(method.name) + ": the control is of no use afterwards");
    }
    Invoke(control.Automation(), kClearAllData, DISPATCH_METHOD); // the records outlive the control
    return reached;
}

void CreateWithFaults(const ControlModule& module, uint64_t& faults) {
    for (uint64_t number = 1;; ++number) {
        ComPtr<IUnknown> control;
        allocation = 0;
        failing = number;
        counting = true;
        const HRESULT created = CoCreateInstance(kControlClass, nullptr, CLSCTX_INPROC_SERVER, IID_IUnknown,
                                                 reinterpret_cast<void**>(control.GetAddressOf()));
        counting = false;
        if (allocation < number) {
            return;
        }
        ++faults;
        if (SUCCEEDED(created) != (control.Get() != nullptr)) {
            throw std::runtime_error("creation tells what is not so");
        }
        control.Reset();
        if (module.Call("DllCanUnloadNow") != S_OK) {
            throw std::runtime_error("a control that was not made holds the module");
        }
    }
}

/// A load into a visible control allocates where one into a hidden control does, and takes ten times as long:
/// the short run fails every ninth of its allocations.
uint64_t Stride(const Method& method, uint64_t number) {
    constexpr uint64_t kEach = 10;
    return method.active && number > kEach && !std::getenv("MXOV_LONG") ? 9 : 1;
}

} // namespace

std::string FailAllocations(Plant plant) {
    const PackageBuilder package;
    const ControlModule module;
    Value folder(package.Path());
    const std::vector<Method> methods = Methods(folder.Get());
    for (const Method& method : methods) { // fills the caches that last as long as the module
        CallWithFault(method, ~uint64_t{0}, Plant::kNone);
    }
    HookAllocations(module.Handle());
    CountBlocks(GetModuleHandleW(L"mxovshare.dll"));
    std::string found;
    uint64_t faults = 0;
    CreateWithFaults(module, faults);
    for (const Method& method : methods) {
        const int64_t before = outstanding;
        uint64_t number = 1;
        while (CallWithFault(method, number, plant)) {
            number += Stride(method, number);
            ++faults;
        }
        const int64_t left = outstanding - before;
        std::printf("%s%s: %llu allocations, %lld blocks left\n", method.name,
                    method.active ? " (active)" : "", static_cast<unsigned long long>(allocation),
                    static_cast<long long>(left));
        std::fflush(stdout);
        if (left > 0) {
            found += std::string(method.name) + " leaks; ";
        }
    }
    std::printf("%llu faults\n", static_cast<unsigned long long>(faults));
    return found;
}
