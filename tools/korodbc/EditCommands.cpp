#include "Commands.h"
#include "CurrentDatabase.h"
#include "DetailFile.h"
#include "edit/KorTableEdit.h"
#include "Records.h"
#include "records/Registry.h"
#include "repository/KorDatabaseAccess.h"
#include "repository/RecordAccess.h"

#include <charconv>
#include <cmath>
#include <cstdio>
#include <optional>

namespace {

KorOdbcMan::eTableType tableTypeNamed(const std::string& name)
{
    std::vector<std::string> names;
    for (int type = 0; type < KorOdbcMan::kTableTypes; ++type) {
        KorString table;
        KorOdbcMan::getTableName(static_cast<KorOdbcMan::eTableType>(type), table);
        if (sameName(table.toUtf8(), name))
            return static_cast<KorOdbcMan::eTableType>(type);
        names.push_back(table.toUtf8());
    }
    findTable(name, ""); // a table that does not exist at all is told as such
    throw Failure{kUsage, "table " + quote(name) + " is no detail table, only those are edited under copies" +
                              nearest(name, names)};
}

template <class T>
std::optional<T> numberIn(const std::string& text)
{
    T value{};
    const auto end = std::from_chars(text.data(), text.data() + text.size(), value);
    return end.ec == std::errc() && end.ptr == text.data() + text.size() && !text.empty() ? std::optional<T>(value)
                                                                                          : std::nullopt;
}

/// The cell that an edit writes.
struct Cell {
    int index = -1; // position in the row
    std::string name;
    const ColumnDescription* column = nullptr;
};

Cell cellNamed(const RecordDescription& type, const StoredTable& table, const std::string& wanted)
{
    KorArray<KorColumn> columns;
    KorDatabaseAccess::getTableStructure(table.source.dsn, KorString::fromUtf8(table.name), columns);
    std::vector<std::string> names;
    Cell cell;
    for (int i = 0; i < columns.length(); ++i) {
        names.push_back(columns[i].getName().toUtf8());
        if (sameName(names.back(), wanted))
            cell = {i, names.back(), nullptr};
    }
    for (const ColumnDescription& column : type.columns)
        if (cell.index >= 0 && sameName(std::string(column.name), cell.name))
            cell.column = &column;
    for (long item = 1; cell.index >= 0 && type.numbered.exists() && item <= columns.length(); ++item)
        for (const ColumnDescription& column : type.numbered.columns)
            if (sameName(numberedName(column, item), cell.name))
                cell.column = &column;
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

/// Throws unless the value is of the column's kind and, in a reference, the key of a row.
void checkValue(const Cell& cell, const std::string& value)
{
    const ColumnDescription& column = *cell.column;
    if (column.kind == FieldKind::Integer) {
        const auto number = numberIn<int>(value);
        if (!number)
            throw Failure{kUsage,
                          quote(value) + " is no whole number; column " + cell.name + " takes whole numbers"};
        if (column.link == LinkKind::Reference && !(column.noneAllowed && *number == -1)) {
            const RecordDescription& target = column.target();
            const AnyRecord record(target);
            if (RecordAccess::readByKey(target, long{*number}, record.get()) != 1)
                throw Failure{kNotFound, "there is no row with the key " + value + " in " +
                                             std::string(target.table) + ", which column " + cell.name +
                                             " refers to; list them with: korodbc show " +
                                             std::string(target.table)};
        }
    } else if (column.kind == FieldKind::Real) {
        const auto number = numberIn<double>(value);
        if (!number || !std::isfinite(*number))
            throw Failure{kUsage,
                          quote(value) + " is no number; column " + cell.name + " takes numbers such as 12.5"};
    } else if (KorString::fromUtf8(value).toUtf8() != value) {
        throw Failure{kUsage, "the value is no valid UTF-8 text"};
    }
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

/// The cell as text.
std::string stored(const StoredTable& table, const RecordDescription& type, const std::string& key,
                   const Cell& cell)
{
    KorCellData data;
    if (KorDatabaseAccess::getTableColumnValue(table.source.dsn, KorString::fromUtf8(table.name),
                                               KorString::fromUtf8(type.keyColumn().name),
                                               KorCellData(KorString::fromUtf8(key)), cell.index, data) != 1)
        throw Failure{kFailed, "table " + table.name + " cannot be read" + because()};
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
        // Apply keeps the edit and the dialog open; the program ends, so the dialog is closed as well
        return dialog.update() == 1 ? dialog.ok() : 0;
    case Closing::LeaveOpen:
        break;
    }
    return 1;
}

} // namespace

std::string copyPlace(const LeftBehind& copy) { return copy.copy + " (" + copy.source.name + ")"; }

Edited edit(const EditOptions& options)
{
    const KorOdbcMan::eTableType tableType = tableTypeNamed(options.table);
    const StoredTable table = findTable(options.table, options.source);
    if (table.type == nullptr || table.type->itemOwner >= 0 || table.type->key < 0)
        throw Failure{kUsage, "the rows of " + table.name +
                                  " are items of another table's rows and have no key of their "
                                  "own; edit the table that they belong to"};
    const RecordDescription& type = *table.type;
    if (!type.hasTextKey() && !numberIn<int>(options.key))
        throw Failure{kUsage, "the key " + quote(options.key) +
                                  " is no number; list the keys with: korodbc show " + table.name};
    const CurrentDatabase current(table.source);
    requireReadable(type);
    AnyRecord record(type);
    if (RecordAccess::readByKey(type, KorString::fromUtf8(options.key), record.get()) != 1)
        throw Failure{kNotFound, "table " + table.name + " (" + table.source.name + ") has no row with the key " +
                                     options.key + "; list them with: korodbc show " + table.name};
    const Cell cell = cellNamed(type, table, options.column);
    checkValue(cell, options.value);

    Edited edited{type.runName < 0 ? "" : cellText(*type.runNameColumn(), record.get()),
                  cell.name,
                  stored(table, type, options.key, cell),
                  {},
                  table.source.name};
    const auto depth = static_cast<KorOdbcMan::eCopyDepth>(options.depth);
    KorTableEdit dialog({tableType}, depth);
    const int written =
        type.hasTextKey() ? write(tableType, KorString::fromUtf8(options.key), cell, options.value, depth)
                          : write(tableType, KorOdbcKey(*numberIn<int>(options.key)), cell, options.value, depth);
    if (written != 1) {
        const std::string error = "the value was not written" + because();
        const bool restored = copiesLeftBehind().empty() || dialog.cancel() == 1;
        throw Failure{kFailed,
                      error + (restored ? "; the table is as it was" : "; the next start brings the table back")};
    }
    if (close(dialog, options.closing) != 1)
        throw Failure{kFailed, "the edit was written but not closed" + because() +
                                   "; the next start brings the table back"};
    edited.after = stored(table, type, options.key, cell);
    return edited;
}

void runEdit(const GlobalOptions& global, const EditOptions& options)
{
    const StartedSession session(global);
    const Edited edited = edit(options);
    std::printf("%s %s%s in %s: %s was %s, written %s.\n", options.table.c_str(), options.key.c_str(),
                edited.record.empty() ? "" : (" " + quote(edited.record)).c_str(), edited.source.c_str(),
                edited.column.c_str(), quote(edited.before).c_str(), quote(options.value).c_str());
    switch (options.closing) {
    case Closing::Ok:
        std::printf("Closed with OK: the value is now %s, the copy is gone.\n", quote(edited.after).c_str());
        break;
    case Closing::Cancel:
        std::printf("Closed with Cancel: the table is back from its copy, the value is %s.\n",
                    quote(edited.after).c_str());
        break;
    case Closing::Update:
        std::printf("Applied with Update, then closed: the value is now %s.\n", quote(edited.after).c_str());
        break;
    case Closing::LeaveOpen: {
        const std::vector<LeftBehind> copies = copiesLeftBehind();
        std::printf("Left open: the value is %s for now, and copy %s keeps the state before.\n"
                    "See it with \"korodbc status\"; the next command, or \"korodbc recover\", brings the "
                    "table back.\n",
                    quote(edited.after).c_str(), copies.empty() ? "none" : copyPlace(copies.front()).c_str());
        break;
    }
    }
}

void runStatus(const GlobalOptions& global)
{
    const Session session(global, Session::Start::LookOnly);
    int usable = 0, all = 0;
    std::string error;
    for (const auto& state : korodbc::host::sources()) {
        ++all;
        usable += state.usable ? 1 : 0;
        if (!state.usable) {
            std::printf("Cannot be used: %s\n", state.error.c_str());
            error = state.error + remedy(state.error);
        }
    }
    for (const Source& source : usableSources()) {
        try {
            checkSound(source.file);
        } catch (const Failure& damaged) {
            std::printf("Damaged: data source %s\n", source.name.c_str());
            error = damaged.message;
        }
    }
    const char* const where = usable == all ? "" : " in the others";
    std::printf("Repository %s: %d of %d data sources can be used.\n", global.repository.c_str(), usable, all);
    const std::vector<LeftBehind> copies = copiesLeftBehind();
    if (copies.empty())
        std::printf("No edit is open%s: no table has a copy.\n", where);
    else
        std::printf(
            "An edit was left open: %s of tables. The next command, or \"korodbc recover\", brings them "
            "back.\n",
            (copies.size() == 1 ? std::string("1 copy") : std::to_string(copies.size()) + " copies").c_str());
    Sheet sheet{{{"Source", false}, {"Table", false}, {"Depth", true}, {"Copy", false}}, {}};
    for (const LeftBehind& copy : copies)
        sheet.rows.push_back({copy.source.name, copy.table, std::to_string(copy.depth), copy.copy});
    if (!copies.empty())
        printText(sheet);
    bool differs = false;
    for (const Source& source : usableSources()) {
        const std::string differences = korodbc::host::tableDifferences(source.dsn, source.index);
        if (differences.empty())
            continue;
        if (!differs)
            std::puts("Tables that differ from their record types:");
        differs = true;
        std::printf("%s: %s", source.name.c_str(), differences.c_str());
    }
    if (!differs)
        std::printf("All tables%s agree with their record types.\n", where);
    if (!error.empty())
        throw Failure{kNoRepository, error};
}

void runRecover(const GlobalOptions& global)
{
    const Session session(global, Session::Start::Recover);
    if (session.broughtBack().empty()) {
        std::puts("Nothing to bring back: no edit was left open.");
        return;
    }
    std::puts("Brought back to the state before the edit that was left open:");
    for (const LeftBehind& copy : session.broughtBack())
        std::printf("  %s in %s, from %s\n", copy.table.c_str(), copy.source.name.c_str(), copy.copy.c_str());
}
