#include "PlainStyleCopy.h"

#include "Database.h"

#include <algorithm>
#include <memory>
#include <unordered_map>
#include <vector>

namespace bench {

namespace {

struct Cell {
    int type = SQLITE_NULL;
    std::int64_t integer = 0;
    double real = 0;
    std::string text;

    bool operator==(const Cell& other) const
    {
        return type == other.type && (type != SQLITE_INTEGER || integer == other.integer) &&
               (type != SQLITE_FLOAT || real == other.real) && (type != SQLITE_TEXT || text == other.text);
    }
};
using Row = std::vector<Cell>;

enum class Naming { None, Unique, Reused };

struct Reference {
    const char* column;
    const char* table;
};

struct TableShape {
    const char* name;
    Naming naming;
    std::vector<Reference> references;
    const char* items = nullptr;    // table of its items
    const char* owner = nullptr;    // in an item table: column of the owner's key
    const char* numbered = nullptr; // table that the numbered columns refer to
    const char* numberedColumn = nullptr;
    const char* numberedCount = nullptr;
};

const std::vector<TableShape>& styleShapes()
{
    static const std::vector<TableShape> list = {
        {"DetailMasterTable",
         Naming::None,
         {{"DetailStyle", "DetailStyle"}, {"BaseCategory", "DetBaseCategories"}}},
        {"DetailStyle",
         Naming::Unique,
         {{"ViewArrangeStrategy", "DetViewArrangeStrategy"}},
         nullptr,
         nullptr,
         "DetViewRequest",
         "Request",
         "NumberRequests"},
        {"DetBaseCategories", Naming::Reused, {}},
        {"DetViewArrangeStrategy", Naming::Unique, {}},
        {"DetViewRequest",
         Naming::Unique,
         {{"SystemAndBox", "DetViewSystemAndBox"},
          {"ObjReprMap", "DetObjReprMapsNew"},
          {"DimStrategy", "DetViewDimStrategyNew"},
          {"LengthClipXY", "DetViewLengthClip"}},
         "DetViewRequestCategories"},
        {"DetViewRequestCategories",
         Naming::None,
         {{"BaseCategory", "DetBaseCategories"}},
         nullptr,
         "DetViewRequest"},
        {"DetViewSystemAndBox", Naming::Unique, {}},
        {"DetViewLengthClip", Naming::Unique, {}},
        {"DetObjReprMapsNew", Naming::Unique, {}, "DetObjReprMapItems"},
        {"DetObjReprMapItems",
         Naming::None,
         {{"ObjQualifier", "DetObjQualifierSet"},
          {"Appearance", "DetObjAppearance"},
          {"AnnotationStrategy", "DetObjAnnotationStrategy"},
          {"LineType", "Linetypes"}},
         nullptr,
         "Key"},
        {"DetObjAppearance", Naming::Unique, {{"HatchSettings", "DetHatchSettings"}}},
        {"DetHatchSettings", Naming::Unique, {}},
        {"Linetypes", Naming::Reused, {}},
        {"DetObjQualifierSet", Naming::Unique, {{"Group", "DetObjQualifierSetGroup"}}, "DetObjQualifierSetItem"},
        {"DetObjQualifierSetItem", Naming::None, {}, nullptr, "IdDetObjQualifierSet"},
        {"DetObjQualifierSetGroup", Naming::Reused, {}},
        {"DetObjAnnotationStrategy",
         Naming::Unique,
         {{"AnnotationType", "DetAnnotationType"},
          {"ArrangerControl", "DetArrangerControl"},
          {"ArrangerStrategy", "DetArrangerStrategy"},
          {"Group", "DetObjAnnotationGroup"}}},
        {"DetAnnotationType", Naming::Unique, {}},
        {"DetArrangerControl", Naming::Unique, {}},
        {"DetArrangerStrategy", Naming::Unique, {}},
        {"DetObjAnnotationGroup", Naming::Reused, {}},
        {"DetViewDimStrategyNew", Naming::Unique, {}, "DetViewDimStrategyItems"},
        {"DetViewDimStrategyItems", Naming::None, {{"RequestLinear", "DetViewDimRequestLinear"}}, nullptr, "Key"},
        {"DetViewDimRequestLinear",
         Naming::Unique,
         {{"Group", "DetViewDimRequestLinearGroup"}},
         nullptr,
         nullptr,
         "DetViewDimPointSelection",
         "Point",
         "NumberPoints"},
        {"DetViewDimRequestLinearGroup", Naming::Reused, {}},
        {"DetViewDimPointSelection", Naming::Unique, {{"Objects", "DetObjQualifierSet"}}},
    };
    return list;
}

/// What a process reaches before it comes to the styles.
const std::vector<TableShape>& processShapes()
{
    static const std::vector<TableShape> list = {
        {"DetailProcessDefinition",
         Naming::Unique,
         {{"Category", "DetailProcessCategories"}},
         nullptr,
         nullptr,
         "DetailProcessStep",
         "Step",
         "NumberSteps"},
        {"DetailProcessStep",
         Naming::Unique,
         {{"Category", "DetailProcessCategories"},
          {"FilenameSelector", "DetailFilenameSelector"},
          {"AlternativeScales", "DetailProcessScales"},
          {"DependOnMainView", "DetailProcessMain2CutScale"},
          {"StyleMap", "DetailStyleMapNew"}}},
        {"DetailProcessCategories", Naming::Reused, {}},
        {"DetailFilenameSelector", Naming::Unique, {}},
        {"DetailProcessScales", Naming::Unique, {}, "DetailProcessScalesItem"},
        {"DetailProcessScalesItem", Naming::None, {}, nullptr, "DetProcScaleId"},
        {"DetailProcessMain2CutScale", Naming::Unique, {}},
        {"DetailStyleMapNew", Naming::Unique, {}, "DetailStyleMapItems"},
        {"DetailStyleMapItems",
         Naming::None,
         {{"ObjQualifierSet", "DetObjQualifierSet"}, {"DetailStyle", "DetailStyle"}},
         nullptr,
         "Key"},
    };
    return list;
}

struct Table {
    const TableShape* shape;
    Query select, insert, selectInTarget;
    std::vector<std::pair<int, Table*>> references;
    Table* items = nullptr;
    Table* numbered = nullptr;
    int key = -1, name = -1, owner = -1, count = -1, firstNumbered = -1;
    int columns = 0;  // in the source
    int inserted = 0; // of them, in the target
    std::vector<std::string> columnNames;
    std::unordered_map<std::int64_t, std::int64_t> copied;
    std::unordered_map<std::string, std::int64_t> names; // in the target, with their keys
    std::int64_t lastKey = 0;
};

class Copy {
public:
    Copy(Database& source, Database& target, bool reuseEqualSets, bool processes)
        : m_source(source), m_target(target), m_reuseEqualSets(reuseEqualSets)
    {
        const auto add = [this](const TableShape& shape) {
            auto table = std::make_unique<Table>();
            table->shape = &shape;
            m_tables.emplace(shape.name, std::move(table));
        };
        for (const TableShape& shape : styleShapes())
            add(shape);
        if (processes) {
            for (const TableShape& shape : processShapes())
                add(shape);
            m_mastersOfStyle = m_source.prepare("SELECT Key FROM DetailMasterTable WHERE DetailStyle = ?");
        }
        for (auto& [name, table] : m_tables)
            prepare(*table);
    }

    std::int64_t copy(Table& table, std::int64_t key);
    Table& table(const char* name) { return *m_tables.at(name); }
    long read() const { return m_read; }

private:
    void prepare(Table& table);
    void prepareInsert(Table& table);
    void widen(Table& table, std::int64_t items);
    static int load(Query& query, int columns, Row& row);
    static void bind(Query& query, const Row& row);
    bool follow(Table& table, Row& row);
    bool copyMasters(std::int64_t style);
    std::int64_t equalSet(Table& table, const Row& row, const std::vector<Row>& items);
    void makeUnique(Table& table, std::string& name);

    Database& m_source;
    Database& m_target;
    bool m_reuseEqualSets;
    std::unordered_map<std::string, std::unique_ptr<Table>> m_tables;
    Query m_mastersOfStyle; // in the copy of a process, which comes to its styles first
    long m_read = 0;
};

void Copy::prepare(Table& table)
{
    const TableShape& shape = *table.shape;
    const std::string name = shape.name;
    std::unordered_map<std::string, int> at;
    std::string columns;
    Query info = m_source.prepare("SELECT name FROM pragma_table_info('" + name + "')");
    for (; info.step(); ++table.columns) {
        const std::string column(info.text(0));
        at.emplace(column, table.columns);
        columns += (columns.empty() ? "[" : ", [") + column + "]";
        table.columnNames.push_back(column);
        if (shape.numbered != nullptr && table.firstNumbered < 0 &&
            column == std::string(shape.numberedColumn) + "1")
            table.firstNumbered = table.columns;
    }
    table.key = at.at("Key");
    table.name = shape.naming == Naming::None ? -1 : at.at("RunName");
    for (const Reference& reference : shape.references)
        table.references.emplace_back(at.at(reference.column), m_tables.at(reference.table).get());
    if (shape.items != nullptr)
        table.items = m_tables.at(shape.items).get();
    if (shape.numbered != nullptr) {
        table.numbered = m_tables.at(shape.numbered).get();
        table.count = at.at(shape.numberedCount);
        table.inserted =
            static_cast<int>(m_target.value("SELECT count(*) FROM pragma_table_info('" + name + "')"));
    }
    const std::string by = shape.owner != nullptr ? shape.owner : "Key";
    table.owner = at.at(by);
    const std::string rows = "SELECT " + columns + " FROM [" + name + "] WHERE [" + by + "] = ?" +
                             (shape.owner != nullptr ? " ORDER BY rowid" : "");
    table.select = m_source.prepare(rows);
    if (table.numbered == nullptr)
        table.selectInTarget = m_target.prepare(rows);
    // numbered columns that the target lacks come with the first row that needs them
    table.inserted = table.numbered == nullptr ? table.columns : std::min(table.inserted, table.columns);
    prepareInsert(table);
    table.lastKey = m_target.value("SELECT max(Key) FROM [" + name + "]");
    if (table.name >= 0) {
        Query names = m_target.prepare("SELECT RunName, Key FROM [" + name + "]");
        while (names.step())
            table.names.emplace(names.text(0), names.integer(1));
    }
}

void Copy::prepareInsert(Table& table)
{
    std::string columns, marks;
    for (int column = 0; column < table.inserted; ++column) {
        columns += (column == 0 ? "[" : ", [") + table.columnNames[static_cast<std::size_t>(column)] + "]";
        marks += column == 0 ? "?" : ", ?";
    }
    table.insert = m_target.prepare("INSERT INTO [" + std::string(table.shape->name) + "] (" + columns +
                                    ") VALUES (" + marks + ")");
}

/// Adds the numbered columns that a row with so many items needs.
void Copy::widen(Table& table, std::int64_t items)
{
    const int needed = table.firstNumbered + static_cast<int>(items);
    if (needed <= table.inserted)
        return;
    for (; table.inserted < needed; ++table.inserted)
        m_target.run("ALTER TABLE [" + std::string(table.shape->name) + "] ADD COLUMN " +
                     table.columnNames[static_cast<std::size_t>(table.inserted)] + " INT");
    prepareInsert(table);
}

/// Takes the next row into `row`; 0 at the end.
int Copy::load(Query& query, int columns, Row& row)
{
    if (!query.step())
        return 0;
    row.resize(static_cast<std::size_t>(columns));
    for (int column = 0; column < columns; ++column) {
        Cell& cell = row[static_cast<std::size_t>(column)];
        cell.type = sqlite3_column_type(query.handle(), column);
        if (cell.type == SQLITE_INTEGER)
            cell.integer = query.integer(column);
        else if (cell.type == SQLITE_FLOAT)
            cell.real = query.real(column);
        else if (cell.type == SQLITE_TEXT)
            cell.text = query.text(column);
    }
    return 1;
}

void Copy::bind(Query& query, const Row& row)
{
    int position = 0;
    for (const Cell& cell : row) {
        ++position;
        if (cell.type == SQLITE_INTEGER)
            query.bind(position, cell.integer);
        else if (cell.type == SQLITE_FLOAT)
            query.bind(position, cell.real);
        else if (cell.type == SQLITE_TEXT)
            query.bind(position, std::string_view(cell.text));
        else
            sqlite3_bind_null(query.handle(), position);
    }
}

/// Copies what the row refers to and puts the new keys in.
bool Copy::follow(Table& table, Row& row)
{
    for (const auto& [column, target] : table.references) {
        std::int64_t& key = row[static_cast<std::size_t>(column)].integer;
        if (key == -1 && target->shape->name == std::string_view("Linetypes"))
            continue;
        key = copy(*target, key);
        if (key < 0)
            return false;
    }
    if (table.numbered == nullptr)
        return true;
    const std::int64_t count = row[static_cast<std::size_t>(table.count)].integer;
    for (std::int64_t i = 0; i < count; ++i) {
        std::int64_t& key = row[static_cast<std::size_t>(table.firstNumbered + i)].integer;
        key = copy(*table.numbered, key);
        if (key < 0)
            return false;
    }
    return true;
}

std::int64_t Copy::equalSet(Table& table, const Row& row, const std::vector<Row>& items)
{
    const auto found = table.names.find(row[static_cast<std::size_t>(table.name)].text);
    if (found == table.names.end())
        return -1;
    Row other;
    table.selectInTarget.bind(1, found->second);
    const bool there = load(table.selectInTarget, table.columns, other) != 0;
    table.selectInTarget.reset();
    if (!there)
        return -1;
    other[static_cast<std::size_t>(table.key)] = row[static_cast<std::size_t>(table.key)];
    bool equal = other == row;
    std::size_t count = 0;
    table.items->selectInTarget.bind(1, found->second);
    while (equal && load(table.items->selectInTarget, table.items->columns, other) != 0) {
        equal = count < items.size();
        if (!equal)
            break;
        for (const int column : {table.items->key, table.items->owner})
            other[static_cast<std::size_t>(column)] = items[count][static_cast<std::size_t>(column)];
        equal = other == items[count++];
    }
    table.items->selectInTarget.reset();
    return equal && count == items.size() ? found->second : -1;
}

void Copy::makeUnique(Table& table, std::string& name)
{
    if (!table.names.contains(name))
        return;
    std::string candidate = "Copy of " + name;
    for (int number = 1; table.names.contains(candidate); ++number)
        candidate = "Copy (" + std::to_string(number) + ") " + name;
    name = std::move(candidate);
}

/// Returns the key in the target, or -1.
std::int64_t Copy::copy(Table& table, std::int64_t key)
{
    if (const auto done = table.copied.find(key); done != table.copied.end())
        return done->second;
    Row row;
    table.select.bind(1, key);
    const bool there = load(table.select, table.columns, row) != 0;
    table.select.reset();
    if (!there)
        return -1;
    ++m_read;
    const auto reuse = [&](std::int64_t known) { return table.copied.emplace(key, known).first->second; };
    if (table.shape->naming == Naming::Reused) {
        const auto known = table.names.find(row[static_cast<std::size_t>(table.name)].text);
        if (known != table.names.end())
            return reuse(known->second);
    }
    std::vector<Row> items;
    if (table.items != nullptr) {
        table.items->select.bind(1, key);
        Row item;
        while (load(table.items->select, table.items->columns, item) != 0)
            items.push_back(std::move(item));
        table.items->select.reset();
        m_read += static_cast<long>(items.size());
    }
    if (!follow(table, row))
        return -1;
    for (Row& item : items)
        if (!follow(*table.items, item))
            return -1;
    if (m_reuseEqualSets && table.shape->name == std::string_view("DetObjQualifierSet"))
        if (const std::int64_t known = equalSet(table, row, items); known >= 0)
            return reuse(known);
    const std::int64_t newKey = ++table.lastKey;
    row[static_cast<std::size_t>(table.key)].integer = newKey;
    if (table.name >= 0) {
        std::string& name = row[static_cast<std::size_t>(table.name)].text;
        makeUnique(table, name);
        table.names.emplace(name, newKey);
    }
    if (table.numbered != nullptr) {
        widen(table, row[static_cast<std::size_t>(table.count)].integer);
        row.resize(static_cast<std::size_t>(table.inserted));
    }
    bind(table.insert, row);
    table.insert.run();
    for (Row& item : items) {
        if (table.items->owner != table.items->key)
            item[static_cast<std::size_t>(table.items->key)].integer = ++table.items->lastKey;
        item[static_cast<std::size_t>(table.items->owner)].integer = newKey;
        bind(table.items->insert, item);
        table.items->insert.run();
    }
    table.copied.emplace(key, newKey);
    const bool hasMasters =
        m_mastersOfStyle.handle() != nullptr && table.shape->name == std::string_view("DetailStyle");
    return hasMasters && !copyMasters(key) ? -1 : newKey;
}

bool Copy::copyMasters(std::int64_t style)
{
    std::vector<std::int64_t> masters;
    m_mastersOfStyle.bind(1, style);
    while (m_mastersOfStyle.step())
        masters.push_back(m_mastersOfStyle.integer(0));
    m_mastersOfStyle.reset();
    return std::all_of(masters.begin(), masters.end(),
                       [this](std::int64_t key) { return copy(table("DetailMasterTable"), key) >= 0; });
}

long copyFrom(const char* table, Database& source, Database& target, int key, bool reuseEqualSets, bool process)
{
    target.run("BEGIN IMMEDIATE");
    Copy copy(source, target, reuseEqualSets, process);
    require(copy.copy(copy.table(table), key) >= 0, std::string("not copied: ") + table);
    target.run("COMMIT");
    return copy.read();
}

} // namespace

long copyStyle(Database& source, Database& target, int masterKey, bool reuseEqualSets)
{
    return copyFrom("DetailMasterTable", source, target, masterKey, reuseEqualSets, false);
}

long copyProcess(Database& source, Database& target, int processKey, bool reuseEqualSets)
{
    return copyFrom("DetailProcessDefinition", source, target, processKey, reuseEqualSets, true);
}

} // namespace bench
