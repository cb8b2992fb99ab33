#include "window/FileDrag.h"

#include "common/ComObject.h"
#include "common/ComPtr.h"
#include "common/Handles.h"

#include <ole2.h>
#include <shellapi.h>
#include <shlobj.h>

namespace viewer {

namespace {

// Drops when the button is released.
class CopySource final : public common::ComObject<IDropSource> {
public:
    HRESULT STDMETHODCALLTYPE QueryContinueDrag(BOOL escapePressed, DWORD keys) noexcept override {
        if (escapePressed || (keys & MK_RBUTTON)) {
            return DRAGDROP_S_CANCEL;
        }
        return keys & MK_LBUTTON ? S_OK : DRAGDROP_S_DROP;
    }
    HRESULT STDMETHODCALLTYPE GiveFeedback(DWORD) noexcept override { return DRAGDROP_S_USEDEFAULTCURSORS; }
};

// The frame would ask whether to attach what comes out of it.
class NoDropsOn {
public:
    explicit NoDropsOn(HWND frame) : m_frame(frame) { DragAcceptFiles(frame, FALSE); }
    ~NoDropsOn() { DragAcceptFiles(m_frame, TRUE); }
    NoDropsOn(const NoDropsOn&) = delete;
    NoDropsOn& operator=(const NoDropsOn&) = delete;

private:
    HWND m_frame;
};

// The file as the shell passes it on; null when it is gone.
common::ComPtr<IDataObject> DataOf(HWND window, const std::wstring& path) {
    common::ComPtr<IDataObject> data;
    common::ComPtr<IShellFolder> folder;
    PCUITEMID_CHILD child = nullptr;
    const common::UniqueOf<PIDLIST_ABSOLUTE, &ILFree> list(ILCreateFromPathW(path.c_str()));
    if (list && SUCCEEDED(SHBindToParent(list.get(), __uuidof(IShellFolder), folder.ReceiveVoid(), &child))) {
        folder->GetUIObjectOf(window, 1, &child, __uuidof(IDataObject), nullptr, data.ReceiveVoid());
    }
    return data;
}

} // namespace

void DragFileOut(HWND window, const std::wstring& path) {
    POINT place = {};
    GetCursorPos(&place);
    if (!DragDetect(window, place)) {
        return;
    }
    const common::ComPtr<IDataObject> data = DataOf(window, path);
    common::ComPtr<IDropSource> source;
    *source.Receive() = new CopySource;
    if (data) {
        const NoDropsOn frame(GetAncestor(window, GA_ROOT));
        DWORD effect = DROPEFFECT_NONE;
        DoDragDrop(data.Get(), source.Get(), DROPEFFECT_COPY, &effect);
    }
}

} // namespace viewer
