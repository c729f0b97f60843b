#include "Commands.h"
#include "Records.h"
#include "repository/Csv.h"

#include <korodbc/records/configuration/SectionRecords.h>
#include <korodbc/records/Registry.h>
#include <korodbc/repository/KorDatabaseAccess.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <limits>
#include <map>

namespace fs = std::filesystem;

namespace {

using korodbc::host::CsvTable;

/// In the order of what they can hold.
enum class Type { Integer, Real, Text };
constexpr const char* typeNames[] = {"INTEGER", "REAL", "TEXT"};

struct ImportColumn {
    std::string name;
    Type type = Type::Integer;
    int from = -1; // index in the file, -1: rows are numbered
    long filled = 0;
    std::string remark;
};

std::string trimmed(const std::string& text)
{
    const std::size_t first = text.find_first_not_of(" \t");
    return first == std::string::npos ? std::string()
                                      : text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

/// The smallest type that holds a cell. Numbers with leading zeros are texts: their zeros matter.
Type typeOf(const std::string& cell)
{
    const std::string text = trimmed(cell);
    const char *const begin = text.data(), *const end = begin + text.size();
    const char* digits = begin + (begin != end && *begin == '-');
    if (end - digits > 1 && digits[0] == '0' && digits[1] >= '0' && digits[1] <= '9')
        return Type::Text;
    int whole = 0;
    const auto asWhole = std::from_chars(begin, end, whole);
    if (asWhole.ec == std::errc() && asWhole.ptr == end)
        return Type::Integer;
    constexpr long long exact = 1LL << std::numeric_limits<double>::digits; // beyond it digits would be lost
    long long large = 0;
    const auto asLarge = std::from_chars(begin, end, large);
    if (asLarge.ptr == end && (asLarge.ec != std::errc() || large > exact || large < -exact))
        return Type::Text;
    double real = 0;
    const auto asReal = std::from_chars(begin, end, real);
    return asReal.ec == std::errc() && asReal.ptr == end && std::isfinite(real) ? Type::Real : Type::Text;
}

[[noreturn]] void badLine(const std::string& file, long line, const std::string& what)
{
    throw Failure{kFailed, file + " line " + std::to_string(line) + ": " + what + "; nothing was imported"};
}

std::string contentsOf(const std::string& file)
{
    std::error_code code;
    if (fs::is_directory(file, code))
        throw Failure{kFailed, file + " is a folder; name a CSV file in it"};
    if (!fs::exists(file, code))
        throw Failure{kFailed, "there is no file " + file};
    std::ifstream stream(file, std::ios::binary);
    std::string text{std::istreambuf_iterator<char>(stream), {}};
    if (!stream.good() && !stream.eof())
        throw Failure{kFailed, file + " cannot be read; check its permissions"};
    long line = 1;
    for (std::size_t begin = 0; begin < text.size(); ++line) {
        const std::size_t end = std::min(text.find('\n', begin), text.size());
        const std::string one = text.substr(begin, end - begin);
        if (one.find('\0') != std::string::npos || KorString::fromUtf8(one).toUtf8() != one)
            badLine(file, line, "it is no UTF-8 text; save the file as CSV in UTF-8");
        begin = end + 1;
    }
    return text;
}

/// The character that an option names: ",", ";" or "tab"; '\0' without one.
char separatorNamed(const std::string& name)
{
    if (name == "tab" || name == "\t")
        return '\t';
    if (!name.empty() && name != "," && name != ";")
        throw Failure{kUsage, quote(name) + " separates no cells; give --separator ',' or ';' or tab"};
    return name.empty() ? '\0' : name[0];
}

/// Throws when the file's heading is one cell that another separator would split.
void refuseOtherSeparator(const std::string& file, const std::string& text)
{
    const std::string heading = text.substr(0, text.find('\n'));
    const bool tab = heading.find('\t') != std::string::npos;
    if (heading.find(',') == std::string::npos && (tab || heading.find(';') != std::string::npos))
        badLine(file, 1,
                std::string("the heading is one cell with ") + (tab ? "tabs" : "semicolons") +
                    " in it; if they separate the cells, give --separator " + (tab ? "tab" : "';'") +
                    ", if not, --separator ','");
}

CsvTable readFile(const std::string& file, const std::string& separator)
{
    const char given = separatorNamed(separator);
    const std::string text = contentsOf(file);
    if (given == '\0')
        refuseOtherSeparator(file, text);
    CsvTable table;
    std::string error;
    if (!korodbc::host::readCsv(text, table, error, given == '\0' ? ',' : given))
        throw Failure{kFailed, file + " " + error + "; nothing was imported"};
    if (table.rows.empty())
        throw Failure{kFailed, file + " has a heading and no rows; nothing was imported"};
    return table;
}

bool hasControlCharacters(const std::string& text)
{
    return std::any_of(text.begin(), text.end(),
                       [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7f; });
}

/// The columns of the file with their names; brackets, which no statement could quote, as parentheses, and names
/// that differ in case alone with a number.
std::vector<ImportColumn> headingOf(const std::string& file, const CsvTable& table)
{
    std::vector<ImportColumn> columns;
    for (const std::string& cell : table.header) {
        ImportColumn column;
        column.from = static_cast<int>(columns.size());
        column.name = trimmed(cell);
        if (column.name.empty() || hasControlCharacters(column.name))
            badLine(file, 1, "column " + std::to_string(columns.size() + 1) + " has no name that can be used");
        std::replace(column.name.begin(), column.name.end(), '[', '(');
        std::replace(column.name.begin(), column.name.end(), ']', ')');
        // names in a database do not tell upper from lower case
        const std::string name = column.name;
        const auto taken = [&] {
            return std::any_of(columns.begin(), columns.end(),
                               [&](const ImportColumn& other) { return sameName(other.name, column.name); });
        };
        if (std::count(table.header.begin(), table.header.begin() + column.from, cell) > 0)
            badLine(file, 1, "two columns have the name " + quote(name));
        for (int number = 2; taken(); ++number)
            column.name = name + "_" + std::to_string(number);
        if (column.name != trimmed(cell))
            column.remark = "in the file: " + trimmed(cell);
        columns.push_back(std::move(column));
    }
    return columns;
}

void addRemark(ImportColumn& column, const std::string& text)
{
    column.remark += (column.remark.empty() ? "" : "; ") + text;
}

void inferType(const CsvTable& table, ImportColumn& column)
{
    bool hasNumbers = false;
    const CsvTable::Row* firstText = nullptr;
    for (const CsvTable::Row& row : table.rows) {
        const std::string& cell = row.cells[static_cast<std::size_t>(column.from)];
        if (trimmed(cell).empty())
            continue;
        const Type type = typeOf(cell);
        ++column.filled;
        column.type = std::max(column.type, type);
        hasNumbers = hasNumbers || type != Type::Text;
        if (type == Type::Text && firstText == nullptr)
            firstText = &row;
    }
    if (column.filled == 0)
        column.type = Type::Text;
    if (hasNumbers && firstText != nullptr)
        addRemark(column, "line " + std::to_string(firstText->line) + " is no number: " +
                              quote(trimmed(
                                  fitted(trimmed(firstText->cells[static_cast<std::size_t>(column.from)]), 20))));
}

/// The key column of the file: a key in every row, none twice.
void checkKeys(const std::string& file, const CsvTable& table, ImportColumn& key)
{
    if (key.type == Type::Real)
        key.type = Type::Text;
    std::map<std::string, int> lines;
    for (const CsvTable::Row& row : table.rows) {
        std::string text = trimmed(row.cells[static_cast<std::size_t>(key.from)]);
        if (text.empty())
            badLine(file, row.line, "the key is missing");
        if (text == "-0" && key.type == Type::Integer)
            text = "0";
        const auto [known, isNew] = lines.emplace(text, row.line);
        if (!isNew)
            badLine(file, row.line,
                    "the key " + quote(text) + " stands on line " + std::to_string(known->second) + " already");
    }
    addRemark(key, "key");
}

/// The columns of the new table: key, run name, and the others as the file has them.
std::vector<ImportColumn> columnsOf(const std::string& file, const CsvTable& table)
{
    std::vector<ImportColumn> columns = headingOf(file, table);
    for (ImportColumn& column : columns)
        inferType(table, column);
    const auto named = [&](auto begin, const char* name) {
        return std::find_if(begin, columns.end(),
                            [=](const ImportColumn& column) { return sameName(column.name, name); });
    };
    const auto key = named(columns.begin(), "Key");
    if (key != columns.end()) {
        checkKeys(file, table, *key);
        std::rotate(columns.begin(), key, key + 1);
    } else {
        columns.insert(columns.begin(), {"Key", Type::Integer, -1, static_cast<long>(table.rows.size()),
                                         "key, the rows are numbered"});
    }
    if (columns.size() < 2)
        badLine(file, 1, "there is no column beside the key");
    auto runName = named(columns.begin() + 1, "RunName");
    if (runName == columns.end())
        runName = named(columns.begin() + 1, "Name");
    if (runName == columns.end())
        runName = columns.begin() + 1;
    std::rotate(columns.begin() + 1, runName, runName + 1);
    columns[1].type = Type::Text; // names are looked up as texts
    addRemark(columns[1], "name of the row");
    return columns;
}

/// Throws unless a table with that name can be the user's.
void checkName(const std::string& name, const Source& source, bool replace)
{
    if (trimmed(name) != name || name.empty() || hasControlCharacters(name) ||
        name.find_first_of("[]") != std::string::npos || korodbc::host::isReservedName(name))
        throw Failure{kUsage, quote(name) + " cannot be the name of a table"};
    const std::string physical = KorDatabaseAccess::getTableName(KorString::fromUtf8(name)).toUtf8();
    if (!sameName(physical, name))
        throw Failure{kUsage, quote(name) + " is another name of table " + physical + "; choose another name"};
    const auto refuse = [&](std::string_view table, std::string_view record) {
        throw Failure{kUsage, "table " + std::string(table) + " is described by record type " +
                                  std::string(record) + " and no user table; choose another name"};
    };
    for (const auto describe : records::all()) {
        const std::string table(describe().table);
        if (sameName(table, name) || sameName(name.substr(0, table.size() + 4), table + "_VEL"))
            refuse(table, describe().record); // copies of edited tables included
    }
    KorArray<StructProfileClass> classes;
    StructProfileClassMarshal::getTableAllSources(classes);
    for (const StructProfileClass& profileClass : classes)
        if (sameName(profileClass.tableName.toUtf8(), name))
            refuse(name, "StructSection");
    KorArray<StructCompoundMaster> compounds;
    StructCompoundMasterMarshal::getTableAllSources(compounds);
    for (const StructCompoundMaster& compound : compounds)
        if (sameName(compound.compoundTable.toUtf8(), name))
            refuse(name, "StructCompoundMaster");
    const auto isAddIn = [](const Source& one) {
        return one.dsn == KorDSNDefinitions::kAddin || one.dsn == KorDSNDefinitions::kCountryAddin;
    };
    for (const Source& other : usableSources()) {
        const bool isSame = other.dsn == source.dsn && other.index == source.index;
        if (!isSame && (isAddIn(other) || isAddIn(source)))
            continue; // add-ins have rows of their own for the tables of others
        for (const std::string& stored : tableNames(other)) {
            if (!sameName(stored, name) || (isSame && replace))
                continue;
            throw Failure{kFailed, "table " + stored + " exists already in data source " + other.name +
                                       (isSame ? "; fill it anew with --replace"
                                               : "; choose another name, or that data source with --source")};
        }
    }
}

std::string literal(const ImportColumn& column, const CsvTable::Row& row, long number)
{
    if (column.from < 0)
        return std::to_string(number);
    const std::string& cell = row.cells[static_cast<std::size_t>(column.from)];
    const std::string trimmedCell = trimmed(cell);
    if (column.type != Type::Text)
        return trimmedCell.empty() ? "NULL" : trimmedCell;
    std::string text = "'";
    for (const char c : cell)
        text.append(c == '\'' ? 2 : 1, c);
    return text += '\'';
}

bool run(const Source& source, const std::string& statement)
{
    return KorDatabaseAccess::doSQLStatement(source.dsn, KorString::fromUtf8(statement)) == 1;
}

/// Fills a new table, several rows with a statement.
bool fill(const Source& source, const std::string& table, const std::vector<ImportColumn>& columns,
          const CsvTable& csv)
{
    constexpr std::size_t mostCells = 4000, mostBytes = 200'000; // of a statement
    std::string declarations;
    for (const ImportColumn& column : columns)
        declarations += (declarations.empty() ? "[" : ", [") + column.name + "] " +
                        typeNames[static_cast<int>(column.type)] +
                        (declarations.empty() ? " PRIMARY KEY NOT NULL" : "");
    if (!run(source, "CREATE TABLE [" + table + "] (" + declarations + ")"))
        return false;
    const std::string insert = "INSERT INTO [" + table + "] VALUES ";
    std::string rows;
    std::size_t cells = 0;
    long number = 0;
    for (const CsvTable::Row& row : csv.rows) {
        ++number;
        std::string values;
        for (const ImportColumn& column : columns)
            values += (values.empty() ? "(" : ", ") + literal(column, row, number);
        rows += (rows.empty() ? "" : ", ") + values + ")";
        cells += columns.size();
        const bool isLast = number == static_cast<long>(csv.rows.size());
        if (!isLast && cells + columns.size() <= mostCells && rows.size() < mostBytes)
            continue;
        if (!run(source, insert + rows))
            return false;
        rows.clear();
        cells = 0;
    }
    return true;
}

/// Makes the table, in the place of an old one of that name. Throws, with everything as before, when that fails.
void store(const Source& source, const std::string& table, const std::vector<ImportColumn>& columns,
           const CsvTable& csv)
{
    const KorDSNRequest request(source.dsn, source.index);
    const bool replaces = KorDatabaseAccess::doesTableExists(source.dsn, KorString::fromUtf8(table)) == 1;
    KorDatabaseBatch batch;
    const bool filled =
        (!replaces || run(source, "DROP TABLE [" + table + "]")) && fill(source, table, columns, csv);
    const korodbc::host::HostError reason =
        korodbc::host::lastFailure(); // ending the batch has reasons of its own
    const int stored = filled ? batch.end(1) : batch.undo();
    if (stored != 1)
        throw Failure{kFailed, "table " + table + " cannot be written into data source " + source.name +
                                   advised(filled ? korodbc::host::lastFailure() : reason) +
                                   "; nothing was imported"};
}

} // namespace

void runImportCsv(const GlobalOptions& global, const ImportCsvOptions& options)
{
    const StartedSession session(global);
    const Source source = sourceNamed(options.source);
    checkName(options.table, source, options.replace);
    const CsvTable csv = readFile(options.file, options.separator);
    const std::vector<ImportColumn> columns = columnsOf(options.file, csv);
    store(source, options.table, columns, csv);
    const long rows = numberOfRows({options.table, source, nullptr});
    if (rows != static_cast<long>(csv.rows.size()))
        throw Failure{kFailed, "table " + options.table + " has " + counted(rows, "row") + " instead of " +
                                   std::to_string(csv.rows.size()) + because()};
    Sheet sheet{{{"Column", false}, {"Type", false}, {"Filled", true}, {"Remark", false}}, {}};
    for (const ImportColumn& column : columns)
        sheet.rows.push_back(
            {column.name, typeNames[static_cast<int>(column.type)], std::to_string(column.filled), column.remark});
    printText(sheet);
    std::printf("%s in table %s of data source %s\n", counted(rows, "row").c_str(), quote(options.table).c_str(),
                source.name.c_str());
}
