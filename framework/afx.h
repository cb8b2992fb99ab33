// Objects, texts and basic types.
#pragma once

#include "CString.h"
#include "Object.h"
#include "Types.h"
