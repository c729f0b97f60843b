#pragma once

#include <korodbc/catalogues/CatalogueReader.h>
#include <korodbc/records/configuration/GratingRecords.h>

#include <type_traits>

/// A component of bar gratings. Its internal name is its key: a text, or for the spacings a number.
template <class Record>
class BarGratingComponent : public CatalogueReader<Record> {
public:
    using Stored = decltype(Record::standardName);
    using Key = std::conditional_t<std::is_same_v<Stored, KorString>, KorString, KorOdbcKey>;

    static int getByKey(const Key& key, Record& record) { return CatalogueReader<Record>::byKey(key, record); }
    static int getByRunName(const KorString& runName, Record& record)
    {
        return CatalogueReader<Record>::byRunName(runName, record);
    }
    static int getList(KorArray<KorString>& names) { return CatalogueReader<Record>::runNames(names); }
    /// Key of a run name.
    static int getInternalName(const KorString& runName, Stored& key)
    {
        return RecordMarshal<Record>::getKeyByRunName(runName, key);
    }
    /// Run name of a key; -1 when the table cannot be read.
    static int getRunName(const Key& key, KorString& runName)
    {
        if constexpr (std::is_same_v<Key, KorString>)
            return RecordMarshal<Record>::getRunNameByKey(key, runName);
        else
            return RecordMarshal<Record>::getRunNameByKey(key.getKey(), runName);
    }
};

class KorODBCBarGratingSeries : public BarGratingComponent<StructBarGratingSeries> {
public:
    /// -1 for an unknown run name.
    static int getInternalName(const KorString& runName, KorString& key)
    {
        return fieldByRunName<&StructBarGratingSeries::standardName>(runName, key);
    }
    /// -1 for an unknown key.
    static int getRunName(const KorString& key, KorString& runName)
    {
        return fieldByKey<&StructBarGratingSeries::runName>(key, runName);
    }
};
class KorODBCBearingBarSpacing : public BarGratingComponent<StructBearingBarSpacing> {};
class KorODBCCrossBarSpacing : public BarGratingComponent<StructCrossBarSpacing> {};
class KorODBCBearingBarThickness : public BarGratingComponent<StructBearingBarThickness> {};
class KorODBCBearingBarWidth : public BarGratingComponent<StructBearingBarWidth> {};

/// Bar gratings, chosen in six steps. Results: 1 done or found, another value otherwise; outputs are unchanged on
/// failure.
class KorODBCBarGrating : public CatalogueReader<StructBarGrating> {
public:
    // What a step offers: the run names of the components that the table of gratings combines with the choices
    // made so far, which are given by their keys. Names replace what the list holds; a choice that leads nowhere
    // gives 1 and an empty list.

    static int getBearingBarSpacingList(const KorString& series, KorArray<KorString>& names);
    static int getCrossBarSpacingList(const KorString& series, int bearingBarSpacing, KorArray<KorString>& names);
    static int getBearingBarThicknessList(const KorString& series, int bearingBarSpacing, int crossBarSpacing,
                                          KorArray<KorString>& names);
    static int getBearingBarWidthList(const KorString& series, int bearingBarSpacing, int crossBarSpacing,
                                      const KorString& thickness, KorArray<KorString>& names);
    static int getCrossBarList(const KorString& series, int bearingBarSpacing, int crossBarSpacing,
                               const KorString& thickness, const KorString& width, KorArray<KorString>& names);

    /// The name of a grating from the run names of its components. 0, and `name` unchanged, when a run name is
    /// unknown. Whether the table of gratings has the combination is not asked. A component whose key holds the
    /// separator of section names gives a name that cannot be decomposed.
    static int composeBarGratingName(const KorString& series, const KorString& bearingBarSpacing,
                                     const KorString& crossBarSpacing, const KorString& thickness,
                                     const KorString& width, const KorString& crossBar, KorString& name);
    /// The keys of the components from the name of a grating. -1, and the outputs unchanged, unless the name has
    /// exactly six fields; empty ones do not count. Spacings that begin with no number give 0, those out of range
    /// the nearest limit.
    static int decomposeBarGratingName(const KorString& name, KorString& series, int& bearingBarSpacing,
                                       int& crossBarSpacing, KorString& thickness, KorString& width,
                                       KorString& crossBar);

    /// The row of one combination, given by the keys of its components.
    static int getByKey(const KorString& series, int bearingBarSpacing, int crossBarSpacing,
                        const KorString& thickness, const KorString& width, const KorString& crossBar,
                        StructBarGrating& record)
    {
        return StructBarGratingMarshal::getByKey(series, bearingBarSpacing, crossBarSpacing, thickness, width,
                                                 crossBar, record);
    }
};
