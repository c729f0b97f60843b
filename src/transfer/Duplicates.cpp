#include "Duplicates.h"

#include <bit>
#include <cmath>
#include <map>
#include <set>
#include <unordered_map>

namespace korodbc {

namespace {

constexpr double tolerance = 1e-10;
constexpr int looseLength = 2; // texts up to here equal any text

bool within(double a, double b)
{
    const double difference = a - b;
    return difference * difference <= tolerance * tolerance;
}

bool equalValue(const ColumnDescription& column, const void* a, const void* b)
{
    switch (column.kind) {
    case FieldKind::Integer:
        return column.integer(a) == column.integer(b);
    case FieldKind::Real:
        return column.tolerant ? within(column.real(a), column.real(b)) : column.real(a) == column.real(b);
    case FieldKind::Text:
        break;
    }
    return column.text(a) == column.text(b);
}

bool isLoose(const KorString& text) { return text.length() <= looseLength; }

std::uint64_t mixed(std::uint64_t hash, std::uint64_t value)
{
    hash ^= value + 0x9e3779b97f4a7c15u + (hash << 6) + (hash >> 2);
    hash *= 0xff51afd7ed558ccdu;
    return hash ^ hash >> 32;
}

std::uint64_t bits(double value) { return std::bit_cast<std::uint64_t>(value == 0 ? 0.0 : value); }

std::uint64_t hashOf(const ColumnDescription& column, const void* record)
{
    switch (column.kind) {
    case FieldKind::Integer:
        return static_cast<std::uint32_t>(column.integer(record));
    case FieldKind::Real:
        return column.tolerant ? 0 : bits(column.real(record));
    case FieldKind::Text:
        break;
    }
    return column.text(record).hash();
}

/// Values that are equal within the tolerance lie in cells that cellsAround() gives for one another: cells are
/// larger than the tolerance, and their numbers grow with the value.
double cellOf(double value) { return std::round(value / (4 * tolerance)); }

} // namespace

DuplicateRule::DuplicateRule(const RecordDescription& type, std::string_view ignored, std::string_view loose,
                             bool owner)
    : m_key(type.keyColumn()), m_items(type.itemList())
{
    const auto counts = [&](const ColumnDescription& column) {
        return column.name != ignored &&
               (column.role == ColumnRole::Value || (owner && column.role == ColumnRole::ItemOwner));
    };
    for (const ColumnDescription& column : type.columns)
        if (counts(column))
            (column.tolerant ? m_tolerant : m_exact).push_back(&column);
    if (m_items == nullptr)
        return;
    for (const ColumnDescription& column :
         type.numbered.exists() ? type.numbered.columns : type.items.item().columns)
        if (column.role == ColumnRole::Value) {
            if (column.name == loose)
                m_loose = &column;
            else
                m_itemColumns.push_back(&column);
        }
}

bool DuplicateRule::equal(const void* a, const void* b) const
{
    for (const ColumnDescription* column : m_exact)
        if (!equalValue(*column, a, b))
            return false;
    for (const ColumnDescription* column : m_tolerant)
        if (!equalValue(*column, a, b))
            return false;
    if (m_items == nullptr)
        return true;
    const long length = m_items->length(a);
    if (length != m_items->length(b))
        return false;
    for (long i = 0; i < length; ++i) {
        const void* ofA = m_items->at(a, i);
        const void* ofB = m_items->at(b, i);
        for (const ColumnDescription* column : m_itemColumns)
            if (!equalValue(*column, ofA, ofB))
                return false;
        if (m_loose != nullptr) {
            const KorString& textA = m_loose->text(ofA);
            const KorString& textB = m_loose->text(ofB);
            if (!isLoose(textA) && !isLoose(textB) && textA != textB)
                return false;
        }
    }
    return true;
}

/// The records that stand for themselves, found by hash. A record is filed under the values that are compared
/// exactly, the cells of its tolerant values and, for every pattern of loose texts that occurs, the texts that
/// count against that pattern; so whatever equals it is looked for under one of the same hashes.
class SurvivorIndex {
public:
    SurvivorIndex(const DuplicateRule& rule, const ListOperations& list, const void* records)
        : m_rule(rule), m_list(list), m_records(const_cast<void*>(records))
    {
        m_first.reserve(static_cast<std::size_t>(list.length(records)));
        for (long i = 0; rule.m_loose != nullptr && i < list.length(records); ++i) {
            const Pattern pattern = patternOf(record(i));
            m_patterns[pattern.size()].insert(pattern);
        }
    }

    /// The record that stands for a record; the record itself when no earlier one does.
    long find(long index)
    {
        const void* wanted = record(index);
        long found = index;
        hashes(wanted, true);
        for (const std::uint64_t hash : m_hashes) {
            const auto first = m_first.find(hash);
            // later entries of a chain have higher indices
            for (long at = first == m_first.end() ? -1 : first->second.first; at >= 0;
                 at = m_links[static_cast<std::size_t>(at)].next) {
                const long candidate = m_links[static_cast<std::size_t>(at)].record;
                if (candidate >= found)
                    break;
                if (m_rule.equal(record(candidate), wanted)) {
                    found = candidate;
                    break;
                }
            }
        }
        return found;
    }

    void insert(long index)
    {
        hashes(record(index), false);
        for (const std::uint64_t hash : m_hashes) {
            const long link = static_cast<long>(m_links.size());
            m_links.push_back({index, -1});
            const auto [chain, isNew] = m_first.try_emplace(hash, Chain{link, link});
            if (!isNew) {
                m_links[static_cast<std::size_t>(chain->second.last)].next = link;
                chain->second.last = link;
            }
        }
    }

private:
    using Pattern = std::vector<bool>; // per item: its text equals any text
    struct Chain {
        long first, last;
    };
    struct Link {
        long record, next;
    };

    const void* record(long index) const { return m_list.at(m_records, index); }

    Pattern patternOf(const void* record) const
    {
        Pattern pattern(static_cast<std::size_t>(m_rule.m_items->length(record)));
        for (std::size_t i = 0; i < pattern.size(); ++i)
            pattern[i] = isLoose(m_rule.m_loose->text(m_rule.m_items->at(record, static_cast<long>(i))));
        return pattern;
    }

    /// Fills m_hashes: those to look under, or those to file a record under. None for a record that equals
    /// nothing.
    void hashes(const void* record, bool lookUp)
    {
        std::uint64_t hash = 0;
        m_hashes.clear();
        if (!addExact(m_rule.m_exact, record, hash))
            return;
        if (m_rule.m_items != nullptr) {
            const long length = m_rule.m_items->length(record);
            hash = mixed(hash, static_cast<std::uint64_t>(length));
            for (long i = 0; i < length; ++i)
                if (!addExact(m_rule.m_itemColumns, m_rule.m_items->at(record, i), hash))
                    return;
        }
        m_hashes.push_back(hash);
        for (const ColumnDescription* column : m_rule.m_tolerant)
            addCells(column->real(record), lookUp);
        if (m_rule.m_loose != nullptr)
            addTexts(record, lookUp);
    }

    static bool addExact(const DuplicateRule::Columns& columns, const void* record, std::uint64_t& hash)
    {
        for (const ColumnDescription* column : columns) {
            if (column->kind == FieldKind::Real && std::isnan(column->real(record)))
                return false;
            hash = mixed(hash, hashOf(*column, record));
        }
        return true;
    }

    void addCells(double value, bool lookUp)
    {
        if (!std::isfinite(value)) {
            m_hashes.clear();
            return;
        }
        const double reach = lookUp ? 2 * tolerance : 0;
        const double from = cellOf(value - reach), to = cellOf(value + reach);
        std::vector<std::uint64_t> extended;
        for (double cell = from;; ++cell) {
            for (const std::uint64_t hash : m_hashes)
                extended.push_back(mixed(hash, bits(cell)));
            if (cell + 1 == cell || cell >= to)
                break;
        }
        m_hashes.swap(extended);
    }

    void addTexts(const void* record, bool lookUp)
    {
        const Pattern own = patternOf(record);
        std::vector<std::uint64_t> extended;
        for (const Pattern& other : m_patterns[own.size()]) {
            // filed record first, record looked for second
            std::uint64_t texts =
                mixed(std::hash<Pattern>()(lookUp ? other : own), std::hash<Pattern>()(lookUp ? own : other));
            for (std::size_t i = 0; i < own.size(); ++i)
                if (!own[i] && !other[i])
                    texts = mixed(texts,
                                  m_rule.m_loose->text(m_rule.m_items->at(record, static_cast<long>(i))).hash());
            for (const std::uint64_t hash : m_hashes)
                extended.push_back(mixed(hash, texts));
        }
        m_hashes.swap(extended);
    }

    const DuplicateRule& m_rule;
    const ListOperations& m_list;
    void* m_records;
    std::map<std::size_t, std::set<Pattern>> m_patterns; // by number of items
    std::unordered_map<std::uint64_t, Chain> m_first;
    std::vector<Link> m_links;
    std::vector<std::uint64_t> m_hashes;
};

std::vector<long> DuplicateRule::survivors(const ListOperations& list, const void* records) const
{
    std::vector<long> result(static_cast<std::size_t>(list.length(records)));
    SurvivorIndex index(*this, list, records);
    const auto keyOf = [&](long i) { return m_key.integer(list.at(const_cast<void*>(records), i)); };
    for (long i = 0; i < static_cast<long>(result.size()); ++i) {
        const auto at = static_cast<std::size_t>(i);
        if (i > 0 && keyOf(i) == keyOf(i - 1)) {
            result[at] = result[at - 1]; // rows of a damaged table; what holds for the key is settled
            continue;
        }
        result[at] = index.find(i);
        if (result[at] == i)
            index.insert(i);
    }
    return result;
}

} // namespace korodbc
