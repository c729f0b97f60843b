#pragma once

#include <korodbc/roots/KorString.h>

/// Progress display of the host; without one nothing happens.
class KorProgressCtrl {
public:
    static void setTitle(const KorString& title);
    /// Sets the share of the work that is done, in per cent; `flag` is passed to the host as it is.
    static void setPercentage(int percentage, int flag);
    /// Takes the display away.
    static void reset();
};
