#include "CatalogueFixture.h"
#include "catalogues/AnalysisModules.h"
#include "catalogues/Anchors.h"
#include "catalogues/Applications.h"
#include "catalogues/Bolts.h"
#include "catalogues/Cameras.h"
#include "catalogues/Connectors.h"
#include "catalogues/DetailProcesses.h"
#include "catalogues/DetailSettings.h"
#include "catalogues/Footings.h"
#include "catalogues/Galvanizing.h"
#include "catalogues/Joints.h"
#include "catalogues/KorCompoundMaster.h"
#include "catalogues/KorModelRolesRules.h"
#include "catalogues/KorODBCHRLDefinition.h"
#include "catalogues/MachineData.h"
#include "catalogues/MaterialGroups.h"
#include "catalogues/ObjectTypes.h"
#include "catalogues/PostNumbers.h"
#include "catalogues/Sections.h"
#include "catalogues/Texts.h"
#include "catalogues/Wizards.h"

#include <algorithm>
#include <functional>
#include <numeric>

namespace {

/// A record of any described type.
class AnyRecord {
public:
    explicit AnyRecord(const RecordDescription& type) : m_type(type), m_record(type.operations->create()) {}
    ~AnyRecord() { m_type.operations->destroy(m_record); }
    AnyRecord(const AnyRecord&) = delete;
    AnyRecord& operator=(const AnyRecord&) = delete;
    void* get() const { return m_record; }

private:
    const RecordDescription& m_type;
    void* m_record;
};

/// Reads one record by a key or name.
template <class By>
struct RecordCase {
    const char* name;
    const RecordDescription& type;
    std::function<int(const By& by, void* record)> read;
};

template <class T>
RecordCase<KorOdbcKey> byKey(const char* name, int (*read)(const KorOdbcKey&, T&))
{
    return {name, descriptionOf<T>(),
            [=](const KorOdbcKey& key, void* record) { return read(key, *static_cast<T*>(record)); }};
}
template <class T>
RecordCase<KorString> byName(const char* name, int (*read)(const KorString&, T&))
{
    return {name, descriptionOf<T>(),
            [=](const KorString& by, void* record) { return read(by, *static_cast<T*>(record)); }};
}

#define READS(operation) #operation, &operation

std::vector<RecordCase<KorOdbcKey>> readsByKey()
{
    return {
        byKey(READS(KorOdbcSetOfBolts::getByKey)),
        byKey(READS(KorAnchorsDefinition::getByKey)),
        byKey(READS(KorAnchorsNameUtils::getByKey)),
        byKey(READS(KorODBCAreaObjectType::getAreaObjectType)),
        byKey(READS(KorODBCBeamPositionCalculation::getBeamPositionCalculation)),
        byKey(READS(KorODBCBolts::getHoleLocationAt)),
        byKey(READS(KorODBCBolts::getScrewHoleTypeAt)),
        byKey(READS(KorODBCBolts::getSetNutsBolts)),
        byKey(READS(KorODBCChangePrototypeScaleTo::getRecordForKey)),
        byKey(READS(KorODBCClippingGap::getClippingGapByKey)),
        byKey(READS(KorODBCClippingType::getClippingType)),
        byKey(READS(KorODBCConnectors::getDiameter)),
        byKey(READS(KorODBCConnectors::getMaterialByKey)),
        byKey(READS(KorODBCConnectorRelations::getConnectorRelations)),
        byKey(READS(KorODBCDateTimeFormat::getDateTimeFormat)),
        byKey(READS(KorODBCDepthStatus::getDepthStatus)),
        byKey(READS(KorODBCDetailProcessCategory::getDetailProcessCategory)),
        byKey(READS(KorODBCDetailProcessMain2CutScale::getDetailProcessMain2CutScale)),
        byKey(READS(KorODBCDetailProcessScaleOverride::getDetailProcessScaleOverrideByKey)),
        byKey(READS(KorODBCDetGeometricRestrictions::getDetGeometricRestrictions)),
        byKey(READS(KorODBCDetManualAnnotationType::getDetManualAnnotationType)),
        byKey(READS(KorODBCDetRunningDimensionTextAlignment::getDetRunningDimensionTextAlignment)),
        byKey(READS(KorODBCDisplayControl::getDisplayControl)),
        byKey(READS(FootingIsolatedFormula::getFormulaDefault)),
        byKey(READS(FootingIsolatedFormula::getFormulaMask)),
        byKey(READS(KorODBCGalvanizingConfidence::getGalvanizingConfidence)),
        byKey(READS(KorODBCGalvanizingConstructionClass::getGalvanizingConstructionClass)),
        byKey(READS(KorODBCGalvanizingDetailClass::getGalvanizingDetailClass)),
        byKey(READS(KorODBCGenericStringToken::getGenericStringToken)),
        byKey(READS(KorODBCGenericStringTokenGroup::getGenericStringTokenGroup)),
        byKey(READS(KorODBCJointGroups::getJointGroup)),
        byKey(READS(KorODBCMaterialGroups::getMaterialGroups)),
        byKey(READS(KorODBCNCDBProcess::getNCDBProcess)),
        byKey(READS(KorODBCNCDBProcessStep::getNCDBProcessStep)),
        byKey(READS(KorODBCNCDBStyle::getNCDBStyle)),
        byKey(READS(KorODBCNSAModule::getNSAModule)),
        byKey(READS(KorODBCNSAModuleDefinition::getNSAModuleDefinition)),
        byKey(READS(KorODBCNSAModuleDllSigned::getNSAModuleDllSigned)),
        byKey(READS(KorODBCObjectStructure::getObjectStructure)),
        byKey(READS(KorODBCObjectSubType::getObjectSubType)),
        byKey(READS(KorODBCOpeningObjectType::getOpeningObjectType)),
        byKey(READS(KorODBCPostNumberSolution::getPostNumberSolutionByKey)),
        byKey(READS(ProfileDynamicSubtype::getProfileDynamicSubtype)),
        byKey<StructProfileDynamic>(READS(ProfileDynamic::getProfileDynamic)),
        byKey<StructProfileDynamicClassDesc>(READS(ProfileDynamic::getProfileDynamic)),
        byKey(READS(KorODBCProfileShapeRunName::getProfileShapeRunName)),
        byKey(READS(KorOdbcScrewType::getScrewType)),
        byKey(READS(KorODBCTemplateReportObjects::getTemplateReportObjects)),
        byKey(READS(KorODBCTextSizes::getTextSizes)),
        byKey(READS(KorODBCWizardControl::getWizardControl)),
        byKey(READS(KorODBCWizardSteps::getWizardStep)),
    };
}

class CatalogueReadersTest : public CatalogueTest {};

TEST_F(CatalogueReadersTest, RecordsByKey)
{
    for (const auto& one : readsByKey()) {
        SCOPED_TRACE(one.name);
        const Texts rows = rowsOf(one.type), keys = valuesOf(one.type, one.type.key);
        EXPECT_FALSE(rows.empty());
        const AnyRecord record(one.type);
        for (std::size_t i = 0; i < rows.size(); ++i) {
            mark(one.type, record.get());
            EXPECT_EQ(one.read(std::stol(keys[i]), record.get()), 1);
            EXPECT_TRUE(isRow(one.type, record.get(), rows[i]));
        }
        mark(one.type, record.get());
        const std::string before = textOf(one.type, record.get());
        for (const long unknown : {-1L, 4711L})
            EXPECT_EQ(one.read(unknown, record.get()), 0);
        dropTable(one.type);
        EXPECT_EQ(one.read(1, record.get()), 0);
        EXPECT_EQ(textOf(one.type, record.get()), before);
    }
}

TEST_F(CatalogueReadersTest, RecordsByRunName)
{
    for (const auto& one : {
             byName(READS(KorODBCBeamPositionCalculation::getBeamPositionCalculationByRunname)),
             byName(READS(KorODBCBolts::getStandardExtension)),
             byName(READS(KorODBCCameras::getTypeByRunname)),
             byName(READS(KorODBCConnectors::getMaterialByDescription)),
             byName(READS(KorODBCDetailProcessScaleOverride::getDetailProcessScaleOverrideByName)),
             byName(READS(KorODBCDetRunningDimensionTextAlignment::getDetRunningDimensionTextAlignmentByRunname)),
             byName(READS(KorODBCPostNumberSolution::getPostNumberSolutionByRunname)),
         }) {
        SCOPED_TRACE(one.name);
        const Texts rows = rowsOf(one.type), names = valuesOf(one.type, one.type.runName);
        EXPECT_FALSE(rows.empty());
        const AnyRecord record(one.type);
        for (std::size_t i = 0; i < rows.size(); ++i) {
            mark(one.type, record.get());
            EXPECT_EQ(one.read(KorString::fromUtf8(names[i]), record.get()), 1);
            EXPECT_TRUE(isRow(one.type, record.get(), rows[i]));
        }
        mark(one.type, record.get());
        const std::string before = textOf(one.type, record.get());
        for (const wchar_t* unknown : {L"", L"' OR 1 = 1", L"no such name"})
            EXPECT_EQ(one.read(unknown, record.get()), 0);
        EXPECT_EQ(textOf(one.type, record.get()), before);
    }
}

TEST_F(CatalogueReadersTest, KeysOfRunNames)
{
    struct Case {
        const char* name;
        const RecordDescription& type;
        int (*asText)(const KorString&, KorString&);
        int (*asKey)(const KorString&, KorOdbcKey&);
        int (*asLong)(const KorString&, long&);
        int (*asInt)(const KorString&, int&);
    };
#define KEY_OF(record, operation)                                                                                 \
    Case                                                                                                          \
    {                                                                                                             \
#operation, descriptionOf < record>(), &operation < KorString>, &operation < KorOdbcKey>,                 \
            &operation < long>, &operation < int>                                                                 \
    }
    const auto application = [](const KorString& name, auto& key) {
        return KorODBCApplication_ImportExport::getApplicationKey(name, key);
    };
    const auto sectionApplication = [](const KorString& name, auto& key) {
        return KorODBCApplication_ImportExport::getApplicationKey(name, key,
                                                                  KorODBCApplication_ImportExport::kSections);
    };
    for (const Case& one :
         {KEY_OF(StructAnchorsStandard, KorAnchorsStandard::getKey),
          KEY_OF(StructScrewHoleLocation, KorODBCBolts::getHoleLocationKey),
          KEY_OF(StructScrewHoleType, KorODBCBolts::getScrewHoleTypeKey),
          KEY_OF(StructConnectorStandard, KorODBCConnectors::getStandardKey),
          KEY_OF(StructDepthStatus, KorODBCDepthStatus::getDepthStatusKey),
          KEY_OF(StructMaterialGroups, KorODBCMaterialGroups::getMaterialGroupKey),
          KEY_OF(StructObjectSubType, KorODBCObjectSubType::getObjectSubTypeKey),
          KEY_OF(StructProfileShapeRunName, KorODBCProfileShapeRunName::getProfileShapeRunNameKey),
          KEY_OF(StructTextSizes, KorODBCTextSizes::getTextSizesKey),
          Case{"STD", descriptionOf<StructSTDApplication_ImportExport>(), application, application, application,
               application},
          Case{"PRF", descriptionOf<StructPRFApplication_ImportExport>(), sectionApplication, sectionApplication,
               sectionApplication, sectionApplication}}) {
        SCOPED_TRACE(one.name);
        const Texts names = valuesOf(one.type, one.type.runName), keys = valuesOf(one.type, one.type.key);
        EXPECT_FALSE(names.empty());
        KorString text;
        KorOdbcKey key;
        long asLong = 0;
        int asInt = 0;
        for (std::size_t i = 0; i < names.size(); ++i) {
            const KorString name = KorString::fromUtf8(names[i]);
            EXPECT_EQ(one.asText(name, text), 1);
            EXPECT_EQ(text.toUtf8(), keys[i]);
            EXPECT_EQ(one.asKey(name, key), 1);
            EXPECT_EQ(key.getKey(), std::stol(keys[i]));
            EXPECT_EQ(one.asLong(name, asLong), 1);
            EXPECT_EQ(asLong, std::stol(keys[i]));
            EXPECT_EQ(one.asInt(name, asInt), 1);
            EXPECT_EQ(asInt, std::stoi(keys[i]));
        }
        EXPECT_EQ(one.asText(L"no such name", text), 0);
        EXPECT_EQ(one.asKey(L"no such name", key), 0);
        EXPECT_EQ(text.toUtf8(), keys.back());
        EXPECT_EQ(key.getKey(), std::stol(keys.back()));
    }
#undef KEY_OF
}

TEST_F(CatalogueReadersTest, RunNameLists)
{
    struct Case {
        const char* name;
        const RecordDescription& type;
        int (*read)(KorArray<KorString>&);
    };
#define LIST(record, operation)                                                                                   \
    Case { #operation, descriptionOf < record>(), &operation }
    for (const Case& one :
         {LIST(StructAnchorsOrientation, KorAnchorsOrientation::getOrientationsList),
          LIST(StructAnchorsStandard, KorAnchorsStandard::getList),
          LIST(StructScrewHoleLocation, KorODBCBolts::getHoleLocationList),
          LIST(StructScrewHoleType, KorODBCBolts::getScrewHoleTypeList),
          LIST(StructCameraType, KorODBCCameras::getTypesList),
          LIST(StructConnectorDiameter, KorODBCConnectors::getDiameterList),
          LIST(StructMaterialConnector, KorODBCConnectors::getMaterialList),
          LIST(StructConnectorStandard, KorODBCConnectors::getStandardsList),
          LIST(StructDepthStatus, KorODBCDepthStatus::getDepthStatusList),
          LIST(StructDetailProcessMain2CutScale,
               KorODBCDetailProcessMain2CutScale::getDetailProcessMain2CutScaleList),
          LIST(StructDetGeometricRestrictions, KorODBCDetGeometricRestrictions::getDetGeometricRestrictionList),
          LIST(StructDetManualAnnotationType, KorODBCDetManualAnnotationType::getDetManualAnnotationTypeList),
          LIST(StructFootingIsolatedFormulaDefault, FootingIsolatedFormula::getFormulaDefaultsList),
          LIST(StructGalvanizingConfidence, KorODBCGalvanizingConfidence::getRunNames),
          LIST(StructGalvanizingConstructionClass, KorODBCGalvanizingConstructionClass::getRunNames),
          LIST(StructGalvanizingDetailClass, KorODBCGalvanizingDetailClass::getRunNames),
          LIST(StructHRLDefinition, KorODBCHRLDefinition::getRunnameList),
          LIST(StructMaterialGroups, KorODBCMaterialGroups::getMaterialGroupList),
          LIST(StructObjectSubType, KorODBCObjectSubType::getObjectSubTypeList),
          LIST(StructPostNumberSolution, KorODBCPostNumberSolution::getPostNumberSolutionList),
          LIST(StructProfileDynamicSubtype, ProfileDynamicSubtype::getProfileDynamicSubtypeRunNameList),
          LIST(StructProfileDynamic, ProfileDynamic::getProfileDynamicRunNameList),
          LIST(StructTextSizes, KorODBCTextSizes::getTextSizesList),
          Case{"STD", descriptionOf<StructSTDApplication_ImportExport>(),
               [](auto& names) { return KorODBCApplication_ImportExport::getApplicationList(names); }},
          Case{"PRF", descriptionOf<StructPRFApplication_ImportExport>(), [](auto& names) {
                   return KorODBCApplication_ImportExport::getApplicationList(
                       names, KorODBCApplication_ImportExport::kSections);
               }}}) {
        SCOPED_TRACE(one.name);
        const Texts inTable = valuesOf(one.type, one.type.runName);
        EXPECT_FALSE(inTable.empty());
        Texts expected(inTable);
        if (one.type.sortOrder >= 0) { // last first: in table order they would be the wrong way round
            const std::string column(one.type.at(one.type.sortOrder)->name);
            sql(homeOf(one.type), {"UPDATE [" + std::string(one.type.table) + "] SET [" + column + "] = -rowid"});
            std::reverse(expected.begin(), expected.end());
        }
        KorArray<KorString> names = korTexts({"old"});
        EXPECT_EQ(one.read(names), 1);
        EXPECT_EQ(utf8(names), expected);
        dropTable(one.type);
        EXPECT_NE(one.read(names), 1);
        EXPECT_EQ(utf8(names), expected);
    }
#undef LIST
}

template <class T>
RecordCase<int> wholeTable(const char* name, int (*read)(KorArray<T>&))
{
    return {name, descriptionOf<T>(),
            [=](int, void* records) { return read(*static_cast<KorArray<T>*>(records)); }};
}

TEST_F(CatalogueReadersTest, WholeTables)
{
    for (const auto& one : {
             wholeTable(READS(KorOdbcSetOfBolts::getBoltSets)),
             wholeTable(READS(KorODBCAreaObjectType::getAreaObjectTypeTable)),
             wholeTable(READS(KorODBCBOMDwgTokens::getBOMTokens)),
             wholeTable(READS(KorODBCChangePrototypeScaleTo::getAllRecords)),
             wholeTable(READS(KorColdRolledOwner::getColdRolledOwnerTable)),
             wholeTable(READS(KorCompoundMaster::getCompoundMasterTable)),
             wholeTable(READS(KorODBCConnectors::getDiameters)),
             wholeTable(READS(KorODBCConnectors::getDistances)),
             wholeTable(READS(KorODBCDateTimeFormat::getDateTimeFormatTable)),
             wholeTable(READS(KorODBCDetailProcessCategory::getDetailProcessCategoryTable)),
             wholeTable(READS(KorODBCDetGeometricRestrictions::getDetGeometricRestrictionTable)),
             wholeTable(READS(KorODBCDetManualAnnotationType::getDetManualAnnotationTypeTable)),
             wholeTable(READS(KorODBCGenericStringToken::getGenericStringTokenTable)),
             wholeTable(READS(KorODBCGenericStringTokenGroup::getGenericStringTokenTable)),
             wholeTable(READS(KorODBCHatchesMap::getHatches)),
             wholeTable(READS(KorODBCMaterialGroups::getMaterialGroupsTable)),
             wholeTable(READS(KorODBCNSAModule::getNSAModuleTable)),
             wholeTable(READS(KorODBCNSAModuleDefinition::getNSAModuleDefinitionTable)),
             wholeTable(READS(KorODBCNSAModuleDllSigned::getNSAModuleDllSignedTable)),
             wholeTable(READS(KorODBCObjectStructure::getObjectStructureTable)),
             wholeTable(READS(KorODBCOpeningObjectType::getOpeningObjectTypeTable)),
             wholeTable(READS(KorODBCProfileShapeRunName::getProfileShapeRunNameTable)),
             wholeTable(READS(KorODBCWizardControl::getWizardControlTable)),
             wholeTable(READS(KorODBCWizardSteps::getWizardStepsTable)),
         }) {
        SCOPED_TRACE(one.name);
        const Texts rows = rowsOf(one.type);
        EXPECT_FALSE(rows.empty());
        const ListOperations& list = one.type.operations->list;
        const std::unique_ptr<void, void (*)(void*)> records(list.create(), list.destroy);
        list.resize(records.get(), 2); // replaced, not added to
        EXPECT_EQ(one.read(0, records.get()), 1);
        ASSERT_EQ(list.length(records.get()), static_cast<long>(rows.size()));
        for (std::size_t i = 0; i < rows.size(); ++i)
            EXPECT_TRUE(isRow(one.type, list.at(records.get(), static_cast<long>(i)), rows[i]));
        dropTable(one.type);
        EXPECT_NE(one.read(0, records.get()), 1);
        EXPECT_EQ(list.length(records.get()), static_cast<long>(rows.size()));
    }
}

TEST_F(CatalogueReadersTest, SingleFieldsGiveMinusOneWhenTheyFail)
{
    struct Case {
        const char* name;
        const RecordDescription& type;
        int by;
        const char* field;
        std::function<int(const KorString& by, KorString& value)> read;
    };
    const auto number = [](const KorString& text) { return KorOdbcKey(text.toInteger()); };
    const auto& standards = descriptionOf<StructAnchorsStandard>();
    const auto& groups = descriptionOf<StructMaterialGroups>();
    const auto& shapes = descriptionOf<StructProfileShapeRunName>();
    const auto& formats = descriptionOf<StructGridReferenceTokenFormat>();
    const auto& hatches = descriptionOf<StructHatchesMap>();
    const auto& prototypes = descriptionOf<StructChangePrototypeScaleTo>();
    for (const Case& one : {
             Case{"getRunName", standards, standards.key, "RunName",
                  [&](auto&by, auto&value) { return KorAnchorsStandard::getRunName(number(by), value); }},
             Case{"getMaterialGroupRunName", groups, groups.key, "RunName",
                  [&](auto&by, auto&value) {
                      return KorODBCMaterialGroups::getMaterialGroupRunName(number(by), value);
                  }},
             Case{"getProfileShapeRunNameProfSubtype", shapes, shapes.runName, "ProfileSubtype",
                  &KorODBCProfileShapeRunName::getProfileShapeRunNameProfSubtype},
             Case{"getScript", formats, formats.runName, "Script", &KorOdbcGridReferenceTokenFormat::getScript},
             Case{"getCorrespondentHatch", hatches, hatches.runName, "CorrespondentHatch",
                  &KorODBCHatchesMap::getCorrespondentHatch},
             Case{"getScaleForPrototype", prototypes, prototypes.runName, "Scale",
                  [](auto&by, auto&value) {
                      double scale = -1;
                      const int result = KorODBCChangePrototypeScaleTo::getScaleForPrototype(by, scale);
                      EXPECT_EQ(result == 1, scale > 0);
                      if (result == 1)
                          value = KorCellData(scale).getStringW();
                      return result;
                  }},
         }) {
        SCOPED_TRACE(one.name);
        const Texts names = columns(homeOf(one.type), std::string(one.type.table));
        const auto field = std::find(names.begin(), names.end(), one.field) - names.begin();
        const Texts keys = valuesOf(one.type, one.by), values = valuesOf(one.type, static_cast<int>(field));
        EXPECT_FALSE(keys.empty());
        for (std::size_t i = 0; i < keys.size(); ++i) {
            KorString value = L"old";
            EXPECT_EQ(one.read(KorString::fromUtf8(keys[i]), value), 1);
            EXPECT_EQ(value.toUtf8(), values[i]);
        }
        KorString value = L"old";
        EXPECT_EQ(one.read(L"4711", value), -1);
        dropTable(one.type);
        EXPECT_EQ(one.read(KorString::fromUtf8(keys[0]), value), -1);
        EXPECT_EQ(value, L"old");
    }
}

TEST_F(CatalogueReadersTest, CamerasGoByTextKeys)
{
    const auto& type = descriptionOf<StructCameraType>();
    const Texts keys = valuesOf(type, type.key), names = valuesOf(type, type.runName), rows = rowsOf(type);
    StructCameraType camera;
    for (std::size_t i = 0; i < keys.size(); ++i) {
        EXPECT_EQ(KorODBCCameras::getTypeByKey(KorString::fromUtf8(keys[i]), camera), 1);
        EXPECT_TRUE(isRow(type, &camera, rows[i]));
        EXPECT_EQ(KorODBCCameras::getTypeRunNameByKey(KorString::fromUtf8(keys[i])).toUtf8(), names[i]);
    }
    for (const wchar_t* unknown : {L"", L"it's 没有", L"Top"}) {
        EXPECT_EQ(KorODBCCameras::getTypeByKey(unknown, camera), 0);
        EXPECT_TRUE(isRow(type, &camera, rows.back()));
        EXPECT_EQ(KorODBCCameras::getTypeRunNameByKey(unknown), unknown);
    }
}

/// The texts of one column of the records that `read` gives.
template <auto Field, class Read>
auto fields(Read read)
{
    return [read](Texts& texts) {
        KorArray<std::decay_t<decltype(read.record)>> records;
        const int result = read.call(records);
        if (result == 1) {
            texts.clear();
            for (const auto& record : records)
                texts.push_back(KorCellData(record.*Field).getStringW().toUtf8());
        } else {
            EXPECT_TRUE(records.isEmpty());
        }
        return result;
    };
}
template <class T, class Call>
struct Records {
    T record;
    Call call;
};
template <class T, class Call>
Records<T, Call> records(Call call)
{
    return {T(), call};
}
/// One record as a list of one.
template <class T, class Call>
auto record(Call call)
{
    return records<T>([call](KorArray<T>& found) {
        T one;
        const int result = call(one);
        if (result == 1)
            found.append(one);
        return result;
    });
}
template <class T>
auto values(int (*read)(const KorString&, const KorString&, KorArray<T>&), const wchar_t* first,
            const wchar_t* second)
{
    return [=](Texts& texts) {
        KorArray<T> found;
        const int result = read(first, second, found);
        if (result == 1) {
            texts.clear();
            for (const T& value : found)
                texts.push_back(KorCellData(value).getStringW().toUtf8());
        }
        EXPECT_EQ(result == 1, !found.isEmpty());
        return result;
    };
}

TEST_F(CatalogueReadersTest, OperationsOfTheirOwn)
{
    struct Case {
        const char* name;
        std::function<int(Texts&)> read;
        int result;
        Texts expected;
    };
    const Texts old{"old"};
    const auto lengths = [](long anchor) {
        return [anchor](Texts& texts) {
            KorArray<double> found;
            const int result = KorAnchorsDefinition::getAvailableLengths(anchor, found);
            if (result == 1)
                texts.clear();
            for (const double length : found)
                texts.push_back(KorCellData(length).getStringW().toUtf8());
            return result;
        };
    };
    const auto names = [](auto read) {
        return [read](Texts& texts) {
            KorArray<KorString> found = korTexts(texts);
            const int result = read(found);
            texts = utf8(found);
            return result;
        };
    };
#define ONE(type, field, call) fields<&type::field>(record<type>([](type& r) { return call; }))
#define MANY(type, field, call) fields<&type::field>(records<type>([](KorArray<type>& r) { return call; }))
    for (const Case& one : std::vector<Case>{
             {"lengths", lengths(1), 1, {"190", "230", "260", "300"}},
             {"lengths of no anchor", lengths(-1), 0, old},
             {"anchor holes",
              ONE(StructAnchorsHoleDefinition, plateHole, KorAnchorsHoleDefinition::getByAnchorNameID(2, r)),
              1,
              {"24"}},
             {"no anchor holes",
              ONE(StructAnchorsHoleDefinition, plateHole, KorAnchorsHoleDefinition::getByAnchorNameID(99, r)), 0,
              old},
             {"anchor materials",
              names([](auto& n) { return KorAnchorsNameUtils::getMaterialList(L"DIN 7992", n); }),
              1,
              {"4.6", "8.8"}},
             {"no anchor materials",
              names([](auto& n) { return KorAnchorsNameUtils::getMaterialList(L"DIN 0", n); }), 0, old},
             {"anchor sets",
              names([](auto& n) { return KorAnchorsNameUtils::getSetList(L"DIN 7992", L"8.8", n); }),
              1,
              {"Nut and two washers"}},
             {"no anchor sets",
              names([](auto& n) { return KorAnchorsNameUtils::getSetList(L"DIN 7992", L"10.9", n); }), 0, old},
             {"anchor diameters",
              names([](auto& n) {
                  return KorAnchorsNameUtils::getDiameterList(L"DIN 529", L"4.6", L"Nut and washer", n);
              }),
              1,
              {"M16", "M20", "M24"}},
             {"no anchor diameters", names([](auto& n) {
                  return KorAnchorsNameUtils::getDiameterList(L"DIN 529", L"4.6", L"Bolt only", n);
              }),
              0, old},
             {"bolt",
              ONE(StructScrew, headHeight,
                  KorODBCBolts::getScrewExtension(L"ISO 4014", L"8.8", L"Nut and washer", 20.0000004, r)),
              1,
              {"12.5"}},
             {"bolt of no such diameter",
              ONE(StructScrew, headHeight,
                  KorODBCBolts::getScrewExtension(L"ISO 4014", L"8.8", L"Nut and washer", 20.1, r)),
              0, old},
             {"tool", ONE(StructTools, acrossFlats, KorODBCBolts::getToolInformation(24, r)), 1, {"36"}},
             {"no tool", ONE(StructTools, acrossFlats, KorODBCBolts::getToolInformation(23, r)), 0, old},
             {"assembly",
              ONE(StructSetBolts, maximumGrip,
                  KorOdbcSetBolts::getByKey(L"ISO 4014", L"Nut and washer", 16, 80, r)),
              1,
              {"58.2"}},
             {"assembly of no such length",
              ONE(StructSetBolts, maximumGrip,
                  KorOdbcSetBolts::getByKey(L"ISO 4014", L"Nut and washer", 16, 81, r)),
              0, old},
             {"strength classes",
              names([](auto& n) { return KorOdbcSetBolts::getStrengthClassList(L"ISO 4014", n); }),
              1,
              {"8.8", "10.9"}},
             {"no strength classes",
              names([](auto& n) { return KorOdbcSetBolts::getStrengthClassList(L"' OR 1=1", n); }), 0, old},
             {"sets",
              names([](auto& n) { return KorOdbcSetBolts::getGarniturList(L"ISO 4017", L"8.8", n); }),
              1,
              {"Bolt only", "Nut and washer"}},
             {"no sets", names([](auto& n) { return KorOdbcSetBolts::getGarniturList(L"ISO 4017", L"4.6", n); }),
              0, old},
             {"diameters",
              values<KorString>(&KorOdbcSetBolts::getDiameterList, L"ISO 4014", L"Nut and washer"),
              1,
              {"M12", "M16", "M20", "M24"}},
             {"no diameters", values<KorString>(&KorOdbcSetBolts::getDiameterList, L"ISO 4014", L"Bolt only"), 0,
              old},
             {"diameters in mm",
              values<double>(&KorOdbcSetBolts::getDiameters, L"ISO 4017", L"Nut and washer"),
              1,
              {"12", "16", "20", "24"}},
             {"clipping gap",
              ONE(StructClippingGap, key, KorODBCClippingGap::getClippingGapByValue(3, r)),
              1,
              {"2"}},
             {"no clipping gap", ONE(StructClippingGap, key, KorODBCClippingGap::getClippingGapByValue(3.1, r)), 0,
              old},
             {"new joint",
              ONE(StructConvertHRLToCOMJoints, newName,
                  KorODBCConvertHRLToCOMJoints::getConvertHRLToCOMJointsByOldName(L"BASEPL", r)),
              1,
              {"BasePlate"}},
             {"no new joint",
              ONE(StructConvertHRLToCOMJoints, newName,
                  KorODBCConvertHRLToCOMJoints::getConvertHRLToCOMJointsByOldName(L"basepl", r)),
              0, old},
             {"processes of a category",
              MANY(StructDetailProcessDefinition, runName,
                   KorODBCDetailProcessCategory::getDetailProcessDefinitionsByCategoryKey(2, r)),
              1,
              {"All overviews", "Anchor plans"}},
             {"steps of no category",
              MANY(StructDetailProcessStep, category,
                   KorODBCDetailProcessCategory::getDetailProcessStepsByCategoryKey(99, r)),
              0, old},
             {"tokens of a group",
              MANY(StructGenericStringToken, token,
                   KorODBCGenericStringToken::getGenericStringTokenTableByGroup(1, r)),
              1,
              {"%PartMark%", "%AssemblyMark%"}},
             {"token groups of a type",
              MANY(StructGenericStringTokenGroup, runName,
                   KorODBCGenericStringTokenGroup::getGenericStringTokenGroupsByObjectType(2, r)),
              1,
              {"Plates, numbers", "Plates, dimensions"}},
             {"groups of a joint",
              MANY(StructGroupsJointAssignment, group,
                   KorODBCGroupsJointAssignment::getGroupsForJoint(L"BasePlate", r)),
              1,
              {"1", "6", "3", "5"}},
             {"groups of no joint",
              MANY(StructGroupsJointAssignment, group, KorODBCGroupsJointAssignment::getGroupsForJoint(L"", r)), 0,
              old},
             {"pages of a group",
              MANY(StructPagesGroupAssignment, page, KorODBCPagesGroupAssignment::getPagesInGroup(2, r)),
              1,
              {"Assembly", "Pattern", "Holes"}},
             {"module",
              ONE(StructNSAModule, version, KorODBCNSAModule::getNSAModuleByInternalName(L"FinPlateEN", r)),
              1,
              {"1.1"}},
             {"no module",
              ONE(StructNSAModule, version, KorODBCNSAModule::getNSAModuleByInternalName(L"FinPlate", r)), 0, old},
             {"layers by table",
              MANY(StructObjectLayerAssignment, objectTable, KorOdbcObjectLayerAssignment::fillTablesRelation(r)),
              1,
              {"AnchorsName", "AreaObjectType", "BarGrating", "CombiWelding", "ConnectorStandard",
               "PlateThickness", "ProfileMasterTable", "ScrewNew"}},
             {"shape of a subtype",
              ONE(StructProfileShapeRunName, runName,
                  KorODBCProfileShapeRunName::getProfileShapeRunNameForProfSubtype(L"Round tube", r)),
              1,
              {"Round hollow section"}},
             {"standard's name",
              names([](auto& n) { return KorODBCConnectors::getStandardDescription(L"2", n.getAt(0)); }),
              1,
              {"AWS D1.1 type B"}},
             {"no standard's name",
              names([](auto& n) { return KorODBCConnectors::getStandardDescription(L"two", n.getAt(0)); }), 0,
              old},
             {"steps of a task",
              MANY(StructWizardSteps, runName, KorODBCWizardSteps::getWizardStepsByTaskID(2, r)),
              1,
              {"Grid", "Frames", "Bracings"}},
             {"controls of a step",
              MANY(StructWizardControl, runName, KorODBCWizardControl::getWizardControlsByStepID(4, r)),
              1,
              {"Number of bays", "Bay width"}},
             {"controls of no step",
              MANY(StructWizardControl, runName, KorODBCWizardControl::getWizardControlsByStepID(-1, r)), 0, old},
         }) {
        SCOPED_TRACE(one.name);
        Texts texts = old;
        EXPECT_EQ(one.read(texts), one.result);
        EXPECT_EQ(texts, one.expected);
    }
#undef ONE
#undef MANY
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
    dropTable(descriptionOf<StructDetExternalObjectPropertyMap>());
    EXPECT_NE(KorODBCDetExternalObject::getExternalObjectsData(objects, properties), 1);
    EXPECT_EQ(objects.length(), 1);
    EXPECT_EQ(properties.length(), 5);
}

/// The record types that a reader is made of.
template <class... Types>
std::vector<const RecordDescription*> typesOf(const CatalogueReader<Types...>*)
{
    return {&descriptionOf<Types>()...};
}

TEST_F(CatalogueReadersTest, AResetShowsWhatOthersChanged)
{
    struct Case {
        const char* name;
        std::vector<const RecordDescription*> types;
        void (*reset)();
    };
#define RESETS(reader)                                                                                            \
    Case { #reader, typesOf(static_cast <const reader*>(nullptr)), &reader::resetTable }
    using ModelRolesRulesNS::KorModelRolesRules;
    for (const Case& one : {RESETS(KorOdbcSetOfBolts),
                            RESETS(KorAnchorsDefinition),
                            RESETS(KorAnchorsOrientation),
                            RESETS(KorAnchorsStandard),
                            RESETS(KorAnchorsHoleDefinition),
                            RESETS(KorAnchorsNameUtils),
                            RESETS(KorODBCApplication_ImportExport),
                            RESETS(KorODBCAreaObjectType),
                            RESETS(KorODBCBeamPositionCalculation),
                            RESETS(KorODBCBolts),
                            RESETS(KorOdbcSetBolts),
                            RESETS(KorODBCBOMDwgTokens),
                            RESETS(KorODBCCameras),
                            RESETS(KorODBCChangePrototypeScaleTo),
                            RESETS(KorODBCClippingGap),
                            RESETS(KorODBCClippingType),
                            RESETS(KorColdRolledOwner),
                            RESETS(KorCompoundMaster),
                            RESETS(KorODBCConnectors),
                            RESETS(KorODBCConnectorRelations),
                            RESETS(KorODBCConvertHRLToCOMJoints),
                            RESETS(KorODBCDateTimeFormat),
                            RESETS(KorODBCDepthStatus),
                            RESETS(KorODBCDetailProcessCategory),
                            RESETS(KorODBCDetailProcessMain2CutScale),
                            RESETS(KorODBCDetailProcessScaleOverride),
                            RESETS(KorODBCDetExternalObject),
                            RESETS(KorODBCDetGeometricRestrictions),
                            RESETS(KorODBCDetManualAnnotationType),
                            RESETS(KorODBCDetRunningDimensionTextAlignment),
                            RESETS(KorODBCDisplayControl),
                            RESETS(FootingIsolatedFormula),
                            RESETS(KorODBCGalvanizingConfidence),
                            RESETS(KorODBCGalvanizingConstructionClass),
                            RESETS(KorODBCGalvanizingDetailClass),
                            RESETS(KorODBCGenericStringToken),
                            RESETS(KorODBCGenericStringTokenGroup),
                            RESETS(KorOdbcGridReferenceTokenFormat),
                            RESETS(KorODBCGroupsJointAssignment),
                            RESETS(KorODBCHatchesMap),
                            RESETS(KorODBCHRLDefinition),
                            RESETS(KorODBCJointGroups),
                            RESETS(KorModelRolesRules),
                            RESETS(KorODBCMaterialGroups),
                            RESETS(KorODBCNCDBProcess),
                            RESETS(KorODBCNCDBProcessStep),
                            RESETS(KorODBCNCDBStyle),
                            RESETS(KorODBCNSAModule),
                            RESETS(KorODBCNSAModuleDefinition),
                            RESETS(KorODBCNSAModuleDllSigned),
                            RESETS(KorOdbcObjectLayerAssignment),
                            RESETS(KorODBCObjectStructure),
                            RESETS(KorODBCObjectSubType),
                            RESETS(KorODBCOpeningObjectType),
                            RESETS(KorODBCPagesGroupAssignment),
                            RESETS(KorODBCPostNumberSolution),
                            RESETS(ProfileDynamicSubtype),
                            RESETS(ProfileDynamic),
                            RESETS(KorODBCProfileShapeRunName),
                            RESETS(KorOdbcScrewType),
                            RESETS(KorODBCTemplateReportObjects),
                            RESETS(KorODBCTextSizes),
                            RESETS(KorODBCWizardControl),
                            RESETS(KorODBCWizardSteps)}) {
        for (const RecordDescription* type : one.types) {
            SCOPED_TRACE(std::string(one.name) + ", " + std::string(type->table));
            const ListOperations& list = type->operations->list;
            const std::unique_ptr<void, void (*)(void*)> records(list.create(), list.destroy);
            ASSERT_EQ(RecordAccess::readTable(*type, records.get()), 1);
            const long before = list.length(records.get());
            ASSERT_GT(before, 0) << "the shipped catalogue has no rows";
            KorString connection;
            ASSERT_EQ(KorDatabaseAccess::getConnectionString(homeOf(*type), connection), 1);
            const std::string name = "[" + std::string(type->table) + "]";
            folder().executeOutside(connection.toUtf8().substr(connection.toUtf8().find(':') + 1),
                                    "DELETE FROM " + name + " WHERE rowid = (SELECT max(rowid) FROM " + name +
                                        ")");
            one.reset();
            EXPECT_EQ(RecordAccess::readTable(*type, records.get()), 1);
            EXPECT_EQ(list.length(records.get()), before - 1);
        }
    }
#undef RESETS
}

} // namespace
