#include "catalogues/CatalogueFixture.h"
#include "maintenance/KorOdbcGUI.h"
#include "records/AnyRecord.h"
#include "support/DetailRecords.h"

#include <functional>

namespace {

using G = KorOdbcGUI;

/// The readers of one record type.
struct Readers {
    const RecordDescription& type;
    std::function<int(const KorString&, void* record)> byName;
    std::function<int(const KorOdbcKey&, void* record)> byKey;
    std::function<int(KorArray<KorString>&)> names;
    std::function<int(void* records)> table;
    bool appends = false; // the names to those that the list holds
};

template <class T>
struct Of : Readers {
    Of() : Readers{descriptionOf<T>(), {}, {}, {}, {}} {}
    Of& n(int (*read)(const KorString&, T&))
    {
        byName = [=](const KorString& name, void* record) { return read(name, *static_cast<T*>(record)); };
        return *this;
    }
    Of& k(int (*read)(const KorOdbcKey&, T&))
    {
        byKey = [=](const KorOdbcKey& key, void* record) { return read(key, *static_cast<T*>(record)); };
        return *this;
    }
    Of& k(int (*read)(int, T&))
    {
        byKey = [=](const KorOdbcKey& key, void* record) {
            return read(static_cast<int>(key.getKey()), *static_cast<T*>(record));
        };
        return *this;
    }
    Of& l(int (*read)(KorArray<KorString>&), bool appending = false)
    {
        names = read;
        appends = appending;
        return *this;
    }
    Of& t(int (*read)(KorArray<T>&))
    {
        table = [=](void* records) { return read(*static_cast<KorArray<T>*>(records)); };
        return *this;
    }
};

/// Picks one of several overloads.
template <class T>
using ByKey = int (*)(const KorOdbcKey&, T&);
using Names = int (*)(KorArray<KorString>&);

const std::vector<Readers>& readers()
{
    static const std::vector<Readers> all = {
        Of<StructDetailMaster>().n(&G::getDetailMaster).k(ByKey<StructDetailMaster>(&G::getDetailMaster)),
        Of<StructDetBaseCategory>()
            .n(&G::getDetBaseCategory)
            .k(ByKey<StructDetBaseCategory>(&G::getDetBaseCategory))
            .l(&G::getDetBaseCategoryList),
        Of<StructDetObjSelectionStrategy>()
            .n(&G::getDetObjSelectionStrategy)
            .l(&G::getDetObjSelectionStrategyList),
        Of<StructDetViewArrangeStrategy>().n(&G::getDetViewArrangeStrategy).l(&G::getDetViewArrangeStrategyList),
        Of<StructDetailOrientation>().n(&G::getDetailOrientation).l(&G::getDetailOrientationList),
        Of<StructBeamPositionCalculation>().l(&G::getObjectPositionList),
        Of<StructDetViewSystemAndBox>().n(&G::getDetViewSystemAndBox).l(&G::getDetViewSystemAndBoxList),
        Of<StructDetObjAppearance>()
            .n(&G::getDetViewObjAppearance)
            .l(&G::getDetViewObjAppearanceList)
            .t(&G::getDetObjAppearanceTable),
        Of<StructDetObjReprMap>().n(&G::getDetViewObjReprMap).l(&G::getDetViewObjReprMapList),
        Of<StructDetViewDimStrategy>().n(&G::getDetViewDimStrategy).l(&G::getDetViewDimStrategyList),
        Of<StructDetProcessesSuiteDefinition>()
            .n(&G::getDetProcessesSuiteDefinition)
            .k(ByKey<StructDetProcessesSuiteDefinition>(&G::getDetProcessesSuiteDefinition))
            .l(&G::getDetProcessesSuiteDefinitionList),
        Of<StructDetAcadSettings>()
            .n(&G::getDetAcadSettings)
            .k(static_cast<int (*)(int, StructDetAcadSettings&)>(&G::getDetAcadSettings))
            .l(&G::getDetAcadSettingsList),
        Of<StructDetViewArrangeDirection>()
            .n(&G::getDetViewArrangeDirection)
            .k(ByKey<StructDetViewArrangeDirection>(&G::getDetViewArrangeDirection))
            .l(&G::getDetViewArrangeDirectionList),
        Of<StructDetViewSelectMode>()
            .n(&G::getDetViewSelectMode)
            .k(ByKey<StructDetViewSelectMode>(&G::getDetViewSelectMode))
            .l(&G::getDetViewSelectModeList),
        Of<StructDetViewRequest>().n(&G::getDetViewRequest).l(&G::getDetViewRequestList),
        Of<StructDetObjAnnotationStrategy>()
            .n(&G::getDetObjAnnotationStrategy)
            .l(&G::getDetObjAnnotationStrategyList),
        Of<StructDetObjQualifierSet>().l(&G::getDetObjQualifierSetList),
        Of<StructDetHatchSettings>().n(&G::getDetHatchSettings).l(&G::getDetHatchSettingList),
        Of<StructDetGridRefSettings>().n(&G::getDetGridReferenceSettings).l(&G::getDetGridReferenceSettingList),
        Of<StructDetAnnotationType>()
            .n(&G::getDetAnnotationType)
            .l(&G::getDetAnnotationTypeList)
            .t(&G::getDetAnnotationTypeTable),
        Of<StructAnnotationTypeContents>().n(&G::getAnnotationTypeContents).l(&G::getAnnotationTypeContentsList),
        Of<StructDetLeaderStyle>().n(&G::getDetLeaderStyle).l(&G::getDetLeaderStyleList),
        Of<StructDetArrangerControl>().n(&G::getDetArrangerControl).l(&G::getDetArrangerControlList),
        Of<StructDetArrangerStrategy>().n(&G::getDetArrangerStrategy).l(&G::getDetArrangerStrategyList),
        Of<StructDetObjQualifier>().n(&G::getDetObjQualifier).l(&G::getDetObjQualifierList),
        Of<StructDetViewLengthClip>().n(&G::getDetViewLengthClip).l(&G::getDetViewLengthClipList),
        Of<StructDetRequestType>()
            .n(&G::getDetRequestType)
            .k(ByKey<StructDetRequestType>(&G::getDetRequestType))
            .l(&G::getDetRequestTypeList)
            .t(&G::getDetRequestTypeTable),
        Of<StructDetViewDimRequestLinear>()
            .n(&G::getDetViewDimRequestLinear)
            .l(&G::getDetViewDimRequestLinearList),
        Of<StructDetRequestLinearDirection>()
            .n(&G::getDetRequestLinearDirection)
            .k(ByKey<StructDetRequestLinearDirection>(&G::getDetRequestLinearDirection))
            .l(&G::getDetRequestLinearDirectionList, true),
        Of<StructDetViewDimPointtype>()
            .n(&G::getDetViewDimPointtype)
            .k(ByKey<StructDetViewDimPointtype>(&G::getDetViewDimPointtype))
            .l(&G::getDetViewDimPointtypeList, true)
            .t(&G::getDetViewDimPointtypeTable),
        Of<StructDetVwDimGeomRestrictions>()
            .n(&G::getDetVwDimGeomRestrictions)
            .k(ByKey<StructDetVwDimGeomRestrictions>(&G::getDetVwDimGeomRestrictions))
            .l(&G::getDetVwDimGeomRestrictionsList, true),
        Of<StructDetViewSystemSource>()
            .n(&G::getDetViewSystemSource)
            .l(Names(&G::getDetViewSystemSourcesList), true)
            .t(&G::getDetViewSystemSourcesTable),
        Of<StructDetViewDimPointSelection>()
            .n(&G::getDetViewDimPointSelection)
            .l(&G::getDetViewDimPointSelectionList),
        Of<StructDetViewDimSum>().n(&G::getDetViewDimSum).l(&G::getDetViewDimSumList),
        Of<StructDetModelType>()
            .n(&G::getDetModelType)
            .k(ByKey<StructDetModelType>(&G::getDetModelType))
            .l(&G::getDetModelTypeList),
        Of<StructDetRole>().n(&G::getDetRole).k(ByKey<StructDetRole>(&G::getDetRole)).l(&G::getDetRoleList),
        Of<StructDetailDepthPosition>()
            .n(&G::getDetailDepthPosition)
            .k(ByKey<StructDetailDepthPosition>(&G::getDetailDepthPosition))
            .l(&G::getDetailDepthPositionList)
            .t(&G::getDetailDepthPositionTable),
        Of<StructNCDXFOutputFileVersion>()
            .n(&G::getNCDXFOutputFileVersion)
            .k(ByKey<StructNCDXFOutputFileVersion>(&G::getNCDXFOutputFileVersion))
            .t(&G::getNCDXFOutputFileVersionTable),
        Of<StructDetailOutputFileVersion>()
            .n(&G::getDetailOutputFileVersion)
            .k(ByKey<StructDetailOutputFileVersion>(&G::getDetailOutputFileVersion))
            .t(&G::getDetailOutputFileVersionTable),
        Of<StructDetailVisibilityStatus>()
            .n(&G::getDetailVisibilityStatus)
            .k(ByKey<StructDetailVisibilityStatus>(&G::getDetailVisibilityStatus))
            .l(&G::getDetailVisibilityStatusList)
            .t(&G::getDetailVisibilityStatusTable),
        Of<StructDetailReferenceAxis>()
            .n(&G::getDetailReferenceAxis)
            .k(ByKey<StructDetailReferenceAxis>(&G::getDetailReferenceAxis))
            .l(&G::getDetailReferenceAxisList)
            .t(&G::getDetailReferenceAxisTable),
        Of<StructDetOrdinatePosition>()
            .n(&G::getDetOrdinatePosition)
            .k(ByKey<StructDetOrdinatePosition>(&G::getDetOrdinatePosition))
            .l(&G::getDetOrdinatePositionList)
            .t(&G::getDetOrdinatePositionTable),
        Of<StructDetOrdinateReference>()
            .n(&G::getDetOrdinateReference)
            .k(ByKey<StructDetOrdinateReference>(&G::getDetOrdinateReference))
            .l(&G::getDetOrdinateReferenceList)
            .t(&G::getDetOrdinateReferenceTable),
        Of<StructDetOrdinateDimType>()
            .n(&G::getDetOrdinateDimType)
            .k(ByKey<StructDetOrdinateDimType>(&G::getDetOrdinateDimType))
            .l(&G::getDetOrdinateDimTypeList)
            .t(&G::getDetOrdinateDimTypeTable),
        Of<StructDetObjQualifierFilter>()
            .n(&G::getDetObjQualifierFilterByRunName)
            .l(&G::getDetObjQualifierFilterList)
            .t(&G::getDetObjQualifierFilterTable),
        Of<StructLinetypes>().n(&G::getLinetypes).l(&G::getLinetypesList),
        Of<StructDetailProcessScaleOverride>().l(&G::getDetViewRequestProcessOverideList),
        Of<StructClippingGap>().t(&G::getClippingGapTable),
        Of<StructDetailAreaType>()
            .n(&G::getDetailAreaType)
            .k(ByKey<StructDetailAreaType>(&G::getDetailAreaType))
            .l(&G::getDetailAreaTypeList),
        Of<StructBeamConnectionType>()
            .n(&G::getBeamConnectionType)
            .k(ByKey<StructBeamConnectionType>(&G::getBeamConnectionType))
            .l(&G::getBeamConnectionTypeList),
        Of<StructNodeSupportType>()
            .n(&G::getNodeSupportType)
            .k(ByKey<StructNodeSupportType>(&G::getNodeSupportType))
            .l(&G::getNodeSupportTypeList),
        Of<StructDegreeOfFreedom>()
            .n(&G::getDegreeOfFreedom)
            .k(ByKey<StructDegreeOfFreedom>(&G::getDegreeOfFreedom))
            .l(&G::getDegreeOfFreedomList),
        Of<StructNumberingDataRange>()
            .n(&G::getGridMultiLang)
            .k(ByKey<StructNumberingDataRange>(&G::getGridMultiLang))
            .l(&G::getGridMultiLangList)
            .t(&G::getGridMultiLangTable),
        Of<StructIncrementalCounter>()
            .n(&G::getIncrementalCounter)
            .k(ByKey<StructIncrementalCounter>(&G::getIncrementalCounter))
            .l(&G::getIncrementalCounterList)
            .t(&G::getIncrementalCounterTable),
        Of<StructClippingType>().l(&G::getClippingTypeList),
        Of<StructDetVwDimParentRelaPosRestriction>()
            .n(&G::getDetVwDimParentRelaPosRestriction)
            .k(ByKey<StructDetVwDimParentRelaPosRestriction>(&G::getDetVwDimParentRelaPosRestriction))
            .l(&G::getDetVwDimParentRelaPosRestrictionList),
    };
    return all;
}

class DetailCatalogueTest : public CatalogueTest {
protected:
    /// Every record by what `by` makes of the texts of a column; then unknown ones and a missing table.
    template <class Read, class By>
    static void readEach(const RecordDescription& type, const Read& read, int column, By by)
    {
        const Texts rows = rowsOf(type), keys = valuesOf(type, column);
        EXPECT_FALSE(rows.empty());
        const AnyRecord record(type);
        for (std::size_t i = 0; i < rows.size(); ++i) {
            mark(type, record.get());
            EXPECT_EQ(read(by(keys[i]), record.get()), 1) << keys[i];
            EXPECT_TRUE(isRow(type, record.get(), rows[i]));
        }
        mark(type, record.get());
        const std::string before = textOf(type, record.get());
        for (const char* unknown : {"", "-1", "4711", "' OR 1 = 1", "no such name"})
            EXPECT_EQ(read(by(unknown), record.get()), 0) << unknown;
        EXPECT_EQ(textOf(type, record.get()), before);
        dropTable(type);
        EXPECT_EQ(read(by(keys[0]), record.get()), 0);
        EXPECT_EQ(textOf(type, record.get()), before);
    }
    static KorOdbcKey key(const std::string& text) { return std::atol(text.c_str()) == 0 ? -1 : std::stol(text); }
    /// The number of cells of a column that hold the value.
    static long count(const RecordDescription& type, int column, int value)
    {
        const Texts values = valuesOf(type, column);
        return std::count(values.begin(), values.end(), std::to_string(value));
    }
};

TEST_F(DetailCatalogueTest, RecordsByRunName)
{
    for (const Readers& one : readers()) {
        SCOPED_TRACE(one.type.table);
        if (one.byName)
            readEach(one.type, one.byName, one.type.runName, &KorString::fromUtf8);
    }
}

TEST_F(DetailCatalogueTest, RecordsByKey)
{
    for (const Readers& one : readers()) {
        SCOPED_TRACE(one.type.table);
        if (one.byKey)
            readEach(one.type, one.byKey, one.type.key, &key);
    }
    const auto byTextKey = [](const KorString& text, void* record) {
        return G::getDetObjQualifierFilter(text, *static_cast<StructDetObjQualifierFilter*>(record));
    };
    readEach(descriptionOf<StructDetObjQualifierFilter>(), byTextKey, 0, &KorString::fromUtf8);
}

TEST_F(DetailCatalogueTest, RunNamesInTableOrder)
{
    for (const Readers& one : readers()) {
        SCOPED_TRACE(one.type.table);
        if (!one.names)
            continue;
        Texts expected = valuesOf(one.type, one.type.runName);
        EXPECT_FALSE(expected.empty());
        if (one.appends)
            expected.insert(expected.begin(), "before");
        KorArray<KorString> names = korTexts({"before"});
        EXPECT_EQ(one.names(names), 1);
        EXPECT_EQ(utf8(names), expected);
        dropTable(one.type);
        EXPECT_EQ(one.names(names), 0);
        EXPECT_EQ(utf8(names), expected);
    }
}

TEST_F(DetailCatalogueTest, WholeTables)
{
    for (const Readers& one : readers()) {
        SCOPED_TRACE(one.type.table);
        if (!one.table)
            continue;
        const Texts rows = rowsOf(one.type);
        const AnyRecords records(one.type);
        EXPECT_EQ(one.table(records.get()), 1);
        ASSERT_EQ(records.length(), static_cast<long>(rows.size()));
        for (long i = 0; i < records.length(); ++i)
            EXPECT_TRUE(isRow(one.type, records.at(i), rows[static_cast<std::size_t>(i)]));
        dropTable(one.type);
        EXPECT_EQ(one.table(records.get()), 0);
        EXPECT_EQ(records.length(), static_cast<long>(rows.size()));
    }
}

TEST_F(DetailCatalogueTest, MastersByStyleAndByCategory)
{
    sql(details, {"DELETE FROM DetailMasterTable",
                  "INSERT INTO DetailMasterTable (Key, RunName, DetailStyle, BaseCategory, SubCategory) VALUES "
                  "(5, 'third', 7, 2, 1), (6, 'second', 5, 1, 9), (7, 'first', 6, 1, 8)"});
    StructDetailMaster master;
    EXPECT_EQ(G::getDetailMaster(5, master), 1);
    EXPECT_EQ(master.runName, L"second") << "a number is the key of a style";
    EXPECT_EQ(G::getDetailMaster(KorOdbcKey(5), master), 1);
    EXPECT_EQ(master.runName, L"third") << "a KorOdbcKey is the key of a master";
    EXPECT_EQ(G::getDetailMaster(1, 8, master), 1);
    EXPECT_EQ(master.runName, L"first");
    EXPECT_EQ(G::getDetailMaster(8, 1, master), 0);
    EXPECT_EQ(G::getDetailMaster(8, master), 0);
    EXPECT_EQ(master.runName, L"first");

    KorArray<KorString> names;
    EXPECT_EQ(G::getDetailMasterList(names), 1);
    EXPECT_EQ(utf8(names), (Texts{"first", "second", "third"}));
    KorArray<StructDetailMaster> masters;
    EXPECT_EQ(G::getDetailMastersTable(masters), 1);
    ASSERT_EQ(masters.length(), 3);
    EXPECT_EQ(masters[0].key, 7);
    EXPECT_EQ(masters[2].key, 5);
}

TEST_F(DetailCatalogueTest, RecordsComeWithTheirItems)
{
    StructDetObjReprMap map;
    ASSERT_EQ(G::getDetViewObjReprMap(L"Single beam", map), 1);
    EXPECT_EQ(map.items.length(), count(descriptionOf<StructDetObjReprMapItem>(), 0, map.key));
    EXPECT_EQ(map.items.length(), map.numberItems);

    StructDetViewDimStrategy strategy;
    ASSERT_EQ(G::getDetViewDimStrategy(L"Single beam, front", strategy), 1);
    EXPECT_EQ(strategy.items.length(), count(descriptionOf<StructDetViewDimStrategyItem>(), 0, strategy.key));
    ASSERT_EQ(strategy.items.length(), 6);
    EXPECT_EQ(strategy.items[1].description, L"Holes");

    StructDetProcessesSuiteDefinition byName, byKey;
    ASSERT_EQ(G::getDetProcessesSuiteDefinition(L"Workshop", byName), 1);
    ASSERT_EQ(G::getDetProcessesSuiteDefinition(KorOdbcKey(byName.key), byKey), 1);
    EXPECT_EQ(byName.items.length(), 2);
    EXPECT_EQ(byKey.items.length(), 2);
    EXPECT_EQ(byKey.items[1].process, byName.items[1].process);
}

TEST_F(DetailCatalogueTest, OfEqualNamesScansTakeTheLastRecord)
{
    const std::string name = "it's [the] same 100% 梁";
    const auto last = [&]<class T>(int (*read)(const KorString&, T&)) {
        const std::string table(descriptionOf<T>().table);
        SCOPED_TRACE(table);
        sql(details, {"DELETE FROM [" + table + "]",
                      "INSERT INTO [" + table + "] (Key, RunName) VALUES " +
                          "(9, 'it''s [the] same 100% 梁'), (4, 'it''s [the] same 100% 梁'), "
                          "(12, 'other')"});
        const Texts rows = rowsOf(descriptionOf<T>());
        const std::string expected = rows[rows[0].rfind("12|", 0) == 0 ? 2 : rows[1].rfind("12|", 0) == 0 ? 2 : 1];
        T record;
        EXPECT_EQ(read(KorString::fromUtf8(name), record), 1);
        EXPECT_EQ(textOf(descriptionOf<T>(), &record), expected);
        EXPECT_EQ(read(L"IT'S [THE] SAME 100% 梁", record), 0) << "upper and lower case differ";
        EXPECT_EQ(textOf(descriptionOf<T>(), &record), expected);
    };
    last.operator()<StructDetViewSystemSource>(&G::getDetViewSystemSource);
    last.operator()<StructDetRequestLinearDirection>(&G::getDetRequestLinearDirection);
    last.operator()<StructDetViewDimPointtype>(&G::getDetViewDimPointtype);
    last.operator()<StructDetVwDimGeomRestrictions>(&G::getDetVwDimGeomRestrictions);
}

TEST_F(DetailCatalogueTest, ListsOfOtherFieldsThanNames)
{
    KorArray<int> keys;
    keys.append(-5);
    EXPECT_EQ(G::getDetViewSystemSourcesList(keys), 1);
    const Texts stored = valuesOf(descriptionOf<StructDetViewSystemSource>(), 0);
    ASSERT_EQ(keys.length(), static_cast<int>(stored.size()) + 1) << "keys are appended";
    EXPECT_EQ(keys[0], -5);
    EXPECT_EQ(std::to_string(keys[keys.length() - 1]), stored.back());

    sql(details, {"DELETE FROM ClippingGap", "INSERT INTO ClippingGap (Key, Gap) VALUES (1, 4.5), (2, 0.25)"});
    KorArray<double> gaps;
    gaps.append(-1);
    EXPECT_EQ(G::getClippingGapList(gaps), 1);
    ASSERT_EQ(gaps.length(), 2) << "gaps replace what was there";
    EXPECT_EQ(gaps[0], 4.5);
    EXPECT_EQ(gaps[1], 0.25);

    dropTable(descriptionOf<StructDetViewSystemSource>());
    dropTable(descriptionOf<StructClippingGap>());
    EXPECT_EQ(G::getDetViewSystemSourcesList(keys), 0);
    EXPECT_EQ(keys.length(), static_cast<int>(stored.size()) + 1);
    EXPECT_EQ(G::getClippingGapList(gaps), 0);
    EXPECT_EQ(gaps.length(), 2);
}

TEST_F(DetailCatalogueTest, SingleFields)
{
    sql(details, {"UPDATE DetViewRequest SET UsedForCutsAndCallouts = 7, CalloutTitleTemplate = 'it''s %Name%' "
                  "WHERE RunName = 'Beam, top'"});
    int flag = -1;
    KorString text = L"before";
    EXPECT_EQ(G::getDetViewUsedForCutsAndCallouts(L"Beam, top", flag), 1);
    EXPECT_EQ(flag, 7);
    EXPECT_EQ(G::getDetViewCalloutTitleTemplate(L"Beam, top", text), 1);
    EXPECT_EQ(text, L"it's %Name%");
    EXPECT_EQ(G::getDetObjQualifierFilterScript(L"Slotted holes", text), 1);
    EXPECT_EQ(text, L"slot > 0");
    EXPECT_EQ(G::getDetObjQualifierFilterScript(L"SLOTTED_HOLE", text), 0) << "the key is no run name";
    EXPECT_EQ(G::getDetViewCalloutTitleTemplate(L"no such view", text), 0);
    EXPECT_EQ(G::getDetViewUsedForCutsAndCallouts(L"no such view", flag), 0);
    EXPECT_EQ(text, L"slot > 0");
    EXPECT_EQ(flag, 7);
}

TEST_F(DetailCatalogueTest, LevelDimensionsByPlaceAndLevel)
{
    sql(details, {"DELETE FROM DetOrdinateDimType",
                  "INSERT INTO DetOrdinateDimType (Key, Position, Reference, RunName) VALUES "
                  "(1, 2, 3, 'first'), (2, 2, 3, 'last'), (3, 3, 2, 'turned'), (4, 2, -1, 'open')"});
    StructDetOrdinateDimType type;
    EXPECT_EQ(G::getDetOrdinateDimType(2, 3, type), 1);
    EXPECT_EQ(type.runName, L"last");
    EXPECT_EQ(G::getDetOrdinateDimType(3, 2, type), 1);
    EXPECT_EQ(type.runName, L"turned");
    EXPECT_EQ(G::getDetOrdinateDimType(3, 3, type), 0);
    EXPECT_EQ(G::getDetOrdinateDimType(-1, 3, type), 0) << "-1 is a value like any other";
    EXPECT_EQ(type.runName, L"turned");
    EXPECT_EQ(G::getDetOrdinateDimType(2, -1, type), 1);
    EXPECT_EQ(type.runName, L"open");
}

TEST_F(DetailCatalogueTest, QualifiersByModelTypeAndRole)
{
    sql(details,
        {"DELETE FROM DetObjQualifier", "INSERT INTO DetObjQualifier (Key, ModelType, Role, RunName) VALUES "
                                        "(11, 1, 5, 'a'), (12, 2, 5, 'b'), (13, 1, 6, 'c'), (14, 1, 5, 'd')"});
    const struct {
        int modelType, role;
        std::vector<int> before;
        int result;
        std::vector<int> keys;
    } cases[] = {
        {-1, -1, {}, 1, {11, 12, 13, 14}},
        {-1, 5, {}, 1, {11, 12, 14}},
        {1, -1, {}, 1, {11, 13, 14}},
        {1, 5, {}, 1, {11}}, // only the first
        {1, 6, {8}, 1, {8, 13}},
        {2, 6, {}, -2, {}},
        {5, 1, {}, -2, {}},
        {-1, 7, {}, -2, {}},
        {2, 6, {8}, 1, {8}}, // a key held before counts
    };
    const auto keysOf = [](const KorArray<int>& keys) { return std::vector<int>(keys.begin(), keys.end()); };
    for (const auto& one : cases) {
        SCOPED_TRACE(std::to_string(one.modelType) + ", " + std::to_string(one.role));
        KorArray<int> keys;
        for (const int key : one.before)
            keys.append(key);
        EXPECT_EQ(G::getDetObjQualifier(one.modelType, one.role, keys), one.result);
        EXPECT_EQ(keysOf(keys), one.keys);
    }
    KorArray<int> keys;
    keys.append(8);
    sql(details, {"DELETE FROM DetObjQualifier"});
    EXPECT_EQ(G::getDetObjQualifier(-1, -1, keys), -2);
    dropTable(descriptionOf<StructDetObjQualifier>());
    EXPECT_EQ(G::getDetObjQualifier(-1, -1, keys), -1);
    EXPECT_EQ(keysOf(keys), std::vector<int>{8});
}

TEST_F(DetailCatalogueTest, BitmapsByPointTypeAndRestriction)
{
    sql(details, {"DELETE FROM DetViewDimGeomRestrictionBitmaps",
                  "INSERT INTO DetViewDimGeomRestrictionBitmaps (Key, PointType, GeometricRestriction, BitmapId) "
                  "VALUES (1, 2, 3, 70), (2, 2, 3, 71), (3, 3, 2, 72)"});
    int bitmap = 1;
    EXPECT_EQ(G::getGeomRestrictionBitmapId(2, 3, bitmap), 1);
    EXPECT_EQ(bitmap, 70) << "the first one";
    EXPECT_EQ(G::getGeomRestrictionBitmapId(3, 2, bitmap), 1);
    EXPECT_EQ(bitmap, 72);
    EXPECT_EQ(G::getGeomRestrictionBitmapId(3, 3, bitmap), -1);
    sql(details, {"DELETE FROM DetViewDimGeomRestrictionBitmaps"});
    EXPECT_EQ(G::getGeomRestrictionBitmapId(2, 3, bitmap), -1);
    dropTable(descriptionOf<StructDetViewDimGeomRestrictionBitmaps>());
    EXPECT_EQ(G::getGeomRestrictionBitmapId(2, 3, bitmap), -1);
    EXPECT_EQ(bitmap, 72);
}

} // namespace
