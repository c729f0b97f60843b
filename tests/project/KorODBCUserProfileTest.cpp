#include "support/RepositoryFixture.h"

#include <korodbc/project/KorODBCUserProfile.h>
#include <korodbc/transfer/KorODBCDetailStyleExports.h>

namespace {

class KorODBCUserProfileTest : public RepositoryTest {
protected:
    void SetUp() override
    {
        RepositoryTest::SetUp();
        KorODBCUserProfile::m_charOwnerText = KorString();
    }
    void TearDown() override
    {
        KorODBCDetailStyleExports::setExportInProgress(0);
        KorODBCDetailStyleExports::setImportInProgress(0);
        RepositoryTest::TearDown();
    }
    static std::string owner()
    {
        KorString text(L"unchanged");
        KorODBCUserProfile::getOwnerText(text);
        return text.toUtf8();
    }
};

TEST_F(KorODBCUserProfileTest, OwnerIsEnteredOnce)
{
    struct Case {
        Texts defaults;
        const char* owner;
        Texts statements;
        Texts authors;
    };
    const std::string insert = "INSERT INTO Authors (CompanyText,CompanyName) VALUES ";
    for (const Case& one : {
             Case{{}, "-", {insert + "('-','-')"}, {"-|-"}},
             {{"('ODBC_OwnerText','Acme Ltd')"}, "-", {insert + "('-','Acme Ltd')"}, {"-|Acme Ltd"}},
             {{"('ODBC_OwnerKey','O''Neill')", "('ODBC_OwnerText','100% [Stähle] 板🔩 ''x''')"},
              "O'Neill",
              {insert + "('O''Neill','100% [Stähle] 板🔩 ''x''')"},
              {"O'Neill|100% [Stähle] 板🔩 'x'"}},
             {{"('ODBC_OwnerKey','''),(''x'',''')"},
              "'),('x','",
              {insert + "('''),(''x'',''','-')"},
              {"'),('x','|-"}},
         }) {
        SCOPED_TRACE(one.owner);
        RepositoryTest::TearDown();
        SetUp();
        EXPECT_EQ(owner(), "");
        for (const std::string& row : one.defaults)
            sql(configuration, {"INSERT INTO Default_STR VALUES " + row});
        StatementRecorder statements;
        for (int i = 0; i < 2; ++i) {
            KorODBCUserProfile::resetOwnerText();
            EXPECT_EQ(owner(), one.owner);
            EXPECT_EQ(statements.take(), i == 0 ? one.statements : Texts{});
        }
        EXPECT_EQ(rows(configuration, "Authors"), one.authors);
    }
}

TEST_F(KorODBCUserProfileTest, KnownOwnerCostsNoStatement)
{
    sql(configuration,
        {"INSERT INTO Default_STR VALUES ('ODBC_OwnerKey','ACME')", "INSERT INTO Authors VALUES ('ACME','Acme')"});
    const KorDSNRequest request(details, KorDSNDefinitions::kBase); // another database is current
    KorODBCUserProfile::resetOwnerText();
    StatementRecorder statements(true);
    for (int i = 0; i < 3; ++i)
        KorODBCUserProfile::resetOwnerText();
    EXPECT_EQ(statements.take(), Texts{});
    EXPECT_EQ(owner(), "ACME");
}

TEST_F(KorODBCUserProfileTest, OwnerIsSetWithoutAuthorsToo)
{
    sql(configuration, {"DROP TABLE Authors", "INSERT INTO Default_STR VALUES ('ODBC_OwnerKey','ACME')"});
    KorODBCUserProfile::resetOwnerText();
    EXPECT_EQ(owner(), "ACME");
    EXPECT_FALSE(exists(configuration, "Authors"));
}

TEST_F(KorODBCUserProfileTest, OwnerIsWithheldDuringTransfers)
{
    KorODBCUserProfile::resetOwnerText();
    for (const auto& [exporting, importing] : {std::pair{1, 0}, {0, 1}, {1, 1}}) {
        KorODBCDetailStyleExports::setExportInProgress(exporting);
        KorODBCDetailStyleExports::setImportInProgress(importing);
        EXPECT_EQ(owner(), "unchanged");
        KorODBCUserProfile::resetOwnerText();
        EXPECT_EQ(KorODBCUserProfile::m_charOwnerText, L"-");
    }
    KorODBCDetailStyleExports::setExportInProgress(0);
    KorODBCDetailStyleExports::setImportInProgress(0);
    EXPECT_EQ(owner(), "-");
}

TEST_F(KorODBCUserProfileTest, Limits)
{
    EXPECT_EQ(KorODBCUserProfile::getMaxPointsUserSection(), 0);
    sql(configuration,
        {"INSERT INTO Default_INT VALUES ('ODBC_ProfileMaxPoints',200),('ODBC_ProfileMaxContours',5)"});
    EXPECT_EQ(KorODBCUserProfile::getMaxPointsUserSection(), 200);
    EXPECT_EQ(KorODBCUserProfile::getMaxContoursUserSection(), 5);
}

} // namespace
