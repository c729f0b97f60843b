#include "database/Layout.h"

#include "database/Table.h"

#include <algorithm>

namespace korodbc::host {

namespace {

/// Name of a numbered column: "Request12" for the pattern "Request%d".
std::string numberedName(std::string_view pattern, int number)
{
    const std::size_t mark = pattern.find("%d");
    std::string name(pattern.substr(0, mark));
    return mark == std::string_view::npos ? name
                                          : name.append(std::to_string(number)).append(pattern.substr(mark + 2));
}

/// Indexes of an item's columns; -1 for one that the table does not have.
std::vector<int> itemColumns(Table& table, const NumberedGroup& group, int number, int likely)
{
    std::vector<int> found;
    for (const ColumnDescription& column : group.columns) {
        found.push_back(table.columnIndex(numberedName(column.name, number), likely));
        likely = found.back() < 0 ? likely : found.back() + 1;
    }
    return found;
}

bool hasAll(const std::vector<int>& found) { return std::find(found.begin(), found.end(), -1) == found.end(); }

void settleNumbered(Table& table, const NumberedGroup& group, Layout& layout)
{
    const int columns = static_cast<int>(table.columnNames().size());
    const auto after = [&] {
        return layout.numbered.empty() ? static_cast<int>(layout.columns.size()) : layout.numbered.back() + 1;
    };
    std::vector<int> next;
    while (hasAll(next = itemColumns(table, group, layout.numberedItems + 1, after()))) {
        layout.numbered.insert(layout.numbered.end(), next.begin(), next.end());
        ++layout.numberedItems;
    }
    const auto known = std::count_if(layout.columns.begin(), layout.columns.end(), [](int at) { return at >= 0; });
    if (known + static_cast<long>(layout.numbered.size()) >= columns)
        return;
    // columns are left: a gap before further items, a part of an item, or columns of someone else
    layout.itemsCut = true;
    std::string lacking;
    for (std::size_t i = 0; i < next.size() && lacking.empty(); ++i)
        if (next[i] < 0)
            lacking = "no column " + numberedName(group.columns[i].name, layout.numberedItems + 1);
    bool gap = false, part = *std::max_element(next.begin(), next.end()) >= 0;
    for (int number = layout.numberedItems + 2; number <= columns && !gap; ++number)
        gap = hasAll(itemColumns(table, group, number, 0));
    if (gap)
        layout.differs(Use::Read, table, lacking);
    else if (part)
        layout.differs(Use::Report, table, lacking);
    else if (after() < columns)
        layout.differs(Use::Report, table,
                       "the column " + shown(table.columnNames()[static_cast<std::size_t>(after())]) +
                           " stands where the numbered ones grow");
}

/// The library counts columns when it writes cells: the first column that is not in its place.
void judgeOrder(Table& table, const RecordDescription& type, Layout& layout)
{
    if (!hasAll(layout.columns)) // no order to speak of
        return;
    int place = 0;
    const auto judge = [&](int at, const std::string& name) {
        const int wanted = place++;
        if (at == wanted)
            return true;
        layout.differs(Use::Write, table,
                       "the column " + shown(table.columnNames()[static_cast<std::size_t>(wanted)]) +
                           " stands in the place of " + name);
        return false;
    };
    for (std::size_t i = 0; i < layout.columns.size(); ++i)
        if (!judge(layout.columns[i], std::string(type.columns[i].name)))
            return;
    for (std::size_t i = 0; i < layout.numbered.size(); ++i) {
        const std::size_t group = type.numbered.columns.size();
        if (!judge(layout.numbered[i],
                   numberedName(type.numbered.columns[i % group].name, static_cast<int>(i / group) + 1)))
            return;
    }
}

void settleWriteOrder(const RecordDescription& type, Layout& layout)
{
    std::vector<int> late;
    for (int i = 0; i < static_cast<int>(type.columns.size()); ++i) {
        if (i == type.key)
            continue;
        (type.at(i)->writtenAfter >= 0 ? late : layout.writeOrder).push_back(i);
    }
    for (const int column : late) {
        const auto place =
            std::find(layout.writeOrder.begin(), layout.writeOrder.end(), type.at(column)->writtenAfter);
        layout.writeOrder.insert(place == layout.writeOrder.end() ? place : place + 1, column);
    }
}

bool isWhole(KorItemType::BaseTypes type) { return type == KorItemType::kInt || type == KorItemType::kBool; }

} // namespace

std::string shown(std::string_view name)
{
    std::string text(name.substr(0, 80));
    for (char& c : text)
        if (static_cast<unsigned char>(c) < ' ')
            c = '?';
    return name.size() > text.size() ? text + "..." : text;
}

void Layout::differs(Use from, const Table& table, const std::string& what)
{
    for (std::size_t use = static_cast<std::size_t>(from); use < uses; ++use)
        m_misfits[use] += (m_misfits[use].empty() ? "table " + shown(table.name()) + ": " : ", ") + what;
}

Layout settledLayout(Table& table, const RecordDescription& type)
{
    Layout layout;
    layout.columns.reserve(type.columns.size());
    for (int i = 0; i < static_cast<int>(type.columns.size()); ++i) {
        layout.columns.push_back(table.columnIndex(type.at(i)->name, i));
        if (layout.columns.back() < 0)
            layout.differs(i == type.key || i == type.itemOwner ? Use::Look : Use::Read, table,
                           "no column " + std::string(type.at(i)->name));
    }
    settleWriteOrder(type, layout);
    if (type.numbered.exists())
        settleNumbered(table, type.numbered, layout);
    judgeOrder(table, type, layout);
    return layout;
}

void judgeDeclarations(Table& table, const RecordDescription& type, Layout& layout)
{
    layout.declarationsJudged = true;
    const auto declared = [&](int index) -> const TableColumn& {
        return table.columns()[static_cast<std::size_t>(index)];
    };
    for (const int field : {type.key, type.itemOwner}) {
        const int index = field < 0 ? -1 : layout.columns[static_cast<std::size_t>(field)];
        if (index < 0)
            continue;
        const TableColumn& column = declared(index);
        const bool whole = type.at(field)->kind == FieldKind::Integer;
        if (whole ? !isWhole(column.type) : isWhole(column.type) || column.type == KorItemType::kDouble)
            layout.differs(Use::Read, table,
                           "the column " + shown(column.name) + " is declared " +
                               (column.declaration.empty() ? "without a type" : shown(column.declaration)) +
                               " and holds " + (whole ? "whole numbers" : "texts"));
        if (field == type.key && index != table.keyColumn())
            layout.differs(Use::Write, table, "the column " + shown(column.name) + " is not its key");
    }
    std::vector<char> described(table.columns().size(), 0);
    for (const std::vector<int>* list : {&layout.columns, &layout.numbered})
        for (const int index : *list) {
            if (index < 0)
                continue;
            described[static_cast<std::size_t>(index)] = 1;
        }
    // a table cannot be filled from its copy where it computes a column
    for (const TableColumn& column : table.columns())
        if (column.computed)
            layout.differs(Use::Write, table, "the column " + shown(column.name) + " is computed");
    // rows without keys of their own are written with the described columns alone
    for (std::size_t i = 0; i < described.size() && type.key < 0; ++i)
        if (described[i] == 0 && table.columns()[i].required())
            layout.differs(Use::Write, table,
                           "the column " + shown(table.columns()[i].name) + " must not be empty");
}

} // namespace korodbc::host
