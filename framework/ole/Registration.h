// Registration of type libraries, controls and property pages, under HKEY_CLASSES_ROOT.
//
// What each function writes, its counterpart removes. Not covered: per-user registration, bitmaps and verbs
// of servers that insert documents.
#pragma once

#include "common/ComPtr.h"
#include "core/Types.h"

// Registration flags of a control class.
constexpr int afxRegInsertable = 0x0001;
constexpr int afxRegApartmentThreading = 0x0002;
constexpr int afxRegFreeThreading = 0x0004;

/// Registers the type library in a module, or in pszFileName in the module's folder. FALSE when there is
/// none, when its GUID is another one, or when it cannot be registered.
BOOL AFXAPI AfxOleRegisterTypeLib(HINSTANCE hInstance, REFGUID tlid, LPCTSTR pszFileName = nullptr,
                                  LPCTSTR pszHelpDir = nullptr);

/// FALSE when it is not registered, or cannot be removed.
BOOL AFXAPI AfxOleUnregisterTypeLib(REFGUID tlID, WORD wVerMajor, WORD wVerMinor, LCID lcid = 0);

/// Registers a control: ProgID, server, threading model, OLEMISC bits, type library and version. The type
/// name is a string of the module, the bitmap only named by its number. FALSE when anything cannot be
/// written; nothing of the class is left then.
BOOL AFXAPI AfxOleRegisterControlClass(HINSTANCE hInstance, REFCLSID clsid, LPCTSTR pszProgID,
                                       UINT idTypeName, UINT idBitmap, int nRegFlags, DWORD dwMiscStatus,
                                       REFGUID tlid, WORD wVerMajor, WORD wVerMinor);

/// Registers a property page: type name and server. Results as for a control.
BOOL AFXAPI AfxOleRegisterPropertyPageClass(HINSTANCE hInstance, REFCLSID clsid, UINT idTypeName,
                                            int nRegFlags = 0);

/// Removes a class and, when given, its ProgID, each with everything below it. TRUE also for what is not
/// registered.
BOOL AFXAPI AfxOleUnregisterClass(REFCLSID clsID, LPCTSTR pszProgID);
