// The control's property page: a placeholder.
#pragma once

#include "resources/resource.h"

#include "afxctl.h"

/// Shows its placeholder text and changes nothing.
class CMXOVDocViewPropPage : public COlePropertyPage {
    DECLARE_DYNCREATE(CMXOVDocViewPropPage)
    DECLARE_OLECREATE_EX(CMXOVDocViewPropPage)

public:
    enum { IDD = IDD_PROPERTY_PAGE };

    CMXOVDocViewPropPage();

protected:
    void DoDataExchange(CDataExchange* dx) override;
    DECLARE_MESSAGE_MAP()
};
