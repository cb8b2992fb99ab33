#include "common/ComPtr.h"

#include <gtest/gtest.h>

#include <utility>

using common::Bstr;
using common::ComPtr;
using common::Query;
using common::Variant;

namespace {

/// An object that counts its references and answers IUnknown and IPersist; a failing query leaves its mark.
class Counted final : public IPersist {
public:
    STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
        if (iid != IID_IUnknown && iid != IID_IPersist) {
            *object = this; // as careless objects do, without a reference
            return E_NOINTERFACE;
        }
        *object = static_cast<IPersist*>(this);
        AddRef();
        return S_OK;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return static_cast<ULONG>(++references); }
    STDMETHODIMP_(ULONG) Release() override { return static_cast<ULONG>(--references); }
    STDMETHODIMP GetClassID(CLSID* /*id*/) override { return E_NOTIMPL; }

    int references = 0;
};

} // namespace

TEST(ComPtr, HoldsOneReference) {
    Counted object;
    {
        ComPtr<Counted> first(&object);
        EXPECT_EQ(object.references, 1);
        ComPtr<Counted> second = first.Copy();
        EXPECT_EQ(object.references, 2);
        ComPtr<Counted> third = std::move(second);
        EXPECT_FALSE(second); // NOLINT(bugprone-use-after-move): moved from is null
        EXPECT_EQ(object.references, 2);
        first = std::move(third);
        EXPECT_EQ(object.references, 1);
        EXPECT_EQ(first.Get(), &object);
    }
    EXPECT_EQ(object.references, 0);
}

TEST(ComPtr, AsksForInterfaces) {
    Counted object;
    const ComPtr<Counted> owner(&object);
    EXPECT_TRUE(owner.As<IPersist>(IID_IPersist));
    EXPECT_TRUE(owner.As<IPersist>());
    EXPECT_TRUE(Query<IPersist>(&object, IID_IPersist));
    EXPECT_EQ(object.references, 1);
    EXPECT_FALSE(owner.As<IDispatch>());
    EXPECT_FALSE(Query<IDispatch>(nullptr, IID_IDispatch));
    EXPECT_EQ(object.references, 1) << "what a failing query leaves is not released";
}

TEST(ComPtr, ReceivesAndGivesUpReferences) {
    Counted object;
    ComPtr<IPersist> pointer(&object);
    EXPECT_EQ(S_OK, object.QueryInterface(IID_IPersist, pointer.ReceiveVoid()));
    EXPECT_EQ(object.references, 1) << "the reference before is released first";
    IPersist* const detached = pointer.Detach();
    EXPECT_FALSE(pointer);
    EXPECT_EQ(object.references, 1);
    detached->Release();
    EXPECT_EQ(object.references, 0);
}

TEST(Bstr, OwnsText) {
    EXPECT_EQ(Bstr(static_cast<LPCOLESTR>(nullptr)).Get(), nullptr);
    EXPECT_STREQ(Bstr(L"folder").Get(), L"folder");
    Bstr whole(std::wstring_view(L"a\0b", 3));
    EXPECT_EQ(whole.Length(), 3u);
    const Bstr moved = std::move(whole);
    EXPECT_EQ(moved.Length(), 3u);
    Bstr received(L"before");
    *received.Receive() = SysAllocString(L"after");
    EXPECT_STREQ(received.Get(), L"after");
}

TEST(Variant, OwnsWhatItHolds) {
    Counted object;
    {
        Variant value;
        EXPECT_EQ(value.Get().vt, VT_EMPTY);
        (&value)->vt = VT_UNKNOWN;
        (&value)->punkVal = &object;
        object.AddRef();
        const Variant moved = std::move(value);
        EXPECT_EQ(moved.Get().vt, VT_UNKNOWN);
        EXPECT_EQ(object.references, 1);
    }
    EXPECT_EQ(object.references, 0);
}
