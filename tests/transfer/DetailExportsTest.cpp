#include "../src/foundation/TableCatalogue.h"
#include "TransferFixture.h"

#include <korodbc/records/Registry.h>

#include <functional>

using namespace details;

namespace {

struct ThrowingSink : korodbc::host::ProgressSink {
    void title(const KorString&) override { throw 4; }
    void percentage(int, int) override { throw 5; }
    void reset() override { throw 6; }
};

class DetailExportsTest : public TransferTest {
protected:
    /// English and localised message.
    static Texts messages()
    {
        KorString english, localised;
        E::GetErrorMessage(english, 1);
        E::GetErrorMessage(localised, 0);
        return {english.toUtf8(), localised.toUtf8()};
    }
    static int flags()
    {
        return E::isExportInProgress() + E::isImportInProgress() + E::isTableBackupProcessCanceled();
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
};

/// What arrives is what was sent, owners kept and no more than is reached; styles of a process under their own
/// keys or as new rows.
TEST_F(DetailExportsTest, ExportedTreeIsTheSame)
{
    const struct {
        E::eType what;
        eDSN source;
        int withStyles;
        std::vector<int> styles;
    } cases[] = {{E::kDetailStyle, details, 0, {}},
                 {E::kDetailStyle, addin, 0, {}},
                 {E::kDetailProcess, details, 0, {1, 2}},
                 {E::kDetailProcess, details, 1, {1, 2}},
                 {E::kDetailProcess, addin, 0, {101, 102}}};
    // rows in the file after one and after two exports of a style, a process without and one with its styles
    const char* const expected[3][2] = {
        {"0 0 0 0 0 0 0 0 0 2 1 1 1 2 2 2 1 ", "0 0 0 0 0 0 0 0 0 4 1 2 2 4 4 2 1 "},
        {"1 2 2 1 1 2 1 1 2 2 1 0 0 0 0 0 0 ", "2 4 2 2 2 4 2 2 4 4 1 0 0 0 0 0 0 "},
        {"1 2 2 1 1 2 1 1 2 2 1 2 1 2 2 2 1 ", "2 4 2 2 2 4 2 2 4 4 1 4 2 4 4 2 1 "}};
    for (const auto& entry : cases) {
        const auto& what = entry.what;
        const auto& source = entry.source;
        const auto& withStyles = entry.withStyles;
        const auto& styles = entry.styles;
        const bool process = what == E::kDetailProcess;
        const char* const* rows = expected[process ? 1 + withStyles : 0];
        const std::string once = rows[0], twice = rows[1];
        SCOPED_TRACE(once + std::to_string(source));
        P::m_bDeepCopyWithDetailStyles = withStyles;
        const int key = source == addin ? 101 : 1;
        const std::string sent = tree(what, source, key, withStyles != 0),
                          style = tree(E::kDetailStyle, source, key);
        ASSERT_EQ(sent.find("missing"), std::string::npos);
        const std::string own = counts(details), inAddin = counts(addin);
        ASSERT_EQ(exportDetail(what, key, source), 1) << messages()[0];
        EXPECT_EQ(messages(), (Texts{"", ""}));
        EXPECT_EQ(flags(), 0);
        inFile([&] {
            EXPECT_EQ(tree(what, addin, 1, withStyles != 0), sent);
            EXPECT_EQ(counts(addin), once);
            EXPECT_EQ(process ? stylesOfMap(addin, 1) : styles, styles);
            EXPECT_EQ(tree(E::kDetailStyle, addin, 1), process && withStyles == 0 ? "(no master)" : style);
        });
        // once more: appended under other names, what is shared is taken again
        {
            StatementRecorder statements(true);
            ASSERT_EQ(exportDetail(what, key, source), 1);
            EXPECT_EQ(commits(statements, source == addin ? details : addin), 1);
            EXPECT_EQ(commits(statements, source), 0);
        }
        inFile([&] {
            EXPECT_EQ(tree(what, addin, 1, withStyles != 0), sent);
            EXPECT_EQ(counts(addin), twice);
            if (process) {
                EXPECT_EQ(cell(addin, "DetailProcessDefinition", 2, 1).find("Copy of process"), 0u);
                EXPECT_EQ(cell(addin, "DetailProcessStep", 3, 2), cell(addin, "DetailProcessStep", 1, 2));
                EXPECT_EQ(stylesOfMap(addin, 2), withStyles != 0 ? std::vector<int>({3, 4}) : styles);
            } else {
                EXPECT_EQ(cell(addin, "DetailStyle", 2, 1).find("Copy of style"), 0u);
                EXPECT_EQ(cell(addin, "DetailMasterTable", 2, 4), "2");
            }
        });
        EXPECT_EQ(tree(what, source, key, withStyles != 0), sent);
        EXPECT_EQ(counts(details), own); // the data sources are what they were
        EXPECT_EQ(counts(addin), inAddin);
        for (int t = 0; t < M::kTableTypes; ++t)
            EXPECT_EQ(M::getStatus(type(t), depth(0)), M::eNotModified);
        again();
    }
}

TEST_F(DetailExportsTest, ImportedTreeIsTheSame)
{
    const struct {
        E::eType what;
        int withStyles;
        std::vector<int> styles;
        const char *once, *twice; // rows afterwards: equal qualifier sets are taken again
    } cases[] = {
        {E::kDetailStyle, 0, {}, "1 2 2 1 1 2 1 1 2 4 2 3 2 4 4 4 3 ", "1 2 2 1 1 2 1 1 2 4 2 4 3 6 6 4 3 "},
        {E::kDetailProcess, 0, {101, 102}, "2 4 4 2 2 4 2 2 4 4 2 2 1 2 2 2 2 ", "3 6 4 3 3 6 3 3 6 4 2 "},
        {E::kDetailProcess, 1, {3, 4}, "2 4 4 2 2 4 2 2 4 4 2 4 2 4 4 4 3 ", "3 6 4 3 3 6 3 3 6 4 2 "}};
    for (const auto& [what, withStyles, styles, once, twice] : cases) {
        SCOPED_TRACE(once);
        P::m_bDeepCopyWithDetailStyles = withStyles;
        const bool process = what == E::kDetailProcess, all = withStyles != 0;
        const std::string sent = tree(what, addin, 101, all), style = tree(E::kDetailStyle, addin, 101);
        const std::string own = tree(E::kDetailProcess, details, 1), ownStyle = tree(E::kDetailStyle, details, 1);
        {
            StatementRecorder statements(true);
            ASSERT_EQ(importDetail(what), 1) << messages()[0];
            EXPECT_EQ(commits(statements, details), 1);
            EXPECT_EQ(commits(statements, addin), 0);
        }
        EXPECT_EQ(flags(), 0);
        EXPECT_EQ(tree(what, details, process ? 2 : 3, all), sent);
        EXPECT_EQ(tree(E::kDetailStyle, details, 3), process && !all ? "(no master)" : style);
        EXPECT_EQ(tree(what, addin, 101, all), sent);
        EXPECT_EQ(tree(E::kDetailProcess, details, 1), own);
        EXPECT_EQ(tree(E::kDetailStyle, details, 1), ownStyle);
        EXPECT_EQ(counts(details), once);
        EXPECT_EQ(cell(details, "DetObjQualifierSetGroup", 101, 1), "sets add-in"); // groups keep free keys
        EXPECT_EQ(cell(details, "DetObjQualifierSet", 3, 2), "101");
        if (process) {
            EXPECT_EQ(stylesOfMap(details, 2), styles);
            EXPECT_EQ(cell(details, "DetailProcessCategories", 101, 1), "workshop add-in"); // and categories
            // what was newly written, as it stands in the target
            EXPECT_EQ(lengths(P::m_DetailProcessStepsResultedFromDeepCopy,
                              P::m_DetailStyleMapsResultedFromDeepCopy, D::m_QualifierSetsResultedFromDeepCopy),
                      "2 1 2 ");
            EXPECT_EQ(P::m_DetailProcessStepsResultedFromDeepCopy[1].key, 4);
            EXPECT_EQ(P::m_DetailProcessStepsResultedFromDeepCopy[1].category, 102);
            EXPECT_EQ(P::m_DetailStyleMapsResultedFromDeepCopy[0].key, 2);
            EXPECT_EQ(P::m_DetailStyleMapsResultedFromDeepCopy[0].items[1].objQualifierSet, 4);
        }
        ASSERT_EQ(importDetail(what), 1);
        EXPECT_TRUE(counts(details).starts_with(twice)) << counts(details);
        EXPECT_EQ(D::m_QualifierSetsResultedFromDeepCopy.length(), 0);
        if (process) {
            EXPECT_EQ(P::m_DetailProcessStepsResultedFromDeepCopy[0].key, 5);
            EXPECT_EQ(P::m_DetailProcessStepsResultedFromDeepCopy[0].category, 101);
        } else {
            EXPECT_EQ(rows(details, "DetailMasterTable").back(), "3|Copy of style add-in|4|101|2|owner add-in");
        }
        again();
    }
}

TEST_F(DetailExportsTest, WhatIsThereIsTakenAgain)
{
    // different qualifier sets are not
    ASSERT_EQ(importDetail(E::kDetailStyle), 1);
    const struct {
        const char* change;
        std::size_t sets;
    } cases[] = {{"UPDATE DetObjQualifierSet SET OwnerText = 'other' WHERE [Key] = 3", 5},
                 {"UPDATE DetObjQualifierSetItem SET ModelRole = 'other' WHERE IdDetObjQualifierSet = 4", 7}};
    for (const auto& [change, sets] : cases) {
        sql(details, {change});
        ASSERT_EQ(importDetail(E::kDetailStyle), 1);
        EXPECT_EQ(rows(details, "DetObjQualifierSet").size(), sets) << change;
    }
    // a category of the same name stands for the collected one, whatever else it holds
    sql(details, {"INSERT INTO DetailProcessCategories ([Key], RunName, SortOrder, OwnerText) "
                  "VALUES (7, 'site add-in', 99, 'other')"});
    ASSERT_EQ(importDetail(E::kDetailProcess), 1);
    EXPECT_EQ(rows(details, "DetailProcessCategories").size(), 4u);
    EXPECT_EQ(cell(details, "DetailProcessStep", 3, 2), "101");
    EXPECT_EQ(cell(details, "DetailProcessStep", 4, 2), "7");
    EXPECT_EQ(cell(details, "DetailProcessCategories", 7, 2), "99");
    EXPECT_EQ(cell(details, "DetailProcessCategories", 101, 2), "1");
}

TEST_F(DetailExportsTest, Failures)
{
    // collecting: the same texts for styles and processes, but a prompt of its own for the import of processes
    std::vector<std::string> localised;
    for (const E::eType what : {E::kDetailStyle, E::kDetailProcess}) {
        EXPECT_EQ(exportDetail(what, 99), 0);
        EXPECT_EQ(messages()[0], "Failed to load dependencies for detail style with key 99!");
        localised.push_back(messages()[1]);
        EXPECT_EQ(importDetail(what, 99), 0);
        EXPECT_EQ(messages()[0], "Failed to load dependencies for detail style with key 99");
        localised.push_back(messages()[1]);
        EXPECT_NE(messages()[1].find("99"), std::string::npos);
        EXPECT_EQ(flags(), 0);
    }
    EXPECT_EQ(localised[2], localised[0]);
    EXPECT_NE(localised[3], localised[1]);

    // writing; a cancel is told by the processes' flag when exporting processes, otherwise by the styles'
    const struct {
        E::eType what;
        bool exported, ofProcesses, ofStyles, silent;
    } cases[] = {{E::kDetailStyle, true, true, false, false},    {E::kDetailStyle, true, false, true, true},
                 {E::kDetailStyle, false, true, false, false},   {E::kDetailStyle, false, false, true, true},
                 {E::kDetailProcess, true, true, false, true},   {E::kDetailProcess, true, false, true, false},
                 {E::kDetailProcess, true, true, true, true},    {E::kDetailProcess, false, false, false, false},
                 {E::kDetailProcess, false, true, false, false}, {E::kDetailProcess, false, false, true, true}};
    static bool cancelProcesses, cancelStyles;
    D::pGetNameForRowFn = [](M::eTableType t, M::eTableType, KorString&) {
        P::m_bDeepCopyCanceledByUser = cancelProcesses;
        D::m_bDeepCopyCanceledByUser = cancelStyles;
        return t == M::kDetailProcessStep || t == M::kDetViewArrangeStrategy ? -1 : 1;
    };
    const std::string before = tree(E::kDetailProcess, details, 1), inAddin = counts(addin);
    for (const auto& [what, exported, ofProcesses, ofStyles, silent] : cases) {
        SCOPED_TRACE(std::string(what == E::kDetailStyle ? "style, " : "process, ") +
                     (exported ? "export " : "import ") + (ofProcesses ? "process " : "") +
                     (ofStyles ? "style" : ""));
        cancelProcesses = ofProcesses;
        cancelStyles = ofStyles;
        EXPECT_EQ(exported ? exportDetail(what) : importDetail(what), 0);
        EXPECT_EQ(messages()[0], silent ? "" : "Unable to write info to target database!");
        EXPECT_EQ(messages()[1].empty(), silent);
        EXPECT_EQ(flags(), 0);
    }
    EXPECT_EQ(tree(E::kDetailProcess, details, 1), before);
    EXPECT_EQ(rows(details, "DetailProcessDefinition").size() + rows(details, "DetailStyle").size(), 3u);
    EXPECT_EQ(counts(addin), inAddin);
    D::pGetNameForRowFn = nullptr;
    // what is neither a style nor a process; messages do not outlive the next transfer
    importDetail(E::kDetailStyle, 99);
    AssertionRecorder assertions;
    EXPECT_EQ(exportDetail(static_cast<E::eType>(2)), 1);
    EXPECT_EQ(assertions.take(), Texts{"KorODBCDetailStyleExports: false"});
    EXPECT_EQ(importDetail(static_cast<E::eType>(2)), 1);
    EXPECT_EQ(messages(), (Texts{"", ""}));
    EXPECT_TRUE(assertions.take().empty());
    // a file that cannot be made
    const KorString missing = file("no such folder/100%d.db");
    EXPECT_EQ(E::exportDetail(E::kDetailStyle, KorOdbcKey(1), details, base, missing), 0);
    EXPECT_EQ(messages()[0], "Failed to create file " + missing.toUtf8() + "!");
    EXPECT_NE(messages()[1].find(missing.toUtf8()), std::string::npos);
    EXPECT_EQ(E::isExportInProgress(), 1); // stays set on this path
}

TEST_F(DetailExportsTest, OlderDatabases)
{
    const std::string sourceIsOlder = "Source database is older than version 5.1!",
                      targetIsOlder = "Target database is older than version 5.1!";
    const std::pair<const char*, E::eType> cases[] = {{"DetObjAnnotationGroup", E::kDetailStyle},
                                                      {"DetObjQualifierSetGroup", E::kDetailProcess},
                                                      {"DetViewDimRequestLinearGroup", E::kDetailStyle},
                                                      {"DetViewDimStrategyNew", E::kDetailProcess},
                                                      {"DetViewDimStrategyItems", E::kDetailStyle}};
    for (const auto& [table, what] : cases) {
        SCOPED_TRACE(table);
        const std::string hide = std::string("ALTER TABLE ") + table + " RENAME TO Hidden",
                          show = std::string("ALTER TABLE Hidden RENAME TO ") + table, before = counts(details);
        ASSERT_EQ(E::CreateDbFile(file()), 1);
        inFile([&] { sql(addin, {hide}); });
        EXPECT_EQ(exportDetail(what), 0);
        EXPECT_EQ(messages()[0], targetIsOlder);
        EXPECT_FALSE(messages()[1].empty());
        EXPECT_EQ(E::isExportInProgress(), 1);
        EXPECT_NE(tree(E::kDetailStyle, addin, 101), "(no master)"); // connection restored
        EXPECT_EQ(KorDatabaseAccess::detachDatabase(file()), 1);     // was not detached
        std::filesystem::remove(file().toUtf8());
        sql(details, {hide});
        EXPECT_EQ(exportDetail(what), 0);
        EXPECT_EQ(messages()[0], sourceIsOlder);
        EXPECT_EQ(E::FileExists(file()), 0);
        EXPECT_EQ(importDetail(what), 0);
        EXPECT_EQ(messages()[0], targetIsOlder);
        sql(details, {show});
        sql(addin, {hide});
        EXPECT_EQ(importDetail(what), 0);
        EXPECT_EQ(messages()[0], sourceIsOlder);
        EXPECT_EQ(exportDetail(what), 1); // its own add-in's tables do not matter
        std::filesystem::remove(file().toUtf8());
        sql(addin, {show});
        EXPECT_EQ(counts(details), before);
    }
}

/// Of two country add-ins the second is current; each is tested and moved in its own slot.
TEST_F(DetailExportsTest, CountryAddIns)
{
    useSecondCountryAddIn();
    const auto inFirst = [](const char* statement) {
        return within(country, firstAddin, [=] {
            sql(country, {statement});
            return counts(country);
        });
    };
    within(country, secondAddin, [] { fillProcess(country, "second", 200); });
    const auto trees = [] {
        return styleTree(country, secondAddin, 201) + processTree(country, secondAddin, 201, true);
    };
    const std::string sent = trees(), first = inFirst("ALTER TABLE DetObjAnnotationGroup RENAME TO Hidden");
    EXPECT_EQ(E::isDatabaseOlderThan5_1(country), 0);
    EXPECT_EQ(within(country, firstAddin, [] { return E::isDatabaseOlderThan5_1(country); }), 1);

    for (const E::eType what : {E::kDetailStyle, E::kDetailProcess}) {
        SCOPED_TRACE(what);
        // a slot without a database, and one without the tables
        for (const int slot : {0, 1, 3}) {
            const eIndex index = static_cast<eIndex>(slot);
            EXPECT_EQ(E::importDetail(what, KorOdbcKey(201), country, index, details, base), 0);
            EXPECT_EQ(messages()[0], "Source database is older than version 5.1!");
            EXPECT_EQ(E::importDetail(what, KorOdbcKey(101), addin, firstAddin, country, index), 0);
            EXPECT_EQ(messages()[0], "Target database is older than version 5.1!");
            EXPECT_EQ(E::exportDetail(what, KorOdbcKey(201), country, index, file()), 0);
            EXPECT_EQ(messages()[0], "Source database is older than version 5.1!");
        }
        EXPECT_EQ(E::exportDetail(what, KorOdbcKey(201), country, secondAddin, file()), 1);
        inFile([&] { EXPECT_EQ(cell(addin, "DetObjQualifierSet", 1, 1), "beams second"); });
        std::filesystem::remove(file().toUtf8());
        EXPECT_EQ(E::importDetail(what, KorOdbcKey(101), addin, firstAddin, country, secondAddin), 1);
    }
    EXPECT_EQ(trees(), sent);
    EXPECT_EQ(styleTree(country, secondAddin, 203), tree(E::kDetailStyle, addin, 101));
    EXPECT_EQ(processTree(country, secondAddin, 202, false), tree(E::kDetailProcess, addin, 101, false));
    EXPECT_EQ(inFirst("ALTER TABLE Hidden RENAME TO DetObjAnnotationGroup"), first);
    EXPECT_FALSE(KorDSNManager::getInstance().isRequested());
}

/// What a callback of the host throws is a failure like others, and leaves nothing behind.
TEST_F(DetailExportsTest, ThrowingCallbacks)
{
    const auto sink = std::make_shared<ThrowingSink>();
    const std::function<void()> callbacks[] = {
        [] { D::pGetNameForRowFn = [](M::eTableType, M::eTableType, KorString&) -> int { throw 1; }; },
        [] { D::pInitProgressBar = [](int, int) { throw 2; }; },
        [] {
            D::pUpdateProgressBar = [](int row, KorString) {
                if (row == 20)
                    throw 3;
            };
        },
        [&] { korodbc::host::setProgressSink(sink); }};
    for (const auto& throws : callbacks) {
        for (const bool exported : {true, false}) {
            SCOPED_TRACE(exported);
            const std::string before = counts(details) + counts(addin);
            throws();
            EXPECT_EQ(exported ? exportDetail(E::kDetailStyle) : importDetail(E::kDetailStyle), 0);
            EXPECT_FALSE(messages()[0].empty());
            EXPECT_EQ(flags(), 0);
            EXPECT_FALSE(KorDSNManager::getInstance().isRequested());
            EXPECT_EQ(counts(details) + counts(addin), before);
            EXPECT_EQ(D::m_writeTransferKeyMap.length(), 0);
            EXPECT_EQ(copyInPlace(E::kDetailStyle), -1);
            KorString name(L"new");
            D::GetNameForRow(M::kDetailStyle, name);
            D::ProgressBar(M::kDetailStyle, 1);
            D::pGetNameForRowFn = nullptr;
            D::pInitProgressBar = nullptr;
            D::pUpdateProgressBar = nullptr;
            korodbc::host::setProgressSink(nullptr);
            EXPECT_EQ(counts(details) + counts(addin), before);
            EXPECT_EQ(exported ? exportDetail(E::kDetailStyle) : importDetail(E::kDetailStyle), 1);
            again();
        }
    }
}

/// A host undoes a transfer with its own batch, and repeats it.
TEST_F(DetailExportsTest, UndoneByTheHost)
{
    P::m_bDeepCopyWithDetailStyles = 1;
    for (const E::eType what : {E::kDetailStyle, E::kDetailProcess}) {
        for (const bool exported : {true, false}) {
            SCOPED_TRACE(std::to_string(what) + (exported ? " exported" : " imported"));
            const auto move = [&] { return exported ? exportDetail(what) : importDetail(what); };
            const auto all = [&] {
                std::string text = counts(details) + counts(addin);
                if (exported)
                    inFile([&] { text += counts(addin); });
                return text;
            };
            ASSERT_EQ(move(), 1); // some rows to find again
            const std::string before = all();
            {
                KorDatabaseBatch outer;
                EXPECT_EQ(move(), 1);
                EXPECT_EQ(outer.undo(), 0);
            }
            EXPECT_EQ(all(), before);
            EXPECT_EQ(flags(), 0);
            EXPECT_EQ(D::m_RowsWritten + D::m_writeTransferKeyMap.length() + P::m_writeTransferKeyMap.length(), 0);
            EXPECT_EQ(lengths(D::m_AnnotationStrategiesResultedFromDeepCopy,
                              P::m_DetailProcessStepsResultedFromDeepCopy),
                      "0 0 ");
            ASSERT_EQ(move(), 1);
            EXPECT_NE(all(), before);
            std::filesystem::remove(file().toUtf8());
        }
    }
}

TEST_F(DetailExportsTest, TargetsAndFiles)
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
    EXPECT_EQ(E::CreateDbFile(file()), 1);
    EXPECT_EQ(E::FileExists(file()), 1);
    EXPECT_EQ(E::FileExists(text(m_folder.string())), 0);
    EXPECT_EQ(E::CreateDbFile(file()), 0); // is there
}

TEST_F(DetailExportsTest, TableIdsNameTheTablesOfTheRecords)
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
    KorString lineTypes(L"StructLineType"); // not the name of the record
    EXPECT_EQ(E::getTableIndex(lineTypes), 172);
}

TEST_F(DetailExportsTest, AllTablesAreConfirmedTogether)
{
    for (int t = 0; t < M::kTableTypes; ++t)
        M::setStatus(type(t), M::eModified, depth(0));
    StatementRecorder statements(true);
    EXPECT_EQ(E::setStatusOnOK(), 1);
    EXPECT_EQ(commits(statements, details), 1);
    std::string left; // what a transfer does not write stays in its edit
    for (int t = 0; t < M::kTableTypes; ++t)
        left += M::getStatus(type(t), depth(0)) == M::eModified ? std::to_string(t) + " " : "";
    EXPECT_EQ(left, "12 17 18 19 20 21 31 35 36 38 42 43 44 45 46 47 ");
}

} // namespace
