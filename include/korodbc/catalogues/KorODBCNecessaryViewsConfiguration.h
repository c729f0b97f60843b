#pragma once

#include <korodbc/catalogues/CatalogueReader.h>
#include <korodbc/records/configuration/ExchangeRecords.h>

/// A rule that applies to a view of a beam, as far as its qualifier set goes, which the caller evaluates.
struct StructResultRules {
    int rule = 0; // StructNecessaryViewsConfiguration::eRule
    int detObjQualifierSet = -1;
    bool notDetObjQualifierSet = false; // the rule is for objects that the set does not hold
};

/// The rules that say which views a beam needs. They stand in one of several data sources, as the setting
/// "Settings\NecessaryViewsConfig\DefaultDataSource" says: "/kAddin", the add-in; "Norway_0/kDetailsCurrent", the
/// country add-in of that name and number, counted from 0 in the order of their slots; anything else, the base
/// details. Reading the rules of a country add-in makes it the current one. Reads return 1 or 0; they return 0
/// when the setting names a country add-in that is not installed.
class KorODBCNecessaryViewsConfiguration : public CatalogueReader<StructNecessaryViewsConfiguration> {
public:
    KorODBCNecessaryViewsConfiguration() = default;
    KorODBCNecessaryViewsConfiguration(const KorODBCNecessaryViewsConfiguration&) = default;
    KorODBCNecessaryViewsConfiguration& operator=(const KorODBCNecessaryViewsConfiguration&) = default;
    virtual ~KorODBCNecessaryViewsConfiguration() = default;

    static int getNecessaryViewsConfiguration(long key, StructNecessaryViewsConfiguration& record);
    static int getAllRecords(KorArray<StructNecessaryViewsConfiguration>& records);
    /// The rules for a view type and a beam type, in table order. `rules` is emptied first, whatever the result.
    static int getApplicableRules(long viewType, long beamType, KorArray<StructResultRules>& rules);
    /// True when the record is for that view type and beam type.
    static bool isApplicable(const StructNecessaryViewsConfiguration& record, long viewType, long beamType);

    /// Where the rules are read, and what is to be the manager's database after reading from a country add-in. For
    /// one of these `index` is always 3, the current country add-in, which this makes the named one; `savedIndex`
    /// is its slot, the one to request. 1; 0, with an assertion and the current data source, when the named add-in
    /// is not installed.
    static int getODBCDSNValue(eDSN& dsn, eIndex& index, eIndex& savedIndex, eDSN& savedDsn);
    /// Key of the setting that chooses.
    static KorString settingKey();
    /// Makes that the manager's database.
    static void restoreODBCDBSValue(eDSN dsn, eIndex index);

    /// True when the record's value is the wanted one or stands for every value, -1; with `negate` other than 0,
    /// when it is neither.
    static bool compareFieldOk(long recordValue, long wanted, int negate)
    {
        return (recordValue == wanted || recordValue == -1) == (negate == 0);
    }
};
