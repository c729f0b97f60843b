#include "database/Table.h"
#include "repository/Csv.h"
#include "repository/DetailDatabase.h"
#include "repository/Manifest.h"
#include "repository/NewPath.h"

#include <korodbc/host/RepositoryBuilder.h>
#include <korodbc/records/Registry.h>

#include <algorithm>
#include <charconv>
#include <fstream>
#include <map>
#include <optional>

namespace korodbc::host {

namespace fs = std::filesystem;

namespace {

struct CatalogueColumn {
    std::string name;
    std::string declaration;
    FieldKind kind = FieldKind::Text;
    const RecordDescription* target = nullptr; // of a link
};

struct CatalogueTable {
    std::string source, name, file;
    const RecordDescription* type = nullptr;
    std::vector<CatalogueColumn> columns;
    CsvTable text;
};

/// The number at the end of a numbered column's name, "Request12" for the pattern "Request%d"; 0 without.
int numberIn(std::string_view name, std::string_view pattern)
{
    const std::size_t mark = pattern.find("%d");
    if (mark == std::string_view::npos || name.substr(0, mark) != pattern.substr(0, mark))
        return 0;
    int number = 0;
    const auto end = std::from_chars(name.data() + mark, name.data() + name.size(), number);
    return end.ec == std::errc() &&
                   std::string_view(end.ptr, name.data() + name.size()) == pattern.substr(mark + 2)
               ? number
               : 0;
}

class Catalogue {
public:
    bool read(const fs::path& folder, std::string& error)
    {
        std::error_code code;
        if (!fs::is_directory(folder, code)) {
            error = "there is no catalogue folder " + folder.string();
            return false;
        }
        std::vector<fs::path> files;
        for (const auto& source : fs::directory_iterator(folder, code))
            if (source.is_directory())
                for (const auto& file : fs::directory_iterator(source.path(), code))
                    if (file.path().extension() == ".csv")
                        files.push_back(file.path());
        std::sort(files.begin(), files.end());
        for (const fs::path& file : files)
            readTable(file);
        for (CatalogueTable& table : m_tables)
            resolve(table);
        error = m_problems;
        return m_problems.empty();
    }

    const std::vector<CatalogueTable>& tables() const { return m_tables; }

private:
    void problem(const std::string& text) { m_problems += (m_problems.empty() ? "" : "\n") + text; }

    void readTable(const fs::path& file)
    {
        std::ifstream in(file, std::ios::binary);
        const std::string text((std::istreambuf_iterator<char>(in)), {});
        CatalogueTable table;
        table.file = file.string();
        table.name = file.stem().string();
        table.source = file.parent_path().filename().string();
        table.type = records::ofTable(table.name);
        std::string error;
        if (!readCsv(text, table.text, error)) {
            problem(table.file + ": " + error);
            return;
        }
        for (const std::string& heading : table.text.header)
            table.columns.push_back(column(table, heading));
        m_tables.push_back(std::move(table));
    }

    CatalogueColumn column(const CatalogueTable& table, const std::string& heading)
    {
        CatalogueColumn column;
        const std::size_t colon = heading.find(':');
        column.name = heading.substr(0, colon);
        if (colon != std::string::npos) {
            column.declaration = heading.substr(colon + 1);
            const auto type = typeOfDeclaration(column.declaration);
            column.kind = type == KorItemType::kInt      ? FieldKind::Integer
                          : type == KorItemType::kDouble ? FieldKind::Real
                                                         : FieldKind::Text;
            return column;
        }
        if (table.type == nullptr) {
            problem(table.file + ": column " + heading + " has no type; write \"" + heading + ":TEXT\"");
            return column;
        }
        const auto take = [&](const ColumnDescription& known) {
            column.kind = known.kind;
            column.target = known.target == nullptr ? nullptr : &known.target();
        };
        for (const ColumnDescription& known : table.type->columns) {
            if (known.name != heading)
                continue;
            take(known);
            if (known.role == ColumnRole::ItemOwner)
                column.target = ownerOf(*table.type);
            return column;
        }
        for (const ColumnDescription& known : table.type->numbered.columns) {
            if (numberIn(heading, known.name) == 0)
                continue;
            take(known);
            return column;
        }
        problem(table.file + ": the table has no column " + heading);
        return column;
    }

    static const RecordDescription* ownerOf(const RecordDescription& item)
    {
        for (const auto describe : records::all())
            if (describe().items.exists() && &describe().items.item() == &item)
                return &describe();
        return nullptr;
    }

    /// Keys of a table's rows by run name.
    const std::map<std::string, std::string>& keysOf(const RecordDescription& type)
    {
        auto [known, isNew] = m_keys.try_emplace(&type);
        if (!isNew || type.key < 0 || type.runName < 0)
            return known->second;
        for (const CatalogueTable& table : m_tables) {
            if (table.type != &type)
                continue;
            const auto at = [&](std::string_view name) {
                return std::find_if(table.columns.begin(), table.columns.end(),
                                    [&](const CatalogueColumn& c) { return c.name == name; }) -
                       table.columns.begin();
            };
            const auto key = static_cast<std::size_t>(at(type.keyColumn().name));
            const auto name = static_cast<std::size_t>(at(type.runNameColumn()->name));
            if (key < table.columns.size() && name < table.columns.size())
                for (const CsvTable::Row& row : table.text.rows)
                    known->second.emplace(row.cells[name], row.cells[key]);
        }
        return known->second;
    }

    /// Replaces "@Run name" cells by keys, and checks the numbers.
    void resolve(CatalogueTable& table)
    {
        for (CsvTable::Row& row : table.text.rows) {
            for (std::size_t i = 0; i < row.cells.size(); ++i) {
                std::string& cell = row.cells[i];
                const CatalogueColumn& column = table.columns[i];
                const auto where = [&] {
                    return table.file + " line " + std::to_string(row.line) + ", column " + column.name + ": ";
                };
                if (column.target != nullptr && cell.rfind('@', 0) == 0) {
                    const auto& keys = keysOf(*column.target);
                    const auto found = keys.find(cell.substr(1));
                    if (found == keys.end()) {
                        problem(where() + "table " + std::string(column.target->table) + " has no row named \"" +
                                cell.substr(1) + "\"");
                        continue;
                    }
                    cell = found->second;
                }
                if (cell.empty() || column.kind == FieldKind::Text)
                    continue;
                double real = 0;
                std::int64_t integer = 0;
                const char *begin = cell.data(), *end = cell.data() + cell.size();
                const bool isNumber = column.kind == FieldKind::Integer
                                          ? std::from_chars(begin, end, integer).ptr == end
                                          : std::from_chars(begin, end, real).ptr == end;
                if (!isNumber)
                    problem(where() + "\"" + cell + "\" is no " +
                            (column.kind == FieldKind::Integer ? "whole number" : "number"));
            }
        }
    }

    std::vector<CatalogueTable> m_tables;
    std::map<const RecordDescription*, std::map<std::string, std::string>> m_keys;
    std::string m_problems;
};

/// Columns of numbered groups beyond those that a new table has.
bool addNumberedColumns(Database& database, const CatalogueTable& table)
{
    Table* stored = database.table(KorString::fromUtf8(table.name));
    bool added = true, any = false;
    for (const CatalogueColumn& column : table.columns) {
        if (!added || stored == nullptr || stored->columnIndex(column.name) >= 0)
            continue;
        const char* declaration = column.kind == FieldKind::Integer ? " INT"
                                  : column.kind == FieldKind::Real  ? " FLOAT"
                                                                    : " VARCHAR(255)";
        added =
            database.run("ALTER TABLE " + bracketed(table.name) + " ADD " + bracketed(column.name) + declaration);
        any = true;
    }
    if (any)
        database.tablesChanged({table.name});
    return added;
}

bool fill(Database& database, const CatalogueTable& table, std::string& error)
{
    std::string names, marks;
    for (const CatalogueColumn& column : table.columns) {
        names += (names.empty() ? "" : ", ") + bracketed(column.name) +
                 (table.type == nullptr ? " " + column.declaration : "");
        marks += marks.empty() ? "?" : ", ?";
    }
    bool ok = true;
    if (table.type == nullptr) {
        ok = database.run("CREATE TABLE " + bracketed(table.name) + " (" + names + ")");
        names.clear();
        for (const CatalogueColumn& column : table.columns)
            names += (names.empty() ? "" : ", ") + bracketed(column.name);
    } else {
        ok = addNumberedColumns(database, table);
    }
    Statement* insert =
        ok ? database.prepare("INSERT INTO " + bracketed(table.name) + " (" + names + ") VALUES (" + marks + ")")
           : nullptr;
    for (const CsvTable::Row& row : table.text.rows) {
        if (insert == nullptr)
            break;
        for (std::size_t i = 0; i < row.cells.size(); ++i) {
            const std::string& cell = row.cells[i];
            const int position = static_cast<int>(i) + 1;
            if (table.columns[i].kind == FieldKind::Text) {
                insert->bind(position, KorString::fromUtf8(cell));
            } else if (cell.empty()) {
                insert->bindNull(position);
            } else {
                double real = 0;
                std::from_chars(cell.data(), cell.data() + cell.size(), real);
                if (table.columns[i].kind == FieldKind::Real)
                    insert->bind(position, real);
                else
                    insert->bind(position, static_cast<std::int64_t>(real));
            }
        }
        if (!database.finish(*insert)) {
            error = table.file + " line " + std::to_string(row.line) + ": " + database.lastError();
            return false;
        }
    }
    if (insert == nullptr)
        error = table.file + ": " + database.lastError();
    return insert != nullptr;
}

} // namespace

bool buildRepository(const fs::path& folder, const fs::path& catalogue,
                     const std::vector<CountryAddIn>& countryAddIns, const BuildProgress& progress,
                     std::string& error)
{
    std::error_code code;
    if (fs::exists(folder, code) && !(fs::is_directory(folder, code) && fs::is_empty(folder, code))) {
        error = folder.string() + " exists and is not empty; name a new folder";
        return false;
    }
    Catalogue texts;
    if (!texts.read(catalogue, error))
        return false;
    const fs::path target = fs::weakly_canonical(fs::absolute(folder, code), code);
    fs::create_directories(target.parent_path(), code);
    NewPath making(target);
    const fs::path& fresh = making.path();
    error = making.error().text;
    if (error.empty() && !fs::create_directory(fresh, code))
        error = fresh.string() + ": " + code.message();
    if (!error.empty()) {
        error = "cannot make the folder " + target.string() + ": " + error;
        return false;
    }
    Manifest manifest = Manifest::standard();
    manifest.countryAddIns = countryAddIns;
    const auto make = [&](eDSN source, const std::string& connection, const std::string& name) {
        ConnectionTarget named;
        if (!targetOfConnection(connection, fresh, named, error))
            return false;
        const std::string& file = named.file;
        fs::create_directories(fs::path(file).parent_path(), code);
        HostError reason;
        auto database = Database::open(file, Database::Access::Create, reason);
        if (!database || !createTables(*database, source, reason)) {
            error = reason.text;
            return false;
        }
        if (!database->beginWrite())
            error = file + ": " + database->lastError();
        for (const CatalogueTable& table : texts.tables())
            if (table.source == name && !fill(*database, table, error))
                return false;
        if (error.empty() && !(database->commit() && database->engine().settle()))
            error = file + ": " + database->lastError();
        return error.empty();
    };
    const int total = static_cast<int>(KorDSNDefinitions::kNumberOfDataSources - 1 + countryAddIns.size());
    int done = 0;
    bool made = true;
    for (unsigned dsn = 0; made && dsn < KorDSNDefinitions::kNumberOfDataSources; ++dsn) {
        if (dsn == KorDSNDefinitions::kCountryAddin)
            continue;
        const std::string name = KorDSNDefinitions::m_DataSourceNames[dsn].toUtf8();
        made = make(static_cast<eDSN>(dsn), manifest.connections[dsn], name);
        if (progress)
            progress(name, ++done, total);
    }
    for (const CountryAddIn& addIn : countryAddIns) {
        made = made && make(KorDSNDefinitions::kCountryAddin, addIn.connection, "CountryAddin-" + addIn.id);
        if (progress)
            progress(addIn.name, ++done, total);
    }
    if (!made || !manifest.save(fresh, error))
        return false;
    HostError reason;
    const bool placed = making.place(reason) == NewPath::Placed::Yes;
    error = reason.text;
    return placed;
}

} // namespace korodbc::host
