#include "conformance/Checks.h"

#include <utility>

namespace conformance {

namespace {

using Access = KorDatabaseAccess;

const RecordDescription& rows() { return descriptionOf<ConformanceRow>(); }

void namesOfTables(Findings& f)
{
    f.expect(Access::doesTableExists(source, rowTable) == 1, "a table exists");
    f.expect(Access::doesTableExists(source, L"conformanceROWS") == 1, "names of tables are found in any case");
    f.expect(Access::doesTableExists(source, L"ConformanceMissing") == 0, "a missing table does not exist");
    f.expect(Access::doesColumnExists(source, rowTable, L"runname") == 1,
             "names of columns are found in any case");
    f.expect(Access::doesColumnExists(source, rowTable, L"Later") == 0, "a missing column does not exist");
    KorArray<KorString> names;
    names.append(L"before");
    f.expect(Access::getTablesNames(source, names) == 1, "the tables are listed");
    bool listed = false, kept = false;
    for (const KorString& name : names) {
        listed = listed || name == rowTable;
        kept = kept || name == L"before";
    }
    f.expect(listed && !kept, "a table is listed as it is called, in place of what the list held");
}

void structure(Findings& f)
{
    KorArray<KorColumn> columns;
    f.expect(Access::getTableStructure(source, rowTable, columns) == 1 && columns.length() == 9 &&
                 columns[0].getName() == L"Key" && columns[3].getName() == L"Real" &&
                 columns[8].getName() == L"Part3",
             "columns come in stored order");
    f.expect(Access::getNumberOfColumns(source, rowTable) == columns.length(), "they are as many as counted");
    f.expect(Access::getTableStructure(source, L"ConformanceMissing", columns) != 1 && columns.length() == 9,
             "a missing table has no structure, and the output stays");
    f.expect(Access::getNumberOfColumns(source, L"ConformanceMissing") == 0, "and no columns");
}

void givenKey(Findings& f)
{
    KorCellData key(7);
    f.expect(Access::appendNewLine(source, rowTable, key, true, true) == 1 && key.getInt() == 7,
             "a free key is taken");
    f.expect(cells(7).starts_with("7|"), "the row is seen at once");
    ConformanceRow read = row(1, L"x", 5);
    f.expect(RecordAccess::readByKey(rows(), 7L, &read) == 1 && read.runName.isEmpty() && read.number == -1,
             "it is read as a new record");
    Access::setTableColumnValue(source, rowTable, L"Key", L"7", 1, KorCellData(L"kept"));
    f.expect(Access::appendNewLine(source, rowTable, key, true, true) != 1, "a key is not taken twice");
    f.expect(rowKeys() == "7 " && cells(7).starts_with("7|kept|"), "the row that has it stays");
}

void chosenKey(Findings& f)
{
    add(row(41, L"a"));
    KorCellData first, second(-5);
    f.expect(Access::appendNewLine(source, rowTable, first, true, false) == 1 && first.getInt() > 41,
             "a key above all others is chosen");
    f.expect(Access::appendNewLine(source, rowTable, second, false, false) == 1 && second.getInt() == -5,
             "the key is returned on request only");
    KorArray<long> keys;
    RecordAccess::keys(rows(), keys);
    f.expect(keys.length() == 3 && keys[2] > keys[1], "each row has its own");
    f.expect(Access::appendNewLine(source, L"ConformanceNames", first, true, false) == 1 &&
                 first.getType() == KorItemType::kString && first.getStringW().toInteger() > 0,
             "a table of text keys gets a number as text");
    f.expect(Access::appendNewLine(source, L"ConformanceMissing", first, true, false) != 1,
             "nothing is appended to a missing table");
}

void recordAsCells(Findings& f)
{
    const ConformanceRow record = row(1, L"O'Brien \"\u00C4\U0001F600\"", -3, 4, 2);
    f.expect(add(record) == 1, "a record is written");
    KorCellData key(2);
    Access::appendNewLine(source, rowTable, key, true, true);
    const KorCellData values[] = {record.runName, record.number, record.real, record.sortOrder,
                                  record.parts,   -30,           -29};
    for (int i = 0; i < 7; ++i)
        f.expect(Access::setTableColumnValue(source, rowTable, L"Key", L"2", i + 1, values[i]) == 1,
                 "a cell is written");
    f.expect(cells(1).substr(1) == cells(2).substr(1), "a record is what its cells are");
    const ConformanceRow shorter = row(9, L"short", 5, 0, 1);
    f.expect(Access::setRecord(source, rowTable, rows(), KorCellData(1), &shorter) == 1 &&
                 cells(1) == "1|short|5|5.5|0|1|50|-29|",
             "the row keeps its key, and columns behind the last item stay");
}

void recordThatDoesNotFit(Findings& f)
{
    add(row(1, L"a", 1, 1, 3));
    const std::string before = cells(1);
    const ConformanceRow longer = row(1, L"b", 2, 2, 4);
    f.expect(Access::setRecord(source, rowTable, rows(), KorCellData(1), &longer) != 1 && cells(1) == before,
             "more items than columns: fails and writes nothing");
    const ConformanceWideRow wide{1, L"c", 5};
    f.expect(Access::setRecord(source, rowTable, descriptionOf<ConformanceWideRow>(), KorCellData(1), &wide) !=
                     1 &&
                 cells(1) == before,
             "a column that the table lacks: fails and writes nothing");
    f.expect(Access::setRecord(source, rowTable, rows(), KorCellData(2), &longer) != 1 && rowKeys() == "1 ",
             "no such row: fails and appends none");
    f.expect(Access::checkTable(source, rows(), true) == 1, "a table that fits is told to");
    f.expect(Access::checkTable(source, descriptionOf<ConformanceWideRow>(), true) != 1,
             "one that does not is not");
}

void cellsThatAreNot(Findings& f)
{
    add(row(1, L"a", 4));
    KorCellData out(99);
    const auto read = [&](const wchar_t* by, int key, int column) {
        return Access::getTableColumnValue(source, rowTable, by, KorCellData(key), column, out) == 1;
    };
    const auto write = [&](const wchar_t* by, const wchar_t* key, int column) {
        return Access::setTableColumnValue(source, rowTable, by, key, column, KorCellData(5)) == 1;
    };
    f.expect(!read(L"Key", 2, 2) && !read(L"Key", 1, 9) && !read(L"Key", 1, -1) && !read(L"Later", 1, 2),
             "a missing row, column or key column gives no cell");
    f.expect(out.getInt() == 99, "the output stays then");
    f.expect(!write(L"Key", L"2", 2) && !write(L"Key", L"1", 9) && !write(L"Key", L"1", -1) &&
                 !write(L"Later", L"1", 2),
             "nor takes one");
    f.expect(write(L"number", L"4", 4) && read(L"Number", 4, 4) && out.getInt() == 5, "any column finds a row");
}

void deletedRows(Findings& f)
{
    add(row(1, L"a"));
    add(row(2, L"b"));
    f.expect(Access::deleteLine(rowTable, KorCellData(1)) == 1 && rowKeys() == "2 ", "a deleted row is gone");
    f.expect(RecordAccess::hasRunName(rows(), L"a") == 0 && cells(1) == "none", "from every read");
    f.expect(Access::deleteLine(rowTable, KorCellData(1)) != 1, "a missing row cannot be deleted");
}

void runNamesAndKeys(Findings& f)
{
    add(row(3, L"Beam"));
    KorCellData key(-1);
    KorString name(L"before");
    f.expect(Access::getKeyAtRunname(rowTable, L"Beam", key) == 1 && key.getInt() == 3,
             "a run name gives its key");
    f.expect(Access::getRunnameAtKey(rowTable, KorCellData(3), name) == 1 && name == L"Beam", "and the other way");
    f.expect(Access::getKeyAtRunname(rowTable, L"beam", key) != 1 && key.getInt() == 3, "compared exactly");
    f.expect(Access::getRunnameAtKey(rowTable, KorCellData(4), name) != 1 && name == L"Beam", "outputs stay");
}

void copies(Findings& f)
{
    add(row(1, L"a", 1, 1, 2));
    const bool isNew = Access::doesTableExists(source, copyOfRows) != 1; // an earlier run leaves it
    f.expect(Access::copyTable(source, rowTable, copyOfRows, isNew) == 1 && cells(1, copyOfRows) == cells(1),
             "a copy has the columns and rows");
    Access::setTableColumnValue(source, rowTable, L"Key", L"1", 1, KorCellData(L"b"));
    f.expect(Access::copyTable(source, rowTable, copyOfRows, true) != 1 &&
                 cells(1, copyOfRows).starts_with("1|a|"),
             "an existing copy is kept on request");
    f.expect(Access::copyTable(source, rowTable, copyOfRows, false) == 1 &&
                 cells(1, copyOfRows).starts_with("1|b|"),
             "and replaced otherwise");
    f.expect(Access::copyTable(source, L"ConformanceMissing", copyOfRows, false) != 1 &&
                 cells(1, copyOfRows).starts_with("1|b|"),
             "a missing table replaces nothing");
    Access::deleteLine(copyOfRows, KorCellData(1));
    f.expect(cells(1) != "none", "what happens to the copy does not happen to the table");
}

void undoneBatch(Findings& f)
{
    add(row(1, L"kept"));
    std::string undone;
    {
        KorDatabaseBatch outer;
        add(row(2, L"outer"));
        {
            KorDatabaseBatch inner;
            add(row(3, L"inner"));
            KorDatabaseBatch::whenUndone(source, [&] { undone += "inner "; });
            f.expect(inner.end(5) == 5, "a batch ends with the result of its operation");
        }
        {
            KorDatabaseBatch inner;
            KorDatabaseBatch::whenUndone(source, [&] { undone += "first "; });
            KorDatabaseBatch::whenUndone(source, [&] { undone += "second "; });
            Access::deleteLine(rowTable, KorCellData(1));
            f.expect(inner.undo(-2) == -2, "undoing gives its result");
        }
        f.expect(rowKeys() == "1 2 3 ", "an undone batch leaves the one around it as it was");
        f.expect(std::exchange(undone, {}) == "second first ", "what was noted last is undone first");
        KorDatabaseBatch::whenUndone(source, [&] { undone += "outer "; });
        outer.undo();
    }
    f.expect(rowKeys() == "1 ", "ended batches inside go with the one that is undone");
    f.expect(undone == "outer inner ", "and what was noted in them");
}

void keptBatch(Findings& f)
{
    int undone = 0;
    {
        KorDatabaseBatch batch;
        KorDatabaseBatch joined(KorDatabaseBatch::Kind::Joined);
        add(row(1, L"a"));
        KorDatabaseBatch::whenUndone(source, [&] { ++undone; });
        joined.undo(); // goes only with the batch around it
        f.expect(KorDatabaseBatch::lock(source) == 1, "a batch takes the write lock");
        f.expect(batch.end(1) == 1 && batch.end(3) == 3, "a batch is stored, once");
    }
    {
        const KorDatabaseBatch batch; // ends with its scope
        add(row(2, L"b"));
    }
    f.expect(rowKeys() == "1 2 " && undone == 0, "what is stored stays");
    f.expect(KorDatabaseBatch::lock(source) == 0, "there is no lock without a batch");
    KorDatabaseBatch::whenUndone(source, [&] { ++undone; });
    f.expect(undone == 0, "outside a batch nothing is undone");
    const KorDatabaseReading reading(source);
    f.expect(rowKeys() == "1 2 ", "a reading sees what is there");
}

void statements(Findings& f)
{
    add(row(1, L"a"));
    f.expect(Access::doSQLStatement(source,
                                    L"UPDATE [ConformanceRows] SET [RunName] = 'O''Brien' WHERE [Key] = 1") == 1 &&
                 cells(1).starts_with("1|O'Brien|"),
             "a statement runs");
    f.expect(Access::doSQLStatement(source, L"DELETE FROM [ConformanceRows] WHERE [Key] = 2") == 1,
             "one that changes nothing succeeds");
    f.expect(Access::doSQLStatement(source, L"DELETE FROM [ConformanceMissing]") != 1,
             "one that cannot run fails");
    const KorString hostile(L"x'); DELETE FROM ConformanceRows; --");
    const KorFormatArgument values[] = {hostile, 1};
    f.expect(Access::doSQLStatement(source, L"UPDATE [ConformanceRows] SET [RunName] = '%s' WHERE [Key] = %d",
                                    values) == 1 &&
                 cells(1).starts_with("1|x'); DELETE FROM ConformanceRows; --|"),
             "values of a pattern are values");
    add(row(2, L"b", 7));
    add(row(3, L"c", 6));
    KorArray<KorCellData> found;
    f.expect(Access::getColumnValues(source, rowTable, L"[Number] > 5", L"[Number]", 1, found) == 1 &&
                 found.length() == 2 && found[0].getStringW() == L"c",
             "conditions choose and orders sort");
    f.expect(Access::getColumnValues(source, rowTable, L"[Later] = 1", {}, 1, found) != 1 && found.length() == 2,
             "a faulty condition leaves the output");
}

void columnValues(Findings& f)
{
    add(row(2, L"b"));
    add(row(1, L"a"));
    KorArray<KorCellData> found;
    f.expect(Access::getColumnValues(source, rowTable, {}, {}, 1, found) == 1 && found.length() == 2 &&
                 found[0].getStringW() == L"a",
             "the values of a column come in table order");
    f.expect(Access::getColumnValues(source, rowTable, {}, {}, 9, found) != 1 && found.length() == 2,
             "there are none of a missing column");
}

void claims(Findings& f)
{
    f.expect(Access::isTableClaimed(source, rowTable) == 0 && Access::releaseTable(source, rowTable) != 1,
             "a table is not claimed at first");
    f.expect(Access::claimTable(source, rowTable) == 1 && Access::claimTable(source, rowTable) == 1 &&
                 Access::isTableClaimed(source, rowTable) == 1,
             "a claim can be repeated");
    {
        KorDatabaseBatch batch;
        Access::releaseTable(source, rowTable);
        batch.undo();
    }
    f.expect(Access::isTableClaimed(source, rowTable) == 1, "an undone release leaves the claim");
    f.expect(Access::releaseTable(source, rowTable) == 1 && Access::isTableClaimed(source, rowTable) == 0,
             "a release gives it back, once for all");
    {
        KorDatabaseBatch batch;
        Access::claimTable(source, rowTable);
        batch.undo();
    }
    f.expect(Access::isTableClaimed(source, rowTable) == 0, "an undone claim is none");
}

} // namespace

std::span<const Contract> tableContracts()
{
    static constexpr Contract list[] = {
        {"names of tables and columns", 0, namesOfTables},
        {"structure of a table", 0, structure},
        {"row with a given key", 0, givenKey},
        {"row with a chosen key", 0, chosenKey},
        {"record as its cells", 0, recordAsCells},
        {"record that does not fit", 0, recordThatDoesNotFit},
        {"cells that are not there", 0, cellsThatAreNot},
        {"deleted rows", 0, deletedRows},
        {"run names and keys", 0, runNamesAndKeys},
        {"values of a column", 0, columnValues},
        {"copies of tables", 0, copies},
        {"undone batches", 0, undoneBatch},
        {"kept batches", 0, keptBatch},
        {"statements", kStatements, statements},
        {"claims", kClaims, claims},
    };
    return list;
}

} // namespace conformance
