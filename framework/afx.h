// Objects, texts and basic types.
#pragma once

#include "core/CString.h"
#include "core/Object.h"
#include "core/Types.h"
