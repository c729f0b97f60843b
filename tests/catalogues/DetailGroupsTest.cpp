#include "catalogues/ReaderCases.h"
#include "support/DetailFixture.h"

#include <korodbc/catalogues/DetailGroups.h>

#include <functional>

using namespace details;

namespace {

using Annotations = KorODBCDetObjAnnotationGroup;
using Sets = KorODBCDetObjQualifierSetGroup;
using Chains = KorODBCDetViewDimRequestLinearGroup;

class DetailGroupReadersTest : public ReaderTest {};

TEST_F(DetailGroupReadersTest, Readers)
{
    byKey(&Annotations::getDetObjAnnotationGroup, &Sets::getDetObjQualifierSetGroup,
          &Chains::getDetViewDimRequestLinearGroup);
    named(&Annotations::getDetObjAnnotationGroupByRunName, &Annotations::getDetObjAnnotationSetGroupRunNameList);
    named(&Sets::getDetObjQualifierSetGroupByRunName, &Sets::getDetObjQualifierSetGroupRunNameList);
    named(&Chains::getDetViewDimRequestLinearGroupByRunName, &Chains::getDetViewDimRequestLinearGroupRunNameList);
    tables(&Annotations::getDetObjAnnotationGroupList, &Sets::getDetObjQualifierSetGroupTable,
           &Chains::getDetViewDimRequestLinearGroupList);
}

/// Stands for a group of any of the three kinds.
using Group = StructDetObjAnnotationGroup;

struct Kind {
    std::string table;
    Texts failedWrite; // the assertions that it raises
    std::function<int(Group&, int isNew)> save;
    std::function<int(int key)> bitmapId; // of the record as it is read
};

template <class G>
Kind kind(const Texts& failedWrite, int (*save)(G&, int), int (*read)(const KorOdbcKey&, G&))
{
    return {std::string(descriptionOf<G>().table), failedWrite,
            [=](Group& group, int isNew) {
                G record{group.key, group.runName, group.bitmapId};
                const int result = save(record, isNew);
                group = {record.key, record.runName, record.bitmapId};
                return result;
            },
            [=](int key) {
                G record;
                EXPECT_EQ(read(KorOdbcKey(key), record), 1);
                return record.bitmapId;
            }};
}

class DetailGroupsTest : public DetailTest, public testing::WithParamInterface<Kind> {
protected:
    static int save(Group& group, int isNew) { return GetParam().save(group, isNew); }
    static const std::string& table() { return GetParam().table; }
    static Texts stored(eDSN dsn = details) { return rows(dsn, table()); }
};
INSTANTIATE_TEST_SUITE_P(
    Kinds, DetailGroupsTest,
    testing::Values(kind({"KorODBCDetObjAnnotationGroup: 1 == nOk"}, &Annotations::saveDetObjAnnotationGroup,
                         &Annotations::getDetObjAnnotationGroup),
                    kind({"KorODBCDetObjQualifierSetGroup: 1 == nOk"}, &Sets::saveDetObjQualifierSetGroup,
                         &Sets::getDetObjQualifierSetGroup),
                    kind({}, &Chains::saveDetViewDimRequestLinearGroup, &Chains::getDetViewDimRequestLinearGroup)),
    [](const auto& one) { return one.param.table; });

TEST_P(DetailGroupsTest, SavingAppendsOrUpdates)
{
    const std::string first = stored().at(0), added = std::string("|") + awkward + "|77";
    AssertionRecorder assertions;

    // the new flag goes before the key, which is in use
    Group group{1, text(awkward), 77};
    EXPECT_EQ(save(group, 1), 1);
    EXPECT_EQ(group.key, 2);
    EXPECT_EQ(stored(), Texts({first, "2" + added}));

    // an unknown key is not kept
    for (const int unknown : {4711, -1}) {
        group.key = unknown;
        EXPECT_EQ(save(group, 0), 1);
        EXPECT_EQ(group.key, unknown == 4711 ? 3 : 4);
    }

    // a known one is
    group = {2, L"", -3};
    EXPECT_EQ(save(group, 0), 1);
    EXPECT_EQ(group.key, 2);
    EXPECT_EQ(stored(), Texts({first, "2||-3", "3" + added, "4" + added}));
    EXPECT_EQ(GetParam().bitmapId(2), -3);
    EXPECT_EQ(assertions.take(), Texts());
}

TEST_P(DetailGroupsTest, SavingGoesToTheCurrentDatabase)
{
    const Texts before = stored();
    current(addin, firstAddin);
    Group group{1, L"of the add-in", 8}; // the key is known in the base details alone
    EXPECT_EQ(save(group, 0), 1);
    EXPECT_EQ(group.key, 102);
    EXPECT_EQ(stored(addin).back(), "102|of the add-in|8");
    EXPECT_EQ(stored(), before);
    EXPECT_FALSE(KorDSNManager::getInstance().isRequested());

    // the second of two country add-ins; readers without a request read there as well
    current(country, secondAddin);
    for (const int isNew : {1, 0}) {
        group = {1, isNew != 0 ? L"of the second" : L"changed", 9};
        EXPECT_EQ(save(group, isNew), 1);
        EXPECT_EQ(group.key, 1);
    }
    EXPECT_EQ(stored(country), Texts());
    EXPECT_EQ(GetParam().bitmapId(1), 9);
    const KorDSNRequest request(country, secondAddin);
    EXPECT_EQ(stored(country), Texts{"1|changed|9"});
    const KorDSNRequest other(details, base); // a request goes before
    EXPECT_NE(GetParam().bitmapId(1), 9);
    EXPECT_EQ(stored(), before);
}

TEST_P(DetailGroupsTest, FailedSaves)
{
    const Texts before = stored();
    AssertionRecorder assertions;

    // what the database refuses leaves nothing behind
    sql(details, {"CREATE UNIQUE INDEX refused ON " + table() + " (BitmapId)"});
    Group group{-5, L"new", GetParam().bitmapId(1)};
    EXPECT_EQ(save(group, 1), 0);
    EXPECT_EQ(group.key, -5);
    EXPECT_EQ(stored(), before);
    EXPECT_EQ(assertions.take(), GetParam().failedWrite);
    sql(details, {"DROP INDEX refused"});

    // a table that lacks a column is not written at all
    sql(details, {"ALTER TABLE " + table() + " DROP COLUMN BitmapId"});
    EXPECT_EQ(save(group, 1), 0);
    EXPECT_EQ(group.key, -5);
    EXPECT_EQ(stored().size(), before.size());

    // no row can be appended
    sql(details, {"DROP TABLE " + table()});
    EXPECT_EQ(save(group, 1), 0);
    EXPECT_EQ(save(group, 0), 0);
    EXPECT_EQ(group.key, -5);
    EXPECT_EQ(assertions.take(), Texts());
}

} // namespace
