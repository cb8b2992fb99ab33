// Embeds the control and logs every call in both directions, for makers whose container misbehaves: compare
// the log with that of the container. See Usage below. Exit code: 0 every call of the host succeeded, 1 one
// failed, 2 wrong usage.
#include "Log.h"
#include "mxovhost.h"
#include "Site.h"

#include <cstdio>
#include <string_view>
#include <vector>

namespace {

constexpr char kUsage[] = "probe FOLDER [PACKAGE] [/stay] [/no-ambients] [/no-control-site] [/no-frame]\n"
                          "Embeds the MXOVDocView control, shows the unpacked package in FOLDER and logs "
                          "every call in both directions.\n"
                          "The control is taken from the folder of this program, by "
                          "MXOVDocViewCtrl.manifest, else from the registry.\n"
                          "  /stay             leaves the window open until it is closed\n"
                          "  /no-...           imitates a container that lacks something\n";
constexpr CLSID kControl = {0x6406FF95, 0x0F04, 0x4382, {0x85, 0x2B, 0x89, 0xE0, 0x97, 0x9E, 0xAE, 0xE8}};

struct Wishes {
    std::wstring folder;
    std::wstring package;
    bool stay = false;
    Lacks lacks;
};

bool Read(int count, wchar_t** words, Wishes& wishes) {
    for (int i = 1; i < count; ++i) {
        const std::wstring_view word = words[i];
        if (word == L"/stay") {
            wishes.stay = true;
        } else if (word == L"/no-ambients") {
            wishes.lacks.ambients = true;
        } else if (word == L"/no-control-site") {
            wishes.lacks.controlSite = true;
        } else if (word == L"/no-frame") {
            wishes.lacks.frame = true;
        } else if (word.starts_with(L'/') || !wishes.package.empty()) {
            return false;
        } else {
            (wishes.folder.empty() ? wishes.folder : wishes.package) = word;
        }
    }
    if (!wishes.folder.empty() && wishes.folder.back() != L'\\') {
        wishes.folder += L'\\';
    }
    return !wishes.folder.empty();
}

/// Uses the control beside this program from here on, if it is there.
void ActivateManifest() {
    wchar_t path[MAX_PATH] = L"";
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    std::wstring manifest = path;
    manifest.resize(manifest.rfind(L'\\') + 1);
    manifest += L"MXOVDocViewCtrl.manifest";
    ACTCTXW context = {};
    context.cbSize = sizeof context;
    context.lpSource = manifest.c_str();
    const HANDLE made = CreateActCtxW(&context);
    ULONG_PTR cookie = 0;
    const bool active = made != INVALID_HANDLE_VALUE && ActivateActCtx(made, &cookie) != FALSE;
    std::printf("control %s\n", active ? "beside this program" : "as registered");
}

template <class Interface>
class Queried {
public:
    Queried(IUnknown* object, REFIID iid) {
        CallIntoControl call("QueryInterface(" + InterfaceName(iid) + ")");
        call.Ended(object->QueryInterface(iid, reinterpret_cast<void**>(&m_object)));
    }
    ~Queried() {
        if (m_object) {
            m_object->Release();
        }
    }
    Queried(const Queried&) = delete;
    Queried& operator=(const Queried&) = delete;
    Interface* operator->() const { return m_object; }
    explicit operator bool() const { return m_object != nullptr; }

private:
    Interface* m_object = nullptr;
};

class Probe {
public:
    Probe(const Wishes& wishes, HWND window)
        : m_wishes(wishes), m_window(window), m_site(window, wishes.lacks) {}

    /// Returns whether every call succeeded.
    bool Run() {
        IUnknown* control = nullptr;
        if (FAILED(Step("CoCreateInstance", [&] {
                return CoCreateInstance(kControl, nullptr, CLSCTX_INPROC_SERVER, IID_IUnknown,
                                        reinterpret_cast<void**>(&control));
            }))) {
            return false;
        }
        Work(control);
        const ULONG left = control->Release();
        std::printf("references left: %lu\n", left);
        return m_failures == 0 && left == 0;
    }

private:
    template <class Action>
    HRESULT Step(const char* name, Action action) {
        CallIntoControl call(name);
        const HRESULT result = call.Ended(action());
        m_failures += FAILED(result) ? 1 : 0;
        return result;
    }

    void Work(IUnknown* control) {
        const Queried<IOleObject> object(control, IID_IOleObject);
        const Queried<IPersistStreamInit> state(control, IID_IPersistStreamInit);
        const Queried<IOleInPlaceObject> place(control, IID_IOleInPlaceObject);
        const Queried<IDispatch> members(control, IID_IDispatch);
        RECT area = {};
        GetClientRect(m_window, &area);
        Step("IOleObject::SetClientSite(site)", [&] { return object->SetClientSite(&m_site); });
        Step("IPersistStreamInit::InitNew", [&] { return state->InitNew(); });
        Step("IOleObject::DoVerb(OLEIVERB_INPLACEACTIVATE)",
             [&] { return object->DoVerb(OLEIVERB_INPLACEACTIVATE, nullptr, &m_site, 0, m_window, &area); });
        Step("LoadFile", [&] { return Load(members); });
        Step("OnSizeChange", [&] { return Resize(members, area); });
        Step("SetFocus to the dialog", [&] {
            SetFocus(GetNextDlgTabItem(MxovDialog(control), nullptr, FALSE));
            return S_OK;
        });
        std::printf("unsaved changes: %d\n", MxovHasUnsavedChanges(MxovDialog(control)));
        area.right += 40;
        Step("IOleInPlaceObject::SetObjectRects", [&] { return place->SetObjectRects(&area, &area); });
        Pump();
        Step("Close", [&] { return Call(members, MXOV_CLOSE, {}); });
        Step("IOleInPlaceObject::UIDeactivate", [&] { return place->UIDeactivate(); });
        Step("IOleInPlaceObject::InPlaceDeactivate", [&] { return place->InPlaceDeactivate(); });
        Step("IOleObject::Close", [&] { return object->Close(OLECLOSE_NOSAVE); });
        Step("IOleObject::SetClientSite(null)", [&] { return object->SetClientSite(nullptr); });
    }

    static HRESULT Call(const Queried<IDispatch>& members, DISPID member, std::vector<VARIANT> arguments) {
        DISPPARAMS parameters = {arguments.data(), nullptr, static_cast<UINT>(arguments.size()), 0};
        const HRESULT result = members->Invoke(member, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD,
                                               &parameters, nullptr, nullptr, nullptr);
        for (VARIANT& argument : arguments) {
            VariantClear(&argument);
        }
        return result;
    }

    HRESULT Load(const Queried<IDispatch>& members) const {
        std::vector<VARIANT> paths(2); // the last parameter comes first
        paths[0].vt = paths[1].vt = VT_BSTR;
        paths[0].bstrVal = SysAllocString(m_wishes.package.c_str());
        paths[1].bstrVal = SysAllocString(m_wishes.folder.c_str());
        return Call(members, MXOV_LOAD_FILE, paths);
    }

    static HRESULT Resize(const Queried<IDispatch>& members, const RECT& area) {
        std::vector<VARIANT> size(2);
        size[0].vt = size[1].vt = VT_I4;
        size[0].lVal = area.bottom;
        size[1].lVal = area.right;
        return Call(members, MXOV_ON_SIZE_CHANGE, size);
    }

    /// Handles what is waiting; with /stay, until the window is closed.
    void Pump() const {
        MSG message;
        while (m_wishes.stay ? IsWindowVisible(m_window) && GetMessageW(&message, nullptr, 0, 0) > 0
                             : PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != FALSE) {
            if (IsKey(message) && m_site.ActiveObject() &&
                m_site.ActiveObject()->TranslateAccelerator(&message) == S_OK) {
                continue;
            }
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
    }

    static bool IsKey(const MSG& message) {
        return message.message >= WM_KEYFIRST && message.message <= WM_KEYLAST;
    }

    const Wishes& m_wishes;
    HWND m_window;
    Site m_site;
    int m_failures = 0;
};

LRESULT CALLBACK WindowProcedure(HWND window, UINT message, WPARAM wide, LPARAM lng) {
    if (message == WM_CLOSE) {
        ShowWindow(window, SW_HIDE); // ends Pump; the control is closed before the window goes
        return 0;
    }
    return DefWindowProcW(window, message, wide, lng);
}

} // namespace

int wmain(int count, wchar_t** words) {
    Wishes wishes;
    if (!Read(count, words, wishes)) {
        std::fputs(kUsage, stderr);
        return 2;
    }
    ActivateManifest();
    OleInitialize(nullptr);
    WNDCLASSW type = {};
    type.lpfnWndProc = WindowProcedure;
    type.hInstance = GetModuleHandleW(nullptr);
    type.lpszClassName = L"MxovProbe";
    RegisterClassW(&type);
    const HWND window =
        CreateWindowW(L"MxovProbe", L"MXOV probe", WS_OVERLAPPEDWINDOW | WS_VISIBLE | WS_CLIPCHILDREN,
                      CW_USEDEFAULT, CW_USEDEFAULT, 440, 640, nullptr, nullptr, type.hInstance, nullptr);
    const bool succeeded = Probe(wishes, window).Run();
    DestroyWindow(window);
    OleUninitialize();
    std::puts(succeeded ? "every call of the host succeeded" : "a call of the host failed");
    return succeeded ? 0 : 1;
}
