#include "repository/DetailDatabase.h"

#include "repository/NewPath.h"
#include "tables/Table.h"

#include <korodbc/records/Registry.h>

#include <filesystem>

namespace korodbc::host {

namespace fs = std::filesystem;

namespace {

const char* declarationOf(FieldKind kind)
{
    switch (kind) {
    case FieldKind::Integer:
        return "INTEGER";
    case FieldKind::Real:
        return "REAL";
    case FieldKind::Text:
        break;
    }
    return "TEXT";
}

} // namespace

std::string createStatement(const RecordDescription& type)
{
    std::string text = "CREATE TABLE " + bracketed(type.table) + " (";
    for (std::size_t i = 0; i < type.columns.size(); ++i) {
        const ColumnDescription& column = type.columns[i];
        text += (i == 0 ? "" : ", ") + bracketed(column.name) + " " + declarationOf(column.kind);
        if (static_cast<int>(i) == type.key)
            text += column.kind == FieldKind::Integer ? " PRIMARY KEY" : " PRIMARY KEY NOT NULL";
    }
    for (int item = 1; item <= type.numbered.initialItems; ++item)
        for (const ColumnDescription& column : type.numbered.columns)
            text += ", " + bracketed(KorString::format(KorString::fromUtf8(column.name).c_str(), item).toUtf8()) +
                    " " + declarationOf(column.kind);
    return text + ")";
}

bool createTables(Connection& database, eDSN source, std::string& error)
{
    bool made = database.beginWrite();
    for (const auto describe : records::all()) {
        const RecordDescription& type = describe();
        if (!made || !type.homes.contains(source))
            continue;
        made = database.run(createStatement(type));
        // items are removed and found by their owner
        if (made && type.itemOwner >= 0)
            made = database.run("CREATE INDEX " + bracketed(std::string(type.table) + "_Owner") + " ON " +
                                bracketed(type.table) + " (" + bracketed(type.at(type.itemOwner)->name) + ")");
    }
    database.tablesChanged({});
    std::string reason = made ? "" : database.lastError();
    if (!database.commit() && made)
        reason = database.lastError();
    if (!reason.empty())
        error = database.path() + ": " + reason;
    return reason.empty();
}

bool createDetailDatabase(const std::string& file, std::string& error)
{
    std::error_code code;
    if (fs::exists(file, code)) {
        error = file + ": the file exists already";
        return false;
    }
    NewPath fresh(file);
    error = fresh.error();
    if (!error.empty())
        return false;
    {
        auto database = Connection::open(fresh.path().string(), Connection::Access::Create, error);
        if (database && createTables(*database, KorDSNDefinitions::kAddin, error) &&
            !database->run("PRAGMA journal_mode = DELETE"))
            error = database->lastError();
    }
    if (!error.empty()) {
        error = file + ": " + error;
        return false;
    }
    return fresh.place(error) == NewPath::Placed::Yes;
}

} // namespace korodbc::host
