#pragma once

#include "edit/KorOdbcMan.h"
#include "records/RecordDescription.h"
#include "transfer/RowInfo.h"

#include <memory>
#include <unordered_map>
#include <vector>

namespace korodbc {

/// One table of a deep copy: where its rows are collected and how they are written. The edges come from the record
/// descriptions; what no description says stands here.
struct CopyTable {
    enum class Naming { None, BeforeReferences, AfterReferences };

    KorOdbcMan::eTableType type;
    const RecordDescription& (*description)();
    KorString identity; // name in the transfer key map
    void* rows;         // KorArray of the record type: the collected rows
    Naming naming = Naming::BeforeReferences;
    bool reusedByName = false; // a row of the same name in the target is taken instead
    bool keepsKey = false;     // the row keeps its key where it is free
    bool isGroup = false;      // followed with m_bKernelNewerThan42 only
    void* written = nullptr;   // KorArray of the record type: rows that the copy newly wrote
    int readType = -1;         // table type of the progress report while collecting, -1: the type itself

    long length() const { return description().operations->list.length(rows); }
    void* at(long index) const { return description().operations->list.at(rows, index); }
};

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

    DeepCopyGraph(const std::vector<CopyTable>& tables, KorTransferKeyMap& keys);

    /// Rows of `from` refer once to the key in `*key` instead of the collected row of `to`, unless it is -1.
    void setOverride(KorOdbcMan::eTableType from, KorOdbcMan::eTableType to, long* key);
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

    long save(const RecordDescription& type, void* record, long index);
    /// Saves the rows whose positions stand in the record's reference fields, and stores their new keys there.
    bool saveReferences(const CopyTable& table, void* record);
    /// Saves the collected row at a position.
    long saveCollected(const CopyTable& table, long index);
    /// Appends the record to the target's table and remembers its key. Returns the key, or -1.
    long write(const CopyTable& table, void* record, long index, long sourceKey, int keepKey);

    void reset();
    long rows() const; // collected, over all tables

private:
    struct Node {
        CopyTable table;
        Hooks hooks;
        const Node* overriddenTarget = nullptr;
        long* override = nullptr;
        std::unordered_map<long, long> positions; // by key
    };
    Node* node(const RecordDescription& type);
    Node* node(KorOdbcMan::eTableType type);
    template <class Act>
    bool forEachReference(const RecordDescription& type, void* record, Act act);
    bool nameRow(const Node& node, void* record);

    std::vector<Node> m_nodes;
    std::unordered_map<const RecordDescription*, std::size_t> m_byType;
    KorTransferKeyMap& m_keys;
};

} // namespace korodbc
