// Umbrella of the framework's automation support.
#pragma once

#include "afxwin.h"
#include "OleDispatch.h"
#include "OleFactory.h"
#include "OleTypeLib.h"
