// Collection templates.
#pragma once

#include "core/Collections.h"
