#include "OleTestControl.h"
#include "PropertyBag.h"

namespace {

class ControlPersistTest : public OleTest {
protected:
    /// A control that differs from a new one in everything persistent.
    static ComPtr<IUnknown> Changed() {
        ComPtr<IUnknown> control = CreateControl();
        CTestControl::last->count = -7;
        SIZEL extent = {1000, 2000};
        control.As<IOleObject>(IID_IOleObject)->SetExtent(DVASPECT_CONTENT, &extent);
        CTestControl::last->SetModifiedFlag();
        return control;
    }
    static void ExpectChanged(const ComPtr<IUnknown>& control) {
        EXPECT_EQ(-7, CTestControl::last->count);
        SIZEL extent{};
        control.As<IOleObject>(IID_IOleObject)->GetExtent(DVASPECT_CONTENT, &extent);
        EXPECT_EQ(1000, extent.cx);
        EXPECT_EQ(2000, extent.cy);
        EXPECT_FALSE(CTestControl::last->IsModified());
    }
    static void ExpectDefaults() { EXPECT_EQ(5, CTestControl::last->count); }
    static ComPtr<IPersistStreamInit> Stream(const ComPtr<IUnknown>& control) {
        return control.As<IPersistStreamInit>(IID_IPersistStreamInit);
    }
    static ComPtr<IStream> Memory() {
        ComPtr<IStream> stream;
        ::CreateStreamOnHGlobal(nullptr, TRUE, stream.Receive());
        return stream;
    }
    static void Rewind(const ComPtr<IStream>& stream) { stream->Seek({}, STREAM_SEEK_SET, nullptr); }
};

TEST_F(ControlPersistTest, StreamKeepsEverything) {
    const ComPtr<IStream> stream = Memory();
    {
        const ComPtr<IUnknown> control = Changed();
        EXPECT_EQ(S_OK, Stream(control)->IsDirty());
        ASSERT_EQ(S_OK, Stream(control)->Save(stream.Get(), FALSE));
        EXPECT_EQ(S_OK, Stream(control)->IsDirty());
        ULARGE_INTEGER size{};
        EXPECT_EQ(S_OK, Stream(control)->GetSizeMax(&size));
        ULARGE_INTEGER written{};
        stream->Seek({}, STREAM_SEEK_CUR, &written);
        EXPECT_EQ(written.QuadPart, size.QuadPart);
        Rewind(stream);
        ASSERT_EQ(S_OK, Stream(control)->Save(stream.Get(), TRUE));
        EXPECT_EQ(S_FALSE, Stream(control)->IsDirty());
    }
    Rewind(stream);
    const ComPtr<IUnknown> control = CreateControl();
    ASSERT_EQ(S_OK, Stream(control)->Load(stream.Get()));
    ExpectChanged(control);
    EXPECT_EQ(E_UNEXPECTED, Stream(control)->InitNew()) << "after a load";
}

TEST(PropExchange, AResetTakesWholeNumbersWithADefaultAndItsOwnVersion) {
    framework::OleResetExchange reset;
    long number = 1;
    const long standard = 2;
    EXPECT_FALSE(reset.ExchangeProp(L"Number", VT_R8, &number, &standard));
    EXPECT_FALSE(reset.ExchangeProp(L"Number", VT_I4, &number, nullptr));
    EXPECT_EQ(1, number);
    EXPECT_TRUE(reset.ExchangeProp(L"Number", VT_I4, &number, &standard));
    EXPECT_EQ(2, number);
    DWORD loaded = 0;
    EXPECT_TRUE(reset.ExchangeVersion(loaded, 0x20001, FALSE));
    EXPECT_EQ(0x20001U, loaded);
    EXPECT_TRUE(reset.IsLoading());
    EXPECT_FALSE(reset.HasFailed());
}

TEST(PropExchange, ABagTakesWholeNumbersUntilSomethingFails) {
    PropertyBag bag;
    framework::OleBagExchange save(bag, nullptr, FALSE, true);
    long number = 7;
    EXPECT_TRUE(save.ExchangeProp(L"Number", VT_I4, &number, nullptr));
    EXPECT_EQ(7, bag.values[L"Number"].lVal);
    EXPECT_FALSE(save.ExchangeProp(L"Other", VT_R8, &number, nullptr));
    EXPECT_TRUE(save.HasFailed());
    EXPECT_FALSE(save.ExchangeProp(L"Third", VT_I4, &number, nullptr));
    EXPECT_EQ(0U, bag.values.count(L"Other") + bag.values.count(L"Third"));
}

TEST_F(ControlPersistTest, MemoryKeepsEverything) {
    std::vector<BYTE> bytes;
    {
        const ComPtr<IUnknown> control = Changed();
        const ComPtr<IPersistMemory> memory = control.As<IPersistMemory>(IID_IPersistMemory);
        ULONG size = 0;
        ASSERT_EQ(S_OK, memory->GetSizeMax(&size));
        bytes.resize(size);
        EXPECT_EQ(STG_E_MEDIUMFULL, memory->Save(bytes.data(), TRUE, size - 1));
        EXPECT_EQ(S_OK, memory->IsDirty());
        ASSERT_EQ(S_OK, memory->Save(bytes.data(), TRUE, size));
        EXPECT_EQ(S_FALSE, memory->IsDirty());
    }
    const ComPtr<IUnknown> control = CreateControl();
    const ComPtr<IPersistMemory> memory = control.As<IPersistMemory>(IID_IPersistMemory);
    EXPECT_EQ(S_OK, memory->InitNew());
    ExpectDefaults();
    ASSERT_EQ(S_OK, memory->Load(bytes.data(), static_cast<ULONG>(bytes.size())));
    ExpectChanged(control);
    EXPECT_EQ(E_UNEXPECTED, memory->InitNew()) << "after a load";
}

TEST_F(ControlPersistTest, StorageKeepsEverything) {
    ComPtr<ILockBytes> bytes;
    ComPtr<IStorage> storage;
    ASSERT_EQ(S_OK, ::CreateILockBytesOnHGlobal(nullptr, TRUE, bytes.Receive()));
    ASSERT_EQ(S_OK,
              ::StgCreateDocfileOnILockBytes(bytes.Get(), STGM_CREATE | STGM_READWRITE | STGM_SHARE_EXCLUSIVE,
                                             0, storage.Receive()));
    {
        const ComPtr<IUnknown> control = Changed();
        const ComPtr<IPersistStorage> persist = control.As<IPersistStorage>(IID_IPersistStorage);
        ASSERT_EQ(S_OK, persist->Save(storage.Get(), TRUE));
        EXPECT_EQ(S_OK, persist->IsDirty()) << "until the container is done";
        EXPECT_EQ(S_OK, persist->SaveCompleted(nullptr));
        EXPECT_EQ(S_FALSE, persist->IsDirty());
        EXPECT_EQ(S_OK, persist->HandsOffStorage());
    }
    CLSID clsid{};
    EXPECT_EQ(S_OK, ::ReadClassStg(storage.Get(), &clsid));
    EXPECT_EQ(CTestControl::guid, clsid);
    const ComPtr<IUnknown> control = CreateControl();
    const ComPtr<IPersistStorage> persist = control.As<IPersistStorage>(IID_IPersistStorage);
    ASSERT_EQ(S_OK, persist->Load(storage.Get()));
    ExpectChanged(control);
    EXPECT_EQ(CO_E_ALREADYINITIALIZED, persist->Load(storage.Get()));
    EXPECT_EQ(CO_E_ALREADYINITIALIZED, persist->InitNew(storage.Get()));
}

TEST_F(ControlPersistTest, BagKeepsEverythingAndLeavesDefaultsOut) {
    PropertyBag bag;
    {
        const ComPtr<IUnknown> control = Changed();
        CTestControl::last->count = 5;
        ASSERT_EQ(S_OK, control.As<IPersistPropertyBag>(IID_IPersistPropertyBag)->Save(&bag, TRUE, FALSE));
        EXPECT_FALSE(CTestControl::last->IsModified());
        EXPECT_EQ(0U, bag.values.count(L"Count"));
        CTestControl::last->count = -7;
        ASSERT_EQ(S_OK, control.As<IPersistPropertyBag>(IID_IPersistPropertyBag)->Save(&bag, TRUE, TRUE));
    }
    EXPECT_EQ(0x10000, bag.values[L"_Version"].lVal);
    EXPECT_EQ(1000, bag.values[L"_ExtentX"].lVal);
    const ComPtr<IUnknown> control = CreateControl();
    ASSERT_EQ(S_OK, control.As<IPersistPropertyBag>(IID_IPersistPropertyBag)->Load(&bag, nullptr));
    ExpectChanged(control);
}

TEST_F(ControlPersistTest, WhatABagLeavesOutHasItsDefault) {
    PropertyBag bag;
    bag.values[L"Count"] = VARIANT{};
    bag.values[L"Count"].vt = VT_BSTR; // as pages written by hand pass numbers
    bag.values[L"Count"].bstrVal = ::SysAllocString(L"12");
    const ComPtr<IUnknown> control = Changed();
    ASSERT_EQ(S_OK, control.As<IPersistPropertyBag>(IID_IPersistPropertyBag)->Load(&bag, nullptr));
    EXPECT_EQ(12, CTestControl::last->count);
    SIZEL extent{};
    control.As<IOleObject>(IID_IOleObject)->GetExtent(DVASPECT_CONTENT, &extent);
    EXPECT_EQ(::MulDiv(120, 2540, ::GetDpiForSystem()), extent.cx) << "the initial size";
}

TEST_F(ControlPersistTest, InitNewGivesTheDefaults) {
    const ComPtr<IUnknown> control = Changed();
    ASSERT_EQ(S_OK, Stream(control)->InitNew());
    ExpectDefaults();
    EXPECT_EQ(S_FALSE, Stream(control)->IsDirty());
}

TEST_F(ControlPersistTest, DataOfANewerVersionOrOfNoneIsRefused) {
    for (const DWORD version : {0x00020000U, 0x00010001U, 0U, 0xFFFFFFFFU}) {
        const ComPtr<IStream> stream = Memory();
        {
            const ComPtr<IUnknown> control = Changed();
            ASSERT_EQ(S_OK, Stream(control)->Save(stream.Get(), TRUE));
        }
        Rewind(stream);
        stream->Write(&version, sizeof(version), nullptr);
        Rewind(stream);
        const ComPtr<IUnknown> control = CreateControl();
        EXPECT_EQ(E_FAIL, Stream(control)->Load(stream.Get()));
        ExpectDefaults();
    }
    PropertyBag bag;
    bag.values[L"_Version"].vt = VT_I4;
    bag.values[L"_Version"].lVal = 0x20000;
    const ComPtr<IUnknown> control = CreateControl();
    EXPECT_EQ(E_FAIL, control.As<IPersistPropertyBag>(IID_IPersistPropertyBag)->Load(&bag, nullptr));
    ExpectDefaults();
}

TEST_F(ControlPersistTest, DataOfAnOlderVersionIsLoaded) {
    for (const DWORD version : {0x00000009U, 1U, 0x0000FFFFU}) {
        const ComPtr<IStream> stream = Memory();
        {
            const ComPtr<IUnknown> control = Changed();
            ASSERT_EQ(S_OK, Stream(control)->Save(stream.Get(), TRUE));
        }
        Rewind(stream);
        stream->Write(&version, sizeof(version), nullptr);
        Rewind(stream);
        const ComPtr<IUnknown> control = CreateControl();
        EXPECT_EQ(S_OK, Stream(control)->Load(stream.Get())) << version;
        ExpectChanged(control);
    }
}

TEST_F(ControlPersistTest, DamagedDataIsRefusedAtEveryLength) {
    const ComPtr<IStream> whole = Memory();
    {
        const ComPtr<IUnknown> control = Changed();
        ASSERT_EQ(S_OK, Stream(control)->Save(whole.Get(), TRUE));
    }
    BYTE bytes[256]{};
    ULONG size = 0;
    Rewind(whole);
    whole->Read(bytes, sizeof(bytes), &size);
    ASSERT_LT(size, sizeof(bytes));
    for (ULONG cut = 0; cut < size; ++cut) {
        const ComPtr<IUnknown> control = CreateControl();
        EXPECT_EQ(E_FAIL, control.As<IPersistMemory>(IID_IPersistMemory)->Load(bytes, cut))
            << cut << " bytes";
        ExpectDefaults();
    }
}

TEST_F(ControlPersistTest, NothingToPersistToIsRefused) {
    const ComPtr<IUnknown> control = CreateControl();
    EXPECT_EQ(E_POINTER, Stream(control)->Load(nullptr));
    EXPECT_EQ(E_POINTER, Stream(control)->Save(nullptr, TRUE));
    EXPECT_EQ(E_POINTER, Stream(control)->GetClassID(nullptr));
    EXPECT_EQ(E_POINTER, control.As<IPersistMemory>(IID_IPersistMemory)->Load(nullptr, 10));
    EXPECT_EQ(E_POINTER, control.As<IPersistMemory>(IID_IPersistMemory)->Save(nullptr, TRUE, 10));
    EXPECT_EQ(E_POINTER, control.As<IPersistPropertyBag>(IID_IPersistPropertyBag)->Save(nullptr, TRUE, TRUE));
    EXPECT_EQ(E_POINTER, control.As<IPersistStorage>(IID_IPersistStorage)->InitNew(nullptr));
    EXPECT_EQ(E_POINTER, control.As<IPersistPropertyBag>(IID_IPersistPropertyBag)->Load(nullptr, nullptr));
}

} // namespace
