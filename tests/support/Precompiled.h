// Compiled once for all test programs. Sources still include what they use.
#pragma once

#include <windows.h>

#include <commctrl.h>
#include <gtest/gtest.h>
#include <ole2.h>
#include <olectl.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>
