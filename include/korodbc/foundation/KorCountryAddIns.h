#pragma once

#include <korodbc/addins/KorAddInId.h>

/// The country add-ins as databases.
class KorCountryAddIns {
public:
    /// Makes an add-in the current one for detail data and lets all country add-ins be read anew.
    static void switchKorvaDetailsCurrent(const KorAddInId& id);
    /// Lets the tables of all installed country add-ins be read anew.
    static void resetAddIns();
};
