#pragma once

#include <korodbc/addins/KorAddInId.h>

/// Hears what happens to add-ins.
class KorAddInReactorInterface {
public:
    virtual ~KorAddInReactorInterface() = default;
    virtual void commandRegistered(const KorString& command);
    virtual void commandDeregistered(const KorString& command);
    virtual void onCountryAddInLoaded(KorAddIn& addIn) = 0;
    virtual void onCountryAddInUnloaded(KorAddIn& addIn) = 0;
};
