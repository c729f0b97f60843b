#pragma once

#include <korodbc/addins/KorAddInId.h>
#include <korodbc/addins/KorAddInReactorInterface.h>
#include <korodbc/roots/KorArray.h>

/// The host's add-in manager.
class AddInManagerInterface {
public:
    virtual ~AddInManagerInterface() = default;

    /// The manager; nullptr while the host has none.
    static AddInManagerInterface* getInstance();

    /// Registers a reactor; with `activate` not 0 it is told of every add-in from now on.
    virtual void registerReactor(KorAddInReactorInterface& reactor, int activate) = 0;
    virtual void unregisterReactor(KorAddInReactorInterface& reactor) = 0;
    /// Ids of the installed country add-ins in the order of their slots.
    virtual void getInstalledCountryAddInIds(KorArray<KorAddInId>& ids) = 0;
    /// The add-in with that id; nullptr when there is none.
    virtual KorAddIn* getAddIn(const KorAddInId& id) = 0;
    /// Makes the add-in the current one for detail data.
    virtual void setCurrentForDetails(KorAddIn& addIn) = 0;
};
