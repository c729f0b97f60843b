#pragma once

#include <korodbc/addins/KorAddInId.h>

/// Called by the add-in manager, on the thread of its caller, when an add-in is loaded or unloaded.
class KorAddInReactorInterface {
public:
    virtual ~KorAddInReactorInterface() = default;
    virtual void commandRegistered(const KorString& command);
    virtual void commandDeregistered(const KorString& command);
    virtual void onCountryAddInLoaded(KorAddIn& addIn) = 0;
    virtual void onCountryAddInUnloaded(KorAddIn& addIn) = 0;
};
