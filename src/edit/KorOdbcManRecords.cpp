#include "DetailTables.h"
#include "foundation/ManagerDatabase.h"
#include "ItemStore.h"

#include <korodbc/edit/KorOdbcMan.h>
#include <korodbc/foundation/KorTransferState.h>
#include <korodbc/lookup/UserTableRows.h>
#include <korodbc/maintenance/KorOdbcGUI.h>
#include <korodbc/project/KorODBCUserProfile.h>
#include <korodbc/records/AnyRecord.h>
#include <korodbc/repository/KorDatabaseAccess.h>
#include <korodbc/repository/KorDSNManager.h>
#include <korodbc/roots/KorAssert.h>

#include <vector>

using namespace korodbc;

namespace {

using Man = KorOdbcMan;

/// Physical name of a type's table; false for an invalid type.
bool physicalName(Man::eTableType type, KorString& table)
{
    KorString name;
    if (Man::getTableName(type, name) != 1)
        return false;
    table = KorDatabaseAccess::getTableName(name);
    return true;
}

/// False when the type's table must not be written: another program edits it, or it does not fit its records. A
/// transfer settles this before it begins. Of a table that is marked modified while another program had it, the
/// copy is taken now.
bool mayWrite(Man::eTableType type, const KorString& table, Man::eCopyDepth depth)
{
    if (KorTransferState::isTableBackupProcessCanceled() != 0)
        return true;
    return KorDatabaseAccess::checkTable(Man::m_currentDSN, detailTable(type).description(), true) == 1 &&
           (Man::getStatus(type, depth) != Man::eModified ||
            KorDatabaseAccess::isTableClaimed(Man::m_currentDSN, table) == 1 ||
            Man::backupTable(type, depth) == 1);
}

/// Writes one column of a row under the copy of a depth.
template <class Key>
int writeAttribute(Man::eTableType type, const Key& key, int column, const KorCellData& value, int flag,
                   Man::eCopyDepth depth, bool reset)
{
    KorString table;
    if (!physicalName(type, table))
        return -2;
    const ManagerDatabase database;
    if (!mayWrite(type, table, depth))
        return 0;
    KorDatabaseBatch batch(KorDatabaseBatch::Kind::Joined);
    Man::setStatus(type, Man::eModified, depth);
    const int result = Man::setTableColumnValue(type, key, column, value, flag);
    if (reset)
        Man::resetTable(type);
    return batch.end(result);
}

/// Key of a type's current record, as the service takes it.
KorCellData currentKey(Man::eTableType type)
{
    const DetailTable& table = detailTable(type);
    const RecordDescription& description = table.description();
    return description.hasTextKey() ? KorCellData(description.keyColumn().text(table.currentRecord()))
                                    : KorCellData(description.keyOf(table.currentRecord()));
}

/// Appends an empty row and gives its key in `key`.
int appendRow(Man::eTableType type, const KorString& table, int keepKey, KorCellData& key)
{
    const bool mayKeep =
        Man::m_currentDSN != KorDSNDefinitions::kDetails || KorTransferState::isTransferInProgress();
    if (mayKeep && keepKey == 1 &&
        (detailTable(type).description().hasTextKey() || Man::getRecordKey(type) != -1)) {
        key = currentKey(type);
        if (KorDatabaseAccess::appendNewLine(Man::m_currentDSN, table, key, true, true) == 1)
            return 1;
    }
    key = KorCellData();
    return KorDatabaseAccess::appendNewLine(Man::m_currentDSN, table, key, true, false);
}

void stampOwner(const DetailTable& table)
{
    const ColumnDescription* owner = table.description().ownerColumn();
    if (owner == nullptr || KorTransferState::isTransferInProgress())
        return;
    KorODBCUserProfile::resetOwnerText();
    owner->text(table.currentRecord()) = KorODBCUserProfile::m_charOwnerText;
}

/// True when the table of that physical name has columns for that many items.
bool holdsItems(Man::eTableType type, const KorString& table, long items)
{
    const auto& [fixed, perItem] = Man::m_numberOfColumns[type];
    return perItem == 0 ||
           (KorDatabaseAccess::getNumberOfColumns(Man::m_currentDSN, table) - fixed) / perItem >= items;
}

/// A record without items in a table of their own, and for which there are columns, is one statement, which is
/// whole or nothing by itself.
KorDatabaseBatch::Kind batchFor(Man::eTableType type, const KorString& table)
{
    const DetailTable& current = detailTable(type);
    const RecordDescription& description = current.description();
    const bool needsColumns = description.numbered.exists() &&
                              !holdsItems(type, table, description.itemList()->length(current.currentRecord()));
    return description.items.exists() || needsColumns ? KorDatabaseBatch::Kind::Whole
                                                      : KorDatabaseBatch::Kind::Joined;
}

/// Writes all columns and items of a type's current record over its row in the table of that physical name.
int storeRecord(Man::eTableType type, const KorString& table, Man::eCopyDepth depth)
{
    const DetailTable& current = detailTable(type);
    const RecordDescription& description = current.description();
    if (const MemberList* items = description.itemList()) {
        const long count = items->length(current.currentRecord());
        if (const ColumnDescription* column = description.at(description.itemCount))
            column->integer(current.currentRecord()) = static_cast<int>(count);
        if (description.numbered.exists() && !holdsItems(type, table, count))
            Man::setColumnsForNewItems(type, static_cast<int>(count));
    }
    const int result = KorDatabaseAccess::setRecord(Man::m_currentDSN, table, description, currentKey(type),
                                                    current.currentRecord());
    return result == 1 ? storeItems(type, description.keyOf(current.currentRecord()), depth) : result;
}

/// Appends the type's current record as a new row with its items. Returns the new key, or -1.
int appendRecord(Man::eTableType type, const KorString& table, int keepKey, Man::eCopyDepth depth)
{
    KorCellData key;
    if (appendRow(type, table, keepKey, key) != 1)
        return -1;
    const bool isText = key.getType() == KorItemType::kString;
    if (!isText && key.getType() != KorItemType::kInt) {
        KorAssert::korAssert("false", "KorOdbcMan", __LINE__);
        return -1;
    }
    const DetailTable& current = detailTable(type);
    if (current.currentRecord() == nullptr) {
        KorAssert::korAssert("AppendNewrecord==-1", "KorOdbcMan", __LINE__);
        return key.getInt();
    }
    const ColumnDescription& column = current.description().keyColumn();
    if (isText != current.description().hasTextKey())
        return -1; // no key that the record can hold
    if (isText)
        column.text(current.currentRecord()) = key.getStringW();
    else
        column.integer(current.currentRecord()) = key.getInt();
    stampOwner(current);
    return storeRecord(type, table, depth) != 1 ? -1 : isText ? 1 : key.getInt();
}

} // namespace

int KorOdbcMan::setTableColumnValue(eTableType type, const KorOdbcKey& key, int column, const KorCellData& value,
                                    int)
{
    KorString table;
    if (!physicalName(type, table))
        return -2;
    const ManagerDatabase database;
    return KorDatabaseAccess::setTableColumnValue(m_currentDSN, table, L"Key",
                                                  KorString::format(L"%d", key.getKey()), column, value);
}

int KorOdbcMan::setTableColumnValue(eTableType type, const KorString& key, int column, const KorCellData& value,
                                    int)
{
    KorString table;
    if (!physicalName(type, table))
        return -2;
    const ManagerDatabase database;
    if (m_currentDSN == KorDSNDefinitions::kDetails)
        return setUserTableCell(table, key, column, value);
    return KorDatabaseAccess::setTableColumnValue(m_currentDSN, table, L"Key", key, column, value);
}

int KorOdbcMan::setAttribute(eTableType type, const KorOdbcKey& key, int column, long value, eCopyDepth depth)
{
    return writeAttribute(type, key, column, KorCellData(static_cast<int>(value)), 1, depth, true);
}

int KorOdbcMan::setAttribute(eTableType type, const KorOdbcKey& key, int column, double value, eCopyDepth depth)
{
    return writeAttribute(type, key, column, KorCellData(value), 1, depth, true);
}

int KorOdbcMan::setAttribute(eTableType type, const KorOdbcKey& key, int column, const KorString& value, int,
                             eCopyDepth depth)
{
    return writeAttribute(type, key, column, KorCellData(value), 1, depth, true);
}

int KorOdbcMan::setAttribute(eTableType type, const KorOdbcKey& key, int column, void*& value,
                             KorItemType& itemType, int flag, eCopyDepth depth)
{
    return writeAttribute(type, key, column, KorCellData(value, itemType), flag, depth, false);
}

int KorOdbcMan::setAttribute(eTableType type, const KorString& key, int column, long value, eCopyDepth depth)
{
    return writeAttribute(type, key, column, KorCellData(static_cast<int>(value)), 1, depth, true);
}

int KorOdbcMan::setAttribute(eTableType type, const KorString& key, int column, double value, eCopyDepth depth)
{
    return writeAttribute(type, key, column, KorCellData(value), 1, depth, true);
}

int KorOdbcMan::setAttribute(eTableType type, const KorString& key, int column, const KorString& value, int,
                             eCopyDepth depth)
{
    return writeAttribute(type, key, column, KorCellData(value), 1, depth, true);
}

int KorOdbcMan::setAttribute(eTableType type, const KorString& key, int column, void*& value,
                             KorItemType& itemType, int flag, eCopyDepth depth)
{
    return writeAttribute(type, key, column, KorCellData(value, itemType), flag, depth, false);
}

int KorOdbcMan::appendNewRecord(eTableType type, int keepKey, eCopyDepth depth)
{
    KorString table;
    if (!physicalName(type, table))
        return -2;
    const ManagerDatabase database;
    if (!mayWrite(type, table, depth))
        return -1;
    // the copy stays, also of a record that cannot be appended
    KorDatabaseBatch edit(KorDatabaseBatch::Kind::Joined);
    m_bAppending = true;
    setStatus(type, eModified, depth);
    KorDatabaseBatch record(batchFor(type, table));
    int key = appendRecord(type, table, keepKey, depth);
    if (key < 0)
        record.undo();
    else if (record.end(1) != 1)
        key = -1;
    m_bAppending = false;
    resetTable(type);
    return edit.end(1) == 1 ? key : -1;
}

int KorOdbcMan::storeCurrentRecord(eTableType type, eCopyDepth depth)
{
    KorString table;
    if (!physicalName(type, table))
        return -2;
    if (detailTable(type).currentRecord() == nullptr)
        return 1;
    const ManagerDatabase database;
    if (!mayWrite(type, table, depth))
        return 0;
    KorDatabaseBatch edit(KorDatabaseBatch::Kind::Joined);
    m_bAppending = true;
    setStatus(type, eModified, depth);
    KorDatabaseBatch record(batchFor(type, table));
    const int stored = storeRecord(type, table, depth);
    const int result = stored == 1 ? record.end(1) : record.undo(stored);
    m_bAppending = false;
    resetTable(type);
    return edit.end(result);
}

int KorOdbcMan::deleteRecord(eTableType type, const KorOdbcKey& key, eCopyDepth depth)
{
    KorString table;
    if (!physicalName(type, table))
        return -2;
    const ManagerDatabase database;
    if (!mayWrite(type, table, depth))
        return 0;
    KorDatabaseBatch batch(KorDatabaseBatch::Kind::Joined);
    setStatus(type, eModified, depth);
    const int result = deleteWhere(table, L"[Key]", key.getKey());
    resetTable(type);
    return batch.end(result);
}

int KorOdbcMan::setColumnsForNewItems(eTableType type, int items)
{
    const ManagerDatabase database;
    int columns = 0;
    const int read = getNumberOfColumns(type, columns);
    if (read != 1)
        return read;
    const int perItem = m_numberOfColumns[type][1];
    if (perItem == 0)
        return 1;
    int existing = (columns - m_numberOfColumns[type][0]) / perItem;
    for (; existing < items; ++existing)
        if (AddItemColumns(type, existing + 1) != 1)
            break;
    return 1;
}

int KorOdbcMan::AddItemColumns(eTableType type, int item)
{
    return AddItemColumns(type, item, isTableType(type) ? m_numberOfColumns[type][1] : 0, m_currentDSN);
}

int KorOdbcMan::AddItemColumns(eTableType type, int item, int count, eDSN dsn)
{
    KorString name;
    if (getTableName(type, name) != 1)
        return -2;
    const KorDSNRequest database(dsn, dsn == m_currentDSN ? m_currentAddIn : KorDSNDefinitions::kFirstAddin);
    const int perItem = m_numberOfColumns[type][1];
    const auto& patterns = detailTable(type).columns.ofItem;
    KorArray<KorString> definitions;
    for (int column = perItem - count; column < perItem; ++column) {
        const auto place = static_cast<std::size_t>(column);
        if (column >= 0 && place < patterns.size() && patterns[place] != nullptr)
            definitions.append(KorString::format(patterns[place], item));
    }
    return KorOdbcGUI::setNewColumns(name, definitions, dsn);
}

void KorOdbcMan::resetTable(eTableType type)
{
    if (m_bAppending)
        return;
    if (!isTableType(type)) {
        KorAssert::korAssert("error==-1", "KorOdbcMan", __LINE__);
        return;
    }
    const ManagerDatabase database;
    const DetailTable& table = detailTable(type);
    RecordAccess::resetCache(table.description());
    // tables that are read together are reset together
    static const auto together = [] {
        std::array<std::vector<int>, kTableTypes> types;
        for (const DetailTable& row : detailTables)
            for (const int other : {row.readWith, itemTableType(row.type)})
                if (other >= 0) {
                    types[row.type].push_back(other);
                    types[static_cast<std::size_t>(other)].push_back(row.type);
                }
        return types;
    }();
    for (const int other : together[type])
        RecordAccess::resetCache(detailTable(other).description());
    if (table.readsBack)
        RecordAccess::readByKey(table.description(), getRecordKey(type), table.currentRecord());
}

void KorOdbcMan::checkItems(eTableType type)
{
    if (!isTableType(type) || !detailTable(type).checksItems)
        return;
    const ManagerDatabase database;
    const DetailTable& table = detailTable(type);
    const RecordDescription& description = table.description();
    const MemberList& list = *description.itemList();
    const std::span<const ColumnDescription> columns =
        description.numbered.exists() ? description.numbered.columns : description.items.item().columns;
    // the look-ups read into the current records of the referenced types
    const auto resolves = [](const ColumnDescription& column, const void* item) {
        const int key = column.integer(item);
        if (column.noneAllowed && key == -1)
            return true;
        const int target = tableTypeOf(column.target());
        if (target >= 0 && detailTable(target).currentRecord() != nullptr)
            return RecordAccess::readByKey(column.target(), key, detailTable(target).currentRecord()) == 1;
        const AnyRecord record(column.target());
        if (RecordAccess::readByKey(column.target(), key, record.get()) == 1)
            return true;
        // a fixed catalogue lies in one data source for all
        const KorDSNRequest catalogue(KorDSNDefinitions::kDetails, KorDSNDefinitions::kBase);
        return column.link == LinkKind::Lookup &&
               RecordAccess::readByKey(column.target(), key, record.get(), RecordAccess::Sources::All) == 1;
    };
    const auto checked = [&](const ColumnDescription& column) {
        return column.link == LinkKind::Reference ||
               (column.link == LinkKind::Lookup && &column.target() == &descriptionOf<StructDetRequestType>());
    };
    for (long item = list.length(table.currentRecord()) - 1; item >= 0; --item) {
        for (const ColumnDescription& column : columns) {
            if (checked(column) && !resolves(column, list.at(table.currentRecord(), item))) {
                list.erase(table.currentRecord(), item);
                break;
            }
        }
    }
    if (const ColumnDescription* count = description.at(description.itemCount))
        count->integer(table.currentRecord()) = static_cast<int>(list.length(table.currentRecord()));
}

bool KorOdbcMan::isCurrentOwnerVEL()
{
    KorODBCUserProfile::resetOwnerText();
    KorString owner;
    KorODBCUserProfile::getOwnerText(owner);
    return owner == korstrVEL || owner == korstrPCVEL;
}

bool KorOdbcMan::getAttributeStatus(eTableType type)
{
    const auto editing = isTableType(type) ? detailTable(type).editing : DetailTable::Editing::Unsaid;
    if (editing == DetailTable::Editing::Unsaid) {
        KorAssert::korAssert("getAttributeStatus_notYetImplemented==-1", "KorOdbcMan", __LINE__);
        return false;
    }
    if (editing == DetailTable::Editing::OfAll)
        return true;
    const DetailTable& table = detailTable(type);
    const KorString& owner = table.description().ownerColumn()->text(table.currentRecord());
    return (owner != korstrVEL && owner != korstrPCVEL) || isCurrentOwnerVEL();
}

bool KorOdbcMan::getEditableStatus() { return m_currentDSN == KorDSNDefinitions::kAddin || isCurrentOwnerVEL(); }
