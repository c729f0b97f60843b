#include "foundation/TableCatalogue.h"

#include <array>

namespace {

struct NamedTable {
    unsigned id;
    const wchar_t* name;
};

// Several ids share a name; ids that are missing here are retired.
// clang-format off
constexpr NamedTable namedTables[] = {
    {0, L"AnlagenteilKategorienn"}, {2, L"Rules2nd"}, {6, L"Rules2nd"}, {10, L"Default_STR"},
    {11, L"Default_INT"}, {12, L"Default_DBL"}, {13, L"UserDimensionDefinitions"}, {14, L"Coating"},
    {15, L"Standard"}, {17, L"AnchorsStandard"}, {19, L"Material"}, {20, L"MaterialClass"},
    {22, L"RenderMaterial"}, {23, L"StrengthClass"}, {25, L"Sets"}, {26, L"BoltsDistances"},
    {27, L"BoltsDiameters"}, {28, L"PlateThickness"}, {29, L"Scale"}, {30, L"BoltDefinition"},
    {31, L"DSTVNames"}, {34, L"HelpButtons"}, {35, L"CombiWelding"}, {36, L"WeldType"}, {37, L"WeldDesign"},
    {38, L"WeldShape"}, {39, L"ConnectorStandard"}, {40, L"DetAcadSettings"}, {41, L"DetObjAppearance"},
    {42, L"DetObjQualifierSet"}, {43, L"DetObjQualifierFilter"}, {44, L"DetViewDimGeomRestrictionBitmaps"},
    {45, L"DetObjQualifierSet"}, {46, L"DetObjQualifier"}, {47, L"DetObjAnnotationStrategy"},
    {48, L"DetObjReprMapsNew"}, {49, L"DetObjSelectionStrategy"}, {50, L"DetViewSystemSources"},
    {51, L"DetViewSystemAndBox"}, {52, L"DetViewDimPointSelection"}, {53, L"DetViewRequest"},
    {54, L"DetViewArrangeStrategy"}, {55, L"DetViewLengthClip"}, {56, L"DetViewDimRequestLinear"},
    {57, L"DetViewDimStrategyNew"}, {58, L"DetViewDimStrategyNew"}, {59, L"DetViewSelectMode"},
    {60, L"DetViewArrangeDirection"}, {61, L"DetViewDimPointtype"}, {62, L"DetViewDimSum"},
    {63, L"DetModelType"}, {64, L"DetRole"}, {65, L"DetailDepthPosition"}, {66, L"DetailAreaType"},
    {67, L"DetOrdinatePosition"}, {68, L"DetOrdinateReference"}, {69, L"DetOrdinateDimType"},
    {70, L"DetailVisibilityStatus"}, {71, L"DetailReferenceAxis"}, {72, L"NCDXFOutputFileVersion"},
    {73, L"Texts"}, {74, L"ProfileTypeClassDefinition"}, {75, L"ExtnamesToIntnames"},
    {76, L"ProfileMasterTable"}, {77, L"ProfileSubtypes"}, {78, L"SetOfBolts"}, {79, L"SetBolts"},
    {80, L"Tools"}, {81, L"SetNutsBolts"}, {82, L"DSTV_Static_In_B01"}, {83, L"DSTV_Static_In_B02"},
    {84, L"DSTV_Static_In_B03"}, {85, L"DSTV_Static_In_B04"}, {86, L"ScrewNew"}, {87, L"BoltsCoating"},
    {88, L"CameraTypes"}, {90, L"ScrewHoleLocation"}, {91, L"ScrewHoleType"}, {92, L"ConnectorDistances"},
    {93, L"ConnectorDiameters"}, {94, L"ConnectorMaterial"}, {95, L"Authors"}, {96, L"DevelopersIDs"},
    {97, L"ModelRole"}, {98, L"DetailOrientation"}, {99, L"DetBaseCategories"},
    {100, L"DetViewRequestCategories"}, {101, L"DetAnnotationType"}, {102, L"DetLeaderStyle"},
    {103, L"DetRequestTypes"}, {104, L"DetRequestLinearDirection"}, {105, L"DetVwDimGeomRestrictions"},
    {106, L"DetailStyle"}, {107, L"DetailProcessSort"}, {108, L"DetailMasterTable"},
    {109, L"DetArrangerControl"}, {110, L"DetArrangerStrategy"}, {111, L"DetailProcessDefinition"},
    {112, L"DetCoordSystemSelector"}, {113, L"DetailStyleMapNew"}, {116, L"DetailProcessStep"},
    {117, L"DetailStyleOverrides"}, {118, L"DetailFilenameSelector"}, {119, L"Toolbars"}, {120, L"Notes"},
    {121, L"RulesNew"}, {123, L"RulesSubtypes"}, {124, L"Symbols"}, {125, L"Beschriftungstyp"},
    {126, L"DetAnnotationTypeContents"}, {127, L"DetProcStepPrecondition"},
    {128, L"DetailProcessSelection"}, {129, L"DetailProcessScales"}, {132, L"Country"},
    {133, L"MapInternToExtern"}, {134, L"RuleNameMapping"}, {136, L"Bitmaps"}, {137, L"BitmapIndex"},
    {138, L"XMLData"}, {139, L"UnitsOfDistance"}, {140, L"UnitsOfArea"}, {141, L"Units"}, {142, L"Units"},
    {143, L"UnitsOfWeight"}, {144, L"Units"}, {145, L"UnitsOfAngle"}, {146, L"Units"}, {147, L"UnitsType"},
    {148, L"UnitsOfStress"}, {149, L"Units"}, {150, L"UnitsOfSectionModulus"}, {151, L"Units"},
    {152, L"UnitsOfMomentOfInertia"}, {153, L"Units"}, {154, L"ModelSelections"},
    {155, L"ModelSelectionApplications"}, {156, L"Reports"}, {157, L"ModelExtracts"},
    {158, L"ModelExtractUpdateInfo"}, {159, L"ReportTemplates"}, {160, L"ReportTypes"},
    {161, L"ReportCategories"}, {165, L"SectionBehaviourAssignment"}, {166, L"SectionBehaviour"},
    {167, L"ExplodeObjectsTo"}, {168, L"UnwindingElongation"}, {169, L"NumberingPrefix"},
    {170, L"ObjectType"}, {171, L"ObjectGroup"}, {172, L"Linetypes"}, {173, L"NumberingMethod"},
    {174, L"DetManualAnnotationType"}, {175, L"DetObjReprMapsNew"}, {176, L"DetObjReprMapsNew"},
    {177, L"ScrewTypes"}, {178, L"HRLDefinition"}, {179, L"RulesDllSigned"},
    {180, L"DetailProcessMain2CutScale"}, {181, L"NCDBStyle"}, {182, L"NCDBProcess"},
    {183, L"NCDBProcessStep"}, {184, L"DetailStyleMapNew"}, {185, L"DetailStyleMapNew"},
    {186, L"GenericStringToken"}, {187, L"DetailProcessScaleOverride"}, {188, L"ExplodeSettings"},
    {189, L"ObjectStructure"}, {190, L"ObjectSubType"}, {191, L"ExplodeProfile"},
    {192, L"DetObjQualifierSetGroup"}, {193, L"DetGeometricRestrictions"}, {194, L"DetObjAnnotationGroup"},
    {195, L"DetViewDimRequestLinearGroup"}, {196, L"TextSizes"}, {197, L"GenericStringTokenGroup"},
    {198, L"DisplayControl"}, {199, L"DetViewDimStrategyNew"}, {200, L"DetRunningDimensionTextAlignment"},
    {201, L"BeamPositionCalculation"}, {202, L"ClippingGap"}, {203, L"ClippingType"},
    {204, L"ConnectorRelations"}, {205, L"DetViewRequestCategories"}, {206, L"INFO"},
    {207, L"STD_Application"}, {208, L"STD_Profile_Conversion"}, {209, L"Profile_Rotation"},
    {210, L"STD_Material_Conversion"}, {211, L"KISS_Application"}, {212, L"KISS_Profile_Conversion"},
    {213, L"KISS_Material_Conversion"}, {214, L"KissPlateMaterial"}, {215, L"PRF_Application"},
    {216, L"CompoundMasterTable"}, {217, L"ColdRolledOwner"}, {218, L"ConvertHRLToCOMJoints"},
    {219, L"DetailProcessCategories"}, {220, L"DetProcessesSuiteDefinition"}, {221, L"QXT_Application"},
    {222, L"QXT_Profile_Conversion"}, {223, L"Profile_Exports_Conversion"},
    {224, L"QXT_Material_Conversion"}, {225, L"Object_Type"}, {226, L"AutoConnectionConfig"},
    {227, L"AutoFilteringConfig"}, {228, L"AutoConnectionInputSet"}, {229, L"AutoConnectionInputObjects"},
    {230, L"AutoConnectionInputObjectCondSet"}, {231, L"AutoConnectionInputObjectCondItems"},
    {232, L"AutoConnectionParamSetItems"}, {233, L"AutoConnectionModelRoles"},
    {234, L"AutoConnectionModelRolesItems"}, {235, L"AutoConnectionCategories"},
    {236, L"AutoConnectionCategoriesItems"}, {237, L"AutoConnectionCategoriesItemsDesc"},
    {238, L"AutoConnectionObjectsOrderForJoints"}, {239, L"AutoConnectionRuleSettingsGeneral"},
    {240, L"AutoConnectionRuleSettingsProfiles"}, {241, L"AutoConnectionRuleSettingsCategories"},
    {242, L"AutoConnectionRuleSettingsConfigurations"}, {243, L"AutoConnectionProfiles"},
    {244, L"NSAModule"}, {245, L"NSAModuleDefinition"}, {246, L"NSAModuleDllSigned"},
    {247, L"AreaObjectType"}, {248, L"OpeningObjectType"}, {249, L"UnitsOfForce"}, {250, L"Units"},
    {251, L"UnitsOfMoment"}, {252, L"Units"}, {253, L"BeamConnectionType"}, {254, L"NodeSupportType"},
    {255, L"DegreeOfFreedom"}, {256, L"WizardSteps"}, {257, L"WizardControl"},
    {258, L"GroupsJointAssignment"}, {259, L"JointGroups"}, {260, L"PagesGroupAssignment"},
    {261, L"ObjectLayerAssignment"}, {262, L"UnitsOfWeightPerDistance"}, {263, L"Units"},
    {264, L"UnitsOfAreaPerDistance"}, {265, L"Units"}, {266, L"CIS2_Bolt_Conversion"},
    {267, L"DepthStatus"}, {268, L"DateTimeFormat"}, {269, L"GridMultiLang"}, {270, L"IncrementalCounter"},
    {271, L"PostNumberSolution"}, {272, L"UpdateStructureInfo"}, {273, L"AutoConnectionGeomConditions"},
    {274, L"NumberingPrefixProfile"}, {275, L"DetViewCompassLocation"}, {276, L"ProfileShapeRunName"},
    {277, L"ColumnModelRoles"}, {278, L"BeamType"}, {279, L"NecessaryViewsConfiguration"},
    {280, L"DetailOutputFileVersion"}, {281, L"ModelRolesRules"}, {282, L"GratingStandardMaster"},
    {283, L"GratingVariableMaster"}, {286, L"GratingConnectorType"}, {287, L"GratingMaterialOption"},
    {288, L"DetVwDimParentRelaPosRestriction"}, {289, L"BomDwgTokens"}, {290, L"TemplateReportObjects"},
    {291, L"DetHatchSettings"}, {292, L"DetGridReferenceSettings"}, {293, L"PreferredSizesProfiles"},
    {294, L"AnchorsName"}, {295, L"AnchorsDefinition"}, {296, L"AnchorsOrientation"},
    {297, L"MaterialGroups"}, {298, L"ProfileDynamicSubtypes"}, {299, L"ProfileDynamicClassDesc"},
    {300, L"ProfileDynamic"}, {303, L"FootingIsolatedFormulaMask"}, {304, L"FootingIsolatedFormulaDefault"},
    {305, L"ChangePrototypeScaleTo"}, {306, L"HatchesMap"}, {307, L"AnchorsHoleDefinition"},
    {308, L"GratingConnector"}, {309, L"BarGrating"}, {310, L"BarGratingSeries"},
    {311, L"BearingBarThickness"}, {312, L"BearingBarWidth"}, {313, L"CrossBar"},
    {314, L"BearingBarSpacing"}, {315, L"CrossBarSpacing"}, {316, L"GridReferenceTokenFormat"},
    {317, L"DetExternalObject"}, {318, L"DetExternalObjectPropertyMap"}, {319, L"ApprovalStatus"},
    {320, L"ApprovalComment"}, {321, L"GalvanizingConstructionClass"}, {322, L"GalvanizingConfidence"},
    {323, L"GalvanizingDetailClass"}, {324, L"UnitsOfVolume"}, {325, L"Units"}, {326, L"UnitsOfDensity"},
    {327, L"Units"}, {328, L"StandardNuts"}, {329, L"Sources"},
};
// clang-format on

constexpr unsigned numberOfIds = 330;

constexpr std::array<const wchar_t*, numberOfIds> namesById = [] {
    std::array<const wchar_t*, numberOfIds> names{};
    for (const NamedTable& table : namedTables)
        names[table.id] = table.name;
    return names;
}();

} // namespace

KorString korodbc::tableNameOfId(unsigned id) { return id < numberOfIds ? KorString(namesById[id]) : KorString(); }
