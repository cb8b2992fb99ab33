// Common controls.
#pragma once

#include "afxwin.h"
#include "ImageList.h"
#include "ListCtrl.h"
