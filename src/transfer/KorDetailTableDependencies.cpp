#include "CopyPass.h"
#include "edit/DetailTables.h"
#include "StyleGraph.h"

#include <korodbc/repository/KorDefaults.h>
#include <korodbc/roots/KorProgressCtrl.h>
#include <korodbc/roots/KorPromptsProxy.h>
#include <korodbc/transfer/KorDetailTableDependencies.h>

#include <limits>

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
int Copy::m_RowsWritten = 0;
int Copy::m_RowsReused = 0;
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

namespace {

/// The number of the next copy; behind the last one comes 1.
int following(long number)
{
    using Limits = std::numeric_limits<int>;
    return number < Limits::min() || number >= Limits::max() ? 1 : static_cast<int>(number) + 1;
}

} // namespace

long Copy::collect(const RecordDescription& type, void* record, long key)
{
    return collecting([&] {
        return &type == &descriptionOf<StructDetailMaster>()
                   ? collectMaster(*static_cast<StructDetailMaster*>(record), key)
                   : styleGraph().collect(type, record, key);
    });
}

long Copy::save(const RecordDescription& type, void* record, long index)
{
    return saving(styleGraph(), [&] {
        return &type == &descriptionOf<StructDetailMaster>()
                   ? saveMaster(*static_cast<StructDetailMaster*>(record), index)
                   : styleGraph().save(type, record, index);
    });
}

long Copy::GetDependenciesByDetailKey(long styleKey)
{
    return collecting([&] { return collectMasterOf(styleKey); });
}

long Copy::GetDependenciesByMasterKey(StructDetailMaster& master, long masterKey)
{
    m_RunningFromCommand = 0;
    return collect(descriptionOf<StructDetailMaster>(), &master, masterKey);
}

long Copy::GetDependenciesFromCommand(StructDetailMaster& master, long masterKey)
{
    m_RunningFromCommand = 1;
    return collect(descriptionOf<StructDetailMaster>(), &master, masterKey);
}

void Copy::ResetDeepCopyInfo()
{
    styleGraph().reset();
    m_bDeepCopyCanceledByUser = false;
    m_RowsWritten = m_RowsReused = 0;
}

int Copy::SetRowNr()
{
    m_NrRowsToWrite = static_cast<int>(styleGraph().rows());
    m_CurrRowsToWrite = 0;
    return m_NrRowsToWrite;
}

void Copy::ProgressBar(Man::eTableType type, int writing)
{
    try {
        reportProgress(type, writing);
    } catch (...) { // a progress that cannot be shown
    }
}

int Copy::GetNameForRow(Man::eTableType type, KorString& name)
{
    try {
        return nameForRow(type, name);
    } catch (...) {
        return -1;
    }
}

int Copy::GetDefaultNameForRow(Man::eTableType type, KorString& name)
{
    if (!isTableType(type) || !detailTable(type).namesUnique)
        return 0;
    const ManagerDatabase database;
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
            name = next + KorString::format(L"%d) %s", following(number), text);
        } else if (name.startsWith(first.view())) {
            name = next + KorString::format(L"%d) %s", 1, name.mid(first.length()));
        } else {
            name = first + name;
        }
    } while (RecordAccess::hasRunName(description, name) == 1);
    return 1;
}

int korodbc::nameForRow(Man::eTableType type, KorString& name)
{
    if (Copy::pGetNameForRowFn != nullptr)
        return Copy::pGetNameForRowFn(type, Copy::mainType, name);
    Copy::GetDefaultNameForRow(type, name);
    return 1;
}

void korodbc::reportProgress(Man::eTableType type, int writing)
{
    const unsigned prompt = writing != 0 ? Copy::m_scuiWriting : Copy::m_scuiReading;
    KorString table;
    Man::getTableName(type, table);
    KorString label = KorPromptsProxy::getInstance()->getPrompt(L"UPS", prompt);
    label += L" ";
    label += table;
    label = KorString::format(L"%-40s", label);
    int percentage = 1;
    if (writing != 0) {
        percentage =
            Copy::m_NrRowsToWrite == 0
                ? 100
                : static_cast<int>(static_cast<long long>(Copy::m_CurrRowsToWrite) * 100 / Copy::m_NrRowsToWrite);
        ++Copy::m_CurrRowsToWrite;
    }
    if (Copy::pUpdateProgressBar == nullptr) {
        KorProgressCtrl::setTitle(label);
        KorProgressCtrl::setPercentage(percentage - 1, 1);
        KorProgressCtrl::setPercentage(percentage, 0);
    } else if (writing != 0) {
        Copy::pUpdateProgressBar(Copy::m_CurrRowsToWrite, label);
    }
}
