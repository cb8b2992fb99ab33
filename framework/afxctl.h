// Umbrella of the framework's support for controls.
#pragma once

#include "afxole.h"
#include "Control.h"
#include "OleControlModule.h"
#include "PropertyPage.h"
#include "Registration.h"
