#pragma once

#include <korodbc/catalogues/CatalogueReader.h>
#include <korodbc/records/configuration/ConnectorRecords.h>

/// Shear studs.
class KorODBCConnectors : public CatalogueReader<StructConnectorStandard, StructMaterialConnector,
                                                 StructConnectorDiameter, StructConnectorDistance> {
public:
    static int getDiameter(const KorOdbcKey& key, StructConnectorDiameter& record) { return byKey(key, record); }
    static int getDiameterList(KorArray<KorString>& names)
    {
        return orderedRunNames<StructConnectorDiameter>(names);
    }
    static int getDiameters(KorArray<StructConnectorDiameter>& records) { return table(records); }
    static int getDistances(KorArray<StructConnectorDistance>& records) { return table(records); }
    static int getMaterialByDescription(const KorString& runName, StructMaterialConnector& record)
    {
        return byRunName(runName, record);
    }
    static int getMaterialByKey(const KorOdbcKey& key, StructMaterialConnector& record)
    {
        return byKey(key, record);
    }
    static int getMaterialList(KorArray<KorString>& names)
    {
        return orderedRunNames<StructMaterialConnector>(names);
    }
    /// Run name of a standard.
    static int getStandardDescription(const KorString& key, KorString& runName)
    {
        return RecordMarshal<StructConnectorStandard>::getRunNameByKey(key, runName);
    }
    static int getStandardKey(const KorString& runName, CatalogueKey auto& key) { return keyOf(runName, key); }
    static int getStandardsList(KorArray<KorString>& names) { return orderedRunNames(names); }
};

/// Shear studs that exist.
class KorODBCConnectorRelations : public CatalogueReader<StructConnectorRelations> {
public:
    static int getConnectorRelations(const KorOdbcKey& key, StructConnectorRelations& record)
    {
        return byKey(key, record);
    }
};
