#pragma once

#include <korodbc/catalogues/CatalogueReader.h>
#include <korodbc/records/configuration/ClassificationRecords.h>
#include <korodbc/records/configuration/DynamicSectionRecords.h>
#include <korodbc/records/detail/NumberingRecords.h>

/// Shapes of sections that are made from dimensions.
class ProfileDynamicSubtype : public CatalogueReader<StructProfileDynamicSubtype> {
public:
    static int getProfileDynamicSubtype(const KorOdbcKey& key, StructProfileDynamicSubtype& record)
    {
        return byKey(key, record);
    }
    static int getProfileDynamicSubtypeRunNameList(KorArray<KorString>& names) { return orderedRunNames(names); }
};

/// Sections that are made from dimensions, and the dimensions that their shapes take.
class ProfileDynamic : public CatalogueReader<StructProfileDynamic, StructProfileDynamicClassDesc> {
public:
    static int getProfileDynamic(const KorOdbcKey& key, StructProfileDynamic& record)
    {
        return byKey(key, record);
    }
    static int getProfileDynamic(const KorOdbcKey& key, StructProfileDynamicClassDesc& record)
    {
        return byKey(key, record);
    }
    static int getProfileDynamicRunNameList(KorArray<KorString>& names) { return runNames(names); }
};

/// Ranges of cold-rolled sections.
class KorColdRolledOwner : public CatalogueReader<StructColdRolledOwner> {
public:
    static int getColdRolledOwnerTable(KorArray<StructColdRolledOwner>& records) { return table(records); }
};

/// Run names of section subtypes.
class KorODBCProfileShapeRunName : public CatalogueReader<StructProfileShapeRunName> {
public:
    static int getProfileShapeRunName(const KorOdbcKey& key, StructProfileShapeRunName& record)
    {
        return byKey(key, record);
    }
    /// The record of a section subtype.
    static int getProfileShapeRunNameForProfSubtype(const KorString& profileSubtype,
                                                    StructProfileShapeRunName& record)
    {
        return StructProfileShapeRunNameMarshal::getByProfileSubtype(profileSubtype, record);
    }
    static int getProfileShapeRunNameKey(const KorString& runName, CatalogueKey auto& key)
    {
        return keyOf(runName, key);
    }
    /// Section subtype of a run name; -1 for an unknown one.
    static int getProfileShapeRunNameProfSubtype(const KorString& runName, KorString& profileSubtype)
    {
        return fieldByRunName<&StructProfileShapeRunName::profileSubtype>(runName, profileSubtype);
    }
    static int getProfileShapeRunNameTable(KorArray<StructProfileShapeRunName>& records) { return table(records); }
};
