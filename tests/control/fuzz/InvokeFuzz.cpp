#include "Fuzz.h"
#include "HostedControl.h"
#include "Resources.h"

#include <random>

namespace {

constexpr size_t kHeapSlack = 0x1000; // of caches inside the system's own libraries
constexpr uint64_t kWarmUp = 20000;

/// Values of every kind that a caller can pass, valid or not; made once.
class Values {
public:
    explicit Values(std::mt19937& random) {
        for (const VARTYPE type :
             {VT_EMPTY, VT_NULL, VT_I1, VT_I2, VT_I4, VT_I8, VT_UI1, VT_UI2, VT_UI4, VT_UI8, VT_INT, VT_UINT,
              VT_R4, VT_R8, VT_CY, VT_BOOL, VT_DATE, VT_ERROR, VT_DECIMAL})
            Add(type, static_cast<LONGLONG>(random()));
        for (const VARTYPE type : {VT_BSTR, VT_DISPATCH, VT_UNKNOWN, VT_ARRAY, VT_RECORD, VT_BLOB, VT_CLSID})
            Add(type, 0);
        for (const VARTYPE type : {VT_I2, VT_I4, VT_R8, VT_BSTR, VT_VARIANT, VT_DISPATCH, VT_UI1, VT_BOOL})
            Add(VT_BYREF | type, 0);
        Add(VT_ERROR, DISP_E_PARAMNOTFOUND);
        for (const wchar_t* text :
             {L"", L"1", L"-7", L"1e9", L"true", L"Q:\\none\\", L"\\\\?\\x", L"con", L"C:"})
            Add(SysAllocString(text));
        Add(SysAllocStringLen(L"a\0b", 3));
        Add(SysAllocStringLen(std::wstring(32000, L'p').data(), 32000));
        VARIANT reference = {};
        reference.vt = VT_BYREF | VT_I4;
        reference.plVal = &m_number;
        m_values.push_back(reference);
        reference.vt = VT_BYREF | VT_BSTR;
        reference.pbstrVal = &m_text;
        m_values.push_back(reference);
        reference.vt = VT_BYREF | VT_VARIANT;
        reference.pvarVal = &m_value.Get();
        m_values.push_back(reference);
    }
    ~Values() {
        for (VARIANT& value : m_values) {
            if (value.vt == VT_BSTR)
                VariantClear(&value);
        }
        SysFreeString(m_text);
    }
    Values(const Values&) = delete;
    Values& operator=(const Values&) = delete;

    [[nodiscard]] const VARIANT& Any(std::mt19937& random) const {
        return m_values[random() % m_values.size()];
    }

private:
    void Add(int type, LONGLONG bits) {
        VARIANT value = {};
        value.llVal = bits;
        if (type == VT_ERROR)
            value.scode = static_cast<SCODE>(bits);
        value.vt = static_cast<VARTYPE>(type);
        m_values.push_back(value);
    }
    void Add(BSTR text) {
        VARIANT value = {};
        value.vt = VT_BSTR;
        value.bstrVal = text;
        m_values.push_back(value);
    }

    std::vector<VARIANT> m_values;
    LONG m_number = 3;
    BSTR m_text = SysAllocString(L"by reference");
    Value m_value{std::wstring(L"inside")};
};

/// One call with everything at random. FALSE when it neither succeeds nor fails.
bool CallOnce(IDispatch* object, const Values& values, std::mt19937& random) {
    constexpr DISPID kMembers[] = {1, 1, 1, 2, 3, 4, 5, 5, 6, 6, 7, -552, 0, -1, -500, 0x7fffffff};
    constexpr WORD kFlags[] = {DISPATCH_METHOD, DISPATCH_PROPERTYGET, DISPATCH_PROPERTYPUT, 3, 0, 8, 0xffff};
    constexpr UINT kMost = 4;
    VARIANT arguments[kMost];
    DISPID named[kMost];
    for (UINT i = 0; i < kMost; ++i) {
        arguments[i] = values.Any(random);
        named[i] = random() % 2 ? DISPID_PROPERTYPUT : static_cast<DISPID>(random() % kMost) - 1;
    }
    DISPPARAMS parameters = {arguments, named, static_cast<UINT>(random() % kMost), 0};
    if (random() % 4 == 0)
        parameters.cNamedArgs = random() % kMost;
    const DISPID member =
        random() % 16 ? kMembers[random() % std::size(kMembers)] : static_cast<DISPID>(random());
    WORD flags = kFlags[random() % std::size(kFlags)];
    if (member == kInputParameter && random() % 2) { // a call that fits
        flags = DISPATCH_PROPERTYPUT;
        parameters.cArgs = parameters.cNamedArgs = 1;
        named[0] = DISPID_PROPERTYPUT;
    }
    Value result;
    UINT wrong = 0;
    const HRESULT outcome = object->Invoke(
        member, random() % 64 ? IID_NULL : IID_IUnknown, random() % 8 ? 0x409 : 0x407, flags,
        random() % 64 ? &parameters : nullptr, random() % 4 ? &result.Get() : nullptr, nullptr, &wrong);
    return outcome == S_OK || FAILED(outcome);
}

} // namespace

std::string FuzzInvoke(uint64_t count, uint32_t seed, Plant plant) {
    std::mt19937 random(seed);
    const Values values(random);
    const ControlModule module;
    Resources before;
    std::string found;
    const auto hammer = [&](uint64_t calls) {
        HostedControl control;
        if (control.Activate() != S_OK)
            throw std::runtime_error("the control is not activated");
        for (uint64_t i = 0; i < calls; ++i) {
            if (!CallOnce(control.Automation(), values, random))
                throw std::runtime_error("an unexpected result in call " + std::to_string(i));
            if (i % 1000 == 0)
                HostedControl::Pump();
        }
        Spring(plant);
    };
    hammer(kWarmUp);
    before = Resources::Count();
    hammer(count);
    return Resources::Count().GrowthSince(before, kHeapSlack);
}
