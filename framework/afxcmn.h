// Common controls.
#pragma once

#include "afxwin.h"
#include "windows/ImageList.h"
#include "windows/ListCtrl.h"
