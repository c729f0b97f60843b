#include "transfer/KorODBCDetailStyleExports.h"

#include "repository/KorDatabaseAccess.h"
#include "repository/KorDSNManager.h"
#include "roots/KorAssert.h"
#include "roots/KorProgressCtrl.h"
#include "roots/KorPromptsProxy.h"
#include "transfer/KorDetailProcessTableDependencies.h"
#include "transfer/KorDetailTableDependencies.h"

#include <filesystem>
#include <optional>

using Exports = KorODBCDetailStyleExports;
using Styles = KorDetailTableDependencies;
using Processes = KorDetailProcessTableDependencies;

Exports::eType Exports::m_pType = Exports::kDetailStyle;
int Exports::m_bExportInProgress = 0;
int Exports::m_bImportInProgress = 0;
int Exports::m_bCancelBackupTables = 0;
int Exports::m_bAdvancedDeepCopyMode = 0;
KorString Exports::m_ErrorMessage;
KorString Exports::m_StandardErrorMessage;

namespace {

/// Makes databases current for the manager and the service, one after the other.
class CurrentDatabase {
public:
    void set(eDSN dsn, eIndex index)
    {
        m_request.reset();
        KorOdbcMan::m_currentDSN = dsn;
        KorOdbcMan::m_currentAddIn = index;
        m_request.emplace(dsn, index);
    }
    void release() { m_request.reset(); }

private:
    std::optional<KorDSNRequest> m_request;
};

template <class... Args>
void setMessages(unsigned prompt, const wchar_t* standard, const Args&... args)
{
    const KorString localised = KorPromptsProxy::getInstance()->getPrompt(L"GUI", prompt);
    Exports::m_ErrorMessage = KorString::format(localised.c_str(), args...);
    Exports::m_StandardErrorMessage = KorString::format(standard, args...);
}

void clearMessages()
{
    Exports::m_ErrorMessage = KorString();
    Exports::m_StandardErrorMessage = KorString();
}

bool olderThan5_1(eDSN source, eDSN target)
{
    if (Exports::isDatabaseOlderThan5_1(source) != 0) {
        setMessages(45058, L"Source database is older than version 5.1!");
        return true;
    }
    if (Exports::isDatabaseOlderThan5_1(target) != 0) {
        setMessages(45059, L"Target database is older than version 5.1!");
        return true;
    }
    return false;
}

/// Collects a style, or a process with what it reaches, from the current database.
bool collect(Exports::eType type, long key)
{
    if (type == Exports::kDetailStyle)
        return Styles::GetDependenciesByDetailKey(key) != -1;
    StructDetailProcessDefinition process;
    return Processes::GetDependencies(process, key) != -1;
}

template <class Graph, class T>
bool saveAll(const KorArray<T>& collected)
{
    for (int position = 0; position < collected.length(); ++position) {
        T record = collected.getAt(position);
        if (Graph::Save(record, position) == -1)
            return false;
    }
    return true;
}

/// Writes what was collected to the current database, as one. Returns 1, or 0 with the messages set, unless the
/// user cancelled as `cancelled` tells.
int write(Exports::eType type, const bool& cancelled)
{
    Styles::m_CurrRowsToWrite = 0;
    Styles::mainType =
        type == Exports::kDetailStyle ? KorOdbcMan::kDetailStyle : KorOdbcMan::kDetailProcessDefinition;
    Exports::m_bCancelBackupTables = 1; // a transfer is no edit: it takes no copies
    KorDatabaseBatch batch;
    const bool saved = type == Exports::kDetailStyle ? saveAll<Styles>(Styles::m_DetMasterCopy)
                                                     : saveAll<Processes>(Processes::m_DetailProcessDefinition);
    const int written = batch.end(saved ? 1 : 0);
    Exports::m_bCancelBackupTables = 0;
    if (written != 1 && !cancelled)
        setMessages(45062, L"Unable to write info to target database!");
    return written;
}

const struct {
    const wchar_t* record;
    int table;
} tableIds[] = {
    {L"StructDetailMaster", 108},
    {L"StructDetailStyle", 106},
    {L"StructDetAnnotationType", 101},
    {L"StructDetArrangerControl", 109},
    {L"StructDetBaseCategory", 99},
    {L"StructDetObjAnnotationStrategy", 47},
    {L"StructDetObjAnnotationGroup", 194},
    {L"StructDetObjQualifierSet", 42},
    {L"StructDetObjQualifierSetGroup", 192},
    {L"StructDetObjReprMap", 48},
    {L"StructDetViewArrangeStrategy", 54},
    {L"StructDetViewDimPointSelection", 52},
    {L"StructDetViewDimRequestLinear", 56},
    {L"StructDetViewDimRequestLinearGroup", 195},
    {L"StructDetViewDimStrategy", 57},
    {L"StructDetViewLengthClip", 55},
    {L"StructDetViewRequest", 53},
    {L"StructDetViewRequestCategory", 100},
    {L"StructLineType", 172},
    {L"StructDetViewSystemAndBox", 51},
};

} // namespace

int Exports::exportDetail(eType type, const KorOdbcKey& key, eDSN sourceDsn, eIndex sourceIndex,
                          const KorString& file)
{
    // the early failures leave the export marked as in progress
    m_pType = type;
    m_bExportInProgress = 1;
    clearMessages();
    if (isDatabaseOlderThan5_1(sourceDsn) != 0) {
        setMessages(45058, L"Source database is older than version 5.1!");
        return 0;
    }
    eDSN targetDsn;
    eIndex targetIndex;
    KorString connection;
    if (GetDSNAndIndexToUse(sourceDsn, targetDsn, targetIndex, connection) != 1)
        return 0;
    if (FileExists(file) == 0 && CreateDbFile(file) != 1) {
        setMessages(45064, L"Failed to create file %s!", file);
        return 0;
    }
    KorDatabaseAccess::setConnection(targetDsn, file);
    if (isDatabaseOlderThan5_1(targetDsn) != 0) {
        setMessages(45059, L"Target database is older than version 5.1!");
        KorDatabaseAccess::setConnectionString(targetDsn, connection);
        deleteCache(targetIndex);
        return 0;
    }

    CurrentDatabase current;
    int result = 1;
    if (type == kDetailStyle || type == kDetailProcess) {
        if (type == kDetailStyle)
            Styles::ResetDeepCopyInfo();
        else
            Processes::ResetDeepCopyInfo();
        current.set(sourceDsn, sourceIndex);
        if (!collect(type, key.getKey())) {
            setMessages(45061, L"Failed to load dependencies for detail style with key %d!", key.getKey());
            KorProgressCtrl::reset();
            result = 0;
        } else {
            current.set(targetDsn, targetIndex);
            deleteCache(targetIndex);
            if (type == kDetailStyle)
                Styles::SetRowNr();
            else
                Processes::SetRowNr();
            result = write(type, type == kDetailStyle ? Styles::m_bDeepCopyCanceledByUser
                                                      : Processes::m_bDeepCopyCanceledByUser);
        }
    } else {
        KorAssert::korAssert("false", "KorODBCDetailStyleExports", __LINE__);
    }

    current.release();
    KorDatabaseAccess::setConnectionString(targetDsn, connection);
    deleteCache(targetIndex);
    m_bExportInProgress = 0;
    KorDatabaseAccess::detachDatabase(file);
    return result;
}

int Exports::importDetail(eType type, const KorOdbcKey& key, eDSN sourceDsn, eIndex sourceIndex, eDSN targetDsn,
                          eIndex targetIndex)
{
    m_pType = type;
    m_bImportInProgress = 1;
    clearMessages();
    CurrentDatabase current;
    int result = olderThan5_1(sourceDsn, targetDsn) ? 0 : 1;
    if (result == 1 && (type == kDetailStyle || type == kDetailProcess)) {
        Processes::ResetDeepCopyInfo(); // the styles, too
        current.set(sourceDsn, sourceIndex);
        if (!collect(type, key.getKey())) {
            setMessages(type == kDetailStyle ? 45061 : 45068,
                        L"Failed to load dependencies for detail style with key %d", key.getKey());
            KorProgressCtrl::reset();
            result = 0;
        } else {
            current.set(targetDsn, targetIndex);
            if (type == kDetailProcess)
                Processes::SetRowNr();
            // a cancel of the styles' copy is what counts here, for processes as well
            result = write(type, Styles::m_bDeepCopyCanceledByUser);
        }
    }
    current.release();
    m_bImportInProgress = 0;
    return result;
}

void Exports::GetErrorMessage(KorString& out, int standard)
{
    out = standard != 0 ? m_StandardErrorMessage : m_ErrorMessage;
}

int Exports::isDatabaseOlderThan5_1(eDSN dsn)
{
    for (const wchar_t* table :
         {L"DetObjAnnotationGroup", L"DetObjQualifierSetGroup", L"DetViewDimRequestLinearGroup",
          L"DetViewDimStrategyNew", L"DetViewDimStrategyItems"})
        if (KorDatabaseAccess::doesTableExists(dsn, table) != 1)
            return 1;
    return 0;
}

int Exports::GetDSNAndIndexToUse(eDSN source, eDSN& targetDsn, eIndex& targetIndex, KorString& connection)
{
    const bool fromDetails = source == KorDSNDefinitions::kDetails;
    targetDsn = fromDetails ? KorDSNDefinitions::kAddin : KorDSNDefinitions::kDetails;
    targetIndex = fromDetails ? KorDSNDefinitions::kFirstAddin : KorDSNDefinitions::kBase;
    return KorDatabaseAccess::getConnectionString(targetDsn, connection);
}

int Exports::CreateDbFile(const KorString& file) { return KorDatabaseAccess::createDetailProcessDatabase(file); }

int Exports::FileExists(const KorString& file)
{
    std::error_code code;
    const auto status = std::filesystem::status(file.toUtf8(), code);
    return std::filesystem::exists(status) && !std::filesystem::is_directory(status) ? 1 : 0;
}

int Exports::getTableIndex(KorString& recordTypeName)
{
    for (const auto& [record, table] : tableIds)
        if (recordTypeName == record)
            return table;
    return -1;
}

void Exports::deleteCache(int index)
{
    StructDetailMasterMarshal::resetTableCache(index);
    StructDetailStyleMarshal::resetTableCache(index);
    StructDetAnnotationTypeMarshal::resetTableCache(index);
    StructDetArrangerControlMarshal::resetTableCache(index);
    StructDetBaseCategoryMarshal::resetTableCache(index);
    StructDetManualAnnotationTypeMarshal::resetTableCache(index);
    StructDetObjAnnotationStrategyMarshal::resetTableCache(index);
    StructDetObjAnnotationGroupMarshal::resetTableCache(index);
    StructDetObjQualifierSetMarshal::resetTableCache(index);
    StructDetObjQualifierSetGroupMarshal::resetTableCache(index);
    StructDetObjReprMapMarshal::resetTableCache(index);
    StructDetViewArrangeStrategyMarshal::resetTableCache(index);
    StructDetArrangerStrategyMarshal::resetTableCache(index);
    StructDetViewDimPointSelectionMarshal::resetTableCache(index);
    StructDetViewDimRequestLinearMarshal::resetTableCache(index);
    StructDetViewDimRequestLinearGroupMarshal::resetTableCache(index);
    StructDetViewDimStrategyItemMarshal::resetTableCache(index);
    StructDetViewDimStrategyMarshal::resetTableCache(index);
    StructDetViewLengthClipMarshal::resetTableCache(index);
    StructDetViewRequestMarshal::resetTableCache(index);
    StructDetViewRequestCategoryMarshal::resetTableCache(index);
    StructLinetypesMarshal::resetTableCache(index);
    StructDetViewSystemAndBoxMarshal::resetTableCache(index);
    StructDetHatchSettingsMarshal::resetTableCache(index);
    StructDetObjAppearanceMarshal::resetTableCache(index);
    StructDetailProcessCategoryMarshal::resetTableCache(index);
    StructDetailProcessDefinitionMarshal::resetTableCache(index);
    StructDetailProcessStepMarshal::resetTableCache(index);
    StructDetailFilenameSelectorMarshal::resetTableCache(index);
    StructDetailProcessMain2CutScaleMarshal::resetTableCache(index);
    StructDetProcessScalesMarshal::resetTableCache(index);
    StructDetailStyleMapMarshal::resetTableCache(index);
    StructDetailStyleMapItemMarshal::resetTableCache(index);
}

int Exports::setStatusOnOK()
{
    KorDatabaseBatch batch;
    int result = 1;
    for (const int type : {15, 0, 10, 11, 23, 24, 9, 26, 16, 28, 25, 4,  1,  14, 13, 27,
                           29, 7, 8,  2,  3,  22, 5, 30, 6,  32, 33, 41, 34, 40, 39, 37}) {
        const int confirmed =
            KorOdbcMan::setStatusOnOK(static_cast<KorOdbcMan::eTableType>(type), KorOdbcMan::kFirstCopy);
        if (result == 1)
            result = confirmed;
    }
    return batch.end(result);
}
