// Automation by clients that get it wrong: an HRESULT, never a crash.
#include "AutomationClient.h"
#include "PackageBuilder.h"

namespace {

using AutomationTest = AutomationClientTest;

constexpr size_t kLongPath = 32000;

VARIANT Of(VARTYPE type) {
    VARIANT value = {};
    value.vt = type;
    return value;
}

VARIANT Number(VARTYPE type, LONG number) {
    VARIANT value = Of(VT_I4);
    value.lVal = number;
    EXPECT_EQ(S_OK, VariantChangeType(&value, &value, 0, type));
    return value;
}

} // namespace

TEST_F(AutomationTest, EveryMemberHasItsNumberWhateverTheCase) {
    const std::pair<const wchar_t*, DISPID> members[] = {{L"InputParameter", kInputParameter},
                                                         {L"AboutBox", kAboutBox},
                                                         {L"ClearAllData", kClearAllData},
                                                         {L"OnSizeChange", kOnSizeChange},
                                                         {L"LoadFile", kLoadFile},
                                                         {L"Close", kClose},
                                                         {L"loadFILE", kLoadFile}};
    for (const auto& [name, number] : members) {
        std::wstring spelling = name;
        LPOLESTR names[] = {spelling.data()};
        DISPID id = DISPID_UNKNOWN;
        EXPECT_EQ(S_OK, automation->GetIDsOfNames(IID_NULL, names, 1, LOCALE_USER_DEFAULT, &id));
        EXPECT_EQ(number, id);
    }
    std::wstring unknown = L"ParameterLoaded";
    LPOLESTR names[] = {unknown.data()};
    DISPID id = 0;
    EXPECT_EQ(DISP_E_UNKNOWNNAME, automation->GetIDsOfNames(IID_NULL, names, 1, LOCALE_USER_DEFAULT, &id));
    EXPECT_EQ(DISPID_UNKNOWN, id);
}

TEST_F(AutomationTest, ParametersMayBeNamed) {
    wchar_t method[] = L"LoadFile";
    wchar_t folder[] = L"bstrExtractedFolderPath";
    wchar_t file[] = L"bstrMXOVPkgFilePath";
    LPOLESTR names[] = {method, folder, file};
    DISPID ids[3] = {};
    ASSERT_EQ(S_OK, automation->GetIDsOfNames(IID_NULL, names, 3, LOCALE_USER_DEFAULT, ids));
    Value texts[] = {Value(L""), Value(L"Q:\\nowhere\\")};
    VARIANT values[] = {texts[0].Get(), texts[1].Get()};
    DISPID named[] = {ids[2], ids[1]};
    DISPPARAMS parameters = {values, named, 2, 2};
    EXPECT_EQ(S_OK, automation->Invoke(ids[0], IID_NULL, LOCALE_USER_DEFAULT, kMethod, &parameters, nullptr,
                                       nullptr, nullptr));
    named[1] = named[0];
    EXPECT_EQ(DISP_E_PARAMNOTFOUND, automation->Invoke(ids[0], IID_NULL, LOCALE_USER_DEFAULT, kMethod,
                                                       &parameters, nullptr, nullptr, nullptr));
}

TEST_F(AutomationTest, EarlyBoundCallersGoThroughTheTypeLibrary) {
    const auto declaration = Declaration();
    ASSERT_TRUE(declaration);
    Value text(L"Q:\\early");
    DISPID put = DISPID_PROPERTYPUT;
    DISPPARAMS parameters = {&text.Get(), &put, 1, 1};
    EXPECT_EQ(S_OK, declaration->Invoke(automation.Get(), kInputParameter, kPut, &parameters, nullptr,
                                        nullptr, nullptr));
    EXPECT_EQ(L"Q:\\early", InputParameter(automation.Get()));
    DISPPARAMS none = {};
    EXPECT_EQ(S_OK,
              declaration->Invoke(automation.Get(), kAboutBox, kMethod, &none, nullptr, nullptr, nullptr));
}

TEST_F(AutomationTest, WrongCountsAreRefused) {
    for (const DISPID member :
         {Member(kInputParameter), kClearAllData, kOnSizeChange, kLoadFile, kClose, kAboutBox}) {
        for (size_t count = 0; count < 6; ++count) {
            const bool right = member == kOnSizeChange || member == kLoadFile ? count == 2 : count == 0;
            const std::vector<VARIANT> arguments(count, Number(VT_I4, 1));
            const WORD flags = member == kInputParameter ? kGet : kMethod;
            EXPECT_EQ(right ? S_OK : DISP_E_BADPARAMCOUNT, Invoke(automation.Get(), member, flags, arguments))
                << member << " with " << count;
        }
    }
    EXPECT_EQ(DISP_E_MEMBERNOTFOUND, Invoke(automation.Get(), 3, kMethod));
    EXPECT_EQ(DISP_E_MEMBERNOTFOUND, Invoke(automation.Get(), 4, kMethod));
    EXPECT_EQ(DISP_E_MEMBERNOTFOUND, Invoke(automation.Get(), kClose, kGet)) << "no property";
}

TEST_F(AutomationTest, MalformedParametersAreRefused) {
    EXPECT_EQ(E_INVALIDARG,
              automation->Invoke(kClose, IID_NULL, 0, kMethod, nullptr, nullptr, nullptr, nullptr));
    DISPPARAMS none = {nullptr, nullptr, 2, 0};
    EXPECT_EQ(E_INVALIDARG,
              automation->Invoke(kLoadFile, IID_NULL, 0, kMethod, &none, nullptr, nullptr, nullptr));
    VARIANT one = Number(VT_I4, 1);
    DISPPARAMS unnamed = {&one, nullptr, 1, 1};
    EXPECT_EQ(E_INVALIDARG,
              automation->Invoke(kInputParameter, IID_NULL, 0, kPut, &unnamed, nullptr, nullptr, nullptr));
    DISPPARAMS empty = {};
    EXPECT_EQ(DISP_E_UNKNOWNINTERFACE,
              automation->Invoke(kClose, IID_IUnknown, 0, kMethod, &empty, nullptr, nullptr, nullptr));
    EXPECT_EQ(E_INVALIDARG, automation->GetIDsOfNames(IID_NULL, nullptr, 1, 0, nullptr));
}

TEST_F(AutomationTest, NumbersOfEveryKindAndNumeralsConvert) {
    for (const VARTYPE type :
         {VT_I1, VT_I2, VT_I4, VT_I8, VT_UI1, VT_UI2, VT_UI4, VT_R4, VT_R8, VT_BOOL, VT_BSTR}) {
        VARIANT value = Number(type, 1);
        EXPECT_EQ(S_OK, Resize(value, value)) << type;
        VariantClear(&value);
    }
    LONG number = 5;
    VARIANT reference = Of(VT_BYREF | VT_I4);
    reference.plVal = &number;
    VARIANT nested = Of(VT_BYREF | VT_VARIANT);
    nested.pvarVal = &reference;
    EXPECT_EQ(S_OK, Resize(reference, Number(VT_I2, 4)));
    EXPECT_EQ(S_OK, Resize(nested, Of(VT_EMPTY)));
}

TEST_F(AutomationTest, ValuesOfOtherTypesAreRefused) {
    Value word(L"wide");
    EXPECT_EQ(DISP_E_TYPEMISMATCH, Resize(word.Get(), Number(VT_I4, 1)));
    VARIANT object = Of(VT_UNKNOWN);
    EXPECT_TRUE(FAILED(Resize(object, object)));
    EXPECT_TRUE(FAILED(Load(object, object)));
    VARIANT dispatch = Of(VT_DISPATCH);
    EXPECT_TRUE(FAILED(Put(dispatch)));
    EXPECT_TRUE(FAILED(Resize(Of(VT_NULL), Of(VT_NULL))));
    for (const VARTYPE type : {VT_I4, VT_BSTR, VT_VARIANT, VT_R8, VT_DATE, VT_UNKNOWN}) {
        EXPECT_TRUE(FAILED(Resize(Of(VT_BYREF | type), Of(VT_BYREF | type))))
            << "a reference to nothing: " << type;
    }
    VARIANT missing = Of(VT_ERROR);
    missing.scode = DISP_E_PARAMNOTFOUND;
    EXPECT_EQ(DISP_E_PARAMNOTOPTIONAL, Load(missing, missing));
    for (const VARTYPE type : {VT_SAFEARRAY, VT_RECORD, VT_ARRAY, VT_VECTOR, VT_BLOB}) {
        EXPECT_TRUE(FAILED(Resize(Of(type), Of(type)))) << type;
    }
    EXPECT_EQ(L"", InputParameter(automation.Get()));
}

TEST_F(AutomationTest, WrongArgumentIsNamed) {
    VARIANT values[] = {Number(VT_I4, 1), Of(VT_NULL)};
    DISPPARAMS parameters = {values, nullptr, 2, 0};
    UINT wrong = 99;
    EXPECT_TRUE(FAILED(
        automation->Invoke(kOnSizeChange, IID_NULL, 0, kMethod, &parameters, nullptr, nullptr, &wrong)));
    EXPECT_EQ(1U, wrong) << "the place in the caller's array";
}

TEST_F(AutomationTest, StringsOfEveryKindAreTakenAsTheyAre) {
    EXPECT_EQ(S_OK, Put(Of(VT_BSTR))) << "null is the empty string";
    EXPECT_EQ(L"", InputParameter(automation.Get()));
    EXPECT_EQ(S_OK, Load(Of(VT_BSTR), Of(VT_BSTR)));
    EXPECT_EQ(S_OK, Put(Number(VT_I4, 42)));
    EXPECT_EQ(L"42", InputParameter(automation.Get()));

    const std::wstring whole(kLongPath, L'x');
    Value path(L"Q:\\" + whole);
    EXPECT_EQ(S_OK, Put(path.Get()));
    EXPECT_EQ(L"Q:\\" + whole, InputParameter(automation.Get()));
    EXPECT_EQ(S_OK, Load(path.Get(), path.Get()));

    const std::wstring holed(L"Q:\\a\0b\0", 7);
    Value embedded(holed);
    EXPECT_EQ(S_OK, Put(embedded.Get()));
    EXPECT_EQ(holed, InputParameter(automation.Get()));
    EXPECT_EQ(S_OK, Load(embedded.Get(), embedded.Get()));

    Value strange(L"\xd800\xffff\x202e<>|?*:\"\\\\?\\");
    EXPECT_EQ(S_OK, Put(strange.Get()));
    EXPECT_EQ(S_OK, Load(strange.Get(), strange.Get()));
}

TEST_F(AutomationTest, WorksBeforeInitNewAndAfterClose) {
    const PackageBuilder package;
    const auto everyMember = [&] {
        Value folder(package.Path());
        EXPECT_EQ(S_OK, Load(folder.Get(), folder.Get()));
        EXPECT_EQ(S_OK, Put(folder.Get()));
        EXPECT_EQ(package.Path(), InputParameter(automation.Get()));
        EXPECT_EQ(S_OK, Resize(Number(VT_I4, -1), Number(VT_I4, INT_MAX)));
        for (const DISPID member : {Member(kClearAllData), kClose, kAboutBox}) {
            EXPECT_EQ(S_OK, Invoke(automation.Get(), member, kMethod));
        }
    };
    everyMember();
    const auto object = As<IOleObject>(control.Get(), IID_IOleObject);
    EXPECT_EQ(S_OK, As<IPersistStreamInit>(control.Get(), IID_IPersistStreamInit)->InitNew());
    everyMember();
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(S_OK, object->Close(OLECLOSE_NOSAVE));
        everyMember();
    }
}

TEST_F(AutomationTest, SettingTheParameterModifiesAlsoWhenNothingIsLoaded) {
    const auto persist = As<IPersistStreamInit>(control.Get(), IID_IPersistStreamInit);
    ASSERT_EQ(S_OK, persist->InitNew());
    EXPECT_EQ(S_FALSE, persist->IsDirty());
    Value nowhere(L"Q:\\nowhere\\");
    EXPECT_EQ(S_OK, Load(nowhere.Get(), nowhere.Get()));
    EXPECT_EQ(S_FALSE, persist->IsDirty());
    EXPECT_EQ(S_OK, Put(Of(VT_BSTR)));
    EXPECT_EQ(S_OK, persist->IsDirty());
}

TEST_F(AutomationTest, LoadingLeavesTheControlUnmodified) {
    const PackageBuilder package;
    const auto persist = As<IPersistStreamInit>(control.Get(), IID_IPersistStreamInit);
    ASSERT_EQ(S_OK, persist->InitNew());
    Value folder(package.Path());
    EXPECT_EQ(S_OK, Load(folder.Get(), folder.Get()));
    EXPECT_EQ(S_FALSE, persist->IsDirty());
}
