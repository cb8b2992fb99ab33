// The module: its objects in the order of their construction, and self-registration.
// The framework supplies DllCanUnloadNow and DllGetClassObject.
#include "MXOVDocViewApp.h"
#include "MXOVDocViewCtrl.h"
#include "MXOVDocViewPropPage.h"
#include "package/RecordLists.h"

#include <MXOVDocView.h>
#include <olectl.h>

CMXOVDocViewApp theApp;

IMPLEMENT_OLECREATE_EX(CMXOVDocViewCtrl, "MXOVTREETAB.MXOVDocViewCtrlVS2015.13", 0x6406ff95, 0x0f04, 0x4382,
                       0x85, 0x2b, 0x89, 0xe0, 0x97, 0x9e, 0xae, 0xe8)
IMPLEMENT_OLECREATE_EX(CMXOVDocViewPropPage, "MXOVDOCVIEW.MXOVDocViewPropPage.1", 0xd282cb0e, 0x7c46, 0x48a7,
                       0xb1, 0x2a, 0xe3, 0x13, 0x79, 0x55, 0xf8, 0xc1)

docview::RecordList docview::partAssemblyRecords;
docview::RecordList docview::gCodeRecords;
docview::RecordList docview::setupSheetRecords;
docview::RecordList docview::additionalRecords;

STDAPI DllRegisterServer() {
    AFX_MANAGE_STATE(AfxGetStaticModuleState());
    if (!AfxOleRegisterTypeLib(AfxGetInstanceHandle(), LIBID_MXOVDocViewLib)) {
        return SELFREG_E_TYPELIB;
    }
    if (!COleObjectFactory::UpdateRegistryAll(TRUE)) {
        return SELFREG_E_CLASS;
    }
    return S_OK;
}

STDAPI DllUnregisterServer() {
    AFX_MANAGE_STATE(AfxGetStaticModuleState());
    if (!AfxOleUnregisterTypeLib(LIBID_MXOVDocViewLib, kMajorVersion, kMinorVersion)) {
        return SELFREG_E_TYPELIB;
    }
    if (!COleObjectFactory::UpdateRegistryAll(FALSE)) {
        return SELFREG_E_CLASS;
    }
    return S_OK;
}
