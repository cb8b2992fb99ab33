// The interfaces that a control answers, for tests of its identity.
#pragma once

#include <windows.h>

#include <vector>

/// An interface and its name.
struct NamedInterface {
    const char* name;
    const IID* iid;
};

/// Every interface that a control of the framework answers, besides the dispatch interface of its own.
const std::vector<NamedInterface>& ControlInterfaces();
