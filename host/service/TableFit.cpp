#include "service/TableFit.h"

#include "database/RecordCache.h"
#include "service/Service.h"

#include <korodbc/records/Registry.h>

#include <algorithm>

namespace korodbc::host {

namespace {

std::string missing(const RecordDescription& type)
{
    return "there is no table " + shown(service().physicalName(type).toUtf8());
}

/// "max(a), max(b)": the columns of a type's table that hold keys of another table.
std::string largestReferences(Table& from, const RecordDescription& type, const Table& to)
{
    Database& database = from.database();
    const auto leads = [&](const ColumnDescription& column) {
        return column.target != nullptr && database.table(service().physicalName(column.target())) == &to;
    };
    const bool ownsItems = type.itemOwner >= 0 && std::ranges::any_of(records::all(), [&](const auto describe) {
                               return describe().items.exists() && &describe().items.item() == &type &&
                                      database.table(service().physicalName(describe())) == &to;
                           });
    if ((!ownsItems && std::ranges::none_of(type.columns, leads) &&
         std::ranges::none_of(type.numbered.columns, leads)) ||
        from.recordCache(type).isKnownEmpty())
        return {};
    std::string columns;
    const auto take = [&](int index) {
        if (index >= 0)
            columns += (columns.empty() ? "max(" : ", max(") +
                       bracketed(from.columnNames()[static_cast<std::size_t>(index)]) + ")";
    };
    const Layout& layout = from.layout(type);
    for (std::size_t i = 0; i < layout.columns.size(); ++i)
        if (leads(type.columns[i]) || (ownsItems && static_cast<int>(i) == type.itemOwner))
            take(layout.columns[i]);
    for (std::size_t i = 0; i < layout.numbered.size(); ++i)
        if (leads(type.numbered.columns[i % type.numbered.columns.size()]))
            take(layout.numbered[i]);
    return columns;
}

} // namespace

std::string misfitOf(Database& database, const RecordDescription& type, Use use)
{
    Table* table = database.table(service().physicalName(type));
    if (table == nullptr)
        return missing(type);
    std::string misfit = table->misfit(type, use);
    if (!type.items.exists() || (!misfit.empty() && use != Use::Report))
        return misfit;
    Table* items = database.table(service().physicalName(type.items.item()));
    if (items == nullptr)
        return misfit + (misfit.empty() ? "" : "; ") + "table " + shown(table->name()) + ": " +
               missing(type.items.item()) + " with its items";
    return use == Use::Report ? misfit : items->misfit(type.items.item(), use);
}

Table* itemTableOf(Database& database, const RecordDescription& type)
{
    const RecordDescription& item = type.items.item();
    Table* table = database.table(service().physicalName(item));
    const std::string why = table == nullptr ? missing(item) : table->misfit(item, Use::Look);
    if (why.empty())
        return table;
    database.setError(why, FailureKind::Layout);
    return nullptr;
}

void noteReferredKeys(Table& table)
{
    if (table.knowsReferredKeys())
        return;
    std::int64_t largest = 0;
    for (const auto describe : records::all()) {
        const RecordDescription& type = describe();
        Table* from = table.database().table(service().physicalName(type));
        const std::string columns = from == nullptr ? std::string() : largestReferences(*from, type, table);
        Statement* select = columns.empty()
                                ? nullptr
                                : table.database().prepare("SELECT " + columns + " FROM " + from->bracketedName());
        if (select == nullptr)
            continue;
        const StatementRun run(*select);
        for (int i = select->step() == Step::Row ? select->columns() : 0; i > 0; --i)
            largest = std::max(largest, select->integer(i - 1));
    }
    table.setReferredKey(largest);
}

} // namespace korodbc::host
