// The log of the probe: one line per call, in the order of the calls, with milliseconds since the start.
#pragma once

#include <windows.h>

#include <string>

/// Writes "  12 ms  control > host  IOleInPlaceSite::OnUIActivate  00000000", indented by the calls that it
/// is made inside of.
void LogCall(bool fromControl, const std::string& call, HRESULT result);

/// A call into the control: logs when it begins, so that calls that come back meanwhile stand below it.
class CallIntoControl {
public:
    explicit CallIntoControl(std::string call);
    ~CallIntoControl();
    CallIntoControl(const CallIntoControl&) = delete;
    CallIntoControl& operator=(const CallIntoControl&) = delete;

    /// Notes what the call returned and passes it on.
    HRESULT Ended(HRESULT result) {
        m_result = result;
        return result;
    }

private:
    std::string m_call;
    HRESULT m_result = E_FAIL;
};

/// The name of an interface that a container or the control offers, or its GUID.
std::string InterfaceName(REFIID iid);

/// "10,20 300x400"
std::string RectText(const RECT* rect);
