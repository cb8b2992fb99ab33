// The fixture of the tests that save and load the control's state.
#pragma once

#include "ControlObject.h"

#include <algorithm>
#include <vector>

inline constexpr SIZEL kExtent = {5432, 6543};

/// A control whose state differs from a new one's.
class SavedControlTest : public ControlObjectTest {
protected:
    SavedControlTest() : saved(CreateControl()) {
        SIZEL extent = kExtent;
        As<IPersistStreamInit>(saved.Get(), IID_IPersistStreamInit)->InitNew();
        As<IOleObject>(saved.Get(), IID_IOleObject)->SetExtent(DVASPECT_CONTENT, &extent);
    }

    void TearDown() override {
        saved.Reset();
        ControlObjectTest::TearDown();
    }

    static SIZEL Extent(IUnknown* control) {
        SIZEL extent = {};
        As<IOleObject>(control, IID_IOleObject)->GetExtent(DVASPECT_CONTENT, &extent);
        return extent;
    }

    static void ExpectSaved(IUnknown* control) {
        EXPECT_EQ(kExtent.cx, Extent(control).cx);
        EXPECT_EQ(kExtent.cy, Extent(control).cy);
    }

    /// The state as bytes.
    std::vector<BYTE> State() {
        const auto memory = As<IPersistMemory>(saved.Get(), IID_IPersistMemory);
        ULONG size = 0;
        EXPECT_EQ(S_OK, memory->GetSizeMax(&size));
        std::vector<BYTE> bytes(size);
        EXPECT_EQ(S_OK, memory->Save(bytes.data(), FALSE, size));
        return bytes;
    }

    static HRESULT Load(IUnknown* control, const std::vector<BYTE>& bytes, size_t length) {
        BYTE buffer[64] = {};
        std::copy_n(bytes.begin(), length, buffer);
        return As<IPersistMemory>(control, IID_IPersistMemory)->Load(buffer, static_cast<ULONG>(length));
    }
    static HRESULT Load(IUnknown* control, const std::vector<BYTE>& bytes) {
        return Load(control, bytes, bytes.size());
    }

    ComPtr<IUnknown> saved;
};
