#include "AllocationMethods.h"

namespace {

template <class Interface>
ComPtr<Interface> As(const HostedControl& control, REFIID iid) {
    ComPtr<Interface> found;
    control.Automation()->QueryInterface(iid, reinterpret_cast<void**>(found.GetAddressOf()));
    return found;
}

HRESULT SaveAndLoad(HostedControl& control, bool load) {
    ComPtr<IStream> stream;
    CreateStreamOnHGlobal(nullptr, TRUE, &stream);
    const auto persist = As<IPersistStreamInit>(control, IID_IPersistStreamInit);
    const HRESULT saved = persist->Save(stream.Get(), TRUE);
    stream->Seek({}, STREAM_SEEK_SET, nullptr);
    return load && SUCCEEDED(saved) ? persist->Load(stream.Get()) : saved;
}

HRESULT Draw(HostedControl& control) {
    const HDC screen = GetDC(nullptr);
    const HDC dc = CreateEnhMetaFileW(screen, nullptr, nullptr, nullptr);
    const RECTL bounds = {0, 0, 50, 50};
    const HRESULT drawn =
        As<IViewObject2>(control, IID_IViewObject2)
            ->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, dc, &bounds, &bounds, nullptr, 0);
    DeleteEnhMetaFile(CloseEnhMetaFile(dc));
    ReleaseDC(nullptr, screen);
    return drawn;
}

HRESULT Connect(HostedControl& control) {
    MockSink sink(kEventInterface);
    ComPtr<IConnectionPoint> point;
    const HRESULT found = As<IConnectionPointContainer>(control, IID_IConnectionPointContainer)
                              ->FindConnectionPoint(kEventInterface, &point);
    if (FAILED(found)) {
        return found;
    }
    DWORD cookie = 0;
    const HRESULT connected = point->Advise(static_cast<IDispatch*>(&sink), &cookie);
    if (FAILED(connected)) {
        return connected;
    }
    ComPtr<IEnumConnections> connections;
    const HRESULT listed = point->EnumConnections(&connections);
    connections.Reset();
    point->Unadvise(cookie);
    return listed;
}

HRESULT Names(HostedControl& control) {
    wchar_t name[] = L"LoadFile";
    wchar_t folder[] = L"bstrExtractedFolderPath";
    LPOLESTR names[] = {name, folder};
    DISPID ids[2] = {};
    return control.Automation()->GetIDsOfNames(IID_NULL, names, 2, LOCALE_USER_DEFAULT, ids);
}

HRESULT UserType(HostedControl& control) {
    LPOLESTR type = nullptr;
    const HRESULT given = As<IOleObject>(control, IID_IOleObject)->GetUserType(USERCLASSTYPE_FULL, &type);
    CoTaskMemFree(type);
    return given;
}

HRESULT Pages(HostedControl& control) {
    CAUUID pages = {};
    const HRESULT given = As<ISpecifyPropertyPages>(control, IID_ISpecifyPropertyPages)->GetPages(&pages);
    CoTaskMemFree(pages.pElems);
    return given;
}

HRESULT Verbs(HostedControl& control) {
    ComPtr<IEnumOLEVERB> verbs;
    return As<IOleObject>(control, IID_IOleObject)->EnumVerbs(&verbs);
}

HRESULT Formats(HostedControl& control) {
    ComPtr<IEnumFORMATETC> formats;
    return As<IDataObject>(control, IID_IDataObject)->EnumFormatEtc(DATADIR_GET, &formats);
}

} // namespace

std::vector<Method> Methods(VARIANT folder) {
    const auto member = [](DISPID id, std::vector<VARIANT> arguments, WORD flags = DISPATCH_METHOD) {
        return [=](HostedControl& control) { return Invoke(control.Automation(), id, flags, arguments); };
    };
    Value number(100L);
    std::vector<Method> methods;
    for (const bool active : {false, true}) {
        methods.insert(
            methods.end(),
            {{"LoadFile", active, member(kLoadFile, {folder, folder})},
             {"InputParameter (put)", active, member(kInputParameter, {folder}, DISPATCH_PROPERTYPUT)},
             {"InputParameter (get)", active,
              [](HostedControl& control) {
                  Value value;
                  return Invoke(control.Automation(), kInputParameter, DISPATCH_PROPERTYGET, {},
                                &value.Get());
              }},
             {"OnSizeChange", active, member(kOnSizeChange, {number.Get(), number.Get()})},
             {"ClearAllData", active, member(kClearAllData, {})},
             {"Close", active, member(kClose, {})},
             {"AboutBox", active, member(kAboutBox, {})},
             {"GetIDsOfNames", active, Names},
             {"IPersistStreamInit::Save", active,
              [](HostedControl& control) { return SaveAndLoad(control, false); }},
             {"IPersistStreamInit::Load", active,
              [](HostedControl& control) { return SaveAndLoad(control, true); }},
             {"IViewObject::Draw", active, Draw},
             {"IConnectionPoint", active, Connect},
             {"IOleObject::GetUserType", active, UserType},
             {"IOleObject::EnumVerbs", active, Verbs},
             {"ISpecifyPropertyPages::GetPages", active, Pages},
             {"IDataObject::EnumFormatEtc", active, Formats},
             {"IOleObject::DoVerb", active, [](HostedControl& control) { return control.Activate(); }},
             {"IOleObject::Close", active, [](HostedControl& control) {
                  return As<IOleObject>(control, IID_IOleObject)->Close(OLECLOSE_NOSAVE);
              }}});
    }
    return methods;
}
