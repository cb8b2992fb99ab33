// A window on which files can be dropped: `DropTarget LEFT TOP FOLDER` copies them into the folder and ends.
#include "common/ComObject.h"

#include <cstdlib>
#include <string>

#include <ole2.h>
#include <shellapi.h>

namespace {

class CopyTarget final : public common::ComObject<IDropTarget> {
public:
    explicit CopyTarget(std::wstring folder) : m_folder(std::move(folder)) {}

    HRESULT STDMETHODCALLTYPE DragEnter(IDataObject*, DWORD, POINTL, DWORD* effect) noexcept override {
        *effect &= DROPEFFECT_COPY;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE DragOver(DWORD, POINTL, DWORD* effect) noexcept override {
        *effect &= DROPEFFECT_COPY;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE DragLeave() noexcept override { return S_OK; }
    HRESULT STDMETHODCALLTYPE Drop(IDataObject* data, DWORD, POINTL, DWORD* effect) noexcept override {
        FORMATETC format = {CF_HDROP, nullptr, DVASPECT_CONTENT, -1, TYMED_HGLOBAL};
        STGMEDIUM medium = {};
        if (SUCCEEDED(data->GetData(&format, &medium))) {
            wchar_t path[MAX_PATH] = L"";
            DragQueryFileW(static_cast<HDROP>(medium.hGlobal), 0, path, MAX_PATH);
            const std::wstring copy = m_folder + std::wstring(path).substr(std::wstring(path).rfind(L'\\'));
            CopyFileW(path, copy.c_str(), TRUE);
            ReleaseStgMedium(&medium);
        }
        *effect &= DROPEFFECT_COPY;
        PostQuitMessage(0);
        return S_OK;
    }

private:
    const std::wstring m_folder;
};

} // namespace

int wmain(int count, wchar_t** arguments) {
    if (count != 4) {
        return 2;
    }
    constexpr int kSide = 150;
    OleInitialize(nullptr);
    const HWND window = CreateWindowExW(
        WS_EX_TOPMOST, L"STATIC", L"Drop target", WS_POPUP | WS_VISIBLE | WS_BORDER | SS_NOTIFY,
        std::wcstol(arguments[1], nullptr, 10), std::wcstol(arguments[2], nullptr, 10), kSide, kSide, nullptr,
        nullptr, nullptr, nullptr);
    CopyTarget* target = new CopyTarget(arguments[3]);
    RegisterDragDrop(window, target);
    MSG message = {};
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        DispatchMessageW(&message);
    }
    RevokeDragDrop(window);
    target->Release();
    OleUninitialize();
    return 0;
}
