// Umbrella of the framework's support for controls.
#pragma once

#include "afxole.h"
#include "control/Control.h"
#include "control/OleControlModule.h"
#include "control/PropertyPage.h"
#include "ole/Registration.h"
