// What containers seldom ask: enumerators as objects of their own, data in other forms, and the members that
// a control declines.
#include "EmbeddedControl.h"

namespace {

using RareCallTest = EmbeddedControlTest;

FORMATETC PictureFormat() {
    return {CF_ENHMETAFILE, nullptr, DVASPECT_CONTENT, -1, TYMED_ENHMF};
}

} // namespace

TEST_F(RareCallTest, AnEnumeratorHasOneIdentity) {
    ComPtr<IEnumFORMATETC> formats;
    ASSERT_EQ(S_OK, As<IDataObject>(control.Get(), IID_IDataObject)->EnumFormatEtc(DATADIR_GET, &formats));
    const auto identity = As<IUnknown>(formats.Get(), IID_IUnknown);
    const auto again = As<IEnumFORMATETC>(identity.Get(), IID_IEnumFORMATETC);
    ASSERT_TRUE(again);
    EXPECT_EQ(identity.Get(), As<IUnknown>(again.Get(), IID_IUnknown).Get());
    EXPECT_FALSE((As<IDispatch>(formats.Get(), IID_IDispatch)));
    EXPECT_EQ(E_POINTER, formats->QueryInterface(IID_IUnknown, nullptr));
}

TEST_F(RareCallTest, ACopyOfAnEnumeratorGoesOnFromTheSamePlace) {
    ComPtr<IEnumFORMATETC> formats;
    ASSERT_EQ(S_OK, As<IDataObject>(control.Get(), IID_IDataObject)->EnumFormatEtc(DATADIR_GET, &formats));
    EXPECT_EQ(S_OK, formats->Skip(1));
    ComPtr<IEnumFORMATETC> copy;
    ASSERT_EQ(S_OK, formats->Clone(&copy));
    FORMATETC given[2] = {};
    EXPECT_EQ(E_POINTER, copy->Next(2, given, nullptr)) << "the count is needed for several";
    EXPECT_EQ(E_POINTER, copy->Next(1, nullptr, nullptr));
    ASSERT_EQ(S_OK, copy->Next(1, given, nullptr));
    EXPECT_EQ(CF_METAFILEPICT, given[0].cfFormat);
    EXPECT_EQ(S_FALSE, copy->Skip(1));
    EXPECT_EQ(S_OK, formats->Reset());
    ULONG count = 0;
    EXPECT_EQ(S_OK, formats->Next(2, given, &count));
    EXPECT_EQ(2U, count);
    EXPECT_EQ(CF_ENHMETAFILE, given[0].cfFormat);
    EXPECT_EQ(E_POINTER, formats->Clone(nullptr));
}

TEST_F(RareCallTest, DataInOtherFormsIsRefused) {
    const auto data = As<IDataObject>(control.Get(), IID_IDataObject);
    FORMATETC wanted = PictureFormat();
    wanted.lindex = 0;
    EXPECT_EQ(DV_E_LINDEX, data->QueryGetData(&wanted));
    wanted = PictureFormat();
    wanted.dwAspect = DVASPECT_ICON;
    EXPECT_EQ(DV_E_DVASPECT, data->QueryGetData(&wanted));
    wanted = PictureFormat();
    wanted.tymed = TYMED_HGLOBAL;
    EXPECT_EQ(DV_E_TYMED, data->QueryGetData(&wanted));
    EXPECT_EQ(E_POINTER, data->QueryGetData(nullptr));
    STGMEDIUM given = {};
    EXPECT_EQ(E_POINTER, data->GetData(nullptr, &given));
    wanted = PictureFormat();
    EXPECT_EQ(DV_E_TYMED, data->GetDataHere(&wanted, &given));
}

TEST_F(RareCallTest, AFormatIsItsOwnCanonicalFormWithoutADevice) {
    const auto data = As<IDataObject>(control.Get(), IID_IDataObject);
    DVTARGETDEVICE device = {};
    FORMATETC wanted = PictureFormat();
    wanted.ptd = &device;
    FORMATETC canonical = {};
    EXPECT_EQ(DATA_S_SAMEFORMATETC, data->GetCanonicalFormatEtc(&wanted, &canonical));
    EXPECT_EQ(CF_ENHMETAFILE, canonical.cfFormat);
    EXPECT_EQ(nullptr, canonical.ptd);
    EXPECT_EQ(E_POINTER, data->GetCanonicalFormatEtc(&wanted, nullptr));
}

TEST_F(RareCallTest, SinksAreListed) {
    MockSink sink;
    const auto object = As<IOleObject>(control.Get(), IID_IOleObject);
    const auto data = As<IDataObject>(control.Get(), IID_IDataObject);
    FORMATETC format = PictureFormat();
    DWORD ofObject = 0;
    DWORD ofData = 0;
    ASSERT_EQ(S_OK, object->Advise(&sink, &ofObject));
    ASSERT_EQ(S_OK, data->DAdvise(&format, 0, &sink, &ofData));
    ComPtr<IEnumSTATDATA> listed[2];
    ASSERT_EQ(S_OK, object->EnumAdvise(&listed[0]));
    ASSERT_EQ(S_OK, data->EnumDAdvise(&listed[1]));
    for (const auto& [sinks, connection] : {std::pair(listed[0], ofObject), std::pair(listed[1], ofData)}) {
        STATDATA one = {};
        ASSERT_EQ(S_OK, sinks->Next(1, &one, nullptr));
        EXPECT_EQ(connection, one.dwConnection);
        one.pAdvSink->Release();
        EXPECT_EQ(S_FALSE, sinks->Next(1, &one, nullptr));
    }
    EXPECT_EQ(S_OK, object->Unadvise(ofObject));
    EXPECT_EQ(S_OK, data->DUnadvise(ofData));
    EXPECT_EQ(E_POINTER, object->Advise(nullptr, &ofObject));
    EXPECT_EQ(E_POINTER, data->DAdvise(&format, 0, nullptr, &ofData));
}

TEST_F(RareCallTest, WhatTheControlDoesNotOfferIsDeclined) {
    const auto object = As<IOleObject>(control.Get(), IID_IOleObject);
    ComPtr<IDataObject> clipboard;
    EXPECT_EQ(E_NOTIMPL, object->GetClipboardData(0, &clipboard));
    EXPECT_EQ(E_POINTER, object->GetMiscStatus(DVASPECT_CONTENT, nullptr));
    DWORD status = 1;
    EXPECT_EQ(S_OK, object->GetMiscStatus(DVASPECT_ICON, &status));
    EXPECT_EQ(0U, status);
    EXPECT_EQ(OLE_E_NOCONNECTION, View()->Unfreeze(1));
    EXPECT_EQ(E_NOTIMPL,
              As<IOleInPlaceObject>(control.Get(), IID_IOleInPlaceObject)->ContextSensitiveHelp(TRUE));
}
