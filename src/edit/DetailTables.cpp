#include "DetailTables.h"

#include <unordered_map>

namespace korodbc {

namespace {

using M = KorOdbcMan;

const DetailTable detailTables[M::kTableTypes] = {
    {L"DetailStyle", descriptionOf<StructDetailStyle>, &M::m_structDetailStyle, true},
    {L"DetViewArrangeStrategy", descriptionOf<StructDetViewArrangeStrategy>, &M::m_structDetViewArrangeStrategy,
     true},
    {L"DetViewRequest", descriptionOf<StructDetViewRequest>, &M::m_structDetViewRequest, true},
    {L"DetViewRequestCategories", descriptionOf<StructDetViewRequestCategory>, &M::m_structDetViewRequestCategory,
     false},
    {L"DetObjReprMapsNew", descriptionOf<StructDetObjReprMap>, &M::m_structDetObjReprMap, true},
    {L"DetViewSystemAndBox", descriptionOf<StructDetViewSystemAndBox>, &M::m_structDetViewSystemAndBox, true},
    {L"DetObjAppearance", descriptionOf<StructDetObjAppearance>, &M::m_structDetObjAppearance, false},
    {L"DetViewDimStrategyNew", descriptionOf<StructDetViewDimStrategy>, &M::m_structDetViewDimStrategy, true},
    {L"DetViewLengthClip", descriptionOf<StructDetViewLengthClip>, &M::m_structDetViewLengthClip, true},
    {L"DetObjAnnotationStrategy", descriptionOf<StructDetObjAnnotationStrategy>,
     &M::m_structDetObjAnnotationStrategy, true},
    {L"DetAnnotationType", descriptionOf<StructDetAnnotationType>, &M::m_structDetAnnotationType, true},
    {L"DetArrangerControl", descriptionOf<StructDetArrangerControl>, &M::m_structDetArrangerControl, true},
    {L"DetArrangerStrategy", descriptionOf<StructDetArrangerStrategy>, &M::m_structDetArrangerStrategy, true},
    {L"DetViewDimRequestLinear", descriptionOf<StructDetViewDimRequestLinear>, &M::m_structDetViewDimRequestLinear,
     true},
    {L"DetViewDimPointSelection", descriptionOf<StructDetViewDimPointSelection>,
     &M::m_structDetViewDimPointSelection, true},
    {L"DetailMasterTable", descriptionOf<StructDetailMaster>, &M::m_structDetailMaster, true},
    {L"DetObjQualifierSet", descriptionOf<StructDetObjQualifierSet>, &M::m_structDetObjQualifierSet, true},
    {L"DetObjQualifierFilter", descriptionOf<StructDetObjQualifierFilter>, &M::m_structDetObjQualifierFilter,
     false},
    {L"NumberingPrefix", descriptionOf<StructNumberingPrefix>, &M::m_structNumberingPrefix, true},
    {L"ExplodeSettings", descriptionOf<StructExplodeSettings>, &M::m_structExplodeSettings, true},
    {L"ObjectStructure", descriptionOf<StructObjectStructure>, &M::m_structObjectStructure, true},
    {L"ExplodeProfile", descriptionOf<StructExplodeProfile>, &M::m_structExplodeProfile, true},
    {L"Linetypes", descriptionOf<StructLinetypes>, &M::m_structLinetypes, true},
    {L"DetBaseCategories", descriptionOf<StructDetBaseCategory>, &M::m_structDetBaseCategory, true},
    {L"DetManualAnnotationType", descriptionOf<StructDetManualAnnotationType>, &M::m_structDetManualAnnotationType,
     true},
    {L"DetObjReprMapItems", descriptionOf<StructDetObjReprMapItem>, nullptr, false},
    {L"DetObjAnnotationGroup", descriptionOf<StructDetObjAnnotationGroup>,
     &M::m_structDetObjAnnotationStrategyGroup, true},
    {L"DetViewDimRequestLinearGroup", descriptionOf<StructDetViewDimRequestLinearGroup>,
     &M::m_structDetViewDimRequestLinearGroup, true},
    {L"DetObjQualifierSetGroup", descriptionOf<StructDetObjQualifierSetGroup>, &M::m_structDetObjQualifierSetGroup,
     true},
    {L"DetViewDimStrategyItems", descriptionOf<StructDetViewDimStrategyItem>, nullptr, false},
    {L"DetHatchSettings", descriptionOf<StructDetHatchSettings>, &M::m_structDetHatchSettings, false},
    {L"DetGridReferenceSettings", descriptionOf<StructDetGridRefSettings>, &M::m_structDetGridRefSettings, false},
    {L"DetailProcessDefinition", descriptionOf<StructDetailProcessDefinition>, &M::m_structDetailProcessDefinition,
     true},
    {L"DetailProcessStep", descriptionOf<StructDetailProcessStep>, &M::m_structDetailProcessStep, true},
    {L"DetailFilenameSelector", descriptionOf<StructDetailFilenameSelector>, &M::m_structDetailFilenameSelector,
     true},
    {L"DetailProcessSelection", descriptionOf<StructDetailProcessSelection>, &M::m_structDetailProcessSelection,
     true},
    {L"DetailProcessSort", descriptionOf<StructDetailProcessSort>, &M::m_structDetailProcessSort, true},
    {L"DetailStyleMapNew", descriptionOf<StructDetailStyleMap>, &M::m_structDetailStyleMap, true},
    {L"DetailStyleMapItems", descriptionOf<StructDetailStyleMapItem>, nullptr, false},
    {L"DetailProcessScales", descriptionOf<StructDetProcessScales>, &M::m_structDetProcessScales, true},
    {L"DetailProcessMain2CutScale", descriptionOf<StructDetailProcessMain2CutScale>,
     &M::m_structDetProcessMain2CutScales, true},
    {L"DetailProcessCategories", descriptionOf<StructDetailProcessCategory>, &M::m_structDetProcessCategory, true},
    {L"DetProcessesSuiteDefinition", descriptionOf<StructDetProcessesSuiteDefinition>,
     &M::m_structDetProcessesSuiteDefinition, true},
    {L"DetProcessesSuiteItems", descriptionOf<StructDetProcessesSuiteItem>, nullptr, false},
    {L"NumberingPrefixProfile", descriptionOf<StructNumberingPrefixProfile>, &M::m_structNumberingPrefixProfile,
     true},
    {L"ProfileShapeRunName", descriptionOf<StructProfileShapeRunName>, &M::m_structProfileShapeRunName, true},
    {L"DetObjQualifierSetItem", descriptionOf<StructDetObjQualifierSetItem>, nullptr, false},
    {L"DetailProcessScalesItem", descriptionOf<StructDetProcessScalesItem>, nullptr, false},
};

// Types 42 to 47 have no row. Type 12 declares four columns per item and names three; types 30, 37 and 38 name
// columns and declare none, so that none is ever added.
const wchar_t* const templates[42][itemColumnTemplates] = {
    {L"Request%i INT", L"", L"", L"", L""},
    {L"", L"", L"", L"", L""},
    {L"", L"", L"", L"", L""},
    {L"", L"", L"", L"", L""},
    {L"ObjQualifier%i INT", L"Appearance%i INT", L"AnnotationStrategy%i INT", L"LineType%i INT",
     L"SimplifiedGap%i FLOAT"},
    {L"", L"", L"", L"", L""},
    {L"", L"", L"", L"", L""},
    {L"Type%i INT", L"Key%i INT", L"", L"", L""},
    {L"", L"", L"", L"", L""},
    {L"", L"", L"", L"", L""},
    {L"AnnotationTypeContents%i VARCHAR(255)", L"", L"", L"", L""},
    {L"Angle%i FLOAT", L"PreferredDistance%i FLOAT", L"MaxDistance%i FLOAT", L"", L""},
    {L"SearchArea%i INT", L"MinDistance%i FLOAT", L"MaxDistance%i FLOAT", L"", L""},
    {L"Point%i INT", L"", L"", L"", L""},
    {L"", L"", L"", L"", L""},
    {L"", L"", L"", L"", L""},
    {L"ObjectQualifier%i INT", L"ModelRole%i VARCHAR(255)", L"Filter%i VARCHAR(64)", L"", L""},
    {L"", L"", L"", L"", L""},
    {L"", L"", L"", L"", L""},
    {L"", L"", L"", L"", L""},
    {L"", L"", L"", L"", L""},
    {L"", L"", L"", L"", L""},
    {L"", L"", L"", L"", L""},
    {L"", L"", L"", L"", L""},
    {L"", L"", L"", L"", L""},
    {L"", L"", L"", L"", L""},
    {L"", L"", L"", L"", L""},
    {L"", L"", L"", L"", L""},
    {L"", L"", L"", L"", L""},
    {L"", L"", L"", L"", L""},
    {L"Step%i INT", L"", L"", L"", L""},
    {L"", L"", L"", L"", L""},
    {L"", L"", L"", L"", L""},
    {L"", L"", L"", L"", L""},
    {L"", L"", L"", L"", L""},
    {L"", L"", L"", L"", L""},
    {L"", L"", L"", L"", L""},
    {L"Request%i INT", L"", L"", L"", L""},
    {L"MainViewScale%i INT", L"Request%i INT", L"", L"", L""},
    {L"", L"", L"", L"", L""},
    {L"", L"", L"", L"", L""},
    {L"", L"", L"", L"", L""},
};

} // namespace

const DetailTable& detailTable(int type) { return detailTables[type]; }

int tableTypeOf(const RecordDescription& description)
{
    static const std::unordered_map<const RecordDescription*, int> types = [] {
        std::unordered_map<const RecordDescription*, int> map;
        for (int type = 0; type < KorOdbcMan::kTableTypes; ++type)
            map.emplace(&detailTables[type].description(), type);
        return map;
    }();
    const auto found = types.find(&description);
    return found == types.end() ? -1 : found->second;
}

const wchar_t* itemColumnTemplate(int type, int column)
{
    return type >= 0 && type < 42 && column >= 0 && column < itemColumnTemplates ? templates[type][column] : L"";
}

} // namespace korodbc

// Fixed columns and columns per item. The fixed count is only used for tables with item columns.
const int KorOdbcMan::m_numberOfColumns[kTableTypes][2] = {
    {16, 1}, {0, 0},  {0, 0}, {0, 0}, {4, 5}, {0, 0}, {0, 0}, {5, 2}, {0, 0}, {0, 0}, {4, 1}, {9, 3},
    {7, 4},  {14, 1}, {0, 0}, {0, 0}, {5, 3}, {0, 0}, {8, 0}, {7, 0}, {3, 0}, {3, 0}, {3, 0}, {1, 0},
    {5, 1},  {0, 0},  {1, 0}, {1, 0}, {3, 0}, {0, 0}, {0, 0}, {0, 0}, {8, 1}, {0, 0}, {0, 0}, {0, 0},
    {0, 0},  {0, 0},  {0, 0}, {4, 1}, {4, 2}, {0, 0}, {0, 0}, {0, 0}, {3, 0}, {3, 0}, {0, 0}, {0, 0},
};
