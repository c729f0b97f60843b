#include "Commands.h"
#include "CurrentDatabase.h"
#include "DetailFile.h"
#include "Records.h"

#include <korodbc/edit/KorTableEdit.h>
#include <korodbc/records/Registry.h>
#include <korodbc/repository/KorDatabaseAccess.h>
#include <korodbc/repository/RecordAccess.h>

#include <cmath>
#include <cstdio>
#include <optional>

using korodbc::host::HostError;
using korodbc::host::lastFailure;

namespace {

constexpr int noDialog = -1;

/// The type of a detail table; `noDialog` for one that is not edited under copies.
int tableTypeNamed(const std::string& name)
{
    std::vector<std::string> names;
    for (int type = 0; type < KorOdbcMan::kTableTypes; ++type) {
        KorString table;
        KorOdbcMan::getTableName(static_cast<KorOdbcMan::eTableType>(type), table);
        if (sameName(table.toUtf8(), name))
            return type;
        names.push_back(table.toUtf8());
    }
    const StoredTable table = findTable(name, ""); // one that does not exist at all is told as such
    if (table.type != nullptr && records::isDetailTable(*table.type))
        return noDialog;
    throw Failure{kUsage,
                  "table " + quote(name) + " is no detail table, only those are edited" + nearest(name, names)};
}

/// The cell that an edit writes.
struct Cell {
    int index = -1; // position in the row
    std::string name;
    const ColumnDescription* column = nullptr;
    long item = 0;                            // of a numbered column, counted from 1
    const RecordDescription* items = nullptr; // the item table that the cell stands in
    int owner = 0, order = 0;                 // what tells its row there
};

Cell cellNamed(const RecordDescription& type, const StoredTable& table, const std::string& wanted)
{
    KorArray<KorColumn> columns;
    KorDatabaseAccess::getTableStructure(table.source.dsn, KorString::fromUtf8(table.name), columns);
    std::vector<std::string> names;
    Cell cell;
    for (int i = 0; i < columns.length(); ++i) {
        names.push_back(columns[i].getName().toUtf8());
        if (sameName(names.back(), wanted)) {
            cell.index = i;
            cell.name = names.back();
        }
    }
    for (const ColumnDescription& column : type.columns)
        if (cell.index >= 0 && sameName(std::string(column.name), cell.name))
            cell.column = &column;
    for (long item = 1; cell.index >= 0 && type.numbered.exists() && item <= columns.length(); ++item)
        for (const ColumnDescription& column : type.numbered.columns)
            if (sameName(numberedName(column, item), cell.name)) {
                cell.column = &column;
                cell.item = item;
            }
    if (cell.index < 0 || cell.column == nullptr)
        throw Failure{kNotFound, "table " + table.name + " has no column " + quote(wanted) +
                                     nearest(wanted, names) + "; list them with: korodbc show " + table.name};
    if (cell.column->role == ColumnRole::Key)
        throw Failure{kUsage, "the key of a row stays as it is; name another column"};
    if (cell.column->role == ColumnRole::ItemCount)
        throw Failure{kUsage, "column " + cell.name +
                                  " counts the items of the row and follows them; name another column"};
    return cell;
}

/// The cell of an item that stands in a table of its own; `number` counts the items of the record from 1.
Cell itemCellNamed(const RecordDescription& type, const StoredTable& table, const void* record, int number,
                   const std::string& wanted)
{
    if (!type.items.exists())
        throw Failure{kUsage,
                      "the rows of " + table.name + " have no items in a table of their own; edit the row"};
    const RecordDescription& items = type.items.item();
    const long count = type.items.list.length(record);
    if (number < 1 || number > count)
        throw Failure{kNotFound, "the row has " + counted(count, "item") + " and no item " +
                                     std::to_string(number) + "; list them with: korodbc show " + table.name +
                                     " " + keyText(type, record) + " --items"};
    const ColumnDescription &owner = *items.at(items.itemOwner), &order = *items.at(items.itemOrder);
    Cell cell = cellNamed(items, {std::string(items.table), table.source, &items}, wanted);
    if (cell.column == &owner || cell.column == &order)
        throw Failure{kUsage, "column " + cell.name + " tells which item it is and stays; name another column"};
    const auto orderOf = [&](long item) { return order.integer(type.items.list.at(record, item)); };
    cell.items = &items;
    cell.owner = owner.integer(type.items.list.at(record, number - 1));
    cell.order = orderOf(number - 1);
    for (long other = 0; other < count; ++other)
        if (other != number - 1 && orderOf(other) == cell.order)
            throw Failure{kFailed, "items " + std::to_string(number) + " and " + std::to_string(other + 1) +
                                       " have the same order, so that one cannot be changed alone; store the row "
                                       "again"};
    return cell;
}

/// Throws unless the value is of the column's kind and, in a reference, the key of a row; with `force` a row of a
/// fixed catalogue may be missing.
void checkValue(const Cell& cell, const std::string& value, bool force)
{
    const ColumnDescription& column = *cell.column;
    if (column.kind == FieldKind::Integer) {
        const auto number = numberIn<int>(value);
        if (!number)
            throw Failure{kUsage,
                          quote(value) + " is no whole number; column " + cell.name + " takes whole numbers"};
        const bool isLookup = column.link == LinkKind::Lookup;
        if (column.link == LinkKind::None || column.isNone(*number) || (isLookup && force))
            return;
        const RecordDescription& target = column.target();
        const AnyRecord record(target);
        if (RecordAccess::readByKey(target, long{*number}, record.get(),
                                    isLookup ? RecordAccess::Sources::All : RecordAccess::Sources::Current) != 1)
            throw Failure{kNotFound, "there is no row with the key " + value + " in " + std::string(target.table) +
                                         ", which column " + cell.name +
                                         " refers to; list them with: korodbc show " + std::string(target.table) +
                                         (isLookup ? ", or write it with --force" : "")};
    } else if (column.kind == FieldKind::Real) {
        const auto number = numberIn<double>(value);
        if (!number || !std::isfinite(*number))
            throw Failure{kUsage,
                          quote(value) + " is no number; column " + cell.name + " takes numbers such as 12.5"};
    } else if (KorString::fromUtf8(value).toUtf8() != value) {
        throw Failure{kUsage, "the value is no valid UTF-8 text"};
    }
}

/// Throws when the cell belongs to an item that the row does not have, or names the row as another one.
void checkPlace(const RecordDescription& type, const void* record, const Cell& cell, const std::string& value)
{
    const long items = cell.item == 0 ? 0 : type.numbered.list.length(record);
    if (cell.item > items)
        throw Failure{kUsage, "the row has " + counted(items, "item") + " and no item " +
                                  std::to_string(cell.item) + ", so column " + cell.name +
                                  " would not be read; write it with --force"};
    if (cell.column->role != ColumnRole::RunName)
        return;
    const KorString name = KorString::fromUtf8(value);
    RecordAccess::visit(type, [&](const void* other) {
        if (cell.column->text(other) == name && keyText(type, other) != keyText(type, record))
            throw Failure{kUsage, "the row with the key " + keyText(type, other) + " has the name " +
                                      quote(value) + " already; choose another name, or write it with --force"};
        return true;
    });
}

/// Writes a cell of an item under the copies of one edit.
int writeItem(KorTableEdit& dialog, const StoredTable& table, const Cell& cell, const std::string& value)
{
    if (dialog.begin() != 1)
        return 0;
    const auto wide = [](std::string_view text) { return KorString::fromUtf8(text); };
    const wchar_t* const place = cell.column->kind == FieldKind::Integer ? L"%s"
                                 : cell.column->kind == FieldKind::Real  ? L"CAST('%s' AS REAL)"
                                                                         : L"'%s'";
    const KorString pattern = L"UPDATE [" + wide(cell.items->table) + L"] SET [" + wide(cell.name) + L"]=" +
                              place + L" WHERE [" + wide(cell.items->at(cell.items->itemOwner)->name) +
                              L"]=%d AND [" + wide(cell.items->at(cell.items->itemOrder)->name) + L"]=%d";
    const KorString text = wide(value);
    const KorFormatArgument values[] = {text, cell.owner, cell.order};
    return KorDatabaseAccess::doSQLStatement(table.source.dsn, pattern, values);
}

template <class Key>
int write(KorOdbcMan::eTableType type, const Key& key, const Cell& cell, const std::string& value,
          KorOdbcMan::eCopyDepth depth)
{
    switch (cell.column->kind) {
    case FieldKind::Integer:
        return KorOdbcMan::setAttribute(type, key, cell.index, long{*numberIn<int>(value)}, depth);
    case FieldKind::Real:
        return KorOdbcMan::setAttribute(type, key, cell.index, *numberIn<double>(value), depth);
    case FieldKind::Text:
        break;
    }
    return KorOdbcMan::setAttribute(type, key, cell.index, KorString::fromUtf8(value), 1, depth);
}

/// Writes a cell of a table that has no copies.
int writeAtOnce(const StoredTable& table, const RecordDescription& type, const EditOptions& options,
                const Cell& cell)
{
    const KorString text = KorString::fromUtf8(options.value);
    const KorCellData value = cell.column->kind == FieldKind::Integer ? KorCellData(*numberIn<int>(options.value))
                              : cell.column->kind == FieldKind::Real
                                  ? KorCellData(*numberIn<double>(options.value))
                                  : KorCellData(text);
    return KorDatabaseAccess::setTableColumnValue(table.source.dsn, KorString::fromUtf8(table.name),
                                                  KorString::fromUtf8(type.keyColumn().name),
                                                  KorString::fromUtf8(options.key), cell.index, value);
}

/// The cell as text.
std::string stored(const StoredTable& table, const RecordDescription& type, const std::string& key,
                   const Cell& cell)
{
    if (cell.items != nullptr) {
        AnyRecord record(type);
        if (RecordAccess::readByKey(type, KorString::fromUtf8(key), record.get()) == 1)
            for (long item = 0; item < type.items.list.length(record.get()); ++item)
                if (const void* of = type.items.list.at(record.get(), item);
                    cell.items->at(cell.items->itemOrder)->integer(of) == cell.order)
                    return cellText(*cell.column, of);
        throw Failure{kFailed, "the items of " + table.name + " cannot be read" + because()};
    }
    KorCellData data;
    if (KorDatabaseAccess::getTableColumnValue(table.source.dsn, KorString::fromUtf8(table.name),
                                               KorString::fromUtf8(type.keyColumn().name),
                                               KorCellData(KorString::fromUtf8(key)), cell.index, data) != 1)
        throw unreadable(table.name);
    return data.getStringW().toUtf8();
}

int close(KorTableEdit& dialog, Closing closing)
{
    switch (closing) {
    case Closing::Ok:
        return dialog.ok();
    case Closing::Cancel:
        return dialog.cancel();
    case Closing::Update:
        // Update keeps the edit open; the program ends, so it is closed as well
        return dialog.update() == 1 ? dialog.ok() : 0;
    case Closing::LeaveOpen:
        break;
    }
    return 1;
}

} // namespace

Edited edit(const EditOptions& options)
{
    const std::string owner = options.item > 0 ? ownerOfItems(options.table) : std::string();
    const std::string name = owner.empty() ? options.table : owner;
    const int number = tableTypeNamed(name);
    const auto tableType = static_cast<KorOdbcMan::eTableType>(number);
    const StoredTable table = findTable(name, options.source);
    if (number == noDialog &&
        (options.depth != 0 || (options.closing != Closing::Ok && options.closing != Closing::Cancel)))
        throw Failure{kUsage, "no copies are taken of table " + table.name +
                                  "; leave out --depth, --update and --leave-open"};
    if (table.type == nullptr || table.type->key < 0 || !ownerOfItems(table.name).empty())
        throw Failure{
            kUsage, "the rows of " + table.name +
                        " are items of another table's rows and have no key of their own; name the row that they "
                        "belong to, and the item with --item"};
    const RecordDescription& type = *table.type;
    if (!type.hasTextKey() && !numberIn<int>(options.key))
        throw Failure{kUsage, "the key " + quote(options.key) +
                                  " is no number; list the keys with: korodbc show " + table.name};
    const CurrentDatabase current(table.source);
    requireReadable(type);
    AnyRecord record(type);
    if (RecordAccess::readByKey(type, KorString::fromUtf8(options.key), record.get()) != 1)
        throw Failure{kNotFound, "table " + table.name + " (" + table.source.name + ") has no row with the key " +
                                     options.key + "; list them with: korodbc show " + table.name +
                                     sourceOption(table.source)};
    const Cell cell = options.item == 0 ? cellNamed(type, table, options.column)
                                        : itemCellNamed(type, table, record.get(), options.item, options.column);
    checkValue(cell, options.value, options.force);
    if (!options.force && cell.items == nullptr)
        checkPlace(type, record.get(), cell, options.value);
    refuseStuck(table.source, table.name);

    Edited edited{type.runName < 0 ? "" : cellText(*type.runNameColumn(), record.get()),
                  cell.name,
                  stored(table, type, options.key, cell),
                  {},
                  table.source.name,
                  number != noDialog};
    if (!edited.underCopy) {
        KorDatabaseBatch batch;
        bool done = writeAtOnce(table, type, options, cell) == 1;
        HostError reason = lastFailure();
        if (options.closing == Closing::Cancel) {
            batch.undo();
        } else if (done && batch.end(1) != 1) {
            reason = lastFailure();
            done = false;
        }
        if (!done)
            throw Failure{kFailed, "the value was not written" + advised(reason, table.source.name) +
                                       "; the table is as it was"};
        edited.after = stored(table, type, options.key, cell);
        return edited;
    }
    const auto depth = static_cast<KorOdbcMan::eCopyDepth>(options.depth);
    // in one batch with its closing nobody else ever sees the copy
    std::optional<KorDatabaseBatch> batch;
    if (options.closing != Closing::LeaveOpen)
        batch.emplace();
    KorTableEdit dialog({tableType}, depth);
    const int written =
        cell.items != nullptr ? writeItem(dialog, table, cell, options.value)
        : type.hasTextKey()
            ? write(tableType, KorString::fromUtf8(options.key), cell, options.value, depth)
            : write(tableType, KorOdbcKey(*numberIn<int>(options.key)), cell, options.value, depth);
    const bool closed = written == 1 && close(dialog, options.closing) == 1;
    HostError reason = lastFailure();
    if (closed && (!batch || batch->end(1) == 1)) {
        edited.after = stored(table, type, options.key, cell);
        return edited;
    }
    if (closed)
        reason = lastFailure();
    else if (batch)
        batch->undo();
    else if (dialog.cancel() != 1)
        throw Failure{kFailed, "the value was not written" + advised(reason, table.source.name) +
                                   "; the next start brings the table back"};
    throw Failure{kFailed,
                  "the value was not written" + advised(reason, table.source.name) + "; the table is as it was"};
}

void runEdit(const GlobalOptions& global, const EditOptions& options)
{
    const StartedSession session(global);
    const Edited edited = edit(options);
    const std::string item = options.item == 0 ? "" : " item " + std::to_string(options.item);
    std::printf("%s %s%s%s in %s: %s was %s, written %s.\n", options.table.c_str(), options.key.c_str(),
                edited.record.empty() ? "" : (" " + quote(edited.record)).c_str(), item.c_str(),
                edited.source.c_str(), edited.column.c_str(), quote(edited.before).c_str(),
                quote(options.value).c_str());
    switch (options.closing) {
    case Closing::Ok:
        std::printf("Closed with OK: the value is now %s%s.\n", quote(edited.after).c_str(),
                    edited.underCopy ? ", the copy is gone" : "");
        break;
    case Closing::Cancel:
        std::printf("Closed with Cancel: the table is back%s, the value is %s.\n",
                    edited.underCopy ? " from its copy" : "", quote(edited.after).c_str());
        break;
    case Closing::Update:
        std::printf("Applied with Update, then closed: the value is now %s.\n", quote(edited.after).c_str());
        break;
    case Closing::LeaveOpen: {
        std::vector<LeftBehind> copies = copiesLeftBehind();
        std::erase_if(copies, [&](const LeftBehind& copy) {
            return !sameName(copy.table, options.table) || copy.source.name != edited.source;
        });
        std::printf("Left open: the value is %s for now, and copy %s keeps the state before.\n"
                    "See it with \"korodbc status\"; the next command that writes, or \"korodbc recover\", brings "
                    "the table back.\n",
                    quote(edited.after).c_str(), copies.empty() ? "none" : copyPlace(copies.front()).c_str());
        break;
    }
    }
}
