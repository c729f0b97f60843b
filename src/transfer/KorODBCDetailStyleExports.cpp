#include "CopyPass.h"
#include "Scoped.h"
#include "StyleGraph.h"

#include <korodbc/roots/KorAssert.h>
#include <korodbc/roots/KorProgressCtrl.h>
#include <korodbc/roots/KorPromptsProxy.h>
#include <korodbc/transfer/KorDetailProcessTableDependencies.h>
#include <korodbc/transfer/KorDetailTableDependencies.h>
#include <korodbc/transfer/KorODBCDetailStyleExports.h>

#include <algorithm>
#include <filesystem>
#include <optional>

using namespace korodbc;

using Exports = KorODBCDetailStyleExports;
using Styles = KorDetailTableDependencies;
using Processes = KorDetailProcessTableDependencies;
using Man = KorOdbcMan;

Exports::eType Exports::m_pType = Exports::kDetailStyle;
int Exports::m_bAdvancedDeepCopyMode = 0;
KorString Exports::m_ErrorMessage;
KorString Exports::m_StandardErrorMessage;

namespace {

template <class... Args>
void setMessages(unsigned prompt, const wchar_t* standard, const Args&... args)
{
    const KorString localised = KorPromptsProxy::getInstance()->getPrompt(L"GUI", prompt);
    Exports::m_ErrorMessage = KorString::format(localised.c_str(), args...);
    Exports::m_StandardErrorMessage = KorString::format(standard, args...);
}

const wchar_t* const sourceOlder = L"Source database is older than version 5.1!";
const wchar_t* const targetOlder = L"Target database is older than version 5.1!";

void clearMessages()
{
    Exports::m_ErrorMessage = KorString();
    Exports::m_StandardErrorMessage = KorString();
}

void resetProgress()
{
    try {
        KorProgressCtrl::reset();
    } catch (...) { // a progress that cannot be shown
    }
}

bool olderThan5_1(eDSN dsn, eIndex index)
{
    const KorDSNRequest request(dsn, index);
    return Exports::isDatabaseOlderThan5_1(dsn) != 0;
}

/// Where a data source without a slot is looked at: in the slot that is requested or the manager's current one.
eIndex slotInUse(eDSN dsn)
{
    const KorDSNManager& service = KorDSNManager::getInstance();
    const bool current = service.getCurrentDSN() == dsn;
    if (!(current && service.isRequested()) && Man::m_currentDSN == dsn)
        return Man::m_currentAddIn;
    if (current)
        return service.getCurrentIndex();
    return dsn == KorDSNDefinitions::kCountryAddin ? KorDSNDefinitions::kFirstAddin : KorDSNDefinitions::kBase;
}

/// Collects a style, or a process with what it reaches, from the source.
bool collect(Exports::eType type, long key)
{
    return collecting([&] {
               return type == Exports::kDetailStyle
                          ? collectMasterOf(key)
                          : processGraph().collect(descriptionOf<StructDetailProcessDefinition>(), nullptr, key);
           }) != -1;
}

bool saveAll(Exports::eType type)
{
    const CopyTable& definitions = *processGraph().table(Man::kDetailProcessDefinition);
    for (long position = 0; type == Exports::kDetailProcess && position < definitions.length(); ++position)
        if (processGraph().saveCollected(definitions, position) == -1)
            return false;
    // a style that a process took along is not complete without its master either
    for (int position = 0; position < Styles::m_DetMasterCopy.length(); ++position) {
        StructDetailMaster master = Styles::m_DetMasterCopy.getAt(position);
        if (saveMaster(master, position) == -1)
            return false;
    }
    return true;
}

/// True when an edit of this program is open on some of the tables, but not all: its Cancel would take back a part
/// of what is written.
bool isHeldInPart(const DeepCopyGraph& graph)
{
    bool some = false, all = true;
    graph.forEachTable([&](const CopyTable& table) {
        bool open = false;
        for (int depth = Man::kFirstCopy; depth < Man::kCopies; ++depth)
            open = open || Man::isOpen(table.type, static_cast<Man::eCopyDepth>(depth));
        some = some || open;
        all = all && open;
        return true;
    });
    return some && !all;
}

/// Saves what was collected in the target, as one batch. Returns 1, or 0 with the messages set, unless the
/// user cancelled as `cancelled` tells.
int write(Exports::eType type, const bool& cancelled)
{
    Styles::m_CurrRowsToWrite = 0;
    Styles::mainType = type == Exports::kDetailStyle ? Man::kDetailStyle : Man::kDetailProcessDefinition;
    // a transfer is no edit: it takes no copies
    const Scoped withoutCopies(Exports::m_bCancelBackupTables, 1, 0);
    DeepCopyGraph& graph = type == Exports::kDetailStyle ? styleGraph() : processGraph();
    const bool written = !isHeldInPart(graph) && saving(graph, [&] { return saveAll(type) ? 1 : -1; }) == 1;
    if (!written && !cancelled)
        setMessages(45062, L"Unable to write info to target database!");
    return written ? 1 : 0;
}

/// Points a data source at a detail database file. At its end the data source has its own database again, the
/// export is over and the file is let go of.
class ExportFile {
public:
    ExportFile(eDSN dsn, eIndex index, const KorString& connection, const KorString& file)
        : m_dsn(dsn), m_index(index), m_connection(connection), m_file(file)
    {
        // what cannot be attached has no tables either
        m_attached = KorDatabaseAccess::setConnection(dsn, file) == 1 && !olderThan5_1(dsn, index);
        if (!m_attached)
            setMessages(45059, targetOlder);
    }
    ~ExportFile()
    {
        KorDatabaseAccess::setConnectionString(m_dsn, m_connection);
        Exports::deleteCache(m_index);
        if (!m_attached)
            return; // the export stays marked as in progress, the file attached
        Exports::m_bExportInProgress = 0;
        KorDatabaseAccess::detachDatabase(m_file);
    }
    ExportFile(const ExportFile&) = delete;
    ExportFile& operator=(const ExportFile&) = delete;

    bool isAttached() const { return m_attached; }

private:
    const eDSN m_dsn;
    const eIndex m_index;
    const KorString m_connection, m_file;
    bool m_attached = false;
};

using enum Man::eTableType;
/// The tables whose edits an export confirms, in that order.
// clang-format off
constexpr Man::eTableType confirmedTables[] = {
    kDetailMaster, kDetailStyle, kDetAnnotationType, kDetArrangerControl, kDetBaseCategories,
    kDetManualAnnotationType, kDetObjAnnotationStrategy, kDetObjAnnotationGroup, kDetObjQualifierSet,
    kDetObjQualifierSetGroup, kDetObjReprMapItems, kDetObjReprMap, kDetViewArrangeStrategy,
    kDetViewDimPointSelection, kDetViewDimRequestLinear, kDetViewDimRequestLinearGroup,
    kDetViewDimStrategyItems, kDetViewDimStrategy, kDetViewLengthClip, kDetViewRequest,
    kDetViewRequestCategories, kLinetypes, kDetViewSystemAndBox, kDetHatchSettings, kDetObjAppearance,
    kDetailProcessDefinition, kDetailProcessStep, kDetailProcessCategories, kDetailFilenameSelector,
    kDetailProcessMain2CutScale, kDetailProcessScales, kDetailStyleMap};
// clang-format on

} // namespace

int Exports::exportDetail(eType type, const KorOdbcKey& key, eDSN sourceDsn, eIndex sourceIndex,
                          const KorString& file)
{
    // the early failures leave the export marked as in progress
    m_pType = type;
    m_bExportInProgress = 1;
    clearMessages();
    if (olderThan5_1(sourceDsn, sourceIndex)) {
        setMessages(45058, sourceOlder);
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
    const ExportFile target(targetDsn, targetIndex, connection, file);
    if (!target.isAttached())
        return 0;
    if (type != kDetailStyle && type != kDetailProcess) {
        KorAssert::korAssert("false", "KorODBCDetailStyleExports", __LINE__);
        return 1;
    }
    if (type == kDetailStyle)
        Styles::ResetDeepCopyInfo();
    else
        Processes::ResetDeepCopyInfo();
    std::optional<NewManagerDatabase> current(std::in_place, sourceDsn, sourceIndex);
    if (!collect(type, key.getKey())) {
        setMessages(45061, L"Failed to load dependencies for detail style with key %d!", key.getKey());
        resetProgress();
        return 0;
    }
    current.emplace(targetDsn, targetIndex);
    deleteCache(targetIndex);
    if (type == kDetailStyle)
        Styles::SetRowNr();
    else
        Processes::SetRowNr();
    return write(type,
                 type == kDetailStyle ? Styles::m_bDeepCopyCanceledByUser : Processes::m_bDeepCopyCanceledByUser);
}

int Exports::importDetail(eType type, const KorOdbcKey& key, eDSN sourceDsn, eIndex sourceIndex, eDSN targetDsn,
                          eIndex targetIndex)
{
    m_pType = type;
    const Scoped importing(m_bImportInProgress, 1, 0);
    clearMessages();
    const bool fromOlder = olderThan5_1(sourceDsn, sourceIndex);
    if (fromOlder || olderThan5_1(targetDsn, targetIndex)) {
        setMessages(fromOlder ? 45058 : 45059, fromOlder ? sourceOlder : targetOlder);
        return 0;
    }
    if (type != kDetailStyle && type != kDetailProcess)
        return 1;
    Processes::ResetDeepCopyInfo(); // the styles, too
    std::optional<NewManagerDatabase> current(std::in_place, sourceDsn, sourceIndex);
    if (!collect(type, key.getKey())) {
        setMessages(type == kDetailStyle ? 45061 : 45068,
                    L"Failed to load dependencies for detail style with key %d", key.getKey());
        resetProgress();
        return 0;
    }
    current.emplace(targetDsn, targetIndex);
    if (type == kDetailProcess)
        Processes::SetRowNr();
    // a cancel of the styles' copy is what counts here, for processes as well
    return write(type, Styles::m_bDeepCopyCanceledByUser);
}

void Exports::GetErrorMessage(KorString& out, int standard)
{
    out = standard != 0 ? m_StandardErrorMessage : m_ErrorMessage;
}

int Exports::isDatabaseOlderThan5_1(eDSN dsn)
{
    const eIndex index = slotInUse(dsn);
    if (dsn == KorDSNDefinitions::kCountryAddin && index < KorDSNDefinitions::kFirstAddin)
        return 1; // there is no such database
    const KorDSNRequest request(dsn, index);
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
    const auto told = std::ranges::find_if(detailTables, [&](const DetailTable& table) {
        return table.copying.catalogueId >= 0 && table.identity() == recordTypeName;
    });
    return told == std::end(detailTables) ? -1 : told->copying.catalogueId;
}

void Exports::deleteCache(int)
{
    for (const DetailTable& table : detailTables)
        if (table.copying.travel != DetailTable::Travel::None ||
            std::ranges::find(confirmedTables, table.type) != std::end(confirmedTables))
            RecordAccess::resetCache(table.description());
}

int Exports::setStatusOnOK()
{
    KorDatabaseBatch batch;
    int result = 1;
    for (const Man::eTableType type : confirmedTables) {
        const int confirmed = Man::setStatusOnOK(type, Man::kFirstCopy);
        if (result == 1)
            result = confirmed;
    }
    return batch.end(result);
}
