#pragma once

#include <korodbc/catalogues/CatalogueReader.h>
#include <korodbc/records/configuration/ApplicationRecords.h>

/// Modules of analysis.
class KorODBCNSAModule : public CatalogueReader<StructNSAModule> {
public:
    static int getNSAModule(const KorOdbcKey& key, StructNSAModule& record) { return byKey(key, record); }
    static int getNSAModuleByInternalName(const KorString& internalName, StructNSAModule& record)
    {
        return StructNSAModuleMarshal::getByInternalName(internalName, record);
    }
    static int getNSAModuleTable(KorArray<StructNSAModule>& records) { return table(records); }
};

/// What modules of analysis check.
class KorODBCNSAModuleDefinition : public CatalogueReader<StructNSAModuleDefinition> {
public:
    static int getNSAModuleDefinition(const KorOdbcKey& key, StructNSAModuleDefinition& record)
    {
        return byKey(key, record);
    }
    static int getNSAModuleDefinitionTable(KorArray<StructNSAModuleDefinition>& records) { return table(records); }
};

/// Libraries of modules of analysis.
class KorODBCNSAModuleDllSigned : public CatalogueReader<StructNSAModuleDllSigned> {
public:
    static int getNSAModuleDllSigned(const KorOdbcKey& key, StructNSAModuleDllSigned& record)
    {
        return byKey(key, record);
    }
    static int getNSAModuleDllSignedTable(KorArray<StructNSAModuleDllSigned>& records) { return table(records); }
};
