#include "ControlInterfaces.h"

#include <ocidl.h>
#include <ole2.h>

const std::vector<NamedInterface>& ControlInterfaces() {
    static const std::vector<NamedInterface> interfaces = {
        {"IUnknown", &IID_IUnknown},
        {"IDispatch", &IID_IDispatch},
        {"IOleObject", &IID_IOleObject},
        {"IOleControl", &IID_IOleControl},
        {"IOleWindow", &IID_IOleWindow},
        {"IOleInPlaceObject", &IID_IOleInPlaceObject},
        {"IOleInPlaceActiveObject", &IID_IOleInPlaceActiveObject},
        {"IViewObject", &IID_IViewObject},
        {"IViewObject2", &IID_IViewObject2},
        {"IViewObjectEx", &IID_IViewObjectEx},
        {"IPersist", &IID_IPersist},
        {"IPersistStreamInit", &IID_IPersistStreamInit},
        {"IPersistStorage", &IID_IPersistStorage},
        {"IPersistPropertyBag", &IID_IPersistPropertyBag},
        {"IPersistMemory", &IID_IPersistMemory},
        {"IDataObject", &IID_IDataObject},
        {"ISpecifyPropertyPages", &IID_ISpecifyPropertyPages},
        {"IProvideClassInfo", &IID_IProvideClassInfo},
        {"IProvideClassInfo2", &IID_IProvideClassInfo2},
        {"IConnectionPointContainer", &IID_IConnectionPointContainer},
        {"IQuickActivate", &IID_IQuickActivate},
    };
    return interfaces;
}
