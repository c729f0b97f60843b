#include "DuplicateRule.h"

#include "edit/DetailTable.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <optional>
#include <unordered_map>
#include <utility>

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

DuplicateRule::DuplicateRule(const RecordDescription& type) : DuplicateRule(type, ComparedColumns()) {}

DuplicateRule::DuplicateRule(const RecordDescription& type, const ComparedColumns& special)
    : m_key(type.keyColumn()), m_items(type.itemList())
{
    const auto counts = [&](const ColumnDescription& column) {
        return column.name == special.counted ||
               (column.role == ColumnRole::Value && column.name != special.ignored);
    };
    for (const ColumnDescription& column : type.columns)
        if (counts(column))
            (column.tolerant ? m_tolerant : m_exact).push_back(&column);
    if (m_items == nullptr)
        return;
    for (const ColumnDescription& column :
         type.numbered.exists() ? type.numbered.columns : type.items.item().columns)
        if (column.role == ColumnRole::Value) {
            if (column.name == special.loose)
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

/// The records that stand for themselves and have equal hashes, in their order. Where loose texts are compared and
/// the records are many, a bit for each says at which items it may equal a given text, so that those that may
/// equal at every item are found 64 at a time.
class SurvivorBucket {
public:
    /// The first record that `equals` accepts; -1 when there is none. `texts`: those of the items of the record
    /// looked for that count, by item, as hashes; nothing where any text will do.
    using Texts = std::vector<std::optional<std::size_t>>;
    template <class Equals>
    long find(const Texts& texts, Equals equals) const
    {
        if (m_positions.empty()) {
            const auto found = std::find_if(m_records.begin(), m_records.end(), equals);
            return found == m_records.end() ? -1 : *found;
        }
        std::vector<Candidates> narrow;
        for (std::size_t i = 0; i < std::min(texts.size(), m_positions.size()); ++i)
            if (texts[i])
                narrow.push_back(m_positions[i].candidates(*texts[i]));
        std::sort(narrow.begin(), narrow.end(),
                  [](const Candidates& a, const Candidates& b) { return a.count < b.count; });
        if (!narrow.empty() && narrow.front().count == 0)
            return -1;
        for (std::size_t word = 0; word * wordBits < m_records.size(); ++word) {
            std::uint64_t bits = ~std::uint64_t{0};
            for (std::size_t i = 0; i < narrow.size() && bits != 0; ++i)
                bits &= narrow[i].word(word);
            for (; bits != 0; bits &= bits - 1) {
                const std::size_t at = word * wordBits + static_cast<std::size_t>(std::countr_zero(bits));
                if (at >= m_records.size())
                    break;
                if (equals(m_records[at]))
                    return m_records[at];
            }
        }
        return -1;
    }
    /// `textsOf` gives the texts of a record that is here already.
    template <class TextsOf>
    void insert(long record, bool isLoose, TextsOf textsOf)
    {
        m_records.push_back(record);
        if (!isLoose || m_records.size() <= fewRecords)
            return;
        for (std::size_t at = m_positions.empty() ? 0 : m_records.size() - 1; at < m_records.size(); ++at) {
            const Texts texts = textsOf(m_records[at]);
            if (m_positions.size() < std::max<std::size_t>(texts.size(), 1))
                m_positions.resize(std::max<std::size_t>(texts.size(), 1));
            for (std::size_t i = 0; i < texts.size(); ++i)
                (texts[i] ? m_positions[i].texts[*texts[i]] : m_positions[i].any).set(at);
        }
    }

private:
    static constexpr std::size_t fewRecords = 16, wordBits = 64;

    /// A set of places in m_records, by the words that are not empty.
    struct Places {
        std::vector<std::pair<std::size_t, std::uint64_t>> words;
        std::size_t count = 0;

        void set(std::size_t place)
        {
            if (words.empty() || words.back().first != place / wordBits)
                words.emplace_back(place / wordBits, 0);
            words.back().second |= std::uint64_t{1} << place % wordBits;
            ++count;
        }
    };
    /// Places that may equal a text, read in ascending order.
    struct Candidates {
        const Places* sets[2]; // with that text, with any
        std::size_t count;
        std::size_t next[2] = {0, 0};

        std::uint64_t word(std::size_t wanted)
        {
            std::uint64_t bits = 0;
            for (int i = 0; i < 2; ++i) {
                if (sets[i] == nullptr)
                    continue;
                const auto& words = sets[i]->words;
                while (next[i] < words.size() && words[next[i]].first < wanted)
                    ++next[i];
                if (next[i] < words.size() && words[next[i]].first == wanted)
                    bits |= words[next[i]].second;
            }
            return bits;
        }
    };
    struct Position {
        Places any;
        std::unordered_map<std::size_t, Places> texts;

        Candidates candidates(std::size_t text) const
        {
            const auto same = texts.find(text);
            const Places* with = same == texts.end() ? nullptr : &same->second;
            return {{with, &any}, any.count + (with == nullptr ? 0 : with->count)};
        }
    };

    std::vector<long> m_records;
    std::vector<Position> m_positions; // by item; none while the records are few
};

/// The records that stand for themselves, found by hash. A record is filed under the values that are compared
/// exactly and the cells of its tolerant values, so whatever equals it is looked for under one of the same hashes.
class SurvivorIndex {
public:
    SurvivorIndex(const DuplicateRule& rule, ListOperations list, const void* records)
        : m_rule(rule), m_list(list), m_records(const_cast<void*>(records))
    {
        m_buckets.reserve(static_cast<std::size_t>(list.length(records)));
    }

    /// The record that stands for a record; the record itself when no earlier one does.
    long find(long index)
    {
        const void* wanted = record(index);
        long found = index;
        hashes(wanted, true);
        const SurvivorBucket::Texts texts = textsOf(wanted);
        for (const std::uint64_t hash : m_hashes) {
            const auto bucket = m_buckets.find(hash);
            if (bucket == m_buckets.end())
                continue;
            const long candidate = bucket->second.find(
                texts, [&](long other) { return other >= found || m_rule.equal(record(other), wanted); });
            if (candidate >= 0)
                found = std::min(found, candidate);
        }
        return found;
    }

    void insert(long index)
    {
        hashes(record(index), false);
        for (const std::uint64_t hash : m_hashes)
            m_buckets[hash].insert(index, m_rule.m_loose != nullptr,
                                   [&](long other) { return textsOf(record(other)); });
    }

private:
    const void* record(long index) const { return m_list.at(m_records, index); }

    SurvivorBucket::Texts textsOf(const void* record) const
    {
        SurvivorBucket::Texts texts;
        if (m_rule.m_loose == nullptr)
            return texts;
        texts.resize(static_cast<std::size_t>(m_rule.m_items->length(record)));
        for (std::size_t i = 0; i < texts.size(); ++i)
            if (const KorString& text = m_rule.m_loose->text(m_rule.m_items->at(record, static_cast<long>(i)));
                !isLoose(text))
                texts[i] = text.hash();
        return texts;
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
    }

    static bool addExact(const DuplicateRule::Compared& columns, const void* record, std::uint64_t& hash)
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

    const DuplicateRule& m_rule;
    ListOperations m_list;
    void* m_records;
    std::unordered_map<std::uint64_t, SurvivorBucket> m_buckets;
    std::vector<std::uint64_t> m_hashes;
};

std::vector<long> DuplicateRule::survivors(ListOperations list, const void* records) const
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
