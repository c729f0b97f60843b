#include "../src/foundation/TableCatalogue.h"
#include "records/Registry.h"
#include "support/DetailFixture.h"

#include <filesystem>
#include <unistd.h>

using namespace details;

namespace {

using D = KorDetailTableDependencies;
using E = KorODBCDetailStyleExports;
using M = KorOdbcMan;

class StyleExportsTest : public DetailTest {
protected:
    void SetUp() override
    {
        DetailTest::SetUp();
        m_folder = std::filesystem::temp_directory_path() / ("korodbc-Träger-" + std::to_string(::getpid()));
        std::filesystem::create_directories(m_folder);
    }
    void TearDown() override
    {
        D::pGetNameForRowFn = nullptr;
        DetailTest::TearDown();
        std::filesystem::remove_all(m_folder);
    }
    KorString file(const char* name = "it's [a] 100% 梁.db") const { return text((m_folder / name).string()); }
    int exportStyle(long key = 1, eDSN source = details) const
    {
        return E::exportDetail(E::kDetailStyle, KorOdbcKey(key), source, source == addin ? firstAddin : base,
                               file());
    }
    static int importStyle(long key = 101)
    {
        return E::importDetail(E::kDetailStyle, KorOdbcKey(key), addin, firstAddin, details, base);
    }
    /// English and localised message.
    static Texts messages()
    {
        KorString english, localised;
        E::GetErrorMessage(english, 1);
        E::GetErrorMessage(localised, 0);
        return {english.toUtf8(), localised.toUtf8()};
    }
    /// Looks into the exported file through the add-in's data source.
    template <class Look>
    void inFile(Look look)
    {
        KorString connection;
        ASSERT_EQ(KorDatabaseAccess::getConnectionString(addin, connection), 1);
        ASSERT_EQ(KorDatabaseAccess::setConnection(addin, file()), 1);
        look();
        ASSERT_EQ(KorDatabaseAccess::setConnectionString(addin, connection), 1);
        EXPECT_EQ(KorDatabaseAccess::detachDatabase(file()), 1);
    }
    static int commits(const StatementRecorder& statements, eDSN dsn)
    {
        int count = 0;
        for (const auto& event : statements.events())
            count += event.dsn == dsn && event.sql == KorString(L"COMMIT") ? 1 : 0;
        return count;
    }
    std::filesystem::path m_folder;
};

TEST_F(StyleExportsTest, ExportedTreeIsTheSame)
{
    const std::string source = styleTree(details, base, 1);
    EXPECT_EQ(source.find("missing"), std::string::npos);
    const std::string addinBefore = styleTree(addin, firstAddin, 101);
    ASSERT_EQ(exportStyle(), 1) << messages()[0];
    EXPECT_EQ(messages(), (Texts{"", ""}));
    EXPECT_EQ(E::isExportInProgress() + E::isTableBackupProcessCanceled(), 0);
    inFile([&] {
        EXPECT_EQ(styleTree(addin, firstAddin, 1), source); // owners kept
        EXPECT_EQ(rows(addin, "DetailStyle").size(), 1u);
        EXPECT_EQ(rows(addin, "Linetypes").size(), 1u); // no more than is reached
    });
    EXPECT_EQ(styleTree(addin, firstAddin, 101), addinBefore); // the data source is what it was
    // once more: appended under other names, shared rows reused
    StatementRecorder statements(true);
    ASSERT_EQ(exportStyle(), 1);
    EXPECT_EQ(commits(statements, addin), 1);
    EXPECT_EQ(commits(statements, details), 0);
    inFile([&] {
        EXPECT_EQ(styleTree(addin, firstAddin, 1), source);
        EXPECT_EQ(cell(addin, "DetailStyle", 2, 1), std::string("Copy of style ") + awkward);
        EXPECT_EQ(cell(addin, "DetailMasterTable", 2, 4), "2");
        EXPECT_EQ(rows(addin, "DetObjQualifierSet").size(), 4u);
        EXPECT_EQ(rows(addin, "DetObjQualifierSetGroup").size(), 1u);
        EXPECT_EQ(rows(addin, "DetBaseCategories").size(), 2u);
        EXPECT_EQ(rows(addin, "Linetypes").size(), 1u);
    });
    for (int t = 0; t < M::kTableTypes; ++t)
        EXPECT_EQ(M::getStatus(type(t), depth(0)), M::eNotModified);
}

TEST_F(StyleExportsTest, ImportedTreeIsTheSame)
{
    const std::string source = styleTree(addin, firstAddin, 101), own = styleTree(details, base, 1);
    {
        StatementRecorder statements(true);
        ASSERT_EQ(importStyle(), 1) << messages()[0];
        EXPECT_EQ(commits(statements, details), 1);
        EXPECT_EQ(commits(statements, addin), 0);
    }
    EXPECT_EQ(styleTree(details, base, 3), source);
    EXPECT_EQ(styleTree(details, base, 1), own);
    EXPECT_EQ(styleTree(addin, firstAddin, 101), source);
    EXPECT_EQ(cell(details, "DetObjQualifierSetGroup", 101, 1), "sets add-in"); // groups keep free keys
    EXPECT_EQ(cell(details, "DetObjQualifierSet", 3, 2), "101");
    // equal qualifier sets are taken again, different ones are not
    const struct {
        const char* change;
        std::size_t sets;
    } cases[] = {{"UPDATE DetObjQualifierSet SET RunName = RunName", 4},
                 {"UPDATE DetObjQualifierSet SET OwnerText = 'other' WHERE [Key] = 3", 5},
                 {"UPDATE DetObjQualifierSetItem SET ModelRole = 'other' WHERE IdDetObjQualifierSet = 4", 7}};
    for (const auto& [change, sets] : cases) {
        sql(details, {change});
        ASSERT_EQ(importStyle(), 1);
        EXPECT_EQ(rows(details, "DetObjQualifierSet").size(), sets) << change;
    }
    EXPECT_EQ(rows(details, "DetailMasterTable").back(), "5|Copy (2) style add-in|6|101|4|owner add-in");
}

TEST_F(StyleExportsTest, Failures)
{
    const auto start = [this] {
        TearDown();
        SetUp();
    };
    const Texts none = {"", ""};
    // a key without a master
    EXPECT_EQ(exportStyle(2), 0);
    EXPECT_EQ(messages()[0], "Failed to load dependencies for detail style with key 2!");
    EXPECT_NE(messages()[1].find('2'), std::string::npos);
    EXPECT_EQ(E::isExportInProgress(), 0);
    EXPECT_EQ(importStyle(7), 0);
    EXPECT_EQ(messages()[0], "Failed to load dependencies for detail style with key 7");
    EXPECT_EQ(E::isImportInProgress(), 0);
    // a file that cannot be made
    const KorString missing = file("no such folder/100%d.db");
    EXPECT_EQ(E::exportDetail(E::kDetailStyle, KorOdbcKey(1), details, base, missing), 0);
    EXPECT_EQ(messages()[0], "Failed to create file " + missing.toUtf8() + "!");
    EXPECT_NE(messages()[1].find(missing.toUtf8()), std::string::npos);
    EXPECT_EQ(E::isExportInProgress(), 1); // stays set on this path
    // writing fails, or the user has had enough
    for (const bool byUser : {false, true}) {
        start();
        D::pGetNameForRowFn = byUser ? [](M::eTableType t, M::eTableType, KorString&) {
            D::m_bDeepCopyCanceledByUser = t == M::kDetViewArrangeStrategy;
            return t == M::kDetViewArrangeStrategy ? -1 : 1;
        } : [](M::eTableType t, M::eTableType, KorString&) { return t == M::kDetViewArrangeStrategy ? -1 : 1; };
        for (const bool exported : {true, false}) {
            EXPECT_EQ(exported ? exportStyle() : importStyle(), 0);
            EXPECT_EQ(messages()[0], byUser ? "" : "Unable to write info to target database!");
            EXPECT_EQ(messages()[1].empty(), byUser);
            EXPECT_EQ(E::isExportInProgress() + E::isImportInProgress() + E::isTableBackupProcessCanceled(), 0);
        }
        D::pGetNameForRowFn = nullptr;
    }
    // what is neither a style nor a process
    AssertionRecorder assertions;
    EXPECT_EQ(E::exportDetail(static_cast<E::eType>(2), KorOdbcKey(1), details, base, file()), 1);
    EXPECT_EQ(assertions.take(), Texts{"KorODBCDetailStyleExports: false"});
    EXPECT_EQ(E::importDetail(static_cast<E::eType>(2), KorOdbcKey(1), addin, firstAddin, details, base), 1);
    EXPECT_EQ(messages(), none);
    EXPECT_TRUE(assertions.take().empty());
}

TEST_F(StyleExportsTest, OlderDatabases)
{
    for (const char* table : {"DetObjAnnotationGroup", "DetObjQualifierSetGroup", "DetViewDimRequestLinearGroup",
                              "DetViewDimStrategyNew", "DetViewDimStrategyItems"}) {
        SCOPED_TRACE(table);
        EXPECT_EQ(E::isDatabaseOlderThan5_1(details), 0);
        ASSERT_EQ(E::CreateDbFile(file()), 1);
        inFile([&] { sql(addin, {std::string("DROP TABLE ") + table}); });
        EXPECT_EQ(exportStyle(), 0);
        EXPECT_EQ(messages()[0], "Target database is older than version 5.1!");
        EXPECT_FALSE(messages()[1].empty());
        EXPECT_EQ(E::isExportInProgress(), 1);
        EXPECT_EQ(styleTree(addin, firstAddin, 101).find("(no master)"), std::string::npos); // connection restored
        EXPECT_EQ(KorDatabaseAccess::detachDatabase(file()), 1);                             // was not detached
        std::filesystem::remove(file().toUtf8());
        sql(details, {std::string("ALTER TABLE ") + table + " RENAME TO Hidden"});
        EXPECT_EQ(exportStyle(), 0);
        EXPECT_EQ(messages()[0], "Source database is older than version 5.1!");
        EXPECT_EQ(E::FileExists(file()), 0);
        EXPECT_EQ(importStyle(), 0);
        EXPECT_EQ(messages()[0], "Target database is older than version 5.1!");
        EXPECT_EQ(rows(details, "DetailStyle").size(), 2u);
        sql(details, {std::string("ALTER TABLE Hidden RENAME TO ") + table});
        sql(addin, {std::string("ALTER TABLE ") + table + " RENAME TO Hidden"});
        EXPECT_EQ(importStyle(), 0);
        EXPECT_EQ(messages()[0], "Source database is older than version 5.1!");
        sql(addin, {std::string("ALTER TABLE Hidden RENAME TO ") + table});
    }
}

TEST_F(StyleExportsTest, TargetsFilesAndTableIds)
{
    for (const eDSN source : {details, addin, configuration, country}) {
        eDSN target;
        eIndex index;
        KorString connection;
        EXPECT_EQ(E::GetDSNAndIndexToUse(source, target, index, connection), 1);
        EXPECT_EQ(target, source == details ? addin : details);
        EXPECT_EQ(index, source == details ? firstAddin : base);
        EXPECT_FALSE(connection.isEmpty());
    }
    EXPECT_EQ(exportStyle(101, addin), 1); // from the add-in through the base's data source
    inFile([&] { EXPECT_EQ(cell(addin, "DetailStyle", 1, 1), "style add-in"); });
    EXPECT_EQ(rows(details, "DetailStyle").size(), 2u);
    EXPECT_EQ(E::FileExists(file()), 1);
    EXPECT_EQ(E::FileExists(text(m_folder.string())), 0);
    EXPECT_EQ(E::CreateDbFile(file()), 0); // is there
}

TEST_F(StyleExportsTest, TableIdsNameTheTablesOfTheRecords)
{
    int known = 0;
    for (const auto describe : records::all()) {
        KorString record = KorString::fromUtf8(describe().record);
        const int id = E::getTableIndex(record);
        if (id < 0)
            continue;
        ++known;
        EXPECT_EQ(korodbc::tableNameOfId(static_cast<unsigned>(id)).toUtf8(), describe().table);
    }
    EXPECT_EQ(known, 19);
    const struct {
        const wchar_t* name;
        int id;
    } cases[] = {{L"StructLineType", 172},
                 {L"StructLinetypes", -1},
                 {L"StructDetObjAppearance", -1},
                 {L"StructDetHatchSettings", -1},
                 {L"StructDetArrangerStrategy", -1},
                 {L"structdetailstyle", -1},
                 {L"", -1}};
    for (const auto& [name, id] : cases) {
        KorString record(name);
        EXPECT_EQ(E::getTableIndex(record), id) << record.toUtf8();
    }
}

TEST_F(StyleExportsTest, AllTablesAreConfirmedTogether)
{
    Texts expected;
    for (const int t : {15, 0, 10, 11, 23, 24, 9, 26, 16, 28, 25, 4,  1,  14, 13, 27,
                        29, 7, 8,  2,  3,  22, 5, 30, 6,  32, 33, 41, 34, 40, 39, 37}) {
        KorString name;
        M::getTableName(type(t), name);
        expected.push_back("DROP TABLE [" + name.toUtf8() + "_VELCopy]");
    }
    for (int t = 0; t < M::kTableTypes; ++t)
        M::setStatus(type(t), M::eModified, depth(0));
    {
        StatementRecorder statements;
        EXPECT_EQ(E::setStatusOnOK(), 1);
        EXPECT_EQ(statements.take(), expected);
    }
    for (int t = 0; t < M::kTableTypes; ++t)
        M::setStatus(type(t), M::eModified, depth(0));
    StatementRecorder statements(true);
    EXPECT_EQ(E::setStatusOnOK(), 1);
    EXPECT_EQ(commits(statements, details), 1);
}

/// Records that were read once cost nothing to read again, also after a reset without changes.
TEST_F(StyleExportsTest, CachedLookUps)
{
    const auto look = [] {
        StructDetailStyle style;
        StructDetObjReprMap map;
        KorArray<KorString> names;
        EXPECT_EQ(StructDetailStyleMarshal::getStructByKey(1, style), 1);
        EXPECT_EQ(StructDetailStyleMarshal::getStructByRunName(style.runName, style), 1);
        EXPECT_EQ(StructDetObjReprMapMarshal::getStructByKey(1, map), 1);
        EXPECT_EQ(StructDetailStyleMarshal::getOrderedRunNameList(names), 1);
        EXPECT_EQ(map.items.length(), 2);
    };
    look();
    StatementRecorder statements(true);
    look();
    EXPECT_EQ(statements.take(), Texts{});
    E::deleteCache(0);
    look();
    for (const std::string& statement : statements.take())
        EXPECT_EQ(statement, "PRAGMA data_version"); // only whether another process wrote
}

} // namespace
