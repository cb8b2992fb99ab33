// The commands with their arguments and options.
#pragma once

#include "Arguments.h"

#include <functional>

inline constexpr std::size_t kAnyNumber = ~std::size_t{0};

/// A command; `run` returns the program's exit code.
struct Command {
    const wchar_t* name;
    std::size_t least; // arguments
    std::size_t most;
    std::function<int(const Arguments&)> run;
    std::vector<Option> options = {};
};

const std::vector<Command>& CommandTable();
