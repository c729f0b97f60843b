#pragma once

#include <korodbc/catalogues/CatalogueReader.h>
#include <korodbc/records/configuration/BoltAssemblyRecords.h>
#include <korodbc/records/configuration/BoltRecords.h>

/// Bolts, their holes and tools.
class KorODBCBolts : public CatalogueReader<StructScrew, StructStandard, StructSetNutsBolts, StructTools,
                                            StructScrewHoleLocation, StructScrewHoleType> {
public:
    static int getHoleLocationAt(const KorOdbcKey& key, StructScrewHoleLocation& record)
    {
        return byKey(key, record);
    }
    static int getHoleLocationKey(const KorString& runName, CatalogueKey auto& key)
    {
        return keyOf<StructScrewHoleLocation>(runName, key);
    }
    static int getHoleLocationList(KorArray<KorString>& names)
    {
        return orderedRunNames<StructScrewHoleLocation>(names);
    }
    static int getScrewHoleTypeAt(const KorOdbcKey& key, StructScrewHoleType& record)
    {
        return byKey(key, record);
    }
    static int getScrewHoleTypeKey(const KorString& runName, CatalogueKey auto& key)
    {
        return keyOf<StructScrewHoleType>(runName, key);
    }
    static int getScrewHoleTypeList(KorArray<KorString>& names)
    {
        return orderedRunNames<StructScrewHoleType>(names);
    }
    /// The bolt with these run names and this diameter in mm, in all data sources.
    static int getScrewExtension(const KorString& standard, const KorString& strengthClass, const KorString& set,
                                 double diameter, StructScrew& record)
    {
        return StructScrewMarshal::getByKeyAllSources(standard, strengthClass, set, diameter, record);
    }
    static int getSetNutsBolts(const KorOdbcKey& key, StructSetNutsBolts& record) { return byKey(key, record); }
    /// The standard with this run name, in all data sources.
    static int getStandardExtension(const KorString& runName, StructStandard& record)
    {
        return StructStandardMarshal::getStructByRunNameAllSources(runName, record);
    }
    /// The tool for bolts of this diameter in mm.
    static int getToolInformation(double diameter, StructTools& record)
    {
        return StructToolsMarshal::getByDiameter(diameter, record);
    }
};

/// Bolts of every length with their sets, chosen step by step; standards, strength classes and sets go by
/// their run names.
class KorOdbcSetBolts : public CatalogueReader<StructSetBolts, StructSetOfBolts> {
public:
    /// The assembly with this diameter and length in mm, in all data sources.
    static int getByKey(const KorString& standard, const KorString& set, double diameter, double length,
                        StructSetBolts& record)
    {
        return StructSetBoltsMarshal::getByKeyAllSources(standard, set, diameter, length, record);
    }
    static int getStrengthClassList(const KorString& standard, KorArray<KorString>& names)
    {
        return StructSetOfBoltsMarshal::getStrengthClassList(standard, names);
    }
    static int getGarniturList(const KorString& standard, const KorString& strengthClass,
                               KorArray<KorString>& names)
    {
        return StructSetOfBoltsMarshal::getSetList(standard, strengthClass, names);
    }
    static int getDiameterList(const KorString& standard, const KorString& set, KorArray<KorString>& names)
    {
        return StructSetBoltsMarshal::getDiameterList(standard, set, names);
    }
    /// The same in mm, rising.
    static int getDiameters(const KorString& standard, const KorString& set, KorArray<double>& diameters)
    {
        return StructSetBoltsMarshal::getDiameters(standard, set, diameters);
    }
};

/// Bolts with their sets.
class KorOdbcSetOfBolts : public CatalogueReader<StructSetOfBolts> {
public:
    static int getBoltSets(KorArray<StructSetOfBolts>& records) { return table(records); }
    static int getByKey(const KorOdbcKey& key, StructSetOfBolts& record) { return byKey(key, record); }
};

/// Forms of bolts.
class KorOdbcScrewType : public CatalogueReader<StructScrewType> {
public:
    static int getScrewType(const KorOdbcKey& key, StructScrewType& record) { return byKey(key, record); }
};
