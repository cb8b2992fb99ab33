// The runs of the fuzz program. Each returns a description of what it found; empty when all was well.
#pragma once

#include <cstdint>
#include <string>

/// A fault that is put in on purpose, to see that the runner finds it.
enum class Plant { kNone, kCrash, kLeak, kHang };

/// Lets the planted fault happen; called once in the middle of a run.
void Spring(Plant plant);

/// Random calls of IDispatch::Invoke on a control in a container.
std::string FuzzInvoke(uint64_t count, uint32_t seed, Plant plant);

/// Random messages to the control's own windows.
std::string FuzzMessages(uint64_t count, uint32_t seed, Plant plant);

/// Every method with every allocation of the module failing once.
std::string FailAllocations(Plant plant);

/// Create, activate, load, fold, click, close, release; resources must not grow from cycle 100 on.
std::string RunCycles(uint64_t count, Plant plant);
