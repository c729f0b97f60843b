#pragma once

#include <korodbc/catalogues/CatalogueReader.h>
#include <korodbc/records/configuration/ClassificationRecords.h>

/// How far members are safe from cracks in the zinc bath.
class KorODBCGalvanizingConfidence : public CatalogueReader<StructGalvanizingConfidence> {
public:
    static int getGalvanizingConfidence(const KorOdbcKey& key, StructGalvanizingConfidence& record)
    {
        return byKey(key, record);
    }
    static int getRunNames(KorArray<KorString>& names) { return orderedRunNames(names); }
};

/// Classes of members by their depth.
class KorODBCGalvanizingConstructionClass : public CatalogueReader<StructGalvanizingConstructionClass> {
public:
    static int getGalvanizingConstructionClass(const KorOdbcKey& key, StructGalvanizingConstructionClass& record)
    {
        return byKey(key, record);
    }
    static int getRunNames(KorArray<KorString>& names) { return orderedRunNames(names); }
};

/// Classes of details by their notch effect.
class KorODBCGalvanizingDetailClass : public CatalogueReader<StructGalvanizingDetailClass> {
public:
    static int getGalvanizingDetailClass(const KorOdbcKey& key, StructGalvanizingDetailClass& record)
    {
        return byKey(key, record);
    }
    static int getRunNames(KorArray<KorString>& names) { return orderedRunNames(names); }
};
