// Umbrella of the framework's OLE support.
#pragma once

#include "afxwin.h"
#include "ole/Connection.h"
#include "ole/OleDispatch.h"
#include "ole/OleFactory.h"
#include "ole/OleTarget.h"
#include "ole/OleTypeLib.h"
