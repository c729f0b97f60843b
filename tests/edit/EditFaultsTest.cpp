#include "support/CrashCycle.h"

#include <korodbc/transfer/KorODBCDetailStyleExports.h>

using namespace details;

namespace {

class EditFaultsTest : public testing::Test, protected crash::FaultyRepository {
protected:
    using Man = KorOdbcMan;

    void SetUp() override
    {
        open();
        fillStyle(KorDSNDefinitions::kDetails, awkward);
        fillStyle(KorDSNDefinitions::kAddin, "add-in", 100);
    }
    void TearDown() override { close(); }
};

struct Operation {
    const char* name;
    std::function<void()> prepare; // without faults
    std::function<bool()> act;     // true: reported as done
    bool cancels;                  // undone by Cancel; otherwise done again
};

std::vector<Operation> operations()
{
    using M = KorOdbcMan;
    const auto title = [] {
        return M::setAttribute(M::kDetailStyle, KorOdbcKey(1), 5, text(awkward), 1, M::kFirstCopy) == 1;
    };
    return {
        {"attribute", nullptr, title, true},
        {"new style with more requests than columns",
         [] {
             StructDetailStyleMarshal::getStructByKey(1, M::m_structDetailStyle);
             M::m_structDetailStyle.requests = list<int>({1, 2, 1, 2, 1, 2, 1, 2, 1, 2});
         },
         [] { return M::appendNewRecord(M::kDetailStyle, 0, M::kFirstCopy) > 0; }, true},
        {"record with items in a table",
         [] { StructDetViewDimStrategyMarshal::getStructByKey(1, M::m_structDetViewDimStrategy); },
         [] { return M::storeCurrentRecord(M::kDetViewDimStrategy, M::kFirstCopy) == 1; }, true},
        {"deletion", nullptr,
         [] { return M::deleteRecord(M::kDetViewRequest, KorOdbcKey(2), M::kFirstCopy) == 1; }, true},
        {"OK", title, [] { return M::setStatusOnOK(M::kDetailStyle, M::kFirstCopy) == 1; }, false},
        {"Cancel", title, [] { return M::setStatusOnCancel(M::kDetailStyle, M::kFirstCopy) == 1; }, false},
        {"Update", title, [] { return M::setStatusOnUpdate(M::kDetailStyle, M::kFirstCopy) == 1; }, false},
        {"import", nullptr,
         [] {
             return KorODBCDetailStyleExports::importDetail(
                        KorODBCDetailStyleExports::kDetailStyle, KorOdbcKey(101), KorDSNDefinitions::kAddin,
                        KorDSNDefinitions::kFirstAddin, KorDSNDefinitions::kDetails,
                        KorDSNDefinitions::kBase) == 1;
         },
         false},
    };
}

void cancelAll()
{
    for (int type = 0; type < KorOdbcMan::kTableTypes; ++type)
        EXPECT_EQ(KorOdbcMan::setStatusOnCancel(static_cast<KorOdbcMan::eTableType>(type), KorOdbcMan::kFirstCopy),
                  1)
            << type;
}

/// The disk is full, or fails, from the n-th write on: the operation says so, nothing of it is left, and it can be
/// done again or cancelled when the disk is well.
TEST_F(EditFaultsTest, FailingDisk)
{
    for (const int failure : {SQLITE_FULL, SQLITE_IOERR_WRITE}) {
        for (const Operation& operation : operations()) {
            SCOPED_TRACE(operation.name);
            const std::string clean = state();
            for (long n = 1;; ++n) {
                SCOPED_TRACE(n);
                ASSERT_LT(n, 400);
                if (operation.prepare)
                    operation.prepare();
                const std::string before = state();
                faults::plan = {.failFrom = n, .failure = failure, .armed = true};
                const bool done = operation.act();
                const bool failed = faults::plan.calls >= n;
                faults::plan = {};
                ASSERT_EQ(done, !failed);
                if (done)
                    break;
                ASSERT_EQ(state(), before) << crash::difference(before, state());
                if (operation.cancels) {
                    cancelAll();
                    ASSERT_EQ(state(), clean) << crash::difference(clean, state());
                }
            }
            if (operation.cancels || std::string(operation.name) == "Update")
                cancelAll();
            KorDatabaseAccess::doSQLStatement(KorDSNDefinitions::kDetails,
                                              L"UPDATE DetailStyle SET TitleFormat = 'T %s'");
        }
    }
}

/// Another process writes: every operation fails as long as it does, and succeeds afterwards.
TEST_F(EditFaultsTest, LockedByAnotherProcess)
{
    for (const Operation& operation : operations()) {
        SCOPED_TRACE(operation.name);
        if (operation.prepare)
            operation.prepare();
        const std::string before = state();
        whileLocked([&] { EXPECT_FALSE(operation.act()); });
        EXPECT_EQ(state(), before) << crash::difference(before, state());
        EXPECT_TRUE(operation.act());
        cancelAll();
    }
    // start-up, too: the copies that it could not bring back are brought back by the next call
    KorDatabaseAccess::doSQLStatement(
        KorDSNDefinitions::kDetails, L"CREATE TABLE Linetypes_VELCopy AS SELECT * FROM Linetypes WHERE [Key] = 2");
    Man::m_bInitializeTables = true;
    whileLocked([] { EXPECT_EQ(Man::initializeTables(), 0); });
    EXPECT_NE(state().find("[Linetypes_VELCopy]"), std::string::npos);
    EXPECT_EQ(Man::initializeTables(), 1);
    EXPECT_EQ(state().find("[Linetypes_VELCopy]"), std::string::npos);
    StructLinetypes gone;
    EXPECT_EQ(StructLinetypesMarshal::getStructByKey(1, gone), 0);
}

} // namespace
