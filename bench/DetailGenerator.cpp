#include "DetailGenerator.h"

#include "Database.h"
#include "repository/DetailDatabase.h"

#include <korodbc/records/AnyRecord.h>
#include <korodbc/records/detail/DetailAnnotationRecords.h>
#include <korodbc/records/detail/DetailObjectRecords.h>
#include <korodbc/records/detail/DetailProcessRecords.h>
#include <korodbc/records/detail/DetailStyleRecords.h>
#include <korodbc/records/detail/DetailViewRecords.h>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>
#include <memory>
#include <string_view>
#include <utility>
#include <vector>

namespace bench {

namespace {

/// The splitmix64 sequence: the same numbers with every standard library.
class Random {
public:
    explicit Random(std::uint64_t seed) : m_state(seed) {}
    std::uint64_t next()
    {
        std::uint64_t z = m_state += 0x9E3779B97F4A7C15u;
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9u;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EBu;
        return z ^ (z >> 31);
    }
    long below(long limit) { return static_cast<long>(next() % static_cast<std::uint64_t>(limit)); }
    int below(int limit) { return static_cast<int>(below(static_cast<long>(limit))); }
    bool chance(double share) { return static_cast<double>(next() >> 11) * 0x1p-53 < share; }
    template <class T, std::size_t N>
    const T& of(const T (&values)[N])
    {
        return values[below(static_cast<long>(N))];
    }

private:
    std::uint64_t m_state;
};

const char* const subjects[] = {"Column", "Beam",        "Bracing Ø20", "End plate 'A'", "Stiffener",
                                "Purlin", "Gusset [2]",  "梁",          "Handrail",      "Träger",
                                "Splice", "Haunch 🏗", "Stair tread", "Anchor 100%",   "Rail"};
const char* const endings[] = {"", "a", "ab", "Ü", "梁", "🏗🏗", "abc", "xyz", "ABC"};
constexpr double infinity = std::numeric_limits<double>::infinity();
const double oddReals[] = {infinity, -infinity, std::numeric_limits<double>::quiet_NaN(), -0.0, 1e300, -1e300,
                           5e-324,   1e-10};
const double smallSteps[] = {2e-11, 6e-11, 9.9e-11, 1e-10, 1.01e-10, 1e-9, 1e-6};

/// The rows of one table as far as they are made.
struct Rows {
    explicit Rows(const RecordDescription& type) : records(type) {}
    AnyRecords records;
    std::vector<int> keys;                  // ascending
    std::vector<long> classOf;              // by position: rows made equal have the same
    std::vector<std::vector<long>> classes; // positions
    long nextUnused = 0;

    long length() const { return static_cast<long>(keys.size()); }
    long find(int key) const
    {
        const auto place = std::lower_bound(keys.begin(), keys.end(), key);
        return place == keys.end() || *place != key ? -1 : static_cast<long>(place - keys.begin());
    }
};

/// One table to be filled.
struct Plan {
    const RecordDescription& (*type)();
    int weight; // records, relative to the other tables
    int fewestItems = 0, mostItems = 0;
    int fixedRows = 0;  // this many records, whatever the size of the database
    bool copies = true; // has duplicates
};

// referred to before referring
const Plan plans[] = {
    {&descriptionOf<StructDetObjQualifierSetGroup>, 0, 0, 0, 5, false},
    {&descriptionOf<StructDetObjAnnotationGroup>, 0, 0, 0, 5, false},
    {&descriptionOf<StructDetViewDimRequestLinearGroup>, 0, 0, 0, 5, false},
    {&descriptionOf<StructLinetypes>, 0, 0, 0, 8, false},
    {&descriptionOf<StructDetBaseCategory>, 0, 0, 0, 5, false},
    {&descriptionOf<StructDetailProcessCategory>, 0, 0, 0, 4, false},
    {&descriptionOf<StructDetailProcessSelection>, 0, 0, 0, 4, false},
    {&descriptionOf<StructDetailProcessSort>, 0, 0, 0, 4, false},
    {&descriptionOf<StructDetHatchSettings>, 10, 0, 0, 0, false},
    {&descriptionOf<StructDetObjAppearance>, 30, 0, 0, 0, false},
    {&descriptionOf<StructDetObjQualifierSet>, 50, 1, 4},
    {&descriptionOf<StructDetAnnotationType>, 30},
    {&descriptionOf<StructDetArrangerControl>, 20, 1, 5},
    {&descriptionOf<StructDetArrangerStrategy>, 20, 1, 5},
    {&descriptionOf<StructDetObjAnnotationStrategy>, 50},
    {&descriptionOf<StructDetObjReprMap>, 15, 1, 9},
    {&descriptionOf<StructDetViewDimPointSelection>, 60},
    {&descriptionOf<StructDetViewDimRequestLinear>, 50, 1, 5},
    {&descriptionOf<StructDetViewDimStrategy>, 15, 1, 7},
    {&descriptionOf<StructDetViewSystemAndBox>, 40},
    {&descriptionOf<StructDetViewLengthClip>, 30},
    {&descriptionOf<StructDetViewRequest>, 60},
    {&descriptionOf<StructDetViewRequestCategory>, 70},
    {&descriptionOf<StructDetViewArrangeStrategy>, 20},
    {&descriptionOf<StructDetailStyle>, 60, 1, 6},
    {&descriptionOf<StructDetailMaster>, 30},
    {&descriptionOf<StructDetailFilenameSelector>, 15},
    {&descriptionOf<StructDetProcessScales>, 15, 1, 4},
    {&descriptionOf<StructDetailProcessMain2CutScale>, 15, 1, 6},
    {&descriptionOf<StructDetailStyleMap>, 60, 1, 3},
    {&descriptionOf<StructDetailProcessStep>, 50},
    {&descriptionOf<StructDetailProcessDefinition>, 20, 1, 6},
};

bool isValue(const ColumnDescription& column) { return column.role == ColumnRole::Value; }
bool isPlain(const ColumnDescription& column)
{
    const bool isLink = column.link == LinkKind::Reference || column.link == LinkKind::Lookup;
    return isValue(column) && !isLink && column.name != "Description";
}

/// The first plain column, integers before reals before texts; nullptr without.
const ColumnDescription* plainColumn(std::span<const ColumnDescription> columns)
{
    for (const FieldKind kind : {FieldKind::Integer, FieldKind::Real, FieldKind::Text})
        for (const ColumnDescription& column : columns)
            if (isPlain(column) && column.kind == kind)
                return &column;
    return nullptr;
}

std::span<const ColumnDescription> itemColumns(const RecordDescription& type)
{
    return type.numbered.exists() ? type.numbered.columns : type.items.item().columns;
}

/// Of the item counted from 0: "Angle3" of the third.
std::string numberedName(const ColumnDescription& column, long item)
{
    std::string name(column.name);
    return name.replace(name.find("%d"), 2, std::to_string(item + 1));
}

class Generator {
public:
    Generator(Database& database, const DetailShape& shape, GeneratedDetails& made)
        : m_shape(shape), m_random(shape.seed), m_database(database), m_made(made)
    {
    }
    void run();

private:
    void fill(const Plan& plan, long count);
    void makeFresh(const Plan& plan, long serial, void* record);
    void fillColumns(std::span<const ColumnDescription> columns, long serial, void* record);
    void markWith(long serial, const ColumnDescription& column, void* record);
    void change(const RecordDescription& type, void* record);
    void changeColumn(std::span<const ColumnDescription> columns, void* record);
    void referToEqualRows(const RecordDescription& type, void* record);
    void write(const RecordDescription& type, void* record);
    void insert(const RecordDescription& type, const void* record);

    Rows& rows(const RecordDescription& type)
    {
        std::unique_ptr<Rows>& known = m_rows[&type];
        if (known == nullptr)
            known = std::make_unique<Rows>(type);
        return *known;
    }
    int reference(const RecordDescription& target);
    int nothing(const Rows& targets);
    double real();
    std::string text() { return m_random.of(subjects) + std::string(" ") + m_random.of(endings); }
    int step() { return 1 + m_random.below(std::max(m_shape.keyGap, 1)); }

    const DetailShape& m_shape;
    Random m_random;
    Database& m_database;
    GeneratedDetails& m_made;
    std::map<const RecordDescription*, std::unique_ptr<Rows>> m_rows;
    std::map<std::pair<const RecordDescription*, long>, Query> m_insertions;
    std::map<const RecordDescription*, int> m_itemKeys;
    std::map<const ColumnDescription*, long> m_turns; // by the first column of a list
};

/// A key that no row has.
int Generator::nothing(const Rows& targets)
{
    const int last = targets.keys.empty() ? 0 : targets.keys.back();
    switch (m_random.below(3)) {
    case 0:
        return -1;
    case 1:
        // in a gap, when there is one
        for (int tries = 0; tries < 8 && last > 1; ++tries)
            if (const int key = 1 + m_random.below(last); targets.find(key) < 0)
                return key;
        [[fallthrough]];
    default:
        return last + 100 + m_random.below(100);
    }
}

int Generator::reference(const RecordDescription& target)
{
    Rows& targets = rows(target);
    if (targets.length() == 0 || m_random.chance(m_shape.missing))
        return nothing(targets);
    if (targets.nextUnused < targets.length() && !m_random.chance(m_shape.shared))
        return targets.keys[static_cast<std::size_t>(targets.nextUnused++)];
    return targets.keys[static_cast<std::size_t>(m_random.below(targets.length()))];
}

double Generator::real()
{
    if (m_random.chance(m_shape.oddReals))
        return m_random.of(oddReals);
    return m_random.below(4) == 0 ? 0 : m_random.below(4000) / 4.0;
}

void Generator::fillColumns(std::span<const ColumnDescription> columns, long serial, void* record)
{
    for (const ColumnDescription& column : columns) {
        if (column.role == ColumnRole::RunName)
            column.text(record) =
                KorString::fromUtf8(m_random.of(subjects) + std::string(" ") + std::to_string(serial + 1));
        else if (column.role == ColumnRole::Owner)
            column.text(record) = m_random.below(4) == 0 ? L"OFFICE" : L"VEL";
        else if (column.role == ColumnRole::SortOrder)
            column.integer(record) = static_cast<int>(serial);
        else if (!isValue(column))
            continue;
        else if (column.link == LinkKind::Reference)
            column.integer(record) = reference(column.target());
        else if (column.kind == FieldKind::Integer)
            column.integer(record) = column.link == LinkKind::Lookup ? 1 + m_random.below(4) : m_random.below(3);
        else if (column.kind == FieldKind::Real)
            column.real(record) = real();
        else
            column.text(record) = KorString::fromUtf8(text());
    }
}

/// Tells the row from all others.
void Generator::markWith(long serial, const ColumnDescription& column, void* record)
{
    if (column.kind == FieldKind::Integer)
        column.integer(record) = static_cast<int>(serial);
    else if (column.kind == FieldKind::Real)
        column.real(record) = static_cast<double>(serial);
    else
        column.text(record) = KorString::fromUtf8("mark " + std::to_string(serial));
}

void Generator::makeFresh(const Plan& plan, long serial, void* record)
{
    const RecordDescription& type = plan.type();
    fillColumns(type.columns, serial, record);
    const MemberList* items = type.itemList();
    if (items != nullptr) {
        items->resize(record, plan.fewestItems + m_random.below(plan.mostItems - plan.fewestItems + 1));
        for (long i = 0; i < items->length(record); ++i)
            fillColumns(itemColumns(type), serial, items->at(record, i));
    }
    if (const ColumnDescription* column = plainColumn(type.columns)) {
        markWith(serial, *column, record);
    } else if (items != nullptr) {
        markWith(serial, *plainColumn(itemColumns(type)), items->at(record, 0));
    } else if (&type == &descriptionOf<StructDetViewRequestCategory>()) {
        // consists of references alone
        auto& entry = *static_cast<StructDetViewRequestCategory*>(record);
        const Rows& requests = rows(descriptionOf<StructDetViewRequest>());
        const Rows& categories = rows(descriptionOf<StructDetBaseCategory>());
        entry.detViewRequest = requests.keys[static_cast<std::size_t>(serial % requests.length())];
        entry.baseCategory =
            categories.keys[static_cast<std::size_t>(serial / requests.length() % categories.length())];
    }
}

void Generator::changeColumn(std::span<const ColumnDescription> columns, void* record)
{
    // one column after the other, so that each has its turn
    long& turn = m_turns[columns.data()];
    const ColumnDescription* column;
    do {
        column = &columns[static_cast<std::size_t>(turn++) % columns.size()];
    } while (column->role != ColumnRole::Value && column->role != ColumnRole::Owner &&
             column->role != ColumnRole::SortOrder && column->role != ColumnRole::ItemOwner);
    switch (column->kind) {
    case FieldKind::Integer: {
        int& value = column->integer(record);
        if (column->link == LinkKind::Reference && m_random.below(2) == 0)
            value = reference(column->target());
        else if (column->link == LinkKind::Reference)
            value = nothing(rows(column->target()));
        else
            value += m_random.below(2) == 0 ? 1 : -1;
        break;
    }
    case FieldKind::Real: {
        double& value = column->real(record);
        if (m_random.chance(m_shape.oddReals)) {
            value = m_random.of(oddReals);
        } else if (column->tolerant || m_random.below(2) == 0) {
            const double by = m_random.of(smallSteps);
            value += m_random.below(2) == 0 ? by : -by;
        } else {
            value = std::nextafter(value, m_random.below(2) == 0 ? infinity : -infinity);
        }
        break;
    }
    case FieldKind::Text: {
        KorString& value = column->text(record);
        const char* ending = m_random.of(endings);
        if (m_random.below(2) == 0)
            value = KorString::fromUtf8(ending);
        else
            value = KorString::fromUtf8(value.toUtf8() + ending);
        break;
    }
    }
}

void Generator::change(const RecordDescription& type, void* record)
{
    const MemberList* items = type.itemList();
    const long length = items == nullptr ? 0 : items->length(record);
    const auto own = static_cast<long>(type.columns.size());
    // as often in the record itself as it has columns
    if (items == nullptr || (plainColumn(type.columns) != nullptr && m_random.below(own + 8) < own)) {
        changeColumn(type.columns, record);
        return;
    }
    switch (m_random.below(8)) {
    case 0:
        if (length > 0)
            items->resize(record, length - 1);
        return;
    case 1:
        // a copy of the first one at the end
        if (length > 0 && (!type.numbered.exists() || length < type.numbered.initialItems))
            items->append(record, items->at(record, 0));
        return;
    case 2:
        // the first one goes to the end
        if (length > 1) {
            items->append(record, items->at(record, 0));
            items->erase(record, 0);
        }
        return;
    default:
        if (length > 0) {
            const long item = m_random.below(length);
            // a numbered reference is the item itself
            if (type.numbered.exists() && itemColumns(type).size() == 1)
                itemColumns(type)[0].integer(items->at(record, item)) = reference(itemColumns(type)[0].target());
            else
                changeColumn(itemColumns(type), items->at(record, item));
        }
    }
}

/// Exchanges what the record refers to for rows made equal to it.
void Generator::referToEqualRows(const RecordDescription& type, void* record)
{
    const auto exchange = [&](std::span<const ColumnDescription> columns, void* of) {
        for (const ColumnDescription& column : columns) {
            const bool owned =
                &type == &descriptionOf<StructDetViewRequestCategory>() && column.role == ColumnRole::ItemOwner;
            if (column.link != LinkKind::Reference && !owned)
                continue;
            const Rows& targets = rows(owned ? descriptionOf<StructDetViewRequest>() : column.target());
            const long position = targets.find(column.integer(of));
            if (position < 0)
                continue;
            const std::vector<long>& equal =
                targets.classes[static_cast<std::size_t>(targets.classOf[static_cast<std::size_t>(position)])];
            const long other = equal[static_cast<std::size_t>(m_random.below(static_cast<long>(equal.size())))];
            column.integer(of) = targets.keys[static_cast<std::size_t>(other)];
        }
    };
    exchange(type.columns, record);
    if (const MemberList* items = type.itemList())
        for (long i = 0; i < items->length(record); ++i)
            exchange(itemColumns(type), items->at(record, i));
}

void Generator::insert(const RecordDescription& type, const void* record)
{
    const long numbered = type.numbered.exists() ? type.numbered.list.length(record) : 0;
    auto known = m_insertions.find({&type, numbered});
    if (known == m_insertions.end()) {
        std::string names, marks;
        const auto add = [&](const std::string& name) {
            names += (names.empty() ? "[" : ", [") + name + "]";
            marks += marks.empty() ? "?" : ", ?";
        };
        for (const ColumnDescription& column : type.columns)
            add(std::string(column.name));
        for (long i = 0; i < numbered; ++i)
            for (const ColumnDescription& column : type.numbered.columns)
                add(numberedName(column, i));
        known = m_insertions
                    .emplace(std::pair(&type, numbered),
                             m_database.prepare("INSERT INTO [" + std::string(type.table) + "] (" + names +
                                                ") VALUES (" + marks + ")"))
                    .first;
    }
    Query& query = known->second;
    int position = 0;
    std::vector<std::string> texts; // live until the statement ran
    texts.reserve(type.columns.size() + static_cast<std::size_t>(numbered) * type.numbered.columns.size());
    const auto bind = [&](std::span<const ColumnDescription> columns, const void* of) {
        for (const ColumnDescription& column : columns) {
            ++position;
            if (column.kind == FieldKind::Integer)
                query.bind(position, std::int64_t{column.integer(of)});
            else if (column.kind == FieldKind::Real)
                query.bind(position, column.real(of));
            else
                query.bind(position, std::string_view(texts.emplace_back(column.text(of).toUtf8())));
        }
    };
    bind(type.columns, record);
    for (long i = 0; i < numbered; ++i)
        bind(type.numbered.columns, type.numbered.list.at(record, i));
    query.run();
    ++m_made.rows;
    ++m_made.rowsOfTable[std::string(type.table)];
}

void Generator::write(const RecordDescription& type, void* record)
{
    const MemberList* items = type.itemList();
    if (items != nullptr && type.itemCount >= 0) {
        int& count = type.at(type.itemCount)->integer(record);
        count = static_cast<int>(items->length(record));
        if (m_shape.damaged && m_random.below(4) == 0)
            count += m_random.below(5) - 2;
    }
    insert(type, record);
    if (!type.items.exists())
        return;
    const RecordDescription& item = type.items.item();
    const long length = items->length(record);
    int order = 0;
    for (long i = 0; i < length; ++i) {
        void* row = items->at(record, i);
        item.at(item.itemOwner)->integer(row) = type.keyOf(record);
        item.at(item.itemOrder)->integer(row) = order;
        if (item.key >= 0)
            item.keyColumn().integer(row) = m_itemKeys[&item] += step();
        if (!m_shape.damaged || m_random.below(4) != 0)
            order += step();
    }
    // now and then stored the other way round
    const bool backwards = m_random.below(8) == 0;
    for (long i = 0; i < length; ++i)
        insert(item, items->at(record, backwards ? length - 1 - i : i));
}

void Generator::fill(const Plan& plan, long count)
{
    const RecordDescription& type = plan.type();
    Rows& made = rows(type);
    int key = 0;
    for (long i = 0; i < count; ++i) {
        const AnyRecord record(type);
        long equalTo = -1;
        if (plan.copies && i > 0 && m_random.chance(m_shape.duplicates + m_shape.nearDuplicates)) {
            const double whole = m_shape.duplicates + m_shape.nearDuplicates;
            const long source = m_random.below(i);
            type.elements->assign(record.get(), made.records.at(source));
            referToEqualRows(type, record.get());
            if (const ColumnDescription* name = type.runNameColumn())
                name->text(record.get()) = KorString::fromUtf8(text() + std::to_string(i + 1));
            if (const ColumnDescription* sort = type.at(type.sortOrder))
                sort->integer(record.get()) = static_cast<int>(i);
            if (m_random.chance(m_shape.duplicates / whole))
                equalTo = made.classOf[static_cast<std::size_t>(source)];
            else
                change(type, record.get());
        } else {
            makeFresh(plan, i, record.get());
        }
        key += step();
        type.keyColumn().integer(record.get()) = key;
        write(type, record.get());
        type.list().append(made.records.get(), record.get());
        made.keys.push_back(key);
        if (equalTo < 0) {
            equalTo = static_cast<long>(made.classes.size());
            made.classes.emplace_back();
        }
        made.classOf.push_back(equalTo);
        made.classes[static_cast<std::size_t>(equalTo)].push_back(i);
    }
}

void Generator::run()
{
    double whole = 0;
    for (const Plan& plan : plans) {
        const double items = plan.type().items.exists() ? (plan.fewestItems + plan.mostItems) / 2.0 : 0;
        whole += plan.weight * (1 + items);
    }
    for (const Plan& plan : plans) {
        const double share = plan.weight / whole * static_cast<double>(m_shape.rows);
        fill(plan, plan.fixedRows > 0 ? plan.fixedRows : std::max(std::lround(share), 1L));
    }
}

} // namespace

GeneratedDetails generateDetails(const std::string& databaseFile, const DetailShape& shape)
{
    GeneratedDetails made;
    Database database(databaseFile);
    database.run("PRAGMA synchronous = OFF");
    database.run("BEGIN");
    Generator(database, shape, made).run();
    database.run("COMMIT");
    return made;
}

GeneratedDetails generateDetailDatabase(const std::string& newFile, const DetailShape& shape)
{
    korodbc::host::HostError error;
    require(korodbc::host::createDetailDatabase(newFile, error), error.text);
    return generateDetails(newFile, shape);
}

} // namespace bench
