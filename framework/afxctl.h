// Umbrella of the framework's support for controls.
#pragma once

#include "afxole.h"
#include "control/Control.h"
#include "control/OleControlModule.h"
#include "ole/Registration.h"
#include "page/PropertyPage.h"
#include "persistence/PropExchange.h"
