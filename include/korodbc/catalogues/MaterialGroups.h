#pragma once

#include <korodbc/catalogues/CatalogueReader.h>
#include <korodbc/records/configuration/ClassificationRecords.h>

/// Groups of materials.
class KorODBCMaterialGroups : public CatalogueReader<StructMaterialGroups> {
public:
    static int getMaterialGroupKey(const KorString& runName, CatalogueKey auto& key)
    {
        return keyOf(runName, key);
    }
    static int getMaterialGroupList(KorArray<KorString>& names) { return orderedRunNames(names); }
    /// -1 for an unknown key.
    static int getMaterialGroupRunName(const KorOdbcKey& key, KorString& runName)
    {
        return fieldByKey<&StructMaterialGroups::runName>(key, runName);
    }
    static int getMaterialGroups(const KorOdbcKey& key, StructMaterialGroups& record)
    {
        return byKey(key, record);
    }
    static int getMaterialGroupsTable(KorArray<StructMaterialGroups>& records) { return table(records); }
};
