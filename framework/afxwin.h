// Windows, dialogs, device contexts, GDI objects, the application.
#pragma once

#include "afx.h"
#include "App.h"
#include "Controls.h"
#include "DataExchange.h"
#include "DeviceContext.h"
#include "Dialog.h"
#include "Gdi.h"
#include "ModuleState.h"
#include "WindowMessages.h"
#include "Wnd.h"
