#include "transfer/DetailGroups.h"

#include "support/DetailFixture.h"

#include <algorithm>
#include <functional>

using namespace details;

namespace {

/// A group of any of the three kinds.
struct Group {
    int key = -1;
    KorString runName;
    int bitmapId = 0;
};

struct Kind {
    const char* table;
    const char* asserting; // source of its assertions; nullptr: none
    std::function<int(Group&, int isNew)> save;
    std::function<int(int key, Group&)> byKey;
    std::function<int(const KorString&, Group&)> byRunName;
    std::function<int(std::vector<Group>&)> all;
    int (*names)(KorArray<KorString>&);
};

template <class G>
Kind kind(const char* asserting, int (*save)(G&, int), int (*byKey)(const KorOdbcKey&, G&),
          int (*byRunName)(const KorString&, G&), int (*all)(KorArray<G>&), int (*names)(KorArray<KorString>&))
{
    const auto through = [](Group& group, auto act) {
        G record{group.key, group.runName, group.bitmapId};
        const int result = act(record);
        group = {record.key, record.runName, record.bitmapId};
        return result;
    };
    return {
        descriptionOf<G>().table.data(),
        asserting,
        [=](Group& group, int isNew) { return through(group, [=](G& record) { return save(record, isNew); }); },
        [=](int key, Group& group) {
            return through(group, [=](G& record) { return byKey(KorOdbcKey(key), record); });
        },
        [=](const KorString& runName, Group& group) {
            return through(group, [=](G& record) { return byRunName(runName, record); });
        },
        [=](std::vector<Group>& groups) {
            KorArray<G> records;
            const int result = all(records);
            for (const G& record : records)
                groups.push_back({record.key, record.runName, record.bitmapId});
            return result;
        },
        names};
}

std::vector<Kind> kinds()
{
    using Annotations = KorODBCDetObjAnnotationGroup;
    using Sets = KorODBCDetObjQualifierSetGroup;
    using Chains = KorODBCDetViewDimRequestLinearGroup;
    return {kind<StructDetObjAnnotationGroup>(
                "KorODBCDetObjAnnotationGroup", &Annotations::saveDetObjAnnotationGroup,
                &Annotations::getDetObjAnnotationGroup, &Annotations::getDetObjAnnotationGroupByRunName,
                &Annotations::getDetObjAnnotationGroupList, &Annotations::getDetObjAnnotationSetGroupRunNameList),
            kind<StructDetObjQualifierSetGroup>(
                "KorODBCDetObjQualifierSetGroup", &Sets::saveDetObjQualifierSetGroup,
                &Sets::getDetObjQualifierSetGroup, &Sets::getDetObjQualifierSetGroupByRunName,
                &Sets::getDetObjQualifierSetGroupTable, &Sets::getDetObjQualifierSetGroupRunNameList),
            kind<StructDetViewDimRequestLinearGroup>(
                nullptr, &Chains::saveDetViewDimRequestLinearGroup, &Chains::getDetViewDimRequestLinearGroup,
                &Chains::getDetViewDimRequestLinearGroupByRunName, &Chains::getDetViewDimRequestLinearGroupList,
                &Chains::getDetViewDimRequestLinearGroupRunNameList)};
}

class DetailGroupsTest : public DetailTest {
protected:
    /// Executions of statements that start so.
    static long executed(const Texts& statements, const std::string& start)
    {
        return std::ranges::count_if(statements, [&](const std::string& sql) { return sql.starts_with(start); });
    }
};

TEST_F(DetailGroupsTest, Readers)
{
    for (const Kind& kind : kinds()) {
        SCOPED_TRACE(kind.table);
        sql(details, {std::string("INSERT INTO ") + kind.table + " VALUES (9, 'it''s ''9''', 90)"});
        const Texts stored = rows(details, kind.table);
        ASSERT_EQ(stored.size(), 2u);
        const auto row = [](const Group& group) {
            return std::to_string(group.key) + "|" + group.runName.toUtf8() + "|" + std::to_string(group.bitmapId);
        };
        std::vector<Group> all;
        EXPECT_EQ(kind.all(all), 1);
        ASSERT_EQ(all.size(), 2u);
        KorArray<KorString> names;
        EXPECT_EQ(kind.names(names), 1);
        ASSERT_EQ(names.length(), 2);
        for (std::size_t i = 0; i < 2; ++i) {
            EXPECT_EQ(row(all[i]), stored[i]);
            EXPECT_EQ(names[static_cast<long>(i)], all[i].runName);
            Group group;
            EXPECT_EQ(kind.byKey(all[i].key, group), 1);
            EXPECT_EQ(row(group), stored[i]);
            group = {};
            EXPECT_EQ(kind.byRunName(all[i].runName, group), 1);
            EXPECT_EQ(row(group), stored[i]);
        }
        Group group{5, L"unchanged", 6};
        EXPECT_EQ(kind.byKey(4711, group), 0);
        EXPECT_EQ(kind.byRunName(L"it's ''9''", group), 0);
        EXPECT_EQ(row(group), "5|unchanged|6");
    }
}

TEST_F(DetailGroupsTest, SavingAppendsOrUpdates)
{
    for (const Kind& kind : kinds()) {
        SCOPED_TRACE(kind.table);
        const std::string first = rows(details, kind.table).at(0);
        const std::string added = std::string("|") + awkward + "|77";
        AssertionRecorder assertions;

        // the new flag goes before the key, which is in use
        Group group{1, text(awkward), 77};
        EXPECT_EQ(kind.save(group, 1), 1);
        EXPECT_EQ(group.key, 2);
        EXPECT_EQ(rows(details, kind.table), Texts({first, "2" + added}));

        // an unknown key is not kept
        for (const int unknown : {4711, -1}) {
            const Texts before = rows(details, kind.table);
            group.key = unknown;
            EXPECT_EQ(kind.save(group, 0), 1);
            EXPECT_EQ(group.key, static_cast<int>(before.size()) + 1);
            EXPECT_EQ(rows(details, kind.table).size(), before.size() + 1);
            EXPECT_EQ(rows(details, kind.table).back(), std::to_string(group.key) + added);
        }

        // a known one is
        group = {2, L"", -3};
        EXPECT_EQ(kind.save(group, 0), 1);
        EXPECT_EQ(group.key, 2);
        EXPECT_EQ(rows(details, kind.table), Texts({first, "2||-3", "3" + added, "4" + added}));
        Group read;
        EXPECT_EQ(kind.byKey(2, read), 1);
        EXPECT_EQ(read.bitmapId, -3);
        EXPECT_EQ(assertions.take(), Texts());
    }
}

TEST_F(DetailGroupsTest, SavingIsOneStatement)
{
    for (const Kind& kind : kinds()) {
        SCOPED_TRACE(kind.table);
        Group group{-1, L"warm", 1};
        ASSERT_EQ(kind.save(group, 1), 1);
        for (const int isNew : {1, 0}) {
            StatementRecorder recorder(true);
            EXPECT_EQ(kind.save(group, isNew), 1);
            const Texts statements = recorder.take();
            EXPECT_EQ(executed(statements, "INSERT"), isNew);
            EXPECT_EQ(executed(statements, "UPDATE"), 1 - isNew);
            EXPECT_EQ(executed(statements, "COMMIT"), 1);
        }
    }
}

TEST_F(DetailGroupsTest, SavingGoesToTheCurrentDatabase)
{
    for (const Kind& kind : kinds()) {
        SCOPED_TRACE(kind.table);
        const Texts before = rows(details, kind.table);
        current(addin, firstAddin);
        Group group{1, L"of the add-in", 8}; // the key is known in the base details alone
        EXPECT_EQ(kind.save(group, 0), 1);
        EXPECT_EQ(group.key, 102);
        EXPECT_EQ(rows(addin, kind.table).back(), "102|of the add-in|8");
        EXPECT_EQ(rows(details, kind.table), before);
        EXPECT_FALSE(KorDSNManager::getInstance().isRequested());
        current(details, base);
    }
}

TEST_F(DetailGroupsTest, FailedSaves)
{
    for (const Kind& kind : kinds()) {
        SCOPED_TRACE(kind.table);
        const std::string table = kind.table;
        const Texts before = rows(details, table);
        AssertionRecorder assertions;

        // what the database refuses leaves nothing behind
        sql(details, {"CREATE UNIQUE INDEX refused" + table + " ON " + table + " (BitmapId)"});
        Group group{-5, L"new", std::stoi(before[0].substr(before[0].rfind('|') + 1))};
        EXPECT_EQ(kind.save(group, 1), 0);
        EXPECT_EQ(group.key, -5);
        EXPECT_EQ(rows(details, table), before);
        sql(details, {"DROP INDEX refused" + table});
        assertions.take();

        // a cell that cannot be written: the others are
        sql(details, {"ALTER TABLE " + table + " DROP COLUMN BitmapId"});
        EXPECT_EQ(kind.save(group, 1), 0);
        EXPECT_EQ(group.key, 2);
        EXPECT_EQ(rows(details, table).back(), "2|new");
        const Texts raised =
            kind.asserting == nullptr ? Texts() : Texts({std::string(kind.asserting) + ": 1 == nOk"});
        EXPECT_EQ(assertions.take(), raised);

        // no row can be appended
        sql(details, {"DROP TABLE " + table});
        EXPECT_EQ(kind.save(group, 1), 0);
        EXPECT_EQ(kind.save(group, 0), 0);
        EXPECT_EQ(group.key, 2);
        EXPECT_EQ(assertions.take(), Texts());
    }
}

} // namespace
