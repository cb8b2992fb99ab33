#include "FileDialogCalls.h"

#include "ImportHook.h"

#include <memory>

#include <objbase.h>

namespace {

FileDialogCalls* recording = nullptr;

/// Places of the methods in the dialog's table.
enum Slot : std::size_t {
    kShow = 3,
    kSetFileTypes = 4,
    kSetOptions = 9,
    kSetFileName = 15,
    kSetDefaultExtension = 22
};

HRESULT STDMETHODCALLTYPE Show(IFileDialog* /*dialog*/, HWND owner) {
    ++recording->shown;
    recording->owner = owner;
    return HRESULT_FROM_WIN32(ERROR_CANCELLED);
}
HRESULT STDMETHODCALLTYPE SetFileTypes(IFileDialog* /*dialog*/, UINT count, const COMDLG_FILTERSPEC* types) {
    for (UINT i = 0; i < count; ++i) {
        recording->types.push_back(std::wstring(types[i].pszName) + L"|" + types[i].pszSpec);
    }
    return S_OK;
}
HRESULT STDMETHODCALLTYPE SetOptions(IFileDialog* /*dialog*/, FILEOPENDIALOGOPTIONS options) {
    recording->options = options;
    return S_OK;
}
HRESULT STDMETHODCALLTYPE SetFileName(IFileDialog* /*dialog*/, LPCWSTR name) {
    recording->name = name ? name : L"";
    return S_OK;
}
HRESULT STDMETHODCALLTYPE SetDefaultExtension(IFileDialog* /*dialog*/, LPCWSTR extension) {
    recording->extension = extension ? extension : L"";
    return S_OK;
}

struct Replacement {
    Slot slot;
    void* function;
};
const Replacement kReplacements[] = {{kShow, reinterpret_cast<void*>(Show)},
                                     {kSetFileTypes, reinterpret_cast<void*>(SetFileTypes)},
                                     {kSetOptions, reinterpret_cast<void*>(SetOptions)},
                                     {kSetFileName, reinterpret_cast<void*>(SetFileName)},
                                     {kSetDefaultExtension, reinterpret_cast<void*>(SetDefaultExtension)}};

/// The methods of all file dialogs of this process.
class MethodTable {
public:
    explicit MethodTable(IFileDialog* dialog) : m_methods(*reinterpret_cast<void***>(dialog)) {
        for (const Replacement& replacement : kReplacements) {
            m_real.push_back(ExchangePointer(&m_methods[replacement.slot], replacement.function));
        }
    }
    ~MethodTable() {
        for (std::size_t i = 0; i < m_real.size(); ++i) {
            ExchangePointer(&m_methods[kReplacements[i].slot], m_real[i]);
        }
    }
    MethodTable(const MethodTable&) = delete;
    MethodTable& operator=(const MethodTable&) = delete;

private:
    void** m_methods;
    std::vector<void*> m_real;
};

using Create = HRESULT WINAPI(REFCLSID, LPUNKNOWN, DWORD, REFIID, LPVOID*);
std::unique_ptr<ImportHook<Create>> hook;
std::unique_ptr<MethodTable> table;

HRESULT WINAPI CreateRecorded(REFCLSID clsid, LPUNKNOWN outer, DWORD context, REFIID iid, LPVOID* object) {
    const HRESULT result = hook->Real()(clsid, outer, context, iid, object);
    if (SUCCEEDED(result) && iid == IID_IFileDialog && !table) {
        recording->opens = clsid == CLSID_FileOpenDialog;
        table = std::make_unique<MethodTable>(static_cast<IFileDialog*>(*object));
    }
    return result;
}

} // namespace

FileDialogCalls::FileDialogCalls() {
    recording = this;
    hook = std::make_unique<ImportHook<Create>>("CoCreateInstance", CreateRecorded);
}

FileDialogCalls::~FileDialogCalls() {
    table.reset();
    hook.reset();
    recording = nullptr;
}
