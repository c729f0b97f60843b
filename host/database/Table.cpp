#include "database/Table.h"

#include "database/RecordCache.h"

namespace korodbc::host {

Value valueOf(const KorCellData& cell)
{
    switch (cell.getType()) {
    case KorItemType::kBool:
    case KorItemType::kInt:
        return std::int64_t{cell.getLong()};
    case KorItemType::kDouble:
        return cell.getDouble();
    case KorItemType::kString:
    case KorItemType::kTime:
        return cell.getStringW();
    case KorItemType::kNone:
        break;
    }
    return std::monostate{};
}

KorCellData cellOf(const Statement& statement, int column)
{
    switch (statement.cell(column).type) {
    case Statement::CellType::Integer:
        return KorCellData(static_cast<long>(statement.integer(column)));
    case Statement::CellType::Real:
        return KorCellData(statement.real(column));
    case Statement::CellType::Null:
        break;
    case Statement::CellType::Text:
        return KorCellData(statement.text(column));
    }
    return KorCellData();
}

Table::Table(Database& connection, std::string name)
    : m_database(connection), m_name(std::move(name)), m_bracketedName(bracketed(m_name))
{
}

Table::~Table() = default;

const std::vector<TableColumn>& Table::columns()
{
    if (m_columns.empty())
        m_columns = m_database.engine().columns(m_name);
    return m_columns;
}

const std::vector<std::string>& Table::columnNames()
{
    if (m_columnNames.empty())
        for (const TableColumn& column : columns())
            m_columnNames.push_back(column.name);
    return m_columnNames;
}

void Table::learnColumnNames(const Statement& select)
{
    if (!m_columnNames.empty())
        return;
    const int count = select.columns();
    m_columnNames.reserve(static_cast<std::size_t>(count));
    for (int column = 1; column < count; ++column)
        m_columnNames.emplace_back(select.columnName(column));
}

int Table::columnIndex(std::string_view name, int likely)
{
    const auto& names = columnNames();
    const auto is = [&](std::size_t i) { return sameName(names[i], name); };
    if (static_cast<std::size_t>(likely) < names.size() && is(static_cast<std::size_t>(likely)))
        return likely;
    for (std::size_t i = 0; i < names.size(); ++i)
        if (is(i))
            return static_cast<int>(i);
    return -1;
}

const std::string& Table::rowId()
{
    if (!m_rowId)
        m_rowId = m_database.engine().rowIdName(m_name);
    return *m_rowId;
}

const std::string& Table::rowOrder()
{
    if (m_rowOrder)
        return *m_rowOrder;
    std::map<int, std::string> names; // by place
    if (!rowId().empty())
        names[0] = rowId();
    else
        for (const TableColumn& column : columns())
            if (column.inPrimaryKey > 0)
                names[column.inPrimaryKey] = bracketed(column.name);
    m_rowOrder.emplace();
    for (const auto& [place, name] : names)
        *m_rowOrder += (m_rowOrder->empty() ? " ORDER BY " : ", ") + name;
    return *m_rowOrder;
}

std::string Table::selectRows()
{
    return "SELECT " + (rowId().empty() ? "0" : rowId()) + ", * FROM " + m_bracketedName;
}

Layout& Table::knownLayout(const RecordDescription& type)
{
    const auto known = m_layouts.find(&type);
    return known != m_layouts.end() ? known->second
                                    : m_layouts.emplace(&type, settledLayout(*this, type)).first->second;
}

const Layout& Table::layout(const RecordDescription& type) { return knownLayout(type); }

std::string Table::misfit(const RecordDescription& type, Use use)
{
    Layout& layout = knownLayout(type);
    if (use == Use::Look)
        return layout.misfit(use);
    if (!layout.declarationsJudged)
        judgeDeclarations(*this, type, layout);
    if (!layout.misfit(use).empty() && (use != Use::Report || !layout.misfit(Use::Read).empty()))
        return layout.misfit(use);
    RecordCache& cache = recordCache(type);
    // rows that will be read anyhow
    const bool isRead = use != Use::Write && !cache.isSparse() && cache.refresh();
    if (!layout.rowsJudged) {
        layout.rowMisfit = isRead && readsEveryKey(type) ? std::string() : keyMisfit(type);
        layout.rowsJudged = true;
    }
    const std::string& row = layout.rowMisfit.empty() ? cache.misfit() : layout.rowMisfit;
    return layout.misfit(use) + (layout.misfit(use).empty() || row.empty() ? "" : "; ") + row;
}

const TableRules& Table::rules()
{
    if (m_rules)
        return *m_rules;
    m_rules = m_database.engine().rules(m_name);
    for (const TableColumn& column : columns()) {
        const bool isKey = &column - m_columns.data() == keyColumn();
        m_rules->mayRefuse = m_rules->mayRefuse || (column.inPrimaryKey > 0 && !isKey) || column.computed;
    }
    return *m_rules;
}

RecordCache& Table::recordCache(const RecordDescription& type)
{
    auto& cache = m_caches[&type];
    if (!cache)
        cache = std::make_unique<RecordCache>(*this, type);
    return *cache;
}

RecordCache* Table::records(const RecordDescription& type)
{
    RecordCache& cache = recordCache(type);
    return cache.refresh() ? &cache : nullptr;
}

void Table::rowChanged(std::int64_t row)
{
    m_keysChanged = true;
    if (!fitsKey(row))
        for (auto& [type, layout] : m_layouts)
            layout.rowsJudged = false;
    for (auto& [type, cache] : m_caches)
        cache->rowChanged(row);
}

void Table::allChanged()
{
    m_keysChanged = true;
    for (auto& [type, layout] : m_layouts)
        layout.rowsJudged = false;
    for (auto& [type, cache] : m_caches)
        cache->allChanged();
}

void Table::forgetStatements() { m_stores.clear(); }

void Table::schemaChanged()
{
    m_columns.clear();
    m_columnNames.clear();
    m_rowId.reset();
    m_rowOrder.reset();
    m_rules.reset();
    m_layouts.clear();
    forgetStatements();
    allChanged();
}

} // namespace korodbc::host
