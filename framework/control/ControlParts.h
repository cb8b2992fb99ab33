// What a control keeps for its container: the state that containers set and ask for, and the object behind
// each interface. Internal: no part of the documented classes.
#pragma once

#include "ControlActivation.h"
#include "ControlSite.h"
#include "interfaces/DataObjectPart.h"
#include "interfaces/DescriptionParts.h"
#include "interfaces/InPlaceParts.h"
#include "interfaces/OleControlPart.h"
#include "interfaces/OleObjectPart.h"
#include "interfaces/QuickActivatePart.h"
#include "interfaces/ViewObjectPart.h"
#include "ole/Connection.h"
#include "persistence/PersistPropertyBag.h"
#include "persistence/PersistStorage.h"
#include "persistence/PersistStream.h"

namespace framework {

/// COleControl holds one behind a pointer. The parts reach the control's documented members through `control`
/// and what they share through this object.
struct ControlParts final : PersistentObject {
    explicit ControlParts(COleControl& owner);

    /// Takes another site, or none. A control that is active is deactivated first: its window and frame
    /// belong to the old container.
    void SetClientSite(IOleClientSite* client);
    /// Releases every interface of the container and every sink.
    void Clear();

    HRESULT GetClassID(CLSID* clsid) override;
    void Exchange(CPropExchange& exchange) override;
    void Reset() override;
    void Redraw() override;
    void ReportSaved() override;

    COleControl& control;
    ControlSite site;
    ControlActivation activation{*this};
    SIZE extent{};        ///< HIMETRIC
    SIZE initialExtent{}; ///< HIMETRIC
    const IID* primary = nullptr;
    bool clipped = false; ///< the window has a region
    LONG frozen = 0;      ///< calls of FreezeEvents(TRUE) that are still open

    OleObjectPart oleObject{control, *this};
    OleControlPart oleControl{control, *this};
    InPlaceObjectPart inPlaceObject{control, *this};
    InPlaceActiveObjectPart inPlaceActiveObject{control, *this};
    ViewObjectPart viewObject{control, *this};
    DataObjectPart dataObject{control, *this};
    SpecifyPropertyPagesPart specifyPropertyPages{control, *this};
    ProvideClassInfoPart provideClassInfo{control, *this};
    QuickActivatePart quickActivate{control, *this};

    Persistence persistence{*this};
    PersistStreamInitPart persistStreamInit;
    PersistStoragePart persistStorage;
    PersistPropertyBagPart persistPropertyBag;
    PersistMemoryPart persistMemory;

    ConnectionPointContainerPart connectionPointContainer;
    ConnectionPoint events;
    ConnectionPoint propertyNotifications;
};

} // namespace framework
