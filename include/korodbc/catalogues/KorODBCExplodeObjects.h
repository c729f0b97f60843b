#pragma once

#include <korodbc/catalogues/CatalogueReader.h>
#include <korodbc/records/detail/NumberingRecords.h>

/// What objects become when they are exploded: the user's rows go before those of the configuration. The order
/// field puts lists in order; a `sorted` other than 0 asks for that.
class KorODBCExplodeObjects : public CatalogueReader<StructExplodeObjects> {
public:
    static int getExplodeObjects(const KorString& name, StructExplodeObjects& record)
    {
        return addInFirst(KorDSNDefinitions::kConfiguration, [&] { return byKey(name, record); });
    }
    static int getExplodeObjects(const KorString& name, StructExplodeObjects& record, eDSN dsn, eIndex index)
    {
        return within(dsn, index, [&] { return byKey(name, record); });
    }
    /// The rows of both: those of the configuration, replaced by the user's of the same name; a user's table with
    /// as many rows or more is taken as it is.
    static int getExplodeObjectsTable(KorArray<StructExplodeObjects>& records, int sorted);
    static int getExplodeObjectsTable(KorArray<StructExplodeObjects>& records, eDSN dsn, eIndex index, int sorted)
    {
        return within(dsn, index,
                      [&] { return StructExplodeObjectsMarshal::getExplodeObjectsTable(records, sorted); });
    }
    /// Adds a user's row under that name, or under a new one when it is empty. The record's order is not stored.
    /// 1; 0 when there is such a row, which stays as it is; -1, with nothing added, when that fails.
    static int setExplodeObjects(KorString name, const StructExplodeObjects& record);
    /// Does that for each record under its own name, in order. 1, or -1 with none added.
    static int setExplodeObjectsTable(const KorArray<StructExplodeObjects>& records);
    /// Compares two StructExplodeObjects by their order: -1, 0, 1.
    static int compareExplodeObjects(const void* left, const void* right);
};

/// The choices of explode settings.
class KorODBCExplodeProfile : public CatalogueReader<StructExplodeProfile> {
public:
    static int getExplodeProfile(const KorOdbcKey& key, StructExplodeProfile& record)
    {
        return byKey(key, record);
    }
    static int getExplodeProfileKey(const KorString& runName, long& key) { return keyOf(runName, key); }
    static int getExplodeProfileTable(KorArray<StructExplodeProfile>& records) { return table(records); }
};

/// Layer, colour and line type of what objects are exploded into.
class KorODBCExplodeSettings : public CatalogueReader<StructExplodeSettings> {
public:
    static int getExplodeSettings(const KorOdbcKey& key, StructExplodeSettings& record)
    {
        return byKey(key, record);
    }
    static int getExplodeSettingsTable(KorArray<StructExplodeSettings>& records) { return table(records); }

    /// The settings of a model type's objects and a sub-type, of the selected profiles: the user's, else those of
    /// the configuration. 1, and the manager's database is then the one that has them; 0, with the configuration
    /// as the manager's database, when there are none: `record` then holds the fallback, a layer and a colour to
    /// recognise it by, without a key.
    static int getExplodeSettingsForObjectStructure(long modelType, long subType, StructExplodeSettings& record);

    /// Whether explode settings are used: 1 or 0, -1 when nothing says.
    static int getUsedExplodeSettingsDefault();
    /// 1 when stored.
    static int setUsedExplodeSettingsDefault(int used);
};
