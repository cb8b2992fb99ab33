// The control's smaller interfaces at work: data, views, verbs, quick activation.
#include "EmbeddedControl.h"

namespace {

using InterfaceTest = EmbeddedControlTest;

FORMATETC Format(CLIPFORMAT format, DWORD medium) {
    return {format, nullptr, DVASPECT_CONTENT, -1, medium};
}

} // namespace

TEST_F(InterfaceTest, DataIsItsPictureAsEitherMetafile) {
    const auto data = As<IDataObject>(control.Get(), IID_IDataObject);
    for (auto [format, medium] : {std::pair<CLIPFORMAT, DWORD>{CF_ENHMETAFILE, TYMED_ENHMF},
                                  std::pair<CLIPFORMAT, DWORD>{CF_METAFILEPICT, TYMED_MFPICT}}) {
        FORMATETC wanted = Format(format, medium);
        EXPECT_EQ(S_OK, data->QueryGetData(&wanted));
        STGMEDIUM given = {};
        ASSERT_EQ(S_OK, data->GetData(&wanted, &given));
        EXPECT_EQ(medium, given.tymed);
        ReleaseStgMedium(&given);
    }
    FORMATETC text = Format(CF_UNICODETEXT, TYMED_HGLOBAL);
    EXPECT_EQ(DV_E_FORMATETC, data->QueryGetData(&text));
    STGMEDIUM given = {};
    EXPECT_EQ(DV_E_FORMATETC, data->GetData(&text, &given));
    EXPECT_EQ(E_NOTIMPL, data->SetData(&text, &given, FALSE));
    ComPtr<IEnumFORMATETC> formats;
    EXPECT_EQ(E_NOTIMPL, data->EnumFormatEtc(DATADIR_SET, &formats));
    ASSERT_EQ(S_OK, data->EnumFormatEtc(DATADIR_GET, &formats));
    FORMATETC offered[3] = {};
    ULONG count = 0;
    EXPECT_EQ(S_FALSE, formats->Next(3, offered, &count));
    EXPECT_EQ(2U, count);
}

TEST_F(InterfaceTest, SinksHearOfChangesAndOfTheEnd) {
    MockSink sink;
    const auto object = As<IOleObject>(control.Get(), IID_IOleObject);
    DWORD connection = 0;
    ASSERT_EQ(S_OK, object->Advise(&sink, &connection));
    ASSERT_EQ(S_OK, View()->SetAdvise(DVASPECT_CONTENT, 0, &sink));
    SIZEL size = {4000, 3000};
    EXPECT_EQ(S_OK, object->SetExtent(DVASPECT_CONTENT, &size));
    EXPECT_EQ(std::vector<std::string>{"OnViewChange"}, sink.calls);
    EXPECT_EQ(S_OK, object->Close(OLECLOSE_NOSAVE));
    EXPECT_EQ("OnClose", sink.calls.back());
    EXPECT_EQ(S_OK, object->Unadvise(connection));
    EXPECT_EQ(OLE_E_NOCONNECTION, object->Unadvise(connection));
    EXPECT_EQ(S_OK, View()->SetAdvise(DVASPECT_CONTENT, 0, nullptr));
    EXPECT_EQ(1, sink.References());
}

TEST_F(InterfaceTest, OffersItsPropertiesAsAVerb) {
    ComPtr<IEnumOLEVERB> verbs;
    ASSERT_EQ(S_OK, As<IOleObject>(control.Get(), IID_IOleObject)->EnumVerbs(&verbs));
    OLEVERB verb = {};
    ASSERT_EQ(S_OK, verbs->Next(1, &verb, nullptr));
    EXPECT_EQ(1, verb.lVerb);
    EXPECT_STREQ(L"&Properties", verb.lpszVerbName);
    CoTaskMemFree(verb.lpszVerbName);
    EXPECT_EQ(S_FALSE, verbs->Next(1, &verb, nullptr));
}

TEST_F(InterfaceTest, ViewIsOpaqueAndHitInsideItsBounds) {
    const auto view = As<IViewObjectEx>(control.Get(), IID_IViewObjectEx);
    DWORD status = 0;
    EXPECT_EQ(S_OK, view->GetViewStatus(&status));
    EXPECT_EQ(static_cast<DWORD>(VIEWSTATUS_OPAQUE), status);
    const RECT bounds = {10, 10, 50, 50};
    DWORD hit = 0;
    EXPECT_EQ(S_OK, view->QueryHitPoint(DVASPECT_CONTENT, &bounds, {20, 20}, 0, &hit));
    EXPECT_EQ(static_cast<DWORD>(HITRESULT_HIT), hit);
    EXPECT_EQ(S_OK, view->QueryHitPoint(DVASPECT_CONTENT, &bounds, {60, 20}, 0, &hit));
    EXPECT_EQ(static_cast<DWORD>(HITRESULT_OUTSIDE), hit);
    EXPECT_EQ(E_NOTIMPL, view->Freeze(DVASPECT_CONTENT, -1, nullptr, &hit));
}

TEST_F(InterfaceTest, QuickActivationConnectsAllAtOnceAndTheControlWorks) {
    MockSink events(kEventInterface);
    MockSink notes;
    auto quick = As<IQuickActivate>(control.Get(), IID_IQuickActivate);
    QACONTAINER given = {};
    given.cbSize = sizeof given;
    given.pClientSite = &container;
    given.pUnkEventSink = static_cast<IDispatch*>(&events);
    given.pPropertyNotifySink = &notes;
    QACONTROL answered = {};
    answered.cbSize = sizeof answered;
    ASSERT_EQ(S_OK, quick->QuickActivate(&given, &answered));
    EXPECT_EQ(0x20191U, answered.dwMiscStatus);
    EXPECT_NE(0U, answered.dwEventCookie);
    EXPECT_NE(0U, answered.dwPropNotifyCookie);
    SIZEL size = {5000, 6000};
    EXPECT_EQ(S_OK, quick->SetContentExtent(&size));
    size = {};
    EXPECT_EQ(S_OK, quick->GetContentExtent(&size));
    EXPECT_EQ(6000, size.cy);
    EXPECT_EQ(S_OK, As<IPersistStreamInit>(control.Get(), IID_IPersistStreamInit)->InitNew());
    EXPECT_EQ(S_OK, Activate());
    EXPECT_TRUE(Dialog());
    container.Remove();
    quick.Reset();
    control.Reset();
    EXPECT_EQ(1, events.References());
    EXPECT_EQ(1, notes.References());
}

TEST_F(InterfaceTest, PublishesItsKeyAndTakesWhatContainersReport) {
    const auto part = As<IOleControl>(control.Get(), IID_IOleControl);
    CONTROLINFO info = {};
    info.cb = sizeof info;
    EXPECT_EQ(S_OK, part->GetControlInfo(&info));
    EXPECT_TRUE(info.hAccel);
    EXPECT_EQ(2, info.cAccel) << "Alt+S in both cases";
    EXPECT_EQ(0U, info.dwFlags);
    EXPECT_EQ(E_POINTER, part->GetControlInfo(nullptr));
    EXPECT_EQ(S_OK, part->FreezeEvents(TRUE));
    EXPECT_EQ(S_OK, part->FreezeEvents(FALSE));
    EXPECT_EQ(S_OK, part->FreezeEvents(FALSE)) << "once too often";
    EXPECT_EQ(S_OK, As<IOleObject>(control.Get(), IID_IOleObject)->SetHostNames(L"Host", nullptr));
}
