#include "support/DetailFixture.h"

#include <korodbc/edit/KorTableEdit.h>
#include <korodbc/host/AddInManager.h>

using namespace details;

namespace {

class EditCopiesTest : public DetailTest {
protected:
    static std::string title(eDSN dsn = details, int key = 1) { return cell(dsn, "DetailStyle", key, 5); }
    static void setTitle(const char* value, int d)
    {
        EXPECT_EQ(Man::setAttribute(Man::kDetailStyle, KorOdbcKey(1), 5, text(value), 1, depth(d)), 1);
    }
    /// The copies of the styles that exist, as depths.
    static std::string copies(eDSN dsn = details)
    {
        std::string depths;
        const char* const suffixes[] = {"_VELCopy", "_VELSecondCopy", "_VELThirdCopy", "_VELFourthCopy"};
        for (int d = 0; d < 4; ++d)
            if (exists(dsn, std::string("DetailStyle") + suffixes[d]))
                depths += std::to_string(d);
        return depths;
    }
};

TEST_F(EditCopiesTest, AddedColumnsGoWithTheEdit)
{
    const Texts columnsBefore = columns(details, "DetailStyle"), before = rows(details, "DetailStyle");
    ASSERT_EQ(Man::setColumnsForNewItems(Man::kDetailStyle, 8), 1);
    Man::setStatus(Man::kDetailStyle, Man::eModified, depth(0));
    EXPECT_EQ(Man::setColumnsForNewItems(Man::kDetailStyle, 10), 1);
    EXPECT_EQ(columns(details, "DetailStyle").size(), columnsBefore.size() + 2);
    StatementRecorder statements;
    EXPECT_EQ(Man::setStatusOnCancel(Man::kDetailStyle, depth(0)), 1);
    const Texts seen = statements.take();
    EXPECT_EQ(Texts(seen.begin(), seen.begin() + 2), (Texts{"ALTER TABLE DetailStyle DROP COLUMN Request10",
                                                            "ALTER TABLE DetailStyle DROP COLUMN Request9"}));
    EXPECT_EQ(columns(details, "DetailStyle"), columnsBefore);
    EXPECT_EQ(rows(details, "DetailStyle"), before);
}

TEST_F(EditCopiesTest, WhatDoesNotExistIsRefused)
{
    AssertionRecorder assertions;
    const auto t = Man::kDetailStyle;
    EXPECT_EQ(Man::backupTable(type(48), depth(0)), -2);
    EXPECT_EQ(Man::dropCopyOfTable(t, depth(0)), 1); // there is none
    EXPECT_EQ(Man::restoreCopyOfTable(t, depth(0)), 1);
    EXPECT_EQ(assertions.take().size(), 1u);
    Man::backupTable(t, depth(4));
    EXPECT_EQ(assertions.take(), Texts{"KorOdbcMan: copyDepth<4"});
    Man::restoreCopyOfTable(t, depth(4));
    EXPECT_EQ(assertions.take(), Texts{"KorOdbcMan: copyDepth >=0 && copyDepth < kCopies"});
    Man::dropCopyOfTable(t, depth(4));
    EXPECT_EQ(assertions.take(), Texts{"KorOdbcMan: copyDepth<kCopies"});
    EXPECT_EQ(Man::getStatus(t, depth(4)), Man::eNotModified);
    EXPECT_EQ(assertions.take().at(0).substr(0, 12), "KorOdbcMan: ");
    current(KorDSNDefinitions::kProject, base); // holds no detail tables of the manager
    Man::getStatus(t, depth(0));
    EXPECT_EQ(assertions.take().at(0), "KorArray: isValid( index )");
}

/// Copies that fail or are not wanted: what is there is kept, a later closing repairs it.
TEST_F(EditCopiesTest, FailedCopiesAndRestores)
{
    Exports::CancelBackupTables(1); // transfers take none
    setTitle("a", 0);
    EXPECT_EQ(copies(), "");
    setTitle("T %s", 0);
    Exports::CancelBackupTables(0);
    sql(details, {"CREATE TABLE DetailStyle_VELCopy (x INTEGER)"});
    EXPECT_EQ(Man::backupTable(Man::kDetailStyle, depth(0)), 1); // what an earlier run left is replaced
    EXPECT_EQ(Man::setStatusOnOK(Man::kDetailStyle, depth(0)), 1);
    current(configuration, base); // no such table here
    EXPECT_EQ(Man::backupTable(Man::kDetailStyle, depth(0)), 0);
    EXPECT_TRUE(Man::m_BackupAvailable[2][Man::kDetailStyle]);
    EXPECT_EQ(Man::setStatusOnCancel(Man::kDetailStyle, depth(0)), -1);
    EXPECT_TRUE(Man::m_BackupAvailable[2][Man::kDetailStyle]); // the next closing tries again
    EXPECT_EQ(Man::setStatusOnOK(Man::kDetailStyle, depth(0)), 0);
    EXPECT_FALSE(Man::m_BackupAvailable[2][Man::kDetailStyle]);
    current(details, base);
    setTitle("a", 0);
    sql(details, {"ALTER TABLE DetailStyle_VELCopy RENAME TO Elsewhere"});
    EXPECT_EQ(Man::setStatusOnCancel(Man::kDetailStyle, depth(0)), -1);
    EXPECT_EQ(title(), "a");
    sql(details, {"ALTER TABLE Elsewhere RENAME TO DetailStyle_VELCopy"});
    EXPECT_EQ(Man::setStatusOnCancel(Man::kDetailStyle, depth(0)), 1);
    EXPECT_EQ(title(), "T %s");
}

/// Copies left behind by an earlier run.
TEST_F(EditCopiesTest, Recovery)
{
    const auto leave = [](const Texts& suffixes) {
        for (const std::string& suffix : suffixes)
            sql(details, {"CREATE TABLE [DetailStyle" + suffix + "] AS SELECT * FROM DetailStyle",
                          "UPDATE [DetailStyle" + suffix + "] SET TitleFormat = '" + suffix + "'"});
    };
    leave({"_VELCopy", "_VELThirdCopy"});
    EXPECT_EQ(Man::initializeTables(), 1); // not the first call
    EXPECT_EQ(copies(), "02");
    Man::m_bInitializeTables = true;
    setTitle("edited", 1);
    EXPECT_EQ(Man::initializeTables(), 1);
    EXPECT_EQ(title(), "_VELCopy"); // the outermost dialog's
    EXPECT_EQ(copies(), "");
    EXPECT_FALSE(Man::m_bInitializeTables);

    setTitle("edited", 0);
    setTitle("nested", 3);
    Man::restoreDetailTablesCopies(); // obeys the flags, and never touches the last
    EXPECT_EQ(copies() + title(), "3_VELCopy");
}

TEST_F(EditCopiesTest, CountryAddIns)
{
    AssertionRecorder assertions;
    auto* manager = korodbc::host::addInManager();
    Man::registerCountryAddinReactor();
    Man::registerCountryAddinReactor();
    {
        const KorDSNRequest request(country, firstAddin);
        sql(country,
            {"CREATE TABLE Linetypes_VELCopy AS SELECT 5 AS Key, 'old' AS RunName, 'x' AS OwnerText",
             "CREATE TABLE Linetypes_VELFourthCopy AS SELECT 6 AS Key, 'newer' AS RunName, 'x' AS OwnerText"});
    }
    Man::reloadInfoForAllManagers(0);
    EXPECT_TRUE(manager->load(KorAddInId(L"no")));
    EXPECT_EQ(Man::m_DSMReloadInfo + Man::m_QuickDocManagerReloadInfo, 2);
    EXPECT_EQ(Man::getCurrentDSN(), country);
    EXPECT_EQ(Man::getCurrentAddIn(), 1);
    {
        const KorDSNRequest request(country, firstAddin);
        EXPECT_EQ(rows(country, "Linetypes"), Texts{"5|old|x"});
        EXPECT_FALSE(exists(country, "Linetypes_VELFourthCopy"));
    }
    EXPECT_TRUE(manager->unload(KorAddInId(L"no")));
    EXPECT_EQ(Man::getCurrentDSN(), details);
    EXPECT_EQ(Man::getCurrentAddIn(), 0);
    EXPECT_TRUE(assertions.take().empty());
    Man::unregisterCountryAddinReactor();
    Man::unregisterCountryAddinReactor();
    Man::reloadInfoForAllManagers(0);
    manager->load(KorAddInId(L"no"));
    EXPECT_EQ(Man::m_DSMReloadInfo, 0);
    Man::m_countryAddInReactor.onCountryAddInLoaded(*manager->getAddIn(KorAddInId(L"no")));
    EXPECT_EQ(assertions.take(), Texts{"KorOdbcMan: FALSE"});
}

} // namespace
