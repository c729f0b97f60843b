#include "support/PairwiseCompaction.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <sqlite3.h>
#include <sstream>
#include <utility>

namespace pairwise {

namespace {

struct Column {
    std::string name, target;
    char mark;
};

/// Columns that make rows equal. "Name~": reals within 1e-10. "Name?": texts that count where both are longer than
/// 2 characters. "Name>Table": the key of a row of that compacted table.
struct Columns : std::vector<Column> {
    Columns(const char* text = "")
    {
        std::istringstream words(text);
        for (std::string word; words >> word;) {
            const std::size_t end = std::min(word.find_first_of("~?>"), word.size());
            push_back({word.substr(0, end), word.substr(std::min(end + 1, word.size())), word[end]});
        }
    }
};

struct Rule {
    int types; // in which it is compacted
    std::string table;
    Columns columns;
    std::string items = "";   // table of the items, or the column that counts those in numbered columns
    std::string owner = "";   // column of the items' table with the key of their row; none for numbered columns
    Columns itemColumns = {}; // without the number
};

/// Tables that are referred to before those that refer to them.
const std::vector<Rule> rules = {
    {1, "DetViewSystemAndBox",
     "SystemSource SelectMode ViewDirection BoxMode RotationX RotationZ DepthFront~ DepthBack~"},
    {1, "DetAnnotationType", "LeaderStyle AnnotationTypeContents1"},
    {1, "DetArrangerControl",
     "ArrangeGlobally ArrangeInCentre OppositeAngleAllowed TerminateOnFirstFit UseBasePositionOnFailure "
     "LengthItems",
     "LengthItems", "", "Angle PreferredDistance MaxDistance"},
    {1, "DetArrangerStrategy", "ArrangeGlobally ArrangeInCenter TerminateOnFirstFit LengthItems", "LengthItems",
     "", "SearchArea SearchDirection MinDistance MaxDistance"},
    {1, "DetViewArrangeStrategy", "ArrangeDirection AlignViews HorizontalGap~ VerticalGap~"},
    {1, "DetViewLengthClip", "ClipX ClipY ClippingType MinimumLength~ Gap~"},
    {3, "DetObjQualifierSet", "", "DetObjQualifierSetItem", "IdDetObjQualifierSet",
     "ObjectQualifier ModelRole Filter"},
    {1, "DetObjAnnotationStrategy",
     "AnnotationType>DetAnnotationType ArrangerControl>DetArrangerControl "
     "ArrangerStrategy>DetArrangerStrategy Group AnnotateOnce Layer TextSize"},
    {1, "DetObjReprMapsNew", "", "DetObjReprMapItems", "Key",
     "Description ObjQualifier>DetObjQualifierSet GeometricRestrictions DepthPosition Appearance "
     "AnnotationStrategy>DetObjAnnotationStrategy LineType SimplifiedGap CompassMark"},
    {1, "DetViewDimPointSelection", "Type Objects>DetObjQualifierSet GeometricRestrictions OutermostOnly"},
    {1, "DetViewDimRequestLinear",
     "AllowCombine ArrangeAbove ArrangeGlobally Direction GroupRelatedDimensions LabelContents LabelPosition "
     "OneChainPerObjectInFirstSelection",
     "NumberPoints", "", "Point>DetViewDimPointSelection"},
    {1, "DetViewDimStrategyNew", "OneChainPerBoltDiam", "DetViewDimStrategyItems", "Key",
     "Description Type RequestLinear>DetViewDimRequestLinear GroupEqualDistances BrokenRunningDimension "
     "RunningDimensionTextAlignment HideDimensionPoint"},
    {1, "DetViewRequest",
     "SystemAndBox>DetViewSystemAndBox ObjReprMap>DetObjReprMapsNew DimStrategy>DetViewDimStrategyNew "
     "LengthClipXY>DetViewLengthClip UsedForCutsAndCallouts TitlePosition CalloutTitleTemplate ScaleFactor~ "
     "Rotation~"},
    {1, "DetailStyle",
     "ViewArrangeStrategy>DetViewArrangeStrategy DetailOrientation ObjectSelectionStrategy TitleFormat "
     "TitlePosition CutViewTitleFormat CutViewTitlePosition ScaleFormat DateFormat FrameAppearance "
     "ObjectPosition AutomaticClipping",
     "NumberRequests", "", "Request>DetViewRequest"},
    {1, "DetViewRequestCategories", "BaseCategory DetViewRequest>DetViewRequest"},
    {3, "DetailStyleMapNew", "", "DetailStyleMapItems", "Key",
     "Script? ObjQualifierSet>DetObjQualifierSet DetailStyle>DetailStyle DetailStyleOverrides"},
    {2, "DetailProcessMain2CutScale", "", "NumberItems", "", "MainViewScale CutScale"},
    {2, "DetailProcessScales", "", "DetailProcessScalesItem", "DetProcScaleId", "Scale MaxLength"},
    {2, "DetailFilenameSelector", "Folder NameFormat FirstNumber Digits"},
    {2, "DetailProcessStep",
     "Category FilenameSelector>DetailFilenameSelector AlternativeScales>DetailProcessScales "
     "DependOnMainView>DetailProcessMain2CutScale StyleMap>DetailStyleMapNew Selection Sort StepOrder "
     "DetailsPerSheet FitSheetToDetails MarginX MarginY DetailGap"},
    {2, "DetailProcessDefinition", "", "NumberSteps", "", "Step>DetailProcessStep"},
};

std::vector<Row> query(sqlite3* db, const std::string& sql)
{
    std::vector<Row> rows;
    sqlite3_stmt* select = nullptr;
    sqlite3_prepare_v2(db, sql.c_str(), -1, &select, nullptr);
    while (sqlite3_step(select) == SQLITE_ROW) {
        Row& row = rows.emplace_back();
        for (int i = 0; i < sqlite3_column_count(select); ++i) {
            std::string& cell = row[sqlite3_column_name(select, i)];
            const int type = sqlite3_column_type(select, i);
            char real[32];
            if (type == SQLITE_FLOAT)
                cell.assign(real, std::to_chars(real, std::end(real), sqlite3_column_double(select, i)).ptr);
            else if (type != SQLITE_NULL)
                cell = (type == SQLITE_TEXT ? "'" : "") +
                       std::string(reinterpret_cast<const char*>(sqlite3_column_text(select, i)));
        }
    }
    sqlite3_finalize(select);
    return rows;
}

/// A cell of a record or of one of its items.
struct Cell {
    const Column* column;
    std::string value, table, name, order; // the name with the item's number, the order of an item in a table
};

bool equalCells(const Cell& a, const Cell& b)
{
    const auto isShort = [](const std::string& text) { // the apostrophe and the first bytes of characters
        return std::count_if(text.begin(), text.end(), [](char c) { return (c & 0xC0) != 0x80; }) <= 3;
    };
    if (a.value.starts_with('\'') || b.value.starts_with('\''))
        return a.value == b.value || (a.column->mark == '?' && (isShort(a.value) || isShort(b.value)));
    const auto number = [](const Cell& cell) { // NULL reads as the default of the field
        return cell.value.empty() && cell.name == "ScaleFactor" ? 1 : std::strtod(cell.value.c_str(), nullptr);
    };
    const double x = number(a), y = number(b);
    return a.column->mark == '~' ? (x - y) * (x - y) <= 1e-10 * 1e-10 : x == y; // infinities are not near
}

/// A row and its items as the library reads them.
struct Record {
    std::string key;
    std::vector<Cell> cells;
};

std::vector<Record> recordsOf(const Rule& rule, const Contents& contents)
{
    std::vector<Record> records;
    for (const Row& row : contents.at(rule.table)) {
        Record& record = records.emplace_back(Record{row.at("Key"), {}});
        const auto add = [&](const std::string& table, const Columns& columns, const Row& from,
                             const std::string& number, const std::string& order) {
            for (const Column& column : columns)
                record.cells.push_back(
                    {&column, from.at(column.name + number), table, column.name + number, order});
        };
        add(rule.table, rule.columns, row, "", "");
        if (!rule.owner.empty()) {
            std::multimap<int, Row> items; // equal orders as they are stored
            for (const Row& item : contents.at(rule.items))
                if (item.at(rule.owner) == record.key)
                    items.emplace(std::stoi(item.at("Order")), item);
            for (const auto& [order, item] : items)
                add(rule.items, rule.itemColumns, item, "", item.at("Order"));
        } else if (!rule.items.empty()) {
            // as many as counted, but not more than there are columns
            for (int i = 1; i <= std::stoi(row.at(rule.items)); ++i)
                if (row.contains(rule.itemColumns[0].name + std::to_string(i)))
                    add(rule.table, rule.itemColumns, row, std::to_string(i), "");
        }
    }
    return records;
}

using Replaced = std::map<std::string, std::string>; // keys that stay, by the keys of the duplicates

Replaced duplicates(const std::vector<Record>& records)
{
    Replaced found;
    for (auto a = records.begin(); a != records.end(); ++a)
        for (auto b = a + 1; b != records.end() && !found.contains(a->key); ++b)
            if (!found.contains(b->key) && std::ranges::equal(a->cells, b->cells, equalCells))
                found[b->key] = a->key;
    return found;
}

void redirect(std::vector<Record>& records, std::map<std::string, Replaced>& replaced, Outcome& outcome)
{
    for (Record& record : records)
        for (Cell& cell : record.cells) {
            const Replaced& targets = replaced[cell.column->target];
            const auto target = targets.find(cell.value);
            if (target == targets.end())
                continue;
            cell.value = target->second;
            ++outcome.statements;
            for (Row& row : outcome.contents[cell.table]) // every item of that order
                if (row["Key"] == record.key && (cell.order.empty() || row["Order"] == cell.order)) {
                    const auto own = targets.find(row[cell.name]);
                    outcome.ambiguous |= (own == targets.end() ? row[cell.name] : own->second) != cell.value;
                    row[cell.name] = cell.value;
                }
        }
}

void renumberQualifierSets(Outcome& outcome)
{
    int place = 0;
    for (Row& set : outcome.contents["DetObjQualifierSet"]) {
        const std::string key = std::exchange(set["Key"], std::to_string(++place)), number = set["Key"];
        if (key == number)
            continue;
        outcome.statements += 4;
        // the items go with their set, in place of what belonged to no set
        std::erase_if(outcome.contents["DetObjQualifierSetItem"],
                      [&](Row& item) { return item["IdDetObjQualifierSet"] == number; });
        for (const auto& [table, column] : {std::pair{"DetObjReprMapItems", "ObjQualifier"},
                                            {"DetViewDimPointSelection", "Objects"},
                                            {"DetailStyleMapItems", "ObjQualifierSet"},
                                            {"DetObjQualifierSetItem", "IdDetObjQualifierSet"}})
            for (Row& row : outcome.contents[table])
                if (row[column] == key)
                    row[column] = number;
    }
}

} // namespace

Contents readFile(const std::string& file)
{
    Contents contents;
    sqlite3* db = nullptr;
    if (sqlite3_open_v2(file.c_str(), &db, SQLITE_OPEN_READWRITE, nullptr) == SQLITE_OK)
        for (const Row& table : query(db, "SELECT name FROM sqlite_master WHERE type = 'table'")) {
            const std::string name = table.at("name").substr(1);
            contents[name] = query(db, "SELECT * FROM [" + name + "] ORDER BY rowid");
        }
    sqlite3_close(db);
    return contents;
}

std::string difference(const Contents& expected, const Contents& actual)
{
    const auto line = [](auto row, auto end) {
        std::string text;
        if (row != end)
            for (const auto& [column, cell] : *row)
                text += " " + column + " " + cell;
        return text;
    };
    std::string text = expected.size() == actual.size() ? "" : "other tables\n";
    for (const auto& [table, rows] : expected) {
        const std::vector<Row> others = actual.contains(table) ? actual.at(table) : std::vector<Row>();
        const auto [row, other] = std::mismatch(rows.begin(), rows.end(), others.begin(), others.end());
        if (rows != others)
            text += table + line(other, others.end()) + "\n  expected" + line(row, rows.end()) + "\n";
    }
    return text;
}

Outcome compact(const Contents& before, Type type, bool deletes, bool setsAlone)
{
    Outcome outcome{before};
    std::map<std::string, Replaced> replaced; // by table
    for (const Rule& rule : rules) {
        const std::string& table = rule.table;
        if ((rule.types & type) == 0)
            continue;
        std::vector<Record> records = recordsOf(rule, before);
        redirect(records, replaced, outcome);
        if (setsAlone ? table == "DetObjQualifierSet" && type != kProcesses : table != "DetailProcessDefinition")
            replaced[table] = duplicates(records);
        // equal styles stay; style maps too when processes are not looked at
        if (!deletes || (setsAlone ? type != kStyles
                                   : table == "DetailStyle" || (table == "DetailStyleMapNew" && type == kStyles)))
            continue;
        const auto isDuplicate = [&](const Row& row) { return replaced[table].contains(row.at("Key")); };
        std::erase_if(outcome.contents[table], isDuplicate);
        if (rule.owner == "Key") // items with keys of their own stay
            std::erase_if(outcome.contents[rule.items], isDuplicate);
    }
    if (setsAlone)
        renumberQualifierSets(outcome);
    return outcome;
}

} // namespace pairwise
