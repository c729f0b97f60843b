#include "conformance/Checks.h"

#include <korodbc/repository/KorDSNManager.h>
#include <korodbc/repository/KRRepositoryProxyMan.h>
#include <korodbc/roots/KorRegExWrapper.h>

#include <typeinfo>

namespace conformance {

namespace {

using RecordAccess::Sources;

const RecordDescription& rows() { return descriptionOf<ConformanceRow>(); }
const RecordDescription& names() { return descriptionOf<ConformanceName>(); }
const RecordDescription& missing() { return descriptionOf<ConformanceMissing>(); }

std::string joined(const KorArray<KorString>& texts)
{
    std::string text;
    for (const KorString& one : texts)
        text += one.toUtf8() + " ";
    return text;
}

KorArray<KorString> texts(std::initializer_list<const wchar_t*> list)
{
    KorArray<KorString> array;
    for (const wchar_t* text : list)
        array.append(KorString(text));
    return array;
}

/// Rows out of order: by key "c a b", by sort order "a b c".
void addThree()
{
    add(row(3, L"b", 7, 2));
    add(row(1, L"c", 7, 3));
    add(row(2, L"a", 8, 1));
}

void singleRecords(Findings& f)
{
    addThree();
    add(row(9, L"O'Brien \u00C4\U0001F600 ", -5, 9, 2));
    ConformanceRow read = row(77, L"before");
    f.expect(RecordAccess::readByKey(rows(), 5L, &read) == 0 &&
                 RecordAccess::readByKey(rows(), L"x", &read) == 0 &&
                 RecordAccess::readByRunName(rows(), L"o'brien \u00E4\U0001F600 ", &read) == 0 && read.key == 77 &&
                 read.runName == L"before",
             "what is not found leaves the record as it was");
    for (const int how : {0, 1, 2}) {
        read = row(77, L"before", 1, 1, 1);
        const int result = how == 0   ? RecordAccess::readByKey(rows(), 9L, &read)
                           : how == 1 ? RecordAccess::readByKey(rows(), L"9", &read)
                                      : RecordAccess::readByRunName(rows(), L"O'Brien \u00C4\U0001F600 ", &read);
        f.expect(result == 1 && read.key == 9 && read.number == -5 && read.real == -4.5 && read.parts == 2 &&
                     read.items.length() == 2 && read.items[1].number == -49,
                 "a record is read as it was written, by key, by the key's text, by run name");
    }
    ConformanceWideRow wide;
    f.expect(RecordAccess::readByKey(descriptionOf<ConformanceWideRow>(), 9L, &wide) == 1 && wide.later == 11,
             "a column that the table lacks leaves the member as a new record has it");
}

void textKeys(Findings& f)
{
    add(ConformanceName{L"b", L"two"});
    add(ConformanceName{L"a", L"one"});
    add(ConformanceName{L"10", L"three"});
    ConformanceName read;
    f.expect(RecordAccess::readByKey(names(), L"a", &read) == 1 && read.runName == L"one",
             "a text key finds its record");
    f.expect(RecordAccess::readByKey(names(), L"A", &read) == 0, "exactly");
    KorArray<KorString> found = texts({L"before"});
    f.expect(RecordAccess::keys(names(), found) == 1 && joined(found) == "b a 10 ",
             "without integer keys the table order is that of appending");
    KorString key(L"before");
    f.expect(RecordAccess::keyOfRunName(names(), L"three", key) == 1 && key == L"10", "a run name gives its key");
    int number = 5;
    f.expect(RecordAccess::keyOfRunName(names(), L"three", number) == 0 && number == 5,
             "a text is no integer key");
    f.expect(RecordAccess::runNameOfKey(names(), L"b", key) == 1 && key == L"two", "and the other way");
}

void orders(Findings& f)
{
    addThree();
    add(row(4, L"d", 8, 1));
    KorArray<KorString> found;
    f.expect(RecordAccess::runNames(rows(), found, false) == 1 && joined(found) == "c a b d ",
             "table order is that of the keys");
    f.expect(RecordAccess::runNames(rows(), found, true) == 1 && joined(found) == "a d b c ",
             "the sort order leaves equal ones in table order");
    KorArray<ConformanceRow> records;
    f.expect(RecordAccess::readTable(rows(), &records) == 1 && records.length() == 4 && records[0].key == 1 &&
                 records[3].key == 4,
             "a table is read in table order, and replaces the output");
    f.expect(RecordAccess::readTable(rows(), &records) == 1 && records.length() == 4, "each time");
    ConformanceRow read;
    f.expect(RecordAccess::readFirstWhere(rows(), 2, 8, 4, 1, &read) == 1 && read.key == 2,
             "the first in table order is found");
    f.expect(RecordAccess::readFirstWhere(rows(), 2, 8, 4, 2, &read) == 0 && read.key == 2, "by both columns");
}

void chosenKeys(Findings& f)
{
    addThree();
    KorArray<long> numbers;
    for (const long key : {1L, 2L, 5L, 1L})
        numbers.append(key);
    KorArray<KorString> found;
    f.expect(RecordAccess::runNamesOfKeys(rows(), numbers, found) == 1 && joined(found) == "a c ",
             "names of keys come once each, in sort order");
    f.expect(RecordAccess::runNamesOfKeys(rows(), texts({L"3", L"x", L"1"}), found) == 1 &&
                 joined(found) == "b c ",
             "also of keys given as texts");
    f.expect(RecordAccess::runNamesOfKeys(rows(), texts({L"5"}), found) == 0 && joined(found) == "b c ",
             "of texts, none found is none read");
    numbers.removeAll();
    f.expect(RecordAccess::runNamesOfKeys(rows(), numbers, found) == 1 && found.isEmpty(),
             "of numbers it is read");
    std::string seen;
    const auto show = [&](const void* record) {
        seen += static_cast<const ConformanceRow*>(record)->runName.toUtf8();
        return seen.size() < 2;
    };
    f.expect(RecordAccess::visitKeys(rows(), texts({L"1", L"2", L"3"}), show) == 1 && seen == "ab",
             "records of keys are shown in sort order until that is enough");
    f.expect(RecordAccess::visitKeys(rows(), texts({L"8"}), show) == 0 && seen == "ab", "none is shown of no key");
}

void recordsWhere(Findings& f)
{
    addThree();
    KorArray<ConformanceRow> records;
    records.append(row(50, L"before"));
    f.expect(RecordAccess::readWhere(rows(), 2, 7, &records) == 1 && records.length() == 3 &&
                 records[1].key == 1 && records[2].key == 3,
             "records that hold a value are appended in table order");
    f.expect(RecordAccess::readWhere(rows(), 2, 9, &records) == 0 && records.length() == 3,
             "0 when there are none");
    f.expect(RecordAccess::readWhere(rows(), 1, 7, &records) == -1, "-1 when the column holds no integers");
    KorArray<ConformanceWideRow> wide;
    f.expect(RecordAccess::readWhere(descriptionOf<ConformanceWideRow>(), 2, 11, &wide) == -1 && wide.isEmpty(),
             "-1 when the table lacks the column");
}

void missingTable(Findings& f)
{
    KorArray<KorString> found = texts({L"before"});
    KorArray<ConformanceMissing> records;
    KorString name(L"before");
    ConformanceMissing read;
    bool shown = false;
    const auto show = [&](const void*) { return shown = true; };
    f.expect(RecordAccess::readByKey(missing(), 1L, &read) == 0 &&
                 RecordAccess::readTable(missing(), &records) == 0 &&
                 RecordAccess::runNames(missing(), found, true) == 0 && found.length() == 1,
             "a missing table gives 0, and outputs stay");
    f.expect(RecordAccess::visit(missing(), show) == 0 && !shown, "nothing of it is shown");
    f.expect(RecordAccess::runNameOfKey(missing(), 1L, name) == -1 &&
                 RecordAccess::hasRunName(missing(), name) == -1 &&
                 RecordAccess::readWhere(missing(), 0, 1, &records) == -1 && name == L"before",
             "-1 where that is told apart");
    f.expect(RecordAccess::derived(missing(), typeid(int), [](const void*) { return std::make_shared<int>(1); }) ==
                 nullptr,
             "nothing is made of it");
    int calls = 0;
    RecordAccess::eachSource(missing(), Sources::All, [&] { return ++calls > 0; });
    f.expect(calls == 0, "no source has it");
    f.expect(RecordAccess::runNameOfKey(rows(), 1L, name) == 0 && RecordAccess::hasRunName(rows(), name) == 0,
             "an empty table is no missing one");
}

void ownWrites(Findings& f)
{
    addThree();
    const auto names = [] {
        return RecordAccess::derived(rows(), typeid(std::string), [](const void* records) {
            std::string text;
            for (const ConformanceRow& record : *static_cast<const KorArray<ConformanceRow>*>(records))
                text += record.runName.toUtf8();
            return std::make_shared<std::string>(text);
        });
    };
    const auto before = names();
    f.expect(before != nullptr && *static_cast<const std::string*>(before.get()) == "cab" && names() == before,
             "what is made of the records is made once");
    KorDatabaseAccess::setTableColumnValue(source, rowTable, L"Key", L"2", 1, KorCellData(L"new"));
    KorDatabaseAccess::setTableColumnValue(source, rowTable, L"Key", L"2", 2, KorCellData(7));
    const auto after = names();
    f.expect(after != nullptr && *static_cast<const std::string*>(after.get()) == "cnewb",
             "and anew when one of them changed");
    ConformanceRow read;
    KorArray<ConformanceRow> records;
    f.expect(RecordAccess::readByKey(rows(), 2L, &read) == 1 && read.runName == L"new" &&
                 RecordAccess::hasRunName(rows(), L"new") == 1 && RecordAccess::hasRunName(rows(), L"a") == 0 &&
                 RecordAccess::readWhere(rows(), 2, 7, &records) == 1 && records.length() == 3,
             "a written cell is seen by every read at once");
    {
        KorDatabaseBatch batch;
        KorDatabaseAccess::deleteLine(rowTable, KorCellData(2));
        f.expect(RecordAccess::hasRunName(rows(), L"new") == 0, "inside a batch, too");
        batch.undo();
    }
    f.expect(RecordAccess::hasRunName(rows(), L"new") == 1 && rowKeys() == "1 2 3 ", "and what is undone is not");
    RecordAccess::resetCache(rows());
    KRRepositoryProxyMan::resetTableCache(0);
    f.expect(rowKeys() == "1 2 3 ", "resetting caches loses nothing");
}

void itemsOfRecords(Findings& f)
{
    const auto item = [](int key, int list, int position, const wchar_t* text) {
        add(ConformanceItem{key, list, position, text});
    };
    for (const int key : {1, 2})
        add(ConformanceList{key, L"list", KorArray<ConformanceItem>()});
    item(1, 2, 1, L"y");
    item(2, 1, 0, L"z");
    item(3, 2, 0, L"x");
    ConformanceList read;
    f.expect(RecordAccess::readByKey(descriptionOf<ConformanceList>(), 2L, &read) == 1 &&
                 read.items.length() == 2 && read.items[0].text == L"x" && read.items[1].text == L"y",
             "a record carries its items, in their order");
    KorArray<ConformanceList> all;
    f.expect(RecordAccess::readTable(descriptionOf<ConformanceList>(), &all) == 1 && all.length() == 2 &&
                 all[0].items.length() == 1 && all[1].items.length() == 2,
             "each its own");
    KorArray<ConformanceItem> items;
    f.expect(RecordAccess::readWhere(descriptionOf<ConformanceItem>(), 1, 2, &items) == 1 && items.length() == 2 &&
                 items[0].text == L"x",
             "items found by their owner are in order, too");
    f.expect(RecordAccess::loadItems(descriptionOf<ConformanceList>()) == 1, "items can be read ahead");
    std::string seen;
    RecordAccess::visit(descriptionOf<ConformanceList>(), [&](const void* record) {
        seen += std::to_string(static_cast<const ConformanceList*>(record)->items.length());
        return true;
    });
    f.expect(seen == "12", "records are shown with their items");
}

void requests(Findings& f)
{
    addThree();
    KorDSNManager& manager = KorDSNManager::getInstance();
    const eDSN before = manager.getCurrentDSN();
    ConformanceRow read;
    {
        const KorDSNRequest details(KorDSNDefinitions::kDetails, KorDSNDefinitions::kBase);
        f.expect(manager.isRequested() && manager.getCurrentDSN() == KorDSNDefinitions::kDetails,
                 "a request is what is current");
        f.expect(RecordAccess::readByKey(rows(), 1L, &read) == 0, "a request reads there and nowhere else");
        f.expect(RecordAccess::readByKey(rows(), 1L, &read, Sources::CurrentElseHome) == 1,
                 "unless asked to look where the table is kept");
        f.expect(RecordAccess::readByKey(rows(), 2L, &read, Sources::All) == 1 && read.runName == L"a",
                 "or in all sources");
        {
            const KorDSNRequest here(source, KorDSNDefinitions::kBase);
            f.expect(RecordAccess::readByKey(rows(), 1L, &read) == 1, "requests nest");
        }
        f.expect(manager.getCurrentDSN() == KorDSNDefinitions::kDetails, "the end of one brings the other back");
        int calls = 0;
        RecordAccess::eachSource(rows(), Sources::All, [&] {
            calls += manager.getCurrentDSN() == source ? 1 : 10;
            return true;
        });
        f.expect(calls == 1, "each source that has the table is requested once");
    }
    f.expect(manager.getCurrentDSN() == before, "after the last what was current is");
    KorString physical;
    eDSN dsn = KorDSNDefinitions::kDetails;
    f.expect(KorDatabaseAccess::getDSNandTableName(rowTable, physical, dsn) == 1 && dsn == source &&
                 physical == rowTable,
             "a table's name gives its source");
    f.expect(KorDatabaseAccess::getDSNandTableName(L"ConformanceMissing", physical, dsn) == 0 &&
                 dsn == KorDSNDefinitions::kUnresolved && physical == L"ConformanceMissing",
             "that of none is told with all bits");
    f.expect(KorDatabaseAccess::getTableName(L"ConformanceMissing") == L"ConformanceMissing",
             "an unknown name is its own physical name");
}

void expressions(Findings& f)
{
    const KorRegExWrapper expression(L"(a+)(b)?");
    KorArray<KorString> groups;
    f.expect(expression.isValid() && expression.match(L"aa") && !expression.match(L"xaa"),
             "the whole text matches");
    f.expect(expression.match(L"aa", groups) && groups.length() == 3 && groups[1] == L"aa" && groups[2].isEmpty(),
             "groups that took no part are empty");
    int position = -1, length = -1;
    f.expect(expression.search(L"\u00C4\U0001F600aab", 1, position, length) && position == 2 && length == 3,
             "positions count characters");
    f.expect(!expression.search(L"aax", 2, position, length) && position == 2, "outputs stay without a match");
    f.expect(KorRegExWrapper(L"A\u00C4", false).match(L"a\u00E4") && !KorRegExWrapper(L"A").match(L"a"),
             "case counts unless told otherwise");
    KorRegExWrapper faulty;
    f.expect(!faulty.setPattern(L"(") && !faulty.isValid() && !faulty.error().isEmpty() && !faulty.match(L"("),
             "a faulty pattern says so and matches nothing");
}

} // namespace

std::span<const Contract> recordContracts()
{
    static constexpr Contract list[] = {
        {"single records", 0, singleRecords},
        {"text keys", 0, textKeys},
        {"orders", 0, orders},
        {"records of keys", 0, chosenKeys},
        {"records that hold a value", 0, recordsWhere},
        {"missing tables", 0, missingTable},
        {"own writes", 0, ownWrites},
        {"items of records", 0, itemsOfRecords},
        {"requests and sources", 0, requests},
        {"regular expressions", kExpressions, expressions},
    };
    return list;
}

} // namespace conformance
