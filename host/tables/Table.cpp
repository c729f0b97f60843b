#include "tables/Table.h"

#include "tables/RecordCache.h"

namespace korodbc::host {

std::string bracketed(std::string_view name)
{
    if (name.find(']') == std::string_view::npos)
        return "[" + std::string(name) + "]";
    std::string text = "\"";
    for (const char c : name)
        text.append(c == '"' ? 2 : 1, c);
    return text += '"';
}

std::string lowerCase(std::string_view text)
{
    std::string lower(text);
    for (char& c : lower)
        if (c >= 'A' && c <= 'Z')
            c = static_cast<char>(c - 'A' + 'a');
    return lower;
}

KorItemType::BaseTypes typeOfDeclaration(std::string_view declaration)
{
    const std::string type = lowerCase(declaration);
    const auto has = [&](std::string_view part) { return type.find(part) != std::string::npos; };
    if (has("bool"))
        return KorItemType::kBool;
    if (has("int"))
        return KorItemType::kInt;
    if (has("real") || has("floa") || has("doub"))
        return KorItemType::kDouble;
    if (has("date") || has("time"))
        return KorItemType::kTime;
    return KorItemType::kString;
}

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

KorCellData cellOf(Statement& statement, int column)
{
    switch (sqlite3_column_type(statement.handle(), column)) {
    case SQLITE_INTEGER:
        return KorCellData(static_cast<long>(statement.integer(column)));
    case SQLITE_FLOAT:
        return KorCellData(statement.real(column));
    case SQLITE_NULL:
        return KorCellData();
    default:
        return KorCellData(statement.text(column));
    }
}

Table::Table(Connection& connection, std::string name)
    : m_connection(connection), m_name(std::move(name)), m_bracketedName(bracketed(m_name))
{
}

Table::~Table() = default;

const std::vector<TableColumn>& Table::columns()
{
    if (m_columns.empty()) {
        enum { Name = 1, Type, NotNull, Default, PrimaryKey, Hidden };
        if (Statement* info = m_connection.prepare("PRAGMA main.table_xinfo(" + m_bracketedName + ")")) {
            const StatementRun run(*info);
            while (info->step() == SQLITE_ROW) {
                const std::int64_t hidden = info->integer(Hidden);
                if (hidden == 1)
                    continue;
                std::string declaration(info->bytes(Type));
                const KorItemType::BaseTypes type = typeOfDeclaration(declaration);
                m_columns.push_back({std::string(info->bytes(Name)), std::move(declaration), type,
                                     static_cast<int>(info->integer(PrimaryKey)), info->integer(NotNull) != 0,
                                     !info->isNull(Default), hidden != 0});
            }
        }
    }
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
    const int count = sqlite3_column_count(select.handle());
    m_columnNames.reserve(static_cast<std::size_t>(count));
    for (int column = 1; column < count; ++column)
        m_columnNames.emplace_back(sqlite3_column_name(select.handle(), column));
}

int Table::columnIndex(std::string_view name, int likely)
{
    const auto& names = columnNames();
    const auto is = [&](std::size_t i) {
        return names[i].size() == name.size() &&
               sqlite3_strnicmp(names[i].c_str(), name.data(), static_cast<int>(name.size())) == 0;
    };
    if (static_cast<std::size_t>(likely) < names.size() && is(static_cast<std::size_t>(likely)))
        return likely;
    for (std::size_t i = 0; i < names.size(); ++i)
        if (is(i))
            return static_cast<int>(i);
    return -1;
}

const std::string& Table::rowId()
{
    if (m_rowId)
        return *m_rowId;
    m_rowId.emplace();
    for (const char* name : {"_rowid_", "rowid", "oid"}) {
        const char* type = nullptr;
        int isKey = 0;
        // a column of that name hides the row's id, unless it is the id
        if (sqlite3_table_column_metadata(m_connection.handle(), nullptr, m_name.c_str(), name, &type, nullptr,
                                          nullptr, &isKey, nullptr) == SQLITE_OK &&
            isKey != 0 && type != nullptr && sqlite3_stricmp(type, "INTEGER") == 0) {
            m_rowId = name;
            break;
        }
    }
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

/// Looks for words in the statements that made the table and its indexes.
const Table::Rules& Table::rules()
{
    if (m_rules)
        return *m_rules;
    m_rules = Rules{};
    for (const TableColumn& column : columns()) {
        const bool isKey = &column - m_columns.data() == keyColumn();
        if ((column.inPrimaryKey > 0 && !isKey) || column.computed)
            m_rules->mayWait = false;
    }
    Statement* select = m_connection.prepare("SELECT sql FROM sqlite_master WHERE tbl_name = ?");
    if (select == nullptr)
        return *m_rules;
    const StatementRun run(*select);
    select->bind(1, KorString::fromUtf8(m_name));
    while (select->step() == SQLITE_ROW) {
        std::string word;
        for (const char c : lowerCase(select->bytes(0)) + " ") {
            if ((c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '_') {
                word += c;
                continue;
            }
            m_rules->replacesRows = m_rules->replacesRows || word == "replace";
            for (const char* rule : {"unique", "check", "strict", "references", "replace", "ignore"})
                m_rules->mayWait = m_rules->mayWait && word != rule;
            word.clear();
        }
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
    // called while a statement runs: nothing may be asked of the database here
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
