// Dialogs that the system supplies.
#pragma once

#include "afxwin.h"
#include "windows/FileDialog.h"
