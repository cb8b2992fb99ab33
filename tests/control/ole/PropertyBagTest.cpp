// The control's state in property bags, as form designers, pages and documents keep it.
#include "PropertyBag.h"
#include "SavedControl.h"

using PropertyBagTest = SavedControlTest;

TEST_F(PropertyBagTest, PropertyBagRoundTrip) {
    PropertyBag bag;
    ASSERT_EQ(S_OK, As<IPersistPropertyBag>(saved.Get(), IID_IPersistPropertyBag)->Save(&bag, TRUE, TRUE));
    EXPECT_EQ(1U, bag.values.count(L"_Version"));
    const auto control = CreateControl();
    ASSERT_EQ(S_OK, As<IPersistPropertyBag>(control.Get(), IID_IPersistPropertyBag)->Load(&bag, nullptr));
    ExpectSaved(control.Get());
}

TEST_F(PropertyBagTest, EmptyPropertyBagGivesADefaultControl) {
    PropertyBag bag;
    const SIZEL initial = Extent(CreateControl().Get());
    EXPECT_EQ(S_OK, As<IPersistPropertyBag>(saved.Get(), IID_IPersistPropertyBag)->Load(&bag, nullptr));
    EXPECT_EQ(initial.cx, Extent(saved.Get()).cx);
}

TEST_F(PropertyBagTest, BagThatAnswersInTheTypeAskedIsRead) {
    // As a form designer keeps properties: typed values, an error log, only what differs from the default.
    PropertyBag bag;
    const auto persist = As<IPersistPropertyBag>(saved.Get(), IID_IPersistPropertyBag);
    ASSERT_EQ(S_OK, persist->Save(&bag, FALSE, FALSE));
    EXPECT_EQ(S_OK, As<IPersistStreamInit>(saved.Get(), IID_IPersistStreamInit)->IsDirty())
        << "saved without clearing";
    ASSERT_EQ(S_OK, persist->Save(&bag, TRUE, FALSE));
    EXPECT_EQ(S_FALSE, As<IPersistStreamInit>(saved.Get(), IID_IPersistStreamInit)->IsDirty());
    for (const auto& [name, value] : bag.values) {
        EXPECT_EQ(VT_I4, value.vt);
    }
    PropertyBag standard;
    const auto unchanged = CreateControl();
    ASSERT_EQ(S_OK, As<IPersistPropertyBag>(unchanged.Get(), IID_IPersistPropertyBag)->InitNew());
    ASSERT_EQ(
        S_OK,
        As<IPersistPropertyBag>(unchanged.Get(), IID_IPersistPropertyBag)->Save(&standard, TRUE, FALSE));
    EXPECT_EQ(0U, standard.values.count(L"_ExtentX")) << "the default is left out";
    const auto control = CreateControl();
    ASSERT_EQ(S_OK, As<IPersistPropertyBag>(control.Get(), IID_IPersistPropertyBag)->Load(&bag, nullptr));
    ExpectSaved(control.Get());
    EXPECT_EQ((std::vector<VARTYPE>{VT_I4, VT_I4, VT_I4}), bag.asked);
    EXPECT_EQ(E_UNEXPECTED, As<IPersistPropertyBag>(control.Get(), IID_IPersistPropertyBag)->InitNew());
}

TEST_F(PropertyBagTest, BagThatAnswersInTextsOrNonsenseIsRead) {
    // As pages and documents keep properties: everything is text, and people edit it.
    PropertyBag bag;
    const auto write = [&](const wchar_t* name, const std::wstring& text) {
        Value value(text);
        bag.Write(name, &value.Get());
    };
    write(L"_Version", L"65536");
    write(L"_ExtentX", std::to_wstring(kExtent.cx));
    write(L"_ExtentY", std::to_wstring(kExtent.cy));
    const auto control = CreateControl();
    const SIZEL initial = Extent(control.Get());
    const auto persist = As<IPersistPropertyBag>(control.Get(), IID_IPersistPropertyBag);
    ASSERT_EQ(S_OK, persist->Load(&bag, nullptr));
    ExpectSaved(control.Get());
    for (const wchar_t* nonsense : {L"", L"wide", L"99999999999", L"-5"}) {
        write(L"_ExtentX", nonsense);
        EXPECT_EQ(S_OK, persist->Load(&bag, nullptr)) << nonsense;
        EXPECT_EQ(initial.cx, Extent(control.Get()).cx) << nonsense;
    }
}
