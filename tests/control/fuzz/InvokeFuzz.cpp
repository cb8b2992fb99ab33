#include "Fuzz.h"
#include "HostedControl.h"
#include "InvokeValues.h"
#include "PackageBuilder.h"
#include "ProcessResources.h"
#include "Progress.h"

#include <commctrl.h>

#include <array>
#include <cstdio>

namespace {

constexpr std::int64_t kInvokeHeapSlack = 0x1000; // of caches inside the system's own libraries
constexpr uint64_t kInvokeWarmUp = 20000;
constexpr uint64_t kPumpEvery = 10000;
// What reads a folder or touches every list costs as much as hundreds of refused calls.
constexpr unsigned kLoadEvery = 10000;
constexpr unsigned kFittingEvery = 32;
constexpr unsigned kNameEvery = 32;
constexpr UINT kMostArguments = 4;

struct Call {
    DISPID member = 0;
    WORD flags = 0;
    std::array<VARIANT, kMostArguments> arguments{};
    std::array<DISPID, kMostArguments> named{};
    UINT count = 0;
    UINT namedCount = 0;
};

/// How often a member succeeded and failed.
struct Outcomes {
    uint64_t succeeded = 0;
    uint64_t failed = 0;
};
constexpr DISPID kMembers[] = {1, 1, 1, 2, 3, 4, 5, 5, 6, 6, 7, -552, 0, -1, -500, 0x7fffffff};

/// Whether the call, when its arguments convert, empties or fills the lists or looks for a folder.
bool DoesWork(const Call& call) {
    switch (call.member) {
    case kInputParameter:
        return call.flags & DISPATCH_PROPERTYPUT && call.count == 1;
    case kClearAllData:
        return call.count == 0;
    case kLoadFile:
        return call.count == 2;
    default:
        return false;
    }
}

Call AnyCall(const InvokeValues& values, std::mt19937& random) {
    constexpr WORD kFlags[] = {DISPATCH_METHOD, DISPATCH_PROPERTYGET, DISPATCH_PROPERTYPUT, 3, 0, 8, 0xffff};
    Call call;
    call.member = random() % 16 ? kMembers[random() % std::size(kMembers)] : static_cast<DISPID>(random());
    call.flags = kFlags[random() % std::size(kFlags)];
    for (UINT i = 0; i < kMostArguments; ++i) {
        call.arguments[i] = values.Any(random);
        call.named[i] =
            random() % 2 ? DISPID_PROPERTYPUT : static_cast<DISPID>(random() % kMostArguments) - 1;
    }
    call.count = random() % kMostArguments;
    if (random() % 4 == 0) {
        call.namedCount = random() % kMostArguments;
    }
    if (call.member == kInputParameter && random() % 2) { // a call that fits
        call.flags = DISPATCH_PROPERTYPUT;
        call.count = call.namedCount = 1;
        call.named[0] = DISPID_PROPERTYPUT;
    }
    if (DoesWork(call) && random() % kFittingEvery) {
        ++call.count;
    }
    return call;
}

/// FALSE when the call neither succeeds nor fails.
bool Make(Call call, IDispatch* object, std::mt19937& random, Outcomes& outcomes) {
    DISPPARAMS parameters = {call.arguments.data(), call.named.data(), call.count, call.namedCount};
    Value result;
    UINT wrong = 0;
    const HRESULT outcome = object->Invoke(
        call.member, random() % 64 ? IID_NULL : IID_IUnknown, random() % 8 ? 0x409 : 0x407, call.flags,
        random() % 64 ? &parameters : nullptr, random() % 4 ? &result.Get() : nullptr, nullptr, &wrong);
    ++(SUCCEEDED(outcome) ? outcomes.succeeded : outcomes.failed);
    return outcome == S_OK || FAILED(outcome);
}

/// The member that a name of any spelling means; as wrong names do, `unknown` when it means none.
DISPID Named(IDispatch* object, DISPID unknown, std::mt19937& random) {
    constexpr const wchar_t* kNames[] = {
        L"InputParameter", L"ClearAllData", L"OnSizeChange", L"LoadFile",  L"Close", L"AboutBox",
        L"LOADFILE",       L"clearalldata", L"LoadFil",      L"LoadFileX", L"",      L"ParameterLoaded"};
    std::wstring name = kNames[random() % std::size(kNames)];
    LPOLESTR names[] = {name.data()};
    DISPID member = DISPID_UNKNOWN;
    const HRESULT found = object->GetIDsOfNames(IID_NULL, names, 1, random() % 2 ? 0x409 : 0, &member);
    if (SUCCEEDED(found) == (member == DISPID_UNKNOWN)) {
        throw std::runtime_error("a name is answered wrongly");
    }
    return SUCCEEDED(found) ? member : unknown;
}

/// Loads the package by either member, and sometimes empties the lists after it.
void LoadPackage(HostedControl& control, const VARIANT& folder, std::mt19937& random) {
    IDispatch* const object = control.Automation();
    const HRESULT loaded = random() % 2 ? Invoke(object, kLoadFile, DISPATCH_METHOD, {folder, folder})
                                        : Invoke(object, kInputParameter, DISPATCH_PROPERTYPUT, {folder});
    const HWND list = GetDlgItem(control.Dialog(), kGCodeList);
    if (loaded != S_OK || SendMessageW(list, LVM_GETITEMCOUNT, 0, 0) == 0) {
        throw std::runtime_error("the package is not loaded");
    }
    if (random() % 2) {
        Invoke(object, kClearAllData, DISPATCH_METHOD);
    }
}

class InvokeFuzz {
public:
    explicit InvokeFuzz(uint32_t seed) : m_random(seed), m_values(m_random), m_folder(m_package.Path()) {}

    /// So many calls on one control.
    void Hammer(uint64_t calls) {
        HostedControl control;
        if (control.Activate() != S_OK) {
            throw std::runtime_error("the control is not activated");
        }
        for (uint64_t i = 0; i < calls; ++i) {
            if (m_random() % kLoadEvery == 0) {
                BeginStep("a package is loaded", i);
                LoadPackage(control, m_folder.Get(), m_random);
                ++m_loads;
            } else {
                AnyOf(control.Automation(), i);
            }
            if (i % kPumpEvery == 0) {
                HostedControl::Pump();
            }
        }
        // The records and the library's view of the last file outlive the control: they are the same each
        // time.
        LoadPackage(control, m_folder.Get(), m_random);
        Invoke(control.Automation(), kClearAllData, DISPATCH_METHOD);
    }

    void Report() const {
        for (size_t i = 0; i < std::size(kMembers); ++i) {
            if (i == 0 || kMembers[i] != kMembers[i - 1]) {
                std::printf("member %ld: %llu succeeded, %llu failed\n", kMembers[i],
                            Of(kMembers[i]).succeeded, Of(kMembers[i]).failed);
            }
        }
        std::printf("others: %llu succeeded, %llu failed; %llu loads\n", m_outcomes.back().succeeded,
                    m_outcomes.back().failed, m_loads);
    }

private:
    void AnyOf(IDispatch* object, uint64_t number) {
        Call call = AnyCall(m_values, m_random);
        if (m_random() % kNameEvery == 0 && !DoesWork(call)) {
            call.member = Named(object, call.member, m_random);
        }
        BeginStep("member, flags, arguments", number, {call.member, call.flags, call.count});
        if (!Make(call, object, m_random, Of(call.member))) {
            throw std::runtime_error("an unexpected result in " + Words(doing));
        }
    }
    static size_t IndexOf(DISPID member) {
        size_t i = 0;
        while (i < std::size(kMembers) && kMembers[i] != member) {
            ++i;
        }
        return i;
    }
    Outcomes& Of(DISPID member) { return m_outcomes[IndexOf(member)]; }
    [[nodiscard]] const Outcomes& Of(DISPID member) const { return m_outcomes[IndexOf(member)]; }

    std::mt19937 m_random;
    const InvokeValues m_values;
    const PackageBuilder m_package;
    const ControlModule m_module;
    Value m_folder;
    std::array<Outcomes, std::size(kMembers) + 1> m_outcomes{}; // the last: of any other member
    uint64_t m_loads = 0;
};

} // namespace

std::string FuzzInvoke(uint64_t count, uint32_t seed, Plant plant) {
    InvokeFuzz fuzz(seed);
    fuzz.Hammer(kInvokeWarmUp);
    const ProcessResources before = ProcessResources::Count();
    fuzz.Hammer(count);
    Spring(plant);
    std::string growth = ProcessResources::Count().GrowthSince(before, kInvokeHeapSlack);
    fuzz.Report();
    return growth;
}
