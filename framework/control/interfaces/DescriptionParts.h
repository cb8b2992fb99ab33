// What a control reports about itself: its property pages and its type.
#pragma once

#include "ControlPart.h"

namespace framework {

class SpecifyPropertyPagesPart final : public ControlPart<ISpecifyPropertyPages> {
public:
    using ControlPart::ControlPart;
    STDMETHODIMP GetPages(CAUUID* pages) override;
};

class ProvideClassInfoPart final : public ControlPart<IProvideClassInfo2> {
public:
    using ControlPart::ControlPart;
    STDMETHODIMP GetClassInfo(ITypeInfo** info) override;
    STDMETHODIMP GetGUID(DWORD kind, GUID* guid) override;
};

} // namespace framework
