#include "Registration.h"

#include "common/Handles.h"
#include "OleTypeLib.h"

#include <array>
#include <utility>

using namespace framework;

namespace {

bool Set(HKEY key, LPCTSTR name, const CString& value) {
    const auto bytes = static_cast<DWORD>((value.GetLength() + 1) * sizeof(TCHAR));
    return ::RegSetValueEx(key, name, 0, REG_SZ, reinterpret_cast<const BYTE*>(value.GetString()), bytes) ==
           ERROR_SUCCESS;
}

/// Writes the default value, and another one when it has a name, of a key under HKEY_CLASSES_ROOT.
bool Write(const CString& path, const CString& value, LPCTSTR name = nullptr,
           const CString& named = CString()) {
    HKEY created = nullptr;
    if (::RegCreateKeyEx(HKEY_CLASSES_ROOT, path, 0, nullptr, 0, KEY_WRITE, nullptr, &created, nullptr) !=
        ERROR_SUCCESS) {
        return false;
    }
    const common::UniqueRegistryKey key(created);
    return Set(key.get(), nullptr, value) && (!name || Set(key.get(), name, named));
}

/// Removes a key and all below it; one that does not exist counts as removed.
bool Remove(const CString& path) {
    const LSTATUS status = ::RegDeleteTree(HKEY_CLASSES_ROOT, path);
    return status == ERROR_SUCCESS || status == ERROR_FILE_NOT_FOUND;
}

CString GuidText(REFGUID guid) {
    constexpr int kLength = 39;
    std::array<OLECHAR, kLength> text{};
    ::StringFromGUID2(guid, text.data(), kLength);
    return text.data();
}

CString ClassKey(REFCLSID clsid) {
    return L"CLSID\\" + GuidText(clsid);
}

CString Number(unsigned number) {
    CString text;
    text.Format(L"%u", number);
    return text;
}

LPCTSTR ThreadingModel(int flags) {
    switch (flags & (afxRegApartmentThreading | afxRegFreeThreading)) {
    case afxRegApartmentThreading | afxRegFreeThreading:
        return L"Both";
    case afxRegApartmentThreading:
        return L"Apartment";
    case afxRegFreeThreading:
        return L"Free";
    default:
        return nullptr;
    }
}

/// The entries that every class has.
bool WriteServer(HINSTANCE module, REFCLSID clsid, const CString& typeName, int flags) {
    const CString path = PathOfModule(module);
    const CString key = ClassKey(clsid);
    const LPCTSTR model = ThreadingModel(flags);
    return !path.IsEmpty() && Write(key, typeName) &&
           Write(key + L"\\InprocServer32", path, model ? L"ThreadingModel" : nullptr, model);
}

bool WriteProgID(const CString& progId, REFCLSID clsid, const CString& typeName, int flags) {
    return Write(progId, typeName) && Write(progId + L"\\CLSID", GuidText(clsid)) &&
           Write(ClassKey(clsid) + L"\\ProgID", progId) &&
           (!(flags & afxRegInsertable) || (Write(progId + L"\\Insertable", CString()) &&
                                            Write(ClassKey(clsid) + L"\\Insertable", CString())));
}

} // namespace

BOOL AFXAPI AfxOleRegisterTypeLib(HINSTANCE hInstance, REFGUID tlid, LPCTSTR pszFileName,
                                  LPCTSTR pszHelpDir) {
    CString path = PathOfModule(hInstance);
    if (pszFileName) {
        path = path.Left(path.ReverseFind(L'\\') + 1) + pszFileName;
    }
    common::ComPtr<ITypeLib> library;
    if (FAILED(LoadTypeLibFrom(path, tlid, library))) {
        return FALSE;
    }
    CString helpDir(pszHelpDir);
    LPTSTR help = pszHelpDir ? helpDir.GetBuffer(helpDir.GetLength()) : nullptr;
    return SUCCEEDED(::RegisterTypeLib(library.Get(), path.GetBuffer(path.GetLength()), help));
}

BOOL AFXAPI AfxOleUnregisterTypeLib(REFGUID tlID, WORD wVerMajor, WORD wVerMinor, LCID lcid) {
    return SUCCEEDED(::UnRegisterTypeLib(tlID, wVerMajor, wVerMinor, lcid, SYS_WIN64));
}

BOOL AFXAPI AfxOleRegisterControlClass(HINSTANCE hInstance, REFCLSID clsid, LPCTSTR pszProgID,
                                       UINT idTypeName, UINT idBitmap, int nRegFlags, DWORD dwMiscStatus,
                                       REFGUID tlid, WORD wVerMajor, WORD wVerMinor) {
    CString typeName;
    if (!typeName.LoadString(hInstance, idTypeName)) {
        return FALSE;
    }
    const CString key = ClassKey(clsid);
    if (WriteServer(hInstance, clsid, typeName, nRegFlags) &&
        WriteProgID(pszProgID, clsid, typeName, nRegFlags) && Write(key + L"\\Control", CString()) &&
        Write(key + L"\\ToolboxBitmap32", PathOfModule(hInstance) + L", " + Number(idBitmap)) &&
        Write(key + L"\\MiscStatus", L"0") && Write(key + L"\\MiscStatus\\1", Number(dwMiscStatus)) &&
        Write(key + L"\\TypeLib", GuidText(tlid)) &&
        Write(key + L"\\Version", Number(wVerMajor) + L"." + Number(wVerMinor))) {
        return TRUE;
    }
    AfxOleUnregisterClass(clsid, pszProgID);
    return FALSE;
}

BOOL AFXAPI AfxOleRegisterPropertyPageClass(HINSTANCE hInstance, REFCLSID clsid, UINT idTypeName,
                                            int nRegFlags) {
    CString typeName;
    if (!typeName.LoadString(hInstance, idTypeName)) {
        return FALSE;
    }
    if (WriteServer(hInstance, clsid, typeName, nRegFlags)) {
        return TRUE;
    }
    AfxOleUnregisterClass(clsid, nullptr);
    return FALSE;
}

BOOL AFXAPI AfxOleUnregisterClass(REFCLSID clsID, LPCTSTR pszProgID) {
    const bool classGone = Remove(ClassKey(clsID));
    return (!pszProgID || !*pszProgID || Remove(pszProgID)) && classGone;
}
