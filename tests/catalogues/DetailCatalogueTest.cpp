#include "catalogues/ReaderCases.h"

#include <korodbc/maintenance/KorOdbcGUI.h>

namespace {

using G = KorOdbcGUI;

class DetailCatalogueTest : public ReaderTest {};

TEST_F(DetailCatalogueTest, RecordsByRunName)
{
    byRunName(&G::getDetailMaster, &G::getNCDXFOutputFileVersion, &G::getDetailOutputFileVersion);
    named(&G::getDetBaseCategory, &G::getDetBaseCategoryList);
    named(&G::getDetObjSelectionStrategy, &G::getDetObjSelectionStrategyList);
    named(&G::getDetViewArrangeStrategy, &G::getDetViewArrangeStrategyList);
    named(&G::getDetailOrientation, &G::getDetailOrientationList);
    named(&G::getDetViewSystemAndBox, &G::getDetViewSystemAndBoxList);
    named(&G::getDetViewObjAppearance, &G::getDetViewObjAppearanceList);
    named(&G::getDetViewObjReprMap, &G::getDetViewObjReprMapList);
    named(&G::getDetViewDimStrategy, &G::getDetViewDimStrategyList);
    named(&G::getDetProcessesSuiteDefinition, &G::getDetProcessesSuiteDefinitionList);
    named(&G::getDetAcadSettings, &G::getDetAcadSettingsList);
    named(&G::getDetViewArrangeDirection, &G::getDetViewArrangeDirectionList);
    named(&G::getDetViewSelectMode, &G::getDetViewSelectModeList);
    named(&G::getDetViewRequest, &G::getDetViewRequestList);
    named(&G::getDetObjAnnotationStrategy, &G::getDetObjAnnotationStrategyList);
    named(&G::getDetHatchSettings, &G::getDetHatchSettingList);
    named(&G::getDetGridReferenceSettings, &G::getDetGridReferenceSettingList);
    named(&G::getDetAnnotationType, &G::getDetAnnotationTypeList);
    named(&G::getAnnotationTypeContents, &G::getAnnotationTypeContentsList);
    named(&G::getDetLeaderStyle, &G::getDetLeaderStyleList);
    named(&G::getDetArrangerControl, &G::getDetArrangerControlList);
    named(&G::getDetArrangerStrategy, &G::getDetArrangerStrategyList);
    named(&G::getDetObjQualifier, &G::getDetObjQualifierList);
    named(&G::getDetViewLengthClip, &G::getDetViewLengthClipList);
    named(&G::getDetRequestType, &G::getDetRequestTypeList);
    named(&G::getDetViewDimRequestLinear, &G::getDetViewDimRequestLinearList);
    named(&G::getDetViewDimPointSelection, &G::getDetViewDimPointSelectionList);
    named(&G::getDetViewDimSum, &G::getDetViewDimSumList);
    named(&G::getDetModelType, &G::getDetModelTypeList);
    named(&G::getDetRole, &G::getDetRoleList);
    named(&G::getDetailDepthPosition, &G::getDetailDepthPositionList);
    named(&G::getDetailVisibilityStatus, &G::getDetailVisibilityStatusList);
    named(&G::getDetailReferenceAxis, &G::getDetailReferenceAxisList);
    named(&G::getDetOrdinatePosition, &G::getDetOrdinatePositionList);
    named(&G::getDetOrdinateReference, &G::getDetOrdinateReferenceList);
    named(&G::getDetOrdinateDimType, &G::getDetOrdinateDimTypeList);
    named(&G::getDetObjQualifierFilterByRunName, &G::getDetObjQualifierFilterList);
    named(&G::getLinetypes, &G::getLinetypesList);
    named(&G::getDetailAreaType, &G::getDetailAreaTypeList);
    named(&G::getBeamConnectionType, &G::getBeamConnectionTypeList);
    named(&G::getNodeSupportType, &G::getNodeSupportTypeList);
    named(&G::getDegreeOfFreedom, &G::getDegreeOfFreedomList);
    named(&G::getGridMultiLang, &G::getGridMultiLangList);
    named(&G::getIncrementalCounter, &G::getIncrementalCounterList);
    named(&G::getDetVwDimParentRelaPosRestriction, &G::getDetVwDimParentRelaPosRestrictionList);
    // scans of the table
    named(&G::getDetRequestLinearDirection, &G::getDetRequestLinearDirectionList, Held::Kept, EqualNames::Last);
    named(&G::getDetViewDimPointtype, &G::getDetViewDimPointtypeList, Held::Kept, EqualNames::Last);
    named(&G::getDetVwDimGeomRestrictions, &G::getDetVwDimGeomRestrictionsList, Held::Kept, EqualNames::Last);
    named(&G::getDetViewSystemSource, &G::getDetViewSystemSourcesList, Held::Kept, EqualNames::Last);
    // lists only
    runNames<StructBeamPositionCalculation>(&G::getObjectPositionList);
    runNames<StructDetObjQualifierSet>(&G::getDetObjQualifierSetList);
    runNames<StructDetailProcessScaleOverride>(&G::getDetViewRequestProcessOverideList);
    runNames<StructClippingType>(&G::getClippingTypeList);
}

TEST_F(DetailCatalogueTest, RecordsByKey)
{
    byKey(&G::getDetailMaster, &G::getDetRequestLinearDirection, &G::getDetRole);
    byKey<StructDetAcadSettings>(
        [](const KorOdbcKey& key, auto& record) { return G::getDetAcadSettings(static_cast<int>(key), record); });
    byTextKey<StructDetObjQualifierFilter>(&G::getDetObjQualifierFilter);
}

TEST_F(DetailCatalogueTest, WholeTables) { tables(&G::getDetViewDimPointtypeTable, &G::getClippingGapTable); }

TEST_F(DetailCatalogueTest, SingleFields)
{
    field(&StructDetViewRequest::usedForCutsAndCallouts, &G::getDetViewUsedForCutsAndCallouts, 0, 0);
    field(&StructDetViewRequest::calloutTitleTemplate, &G::getDetViewCalloutTitleTemplate, 0, 0);
    field(&StructDetObjQualifierFilter::script, &G::getDetObjQualifierFilterScript, 0, 0);
}

TEST_F(DetailCatalogueTest, MastersByStyleAndByCategory)
{
    sql(details, {"DELETE FROM DetailMasterTable",
                  "INSERT INTO DetailMasterTable (Key, RunName, DetailStyle, BaseCategory, SubCategory) VALUES "
                  "(5, 'third', 7, 2, 1), (6, 'second', 5, 1, 9), (7, 'first', 6, 1, 8)"});
    StructDetailMaster master;
    const auto expect = [&](int result, const wchar_t* runName, auto... by) {
        EXPECT_EQ(G::getDetailMaster(by..., master), result);
        EXPECT_EQ(master.runName, runName);
    };
    expect(1, L"second", 5);            // a number is the key of a style
    expect(1, L"third", KorOdbcKey(5)); // a KorOdbcKey that of a master
    expect(1, L"first", 1, 8);
    expect(0, L"first", 8, 1);
    expect(0, L"first", 8);

    KorArray<KorString> names;
    EXPECT_EQ(G::getDetailMasterList(names), 1);
    EXPECT_EQ(utf8(names), (Texts{"first", "second", "third"}));
    KorArray<StructDetailMaster> masters;
    EXPECT_EQ(G::getDetailMastersTable(masters), 1);
    ASSERT_EQ(masters.length(), 3);
    EXPECT_EQ(masters[0].key, 7);
    EXPECT_EQ(masters[2].key, 5);
}

TEST_F(DetailCatalogueTest, ListsOfOtherFieldsThanNames)
{
    sql(details, {"DELETE FROM ClippingGap", "INSERT INTO ClippingGap (Key, Gap) VALUES (1, 4.5), (2, 0.25)",
                  "DELETE FROM DetViewSystemSources", "INSERT INTO DetViewSystemSources (Key) VALUES (8), (9)"});
    auto keys = details::list({-5});
    auto gaps = details::list({-1.0});
    const auto expect = [&](int result) {
        EXPECT_EQ(G::getDetViewSystemSourcesList(keys), result);
        EXPECT_EQ(std::vector<int>(keys.begin(), keys.end()), std::vector<int>({-5, 8, 9})) << "keys are appended";
        EXPECT_EQ(G::getClippingGapList(gaps), result);
        EXPECT_EQ(std::vector<double>(gaps.begin(), gaps.end()), std::vector<double>({4.5, 0.25}));
    };
    expect(1);
    const MissingTable sources(descriptionOf<StructDetViewSystemSource>());
    const MissingTable ofGaps(descriptionOf<StructClippingGap>());
    expect(0);
}

TEST_F(DetailCatalogueTest, LevelDimensionsByPlaceAndLevel)
{
    sql(details, {"DELETE FROM DetOrdinateDimType",
                  "INSERT INTO DetOrdinateDimType (Key, Position, Reference, RunName) VALUES "
                  "(1, 2, 3, 'first'), (2, 2, 3, 'last'), (3, 3, 2, 'turned'), (4, 2, -1, 'open')"});
    StructDetOrdinateDimType type;
    const auto expect = [&](int position, int reference, int result, const wchar_t* runName) {
        EXPECT_EQ(G::getDetOrdinateDimType(position, reference, type), result);
        EXPECT_EQ(type.runName, runName);
    };
    expect(2, 3, 1, L"last");
    expect(3, 2, 1, L"turned");
    expect(3, 3, 0, L"turned");
    expect(-1, 3, 0, L"turned"); // -1 is a value like any other
    expect(2, -1, 1, L"open");
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
    KorArray<int> keys;
    const auto expect = [&](int modelType, int role, int result, const std::vector<int>& expected) {
        EXPECT_EQ(G::getDetObjQualifier(modelType, role, keys), result) << modelType << ", " << role;
        EXPECT_EQ(std::vector<int>(keys.begin(), keys.end()), expected) << modelType << ", " << role;
    };
    for (const auto& one : cases) {
        keys.removeAll();
        for (const int key : one.before)
            keys.append(key);
        expect(one.modelType, one.role, one.result, one.keys);
    }
    sql(details, {"DELETE FROM DetObjQualifier"});
    expect(-1, -1, -2, {8});
    const MissingTable missing(descriptionOf<StructDetObjQualifier>());
    expect(-1, -1, -1, {8});
}

TEST_F(DetailCatalogueTest, BitmapsByPointTypeAndRestriction)
{
    sql(details, {"DELETE FROM DetViewDimGeomRestrictionBitmaps",
                  "INSERT INTO DetViewDimGeomRestrictionBitmaps (Key, PointType, GeometricRestriction, BitmapId) "
                  "VALUES (1, 2, 3, 70), (2, 2, 3, 71), (3, 3, 2, 72)"});
    int bitmap = 1;
    const auto expect = [&](int pointType, int restriction, int result, int expected) {
        EXPECT_EQ(G::getGeomRestrictionBitmapId(pointType, restriction, bitmap), result);
        EXPECT_EQ(bitmap, expected);
    };
    expect(2, 3, 1, 70); // the first one
    expect(3, 2, 1, 72);
    expect(3, 3, -1, 72);
    const MissingTable missing(descriptionOf<StructDetViewDimGeomRestrictionBitmaps>());
    expect(2, 3, -1, 72);
}

} // namespace
