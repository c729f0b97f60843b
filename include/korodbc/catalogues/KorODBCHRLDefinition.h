#pragma once

#include <korodbc/catalogues/CatalogueReader.h>
#include <korodbc/records/configuration/JointRecords.h>

/// Joints of the rule library, which the base definitions hold and the add-in may override.
class KorODBCHRLDefinition : public CatalogueReader<StructHRLDefinition> {
public:
    // In one data source and slot

    static int getByName(const KorString& name, StructHRLDefinition& record, eIndex index, eDSN dsn)
    {
        return within(dsn, index, [&] { return byRunName(name, record); });
    }
    static int getByInternalName(const KorString& internalName, StructHRLDefinition& record, eIndex index,
                                 eDSN dsn)
    {
        return within(dsn, index,
                      [&] { return StructHRLDefinitionMarshal::getByInternalName(internalName, record); });
    }
    static int getByClassID(const KorString& classID, StructHRLDefinition& record, eIndex index, eDSN dsn)
    {
        return within(dsn, index, [&] { return StructHRLDefinitionMarshal::getByClassID(classID, record); });
    }
    static int getByCategory(long category, KorArray<StructHRLDefinition>& records, eIndex index, eDSN dsn)
    {
        return within(dsn, index,
                      [&] { return StructHRLDefinitionMarshal::getArrayByCategory(category, records); });
    }

    // In the add-in and, when that does not give 1, in the base definitions

    static int getHRLDefinitionByName(const KorString& name, StructHRLDefinition& record)
    {
        return addInFirst(KorDSNDefinitions::kDefinitions, [&] { return byRunName(name, record); });
    }
    static int getHRLDefinitionByInternalName(const KorString& internalName, StructHRLDefinition& record)
    {
        return addInFirst(KorDSNDefinitions::kDefinitions,
                          [&] { return StructHRLDefinitionMarshal::getByInternalName(internalName, record); });
    }
    static int getHRLDefinitionByClassID(const KorString& classID, StructHRLDefinition& record)
    {
        return addInFirst(KorDSNDefinitions::kDefinitions,
                          [&] { return StructHRLDefinitionMarshal::getByClassID(classID, record); });
    }
    static int getHRLDefinitionByCategory(long category, KorArray<StructHRLDefinition>& records)
    {
        return addInFirst(KorDSNDefinitions::kDefinitions,
                          [&] { return StructHRLDefinitionMarshal::getArrayByCategory(category, records); });
    }

    static int getRunnameList(KorArray<KorString>& names) { return runNames(names); }
};
