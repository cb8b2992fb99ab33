// Collection templates.
#pragma once

#include "Collections.h"
