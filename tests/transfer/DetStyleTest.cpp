#include "catalogues/CatalogueFixture.h"
#include "support/DetailFixture.h"
#include "transfer/KorODBCDetStyle.h"

#include <algorithm>
#include <functional>
#include <set>

using namespace details;

namespace {

using Style = KorODBCDetStyle;

/// Readers on the shipped catalogue.
class DetStyleReadersTest : public CatalogueTest {
protected:
    /// One record per row, found by the texts of a column; none for others.
    template <class T, class By, class Read>
    static void expectRecords(const char* name, int column, By by, Read read, const Texts& unknown)
    {
        SCOPED_TRACE(name);
        const RecordDescription& type = descriptionOf<T>();
        const Texts rows = rowsOf(type), values = valuesOf(type, column);
        EXPECT_FALSE(rows.empty());
        T record;
        for (std::size_t i = 0; i < rows.size(); ++i) {
            mark(type, &record);
            EXPECT_EQ(read(by(values[i]), record), 1);
            EXPECT_TRUE(isRow(type, &record, rows[i]));
            if (const MemberList* items = type.itemList(); items != nullptr && type.itemCount >= 0) {
                EXPECT_EQ(items->length(&record), type.at(type.itemCount)->integer(&record));
            }
        }
        mark(type, &record);
        const std::string before = textOf(type, &record);
        for (const std::string& value : unknown)
            EXPECT_EQ(read(by(value), record), 0) << value;
        dropTable(type);
        EXPECT_NE(read(by(values[0]), record), 1);
        EXPECT_EQ(textOf(type, &record), before);
    }
    template <class T>
    static void byKey(const char* name, int (*read)(const KorOdbcKey&, T&))
    {
        expectRecords<T>(name, descriptionOf<T>().key,
                         [](const std::string& key) { return KorOdbcKey(std::stol(key)); }, read,
                         {"-1", "0", "4711"});
    }
    template <class T>
    static void byName(const char* name, int (*read)(const KorString&, T&))
    {
        expectRecords<T>(name, descriptionOf<T>().runName, text, read,
                         {"", "' OR 1 = 1", "no such name", awkward});
    }
    template <class T>
    static void wholeTable(const char* name, int (*read)(KorArray<T>&))
    {
        SCOPED_TRACE(name);
        const RecordDescription& type = descriptionOf<T>();
        const Texts rows = rowsOf(type);
        EXPECT_FALSE(rows.empty());
        KorArray<T> records;
        records.setLogicalLength(2); // replaced, not added to
        EXPECT_EQ(read(records), 1);
        ASSERT_EQ(records.length(), static_cast<int>(rows.size()));
        for (int i = 0; i < records.length(); ++i)
            EXPECT_TRUE(isRow(type, &records[i], rows[static_cast<std::size_t>(i)]));
        dropTable(type);
        EXPECT_NE(read(records), 1);
        EXPECT_EQ(records.length(), static_cast<int>(rows.size()));
    }
    template <class T>
    static void nameList(const char* name, int (*read)(KorArray<KorString>&))
    {
        SCOPED_TRACE(name);
        const RecordDescription& type = descriptionOf<T>();
        const Texts expected = valuesOf(type, type.runName);
        EXPECT_FALSE(expected.empty());
        KorArray<KorString> names = korTexts({"old"});
        EXPECT_EQ(read(names), 1);
        EXPECT_EQ(utf8(names), expected);
        dropTable(type);
        EXPECT_NE(read(names), 1);
        EXPECT_EQ(utf8(names), expected);
    }
    /// The records whose field has each value that occurs, in table order.
    template <class T>
    static void where(const char* name, int T::*field, const std::function<int(long, KorArray<T>&)>& read)
    {
        SCOPED_TRACE(name);
        KorArray<T> all;
        ASSERT_EQ(RecordMarshal<T>::getTable(all), 1);
        std::set<int> values;
        for (const T& record : all)
            values.insert(record.*field);
        EXPECT_GT(values.size(), 1u);
        for (const int value : values) {
            std::vector<int> expected, found;
            for (const T& record : all)
                if (record.*field == value)
                    expected.push_back(record.key);
            KorArray<T> records;
            EXPECT_EQ(read(value, records), 1);
            for (const T& record : records)
                found.push_back(record.key);
            EXPECT_EQ(found, expected);
        }
        KorArray<T> records;
        EXPECT_EQ(read(4711, records), 0);
        EXPECT_TRUE(records.isEmpty());
    }
};

#define READS(operation) #operation, &Style::operation

// Each reader is the last to see its table: the tables go when their readers are through.

TEST_F(DetStyleReadersTest, RecordsByKey)
{
    byKey(READS(getDetObjQualifier));
    byKey<StructDetObjQualifierSet>(READS(getDetObjQualifierSet));
    byKey(READS(getDetAcadSettings));
    byKey(READS(getDetHatchSettings));
    byKey(READS(getDetGridRefSettings));
    byKey(READS(getDetObjAppearance));
    byKey(READS(getDetObjAnnotationStrategy));
    byKey(READS(getDetViewSystemSource));
    byKey(READS(getDetViewSystemAndBox));
    byKey(READS(getDetViewDimPointSelection));
    byKey(READS(getDetViewDimSum));
    byKey(READS(getDetViewRequest));
    byKey(READS(getDetObjSelectionStrategy));
    byKey(READS(getDetailOrientation));
    byKey(READS(getDetViewArrangeStrategy));
    byKey(READS(getDetLeaderStyle));
    byKey(READS(getDetViewLengthClip));
    byKey(READS(getDetObjReprMap));
    byKey(READS(getDetViewDimRequestLinear));
    byKey(READS(getDetViewDimStrategy));
    byKey<StructDetailStyle>(READS(getDetailStyle));
    byKey(READS(getDetAnnotationType));
    byKey(READS(getDetArrangerControl));
    byKey(READS(getDetArrangerStrategy));
    byKey<StructDetailProcessDefinition>(READS(getDetailProcessDefinition));
    byKey<StructDetailProcessStep>(READS(getDetailProcessStep));
    byKey(READS(getCoordSystemSelector));
    byKey<StructDetailStyleMap>(READS(getDetailStyleMap));
    byKey<StructDetailStyleOverrides>(READS(getDetailStyleOverrides));
    byKey<StructDetailFilenameSelector>(READS(getDetailFilenameSelector));
    byKey(READS(getDetailProcessStepPrecondition));
    byKey<StructDetailProcessSort>(READS(getDetailProcessSort));
    byKey<StructDetailProcessSelection>(READS(getDetailProcessSelection));
    byKey<StructDetProcessScales>(READS(getDetProcessScales));
    byKey(READS(getLinetypes));
}

TEST_F(DetStyleReadersTest, RecordsByRunName)
{
    byName<StructDetObjQualifierSet>(READS(getDetObjQualifierSet));
    byName<StructDetailStyle>(READS(getDetailStyle));
    byName<StructDetailProcessDefinition>(READS(getDetailProcessDefinition));
    byName<StructDetailProcessStep>(READS(getDetailProcessStep));
    byName<StructDetailStyleMap>(READS(getDetailStyleMap));
    byName<StructDetailStyleOverrides>(READS(getDetailStyleOverrides));
    byName<StructDetailFilenameSelector>(READS(getDetailFilenameSelector));
    byName<StructDetailProcessSort>(READS(getDetailProcessSort));
    byName<StructDetailProcessSelection>(READS(getDetailProcessSelection));
    byName<StructDetProcessScales>(READS(getDetProcessScales));
    byName(READS(getProfileSubtype));
}

TEST_F(DetStyleReadersTest, WholeTables)
{
    wholeTable(READS(getDetObjQualifierSetTable));
    wholeTable(READS(getDetViewRequestTable));
    wholeTable(READS(getDetViewRequestCategoriesTable));
    wholeTable(READS(getDetBaseCategoriesTable));
    wholeTable(READS(getDetailStyleTable));
    wholeTable(READS(getDetailProcessDefinitionTable));
    wholeTable(READS(getDetailProcessStepTable));
    wholeTable(READS(getDetailStyleOverridesTable));
}

TEST_F(DetStyleReadersTest, RunNameLists)
{
    nameList<StructDetailStyle>(READS(getDetailStyleList));
    nameList<StructDetailStyleMap>(READS(getDetailStyleMapList));
    nameList<StructDetailProcessDefinition>(READS(getDetailProcessDefinitionList));
    nameList<StructDetailProcessStep>(READS(getDetailProcessStepList));
    nameList<StructDetailProcessCategory>(READS(getDetailProcessCategoryList));
    nameList<StructDetailStyleOverrides>(READS(getDetailStyleOverridesList));
    nameList<StructDetProcessScales>(READS(getDetProcessScalesList));
    nameList<StructDetailFilenameSelector>(READS(getDetailFilenameSelectorList));
    nameList<StructDetailProcessSort>(READS(getDetailProcessSortList));
    nameList<StructDetailProcessSelection>(READS(getDetailProcessSelectionList));
}

TEST_F(DetStyleReadersTest, RecordsOfAGroupOrType)
{
    where<StructDetObjQualifierSet>("sets", &StructDetObjQualifierSet::group,
                                    &Style::getDetObjQualifierSetByGroup);
    where<StructDetObjAnnotationStrategy>("strategies", &StructDetObjAnnotationStrategy::group,
                                          &Style::getDetObjAnnotationStrategyByGroup);
    where<StructDetViewDimPointSelection>("points", &StructDetViewDimPointSelection::type,
                                          &Style::getDetViewDimPointSelectionByType);
}

/// Every class of sections names a subtype that there is, with the shape of the class.
TEST_F(DetStyleReadersTest, SubtypesOfSectionClasses)
{
    KorArray<StructProfileClass> classes;
    ASSERT_EQ(StructProfileClassMarshal::getTable(classes), 1);
    for (const StructProfileClass& profileClass : classes) {
        StructProfileSubtype subtype;
        EXPECT_EQ(Style::getProfileSubtype(profileClass.subtypeName, subtype), 1) << profileClass.key.toUtf8();
        EXPECT_EQ(subtype.shape, profileClass.shape);
        int key = -1;
        EXPECT_EQ(Style::getProfileSubtypeKey(profileClass.subtypeName, key), 1);
        EXPECT_EQ(key, subtype.key);
    }
    KorString key = L"old";
    EXPECT_EQ(Style::getProfileSubtypeKey(L"it's no section", key), 0);
    EXPECT_EQ(key, L"old");
}

/// What the processes of the catalogue draw.
TEST_F(DetStyleReadersTest, SelectModesOfTheShippedProcesses)
{
    const int modes[] = {2, 2, 3, 6, 2, 1, 1, 4};
    for (int definition = 1; definition <= 8; ++definition)
        EXPECT_EQ(Style::getProcessSelectMode(definition), modes[definition - 1]) << definition;
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
        const char* text;
        int mode;
    } cases[] = {
        {"ALL", 1},
        {"ALL_SINGLEPARTS", 2},
        {"ALL SINGLEPARTS", 2},
        {"ALL'SINGLEPARTS and more", 2},
        {"ALL_MAINPARTS", 3},
        {"ALL_MAINPARTSWITH", 3},
        {"ALL_MAINPARTSWITHCONNPARTS", 4},
        {"ALL_MAINPARTSWITHCONNPARTS_X", 4},
        {"ALLX", 0},
        {"ALL_", 0},
        {"ALLSINGLEPARTS", 0}, // the S would be the separator
        {"ALL__SINGLEPARTS", 0},
        {"ALL_SELECTIONSET", 0},
        {"SELECTIONSET", 8},
        {"SELECTIONSETX", 8},
        {"SELECTIONSET_", 8},
        {"SELECTIONSET_ALL", 8},
        {"SELECTIONSETMAINPARTS", 8},
        {"SELECTIONSET_SINGLEPARTS", 5},
        {"SELECTIONSET_MAINPARTS", 6},
        {"SELECTIONSET_MAINPARTSWITHCONNPARTS", 7},
        {"SINGLEPARTS", 2},
        {"SINGLEPARTS_MAINPARTS", 2},
        {"MAINPARTS", 3},
        {"MAINPARTSWITHCONNPARTS", 4},
        {"", 0},
        {" ALL", 0},
        {"all", 0},
        {"AL", 0},
        {"SELECTION", 0},
        {"_MAINPARTS", 0},
        {awkward, 0},
    };
    for (const auto& [selection, mode] : cases) {
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
    EXPECT_EQ(Style::composeDetailStyleKey(7, 1, key), 0);
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

TEST_F(DetStyleTest, CategoriesGoToTheCurrentDatabase)
{
    const Texts before = categories(details);
    current(addin, firstAddin);
    StructDetViewRequest record;
    record.key = 101; // not in the base details
    record.categories.append({-1, 101, 101, 0});
    record.categories.append({101, 102, 101, 1});
    EXPECT_EQ(Style::setDetViewRequestCategories(record), 1);
    EXPECT_EQ(categories(addin), Texts({"102|101|101", "103|101|101"}));
    EXPECT_EQ(categories(details), before);
    EXPECT_TRUE(exists(addin, "DetViewRequestCategories_VELCopy"));
    EXPECT_FALSE(exists(details, "DetViewRequestCategories_VELCopy"));
    EXPECT_FALSE(KorDSNManager::getInstance().isRequested());
}

TEST_F(DetStyleTest, CategoriesThatCannotBeStored)
{
    const Texts before = categories(details);
    AssertionRecorder assertions;
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
    sql(details, {"DROP INDEX refused"});
    assertions.take();

    // without the column of the request
    sql(details, {"DROP INDEX DetViewRequestCategories_Owner",
                  "ALTER TABLE DetViewRequestCategories DROP COLUMN DetViewRequest"});
    EXPECT_EQ(Style::setDetViewRequestCategories(record), 1);
    EXPECT_EQ(assertions.take(), Texts({"KorODBCDetStyle: 0 < nRet"}));
    EXPECT_EQ(categories(details), Texts({"2|1", "3|1"}));
}

} // namespace
