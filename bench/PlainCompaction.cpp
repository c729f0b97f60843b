#include "PlainCompaction.h"

#include "Database.h"

#include <algorithm>
#include <cctype>
#include <iterator>
#include <limits>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace bench {

namespace {

struct Reference {
    std::string column; // "Point%d": all numbered columns of that name
    const char* table;
};

enum class Duplicates { Deleted, Kept, NotSought };

struct Plan {
    const char* table;
    std::vector<Reference> references = {};
    const char* items = nullptr; // table of its items, and there the column of the owner's key
    const char* owner = nullptr;
    std::vector<Reference> itemReferences = {};
    Duplicates duplicates = Duplicates::Deleted;
};

/// Tables that are referred to before those that refer to them.
const std::vector<Plan>& plans()
{
    static const std::vector<Plan> list = {
        {"DetViewSystemAndBox"},
        {"DetAnnotationType"},
        {"DetArrangerControl"},
        {"DetArrangerStrategy"},
        {"DetViewArrangeStrategy"},
        {"DetViewLengthClip"},
        {"DetObjQualifierSet", {}, "DetObjQualifierSetItem", "IdDetObjQualifierSet"},
        {"DetailProcessMain2CutScale"},
        {"DetailProcessScales", {}, "DetailProcessScalesItem", "DetProcScaleId"},
        {"DetailFilenameSelector"},
        {"DetObjAnnotationStrategy",
         {{"AnnotationType", "DetAnnotationType"},
          {"ArrangerControl", "DetArrangerControl"},
          {"ArrangerStrategy", "DetArrangerStrategy"}}},
        {"DetObjReprMapsNew",
         {},
         "DetObjReprMapItems",
         "Key",
         {{"ObjQualifier", "DetObjQualifierSet"}, {"AnnotationStrategy", "DetObjAnnotationStrategy"}}},
        {"DetViewDimPointSelection", {{"Objects", "DetObjQualifierSet"}}},
        {"DetViewDimRequestLinear", {{"Point%d", "DetViewDimPointSelection"}}},
        {"DetViewDimStrategyNew",
         {},
         "DetViewDimStrategyItems",
         "Key",
         {{"RequestLinear", "DetViewDimRequestLinear"}}},
        {"DetViewRequest",
         {{"SystemAndBox", "DetViewSystemAndBox"},
          {"ObjReprMap", "DetObjReprMapsNew"},
          {"DimStrategy", "DetViewDimStrategyNew"},
          {"LengthClipXY", "DetViewLengthClip"}}},
        {"DetailStyle",
         {{"Request%d", "DetViewRequest"}, {"ViewArrangeStrategy", "DetViewArrangeStrategy"}},
         nullptr,
         nullptr,
         {},
         Duplicates::Kept},
        {"DetViewRequestCategories", {{"DetViewRequest", "DetViewRequest"}}},
        {"DetailStyleMapNew",
         {},
         "DetailStyleMapItems",
         "Key",
         {{"ObjQualifierSet", "DetObjQualifierSet"}, {"DetailStyle", "DetailStyle"}}},
        {"DetailProcessStep",
         {{"FilenameSelector", "DetailFilenameSelector"},
          {"AlternativeScales", "DetailProcessScales"},
          {"DependOnMainView", "DetailProcessMain2CutScale"},
          {"StyleMap", "DetailStyleMapNew"}}},
        {"DetailProcessDefinition",
         {{"Step%d", "DetailProcessStep"}},
         nullptr,
         nullptr,
         {},
         Duplicates::NotSought},
    };
    return list;
}

bool isCompared(const std::string& column)
{
    static const char* const ignored[] = {"Key", "RunName", "OwnerText", "SortOrder", "Group", "Order"};
    return std::none_of(std::begin(ignored), std::end(ignored), [&](const char* name) { return column == name; });
}

bool isNamed(const std::string& column, const std::string& pattern)
{
    const std::size_t number = pattern.find("%d");
    if (number == std::string::npos)
        return column == pattern;
    return column.size() > number && column.compare(0, number, pattern, 0, number) == 0 &&
           std::all_of(column.begin() + static_cast<std::ptrdiff_t>(number), column.end(),
                       [](unsigned char c) { return std::isdigit(c) != 0; });
}

constexpr std::int64_t null = std::numeric_limits<std::int64_t>::min();

/// Key of a duplicate to the key that stands for it.
using Standing = std::unordered_map<std::int64_t, std::int64_t>;

/// Rows of a table or of an item table: a key, an id, the references to merged tables, the other compared columns.
class Reader {
public:
    Reader(Database& database, const std::string& table, const std::string& key, const std::string& id,
           const std::string& order, const std::vector<Reference>& references,
           std::unordered_map<std::string, Standing>& merged)
    {
        std::string columns = "[" + key + "], " + id, others, assignments;
        Query info = database.prepare("SELECT name FROM pragma_table_info('" + table + "')");
        while (info.step()) {
            const std::string column(info.text(0));
            const auto reference = std::find_if(references.begin(), references.end(),
                                                [&](const Reference& r) { return isNamed(column, r.column); });
            if (reference != references.end()) {
                columns += ", [" + column + "]";
                assignments += (assignments.empty() ? "[" : ", [") + column + "] = ?";
                m_targets.push_back(&merged[reference->table]);
            } else if (isCompared(column) && column != key) {
                others += ", [" + column + "]";
                ++m_others;
            }
        }
        m_select = database.prepare("SELECT " + columns + others + " FROM [" + table + "] ORDER BY " + order);
        if (!m_targets.empty())
            m_update = database.prepare("UPDATE [" + table + "] SET " + assignments + " WHERE " + id + " = ?");
        m_more = m_select.step();
    }

    bool more() const { return m_more; }
    std::int64_t key() const { return m_select.integer(0); }
    void next() { m_more = m_select.step(); }

    /// Appends what is compared to `content`; a row whose references change is remembered.
    void take(std::string& content)
    {
        const auto append = [&](const void* data, std::size_t size) {
            content.append(static_cast<const char*>(data), size);
        };
        const std::size_t start = m_keys.size();
        bool changed = false;
        int column = 2;
        for (const Standing* target : m_targets) {
            const bool isNull = sqlite3_column_type(m_select.handle(), column) == SQLITE_NULL;
            const std::int64_t key = isNull ? null : m_select.integer(column);
            ++column;
            const auto found = target->find(key);
            m_keys.push_back(found == target->end() ? key : found->second);
            changed = changed || m_keys.back() != key;
            append(&m_keys.back(), sizeof key);
        }
        if (changed)
            m_keys.push_back(m_select.integer(1));
        else
            m_keys.resize(start);
        for (int i = 0; i < m_others; ++i, ++column) {
            const int type = sqlite3_column_type(m_select.handle(), column);
            content += static_cast<char>(type);
            if (type == SQLITE_INTEGER) {
                const std::int64_t value = m_select.integer(column);
                append(&value, sizeof value);
            } else if (type == SQLITE_FLOAT) {
                const double value = m_select.real(column);
                append(&value, sizeof value);
            } else if (type == SQLITE_TEXT) {
                const std::string_view value = m_select.text(column);
                const std::size_t size = value.size();
                append(&size, sizeof size);
                content += value;
            }
        }
    }

    /// Rows remembered since `mark` are to be redirected, or forgotten.
    std::size_t mark() const { return m_keys.size(); }
    void forget(std::size_t mark) { m_keys.resize(mark); }
    long redirect()
    {
        const std::size_t width = m_targets.size() + 1;
        m_select.reset();
        for (std::size_t row = 0; row < m_keys.size(); row += width) {
            for (std::size_t i = 0; i < width; ++i) {
                const int position = static_cast<int>(i) + 1;
                if (m_keys[row + i] == null)
                    sqlite3_bind_null(m_update.handle(), position);
                else
                    m_update.bind(position, m_keys[row + i]);
            }
            m_update.run();
        }
        return static_cast<long>(m_keys.size() / width);
    }

private:
    Query m_select, m_update;
    std::vector<const Standing*> m_targets;
    std::vector<std::int64_t> m_keys; // of each row to redirect: the references, then the id
    int m_others = 0;
    bool m_more = false;
};

void compact(Database& database, const Plan& plan, std::unordered_map<std::string, Standing>& merged,
             PlainCompaction& done)
{
    const std::string table = plan.table;
    Reader rows(database, table, "Key", "[Key]", "[Key]", plan.references, merged);
    std::unique_ptr<Reader> items;
    if (plan.items != nullptr)
        items = std::make_unique<Reader>(database, plan.items, plan.owner, "rowid",
                                         "[" + std::string(plan.owner) + "], [Order], rowid", plan.itemReferences,
                                         merged);
    std::unordered_map<std::string, std::int64_t> firstOf;
    Standing& standing = merged[table];
    std::vector<std::int64_t> duplicates;
    std::string content;
    for (; rows.more(); rows.next()) {
        const std::int64_t key = rows.key();
        const std::size_t rowMark = rows.mark(), itemMark = items ? items->mark() : 0;
        content.clear();
        rows.take(content);
        while (items && items->more() && items->key() < key)
            items->next();
        for (; items && items->more() && items->key() == key; items->next())
            items->take(content);
        if (plan.duplicates == Duplicates::NotSought)
            continue;
        const auto [first, isNew] = firstOf.try_emplace(content, key);
        if (isNew)
            continue;
        standing.emplace(key, first->second);
        if (plan.duplicates == Duplicates::Kept)
            continue;
        duplicates.push_back(key);
        // what goes needs no new references
        rows.forget(rowMark);
        if (items)
            items->forget(itemMark);
    }
    done.redirected += rows.redirect() + (items ? items->redirect() : 0);
    if (duplicates.empty())
        return;
    // items with keys of their own stay, as the library leaves them
    const bool erasesItems = plan.items != nullptr && plan.owner == std::string_view("Key");
    Query erase = database.prepare("DELETE FROM [" + table + "] WHERE [Key] = ?"), eraseItems;
    if (erasesItems)
        eraseItems = database.prepare("DELETE FROM [" + std::string(plan.items) + "] WHERE [Key] = ?");
    for (const std::int64_t key : duplicates) {
        erase.bind(1, key).run();
        if (erasesItems)
            eraseItems.bind(1, key).run();
    }
    done.deleted += static_cast<long>(duplicates.size());
}

} // namespace

PlainCompaction compactDetails(Database& database)
{
    PlainCompaction done;
    std::unordered_map<std::string, Standing> merged;
    database.run("BEGIN IMMEDIATE");
    for (const Plan& plan : plans())
        compact(database, plan, merged, done);
    database.run("COMMIT");
    return done;
}

} // namespace bench
