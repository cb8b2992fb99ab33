// Umbrella of the framework's automation support.
#pragma once

#include "afxwin.h"
#include "ole/OleDispatch.h"
#include "ole/OleFactory.h"
#include "ole/OleTypeLib.h"
