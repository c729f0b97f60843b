#include "support/RepositoryFixture.h"
#include "support/RepositoryFolder.h"

#include <korodbc/exchange/SectionConversions.h>

#include <functional>
#include <memory>

namespace {

using Marshal = StructQXT_Profile_ConversionMarshal;
constexpr eDSN inConfiguration = KorDSNDefinitions::kConfiguration;

/// Counts how often it is made of the rows.
struct Counted {
    explicit Counted(const KorArray<StructQXT_Profile_Conversion>&) { ++made; }
    static inline int made = 0;
};

std::string row(int key, const std::string& section, const std::string& answer)
{
    return "INSERT INTO QXT_Profile_Conversion VALUES (" + std::to_string(key) + ", 'C', '" + section +
           "', 1, 1, 'N', '" + answer + "', -1, -1, '')";
}

void run(eDSN dsn, const std::string& statement)
{
    EXPECT_EQ(KorDatabaseAccess::doSQLStatement(dsn, KorString::fromUtf8(statement)), 1) << statement;
}

/// What the rules make of "a1".
std::string answer()
{
    KorString outClass, out = L"none";
    KorODBCQXT_Profile_Conversion::getQXTProfiles(L"C", L"a1", 1, 1, outClass, out);
    EXPECT_NE(Marshal::derived<Counted>(), nullptr);
    return out.toUtf8();
}

TEST(DerivedRecordsTest, AreMadeOncePerStateOfTheTable)
{
    auto repository = std::make_unique<RepositoryFolder>();
    run(inConfiguration, row(5, "a(.)", "first %1"));
    const struct {
        const char* what;
        std::function<void()> act;
        const char* answer;
        int made; // anew
    } steps[] = {
        {"first", [] {}, "first 1", 1},
        {"a reset without a change", [] { KorODBCQXT_Profile_Conversion::resetTable(); }, "first 1", 0},
        {"a statement", [] { run(inConfiguration, "UPDATE QXT_Profile_Conversion SET QXTSection = '%1'"); }, "1",
         1},
        {"another table", [] { run(inConfiguration, "DELETE FROM Profile_Exports_Conversion"); }, "1", 0},
        {"a row before it", [] { run(inConfiguration, row(1, "a1", "before")); }, "before", 1},
        {"a row behind it", [] { run(inConfiguration, row(9, "a1", "behind")); }, "before", 1},
        {"a cell",
         [] {
             EXPECT_EQ(KorDatabaseAccess::setTableColumnValue(inConfiguration, L"QXT_Profile_Conversion", L"Key",
                                                              L"1", 2, KorCellData(KorString(L"a2"))),
                       1);
         },
         "1", 1},
        {"rows gone",
         [] {
             run(inConfiguration, "DELETE FROM QXT_Profile_Conversion WHERE [Key] < 9");
             EXPECT_EQ(KorDatabaseAccess::deleteLine(L"QXT_Profile_Conversion", KorCellData(9)), 1);
         },
         "none", 1},
        {"a record",
         [] {
             const KorDatabaseBatch batch; // one INSERT
             KorCellData key(50);
             EXPECT_EQ(
                 KorDatabaseAccess::appendNewLine(inConfiguration, L"QXT_Profile_Conversion", key, false, true),
                 1);
             const StructQXT_Profile_Conversion record{key.getInt(), L"C",      L"a.", 1,  1,
                                                       L"N",         L"record", -1,    -1, L""};
             EXPECT_EQ(KorDatabaseAccess::setRecord(inConfiguration, L"QXT_Profile_Conversion", Marshal::type(),
                                                    key, &record),
                       1);
         },
         "record", 1},
        {"an undone batch",
         [] {
             KorDatabaseBatch batch;
             run(inConfiguration, row(1, "a.", "undone"));
             EXPECT_EQ(answer(), "undone");
             batch.undo();
         },
         "record", 1},
        {"another program, not looked for",
         [&] { repository->executeOutside("configuration.db", row(1, "a.", "other")); }, "record", 0},
        {"another program", [] { KorODBCQXT_Profile_Conversion::resetTable(); }, "other", 1},
        {"a second repository",
         [&] {
             repository.reset();
             repository = std::make_unique<RepositoryFolder>();
         },
         "none", 1},
    };
    for (const auto& [what, act, expected, made] : steps) {
        SCOPED_TRACE(what);
        act();
        const int before = Counted::made;
        EXPECT_EQ(answer(), expected);
        EXPECT_EQ(Counted::made - before, made);
    }
    // each source keeps its own
    run(KorDSNDefinitions::kAddin, "CREATE TABLE QXT_Profile_Conversion ([Key] INTEGER PRIMARY KEY, Class TEXT, "
                                   "Section TEXT, Application INTEGER, ObjectType INTEGER, QXTClass TEXT, "
                                   "QXTSection TEXT, Family INTEGER, Source INTEGER, OwnerText TEXT)");
    run(KorDSNDefinitions::kAddin, row(1, "a.", "add-in"));
    const int before = Counted::made;
    for (int i = 0; i < 3; ++i) {
        {
            const KorDSNRequest request(KorDSNDefinitions::kAddin, KorDSNDefinitions::kBase);
            EXPECT_EQ(answer(), "add-in");
        }
        EXPECT_EQ(answer(), "none");
    }
    EXPECT_EQ(Counted::made - before, 1);
    run(inConfiguration, "DROP TABLE QXT_Profile_Conversion");
    EXPECT_EQ(Marshal::derived<Counted>(), nullptr);
}

} // namespace
