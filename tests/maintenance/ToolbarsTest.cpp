#include "support/RepositoryFixture.h"

#include <korodbc/maintenance/KorOdbcGUI.h>

#include <algorithm>

namespace {

class ToolbarsTest : public RepositoryTest {
protected:
    static constexpr eDSN toolbars = KorDSNDefinitions::kToolbars;

    void SetUp() override
    {
        RepositoryTest::SetUp();
        sql(toolbars,
            {"INSERT INTO Toolbars VALUES (1, 'File', 'Files', -1, 0, 1, 1), (2, 'Edit', '', -1, 1, 0, 2)",
             "INSERT INTO ToolbarsDefault VALUES (5, 'Bögen', 'O''Neill 🔩', 3, 4, 1, 0)"});
    }
};

TEST_F(ToolbarsTest, ReadsAndWritesAToolbar)
{
    StructToolbarsTable toolbar;
    EXPECT_EQ(KorOdbcGUI::getToolbarInformation(1, toolbar), 1);
    EXPECT_EQ(toolbar.runName, L"File");
    toolbar.runName = L"it's [1] 100% 板";
    toolbar.toolTip = L"🔩";
    toolbar.parent = 2;
    toolbar.position = 30;
    toolbar.visible = 4;
    toolbar.docking = 5;
    {
        StatementRecorder statements(true);
        EXPECT_EQ(KorOdbcGUI::putToolbarInformation(toolbar), 1);
        EXPECT_EQ(std::ranges::count(statements.take(), std::string("COMMIT")), 1);
    }
    EXPECT_EQ(rows(toolbars, "Toolbars"), (Texts{"1|it's [1] 100% 板|🔩|2|30|4|5", "2|Edit||-1|1|0|2"}));
}

TEST_F(ToolbarsTest, WritesInTheToolbarSourceWhateverIsCurrent)
{
    StructToolbarsTable toolbar;
    toolbar.key = 2;
    toolbar.runName = L"Edit 2";
    toolbar.docking = 4;
    sql(configuration, {"CREATE TABLE Toolbars (Key, A, B, C, D, E, F)", "INSERT INTO Toolbars(Key) VALUES (2)"});
    const KorDSNRequest request(configuration, KorDSNDefinitions::kBase);
    EXPECT_EQ(KorOdbcGUI::putToolbarInformation(toolbar), 1);
    toolbar.key = 77;
    EXPECT_EQ(KorOdbcGUI::putToolbarInformation(toolbar), 0);
    EXPECT_EQ(rows(configuration, "Toolbars"), Texts{"2||||||"});
    EXPECT_EQ(rows(toolbars, "Toolbars")[1], "2|Edit 2||-1|0|0|4");
}

TEST_F(ToolbarsTest, ReopeningTheMenuBringsTheDefaultsBack)
{
    StructToolbarsTable toolbar;
    EXPECT_EQ(KorOdbcGUI::getToolbarInformation(1, toolbar), 1); // cached
    StatementRecorder statements;
    EXPECT_EQ(KorOdbcGUI::reopenMenu(), 1);
    EXPECT_EQ(statements.take(),
              (Texts{"DELETE FROM [Toolbars] ", "INSERT INTO [Toolbars] SELECT * FROM ToolbarsDefault"}));
    EXPECT_EQ(rows(toolbars, "Toolbars"), Texts{"5|Bögen|O'Neill 🔩|3|4|1|0"});
    EXPECT_EQ(KorOdbcGUI::getToolbarInformation(1, toolbar), 0);
    EXPECT_EQ(KorOdbcGUI::getToolbarInformation(5, toolbar), 1);
    EXPECT_EQ(toolbar.runName, L"Bögen");

    sql(toolbars, {"DROP TABLE ToolbarsDefault"});
    EXPECT_EQ(KorOdbcGUI::reopenMenu(), 0);
}

} // namespace
