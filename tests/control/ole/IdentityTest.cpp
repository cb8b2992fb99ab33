// One identity, and how the control describes itself.
#include "ControlInterfaces.h"
#include "ControlObject.h"

namespace {

using IdentityTest = ControlObjectTest;

constexpr DWORD kMiscStatus = 0x20191;

/// The interfaces of every control, and the one of this.
std::vector<NamedInterface> AllInterfaces() {
    std::vector<NamedInterface> all = ControlInterfaces();
    all.push_back({"_DMXOVDocView", &kPrimaryInterface});
    return all;
}

std::wstring Taken(LPOLESTR text) {
    std::wstring copy = text ? text : L"";
    CoTaskMemFree(text);
    return copy;
}

} // namespace

TEST_F(IdentityTest, EveryInterfaceLeadsToEveryOtherAndToOneUnknown) {
    const auto control = CreateControl();
    for (const NamedInterface& from : AllInterfaces()) {
        const auto first = As<IUnknown>(control.Get(), *from.iid);
        ASSERT_TRUE(first) << from.name;
        EXPECT_EQ(control.Get(), As<IUnknown>(first.Get(), IID_IUnknown).Get()) << from.name;
        for (const NamedInterface& to : AllInterfaces()) {
            const auto second = As<IUnknown>(first.Get(), *to.iid);
            ASSERT_TRUE(second) << from.name << " to " << to.name;
            EXPECT_EQ(second.Get(), As<IUnknown>(control.Get(), *to.iid).Get())
                << from.name << " to " << to.name;
            EXPECT_EQ(first.Get(), As<IUnknown>(second.Get(), *from.iid).Get())
                << to.name << " to " << from.name;
        }
    }
}

TEST_F(IdentityTest, RefusesWhatItDoesNotHaveFromEveryInterface) {
    const auto control = CreateControl();
    for (const NamedInterface& from : AllInterfaces()) {
        const auto part = As<IUnknown>(control.Get(), *from.iid);
        void* object = nullptr;
        for (const IID* absent : {&IID_IPersistFile, &IID_IOleCache, &IID_IPerPropertyBrowsing}) {
            object = &object;
            EXPECT_EQ(E_NOINTERFACE, part->QueryInterface(*absent, &object)) << from.name;
            EXPECT_EQ(nullptr, object) << from.name;
        }
        EXPECT_EQ(E_POINTER, part->QueryInterface(IID_IUnknown, nullptr)) << from.name;
    }
}

TEST_F(IdentityTest, TellsItsStatusTypeAndClass) {
    const auto control = CreateControl();
    const auto object = As<IOleObject>(control.Get(), IID_IOleObject);
    DWORD status = 0;
    EXPECT_EQ(S_OK, object->GetMiscStatus(DVASPECT_CONTENT, &status));
    EXPECT_EQ(kMiscStatus, status);
    LPOLESTR type = nullptr;
    for (const DWORD form : {USERCLASSTYPE_FULL, USERCLASSTYPE_SHORT, USERCLASSTYPE_APPNAME}) {
        ASSERT_EQ(S_OK, object->GetUserType(form, &type));
        EXPECT_EQ(L"MXOVDocView Control", Taken(type));
    }
    CLSID clsid = {};
    EXPECT_EQ(S_OK, object->GetUserClassID(&clsid));
    EXPECT_EQ(kControlClass, clsid);
    for (const IID* iid : {&IID_IPersist, &IID_IPersistStreamInit, &IID_IPersistStorage,
                           &IID_IPersistPropertyBag, &IID_IPersistMemory}) {
        clsid = {};
        EXPECT_EQ(S_OK, As<IPersist>(control.Get(), *iid)->GetClassID(&clsid));
        EXPECT_EQ(kControlClass, clsid);
    }
}

TEST_F(IdentityTest, NamesItsTypeAndEvents) {
    const auto control = CreateControl();
    const auto provider = As<IProvideClassInfo2>(control.Get(), IID_IProvideClassInfo2);
    ComPtr<ITypeInfo> type;
    ASSERT_EQ(S_OK, provider->GetClassInfo(&type));
    TYPEATTR* attributes = nullptr;
    ASSERT_EQ(S_OK, type->GetTypeAttr(&attributes));
    EXPECT_EQ(kControlClass, attributes->guid);
    type->ReleaseTypeAttr(attributes);
    GUID events = {};
    EXPECT_EQ(S_OK, provider->GetGUID(GUIDKIND_DEFAULT_SOURCE_DISP_IID, &events));
    EXPECT_EQ(kEventInterface, events);
    UINT count = 0;
    EXPECT_EQ(S_OK, Automation(control.Get())->GetTypeInfoCount(&count));
    EXPECT_EQ(1U, count);
}

TEST_F(IdentityTest, HasOnePropertyPage) {
    const auto control = CreateControl();
    CAUUID pages = {};
    ASSERT_EQ(S_OK, As<ISpecifyPropertyPages>(control.Get(), IID_ISpecifyPropertyPages)->GetPages(&pages));
    ASSERT_EQ(1U, pages.cElems);
    EXPECT_EQ(kPageClass, pages.pElems[0]);
    CoTaskMemFree(pages.pElems);
}

TEST_F(IdentityTest, IsNoPartOfAnOtherObjectUnlessAskedForItsUnknown) {
    const auto outer = CreateControl();
    void* refused = nullptr;
    EXPECT_EQ(CLASS_E_NOAGGREGATION,
              CoCreateInstance(kControlClass, outer.Get(), CLSCTX_INPROC_SERVER, IID_IOleObject, &refused));
    EXPECT_EQ(nullptr, refused);
}

TEST_F(IdentityTest, UnsupportedRequestsGiveTheDocumentedCodes) {
    const auto control = CreateControl();
    const auto object = As<IOleObject>(control.Get(), IID_IOleObject);
    IMoniker* moniker = nullptr;
    EXPECT_EQ(E_NOTIMPL, object->GetMoniker(OLEGETMONIKER_ONLYIFTHERE, OLEWHICHMK_OBJFULL, &moniker));
    EXPECT_EQ(E_NOTIMPL, object->SetColorScheme(nullptr));
    SIZEL size = {};
    EXPECT_EQ(DV_E_DVASPECT, object->GetExtent(DVASPECT_ICON, &size));
    size = {100, 100};
    EXPECT_EQ(DV_E_DVASPECT, object->SetExtent(DVASPECT_ICON, &size));
    EXPECT_EQ(INPLACE_E_NOTUNDOABLE,
              As<IOleInPlaceObject>(control.Get(), IID_IOleInPlaceObject)->ReactivateAndUndo());
    HWND window = nullptr;
    EXPECT_EQ(E_FAIL, As<IOleWindow>(control.Get(), IID_IOleWindow)->GetWindow(&window));
}

TEST_F(IdentityTest, ExtentIsHimetricAndKept) {
    const auto control = CreateControl();
    const auto object = As<IOleObject>(control.Get(), IID_IOleObject);
    SIZEL size = {7000, 9000};
    EXPECT_EQ(S_OK, object->SetExtent(DVASPECT_CONTENT, &size));
    size = {};
    EXPECT_EQ(S_OK, object->GetExtent(DVASPECT_CONTENT, &size));
    EXPECT_EQ(7000, size.cx);
    EXPECT_EQ(9000, size.cy);
    size = {};
    EXPECT_EQ(
        S_OK,
        As<IViewObject2>(control.Get(), IID_IViewObject2)->GetExtent(DVASPECT_CONTENT, -1, nullptr, &size));
    EXPECT_EQ(7000, size.cx);
    size = {-1, 5};
    EXPECT_EQ(E_INVALIDARG, object->SetExtent(DVASPECT_CONTENT, &size));
}
