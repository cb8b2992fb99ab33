#include "MXOVDocViewPropPage.h"

IMPLEMENT_DYNCREATE(CMXOVDocViewPropPage, COlePropertyPage)

CMXOVDocViewPropPage::CMXOVDocViewPropPage() : COlePropertyPage(IDD, IDS_PAGE_CAPTION) {}

BOOL CMXOVDocViewPropPage::CMXOVDocViewPropPageFactory::UpdateRegistry(BOOL bRegister) {
    if (bRegister) {
        return AfxOleRegisterPropertyPageClass(AfxGetInstanceHandle(), m_clsid, IDS_PAGE_TYPE);
    }
    return AfxOleUnregisterClass(m_clsid, nullptr);
}

void CMXOVDocViewPropPage::DoDataExchange(CDataExchange* dx) {
    DDP_PostProcessing(dx);
}

BEGIN_MESSAGE_MAP(CMXOVDocViewPropPage, COlePropertyPage)
END_MESSAGE_MAP()
