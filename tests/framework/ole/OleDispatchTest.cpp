#include "OleTestControl.h"

#include <OleTest.h>

#include <thread>

namespace {

/// A VARIANT of a type; the caller keeps what it points to.
VARIANT Long(long value) {
    VARIANT variant{};
    variant.vt = VT_I4;
    variant.lVal = value;
    return variant;
}

VARIANT Real(double value) {
    VARIANT variant{};
    variant.vt = VT_R8;
    variant.dblVal = value;
    return variant;
}

VARIANT Text(const common::Bstr& text) {
    VARIANT variant{};
    variant.vt = VT_BSTR;
    variant.bstrVal = text.Get();
    return variant;
}

VARIANT Missing() {
    VARIANT variant{};
    variant.vt = VT_ERROR;
    variant.scode = DISP_E_PARAMNOTFOUND;
    return variant;
}

class OleDispatchTest : public OleTest {
protected:
    void SetUp() override {
        OleTest::SetUp();
        m_control = CreateControl();
        m_dispatch = m_control.As<IDispatch>(IID_IDispatch);
    }
    void TearDown() override {
        m_dispatch.Reset();
        m_control.Reset();
        OleTest::TearDown();
    }

    /// Calls with arguments in the order of the parameters.
    HRESULT Call(DISPID id, std::vector<VARIANT> arguments, WORD flags = DISPATCH_METHOD) {
        std::vector<VARIANT> reversed(arguments.rbegin(), arguments.rend());
        DISPPARAMS params = {reversed.data(), nullptr, static_cast<UINT>(reversed.size()), 0};
        m_wrong = kNone;
        return m_dispatch->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &params, nullptr, nullptr,
                                  &m_wrong);
    }
    HRESULT Put(VARIANT value, DISPID name = DISPID_PROPERTYPUT, WORD flags = DISPATCH_PROPERTYPUT) {
        DISPPARAMS params = {&value, &name, 1, 1};
        m_wrong = kNone;
        return m_dispatch->Invoke(1, IID_NULL, LOCALE_USER_DEFAULT, flags, &params, nullptr, nullptr,
                                  &m_wrong);
    }
    HRESULT Get(common::Variant& value, WORD flags = DISPATCH_PROPERTYGET) {
        DISPPARAMS none{};
        return m_dispatch->Invoke(1, IID_NULL, LOCALE_USER_DEFAULT, flags, &none, &value, nullptr, nullptr);
    }
    static std::wstring Last() {
        return CTestControl::last->log.empty() ? L"" : CTestControl::last->log.back();
    }

    static constexpr UINT kNone = 77;
    UINT m_wrong = kNone;
    ComPtr<IUnknown> m_control;
    ComPtr<IDispatch> m_dispatch;
};

TEST_F(OleDispatchTest, NamesAreFoundWithoutRegardToCaseAndLocale) {
    for (const wchar_t* spelling : {L"Resize", L"RESIZE", L"resize"}) {
        LPOLESTR name = const_cast<LPOLESTR>(spelling);
        DISPID id = 0;
        EXPECT_EQ(S_OK, m_dispatch->GetIDsOfNames(IID_NULL, &name, 1, 0x041F, &id));
        EXPECT_EQ(3, id);
    }
    LPOLESTR unknown = const_cast<LPOLESTR>(L"Resized");
    DISPID id = 0;
    EXPECT_EQ(DISP_E_UNKNOWNNAME, m_dispatch->GetIDsOfNames(IID_NULL, &unknown, 1, 0, &id));
    EXPECT_EQ(DISPID_UNKNOWN, id);
    LPOLESTR null = nullptr;
    EXPECT_EQ(DISP_E_UNKNOWNNAME, m_dispatch->GetIDsOfNames(IID_NULL, &null, 1, 0, &id));
    EXPECT_EQ(DISP_E_UNKNOWNINTERFACE, m_dispatch->GetIDsOfNames(IID_IUnknown, &unknown, 1, 0, &id));
    EXPECT_EQ(E_INVALIDARG, m_dispatch->GetIDsOfNames(IID_NULL, nullptr, 1, 0, &id));
}

TEST_F(OleDispatchTest, ArgumentsAreConvertedToTheParametersTypes) {
    EXPECT_EQ(S_OK, Call(3, {Long(30), Long(40)}));
    EXPECT_EQ(L"30x40", Last());
    VARIANT little{};
    little.vt = VT_I1;
    little.cVal = -5;
    VARIANT shorter{};
    shorter.vt = VT_I2;
    shorter.iVal = 300;
    EXPECT_EQ(S_OK, Call(3, {little, shorter}));
    EXPECT_EQ(L"-5x300", Last());
    const common::Bstr number(L"12");
    EXPECT_EQ(S_OK, Call(3, {Real(7.6), Text(number)}));
    EXPECT_EQ(L"8x12", Last());
    EXPECT_EQ(S_OK, Call(6, {Text(number), Long(3), Long(1)}));
    EXPECT_EQ(L"12,30,yes", Last());
}

TEST_F(OleDispatchTest, ArgumentsByReferenceAreRead) {
    long value = 11;
    VARIANT byReference{};
    byReference.vt = VT_I4 | VT_BYREF;
    byReference.plVal = &value;
    VARIANT inner = Real(22.0);
    VARIANT variant{};
    variant.vt = VT_VARIANT | VT_BYREF;
    variant.pvarVal = &inner;
    EXPECT_EQ(S_OK, Call(3, {byReference, variant}));
    EXPECT_EQ(L"11x22", Last());

    byReference.plVal = nullptr;
    EXPECT_EQ(DISP_E_BADVARTYPE, Call(3, {Long(1), byReference}));
    EXPECT_EQ(0U, m_wrong);
    inner = byReference;
    EXPECT_EQ(DISP_E_BADVARTYPE, Call(3, {variant, Long(1)}));
    EXPECT_EQ(1U, m_wrong);
}

TEST_F(OleDispatchTest, ArgumentsThatDoNotFitAreNamed) {
    const common::Bstr word(L"wide");
    EXPECT_EQ(DISP_E_TYPEMISMATCH, Call(3, {Text(word), Long(1)}));
    EXPECT_EQ(1U, m_wrong) << "the first parameter is the last in the caller's array";
    EXPECT_EQ(DISP_E_TYPEMISMATCH, Call(3, {Long(1), Text(word)}));
    EXPECT_EQ(0U, m_wrong);
    EXPECT_EQ(DISP_E_OVERFLOW, Call(3, {Long(1), Real(1e12)}));
    EXPECT_EQ(DISP_E_PARAMNOTOPTIONAL, Call(3, {Missing(), Long(1)}));
    VARIANT failed = Missing();
    failed.scode = E_FAIL;
    EXPECT_EQ(DISP_E_TYPEMISMATCH, Call(3, {failed, Long(1)}))
        << "an error, but none that stands for nothing";
    VARIANT odd{};
    odd.vt = 0x0FFF;
    EXPECT_TRUE(FAILED(Call(3, {odd, Long(1)})));
    EXPECT_TRUE(CTestControl::last->log.empty()) << "nothing was called";
}

TEST_F(OleDispatchTest, ANumberThatLooksLikeAMissingArgumentIsOne) {
    EXPECT_EQ(S_OK, Call(3, {Long(DISP_E_PARAMNOTFOUND), Long(1)}));
    EXPECT_EQ(L"-2147352572x1", Last());
}

TEST_F(OleDispatchTest, CountsAreExact) {
    EXPECT_EQ(DISP_E_BADPARAMCOUNT, Call(3, {Long(1)}));
    EXPECT_EQ(DISP_E_BADPARAMCOUNT, Call(3, {Long(1), Long(2), Long(3)}));
    EXPECT_EQ(DISP_E_BADPARAMCOUNT, Call(2, {Long(1)}));
    EXPECT_EQ(DISP_E_BADPARAMCOUNT, Call(1, {Long(1)}, DISPATCH_PROPERTYGET));
    DISPPARAMS params = {nullptr, nullptr, 2, 0};
    EXPECT_EQ(E_INVALIDARG,
              m_dispatch->Invoke(3, IID_NULL, 0, DISPATCH_METHOD, &params, nullptr, nullptr, nullptr));
    EXPECT_EQ(E_INVALIDARG,
              m_dispatch->Invoke(3, IID_NULL, 0, DISPATCH_METHOD, nullptr, nullptr, nullptr, nullptr));
    EXPECT_EQ(S_OK, Call(2, {}));
    EXPECT_EQ(L"reset", Last());
}

TEST_F(OleDispatchTest, ArgumentsByNameAreTheParametersPlaces) {
    VARIANT values[] = {Long(1), Long(2)};
    DISPID names[] = {1, 0};
    DISPPARAMS params = {values, names, 2, 2};
    const auto invoke = [&] {
        return m_dispatch->Invoke(3, IID_NULL, 0, DISPATCH_METHOD, &params, nullptr, nullptr, &m_wrong);
    };
    EXPECT_EQ(S_OK, invoke());
    EXPECT_EQ(L"2x1", Last());
    params.cNamedArgs = 1; // the named one is the second parameter, the other comes by position
    EXPECT_EQ(S_OK, invoke());
    EXPECT_EQ(L"2x1", Last());
    names[0] = 7;
    EXPECT_EQ(DISP_E_PARAMNOTFOUND, invoke());
    EXPECT_EQ(0U, m_wrong);
    names[0] = 0;
    EXPECT_EQ(DISP_E_PARAMNOTFOUND, invoke()) << "the same parameter twice";
    params.cNamedArgs = 3;
    EXPECT_EQ(DISP_E_BADPARAMCOUNT, invoke());
}

TEST_F(OleDispatchTest, TextsMayBeNullHugeOrHoldNulls) {
    const common::Bstr name(L"name");
    VARIANT null{};
    null.vt = VT_BSTR;
    EXPECT_EQ(S_OK, Call(4, {null, Text(name)}));
    EXPECT_EQ(L">name", Last());
    const common::Bstr huge(std::wstring(1 << 20, L'x').c_str());
    EXPECT_EQ(S_OK, Call(4, {Text(huge), Text(huge)}));
    EXPECT_EQ((2U << 20) + 1, Last().size());

    VARIANT divided{};
    divided.vt = VT_BSTR;
    divided.bstrVal = ::SysAllocStringLen(L"a\0b", 3);
    EXPECT_EQ(S_OK, Call(4, {divided, Text(name)}));
    EXPECT_EQ(L"a>name", Last()) << "a parameter ends at the null";
    EXPECT_EQ(S_OK, Put(divided));
    common::Variant read;
    ASSERT_EQ(S_OK, Get(read));
    EXPECT_EQ(3U, ::SysStringLen(read.Get().bstrVal)) << "a property keeps it";
    ::VariantClear(&divided);
}

TEST_F(OleDispatchTest, PropertyIsReadAndSetAndNotifiesAfterwards) {
    const common::Bstr text(L"Title");
    EXPECT_EQ(S_OK, Put(Text(text)));
    EXPECT_EQ(L"caption", Last());
    EXPECT_TRUE(CTestControl::last->IsModified());
    for (const WORD flags : {DISPATCH_PROPERTYGET, DISPATCH_PROPERTYGET | DISPATCH_METHOD}) {
        common::Variant read;
        ASSERT_EQ(S_OK, Get(read, flags));
        ASSERT_EQ(VT_BSTR, read.Get().vt);
        EXPECT_STREQ(L"Title", read.Get().bstrVal);
    }
    EXPECT_EQ(S_OK, Put(Long(5)));
    EXPECT_EQ(CString(L"5"), CTestControl::last->caption);
    EXPECT_EQ(S_OK, Put(Text(text), DISPID_PROPERTYPUT, DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF));
    EXPECT_EQ(DISP_E_PARAMNOTOPTIONAL, Put(Text(text), 0)) << "the value has another name";
    EXPECT_EQ(DISP_E_MEMBERNOTFOUND, Call(1, {}, DISPATCH_METHOD)) << "a property is no method";
}

TEST_F(OleDispatchTest, OnlyWhatEnablesItHasADispatchInterface) {
    CWnd plain;
    EXPECT_EQ(nullptr, plain.GetIDispatch(TRUE));
}

TEST_F(OleDispatchTest, UnknownMembersAndInterfacesAreRefused) {
    EXPECT_EQ(DISP_E_MEMBERNOTFOUND, Call(99, {}));
    EXPECT_EQ(DISP_E_MEMBERNOTFOUND, Call(2, {}, DISPATCH_PROPERTYGET)) << "a method is no property";
    DISPPARAMS none{};
    EXPECT_EQ(DISP_E_UNKNOWNINTERFACE,
              m_dispatch->Invoke(2, IID_IUnknown, 0, DISPATCH_METHOD, &none, nullptr, nullptr, nullptr));
}

TEST_F(OleDispatchTest, ResultOfAMethodWithoutOneIsEmpty) {
    DISPPARAMS none{};
    VARIANT result = Long(5);
    EXPECT_EQ(S_OK, m_dispatch->Invoke(2, IID_NULL, 0, DISPATCH_METHOD | DISPATCH_PROPERTYGET, &none, &result,
                                       nullptr, nullptr));
    EXPECT_EQ(VT_EMPTY, result.vt);
}

TEST_F(OleDispatchTest, NothingIsThrownAtTheCaller) {
    EXPECT_EQ(E_OUTOFMEMORY, Call(7, {Long(1)}));
    EXPECT_EQ(E_UNEXPECTED, Call(7, {Long(2)}));
    EXPECT_EQ(E_UNEXPECTED, Call(7, {Long(3)}));
}

TEST_F(OleDispatchTest, CallsFromAnotherThreadAreRefused) {
    HRESULT result = S_OK;
    std::thread([&] { result = Call(2, {}); }).join();
    EXPECT_EQ(RPC_E_WRONG_THREAD, result);
    EXPECT_TRUE(CTestControl::last->log.empty());
}

TEST_F(OleDispatchTest, ByDefaultMembersWaitForInitialisation) {
    CTestControl::needsInitNew = true;
    EXPECT_EQ(E_UNEXPECTED, Call(2, {}));
    ASSERT_EQ(S_OK, m_control.As<IPersistStreamInit>(IID_IPersistStreamInit)->InitNew());
    EXPECT_EQ(S_OK, Call(2, {}));
}

TEST_F(OleDispatchTest, TypeComesFromTheModuleWhenNoLibraryIsRegistered) {
    const PrivateClassesRoot root;
    UINT count = 0;
    ASSERT_EQ(S_OK, m_dispatch->GetTypeInfoCount(&count));
    EXPECT_EQ(1U, count);
    ComPtr<ITypeInfo> info;
    EXPECT_EQ(DISP_E_BADINDEX, m_dispatch->GetTypeInfo(1, 0, info.Receive()));
    ASSERT_EQ(S_OK, m_dispatch->GetTypeInfo(0, 0, info.Receive()));
    TYPEATTR* attributes = nullptr;
    ASSERT_EQ(S_OK, info->GetTypeAttr(&attributes));
    EXPECT_EQ(DIID__DTestControl, attributes->guid);
    info->ReleaseTypeAttr(attributes);

    LPOLESTR names[] = {const_cast<LPOLESTR>(L"Resize"), const_cast<LPOLESTR>(L"height"),
                        const_cast<LPOLESTR>(L"width")};
    DISPID ids[3] = {};
    EXPECT_EQ(S_OK, m_dispatch->GetIDsOfNames(IID_NULL, names, 3, 0, ids)) << "names of parameters";
    EXPECT_EQ(3, ids[0]);
    EXPECT_EQ(1, ids[1]);
    EXPECT_EQ(0, ids[2]);
}

TEST_F(OleDispatchTest, RegisteredLibraryComesFirst) {
    const PrivateClassesRoot root;
    ComPtr<ITypeLib> library;
    ASSERT_TRUE(AfxOleRegisterTypeLib(AfxGetInstanceHandle(), LIBID_OleTestLib));
    EXPECT_EQ(S_OK, framework::LoadObjectTypeLib(LIBID_OleTestLib, 1, 0, 0, library.Receive()));
    EXPECT_TRUE(library);
    library.Reset();
    EXPECT_EQ(TYPE_E_LIBNOTREGISTERED,
              framework::LoadObjectTypeLib(CTestControl::guid, 1, 0, 0, library.Receive()))
        << "neither registered nor the module's";
    EXPECT_FALSE(library);
}

} // namespace
