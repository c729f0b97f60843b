#include "repository/DetailDatabase.h"

#include "database/Table.h"
#include "repository/NewPath.h"

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

bool createTables(Database& database, eDSN source, HostError& error)
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
    const HostError reason = database.failure();
    const bool stored = database.commit();
    if (made && stored)
        return true;
    error = made ? database.failure() : reason;
    error.text = database.path() + ": " + error.text;
    return false;
}

bool createDetailDatabase(const std::string& file, HostError& error)
{
    const auto failed = [&](const HostError& reason) {
        error = {reason.kind, file + ": " + reason.text};
        return false;
    };
    std::error_code code;
    if (fs::exists(file, code))
        return failed({FailureKind::Refused, "the file exists already"});
    NewPath fresh(file);
    if (fresh.error().kind != FailureKind::None) {
        error = fresh.error();
        return false;
    }
    {
        HostError reason;
        auto database = Database::open(fresh.path().string(), Database::Access::Create, reason);
        if (!database || !createTables(*database, KorDSNDefinitions::kAddin, reason))
            return failed(reason);
        if (!database->engine().fold())
            return failed(database->engine().failure());
    }
    return fresh.place(error) == NewPath::Placed::Yes;
}

} // namespace korodbc::host
