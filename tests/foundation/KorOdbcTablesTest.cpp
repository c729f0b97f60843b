#include "support/RepositoryFixture.h"
#include "support/RepositoryFolder.h"

#include <korodbc/catalogues/KorOdbcGlobals.h>
#include <korodbc/foundation/KorOdbcTables.h>
#include <korodbc/records/configuration/AutoConnectionRecords.h>
#include <korodbc/records/configuration/ExchangeRecords.h>
#include <korodbc/records/project/ProjectRecords.h>

namespace {

class KorOdbcTablesTest : public RepositoryTest {};

TEST_F(KorOdbcTablesTest, NamesTableWithItsDataSource)
{
    sql(configuration, {"INSERT INTO TableAliases VALUES (1, 'Sections', 'ProfileMasterTable')",
                        "CREATE TABLE [it's 100% [x 🔩] (Key INTEGER PRIMARY KEY)"});
    struct Case {
        const wchar_t* name;
        int result;
        const wchar_t* text;
        const wchar_t* physical;
    };
    for (const Case& one : {
             Case{L"Material", 1, L"Configuration.Material", L"Material"},
             {L"ProfileMasterTable", 1, L"Profiles.ProfileMasterTable", L"ProfileMasterTable"},
             {L"it's 100% [x 🔩", 1, L"Configuration.it's 100% [x 🔩", L"it's 100% [x 🔩"},
             {L"Sections", 0, L"before", L"ProfileMasterTable"}, // an alias has to be resolved first
             {L"NoSuchTable", 0, L"before", L"NoSuchTable"},
             {L"", 0, L"before", L""},
         }) {
        KorString text(L"before"), physical(L"before");
        EXPECT_EQ(kor_odbc_getDsnTableName(one.name, text), one.result);
        EXPECT_EQ(text, KorString(one.text));
        EXPECT_EQ(kor_odbc_getTableName(one.name, physical), 1);
        EXPECT_EQ(physical, KorString(one.physical));
    }
}

template <class T>
int records()
{
    KorArray<T> records;
    return RecordMarshal<T>::getTable(records) == 1 ? records.length() : -1;
}

TEST(KorOdbcTablesResetTest, ShowsWhatAnotherProcessWrote)
{
    const RepositoryFolder repository;
    struct Case {
        const char* what;
        void (*reset)();
        int (*count)();
        eDSN dsn;
        const char* file;
        const char* insert;
    };
    for (const Case& one : {
             Case{"all", kor_odbc_resetAllTables, records<StructDevelopersID>, KorDSNDefinitions::kConfiguration,
                  "configuration.db", "INSERT INTO DevelopersIDs(Key) VALUES (1)"},
             {"auto connection", kor_odbc_resetAutoConnectionTables, records<StructAutoConnectionCategories>,
              KorDSNDefinitions::kConfiguration, "configuration.db",
              "INSERT INTO AutoConnectionCategories(Key) VALUES (1)"},
             {"necessary views", kor_odbc_resetNecessaryViewsTables, records<StructNecessaryViewsConfiguration>,
              KorDSNDefinitions::kDetails, "details.db",
              "INSERT INTO NecessaryViewsConfiguration(Key) VALUES (1)"},
             {"bill of material", kor_odbc_resetBOMTables, records<StructProjReportType>,
              KorDSNDefinitions::kProjectAdvance, "projectadvance.db", "INSERT INTO ReportTypes(Key) VALUES (1)"},
             {"names", kor_odbc_freeDSTVNamesTable, records<StructDSTVNames>, KorDSNDefinitions::kConfiguration,
              "configuration.db", "INSERT INTO DSTVNames(Key) VALUES (1)"},
             {"static analysis", kor_odbc_DSTVstatic_freeTables, records<StructDSTVStaticInB04>,
              KorDSNDefinitions::kConfiguration, "configuration.db",
              "INSERT INTO DSTV_Static_In_B04(Key) VALUES (1)"},
         }) {
        SCOPED_TRACE(one.what);
        const KorDSNRequest request(one.dsn, KorDSNDefinitions::kBase);
        EXPECT_EQ(one.count(), 0);
        repository.executeOutside(one.file, one.insert);
        EXPECT_EQ(one.count(), 0); // cached
        one.reset();
        EXPECT_EQ(one.count(), 1);
    }
}

TEST(KorOdbcTablesResetTest, ShowsTablesAndAliasesThatAnotherProcessMade)
{
    const RepositoryFolder repository;
    KorString text(L"before"), physical;
    EXPECT_EQ(kor_odbc_getTableName(L"Mine", physical), 1);
    EXPECT_EQ(physical, KorString(L"Mine"));
    EXPECT_EQ(kor_odbc_getDsnTableName(L"Real", text), 0);
    repository.executeOutside("configuration.db", "CREATE TABLE [Real] (Key INTEGER PRIMARY KEY);"
                                                  "INSERT INTO TableAliases VALUES (1, 'Mine', 'Real')");
    kor_odbc_resetAllTables();
    EXPECT_EQ(kor_odbc_getTableName(L"Mine", physical), 1);
    EXPECT_EQ(physical, KorString(L"Real"));
    EXPECT_EQ(kor_odbc_getDsnTableName(L"Real", text), 1);
    EXPECT_EQ(text, KorString(L"Configuration.Real"));
}

} // namespace
