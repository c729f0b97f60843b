#pragma once

#include <korodbc/catalogues/CatalogueReader.h>
#include <korodbc/records/configuration/ClassificationRecords.h>
#include <korodbc/records/detail/NumberingRecords.h>

/// Kinds of areas in the model.
class KorODBCAreaObjectType : public CatalogueReader<StructAreaObjectType> {
public:
    static int getAreaObjectType(const KorOdbcKey& key, StructAreaObjectType& record)
    {
        return byKey(key, record);
    }
    static int getAreaObjectTypeTable(KorArray<StructAreaObjectType>& records) { return table(records); }
};

/// Kinds of openings in areas.
class KorODBCOpeningObjectType : public CatalogueReader<StructOpeningObjectType> {
public:
    static int getOpeningObjectType(const KorOdbcKey& key, StructOpeningObjectType& record)
    {
        return byKey(key, record);
    }
    static int getOpeningObjectTypeTable(KorArray<StructOpeningObjectType>& records) { return table(records); }
};

/// Object types with their sub-types.
class KorODBCObjectStructure : public CatalogueReader<StructObjectStructure> {
public:
    static int getObjectStructure(const KorOdbcKey& key, StructObjectStructure& record)
    {
        return byKey(key, record);
    }
    static int getObjectStructureTable(KorArray<StructObjectStructure>& records) { return table(records); }
};

/// What the drawings of objects are made of.
class KorODBCObjectSubType : public CatalogueReader<StructObjectSubType> {
public:
    static int getObjectSubType(const KorOdbcKey& key, StructObjectSubType& record) { return byKey(key, record); }
    static int getObjectSubTypeKey(const KorString& runName, CatalogueKey auto& key)
    {
        return keyOf(runName, key);
    }
    static int getObjectSubTypeList(KorArray<KorString>& names) { return runNames(names); }
};

/// Layers of objects.
class KorOdbcObjectLayerAssignment : public CatalogueReader<StructObjectLayerAssignment> {
public:
    /// Every assignment of a layer to the objects of a table, sorted by table name and layer.
    static int fillTablesRelation(KorArray<StructObjectLayerAssignment>& relation)
    {
        return StructObjectLayerAssignmentMarshal::fillTablesRelation(relation);
    }
};
