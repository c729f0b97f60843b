#include "support/RepositoryFixture.h"
#include "support/RepositoryFolder.h"

#include <korodbc/maintenance/KorOdbcGUI.h>
#include <korodbc/records/detail/DetailStyleRecords.h>

namespace {

class CountryAddInsTest : public RepositoryTest {};

TEST_F(CountryAddInsTest, AddInBecomesCurrentForDetails)
{
    AssertionRecorder assertions;
    const KorDSNManager& manager = KorDSNManager::getInstance();
    KorOdbcGUI::switchKorvaDetailsCurrent(KorAddInId(L"fr"));
    EXPECT_EQ(manager.getCurrentDSN(), KorDSNDefinitions::kCountryAddin);
    EXPECT_EQ(manager.getCurrentIndex(), 2);
    KorOdbcGUI::switchKorvaDetailsCurrent(KorAddInId(L"no"));
    EXPECT_EQ(manager.getCurrentIndex(), 1);
    EXPECT_EQ(assertions.take(), Texts{});

    KorOdbcGUI::switchKorvaDetailsCurrent(KorAddInId(L"se"));
    EXPECT_EQ(assertions.take(), Texts{"KorODBCMain: pAddIn != NULL"});
    EXPECT_EQ(manager.getCurrentIndex(), 1);

    korodbc::host::closeRepository(); // no manager any more
    KorOdbcGUI::switchKorvaDetailsCurrent(KorAddInId(L"fr"));
    KorOdbcGUI::resetAddIns();
    EXPECT_EQ(assertions.take(), Texts{});
    EXPECT_EQ(manager.getCurrentDSN(), KorDSNDefinitions::kDetails);
}

TEST(CountryAddInsResetTest, ShowsWhatAnotherProcessWrote)
{
    const RepositoryFolder repository;
    const auto styles = [] {
        const KorDSNRequest request(KorDSNDefinitions::kCountryAddin, KorDSNDefinitions::kFirstAddin);
        KorArray<StructDetailStyle> table;
        return StructDetailStyleMarshal::getTable(table) == 1 ? table.length() : -1;
    };
    EXPECT_EQ(styles(), 0);
    repository.executeOutside("norway.db", "INSERT INTO DetailStyle(Key) VALUES (1)");
    EXPECT_EQ(styles(), 0); // cached
    KorOdbcGUI::resetAddIns();
    EXPECT_EQ(styles(), 1);
    repository.executeOutside("norway.db", "INSERT INTO DetailStyle(Key) VALUES (2)");
    KorOdbcGUI::switchKorvaDetailsCurrent(KorAddInId(L"no"));
    EXPECT_EQ(styles(), 2);
}

} // namespace
