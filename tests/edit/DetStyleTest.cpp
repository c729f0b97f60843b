#include "catalogues/ReaderCases.h"
#include "support/DetailFixture.h"

#include <korodbc/edit/KorODBCDetStyle.h>

#include <algorithm>

using namespace details;

namespace {

using Style = KorODBCDetStyle;

class DetStyleReadersTest : public ReaderTest {};

TEST_F(DetStyleReadersTest, RecordsByKey)
{
    byKey(&Style::getDetObjQualifierSet, &Style::getDetViewRequest, &Style::getDetailStyle,
          &Style::getDetObjReprMap);
}

TEST_F(DetStyleReadersTest, RecordsByRunName)
{
    byRunName(&Style::getDetObjQualifierSet, &Style::getProfileSubtype);
    named(&Style::getDetailStyle, &Style::getDetailStyleList);
    named(&Style::getDetailStyleMap, &Style::getDetailStyleMapList);
    named(&Style::getDetailProcessDefinition, &Style::getDetailProcessDefinitionList);
    named(&Style::getDetailProcessStep, &Style::getDetailProcessStepList);
    named(&Style::getDetailStyleOverrides, &Style::getDetailStyleOverridesList);
    named(&Style::getDetProcessScales, &Style::getDetProcessScalesList);
    named(&Style::getDetailFilenameSelector, &Style::getDetailFilenameSelectorList);
    named(&Style::getDetailProcessSort, &Style::getDetailProcessSortList);
    named(&Style::getDetailProcessSelection, &Style::getDetailProcessSelectionList);
    runNames<StructDetailProcessCategory>(&Style::getDetailProcessCategoryList);
}

TEST_F(DetStyleReadersTest, WholeTables)
{
    tables(&Style::getDetViewRequestCategoriesTable, &Style::getDetailStyleTable);
}

TEST_F(DetStyleReadersTest, RecordsOfAGroupOrType)
{
    where(&StructDetObjQualifierSet::group, &Style::getDetObjQualifierSetByGroup, Held::Kept);
    where(&StructDetObjAnnotationStrategy::group, &Style::getDetObjAnnotationStrategyByGroup, Held::Kept);
    where(&StructDetViewDimPointSelection::type, &Style::getDetViewDimPointSelectionByType, Held::Kept);
}

/// Every class of sections names a subtype that there is, with the shape of the class.
TEST_F(DetStyleReadersTest, SubtypesOfSectionClasses)
{
    field(&StructProfileSubtype::key, &Style::getProfileSubtypeKey<int>, 0, 0);
    KorArray<StructProfileClass> classes;
    ASSERT_EQ(StructProfileClassMarshal::getTable(classes), 1);
    for (const StructProfileClass& profileClass : classes) {
        StructProfileSubtype subtype;
        EXPECT_EQ(Style::getProfileSubtype(profileClass.subtypeName, subtype), 1) << profileClass.key.toUtf8();
        EXPECT_EQ(subtype.shape, profileClass.shape);
    }
}

class DetStyleTest : public DetailTest {
protected:
    static StructDetViewRequest request(int key)
    {
        StructDetViewRequest record;
        EXPECT_EQ(StructDetViewRequestMarshal::getStructByKey(key, record), 1);
        StructDetViewRequestMarshal::loadCategories(record);
        return record;
    }
    static Texts categories(eDSN dsn) { return rows(dsn, "DetViewRequestCategories"); }
    /// The entries of a request as key, base category, request and whether they are deleted.
    static Texts entries(const StructDetViewRequest& request)
    {
        Texts texts;
        for (const StructDetViewRequestCategory& entry : request.categories)
            texts.push_back(KorString::format(L"%d|%d|%d|%d", entry.key, entry.baseCategory, entry.detViewRequest,
                                              entry.deleted)
                                .toUtf8());
        return texts;
    }
};

TEST_F(DetStyleTest, SelectModes)
{
    put(details, StructDetailProcessSelection{7, L"selection", L"", L""});
    StructDetailProcessStep first, second;
    first.key = 5;
    first.selection = 7;
    second.key = 6;
    put(details, first);
    put(details, second);
    put(details, StructDetailProcessDefinition{3, L"process", -1, L"", 0, 0, L"", 0, list<int>({5, 6})});
    const struct {
        int mode;
        Texts selections;
    } cases[] = {
        {1, {"ALL"}},
        {2, {"ALL_SINGLEPARTS", "ALL'SINGLEPARTS and more", "SINGLEPARTS"}},
        {3, {"ALL_MAINPARTS", "ALL_MAINPARTSWITH", "MAINPARTS"}},
        {4, {"ALL_MAINPARTSWITHCONNPARTS", "ALL_MAINPARTSWITHCONNPARTS_X", "MAINPARTSWITHCONNPARTS"}},
        {5, {"SELECTIONSET_SINGLEPARTS"}},
        {6, {"SELECTIONSET_MAINPARTS"}},
        {7, {"SELECTIONSET_MAINPARTSWITHCONNPARTS"}},
        {8, {"SELECTIONSET", "SELECTIONSETX", "SELECTIONSET_", "SELECTIONSET_ALL", "SELECTIONSETMAINPARTS"}},
        // in the first, the S is the separator
        {0,
         {"ALLSINGLEPARTS", "ALLX", "ALL_", "ALL__SINGLEPARTS", "ALL_SELECTIONSET", "", " ALL", "all", "AL",
          "SELECTION", "_MAINPARTS", awkward}},
    };
    for (const auto& [mode, selections] : cases)
        for (const std::string& selection : selections) {
            ASSERT_EQ(KorDatabaseAccess::setTableColumnValue(details, L"DetailProcessSelection", L"Key", L"7", 2,
                                                             text(selection)),
                      1);
            EXPECT_EQ(Style::getProcessSelectMode(3), mode) << selection;
        }
    AssertionRecorder assertions;
    EXPECT_EQ(Style::getProcessSelectMode(4), 0);
    sql(details, {"UPDATE DetailProcessSelection SET Selection = 'ALL'"});
    ASSERT_EQ(Style::getProcessSelectMode(3), 1);
    for (const char* statement :
         {"DELETE FROM DetailProcessSelection", "DELETE FROM DetailProcessStep WHERE [Key] = 5",
          "UPDATE DetailProcessDefinition SET NumberSteps = 0"}) {
        sql(details, {statement});
        EXPECT_EQ(Style::getProcessSelectMode(3), 0) << statement;
    }
    EXPECT_EQ(assertions.take(), Texts());
}

TEST_F(DetStyleTest, ColumnTypesOfSystemsAndBoxes)
{
    sql(addin, {"ALTER TABLE DetViewSystemAndBox ADD COLUMN Note TEXT"});
    const int last = static_cast<int>(columns(details, "DetViewSystemAndBox").size()) - 1;
    const struct {
        eDSN dsn;
        int column;
        long type;
    } cases[] = {{details, 0, 2},      {details, 1, 3},        {details, 8, 4},
                 {details, last, 3},   {details, last + 1, 2}, {details, -1, 2},
                 {addin, last + 1, 3}, {addin, last + 2, 2},   {configuration, 1, 2}}; // has no such table
    for (const auto& [dsn, column, type] : cases) {
        current(dsn, dsn == addin ? firstAddin : base);
        EXPECT_EQ(Style::getSystemAndBoxColumnType(column), type) << dsn << " " << column;
    }
}

TEST_F(DetStyleTest, StyleKeyByBaseCategoryAndNumber)
{
    sql(details, {"UPDATE DetailMasterTable SET BaseCategory = 2, SubCategory = 7, DetailStyle = 5"});
    long key = -5;
    EXPECT_EQ(Style::composeDetailStyleKey(2, 7, key), 0);
    EXPECT_EQ(key, -5);
    EXPECT_EQ(Style::composeDetailStyleKey(7, 2, key), 1);
    EXPECT_EQ(key, 5);
}

TEST_F(DetStyleTest, BaseCategoryOfARequest)
{
    KorString name = L"old";
    EXPECT_EQ(Style::getDetBaseCategoryByDetViewRequestKey(2, name), 0);
    EXPECT_EQ(name, L"old");
    EXPECT_EQ(Style::getDetBaseCategoryByDetViewRequestKey(1, name), 1);
    EXPECT_EQ(name, text(std::string("views ") + awkward)); // of two the first
    sql(details, {"DELETE FROM DetBaseCategories WHERE [Key] = 2"});
    EXPECT_EQ(Style::getDetBaseCategoryByDetViewRequestKey(1, name), 0); // the second entry does not stand in
}

TEST_F(DetStyleTest, CategoriesOfARequestAreStored)
{
    const Texts before = categories(details);
    ASSERT_EQ(before, Texts({"1|2|1", "2|1|1"}));
    StructDetViewRequest record = request(1);
    record.categories[1].deleted = 1;
    const int none = -1;
    record.categories.append({none, 1, none, 0});
    record.categories.append({none, 1, none, 1});  // new and deleted
    record.categories.append({none, 99, none, 0}); // no such base category
    record.categories.append({-7, 2, 1, 0});
    AssertionRecorder assertions;
    {
        StatementRecorder statements(true);
        EXPECT_EQ(Style::setDetViewRequestCategories(record), 1);
        EXPECT_EQ(std::ranges::count(statements.take(), "COMMIT"), 1);
    }
    EXPECT_EQ(categories(details), Texts({"1|2|1", "3|2|1", "4|1|1"})); // appended from the last to the first
    EXPECT_EQ(entries(record), Texts({"1|2|1|0", "4|1|-1|0", "-1|1|-1|1", "-1|99|-1|0", "3|2|1|0"}));
    EXPECT_EQ(assertions.take(), Texts());
    EXPECT_EQ(categories(addin), Texts({"101|102|101", "102|101|101"}));

    // again: nothing left to do
    EXPECT_EQ(Style::setDetViewRequestCategories(record), 1);
    EXPECT_EQ(categories(details).size(), 3u);

    // requests and categories can be cancelled together
    for (const Man::eTableType type : {Man::kDetViewRequest, Man::kDetViewRequestCategories}) {
        EXPECT_EQ(Man::getStatus(type, depth(0)), Man::eModified);
        EXPECT_EQ(Man::getStatus(type, depth(1)), Man::eNotModified);
        EXPECT_EQ(Man::setStatusOnCancel(type, depth(0)), 1);
    }
    EXPECT_EQ(categories(details), before);
}

/// Without a request the readers read where the writers write: in the second of two country add-ins.
TEST_F(DetStyleTest, ReadersReadTheManagersDatabase)
{
    const int last = static_cast<int>(columns(details, "DetViewSystemAndBox").size());
    const auto found = [&] {
        StructDetailStyle style;
        StructDetViewDimStrategy strategy;
        KorArray<StructDetailStyle> styles;
        KorArray<StructDetObjQualifierSet> sets;
        KorArray<KorString> names;
        KorString category;
        long key = 0;
        const std::string results = std::to_string(Style::getDetailStyle(KorOdbcKey(201), style)) +
                                    std::to_string(Style::getDetailStyle(KorString(L"style second"), style)) +
                                    std::to_string(Style::getDetViewDimStrategy(KorOdbcKey(201), strategy)) +
                                    std::to_string(Style::getDetObjQualifierSetByGroup(KorOdbcKey(201), sets)) +
                                    std::to_string(Style::composeDetailStyleKey(1, 201, key)) +
                                    std::to_string(Style::getDetBaseCategoryByDetViewRequestKey(201, category));
        EXPECT_EQ(Style::getDetailStyleTable(styles) + Style::getDetailStyleList(names), 2);
        return results + " " + std::to_string(strategy.items.length()) + std::to_string(sets.length()) + " " +
               std::to_string(styles.length() + names.length()) + " " +
               std::to_string(Style::getSystemAndBoxColumnType(last));
    };
    EXPECT_EQ(found(), "000000 00 4 2");
    useSecondCountryAddIn();
    within(country, secondAddin, [] { sql(country, {"ALTER TABLE DetViewSystemAndBox ADD COLUMN Note TEXT"}); });
    EXPECT_EQ(found(), "111111 22 4 3");
    EXPECT_EQ(within(details, base, found), "000000 00 4 2"); // a request goes before
    // what it does not have is read where it is
    StructProfileSubtype subtype;
    put(KorDSNDefinitions::kProfiles, StructProfileSubtype{});
    EXPECT_EQ(Style::getProfileSubtype(subtype.runName, subtype), 1);
    EXPECT_FALSE(KorDSNManager::getInstance().isRequested());
    EXPECT_EQ(KorDSNManager::getInstance().getCurrentDSN(), details);
    // a new category goes there, too
    StructDetViewRequest record;
    record.key = 201;
    record.categories.append({-1, 201, 201, 0});
    EXPECT_EQ(Style::setDetViewRequestCategories(record), 1);
    EXPECT_EQ(categories(country), Texts());
    const KorDSNRequest request(country, secondAddin);
    EXPECT_EQ(categories(country), Texts({"201|202|201", "202|201|201", "203|201|201"}));
    EXPECT_TRUE(exists(country, "DetViewRequestCategories_VELCopy"));
}

TEST_F(DetStyleTest, CategoriesThatCannotBeStored)
{
    const Texts before = categories(details);
    const AssertionRecorder ignored;
    StructDetViewRequest record = request(1);
    record.categories[0].deleted = 1;
    record.categories.append({-1, 1, 1, 0});
    const Texts asGiven = entries(record);

    // of an unknown request
    record.key = 4711;
    EXPECT_EQ(Style::setDetViewRequestCategories(record), 0);
    EXPECT_FALSE(exists(details, "DetViewRequestCategories_VELCopy"));
    EXPECT_EQ(Man::getStatus(Man::kDetViewRequest, depth(0)), Man::eNotModified);
    EXPECT_EQ(entries(record), asGiven);
    record.key = 1;

    // the database refuses the new row: all or nothing
    sql(details, {"CREATE UNIQUE INDEX refused ON DetViewRequestCategories (BaseCategory, DetViewRequest)"});
    EXPECT_EQ(Style::setDetViewRequestCategories(record), 0);
    EXPECT_EQ(entries(record), asGiven);
    EXPECT_EQ(categories(details), before);
    EXPECT_EQ(Man::getStatus(Man::kDetViewRequest, depth(0)), Man::eNotModified);
}

} // namespace
