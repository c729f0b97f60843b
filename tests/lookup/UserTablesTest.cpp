#include "Lookups.h"

#include <functional>

namespace {

constexpr eDSN unresolved = KorDSNDefinitions::kUnresolved;

KorColumn condition(const char* name, const KorString& value)
{
    KorColumn column;
    column.setName(KorString::fromUtf8(name));
    column.setsValue(value);
    column.setRelationalOperator(KorColumn::kEqual);
    column.setLogicalOperator(KorColumn::kAnd);
    return column;
}

using Conditions = std::vector<std::pair<const char*, const wchar_t*>>; // column, value

KorArray<KorColumn> conditions(const Conditions& list)
{
    KorArray<KorColumn> columns;
    for (const auto& [name, value] : list)
        columns.append(condition(name, value));
    return columns;
}

Texts names(const KorArray<KorColumn>& columns)
{
    Texts list;
    for (const KorColumn& column : columns)
        list.push_back(column.getName().toUtf8());
    return list;
}

/// Columns of a loaded table, the values of each joined by "|".
Texts values(const KorArray<KorColumnData>& data)
{
    Texts list;
    for (const KorColumnData& column : data) {
        std::string line;
        KorString value;
        for (long row = 0; column.getAt(row, value) == 1; ++row)
            line += (row == 0 ? "" : "|") + value.toUtf8();
        list.push_back(line);
    }
    return list;
}

class UserTablesTest : public RepositoryTest {
protected:
    void SetUp() override
    {
        RepositoryTest::SetUp();
        sql(configuration,
            {"CREATE TABLE ByText (Id TEXT PRIMARY KEY NOT NULL, Name TEXT, Size INTEGER, Section TEXT)",
             "INSERT INTO ByText VALUES ('b''1', 'it''s [1] 板🔩 100%', 20, 'HEA''s'), ('a', 'Träger', 10, 'IPE]')",
             "CREATE TABLE ByNumber ([Key] INTEGER PRIMARY KEY, Name TEXT, Size INTEGER, Section TEXT)",
             "INSERT INTO ByNumber VALUES (7, 'x', 1, 'HEA'), (3, 'y', 2, 'HEA'), (9, 'x', 3, 'IPE')",
             "CREATE TABLE Odd (Id REAL, Name TEXT, Section TEXT)", "INSERT INTO Odd VALUES (1.5, 'x', 'HEA')",
             "CREATE TABLE Two (Id INTEGER PRIMARY KEY, Name TEXT)", "INSERT INTO Two VALUES (1, 'one')",
             "CREATE TABLE Empty (Id INTEGER PRIMARY KEY, Name TEXT, Size INTEGER)",
             "INSERT INTO TableAliases VALUES (1, 'Alias', 'ByNumber')"});
    }
};

TEST_F(UserTablesTest, Structure)
{
    const Texts byNumber{"Key", "Name", "Size", "Section"}, kept{"kept"};
    KorArray<KorColumn> columns;
    const auto start = [&] {
        columns.setLogicalLength(0);
        columns.append(KorColumn(L"kept", KorItemType::kInt));
    };
    for (const auto& [table, result] : {std::pair(L"ByNumber", 1), {L"Alias", 1}, {L"Missing", 0}}) {
        start();
        EXPECT_EQ(kor_odbc_getTableStructure(table, columns), result);
        EXPECT_EQ(names(columns), result == 1 ? byNumber : kept);
    }
    struct Case {
        eDSN dsn;
        const wchar_t* table;
        int result;
    };
    for (const Case& one : {Case{configuration, L"ByNumber", 1},
                            {unresolved, L"ByNumber", 1},
                            {unresolved, L"Alias", 0}, // the name is passed on as given
                            {details, L"ByNumber", 0},
                            {unresolved, L"Missing", 0}}) {
        start();
        EXPECT_EQ(kor_odbc_getTableStructure(one.dsn, one.table, columns), one.result) << one.dsn;
        EXPECT_EQ(names(columns), one.result == 1 ? byNumber : kept);
    }
}

TEST_F(UserTablesTest, Existence)
{
    EXPECT_TRUE(kor_odbc_existsUserTable(2, L"ByNumber"));
    EXPECT_FALSE(kor_odbc_existsUserTable(1, L"ByNumber"));
    EXPECT_FALSE(kor_odbc_existsUserTable(2, L"ByNumber'; --"));
    EXPECT_FALSE(kor_odbc_existsUserTable(17, L"ByNumber"));
    EXPECT_FALSE(kor_odbc_existsUserTable((1UL << 32) + 2, L"ByNumber"));
    EXPECT_EQ(kor_odbc_columnExist(2, L"ByNumber", L"Size"), 1);
    EXPECT_EQ(kor_odbc_columnExist(2, L"ByNumber", L"Sizes"), 0);
    EXPECT_EQ(kor_odbc_columnExist(2, L"Missing", L"Size"), 0);

    KorArray<KorString> tables = korTexts({"kept"});
    EXPECT_NE(kor_odbc_getTables(99, tables), 1);
    EXPECT_EQ(texts(tables), Texts{"kept"});
    EXPECT_EQ(kor_odbc_getTables(2, tables), 1);
    const Texts all = texts(tables);
    EXPECT_EQ(std::count(all.begin(), all.end(), "ByText"), 1);
    EXPECT_EQ(std::count(all.begin(), all.end(), "kept"), 0);
}

TEST_F(UserTablesTest, LoadsTheRowsOfAllSources)
{
    sql(KorDSNDefinitions::kAddin, {"CREATE TABLE ByNumber ([Key] INTEGER PRIMARY KEY, Size INTEGER)",
                                    "INSERT INTO ByNumber VALUES (7, 70)"});
    KorArray<KorColumnData> data;
    KorArray<KorColumn> columns;
    EXPECT_EQ(kor_odbc_loadUserTable(configuration, L"ByNumber", data, columns), 1);
    EXPECT_EQ(names(columns), (Texts{"Key", "Size"}));
    EXPECT_EQ(values(data), (Texts{"7|3|7|9", "70|2|1|3"}));
    EXPECT_LT(kor_odbc_loadUserTable(configuration, L"Missing", data, columns), 1);
    EXPECT_EQ(data.length(), 0);
    EXPECT_EQ(columns.length(), 0);
}

TEST(UserTablesResetTest, ShowsWhatAnotherProcessChanged)
{
    const RepositoryFolder folder;
    const eDSN configuration = KorDSNDefinitions::kConfiguration;
    ASSERT_EQ(KorDatabaseAccess::doSQLStatement(configuration, L"CREATE TABLE Mine ([Key] INTEGER, Name TEXT)"),
              1);
    KorArray<KorColumn> columns;
    ASSERT_EQ(kor_odbc_getTableStructure(L"Mine", columns), 1);
    folder.executeOutside("configuration.db", "ALTER TABLE Mine ADD Size INTEGER;"
                                              "INSERT INTO Mine VALUES (1, 'new', 5)");
    kor_odbc_resetListcontrolTable(L"Mine");
    KorArray<KorColumnData> data;
    EXPECT_EQ(kor_odbc_getListcontrolTable(L"Mine", data, columns), 1);
    EXPECT_EQ(names(columns), (Texts{"Key", "Name", "Size"}));
    EXPECT_EQ(values(data), (Texts{"1", "new", "5"}));
}

TEST_F(UserTablesTest, KeysByConditions)
{
    struct Case {
        const wchar_t* table;
        Conditions conditions;
        int result;
        Texts keys;        // "i7" or "ttext"
        std::string where; // as it reaches the database
    };
    for (const Case& one :
         {Case{L"ByNumber", {}, 1, {"i3", "i7", "i9"}, "( 1 = 1)"},
          {L"Alias", {{"Name", L"x"}}, 1, {"i7", "i9"}, "([Name] = 'x') AND ( 1 = 1)"},
          {L"ByNumber",
           {{"Name", L"x"}, {"Section", L"IPE"}},
           1,
           {"i9"},
           "([Name] = 'x') AND ([Section] = 'IPE') AND ( 1 = 1)"},
          {L"ByNumber", {{"Name", L"none"}}, 1, {}, "([Name] = 'none') AND ( 1 = 1)"},
          {L"ByText",
           {{"Name", L"it's [1] 板🔩 100%"}},
           1,
           {"tb'1"},
           "([Name] = 'it''s [1] 板🔩 100%') AND ( 1 = 1)"},
          {L"ByText", {{"Name", L"') OR (1=1) --"}}, 1, {}, "([Name] = ''') OR (1=1) --') AND ( 1 = 1)"},
          {L"ByText", {{"Name] = 1 OR [Name", L"x"}}, 0, {}, ""},
          {L"ByText", {{"Missing", L"x"}}, 0, {}, ""},
          {L"Missing", {}, 0, {}, ""}}) {
        SCOPED_TRACE(one.where);
        const KorArray<KorColumn> list = conditions(one.conditions);
        KorArray<KorColumn> keys;
        keys.append(KorColumn(L"kept", KorItemType::kInt));
        StatementRecorder statements(true);
        EXPECT_EQ(korOdbcGetUserKeys(list, one.table, keys), one.result);
        const Texts ran = statements.take();
        if (!one.where.empty()) {
            ASSERT_FALSE(ran.empty());
            EXPECT_NE(ran.back().find(" WHERE " + one.where + " "), std::string::npos) << ran.back();
        }
        Texts found;
        for (int i = 1; i < keys.length(); ++i)
            found.push_back((keys[i].getType() == KorItemType::kInt ? "i" : "t") + keys[i].getsValue().toUtf8());
        EXPECT_EQ(found, one.keys);
        EXPECT_EQ(keys[0].getName(), KorString(L"kept"));
        // the first of them
        KorColumn key = condition("Key", L"kept"), there = key, elsewhere = key;
        EXPECT_EQ(kor_odbc_getUserFirstKey(list, one.table, key), one.result);
        EXPECT_EQ(key.getsValue().toUtf8(), one.keys.empty() ? "kept" : one.keys[0].substr(1));
        EXPECT_EQ(kor_odbc_getUserFirstKey(configuration, list, one.table, there), one.result);
        EXPECT_EQ(there, key);
        EXPECT_EQ(kor_odbc_getUserFirstKey(details, list, one.table, elsewhere), 0);
        EXPECT_EQ(elsewhere.getsValue(), KorString(L"kept"));
    }
    // joined by the conditions' own operators
    KorArray<KorColumn> list = conditions({{"Section", L"IPE"}, {"Size", L"2"}});
    list[1].setLogicalOperator(KorColumn::kOr);
    KorColumn key;
    EXPECT_EQ(kor_odbc_getUserFirstKey(list, L"ByNumber", key), 1);
    EXPECT_EQ(key.getlValue(), 3);

    AssertionRecorder assertions; // keys of another kind
    KorArray<KorColumn> keys;
    EXPECT_EQ(korOdbcGetUserKeys(KorArray<KorColumn>(), L"Odd", keys), 1);
    ASSERT_EQ(keys.length(), 1);
    EXPECT_FALSE(keys[0].hasValue());
    EXPECT_EQ(assertions.lastLine(), 183);
    key = condition("Key", L"kept");
    EXPECT_EQ(kor_odbc_getUserFirstKey(KorArray<KorColumn>(), L"Odd", key), 1);
    EXPECT_EQ(key.getsValue(), KorString(L"kept"));
    EXPECT_EQ(assertions.take(), Texts(2, "korUserConnectionsAndCombinations: false"));
    EXPECT_EQ(assertions.lastLine(), 231);
}

TEST_F(UserTablesTest, FirstKeyOfASection)
{
    struct Case {
        const wchar_t *section, *table;
        int result; // of the text key alone
        const wchar_t* key;
        int kindResult; // with kinds
        const wchar_t* textKey;
        int intKey, kind;
    };
    for (const Case& one : {
             Case{L"HEA's", L"ByText", 1, L"b'1", 1, L"b'1", 5, 0},
             {L"IPE]", L"ByText", 1, L"a", 1, L"a", 5, 0},
             {L"HEA", L"ByNumber", 1, L"kept", 1, L"kept", 3, 1},
             {L"IPE", L"Alias", 1, L"kept", 1, L"kept", 9, 1},
             {L"none", L"ByText", 1, L"kept", 1, L"kept", 5, 7},
             {L"' OR 1=1 --", L"ByText", 1, L"kept", 1, L"kept", 5, 7},
             {L"HEA", L"Two", 1, L"kept", 1, L"kept", 5, 7}, // no such column: nothing is searched
             {L"HEA", L"Odd", 1, L"kept", -2, L"kept", 5, -1},
             {L"HEA", L"Missing", 0, L"kept", -2, L"kept", 5, 7},
         }) {
        SCOPED_TRACE(KorString(one.table).toUtf8() + " " + KorString(one.section).toUtf8());
        AssertionRecorder assertions;
        KorString key(L"kept"), textKey(L"kept");
        int intKey = 5, kind = 7;
        EXPECT_EQ(kor_odbc_getUserFirstKey(one.section, one.table, key), one.result);
        EXPECT_EQ(key, KorString(one.key));
        EXPECT_EQ(kor_odbc_getUserFirstKey(one.section, one.table, textKey, intKey, kind), one.kindResult);
        EXPECT_EQ(textKey, KorString(one.textKey));
        EXPECT_EQ(intKey, one.intKey);
        EXPECT_EQ(kind, one.kind);
    }
    StatementRecorder statements(true);
    KorString key;
    kor_odbc_getUserFirstKey(L"HEA", L"Two", key);
    EXPECT_EQ(statements.take(), Texts{});
}

TEST_F(UserTablesTest, ComboBoxKeys)
{
    struct Case {
        const wchar_t *runName, *table;
        int intResult, intKey; // asking for an int key
        int result;            // asking for either
        const wchar_t* text;
        int number, kind;
    };
    for (const Case& one : {
             Case{L"x", L"ByNumber", 1, 7, 1, L"kept", 7, 1},
             {L"y", L"Alias", 1, 3, 1, L"kept", 3, 1},
             {L"it's [1] 板🔩 100%", L"ByText", 0, 5, 1, L"b'1", 5, 0},
             {L"X", L"ByNumber", 0, 5, 0, L"kept", 5, 1}, // unknown: the kind that a new row needs
             {L"none", L"ByText", 0, 5, 0, L"kept", 5, 0},
             {L"none", L"Odd", 0, 5, 0, L"kept", 5, -1},
             {L"x", L"Odd", 0, 5, 0, L"kept", 5, -1},
             {L"x", L"Missing", 0, 5, -2, L"kept", 5, 7},
         }) {
        SCOPED_TRACE(KorString(one.table).toUtf8() + " " + KorString(one.runName).toUtf8());
        int key = 5, number = 5, kind = 7;
        KorString text(L"kept");
        EXPECT_EQ(kor_odbc_getUserComboBoxKey(one.runName, one.table, key), one.intResult);
        EXPECT_EQ(key, one.intKey);
        EXPECT_EQ(kor_odbc_getUserComboBoxKey(one.runName, one.table, text, number, kind), one.result);
        EXPECT_EQ(text, KorString(one.text));
        EXPECT_EQ(number, one.number);
        EXPECT_EQ(kind, one.kind);
    }
    KorString runName(L"kept");
    EXPECT_EQ(kor_odbc_getUserComboBoxRunname(4, L"ByNumber", runName), 0);
    EXPECT_EQ(kor_odbc_getUserComboBoxRunname(L"b'1' OR 1", L"ByText", runName), 0);
    EXPECT_EQ(kor_odbc_getUserComboBoxRunname(L"b'1", L"Missing", runName), 0);
    EXPECT_EQ(runName, KorString(L"kept"));
    EXPECT_EQ(kor_odbc_getUserComboBoxRunname(3, L"Alias", runName), 1);
    EXPECT_EQ(runName, KorString(L"y"));
    EXPECT_EQ(kor_odbc_getUserComboBoxRunname(L"b'1", L"ByText", runName), 1);
    EXPECT_EQ(runName, KorString(L"it's [1] 板🔩 100%"));
}

TEST_F(UserTablesTest, ComboBoxLists)
{
    struct Case {
        const wchar_t* table;
        int result;
        std::vector<long> keys;
        Texts names;
    };
    for (const Case& one : {Case{L"ByText", 1, {20, 10}, {"it's [1] 板🔩 100%", "Träger"}},
                            {L"Alias", 1, {2, 1, 3}, {"y", "x", "x"}},
                            {L"Two", 1, {}, {"one"}}, // no numbers
                            {L"Empty", 0, {}, {}},
                            {L"Missing", 0, {}, {"kept"}}}) {
        KorArray<long> keys;
        keys.append(4);
        KorArray<KorString> names = korTexts({"kept"});
        EXPECT_EQ(kor_odbc_getUserComboBoxList(one.table, keys, names), one.result);
        EXPECT_EQ(std::vector<long>(keys.begin(), keys.end()), one.keys);
        EXPECT_EQ(texts(names), one.names);
    }
    KorArray<KorString> names = korTexts({"kept"});
    kor_odbc_getUserCSComboBoxList(L"ByNumber", L"[Nothing] = 1", names);
    EXPECT_EQ(texts(names), Texts{"kept"});
    kor_odbc_getUserCSComboBoxList(L"Alias", L"[Section] = 'HEA' AND [Size] > 1", names);
    EXPECT_EQ(texts(names), Texts{"y"});
}

TEST_F(UserTablesTest, CombinationKey)
{
    sql(configuration,
        {"INSERT INTO ValidCombinations VALUES (4, 'ISO 4014', '8.8', 'Set', 'M20', 'Plain', 'Site'),"
         "(5, 'ISO 4014', '8.8', 'it''s', 'M20', 'Plain', 'Site')"});
    int key = 1;
    EXPECT_EQ(kor_odbc_getCombinationKey(key, L"ISO 4014", L"8.8", L"it's", L"M20", L"Plain", L"Site"), 1);
    EXPECT_EQ(key, 5);
    const wchar_t* properties[] = {L"ISO 4014", L"8.8", L"Set", L"M20", L"Plain", L"Site"};
    for (const wchar_t*& other : properties) { // each of the six counts
        const wchar_t* const right = std::exchange(other, L"x");
        EXPECT_EQ(kor_odbc_getCombinationKey(key, properties[0], properties[1], properties[2], properties[3],
                                             properties[4], properties[5]),
                  0);
        other = right;
    }
    EXPECT_EQ(key, 5);
}

TEST_F(UserTablesTest, ListControls)
{
    sql(configuration, {"CREATE TABLE ByCode ([Key] TEXT, Name TEXT)",
                        "INSERT INTO ByCode VALUES ('c', 'one'), ('a', 'two'), ('b', 'three')"});
    struct Case {
        const wchar_t* table;
        int result;
        Texts values;
        int sortedResult;
        Texts sorted;
    };
    for (const Case& one : {
             Case{L"ByCode", 1, {"c|a|b", "one|two|three"}, 1, {"a|b|c", "two|three|one"}},
             {L"Alias",
              1,
              {"3|7|9", "y|x|x", "2|1|3", "HEA|HEA|IPE"},
              1,
              {"3|7|9", "y|x|x", "2|1|3", "HEA|HEA|IPE"}},
             {L"Two", 1, {"1", "one"}, 0, {"", ""}}, // has no column of that name
             {L"Empty", 1, {"", "", ""}, 0, {"", "", ""}},
             {L"Missing", 0, {}, 0, {}},
         }) {
        SCOPED_TRACE(KorString(one.table).toUtf8());
        KorArray<KorColumnData> data;
        data.append(KorColumnData());
        KorArray<KorColumn> columns;
        columns.append(KorColumn());
        EXPECT_EQ(kor_odbc_getListcontrolTable(one.table, data, columns), one.result);
        EXPECT_EQ(values(data), one.values);
        EXPECT_EQ(columns.length(), data.length());
        EXPECT_EQ(kor_odbc_getListcontrolTableSortedByKey(one.table, data, columns), one.sortedResult);
        EXPECT_EQ(values(data), one.sorted);
        EXPECT_EQ(columns.length(), data.length());
    }
}

TEST_F(UserTablesTest, ListControlKeys)
{
    struct Case {
        int row;
        const wchar_t* table;
        int textResult;
        const wchar_t* text;
        int result, number;
    };
    for (const Case& one : {Case{0, L"ByText", 1, L"b'1", 1, 0},
                            {2, L"Alias", 1, L"9", 1, 9},
                            {3, L"ByNumber", 1, L"kept", 0, 5},
                            {-1, L"ByNumber", 1, L"kept", 0, 5},
                            {0, L"Empty", 1, L"kept", 0, 5},
                            {0, L"Missing", 0, L"kept", 0, 5}}) {
        KorString text(L"kept");
        int number = 5;
        EXPECT_EQ(kor_odbc_getUserListcontrolKey(one.row, one.table, text), one.textResult);
        EXPECT_EQ(text, KorString(one.text));
        EXPECT_EQ(kor_odbc_getUserListcontrolKey(one.row, one.table, number), one.result);
        EXPECT_EQ(number, one.number);
    }
}

TEST_F(UserTablesTest, LanguageDependentStrings)
{
    sql(KorDSNDefinitions::kTexts,
        {"INSERT INTO LanguageDependet_Strings VALUES ('Len''gth', 'Länge [l]', 1, 3)"});
    for (const auto read :
         {kor_odbc_LanguageDependent_getRunname, kor_odbc_LanguageDependent_getUserComboBoxRunname,
          kor_odbc_LanguageDependent_getUserComboBoxRunname_NonCaseSensitiveKey}) {
        KorString text(L"kept");
        EXPECT_EQ(read(L"len'gth", text), 0); // every one of them is case-sensitive
        EXPECT_EQ(text, KorString(L"kept"));
        EXPECT_EQ(read(L"Len'gth", text), 1);
        EXPECT_EQ(text, KorString(L"Länge [l]"));
    }
    long unit = 8, control = 8;
    EXPECT_EQ(kor_odbc_LanguageDependent_getUserUnitUsedForRunname(L"Länge", unit), 0);
    EXPECT_EQ(kor_odbc_LanguageDependent_getUserDisplayControl(L"Länge", control), 0);
    EXPECT_EQ(unit + control, 16);
    EXPECT_EQ(kor_odbc_LanguageDependent_getUserUnitUsedForRunname(L"Länge [l]", unit), 1);
    EXPECT_EQ(kor_odbc_LanguageDependent_getUserDisplayControl(L"Länge [l]", control), 1);
    EXPECT_EQ(unit, 1);
    EXPECT_EQ(control, 3);
}

} // namespace
