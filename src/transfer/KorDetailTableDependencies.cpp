#include "transfer/KorDetailTableDependencies.h"

#include "DeepCopyGraph.h"
#include "edit/DetailTables.h"
#include "foundation/RecordEquality.h"
#include "repository/KorDefaults.h"
#include "roots/KorAssert.h"
#include "roots/KorProgressCtrl.h"
#include "roots/KorPromptsProxy.h"
#include "transfer/KorODBCDetailStyleExports.h"
#include "transfer/StyleGraph.h"

using namespace korodbc;

using Copy = KorDetailTableDependencies;
using Man = KorOdbcMan;

KorArray<StructDetailStyle> Copy::m_DetStyleCopy;
KorArray<StructDetViewArrangeStrategy> Copy::m_DetViewArrangeStrategyCopy;
KorArray<StructDetViewRequest> Copy::m_DetViewRequest;
KorArray<StructDetViewRequestCategory> Copy::m_DetViewRequestCategory;
KorArray<StructDetObjReprMap> Copy::m_DetObjReprMap;
KorArray<StructDetViewSystemAndBox> Copy::m_DetViewSystemAndBox;
KorArray<StructDetObjAppearance> Copy::m_DetObjAppearance;
KorArray<StructDetViewDimStrategy> Copy::m_DetViewDimStrategy;
KorArray<StructDetViewLengthClip> Copy::m_DetViewLengthClip;
KorArray<StructDetObjAnnotationStrategy> Copy::m_DetObjAnnotationStrategy;
KorArray<StructDetAnnotationType> Copy::m_DetAnnotationType;
KorArray<StructDetArrangerControl> Copy::m_DetArrangerControl;
KorArray<StructDetArrangerStrategy> Copy::m_DetArrangerStrategy;
KorArray<StructDetViewDimRequestLinear> Copy::m_DetViewDimRequestLinear;
KorArray<StructDetViewDimPointSelection> Copy::m_DetViewDimPointSelection;
KorArray<StructDetailMaster> Copy::m_DetMasterCopy;
KorArray<StructDetObjQualifierSet> Copy::m_DetObjQualifierSet;
KorArray<StructLinetypes> Copy::m_LineType;
KorArray<StructDetBaseCategory> Copy::m_DetBaseCategory;
KorArray<StructDetObjAnnotationGroup> Copy::m_DetObjAnnotationGroup;
KorArray<StructDetViewDimRequestLinearGroup> Copy::m_DetViewDimRequestLinearGroup;
KorArray<StructDetObjQualifierSetGroup> Copy::m_DetObjQualifierSetGroup;
KorArray<StructDetHatchSettings> Copy::m_DetHatchSettings;

KorArray<StructDetObjQualifierSet> Copy::m_QualifierSetsResultedFromDeepCopy;
KorArray<StructDetBaseCategory> Copy::m_BaseCategoriesResultedFromDeepCopy;
KorArray<StructDetViewDimRequestLinear> Copy::m_LinearDimRequestsResultedFromDeepCopy;
KorArray<StructDetObjAnnotationStrategy> Copy::m_AnnotationStrategiesResultedFromDeepCopy;

KorTransferKeyMap Copy::m_writeTransferKeyMap;

int Copy::m_NrRowsToWrite = 1;
int Copy::m_CurrRowsToWrite = 0;
Man::eTableType Copy::mainType = Man::kDetailStyle;
int Copy::m_RunningFromCommand = 0;
bool Copy::m_bDeepCopyCanceledByUser = false;
int Copy::m_bKernelNewerThan42 = 1;
long Copy::detQualifierSetGroup = -1;
long Copy::detDimStrategyGroup = -1;
long Copy::detAnnotationGroup = -1;
long Copy::detBaseCategory = -1;

void (*Copy::pInitProgressBar)(int, int) = nullptr;
void (*Copy::pUpdateProgressBar)(int, KorString) = nullptr;
void (*Copy::pResetProgressBar)() = nullptr;
int (*Copy::pGetNameForRowFn)(Man::eTableType, Man::eTableType, KorString&) = nullptr;

const unsigned Copy::m_scuiReading = 21034;
const unsigned Copy::m_scuiWriting = 21035;
const unsigned Copy::m_scuiDialogCreateNewItem = 22200;

namespace {

using Naming = CopyTable::Naming;

/// Collects a master that is not collected yet, with its style and base category.
long collectMaster(StructDetailMaster& master, long key)
{
    DeepCopyGraph& graph = styleGraph();
    const RecordDescription& type = descriptionOf<StructDetailMaster>();
    const CopyTable& masters = *graph.table(type);
    Copy::ProgressBar(Man::kDetailMaster, 0);
    long position = graph.find(masters, key);
    if (position >= 0) {
        master = Copy::m_DetMasterCopy.getAt(position);
        return position;
    }
    if (StructDetailMasterMarshal::getStructByKey(key, master) != 1 || !graph.collectReferences(type, &master))
        return -1;
    // collecting the style has usually collected this master already
    position = graph.find(masters, key);
    return position >= 0 ? position : graph.append(masters, &master, key);
}

bool collectCategories(void* record, long)
{
    StructDetViewRequest& request = *static_cast<StructDetViewRequest*>(record);
    StructDetViewRequestMarshal::loadCategories(request);
    for (const StructDetViewRequestCategory& entry : request.categories) {
        StructDetViewRequestCategory category;
        if (Copy::GetDependencies(category, entry.key) == -1)
            return false;
    }
    return true;
}

bool collectMasterOfStyle(void*, long key)
{
    Copy::GetDependenciesByDetailKey(key);
    return true;
}

/// Writes the category rows of a request that has just been written.
bool saveCategories(long collectedRequest, long newKey)
{
    DeepCopyGraph& graph = styleGraph();
    const CopyTable& categories = *graph.table(Man::kDetViewRequestCategories);
    const KorArray<StructDetViewRequestCategory> entries = Copy::m_DetViewRequest.getAt(collectedRequest).categories;
    for (const StructDetViewRequestCategory& entry : entries) {
        const long position = graph.find(categories, entry.key);
        if (position < 0)
            return false;
        StructDetViewRequestCategory category = Copy::m_DetViewRequestCategory.getAt(position);
        category.detViewRequest = static_cast<int>(newKey);
        if (Copy::Save(category, newKey) == -1)
            return false;
    }
    return true;
}

void saveMastersOfStyle(long index, long)
{
    for (long position = 0; position < Copy::m_DetMasterCopy.length(); ++position) {
        StructDetailMaster master = Copy::m_DetMasterCopy.getAt(position);
        if (master.detailStyle == index && Copy::Save(master, position) == -1)
            KorAssert::korAssert("false", "KorDetailTableDependencies", __LINE__);
    }
}

/// While importing, a qualifier set of the target that has the same name and equals the collected one in every field
/// stands for it.
long existingQualifierSet(const void* record)
{
    if (KorODBCDetailStyleExports::isImportInProgress() == 0)
        return -1;
    StructDetObjQualifierSet collected = *static_cast<const StructDetObjQualifierSet*>(record);
    StructDetObjQualifierSet found;
    if (StructDetObjQualifierSetMarshal::getStructByRunName(collected.runName, found) != 1)
        return -1;
    if (Copy::m_bKernelNewerThan42 != 0) {
        // the group as it would be in the target
        StructDetObjQualifierSetGroup group;
        const KorString name = Copy::m_DetObjQualifierSetGroup.getAt(collected.group).runName;
        if (StructDetObjQualifierSetGroupMarshal::getStructByRunName(name, group) != 1)
            return -1;
        collected.group = group.key;
    }
    return equalRecords(descriptionOf<StructDetObjQualifierSet>(), &collected, &found) ? found.key : -1;
}

/// Writes a master behind its style, in the first free place of its base category.
long saveMaster(StructDetailMaster& master, long index)
{
    DeepCopyGraph& graph = styleGraph();
    const CopyTable& masters = *graph.table(Man::kDetailMaster);
    const rowInfo identity{masters.identity, static_cast<int>(index), master.key};
    long known = -1;
    if (Copy::m_writeTransferKeyMap.lookup(identity, known))
        return known;
    if (Copy::m_CurrRowsToWrite == 0) {
        if (Copy::pInitProgressBar != nullptr)
            Copy::pInitProgressBar(0, Copy::m_NrRowsToWrite);
        else
            KorProgressCtrl::setPercentage(0, 1);
    }
    const long sourceKey = master.key;
    if (!graph.saveReferences(masters, &master))
        return -1;
    // saving the style has saved its masters, this one included
    if (Copy::m_writeTransferKeyMap.lookup(identity, known))
        return known;
    StructDetailStyle style;
    if (StructDetailStyleMarshal::getStructByKey(master.detailStyle, style) == 1)
        master.runName = style.runName;
    StructDetailMaster taken;
    while (StructDetailMasterMarshal::getByBaseCategoryAndSubCategory(master.baseCategory, master.subCategory, taken) == 1)
        ++master.subCategory;
    return graph.write(masters, &master, index, sourceKey, 0);
}

/// Record types whose names are made unique, by table type.
bool hasNameList(Man::eTableType type)
{
    switch (type) {
    case Man::kDetViewRequestCategories:
    case Man::kDetailMaster:
    case Man::kNumberingPrefix:
    case Man::kExplodeSettings:
    case Man::kObjectStructure:
    case Man::kExplodeProfile:
    case Man::kDetManualAnnotationType:
    case Man::kDetObjReprMapItems:
    case Man::kDetViewDimStrategyItems:
    case Man::kDetGridReferenceSettings:
    case Man::kDetailProcessSelection:
    case Man::kDetailProcessSort:
    case Man::kDetailStyleMapItems:
        return false;
    default:
        return type >= 0 && type <= Man::kDetailProcessCategories;
    }
}

} // namespace

namespace korodbc {

DeepCopyGraph& styleGraph()
{
    static DeepCopyGraph graph = [] {
        std::vector<CopyTable> tables = {
            {Man::kDetailStyle, descriptionOf<StructDetailStyle>, L"StructDetailStyle", &Copy::m_DetStyleCopy},
            {Man::kDetViewArrangeStrategy, descriptionOf<StructDetViewArrangeStrategy>, L"StructDetViewArrangeStrategy",
             &Copy::m_DetViewArrangeStrategyCopy},
            {Man::kDetViewRequest, descriptionOf<StructDetViewRequest>, L"StructDetViewRequest", &Copy::m_DetViewRequest},
            {Man::kDetViewRequestCategories, descriptionOf<StructDetViewRequestCategory>,
             L"StructDetViewRequestCategory", &Copy::m_DetViewRequestCategory, Naming::None},
            {Man::kDetObjReprMap, descriptionOf<StructDetObjReprMap>, L"StructDetObjReprMap", &Copy::m_DetObjReprMap,
             Naming::AfterReferences},
            {Man::kDetViewSystemAndBox, descriptionOf<StructDetViewSystemAndBox>, L"StructDetViewSystemAndBox",
             &Copy::m_DetViewSystemAndBox},
            {Man::kDetObjAppearance, descriptionOf<StructDetObjAppearance>, L"StructDetObjAppearance",
             &Copy::m_DetObjAppearance},
            {Man::kDetViewDimStrategy, descriptionOf<StructDetViewDimStrategy>, L"StructDetViewDimStrategy",
             &Copy::m_DetViewDimStrategy},
            {Man::kDetViewLengthClip, descriptionOf<StructDetViewLengthClip>, L"StructDetViewLengthClip",
             &Copy::m_DetViewLengthClip},
            {Man::kDetObjAnnotationStrategy, descriptionOf<StructDetObjAnnotationStrategy>,
             L"StructDetObjAnnotationStrategy", &Copy::m_DetObjAnnotationStrategy},
            {Man::kDetAnnotationType, descriptionOf<StructDetAnnotationType>, L"StructDetAnnotationType",
             &Copy::m_DetAnnotationType},
            {Man::kDetArrangerControl, descriptionOf<StructDetArrangerControl>, L"StructDetArrangerControl",
             &Copy::m_DetArrangerControl},
            {Man::kDetArrangerStrategy, descriptionOf<StructDetArrangerStrategy>, L"StructDetArrangerStrategy",
             &Copy::m_DetArrangerStrategy},
            {Man::kDetViewDimRequestLinear, descriptionOf<StructDetViewDimRequestLinear>,
             L"StructDetViewDimRequestLinear", &Copy::m_DetViewDimRequestLinear},
            {Man::kDetViewDimPointSelection, descriptionOf<StructDetViewDimPointSelection>,
             L"StructDetViewDimPointSelection", &Copy::m_DetViewDimPointSelection},
            {Man::kDetailMaster, descriptionOf<StructDetailMaster>, L"StructDetailMaster", &Copy::m_DetMasterCopy,
             Naming::None},
            {Man::kDetObjQualifierSet, descriptionOf<StructDetObjQualifierSet>, L"StructDetObjQualifierSet",
             &Copy::m_DetObjQualifierSet},
            {Man::kLinetypes, descriptionOf<StructLinetypes>, L"StructLineType", &Copy::m_LineType, Naming::None},
            {Man::kDetBaseCategories, descriptionOf<StructDetBaseCategory>, L"StructDetBaseCategory",
             &Copy::m_DetBaseCategory, Naming::None},
            {Man::kDetObjAnnotationGroup, descriptionOf<StructDetObjAnnotationGroup>, L"StructDetObjAnnotationGroup",
             &Copy::m_DetObjAnnotationGroup, Naming::None},
            {Man::kDetViewDimRequestLinearGroup, descriptionOf<StructDetViewDimRequestLinearGroup>,
             L"StructDetViewDimRequestLinearGroup", &Copy::m_DetViewDimRequestLinearGroup, Naming::None},
            {Man::kDetObjQualifierSetGroup, descriptionOf<StructDetObjQualifierSetGroup>,
             L"StructDetObjQualifierSetGroup", &Copy::m_DetObjQualifierSetGroup, Naming::None},
            {Man::kDetHatchSettings, descriptionOf<StructDetHatchSettings>, L"StructDetHatchSettings",
             &Copy::m_DetHatchSettings},
        };
        for (CopyTable& table : tables) {
            switch (table.type) {
            case Man::kDetObjAnnotationGroup:
            case Man::kDetViewDimRequestLinearGroup:
            case Man::kDetObjQualifierSetGroup:
                table.isGroup = table.reusedByName = table.keepsKey = true;
                break;
            case Man::kDetBaseCategories:
                table.reusedByName = table.keepsKey = true;
                table.written = &Copy::m_BaseCategoriesResultedFromDeepCopy;
                break;
            case Man::kLinetypes:
                table.reusedByName = true;
                // collecting reports line types as qualifier sets
                table.readType = Man::kDetObjQualifierSet;
                break;
            case Man::kDetObjQualifierSet:
                table.written = &Copy::m_QualifierSetsResultedFromDeepCopy;
                break;
            case Man::kDetViewDimRequestLinear:
                table.written = &Copy::m_LinearDimRequestsResultedFromDeepCopy;
                break;
            case Man::kDetObjAnnotationStrategy:
                table.written = &Copy::m_AnnotationStrategiesResultedFromDeepCopy;
                break;
            default:
                break;
            }
        }
        DeepCopyGraph made(std::move(tables), Copy::m_writeTransferKeyMap);
        made.setOverride(Man::kDetObjQualifierSet, Man::kDetObjQualifierSetGroup, &Copy::detQualifierSetGroup);
        made.setOverride(Man::kDetViewDimRequestLinear, Man::kDetViewDimRequestLinearGroup, &Copy::detDimStrategyGroup);
        made.setOverride(Man::kDetObjAnnotationStrategy, Man::kDetObjAnnotationGroup, &Copy::detAnnotationGroup);
        made.setOverride(Man::kDetailMaster, Man::kDetBaseCategories, &Copy::detBaseCategory);
        made.setHooks(Man::kDetViewRequest, {.referencesCollected = collectCategories});
        made.setHooks(Man::kDetailStyle, {.collected = collectMasterOfStyle,
                                          .listReferenceSaved = saveCategories,
                                          .saved = saveMastersOfStyle,
                                          .keepKey = Copy::getRunningFromCommand});
        made.setHooks(Man::kDetObjQualifierSet, {.existing = existingQualifierSet});
        return made;
    }();
    return graph;
}

} // namespace korodbc

long Copy::collect(const RecordDescription& type, void* record, long key)
{
    return &type == &descriptionOf<StructDetailMaster>()
               ? collectMaster(*static_cast<StructDetailMaster*>(record), key)
               : styleGraph().collect(type, record, key);
}

long Copy::save(const RecordDescription& type, void* record, long index)
{
    return &type == &descriptionOf<StructDetailMaster>()
               ? saveMaster(*static_cast<StructDetailMaster*>(record), index)
               : styleGraph().save(type, record, index);
}

long Copy::GetDependenciesByDetailKey(long styleKey)
{
    StructDetailMaster master;
    if (StructDetailMasterMarshal::getByStyleKey(styleKey, master) != 1)
        return -1;
    return collectMaster(master, master.key);
}

long Copy::GetDependenciesByMasterKey(StructDetailMaster& master, long masterKey)
{
    m_RunningFromCommand = 0;
    return collectMaster(master, masterKey);
}

long Copy::GetDependenciesFromCommand(StructDetailMaster& master, long masterKey)
{
    m_RunningFromCommand = 1;
    return collectMaster(master, masterKey);
}

void Copy::ResetDeepCopyInfo()
{
    styleGraph().reset();
    m_bDeepCopyCanceledByUser = false;
}

int Copy::SetRowNr()
{
    m_NrRowsToWrite = static_cast<int>(styleGraph().rows());
    m_CurrRowsToWrite = 0;
    return m_NrRowsToWrite;
}

void Copy::ProgressBar(Man::eTableType type, int writing)
{
    const unsigned prompt = writing != 0 ? m_scuiWriting : m_scuiReading;
    KorString table;
    Man::getTableName(type, table);
    KorString label = KorPromptsProxy::getInstance()->getPrompt(L"UPS", prompt);
    label += L" ";
    label += table;
    label = KorString::format(L"%-40s", label);
    int percentage = 1;
    if (writing != 0) {
        percentage = m_NrRowsToWrite == 0 ? 100
                                          : static_cast<int>(static_cast<long long>(m_CurrRowsToWrite) * 100 / m_NrRowsToWrite);
        ++m_CurrRowsToWrite;
    }
    if (pUpdateProgressBar == nullptr) {
        KorProgressCtrl::setTitle(label);
        KorProgressCtrl::setPercentage(percentage - 1, 1);
        KorProgressCtrl::setPercentage(percentage, 0);
    } else if (writing != 0) {
        pUpdateProgressBar(m_CurrRowsToWrite, label);
    }
}

int Copy::GetNameForRow(Man::eTableType type, KorString& name)
{
    if (pGetNameForRowFn != nullptr)
        return pGetNameForRowFn(type, mainType, name);
    GetDefaultNameForRow(type, name);
    return 1;
}

int Copy::GetDefaultNameForRow(Man::eTableType type, KorString& name)
{
    if (!hasNameList(type))
        return 0;
    const RecordDescription& description = detailTable(type).description();
    if (RecordAccess::hasRunName(description, name) != 1)
        return 0;
    KorString first, next;
    kor_odbc_getDefault(L"C0_RunNameFirstPrefix", first);
    kor_odbc_getDefault(L"C0_RunNameNextPrefix", next);
    first += L" ";
    do {
        if (!next.isEmpty() && name.startsWith(next.view())) {
            const KorString rest = name.mid(next.length());
            const int bracket = rest.find(L")");
            const long number = rest.left(bracket < 0 ? rest.length() : bracket).toInteger();
            const KorString text = bracket < 0 ? KorString() : rest.mid(bracket + 1).trimmedLeft();
            name = next + KorString::format(L"%d) %s", number + 1, text);
        } else if (name.startsWith(first.view())) {
            name = next + KorString::format(L"%d) %s", 1, name.mid(first.length()));
        } else {
            name = first + name;
        }
    } while (RecordAccess::hasRunName(description, name) == 1);
    return 1;
}
