#include "../src/foundation/ProcessConstants.h"
#include "support/RepositoryFixture.h"

#include <korodbc/edit/KorOdbcMan.h>
#include <korodbc/foundation/KorODBCDatabase.h>
#include <korodbc/roots/KorPromptsProxy.h>
#include <korodbc/startup/KorOdbcDSNDefinitions.h>

#include <unistd.h>

namespace {

class KorOdbcDSNDefinitionsTest : public RepositoryTest {
protected:
    static std::string prompt() { return KorPromptsProxy::getInstance()->getPrompt(L"Test", 1, L"none").toUtf8(); }
    /// Changes the prompt in the database, not in what was read of it.
    static void setPrompt(const std::string& text)
    {
        sql(configuration,
            {"DELETE FROM Prompts",
             "INSERT INTO Prompts(Key, Module, Number, Text) VALUES (1, 'Test', 1, '" + text + "')"});
    }
};

TEST_F(KorOdbcDSNDefinitionsTest, StartUpSetsTheLibraryUp)
{
    setPrompt("old");
    EXPECT_EQ(prompt(), "old");
    setPrompt("new");
    KorOdbcMan::InitializeStatics::release();
    ASSERT_EQ(KorOdbcMan::m_Status.length(), 0);
    EXPECT_EQ(KorOdbcDSNDefinitions::initOEDbConnections(), 1);
    EXPECT_EQ(prompt(), "new");
    EXPECT_GT(KorOdbcMan::m_Status.length(), 0);
    korodbc::host::closeRepository();
    EXPECT_EQ(KorOdbcDSNDefinitions::initOEDbConnections(), 0); // nothing to work on
}

TEST_F(KorOdbcDSNDefinitionsTest, PromptsAreReadAnewUntilShutDown)
{
    setPrompt("old");
    EXPECT_EQ(prompt(), "old");
    setPrompt("new");
    korodbc::shutDown = 1;
    KorODBCDatabase::resetExtDataInterf();
    KorOdbcDSNDefinitions::initOEDbConnections();
    EXPECT_EQ(prompt(), "old");
    korodbc::shutDown = 0;
    KorODBCDatabase::resetExtDataInterf();
    EXPECT_EQ(prompt(), "new");
}

/// Made before every other static object and so destroyed after them.
struct LastWitness {
    bool armed = false;
    ~LastWitness()
    {
        if (armed)
            ::_exit(korodbc::shutDown == 1 ? 42 : 43);
    }
};
[[gnu::init_priority(101)]] LastWitness witness;

TEST(KorODBCMainDeathTest, UnloadingSetsTheShutDownFlag)
{
    ASSERT_EQ(korodbc::shutDown, 0);
    EXPECT_EXIT(
        {
            witness.armed = true;
            std::exit(0);
        },
        testing::ExitedWithCode(42), "");
}

} // namespace
