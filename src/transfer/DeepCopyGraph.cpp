#include "DeepCopyGraph.h"

#include "foundation/RecordColumns.h"
#include "StyleGraph.h"

#include <korodbc/foundation/KorTransferState.h>
#include <korodbc/project/KorODBCUserProfile.h>
#include <korodbc/records/AnyRecord.h>
#include <korodbc/repository/KorDatabaseAccess.h>
#include <korodbc/repository/KorDSNManager.h>
#include <korodbc/repository/RecordAccess.h>
#include <korodbc/transfer/KorDetailTableDependencies.h>

#include <algorithm>
#include <tuple>

namespace korodbc {

DeepCopyGraph::DeepCopyGraph(std::span<const CopyTable> tables, KorTransferKeyMap& keys, DeepCopyGraph* beyond)
    : m_keys(keys), m_beyond(beyond)
{
    for (const CopyTable& table : tables) {
        m_byType.emplace(&table.description(), m_nodes.size());
        m_nodes.push_back({table, {}, {}, {}, {}, {}});
    }
}

void DeepCopyGraph::setHooks(KorOdbcMan::eTableType type, Hooks hooks)
{
    node(detailTable(type).description())->hooks = hooks;
}

void DeepCopyGraph::setEdge(KorOdbcMan::eTableType from, KorOdbcMan::eTableType to, Edge edge)
{
    node(detailTable(from).description())->edges[&detailTable(to).description()] = edge;
}

DeepCopyGraph* DeepCopyGraph::graphOf(const RecordDescription& type)
{
    return m_byType.contains(&type) ? this : m_beyond == nullptr ? nullptr : m_beyond->graphOf(type);
}

DeepCopyGraph::Node* DeepCopyGraph::node(const RecordDescription& type)
{
    const auto found = m_byType.find(&type);
    return found == m_byType.end() ? nullptr : &m_nodes[found->second];
}

const CopyTable* DeepCopyGraph::table(const RecordDescription& type) const
{
    const auto found = m_byType.find(&type);
    return found == m_byType.end() ? nullptr : &m_nodes[found->second].table;
}

const CopyTable* DeepCopyGraph::table(KorOdbcMan::eTableType type) const
{
    return table(detailTable(type).description());
}

long DeepCopyGraph::find(const CopyTable& table, long key)
{
    Node& known = *node(table.description());
    const long length = table.length();
    if (static_cast<long>(known.positions.size()) != length) {
        // the host changed the list
        known.positions.clear();
        for (long position = 0; position < length; ++position)
            known.positions.emplace(table.description().keyOf(table.at(position)), position);
    }
    const auto found = known.positions.find(key);
    return found == known.positions.end() ? -1 : found->second;
}

long DeepCopyGraph::append(const CopyTable& table, const void* record, long key)
{
    const long position = table.description().list().append(table.rows, record);
    node(table.description())->positions.emplace(key, position);
    return position;
}

/// Calls `act(value of the reference field, graph and table that it leads to, whether it is in a list)` for each
/// reference that the copy follows, in the order of the columns, items last; stops when it returns false.
template <class Act>
bool DeepCopyGraph::forEachReference(const RecordDescription& type, void* record, Act act)
{
    const Node& own = *node(type);
    const auto visit = [&](const ColumnDescription& column, void* element, long item) {
        if (column.link != LinkKind::Reference)
            return true;
        int& value = column.integer(element);
        const RecordDescription& target = column.target();
        DeepCopyGraph* graph = graphOf(target);
        const int* followedWith = own.edgeTo(target).followedWith;
        if (graph == nullptr || (column.noneAllowed && value == -1) ||
            (followedWith != nullptr && *followedWith == 0))
            return true;
        return act(value, *graph, target, item >= 0);
    };
    return forEachColumn(type, record, visit);
}

bool DeepCopyGraph::collectReferences(const RecordDescription& type, void* record)
{
    return forEachReference(type, record,
                            [](int& value, DeepCopyGraph& graph, const RecordDescription& target, bool) {
                                value = static_cast<int>(graph.collect(target, nullptr, value));
                                return value >= 0;
                            });
}

long DeepCopyGraph::collect(const RecordDescription& type, void* record, long key)
{
    Node* own = node(type);
    if (own == nullptr)
        return -1;
    const CopyTable& table = own->table;
    reportProgress(static_cast<KorOdbcMan::eTableType>(table.rules.readAs >= 0 ? table.rules.readAs : table.type),
                   0);
    const long known = find(table, key);
    if (known >= 0) {
        if (record != nullptr)
            type.elements->assign(record, table.at(known));
        return known;
    }
    std::optional<AnyRecord> scratch;
    if (record == nullptr)
        record = scratch.emplace(type).get();
    if (!isReadable(table) || RecordAccess::readByKey(type, key, record) != 1 || !collectReferences(type, record))
        return -1;
    if (own->hooks.referencesCollected != nullptr && !own->hooks.referencesCollected(record, key))
        return -1;
    const long position = append(table, record, key);
    if (own->hooks.collected != nullptr && !own->hooks.collected(record, key))
        return -1;
    return position;
}

bool DeepCopyGraph::isReadable(const CopyTable& table)
{
    const KorDSNManager& current = KorDSNManager::getInstance();
    const std::pair database(current.getCurrentDSN(), current.getCurrentIndex());
    Node& own = *node(table.description());
    if (own.readable != database) {
        own.readable.reset();
        if (KorDatabaseAccess::checkTable(database.first, table.description(), false) != 1)
            return false;
        own.readable = database;
    }
    return true;
}

bool DeepCopyGraph::nameRow(const CopyTable& table, void* record)
{
    const ColumnDescription* column = table.description().runNameColumn();
    if (column == nullptr)
        return true;
    KorString name = column->text(record);
    if (table.rules.callback == DetailTable::Callback::NotAsked) {
        KorDetailTableDependencies::GetDefaultNameForRow(table.type, name);
    } else {
        const int named = nameForRow(table.type, name);
        if (named == -1 || (named != 1 && table.rules.callback == DetailTable::Callback::MustName))
            return false;
    }
    column->text(record) = name;
    column->text(table.row.currentRecord()) = name;
    return true;
}

bool DeepCopyGraph::saveReferences(const CopyTable& table, void* record)
{
    const Node& own = *node(table.description());
    return forEachReference(table.description(), record,
                            [&](int& value, DeepCopyGraph& graph, const RecordDescription& target, bool inList) {
                                const long position = value;
                                if (long* override = own.edgeTo(target).override;
                                    override != nullptr && *override != -1) {
                                    value = static_cast<int>(*override);
                                    *override = -1;
                                    return true;
                                }
                                const long key = graph.saveCollected(*graph.table(target), position);
                                value = static_cast<int>(key);
                                if (key == -1)
                                    return false;
                                return !inList || own.hooks.listReferenceSaved == nullptr ||
                                       own.hooks.listReferenceSaved(position, key);
                            });
}

long DeepCopyGraph::saveCollected(const CopyTable& table, long index)
{
    const AnyRecord record(table.description());
    table.description().elements->assign(record.get(), table.at(index));
    return save(table.description(), record.get(), index);
}

long DeepCopyGraph::existing(const Node& node, const void* record)
{
    if (node.hooks.existing != nullptr)
        if (const long key = node.hooks.existing(record); key != -1)
            return key;
    if (!node.table.rules.reusedByName)
        return -1;
    const RecordDescription& type = node.table.description();
    const AnyRecord found(type);
    return RecordAccess::readByRunName(type, type.runNameColumn()->text(record), found.get()) == 1
               ? type.keyOf(found.get())
               : -1;
}

long DeepCopyGraph::save(const RecordDescription& type, void* record, long index)
{
    Node* own = node(type);
    if (own == nullptr)
        return -1;
    const CopyTable& table = own->table;
    const long sourceKey = type.keyOf(record);
    long known = -1;
    if (m_keys.lookup({table.identity, static_cast<int>(index), static_cast<int>(sourceKey)}, known))
        return known;
    if ((known = existing(*own, record)) != -1) {
        if (own->reused.insert(index).second)
            ++KorDetailTableDependencies::m_RowsReused;
        return known;
    }
    // the host sees the row that it names
    type.elements->assign(table.row.currentRecord(), record);
    if (table.rules.naming == DetailTable::Naming::BeforeReferences && !nameRow(table, record))
        return -1;
    if (!saveReferences(table, record))
        return -1;
    if (table.rules.naming == DetailTable::Naming::AfterReferences && !nameRow(table, record))
        return -1;
    const int keepKey = own->hooks.keepKey != nullptr ? own->hooks.keepKey() : table.rules.keepsKey ? 1 : 0;
    const long key = write(table, record, index, sourceKey, keepKey);
    if (key != -1 && own->hooks.saved != nullptr)
        own->hooks.saved(index, key);
    return key;
}

long DeepCopyGraph::write(const CopyTable& table, void* record, long index, long sourceKey, int keepKey)
{
    const RecordDescription& type = table.description();
    KorODBCUserProfile::resetOwnerText();
    if (const ColumnDescription* owner = type.ownerColumn();
        owner != nullptr && !KorTransferState::isTransferInProgress())
        owner->text(record) = KorODBCUserProfile::m_charOwnerText;
    void* current = table.row.currentRecord();
    type.elements->assign(current, record);
    reportProgress(table.type, 1);
    const int key = KorOdbcMan::appendNewRecord(table.type, keepKey, KorOdbcMan::kFirstCopy);
    if (key < 0)
        return -1;
    type.keyColumn().integer(record) = key;
    if (table.written != nullptr)
        type.list().append(table.written, current);
    m_written.push_back({table.identity, static_cast<int>(index), static_cast<int>(sourceKey)});
    m_keys.insert(m_written.back(), key);
    ++KorDetailTableDependencies::m_RowsWritten;
    return key;
}

DeepCopyGraph::Written DeepCopyGraph::written() const
{
    using Copy = KorDetailTableDependencies;
    Written now{m_copy, m_written.size(), {}, {Copy::m_RowsWritten, Copy::m_RowsReused}};
    for (const Node& node : m_nodes)
        if (node.table.written != nullptr)
            now.lists.push_back(node.table.description().list().length(node.table.written));
    return now;
}

void DeepCopyGraph::backTo(const Written& before)
{
    if (before.copy != m_copy)
        return; // another copy has begun
    for (; m_written.size() > before.keys; m_written.pop_back())
        m_keys.remove(m_written.back());
    std::size_t position = 0;
    for (Node& node : m_nodes) {
        node.reused.clear();
        if (node.table.written == nullptr)
            continue;
        const ListOperations list = node.table.description().list();
        list.resize(node.table.written, std::min(before.lists[position++], list.length(node.table.written)));
    }
    std::tie(KorDetailTableDependencies::m_RowsWritten, KorDetailTableDependencies::m_RowsReused) = before.counts;
}

void DeepCopyGraph::reset()
{
    for (Node& node : m_nodes) {
        const ListOperations list = node.table.description().list();
        list.resize(node.table.rows, 0);
        if (node.table.written != nullptr)
            list.resize(node.table.written, 0);
        node.positions.clear();
        node.reused.clear();
        node.readable.reset();
    }
    m_keys.removeAll();
    m_written.clear();
    ++m_copy;
}

long DeepCopyGraph::rows() const
{
    long sum = 0;
    for (const Node& node : m_nodes)
        sum += node.table.length();
    return sum;
}

} // namespace korodbc
