#pragma once

#include "edit/KorOdbcMan.h"

/// What is known of the 48 detail table types: the table of tables that the tests go by.
namespace detailtypes {

enum KeyAccess { Dash, Keyed };

struct Type {
    const char* table;
    int fixed;
    int perItem;
    KeyAccess access;                          // of getRecordKey
    const RecordDescription& (*description)(); // of the current record; nullptr without one
    void* record;
};

template <class T>
Type of(const char* table, int fixed, int perItem, KeyAccess access, T& record)
{
    return {table, fixed, perItem, access, &descriptionOf<T>, &record};
}
inline Type items(const char* table) { return {table, 0, 0, Dash, nullptr, nullptr}; }

using M = KorOdbcMan;
inline const Type types[M::kTableTypes] = {
    of("DetailStyle", 16, 1, Keyed, M::m_structDetailStyle),
    of("DetViewArrangeStrategy", 0, 0, Keyed, M::m_structDetViewArrangeStrategy),
    of("DetViewRequest", 0, 0, Keyed, M::m_structDetViewRequest),
    of("DetViewRequestCategories", 0, 0, Dash, M::m_structDetViewRequestCategory),
    of("DetObjReprMapsNew", 4, 5, Keyed, M::m_structDetObjReprMap),
    of("DetViewSystemAndBox", 0, 0, Keyed, M::m_structDetViewSystemAndBox),
    of("DetObjAppearance", 0, 0, Dash, M::m_structDetObjAppearance),
    of("DetViewDimStrategyNew", 5, 2, Keyed, M::m_structDetViewDimStrategy),
    of("DetViewLengthClip", 0, 0, Keyed, M::m_structDetViewLengthClip),
    of("DetObjAnnotationStrategy", 0, 0, Keyed, M::m_structDetObjAnnotationStrategy),
    of("DetAnnotationType", 4, 1, Keyed, M::m_structDetAnnotationType),
    of("DetArrangerControl", 9, 3, Keyed, M::m_structDetArrangerControl),
    of("DetArrangerStrategy", 7, 4, Keyed, M::m_structDetArrangerStrategy),
    of("DetViewDimRequestLinear", 14, 1, Keyed, M::m_structDetViewDimRequestLinear),
    of("DetViewDimPointSelection", 0, 0, Keyed, M::m_structDetViewDimPointSelection),
    of("DetailMasterTable", 0, 0, Keyed, M::m_structDetailMaster),
    of("DetObjQualifierSet", 5, 3, Keyed, M::m_structDetObjQualifierSet),
    of("DetObjQualifierFilter", 0, 0, Dash, M::m_structDetObjQualifierFilter),
    of("NumberingPrefix", 8, 0, Keyed, M::m_structNumberingPrefix),
    of("ExplodeSettings", 7, 0, Keyed, M::m_structExplodeSettings),
    of("ObjectStructure", 3, 0, Keyed, M::m_structObjectStructure),
    of("ExplodeProfile", 3, 0, Keyed, M::m_structExplodeProfile),
    of("Linetypes", 3, 0, Keyed, M::m_structLinetypes),
    of("DetBaseCategories", 1, 0, Keyed, M::m_structDetBaseCategory),
    of("DetManualAnnotationType", 5, 1, Keyed, M::m_structDetManualAnnotationType),
    items("DetObjReprMapItems"),
    of("DetObjAnnotationGroup", 1, 0, Keyed, M::m_structDetObjAnnotationStrategyGroup),
    of("DetViewDimRequestLinearGroup", 1, 0, Keyed, M::m_structDetViewDimRequestLinearGroup),
    of("DetObjQualifierSetGroup", 3, 0, Keyed, M::m_structDetObjQualifierSetGroup),
    items("DetViewDimStrategyItems"),
    of("DetHatchSettings", 0, 0, Dash, M::m_structDetHatchSettings),
    of("DetGridReferenceSettings", 0, 0, Dash, M::m_structDetGridRefSettings),
    of("DetailProcessDefinition", 8, 1, Keyed, M::m_structDetailProcessDefinition),
    of("DetailProcessStep", 0, 0, Keyed, M::m_structDetailProcessStep),
    of("DetailFilenameSelector", 0, 0, Keyed, M::m_structDetailFilenameSelector),
    of("DetailProcessSelection", 0, 0, Keyed, M::m_structDetailProcessSelection),
    of("DetailProcessSort", 0, 0, Keyed, M::m_structDetailProcessSort),
    of("DetailStyleMapNew", 0, 0, Keyed, M::m_structDetailStyleMap),
    items("DetailStyleMapItems"),
    of("DetailProcessScales", 4, 1, Keyed, M::m_structDetProcessScales),
    of("DetailProcessMain2CutScale", 4, 2, Keyed, M::m_structDetProcessMain2CutScales),
    of("DetailProcessCategories", 0, 0, Keyed, M::m_structDetProcessCategory),
    of("DetProcessesSuiteDefinition", 0, 0, Keyed, M::m_structDetProcessesSuiteDefinition),
    items("DetProcessesSuiteItems"),
    of("NumberingPrefixProfile", 3, 0, Keyed, M::m_structNumberingPrefixProfile),
    of("ProfileShapeRunName", 3, 0, Keyed, M::m_structProfileShapeRunName),
    items("DetObjQualifierSetItem"),
    items("DetailProcessScalesItem"),
};

} // namespace detailtypes
