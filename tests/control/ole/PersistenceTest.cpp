// The control's state in streams, storages and memory.
#include "MockContainer.h"
#include "PropertyBag.h"
#include "SavedControl.h"

namespace {

using PersistenceTest = SavedControlTest;

/// An empty storage in a file that goes with it.
ComPtr<IStorage> Storage() {
    ComPtr<IStorage> storage;
    EXPECT_EQ(S_OK, StgCreateDocfile(
                        nullptr, STGM_READWRITE | STGM_SHARE_EXCLUSIVE | STGM_CREATE | STGM_DELETEONRELEASE,
                        0, &storage));
    return storage;
}

ComPtr<IStream> Stream(const std::vector<BYTE>& bytes = {}) {
    ComPtr<IStream> stream;
    CreateStreamOnHGlobal(nullptr, TRUE, &stream);
    stream->Write(bytes.data(), static_cast<ULONG>(bytes.size()), nullptr);
    stream->Seek({}, STREAM_SEEK_SET, nullptr);
    return stream;
}

} // namespace

TEST_F(PersistenceTest, StreamRoundTrip) {
    const auto from = As<IPersistStreamInit>(saved.Get(), IID_IPersistStreamInit);
    const auto stream = Stream();
    ULARGE_INTEGER size = {};
    EXPECT_EQ(S_OK, from->GetSizeMax(&size));
    ASSERT_EQ(S_OK, from->Save(stream.Get(), TRUE));
    EXPECT_EQ(S_FALSE, from->IsDirty());
    STATSTG written = {};
    stream->Stat(&written, STATFLAG_NONAME);
    EXPECT_EQ(size.QuadPart, written.cbSize.QuadPart);
    stream->Seek({}, STREAM_SEEK_SET, nullptr);
    const auto control = CreateControl();
    ASSERT_EQ(S_OK, As<IPersistStreamInit>(control.Get(), IID_IPersistStreamInit)->Load(stream.Get()));
    ExpectSaved(control.Get());
    EXPECT_EQ(E_POINTER, from->Load(nullptr));
    EXPECT_EQ(E_POINTER, from->Save(nullptr, TRUE));
}

TEST_F(PersistenceTest, StorageRoundTrip) {
    const auto storage = Storage();
    const auto from = As<IPersistStorage>(saved.Get(), IID_IPersistStorage);
    ASSERT_EQ(S_OK, from->Save(storage.Get(), TRUE));
    EXPECT_EQ(S_OK, from->SaveCompleted(nullptr));
    EXPECT_EQ(S_OK, from->HandsOffStorage());
    CLSID clsid = {};
    EXPECT_EQ(S_OK, ReadClassStg(storage.Get(), &clsid));
    EXPECT_EQ(kControlClass, clsid);
    const auto control = CreateControl();
    ASSERT_EQ(S_OK, As<IPersistStorage>(control.Get(), IID_IPersistStorage)->Load(storage.Get()));
    ExpectSaved(control.Get());
    EXPECT_EQ(CO_E_ALREADYINITIALIZED,
              As<IPersistStorage>(control.Get(), IID_IPersistStorage)->Load(storage.Get()));
}

TEST_F(PersistenceTest, ACopySavedElsewhereLeavesTheChangesUnsaved) {
    const auto storage = Storage();
    const auto persist = As<IPersistStorage>(saved.Get(), IID_IPersistStorage);
    MockSink sink;
    DWORD connection = 0;
    ASSERT_EQ(S_OK, As<IOleObject>(saved.Get(), IID_IOleObject)->Advise(&sink, &connection));
    ASSERT_EQ(S_OK, persist->IsDirty());
    ASSERT_EQ(S_OK, persist->Save(storage.Get(), FALSE));
    EXPECT_EQ(S_OK, persist->SaveCompleted(nullptr));
    EXPECT_EQ(S_OK, persist->IsDirty()) << "a copy";
    EXPECT_TRUE(sink.calls.empty());
    EXPECT_EQ(S_OK, persist->SaveCompleted(storage.Get()));
    EXPECT_EQ(S_OK, persist->IsDirty()) << "completed already";

    ASSERT_EQ(S_OK, persist->Save(storage.Get(), FALSE));
    EXPECT_EQ(S_OK, persist->SaveCompleted(storage.Get()));
    EXPECT_EQ(S_FALSE, persist->IsDirty()) << "under another name, which the container keeps";
    EXPECT_EQ(std::vector<std::string>{"OnSave"}, sink.calls);
    ASSERT_EQ(S_OK, persist->Save(storage.Get(), TRUE));
    EXPECT_EQ(S_OK, persist->SaveCompleted(nullptr));
    EXPECT_EQ(std::vector<std::string>(2, "OnSave"), sink.calls) << "the same storage";
    EXPECT_EQ(S_OK, As<IOleObject>(saved.Get(), IID_IOleObject)->Unadvise(connection));
}

TEST_F(PersistenceTest, ANewSizeIsAChange) {
    const auto persist = As<IPersistStreamInit>(saved.Get(), IID_IPersistStreamInit);
    const auto object = As<IOleObject>(saved.Get(), IID_IOleObject);
    ASSERT_EQ(S_OK, persist->Save(Stream().Get(), TRUE));
    ASSERT_EQ(S_FALSE, persist->IsDirty());
    SIZEL extent = kExtent;
    ASSERT_EQ(S_OK, object->SetExtent(DVASPECT_CONTENT, &extent));
    EXPECT_EQ(S_FALSE, persist->IsDirty()) << "the size that it has";
    ++extent.cy;
    ASSERT_EQ(S_OK, object->SetExtent(DVASPECT_CONTENT, &extent));
    EXPECT_EQ(S_OK, persist->IsDirty());
}

TEST_F(PersistenceTest, CanBeInitialisedOrLoadedAfterALoadThatFailed) {
    const auto state = Stream(State());
    for (const bool initialise : {true, false}) {
        const auto control = CreateControl();
        const auto persist = As<IPersistStreamInit>(control.Get(), IID_IPersistStreamInit);
        ASSERT_TRUE(FAILED(persist->Load(Stream().Get())));
        EXPECT_EQ(S_OK, initialise ? persist->InitNew() : persist->Load(state.Get()));
        EXPECT_EQ(!initialise, Extent(control.Get()).cx == kExtent.cx);
        const auto damaged = CreateControl();
        const auto storage = As<IPersistStorage>(damaged.Get(), IID_IPersistStorage);
        ASSERT_EQ(STG_E_FILENOTFOUND, storage->Load(Storage().Get()));
        EXPECT_EQ(S_OK, storage->InitNew(Storage().Get()));
    }
}

TEST_F(PersistenceTest, StorageWithoutTheStateIsRefused) {
    const auto storage = Storage();
    EXPECT_EQ(STG_E_FILENOTFOUND, As<IPersistStorage>(saved.Get(), IID_IPersistStorage)->Load(storage.Get()));
}

TEST_F(PersistenceTest, MemoryRoundTrip) {
    const std::vector<BYTE> bytes = State();
    const auto control = CreateControl();
    ASSERT_EQ(S_OK, Load(control.Get(), bytes));
    ExpectSaved(control.Get());
    std::vector<BYTE> small(bytes.size() - 1);
    EXPECT_EQ(STG_E_MEDIUMFULL, As<IPersistMemory>(control.Get(), IID_IPersistMemory)
                                    ->Save(small.data(), TRUE, static_cast<ULONG>(small.size())));
}

TEST_F(PersistenceTest, StateOfANewerVersionOrOfNoneIsRefused) {
    std::vector<BYTE> bytes = State();
    ASSERT_GE(bytes.size(), sizeof(DWORD));
    DWORD version = 0;
    CopyMemory(&version, bytes.data(), sizeof version);
    EXPECT_EQ(0x10000U, version) << "major 1, minor 0";
    for (const DWORD other : {0U, 0x10001U, 0x20000U, 0xffffffffU}) {
        CopyMemory(bytes.data(), &other, sizeof other);
        const auto control = CreateControl();
        EXPECT_TRUE(FAILED(Load(control.Get(), bytes))) << other;
        EXPECT_NE(kExtent.cx, Extent(control.Get()).cx);
        EXPECT_TRUE(
            FAILED(As<IPersistStreamInit>(control.Get(), IID_IPersistStreamInit)->Load(Stream(bytes).Get())));
        PropertyBag bag;
        Value number(static_cast<LONG>(other));
        bag.Write(L"_Version", &number.Get());
        EXPECT_TRUE(
            FAILED(As<IPersistPropertyBag>(control.Get(), IID_IPersistPropertyBag)->Load(&bag, nullptr)));
    }
}

TEST_F(PersistenceTest, StorageWithStateOfANewerVersionIsRefused) {
    std::vector<BYTE> bytes = State();
    ++bytes[0]; // of the minor version
    const auto storage = Storage();
    ASSERT_EQ(S_OK, As<IPersistStorage>(saved.Get(), IID_IPersistStorage)->Save(storage.Get(), FALSE));
    ComPtr<IEnumSTATSTG> elements;
    ASSERT_EQ(S_OK, storage->EnumElements(0, nullptr, 0, &elements));
    STATSTG element = {};
    ComPtr<IStream> stream;
    while (elements->Next(1, &element, nullptr) == S_OK) {
        if (element.cbSize.QuadPart == bytes.size()) {
            EXPECT_EQ(S_OK, storage->OpenStream(element.pwcsName, nullptr,
                                                STGM_READWRITE | STGM_SHARE_EXCLUSIVE, 0, &stream));
        }
        CoTaskMemFree(element.pwcsName);
    }
    ASSERT_TRUE(stream);
    ASSERT_EQ(S_OK, stream->Write(bytes.data(), static_cast<ULONG>(bytes.size()), nullptr));
    stream.Reset();
    const auto control = CreateControl();
    EXPECT_TRUE(FAILED(As<IPersistStorage>(control.Get(), IID_IPersistStorage)->Load(storage.Get())));
    EXPECT_NE(kExtent.cx, Extent(control.Get()).cx);
}

TEST_F(PersistenceTest, CutOffStateIsRefusedAtEveryLength) {
    const std::vector<BYTE> bytes = State();
    for (size_t length = 0; length < bytes.size(); ++length) {
        const auto control = CreateControl();
        const SIZEL initial = Extent(control.Get());
        EXPECT_TRUE(FAILED(Load(control.Get(), bytes, length))) << length;
        EXPECT_EQ(initial.cx, Extent(control.Get()).cx);
        EXPECT_EQ(initial.cy, Extent(control.Get()).cy);
    }
}

TEST_F(PersistenceTest, StateOfAnOlderVersionIsLoaded) {
    std::vector<BYTE> bytes = State();
    const DWORD older = 0x9; // major 0, minor 9
    CopyMemory(bytes.data(), &older, sizeof older);
    const auto control = CreateControl();
    EXPECT_EQ(S_OK, Load(control.Get(), bytes));
    ExpectSaved(control.Get());
}

TEST_F(PersistenceTest, TheParameterIsNotPartOfTheState) {
    Value text(L"Q:\\somewhere");
    Invoke(Automation(saved.Get()).Get(), kInputParameter, DISPATCH_PROPERTYPUT, {text.Get()});
    const std::vector<BYTE> bytes = State();
    const auto control = CreateControl();
    ASSERT_EQ(S_OK, Load(control.Get(), bytes));
    EXPECT_EQ(L"", InputParameter(Automation(control.Get()).Get()));
    EXPECT_EQ(S_OK, As<IPersistMemory>(saved.Get(), IID_IPersistMemory)->IsDirty())
        << "saved without clearing";
}
