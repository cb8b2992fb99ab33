// IQuickActivate of a control: all of a container's connections in one call.
#pragma once

#include "ControlPart.h"

namespace framework {

class QuickActivatePart final : public ControlPart<IQuickActivate> {
public:
    using ControlPart::ControlPart;

    STDMETHODIMP QuickActivate(QACONTAINER* container, QACONTROL* control) override;
    STDMETHODIMP SetContentExtent(LPSIZEL size) override;
    STDMETHODIMP GetContentExtent(LPSIZEL size) override;
};

} // namespace framework
