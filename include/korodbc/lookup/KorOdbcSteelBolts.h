#pragma once

#include <korodbc/records/configuration/BoltRecords.h>
#include <korodbc/records/configuration/CombinationRecords.h>

// Bolts, their standards and properties. Results: 1 found or read, 0 not; outputs are unchanged on failure.
// Threads: one. Needs: an open repository.

// Run names over all sources, in the order of their tables

int kor_odbc_getStandardsList(KorArray<KorString>& names);
/// Strength classes.
int kor_odbc_getFestigkeitList(KorArray<KorString>& names);
/// Sets of nuts and washers.
int kor_odbc_getGarniturList(KorArray<KorString>& names);
int kor_odbc_getDiameterList(KorArray<KorString>& names);

/// Nuts and washers of the sets, over all sources.
int kor_odbc_getBoltComponents(KorArray<StructSetNutsBolts>& components);
int kor_odbc_getBoltComponentTypes(KorArray<StructScrewType>& types);

/// Keys, which are given as texts, and run names of one another.
class KorODBCScrewsDll {
public:
    /// Standards of bolts.
    static int kor_odbc_getNormKey(const KorString& runName, KorString& key);
    static int kor_odbc_getNormDescription(const KorString& key, KorString& runName);
    /// Standards of nuts and washers.
    static int kor_odbc_getStandardNutsKey(const KorString& runName, KorString& key);
    static int kor_odbc_getStandardNutsDescription(const KorString& key, KorString& runName);
    /// Strength classes.
    static int kor_odbc_getFestigkeitKey(const KorString& runName, KorString& key);
    static int kor_odbc_getFestigkeitDescription(const KorString& key, KorString& runName);
    /// Sets of nuts and washers.
    static int kor_odbc_getGarniturKey(const KorString& runName, KorString& key);
    static int kor_odbc_getGarniturDescription(const KorString& key, KorString& runName);
    /// Places where bolts are put in: site, workshop.
    static int kor_odbc_getAssemblyLocationKey(const KorString& runName, KorString& key);
    static int kor_odbc_getAssemblyLocationDescription(const KorString& key, KorString& runName);
    static int kor_odbc_getAssemblyLocationList(KorArray<KorString>& names);
    static int kor_odbc_getScrewCoating(const KorString& key, StructScrewCoating& coating);
    static int kor_odbc_getScrewCoatingList(KorArray<KorString>& names);
    static int kor_odbc_getScrewCoatingRunname(const KorString& key, KorString& runName);
    static int kor_odbc_getScrewDistance(const KorString& key, StructScrewDistance& distance);
    static int kor_odbc_getScrewDistanceKey(const KorString& runName, KorString& key);
    static int kor_odbc_getScrewDiameterDescription(const KorString& key, KorString& runName);
};
