// Umbrella of the framework's OLE support.
#pragma once

#include "afxwin.h"
#include "Connection.h"
#include "OleDispatch.h"
#include "OleFactory.h"
#include "OleTarget.h"
#include "OleTypeLib.h"
