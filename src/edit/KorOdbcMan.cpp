#include "DetailTables.h"
#include "foundation/ManagerDatabase.h"

#include <korodbc/addins/AddInManagerInterface.h>
#include <korodbc/edit/KorOdbcMan.h>
#include <korodbc/repository/KorDatabaseAccess.h>
#include <korodbc/repository/KorDSNManager.h>
#include <korodbc/repository/KorTableCopies.h>
#include <korodbc/roots/KorAssert.h>

using namespace korodbc;

bool KorOdbcMan::m_bInitializeTables = true;
bool KorOdbcMan::m_bAppending = false;

const wchar_t* const KorOdbcMan::ccKorVELCopyString[kCopies] = {
    KorTableCopies::suffixes[0], KorTableCopies::suffixes[1], KorTableCopies::suffixes[2],
    KorTableCopies::suffixes[3]};
const KorString KorOdbcMan::korstrVEL(L"VEL");
const KorString KorOdbcMan::korstrPCVEL(L"PC-VEL");

int KorOdbcMan::m_DSMReloadInfo = 0;
int KorOdbcMan::m_DSMNewReloadInfo = 0;
int KorOdbcMan::m_DPMReloadInfo = 0;
int KorOdbcMan::m_AnnotationManagerReloadInfo = 0;
int KorOdbcMan::m_ProcessesSuiteReloadInfo = 0;
int KorOdbcMan::m_QuickDocManagerReloadInfo = 0;
int KorOdbcMan::m_DSMResetDetViewRequestCache = 0;

KorArray<StructNumberingPrefix> KorOdbcMan::m_numberingPrefixes;
KorArray<StructExplodeSettings> KorOdbcMan::m_explodeSettings;
KorArray<StructObjectStructure> KorOdbcMan::m_objectStructures;

StructDetailStyle KorOdbcMan::m_structDetailStyle;
StructDetViewArrangeStrategy KorOdbcMan::m_structDetViewArrangeStrategy;
StructDetViewRequest KorOdbcMan::m_structDetViewRequest;
StructDetViewRequestCategory KorOdbcMan::m_structDetViewRequestCategory;
StructDetObjReprMap KorOdbcMan::m_structDetObjReprMap;
StructDetViewSystemAndBox KorOdbcMan::m_structDetViewSystemAndBox;
StructDetObjAppearance KorOdbcMan::m_structDetObjAppearance;
StructDetViewDimStrategy KorOdbcMan::m_structDetViewDimStrategy;
StructDetViewLengthClip KorOdbcMan::m_structDetViewLengthClip;
StructDetObjAnnotationStrategy KorOdbcMan::m_structDetObjAnnotationStrategy;
StructDetAnnotationType KorOdbcMan::m_structDetAnnotationType;
StructDetArrangerControl KorOdbcMan::m_structDetArrangerControl;
StructDetArrangerStrategy KorOdbcMan::m_structDetArrangerStrategy;
StructDetViewDimRequestLinear KorOdbcMan::m_structDetViewDimRequestLinear;
StructDetViewDimPointSelection KorOdbcMan::m_structDetViewDimPointSelection;
StructDetailMaster KorOdbcMan::m_structDetailMaster;
StructDetObjQualifierSet KorOdbcMan::m_structDetObjQualifierSet;
StructDetObjQualifierFilter KorOdbcMan::m_structDetObjQualifierFilter;
StructNumberingPrefix KorOdbcMan::m_structNumberingPrefix;
StructExplodeSettings KorOdbcMan::m_structExplodeSettings;
StructObjectStructure KorOdbcMan::m_structObjectStructure;
StructExplodeProfile KorOdbcMan::m_structExplodeProfile;
StructLinetypes KorOdbcMan::m_structLinetypes;
StructDetBaseCategory KorOdbcMan::m_structDetBaseCategory;
StructDetManualAnnotationType KorOdbcMan::m_structDetManualAnnotationType;
StructDetObjAnnotationGroup KorOdbcMan::m_structDetObjAnnotationStrategyGroup;
StructDetViewDimRequestLinearGroup KorOdbcMan::m_structDetViewDimRequestLinearGroup;
StructDetObjQualifierSetGroup KorOdbcMan::m_structDetObjQualifierSetGroup;
StructDetHatchSettings KorOdbcMan::m_structDetHatchSettings;
StructDetGridRefSettings KorOdbcMan::m_structDetGridRefSettings;
StructDetailProcessDefinition KorOdbcMan::m_structDetailProcessDefinition;
StructDetailProcessStep KorOdbcMan::m_structDetailProcessStep;
StructDetailFilenameSelector KorOdbcMan::m_structDetailFilenameSelector;
StructDetailProcessSelection KorOdbcMan::m_structDetailProcessSelection;
StructDetailProcessSort KorOdbcMan::m_structDetailProcessSort;
StructDetailStyleMap KorOdbcMan::m_structDetailStyleMap;
StructDetProcessScales KorOdbcMan::m_structDetProcessScales;
StructDetailProcessMain2CutScale KorOdbcMan::m_structDetProcessMain2CutScales;
StructDetailProcessCategory KorOdbcMan::m_structDetProcessCategory;
StructDetProcessesSuiteDefinition KorOdbcMan::m_structDetProcessesSuiteDefinition;
StructNumberingPrefixProfile KorOdbcMan::m_structNumberingPrefixProfile;
StructProfileShapeRunName KorOdbcMan::m_structProfileShapeRunName;

int KorOdbcMan::getTableName(eTableType type, KorString& name)
{
    if (!isTableType(type)) {
        KorAssert::korAssert("error==-1", "KorOdbcMan", __LINE__);
        return -1;
    }
    name = tableName(type);
    return 1;
}

int KorOdbcMan::getNumberOfColumns(eTableType type, int& count)
{
    KorString name;
    if (getTableName(type, name) != 1)
        return -2;
    const ManagerDatabase database;
    const int columns = KorDatabaseAccess::getNumberOfColumns(m_currentDSN, KorDatabaseAccess::getTableName(name));
    if (columns <= 0)
        return 0;
    count = columns;
    return 1;
}

long KorOdbcMan::getRecordKey(eTableType type)
{
    if (!isTableType(type) || detailTable(type).hidesKey || detailTable(type).currentRecord() == nullptr)
        return -1;
    return detailTable(type).description().keyOf(detailTable(type).currentRecord());
}

KorString KorOdbcMan::getRecordStringKey(eTableType type)
{
    return type == kDetObjQualifierFilter ? m_structDetObjQualifierFilter.key : KorString();
}

int KorOdbcMan::getIndex()
{
    switch (m_currentDSN) {
    case KorDSNDefinitions::kDetails:
        return 0;
    case KorDSNDefinitions::kAddin:
        return 1;
    case KorDSNDefinitions::kConfiguration:
        return 2;
    case KorDSNDefinitions::kCountryAddin: // slots are counted from 1
        return m_currentAddIn < KorDSNDefinitions::kFirstAddin ? -1
                                                               : 3 + KorDSNManager::getAddInIdx(m_currentAddIn);
    default:
        return -1;
    }
}

void KorOdbcMan::reloadInfoForAllManagers(int value)
{
    m_DSMReloadInfo = m_DSMNewReloadInfo = m_DPMReloadInfo = m_AnnotationManagerReloadInfo = value;
    m_ProcessesSuiteReloadInfo = m_QuickDocManagerReloadInfo = m_DSMResetDetViewRequestCache = value;
}
