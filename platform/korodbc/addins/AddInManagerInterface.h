#pragma once

#include <korodbc/addins/KorAddInId.h>
#include <korodbc/addins/KorAddInReactorInterface.h>
#include <korodbc/roots/KorArray.h>

/// The host's add-in manager. It belongs to the host, as its add-ins do: pointers are valid until the repository
/// is closed. Threads: one.
class AddInManagerInterface {
public:
    virtual ~AddInManagerInterface() = default;

    /// The manager; nullptr while the host has none.
    static AddInManagerInterface* getInstance();

    /// With `activate` not 0 calls the reactor for every add-in until it is unregistered. The reactor remains the
    /// caller's, who unregisters it before it is destroyed.
    virtual void registerReactor(KorAddInReactorInterface& reactor, int activate) = 0;
    virtual void unregisterReactor(KorAddInReactorInterface& reactor) = 0;
    /// Ids of the installed country add-ins in the order of their slots; they replace what the array held.
    virtual void getInstalledCountryAddInIds(KorArray<KorAddInId>& ids) = 0;
    /// The add-in with that id; nullptr when there is none.
    virtual KorAddIn* getAddIn(const KorAddInId& id) = 0;
    /// Makes the add-in's database the current data source (KorDSNManager).
    virtual void setCurrentForDetails(KorAddIn& addIn) = 0;
};
