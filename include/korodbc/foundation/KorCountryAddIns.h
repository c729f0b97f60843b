#pragma once

#include <korodbc/addins/KorAddInId.h>

/// The country add-ins as databases. Threads: one.
class KorCountryAddIns {
public:
    /// Makes an add-in's database the current data source and resets those of all country add-ins.
    static void switchKorvaDetailsCurrent(const KorAddInId& id);
    /// Resets the databases of all country add-ins: the next reads see what other programs have stored.
    static void resetAddIns();
};
