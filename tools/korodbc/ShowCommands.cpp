#include "Commands.h"
#include "Records.h"

#include <korodbc/records/Registry.h>
#include <korodbc/repository/RecordAccess.h>

#include <algorithm>
#include <cstdio>

namespace {

const char* referenceMark(const ColumnDescription& column) { return column.link == LinkKind::None ? "" : "-> "; }

/// One record, a line per column; references with the name of the row that they refer to.
void printRecord(const RecordDescription& type, const void* record)
{
    Sheet sheet{{{"Column", false}, {"Value", false}, {"Refers to", false}}, {}};
    const auto add = [&](const std::string& name, const ColumnDescription& column, const void* element) {
        std::string target;
        if (column.link != LinkKind::None && column.kind == FieldKind::Integer && column.integer(element) != -1) {
            const RecordDescription& other = column.target();
            const std::string runName = runNameOf(other, column.integer(element));
            target =
                referenceMark(column) + std::string(other.table) + (runName.empty() ? "" : " " + quote(runName));
        }
        sheet.rows.push_back({name, cellText(column, element), target});
    };
    for (const ColumnDescription& column : type.columns)
        add(std::string(column.name), column, record);
    for (long item = 0; type.numbered.exists() && item < type.numbered.list.length(record); ++item)
        for (const ColumnDescription& column : type.numbered.columns)
            add(numberedName(column, item + 1), column, type.numbered.list.at(record, item));
    printText(sheet);
}

std::string jsonOf(const RecordDescription& type, const void* record)
{
    const long numbered = type.numbered.exists() ? type.numbered.list.length(record) : 0;
    std::string json = jsonRow(sheetOf(type, numbered), rowOf(type, record, numbered));
    if (type.items.exists()) {
        Sheet items = sheetOf(type.items.item(), 0);
        addItems(type, record, items);
        json += ", \"items\": [";
        for (std::size_t i = 0; i < items.rows.size(); ++i)
            json += (i == 0 ? "" : ", ") + jsonRow(items, items.rows[i]) + "}";
        json += "]";
    }
    return json + "}";
}

void printJson(const std::vector<std::string>& objects, bool single)
{
    if (single) {
        std::puts(objects.front().c_str());
        return;
    }
    std::puts("[");
    for (std::size_t i = 0; i < objects.size(); ++i)
        std::printf("  %s%s\n", objects[i].c_str(), i + 1 < objects.size() ? "," : "");
    std::puts("]");
}

[[noreturn]] void noSuchRecord(const ShowOptions& options, const StoredTable& table,
                               const std::vector<std::string>& names)
{
    throw Failure{kNotFound, "table " + table.name + " (" + table.source.name +
                                 ") has no row with the key or name " + quote(options.record) +
                                 nearest(options.record, names) + "; list them with: korodbc show " + table.name};
}

void showDescribed(const ShowOptions& options, const StoredTable& table)
{
    const RecordDescription& type = *table.type;
    AnyRecords all(type);
    const bool single = !options.record.empty();
    std::vector<const void*> shown;
    AnyRecord found(type);
    if (RecordAccess::readTable(type, all.get()) != 1)
        throw unreadable(table.name);
    if (single && readRecord(type, options.record, found.get())) {
        shown.push_back(found.get());
    } else {
        std::vector<std::string> names;
        for (long i = 0; i < all.length(); ++i) {
            if (!single)
                shown.push_back(all.at(i));
            else if (type.runName >= 0)
                names.push_back(cellText(*type.runNameColumn(), all.at(i)));
        }
        if (single)
            noSuchRecord(options, table, names);
    }
    if (options.format == Format::Json) {
        std::vector<std::string> objects;
        for (const void* record : shown)
            objects.push_back(jsonOf(type, record));
        printJson(objects, single);
        return;
    }
    if (options.items && !type.items.exists())
        throw Failure{kUsage, "the rows of table " + table.name +
                                  " have no items in a table of their own; leave out --items"};
    long widest = 0;
    Sheet items = type.items.exists() ? sheetOf(type.items.item(), 0) : Sheet();
    for (const void* record : shown) {
        if (type.numbered.exists())
            widest = std::max(widest, type.numbered.list.length(record));
        addItems(type, record, items);
    }
    Sheet sheet = sheetOf(type, widest);
    for (const void* record : shown)
        sheet.rows.push_back(rowOf(type, record, widest));
    if (options.format == Format::Csv) {
        printCsv(options.items ? items : sheet);
        return;
    }
    if (single)
        printRecord(type, shown.front());
    else
        printText(sheet);
    if (options.items) {
        std::printf("\nItems (%s)\n", std::string(type.items.item().table).c_str());
        printText(items);
    }
}

void showUndescribed(const ShowOptions& options, const StoredTable& table)
{
    if (options.items)
        throw Failure{kUsage, "the rows of table " + table.name + " have no items; leave out --items"};
    const Sheet sheet = readStored(table, options.record);
    if (!options.record.empty() && sheet.rows.empty())
        noSuchRecord(options, table, {});
    if (options.format == Format::Csv) {
        printCsv(sheet);
    } else if (options.format == Format::Json) {
        std::vector<std::string> objects;
        for (const auto& row : sheet.rows)
            objects.push_back(jsonRow(sheet, row) + "}");
        printJson(objects, !options.record.empty() && objects.size() == 1);
    } else {
        printText(sheet);
    }
}

} // namespace

void runSources(const GlobalOptions& global)
{
    const Session session(global, Start::Look);
    Sheet sheet{
        {{"No", true}, {"Source", false}, {"Slot", true}, {"Tables", true}, {"Database", false}, {"State", false}},
        {}};
    std::string error;
    for (const auto& state : korodbc::host::sources()) {
        sheet.rows.push_back({std::to_string(state.dsn), state.name, std::to_string(state.index),
                              state.usable ? std::to_string(state.tables) : "-", state.connection,
                              state.usable ? "ok" : "cannot be used"});
        if (!state.usable && error.empty())
            error = state.error + remedy({state.trouble, state.error});
    }
    printText(sheet);
    if (!error.empty())
        throw Failure{kNoRepository, error};
}

void runTables(const GlobalOptions& global, const std::string& sourceName)
{
    const StartedSession session(global);
    const std::vector<Source> sources =
        sourceName.empty() ? usableSources() : std::vector<Source>{sourceNamed(sourceName)};
    Sheet sheet{{{"Source", false}, {"Table", false}, {"Rows", true}, {"Record", false}}, {}};
    for (const Source& source : sources) {
        for (const std::string& name : tableNames(source)) {
            const RecordDescription* type = records::ofTable(name);
            const long rows = numberOfRows({name, source, type});
            sheet.rows.push_back({source.name, name, rows < 0 ? "unreadable" : std::to_string(rows),
                                  type == nullptr ? "-" : std::string(type->record)});
        }
    }
    printText(sheet);
}

void runShow(const GlobalOptions& global, const ShowOptions& options)
{
    const StartedSession session(global);
    const StoredTable table = findTable(options.table, options.source);
    noteOpenEdits(table.source, table.name);
    const KorDSNRequest request(table.source.dsn, table.source.index);
    if (table.type != nullptr)
        showDescribed(options, table);
    else
        showUndescribed(options, table);
}
