#pragma once

#include "edit/DetailTables.h"

#include <korodbc/edit/KorOdbcMan.h>
#include <korodbc/records/RecordDescription.h>
#include <korodbc/transfer/RowInfo.h>

#include <algorithm>
#include <optional>
#include <span>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

namespace korodbc {

/// One table of a deep copy: how its rows are written and where they are collected. The edges come from the record
/// descriptions.
struct CopyTable {
    /// `written` receives the rows that the copy newly wrote.
    template <class T>
    explicit CopyTable(KorArray<T>& collected, KorArray<T>* newRows = nullptr)
        : row(detailTableOf<T>()), type(row.type), rules(row.copying), identity(row.identity()), rows(&collected),
          written(newRows)
    {
    }
    const RecordDescription& description() const { return row.description(); }
    long length() const { return description().list().length(rows); }
    void* at(long index) const { return description().list().at(rows, index); }

    const DetailTable& row;
    const KorOdbcMan::eTableType type;
    const DetailTable::Copying& rules;
    const KorString identity; // name in the transfer key map
    void* const rows;         // KorArray of the record type: the collected rows
    void* const written;      // KorArray of the record type; may be nullptr
};

/// Number of the tables whose rows travel so, items in tables of their own excepted.
consteval long copiedTables(DetailTable::Travel travel)
{
    return std::ranges::count_if(detailTables, [=](const DetailTable& table) {
        return table.copying.travel == travel && table.record.current != nullptr;
    });
}

/// A deep copy over a set of tables: collects rows along the references and writes them in that order.
class DeepCopyGraph {
public:
    /// What a table does beyond the general rules; any of them may be empty.
    struct Hooks {
        /// After the references of a row were collected and before the row is appended to its list; false:
        /// failure.
        bool (*referencesCollected)(void* record, long key) = nullptr;
        /// After the row was appended to its list; false: failure.
        bool (*collected)(void* record, long key) = nullptr;
        /// After the reference at that place of a list of references was saved; false: failure.
        bool (*listReferenceSaved)(long collectedIndex, long newKey) = nullptr;
        /// After the row was written.
        void (*saved)(long index, long newKey) = nullptr;
        /// A row of the target that can stand for the collected one: its key, or -1.
        long (*existing)(const void* record) = nullptr;
        /// Whether this row keeps its key; instead of the table's keepsKey.
        int (*keepKey)() = nullptr;
    };

    /// References into tables that only `beyond` knows are followed there.
    DeepCopyGraph(std::span<const CopyTable> tables, KorTransferKeyMap& keys, DeepCopyGraph* beyond = nullptr);

    /// What holds for the references from one table to another, besides the general rules.
    struct Edge {
        const int* followedWith = nullptr; // followed while this flag is not 0 only
        long* override =
            nullptr; // unless it is -1, the key that a row refers to once, instead of the collected one
    };
    void setEdge(KorOdbcMan::eTableType from, KorOdbcMan::eTableType to, Edge edge);
    void setHooks(KorOdbcMan::eTableType type, Hooks hooks);
    const CopyTable* table(const RecordDescription& type) const;
    const CopyTable* table(KorOdbcMan::eTableType type) const;

    /// Position of the collected row with that key; -1 when it is not collected yet.
    long find(const CopyTable& table, long key);
    long append(const CopyTable& table, const void* record, long key);
    /// `record` receives the collected row, unless it is nullptr.
    long collect(const RecordDescription& type, void* record, long key);
    /// Collects the rows that the record's reference fields name, and stores their positions in the fields.
    bool collectReferences(const RecordDescription& type, void* record);
    /// Whether the table of the manager's database fits its records; asked once in a deep copy.
    bool isReadable(const CopyTable& table);

    long save(const RecordDescription& type, void* record, long index);
    /// Saves the rows whose positions stand in the record's reference fields, and stores their new keys there.
    bool saveReferences(const CopyTable& table, void* record);
    /// Saves the collected row at a position.
    long saveCollected(const CopyTable& table, long index);
    /// Appends the record to the target's table and remembers its key. Returns the key, or -1.
    long write(const CopyTable& table, void* record, long index, long sourceKey, int keepKey);
    /// Calls `act` for every table for which there are rows, until it returns false; then the result is false.
    template <class Act>
    bool forEachTable(Act act) const
    {
        for (const Node& node : m_nodes)
            if (node.table.length() > 0 && !act(node.table))
                return false;
        return m_beyond == nullptr || m_beyond->forEachTable(act);
    }

    void reset();
    long rows() const; // collected, over all tables

    /// What was written so far, for the case that what follows is undone.
    struct Written {
        unsigned copy;
        std::size_t keys;
        std::vector<long> lists;
        std::pair<int, int> counts; // rows written, rows reused
    };
    Written written() const;
    void backTo(const Written& before);
    DeepCopyGraph* beyond() const { return m_beyond; }

private:
    struct Node {
        CopyTable table;
        Hooks hooks;
        std::unordered_map<const RecordDescription*, Edge> edges; // by target
        std::unordered_map<long, long> positions;                 // by key
        std::unordered_set<long> reused;                          // positions of rows that the target had
        std::optional<std::pair<eDSN, eIndex>> readable;          // database whose table was checked

        const Edge& edgeTo(const RecordDescription& target) const
        {
            static const Edge none;
            const auto found = edges.find(&target);
            return found == edges.end() ? none : found->second;
        }
    };
    /// The graph that follows references into a table: this one, the one beyond, or nullptr.
    DeepCopyGraph* graphOf(const RecordDescription& type);
    Node* node(const RecordDescription& type);
    template <class Act>
    bool forEachReference(const RecordDescription& type, void* record, Act act);
    static bool nameRow(const CopyTable& table, void* record);
    /// Key of a row of the target that stands for the collected one; -1 without one.
    static long existing(const Node& node, const void* record);

    std::vector<Node> m_nodes;
    std::unordered_map<const RecordDescription*, std::size_t> m_byType;
    KorTransferKeyMap& m_keys;
    std::vector<rowInfo> m_written; // the keys of that map, in order
    unsigned m_copy = 0;            // counts the copies
    DeepCopyGraph* m_beyond;
};

} // namespace korodbc
