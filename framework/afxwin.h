// Windows, dialogs, device contexts, GDI objects, the application.
#pragma once

#include "afx.h"
#include "core/App.h"
#include "core/ModuleState.h"
#include "windows/Controls.h"
#include "windows/DataExchange.h"
#include "windows/DeviceContext.h"
#include "windows/Dialog.h"
#include "windows/Gdi.h"
#include "windows/WindowMessages.h"
#include "windows/Wnd.h"
