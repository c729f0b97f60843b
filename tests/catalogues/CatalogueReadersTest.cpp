#include "ReaderCases.h"

#include <korodbc/catalogues/AnalysisModules.h>
#include <korodbc/catalogues/Anchors.h>
#include <korodbc/catalogues/Applications.h>
#include <korodbc/catalogues/Bolts.h>
#include <korodbc/catalogues/Cameras.h>
#include <korodbc/catalogues/Connectors.h>
#include <korodbc/catalogues/DetailProcesses.h>
#include <korodbc/catalogues/DetailSettings.h>
#include <korodbc/catalogues/Footings.h>
#include <korodbc/catalogues/Galvanizing.h>
#include <korodbc/catalogues/Joints.h>
#include <korodbc/catalogues/KorCompoundMaster.h>
#include <korodbc/catalogues/KorOdbcGrouping.h>
#include <korodbc/catalogues/KorODBCHRLDefinition.h>
#include <korodbc/catalogues/MachineData.h>
#include <korodbc/catalogues/MaterialGroups.h>
#include <korodbc/catalogues/ObjectTypes.h>
#include <korodbc/catalogues/PostNumbers.h>
#include <korodbc/catalogues/Sections.h>
#include <korodbc/catalogues/Texts.h>
#include <korodbc/catalogues/Wizards.h>

namespace {

class CatalogueReadersTest : public ReaderTest {};

TEST_F(CatalogueReadersTest, RecordsByKey)
{
    byKey(&KorAnchorsNameUtils::getByKey, &KorODBCBolts::getSetNutsBolts,
          &KorODBCDetManualAnnotationType::getDetManualAnnotationType, &KorODBCNCDBStyle::getNCDBStyle,
          &KorODBCDetailProcessMain2CutScale::getDetailProcessMain2CutScale);
    byKey<StructProfileDynamic>(&ProfileDynamic::getProfileDynamic);
    byKey<StructProfileDynamicClassDesc>(&ProfileDynamic::getProfileDynamic);
    byKey<StructCountry>(&KorOdbcGrouping::getCountry);
    byTextKey(&KorODBCCameras::getTypeByKey);
    EXPECT_EQ(KorODBCCameras::getTypeRunNameByKey(L"TOP"), L"Top");
    EXPECT_EQ(KorODBCCameras::getTypeRunNameByKey(L"it's 没有"), L"it's 没有");
}

TEST_F(CatalogueReadersTest, RecordsByRunName)
{
    byRunName(&KorODBCCameras::getTypeByRunname, &KorODBCConnectors::getMaterialByDescription);
    byRunName<StructCountry>(&KorOdbcGrouping::getCountry);
}

TEST_F(CatalogueReadersTest, WholeTables)
{
    tables(&KorOdbcSetOfBolts::getBoltSets, &KorODBCConnectors::getDistances,
           &KorODBCNSAModule::getNSAModuleTable);
}

TEST_F(CatalogueReadersTest, RunNameLists)
{
    orderedRunNames<StructAnchorsOrientation>(&KorAnchorsOrientation::getOrientationsList);
    orderedRunNames<StructAnchorsStandard>(&KorAnchorsStandard::getList);
    orderedRunNames<StructScrewHoleLocation>(&KorODBCBolts::getHoleLocationList);
    orderedRunNames<StructScrewHoleType>(&KorODBCBolts::getScrewHoleTypeList);
    orderedRunNames<StructCameraType>(&KorODBCCameras::getTypesList);
    orderedRunNames<StructConnectorDiameter>(&KorODBCConnectors::getDiameterList);
    orderedRunNames<StructMaterialConnector>(&KorODBCConnectors::getMaterialList);
    orderedRunNames<StructConnectorStandard>(&KorODBCConnectors::getStandardsList);
    runNames<StructCountry>(&KorOdbcGrouping::getCountryList);
    orderedRunNames<StructDepthStatus>(&KorODBCDepthStatus::getDepthStatusList);
    runNames<StructDetailProcessMain2CutScale>(
        &KorODBCDetailProcessMain2CutScale::getDetailProcessMain2CutScaleList);
    orderedRunNames<StructDetGeometricRestrictions>(
        &KorODBCDetGeometricRestrictions::getDetGeometricRestrictionList);
    runNames<StructDetManualAnnotationType>(&KorODBCDetManualAnnotationType::getDetManualAnnotationTypeList);
    orderedRunNames<StructFootingIsolatedFormulaDefault>(&FootingIsolatedFormula::getFormulaDefaultsList);
    orderedRunNames<StructGalvanizingConfidence>(&KorODBCGalvanizingConfidence::getRunNames);
    orderedRunNames<StructGalvanizingConstructionClass>(&KorODBCGalvanizingConstructionClass::getRunNames);
    orderedRunNames<StructGalvanizingDetailClass>(&KorODBCGalvanizingDetailClass::getRunNames);
    runNames<StructHRLDefinition>(&KorODBCHRLDefinition::getRunnameList);
    orderedRunNames<StructMaterialGroups>(&KorODBCMaterialGroups::getMaterialGroupList);
    runNames<StructObjectSubType>(&KorODBCObjectSubType::getObjectSubTypeList);
    orderedRunNames<StructPostNumberSolution>(&KorODBCPostNumberSolution::getPostNumberSolutionList);
    orderedRunNames<StructProfileDynamicSubtype>(&ProfileDynamicSubtype::getProfileDynamicSubtypeRunNameList);
    runNames<StructProfileDynamic>(&ProfileDynamic::getProfileDynamicRunNameList);
    orderedRunNames<StructTextSizes>(&KorODBCTextSizes::getTextSizesList);
    using Applications = KorODBCApplication_ImportExport;
    runNames<StructSTDApplication_ImportExport>(
        [](auto& names) { return Applications::getApplicationList(names); });
    runNames<StructPRFApplication_ImportExport>(
        [](auto& names) { return Applications::getApplicationList(names, Applications::kSections); });
}

TEST_F(CatalogueReadersTest, KeysOfRunNames)
{
    field(&StructAnchorsStandard::key, &KorAnchorsStandard::getKey<int>, 0, 0);
    field(&StructScrewHoleLocation::key, &KorODBCBolts::getHoleLocationKey<int>, 0, 0);
    field(&StructScrewHoleType::key, &KorODBCBolts::getScrewHoleTypeKey<int>, 0, 0);
    field(&StructConnectorStandard::key, &KorODBCConnectors::getStandardKey<int>, 0, 0);
    field(&StructDepthStatus::key, &KorODBCDepthStatus::getDepthStatusKey<int>, 0, 0);
    field(&StructMaterialGroups::key, &KorODBCMaterialGroups::getMaterialGroupKey<int>, 0, 0);
    field(&StructObjectSubType::key, &KorODBCObjectSubType::getObjectSubTypeKey<int>, 0, 0);
    field(&StructProfileShapeRunName::key, &KorODBCProfileShapeRunName::getProfileShapeRunNameKey<int>, 0, 0);
    field(&StructTextSizes::key, &KorODBCTextSizes::getTextSizesKey<int>, 0, 0);
    using Applications = KorODBCApplication_ImportExport;
    const auto application =
        +[](const KorString& name, int& key) { return Applications::getApplicationKey(name, key); };
    field(&StructSTDApplication_ImportExport::key, application, 0, 0);
    const auto ofSections = +[](const KorString& name, int& key) {
        return Applications::getApplicationKey(name, key, Applications::kSections);
    };
    field(&StructPRFApplication_ImportExport::key, ofSections, 0, 0);
    // the types that keys are handed out in
    KorString text;
    KorOdbcKey key;
    long number = 0;
    EXPECT_EQ(KorODBCDepthStatus::getDepthStatusKey(L"As the object in front", text), 1);
    EXPECT_EQ(KorODBCDepthStatus::getDepthStatusKey(L"As the object in front", key), 1);
    EXPECT_EQ(KorODBCDepthStatus::getDepthStatusKey(L"As the object in front", number), 1);
    EXPECT_EQ(text, L"4");
    EXPECT_EQ(key, 4);
    EXPECT_EQ(number, 4);
}

TEST_F(CatalogueReadersTest, RecordsByOtherFields)
{
    where(&StructAnchorsHoleDefinition::anchorName, &KorAnchorsHoleDefinition::getByAnchorNameID);
    where(&StructTools::diameter, &KorODBCBolts::getToolInformation);
    where(&StructClippingGap::gap, &KorODBCClippingGap::getClippingGapByValue);
    where(&StructConvertHRLToCOMJoints::oldName, &KorODBCConvertHRLToCOMJoints::getConvertHRLToCOMJointsByOldName);
    where(&StructNSAModule::internalName, &KorODBCNSAModule::getNSAModuleByInternalName);
    where(&StructProfileShapeRunName::profileSubtype,
          &KorODBCProfileShapeRunName::getProfileShapeRunNameForProfSubtype);
    where(&StructDetailProcessDefinition::category,
          &KorODBCDetailProcessCategory::getDetailProcessDefinitionsByCategoryKey, Held::Kept);
    where(&StructDetailProcessStep::category, &KorODBCDetailProcessCategory::getDetailProcessStepsByCategoryKey,
          Held::Kept);
    where(&StructGenericStringToken::group, &KorODBCGenericStringToken::getGenericStringTokenTableByGroup);
    where(&StructGenericStringTokenGroup::objectType,
          &KorODBCGenericStringTokenGroup::getGenericStringTokenGroupsByObjectType);
    where(&StructGroupsJointAssignment::jointName, &KorODBCGroupsJointAssignment::getGroupsForJoint);
    where(&StructPagesGroupAssignment::group, &KorODBCPagesGroupAssignment::getPagesInGroup);
    where(&StructWizardSteps::task, &KorODBCWizardSteps::getWizardStepsByTaskID);
    where(&StructWizardControl::step, &KorODBCWizardControl::getWizardControlsByStepID);
}

TEST_F(CatalogueReadersTest, SingleFieldsGiveMinusOneWhenTheyFail)
{
    field(&StructAnchorsStandard::runName, &KorAnchorsStandard::getRunName, -1, -1);
    field(&StructMaterialGroups::runName, &KorODBCMaterialGroups::getMaterialGroupRunName, -1, -1);
    field(&StructProfileShapeRunName::profileSubtype,
          &KorODBCProfileShapeRunName::getProfileShapeRunNameProfSubtype, -1, -1);
    field(&StructGridReferenceTokenFormat::script, &KorOdbcGridReferenceTokenFormat::getScript, -1, -1);
    field(&StructHatchesMap::correspondentHatch, &KorODBCHatchesMap::getCorrespondentHatch, -1, -1);
    field(&StructChangePrototypeScaleTo::scale, &KorODBCChangePrototypeScaleTo::getScaleForPrototype, -1, -1);
    // that of a standard goes by the key as a text, and tells an unknown one from a missing table
    const auto standard = +[](const KorOdbcKey& key, KorString& name) {
        return KorODBCConnectors::getStandardDescription(KorString::format(L"%d", static_cast<int>(key)), name);
    };
    field(&StructConnectorStandard::runName, standard, 0, -1);
}

TEST_F(CatalogueReadersTest, ChoicesStepByStep)
{
    using Names = KorArray<KorString>;
    using Anchors = KorAnchorsNameUtils;
    using Bolts = KorOdbcSetBolts;
    const struct {
        std::function<int(Names&)> read;
        Texts expected; // none: fails, and leaves the list
    } cases[] = {
        {[](Names& n) { return Anchors::getMaterialList(L"DIN 7992", n); }, {"4.6", "8.8"}},
        {[](Names& n) { return Anchors::getMaterialList(L"DIN 0", n); }, {}},
        {[](Names& n) { return Anchors::getSetList(L"DIN 7992", L"8.8", n); }, {"Nut and two washers"}},
        {[](Names& n) { return Anchors::getSetList(L"DIN 7992", L"10.9", n); }, {}},
        {[](Names& n) { return Anchors::getDiameterList(L"DIN 529", L"4.6", L"Nut and washer", n); },
         {"M16", "M20", "M24"}},
        {[](Names& n) { return Anchors::getDiameterList(L"DIN 529", L"4.6", L"Bolt only", n); }, {}},
        {[](Names& n) { return Bolts::getStrengthClassList(L"ISO 4014", n); }, {"8.8", "10.9"}},
        {[](Names& n) { return Bolts::getStrengthClassList(L"' OR 1=1", n); }, {}},
        {[](Names& n) { return Bolts::getGarniturList(L"ISO 4017", L"8.8", n); }, {"Bolt only", "Nut and washer"}},
        {[](Names& n) { return Bolts::getGarniturList(L"ISO 4017", L"4.6", n); }, {}},
        {[](Names& n) { return Bolts::getDiameterList(L"ISO 4014", L"Nut and washer", n); },
         {"M12", "M16", "M20", "M24"}},
        {[](Names& n) { return Bolts::getDiameterList(L"ISO 4014", L"Bolt only", n); }, {}},
    };
    for (const auto& [read, expected] : cases) {
        Names names = korTexts({"old"});
        EXPECT_EQ(read(names), expected.empty() ? 0 : 1) << testing::PrintToString(expected);
        EXPECT_EQ(utf8(names), expected.empty() ? Texts{"old"} : expected);
    }

    const auto expect = [](int result, const KorArray<double>& lengths, const std::vector<double>& expected) {
        EXPECT_EQ(result, expected.size() > 1);
        EXPECT_EQ(std::vector<double>(lengths.begin(), lengths.end()), expected);
    };
    KorArray<double> lengths = details::list({-1.0});
    expect(KorAnchorsDefinition::getAvailableLengths(-1, lengths), lengths, {-1});
    expect(Bolts::getDiameters(L"ISO 4017", L"No set", lengths), lengths, {-1});
    expect(KorAnchorsDefinition::getAvailableLengths(1, lengths), lengths, {190, 230, 260, 300});
    expect(Bolts::getDiameters(L"ISO 4017", L"Nut and washer", lengths), lengths, {12, 16, 20, 24});
}

TEST_F(CatalogueReadersTest, BoltsByTheirParts)
{
    StructScrew bolt;
    EXPECT_EQ(KorODBCBolts::getScrewExtension(L"ISO 4014", L"8.8", L"Nut and washer", 20.1, bolt), 0);
    EXPECT_EQ(bolt.key, -1);
    EXPECT_EQ(KorODBCBolts::getScrewExtension(L"ISO 4014", L"8.8", L"Nut and washer", 20.0000004, bolt), 1);
    EXPECT_EQ(bolt.headHeight, 12.5);
    StructSetBolts assembly;
    EXPECT_EQ(KorOdbcSetBolts::getByKey(L"ISO 4014", L"Nut and washer", 16, 81, assembly), 0);
    EXPECT_EQ(assembly.key, -1);
    EXPECT_EQ(KorOdbcSetBolts::getByKey(L"ISO 4014", L"Nut and washer", 16, 80, assembly), 1);
    EXPECT_EQ(assembly.maximumGrip, 58.2);
}

TEST_F(CatalogueReadersTest, BoltsOfAnAddInAreNamedByItsOwnTables)
{
    // key 1 is ISO 4014 in the configuration; strength classes, sets and diameters are the configuration's
    const auto copy = [](const std::string& table, const std::string& row) {
        KorArray<KorColumn> columns;
        ASSERT_EQ(KorDatabaseAccess::getTableStructure(configuration, KorString::fromUtf8(table), columns), 1);
        std::string list;
        for (const KorColumn& column : columns)
            list += (list.empty() ? "[" : ", [") + column.getName().toUtf8() + "]" +
                    (column.getType() == KorItemType::kInt      ? " INTEGER"
                     : column.getType() == KorItemType::kDouble ? " REAL"
                                                                : " TEXT");
        sql(addin, {"CREATE TABLE [" + table + "] (" + list + ")", "INSERT INTO [" + table + "] " + row});
    };
    using Bolts = KorOdbcSetBolts;
    StructScrew bolt;
    StructSetBolts assembly;
    copy("Standard", "([Key], RunName) VALUES (1, 'HOUSE 1')");
    EXPECT_EQ(KorODBCBolts::getScrewExtension(L"HOUSE 1", L"8.8", L"Nut and washer", 20, bolt), 0);
    EXPECT_EQ(Bolts::getByKey(L"HOUSE 1", L"Nut and washer", 16, 80, assembly), 0);
    KorArray<KorString> names = korTexts({"kept"});
    EXPECT_EQ(Bolts::getStrengthClassList(L"HOUSE 1", names), 0);
    EXPECT_EQ(utf8(names), Texts{"kept"});

    const auto keyOf = [](const char* table, const wchar_t* name) {
        KorCellData key;
        EXPECT_EQ(KorDatabaseAccess::getKeyAtRunname(KorString::fromUtf8(table), name, key), 1);
        return std::to_string(key.getInt());
    };
    const std::string strength = keyOf("StrengthClass", L"8.8"), set = keyOf("Sets", L"Nut and washer");
    copy("SetOfBolts", "([Key], Standard, StrengthClass, BoltSet) VALUES (1, 1, " + strength + ", " + set + ")");
    copy("ScrewNew",
         "([Key], Standard, StrengthClass, BoltSet, Diameter) VALUES (900, 1, " + strength + ", " + set + ", 20)");
    copy("SetBolts", "([Key], Standard, BoltSet, Diameter, Length) VALUES (900, 1, " + set + ", 16, 33)");
    EXPECT_EQ(KorODBCBolts::getScrewExtension(L"HOUSE 1", L"8.8", L"Nut and washer", 20, bolt), 1);
    EXPECT_EQ(bolt.key, 900);
    EXPECT_EQ(KorODBCBolts::getScrewExtension(L"ISO 4014", L"8.8", L"Nut and washer", 20, bolt), 1);
    EXPECT_NE(bolt.key, 900);
    EXPECT_EQ(Bolts::getByKey(L"HOUSE 1", L"Nut and washer", 16, 33, assembly), 1);
    EXPECT_EQ(Bolts::getByKey(L"ISO 4014", L"Nut and washer", 16, 33, assembly), 0);
    // each step asks where the one before it asked
    EXPECT_EQ(Bolts::getStrengthClassList(L"HOUSE 1", names), 1);
    EXPECT_EQ(utf8(names), Texts{"8.8"});
    EXPECT_EQ(Bolts::getGarniturList(L"HOUSE 1", L"8.8", names), 1);
    EXPECT_EQ(utf8(names), Texts{"Nut and washer"});
    EXPECT_EQ(Bolts::getDiameterList(L"HOUSE 1", L"Nut and washer", names), 1);
    EXPECT_EQ(utf8(names), Texts{"M16"});
    // a request means its source alone
    const KorDSNRequest request(configuration, KorDSNDefinitions::kBase);
    EXPECT_EQ(Bolts::getStrengthClassList(L"HOUSE 1", names), 0);
}

TEST_F(CatalogueReadersTest, LayersAreSortedByTable)
{
    KorArray<StructObjectLayerAssignment> relation;
    EXPECT_EQ(KorOdbcObjectLayerAssignment::fillTablesRelation(relation), 1);
    ASSERT_EQ(relation.length(), 8);
    EXPECT_TRUE(std::ranges::is_sorted(relation, {}, &StructObjectLayerAssignment::objectTable));
}

TEST_F(CatalogueReadersTest, ExternalObjectsComeWithTheirPropertiesOrNotAtAll)
{
    KorArray<StructDetExternalObject> objects;
    KorArray<StructDetExternalObjectPropertyMap> properties;
    EXPECT_EQ(KorODBCDetExternalObject::getExternalObjectsData(objects, properties), 1);
    EXPECT_EQ(objects.length(), 3);
    ASSERT_EQ(properties.length(), 5);
    EXPECT_EQ(properties[4].propertyName, L"GRADE");
    objects.setLogicalLength(1);
    const MissingTable missing(descriptionOf<StructDetExternalObjectPropertyMap>());
    EXPECT_NE(KorODBCDetExternalObject::getExternalObjectsData(objects, properties), 1);
    EXPECT_EQ(objects.length(), 1);
    EXPECT_EQ(properties.length(), 5);
}

} // namespace
