// The methods whose every allocation fails once.
#pragma once

#include "HostedControl.h"

#include <functional>
#include <vector>

struct Method {
    const char* name;
    bool active; // on a control with a window
    std::function<HRESULT(HostedControl&)> call;
};

/// Every method that may allocate, on a control without a window and on one with; they load the package in
/// `folder`.
std::vector<Method> Methods(VARIANT folder);
