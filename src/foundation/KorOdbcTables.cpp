#include <korodbc/foundation/KorOdbcTables.h>
#include <korodbc/records/configuration/AutoConnectionRecords.h>
#include <korodbc/records/configuration/ExchangeRecords.h>
#include <korodbc/records/project/ProjectRecords.h>
#include <korodbc/repository/KorDatabaseAccess.h>
#include <korodbc/repository/KRRepositoryProxyMan.h>

namespace {

template <class... Marshals>
void resetCaches()
{
    (Marshals::resetTableCache(0), ...);
}

} // namespace

int kor_odbc_getDsnTableName(const KorString& name, KorString& result)
{
    KorString physical;
    eDSN dsn = KorDSNDefinitions::kUnresolved;
    KorDatabaseAccess::getDSNandTableName(name, physical, dsn);
    if (dsn >= KorDSNDefinitions::kNumberOfDataSources)
        return 0;
    // the logical name, whatever the table is called in its database
    result = KorDSNDefinitions::m_DataSourceNames[dsn] + L"." + name;
    return 1;
}

int kor_odbc_getTableName(const KorString& name, KorString& result)
{
    result = KorDatabaseAccess::getTableName(name);
    return 1;
}

void kor_odbc_resetAllTables() { KRRepositoryProxyMan::resetTableCache(0); }

void kor_odbc_resetAutoConnectionTables()
{
    resetCaches<StructAutoConnectionCategoriesMarshal, StructAutoConnectionCategoriesItemsMarshal,
                StructAutoConnectionCategoriesItemsDescMarshal, StructAutoConnectionConfigMarshal,
                StructAutoFilteringConfigMarshal, StructAutoConnectionInputObjectCondItemsMarshal,
                StructAutoConnectionInputObjectCondSetMarshal, StructAutoConnectionInputObjectsMarshal,
                StructAutoConnectionInputSetMarshal, StructAutoConnectionModelRolesMarshal,
                StructAutoConnectionModelRolesItemsMarshal, StructAutoConnectionObjectsOrderForJointsMarshal,
                StructAutoConnectionRuleSettingsGeneralMarshal, StructAutoConnectionRuleSettingsProfilesMarshal,
                StructAutoConnectionRuleSettingsCategoriesMarshal,
                StructAutoConnectionRuleSettingsConfigurationsMarshal, StructAutoConnectionProfilesMarshal>();
}

void kor_odbc_resetNecessaryViewsTables() { resetCaches<StructNecessaryViewsConfigurationMarshal>(); }

void kor_odbc_resetBOMTables()
{
    resetCaches<StructProjModelExtractMarshal, StructProjReportTypeMarshal, StructProjTemplateMarshal,
                StructProjXMLDataMarshal>();
}

void kor_odbc_freeDSTVNamesTable() { resetCaches<StructDSTVNamesMarshal>(); }

void kor_odbc_DSTVstatic_freeTables()
{
    resetCaches<StructDSTVStaticInB01Marshal, StructDSTVStaticInB02Marshal, StructDSTVStaticInB03Marshal,
                StructDSTVStaticInB04Marshal>();
}
