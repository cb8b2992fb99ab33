// A complete host in C: creates the control without registration, shows a package in a window, passes keys.
//     host.exe FOLDER PACKAGE [/once]
// FOLDER is the folder of the unpacked package; /once closes the window again, for tests. Build it with
//     x86_64-w64-mingw32-gcc -municode -I../../include host.c -o host.exe -lole32 -loleaut32 -luuid
//     cl /I ..\..\include host.c ole32.lib oleaut32.lib uuid.lib user32.lib
// and keep MXOVDocViewCtrl.ocx, mxovshare.dll and MXOVDocViewCtrl.manifest beside host.exe.
#define COBJMACROS
#include "mxovhost.h"

#include <stdio.h>

static const CLSID kControl = {0x6406FF95, 0x0F04, 0x4382, {0x85, 0x2B, 0x89, 0xE0, 0x97, 0x9E, 0xAE, 0xE8}};

/* One site, which outlives the control: its references need no count. */
typedef struct {
    IOleClientSite client;
    IOleInPlaceSite place;
    HWND window;
} Site;

static Site site;
static IOleObject* object;
static IDispatch* members;
static IOleInPlaceActiveObject* keys; /* gets the keys first */

static HRESULT QuerySite(REFIID iid, void** found) {
    *found = NULL;
    if (IsEqualIID(iid, &IID_IUnknown) || IsEqualIID(iid, &IID_IOleClientSite)) {
        *found = &site.client;
    } else if (IsEqualIID(iid, &IID_IOleInPlaceSite) || IsEqualIID(iid, &IID_IOleWindow)) {
        *found = &site.place;
    }
    return *found ? S_OK : E_NOINTERFACE;
}

static HRESULT STDMETHODCALLTYPE ClientQuery(IOleClientSite* self, REFIID iid, void** found) {
    (void)self;
    return QuerySite(iid, found);
}
static ULONG STDMETHODCALLTYPE ClientAddRef(IOleClientSite* self) {
    return self ? 2 : 0;
}
static ULONG STDMETHODCALLTYPE ClientRelease(IOleClientSite* self) {
    return self ? 1 : 0;
}
static HRESULT STDMETHODCALLTYPE ClientSave(IOleClientSite* self) {
    (void)self;
    return E_NOTIMPL;
}
static HRESULT STDMETHODCALLTYPE ClientMoniker(IOleClientSite* self, DWORD assign, DWORD which,
                                               IMoniker** moniker) {
    (void)self, (void)assign, (void)which;
    *moniker = NULL;
    return E_NOTIMPL;
}
static HRESULT STDMETHODCALLTYPE ClientContainer(IOleClientSite* self, IOleContainer** container) {
    (void)self;
    *container = NULL;
    return E_NOINTERFACE;
}
static HRESULT STDMETHODCALLTYPE ClientShow(IOleClientSite* self) {
    (void)self;
    return S_OK;
}
static HRESULT STDMETHODCALLTYPE ClientShowWindow(IOleClientSite* self, BOOL shown) {
    (void)self, (void)shown;
    return S_OK;
}
static HRESULT STDMETHODCALLTYPE ClientLayout(IOleClientSite* self) {
    (void)self;
    return E_NOTIMPL;
}
static IOleClientSiteVtbl clientTable = {ClientQuery, ClientAddRef,     ClientRelease,
                                         ClientSave,  ClientMoniker,    ClientContainer,
                                         ClientShow,  ClientShowWindow, ClientLayout};

static HRESULT STDMETHODCALLTYPE PlaceQuery(IOleInPlaceSite* self, REFIID iid, void** found) {
    (void)self;
    return QuerySite(iid, found);
}
static ULONG STDMETHODCALLTYPE PlaceAddRef(IOleInPlaceSite* self) {
    return self ? 2 : 0;
}
static ULONG STDMETHODCALLTYPE PlaceRelease(IOleInPlaceSite* self) {
    return self ? 1 : 0;
}
static HRESULT STDMETHODCALLTYPE PlaceWindow(IOleInPlaceSite* self, HWND* window) {
    (void)self;
    *window = site.window;
    return S_OK;
}
static HRESULT STDMETHODCALLTYPE PlaceHelp(IOleInPlaceSite* self, BOOL enter) {
    (void)self, (void)enter;
    return E_NOTIMPL;
}
static HRESULT STDMETHODCALLTYPE PlaceOk(IOleInPlaceSite* self) {
    (void)self;
    return S_OK;
}
static HRESULT STDMETHODCALLTYPE PlaceNone(IOleInPlaceSite* self) {
    (void)self;
    return E_NOTIMPL;
}
static HRESULT STDMETHODCALLTYPE PlaceContext(IOleInPlaceSite* self, IOleInPlaceFrame** frame,
                                              IOleInPlaceUIWindow** document, LPRECT position, LPRECT clip,
                                              LPOLEINPLACEFRAMEINFO info) {
    (void)self;
    *frame = NULL; /* optional */
    *document = NULL;
    GetClientRect(site.window, position);
    *clip = *position;
    info->fMDIApp = FALSE;
    info->hwndFrame = site.window;
    info->haccel = NULL;
    info->cAccelEntries = 0;
    return S_OK;
}
static HRESULT STDMETHODCALLTYPE PlaceScroll(IOleInPlaceSite* self, SIZE extent) {
    (void)self, (void)extent;
    return E_NOTIMPL;
}
static HRESULT STDMETHODCALLTYPE PlaceUndone(IOleInPlaceSite* self, BOOL undoable) {
    (void)self, (void)undoable;
    return S_OK;
}
static HRESULT STDMETHODCALLTYPE PlaceMoved(IOleInPlaceSite* self, LPCRECT position) {
    (void)self, (void)position;
    return S_OK;
}
static IOleInPlaceSiteVtbl placeTable = {PlaceQuery,  PlaceAddRef, PlaceRelease, PlaceWindow,  PlaceHelp,
                                         PlaceOk,     PlaceOk,     PlaceOk,      PlaceContext, PlaceScroll,
                                         PlaceUndone, PlaceOk,     PlaceNone,    PlaceNone,    PlaceMoved};

static HRESULT Call(DISPID member, VARIANT* arguments, UINT count) {
    DISPPARAMS parameters = {arguments, NULL, count, 0};
    return IDispatch_Invoke(members, member, &IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters,
                            NULL, NULL, NULL);
}

/* The folder with the separator at its end that the control expects. The caller frees the text. */
static BSTR FolderText(const wchar_t* folder) {
    const UINT length = (UINT)lstrlenW(folder);
    const BOOL ends = length > 0 && folder[length - 1] == L'\\';
    const BSTR text = SysAllocStringLen(folder, ends ? length : length + 1);
    if (text && !ends) {
        text[length] = L'\\';
    }
    return text;
}

static HRESULT LoadPackage(const wchar_t* folder, const wchar_t* package) {
    VARIANT paths[2]; /* the last parameter comes first */
    HRESULT result;
    paths[0].vt = paths[1].vt = VT_BSTR;
    paths[0].bstrVal = SysAllocString(package);
    paths[1].bstrVal = FolderText(folder);
    result = Call(MXOV_LOAD_FILE, paths, 2);
    VariantClear(&paths[0]);
    VariantClear(&paths[1]);
    return result;
}

static void Resize(void) {
    IOleInPlaceObject* place = NULL;
    RECT area;
    VARIANT size[2];
    GetClientRect(site.window, &area);
    if (object && SUCCEEDED(IOleObject_QueryInterface(object, &IID_IOleInPlaceObject, (void**)&place))) {
        IOleInPlaceObject_SetObjectRects(place, &area, &area);
        IOleInPlaceObject_Release(place);
        size[0].vt = size[1].vt = VT_I4;
        size[0].lVal = area.bottom;
        size[1].lVal = area.right;
        Call(MXOV_ON_SIZE_CHANGE, size, 2);
    }
}

static void ReleaseControl(void) {
    IOleObject_Close(object, OLECLOSE_NOSAVE);
    IOleObject_SetClientSite(object, NULL);
    IOleInPlaceActiveObject_Release(keys);
    IDispatch_Release(members);
    IOleObject_Release(object);
    object = NULL;
    keys = NULL;
}

static LRESULT CALLBACK WindowProcedure(HWND window, UINT message, WPARAM wide, LPARAM lng) {
    if (message == WM_SIZE) {
        Resize();
    } else if (message == WM_CLOSE) {
        Call(MXOV_CLOSE, NULL, 0); /* asks about unsaved changes */
        ReleaseControl();
    } else if (message == WM_DESTROY) {
        PostQuitMessage(0);
    }
    return DefWindowProcW(window, message, wide, lng);
}

static HRESULT CreateControl(void) {
    IUnknown* control = NULL;
    IPersistStreamInit* state = NULL;
    RECT area;
    HRESULT result = CoCreateInstance(&kControl, NULL, CLSCTX_INPROC_SERVER, &IID_IUnknown, (void**)&control);
    if (FAILED(result)) {
        return result;
    }
    IUnknown_QueryInterface(control, &IID_IOleObject, (void**)&object);
    IUnknown_QueryInterface(control, &IID_IDispatch, (void**)&members);
    IUnknown_QueryInterface(control, &IID_IOleInPlaceActiveObject, (void**)&keys);
    IUnknown_QueryInterface(control, &IID_IPersistStreamInit, (void**)&state);
    IUnknown_Release(control);
    GetClientRect(site.window, &area);
    IOleObject_SetClientSite(object, &site.client);
    IPersistStreamInit_InitNew(state);
    IPersistStreamInit_Release(state);
    return IOleObject_DoVerb(object, OLEIVERB_UIACTIVATE, NULL, &site.client, 0, site.window, &area);
}

static HANDLE ActivateManifest(ULONG_PTR* cookie) {
    wchar_t path[MAX_PATH];
    ACTCTXW context;
    HANDLE made;
    DWORD length = GetModuleFileNameW(NULL, path, MAX_PATH);
    while (length > 0 && path[length - 1] != L'\\') {
        --length;
    }
    lstrcpynW(path + length, L"MXOVDocViewCtrl.manifest", (int)(MAX_PATH - length));
    ZeroMemory(&context, sizeof context);
    context.cbSize = sizeof context;
    context.lpSource = path;
    made = CreateActCtxW(&context);
    return made != INVALID_HANDLE_VALUE && ActivateActCtx(made, cookie) ? made : NULL;
}

int wmain(int count, wchar_t** words) {
    WNDCLASSW type;
    ULONG_PTR cookie = 0;
    MSG message;
    HRESULT shown;
    if (count < 3 || !ActivateManifest(&cookie)) {
        fputs(count < 3 ? "usage: host FOLDER PACKAGE [/once]\n"
                        : "MXOVDocViewCtrl.manifest cannot be read\n",
              stderr);
        return 2;
    }
    OleInitialize(NULL);
    site.client.lpVtbl = &clientTable;
    site.place.lpVtbl = &placeTable;
    ZeroMemory(&type, sizeof type);
    type.lpfnWndProc = WindowProcedure;
    type.hInstance = GetModuleHandleW(NULL);
    type.lpszClassName = L"MxovHost";
    RegisterClassW(&type);
    site.window = CreateWindowW(L"MxovHost", L"Package", WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, CW_USEDEFAULT,
                                CW_USEDEFAULT, 420, 600, NULL, NULL, type.hInstance, NULL);
    shown = CreateControl();
    if (FAILED(shown)) {
        fprintf(stderr, "the control cannot be shown: %08lx\n", (unsigned long)shown);
        return 1;
    }
    ShowWindow(site.window, SW_SHOWNORMAL);
    printf("LoadFile %08lx\n", (unsigned long)LoadPackage(words[1], words[2]));
    if (count > 3) {
        wchar_t name[260] = L"";
        const HWND dialog = MxovDialog((IUnknown*)object);
        MxovDocumentText(dialog, MXOV_GCODE_LIST, 0, 0, name, 260);
        printf("first G-code file: %ls\nunsaved changes: %d\n", name, (int)MxovHasUnsavedChanges(dialog));
        PostMessageW(site.window, WM_CLOSE, 0, 0);
    }
    while (GetMessageW(&message, NULL, 0, 0) > 0) {
        /* The dialog needs Tab, Alt+S and arrows. */
        if (keys && message.message >= WM_KEYFIRST && message.message <= WM_KEYLAST &&
            IOleInPlaceActiveObject_TranslateAccelerator(keys, &message) == S_OK) {
            continue;
        }
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    DeactivateActCtx(0, cookie);
    OleUninitialize();
    return 0;
}
