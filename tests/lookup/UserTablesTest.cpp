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
    const auto check = [](int result, const auto&... where) {
        KorArray<KorColumn> columns;
        columns.append(KorColumn(L"kept", KorItemType::kInt));
        EXPECT_EQ(kor_odbc_getTableStructure(where..., columns), result);
        EXPECT_EQ(names(columns), result == 1 ? (Texts{"Key", "Name", "Size", "Section"}) : Texts{"kept"});
    };
    check(1, L"ByNumber");
    check(1, L"Alias");
    check(0, L"Missing");
    check(1, unresolved, L"ByNumber");
    check(0, unresolved, L"Alias"); // the name is passed on as given
    check(0, details, L"ByNumber");
}

TEST_F(UserTablesTest, LoadsTheRowsOfAllSources)
{
    sql(KorDSNDefinitions::kAddin, {"CREATE TABLE ByNumber ([Key] INTEGER PRIMARY KEY, Size INTEGER)",
                                    "INSERT INTO ByNumber VALUES (7, 5000000000)"});
    KorArray<KorColumnData> data;
    KorArray<KorColumn> columns;
    EXPECT_EQ(kor_odbc_loadUserTable(configuration, L"ByNumber", data, columns), 1);
    EXPECT_EQ(names(columns), (Texts{"Key", "Size", "Name", "Section"}));
    EXPECT_EQ(values(data), (Texts{"7|3|7|9", "5000000000|2|1|3", "|y|x|x", "|HEA|HEA|IPE"}));
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
    // keys are "i7" or "ttext"
    const auto check = [](const wchar_t* table, const Conditions& of, int result, const Texts& expected) {
        const KorArray<KorColumn> list = conditions(of);
        SCOPED_TRACE(shown(KorString(table), names(list)));
        KorArray<KorColumn> keys;
        keys.append(KorColumn(L"kept", KorItemType::kInt));
        EXPECT_EQ(korOdbcGetUserKeys(list, table, keys), result);
        Texts found;
        for (int i = 1; i < keys.length(); ++i)
            found.push_back((keys[i].getType() == KorItemType::kInt ? "i" : "t") + keys[i].getsValue().toUtf8());
        EXPECT_EQ(found, expected);
        EXPECT_EQ(keys[0].getName(), KorString(L"kept"));
        // the first of them
        KorColumn key = condition("Key", L"kept"), there = key, elsewhere = key;
        EXPECT_EQ(kor_odbc_getUserFirstKey(list, table, key), result);
        EXPECT_EQ(key.getsValue().toUtf8(), expected.empty() ? "kept" : expected[0].substr(1));
        EXPECT_EQ(kor_odbc_getUserFirstKey(configuration, list, table, there), result);
        EXPECT_EQ(there, key);
        EXPECT_EQ(kor_odbc_getUserFirstKey(details, list, table, elsewhere), 0);
        EXPECT_EQ(elsewhere.getsValue(), KorString(L"kept"));
    };
    check(L"ByNumber", {}, 1, {"i3", "i7", "i9"});
    check(L"Alias", {{"Name", L"x"}}, 1, {"i7", "i9"});
    check(L"ByNumber", {{"Name", L"x"}, {"Section", L"IPE"}}, 1, {"i9"});
    check(L"ByNumber", {{"Name", L"none"}}, 1, {});
    check(L"ByText", {{"Name", L"it's [1] 板🔩 100%"}}, 1, {"tb'1"});
    check(L"ByText", {{"Name", L"') OR (1=1) --"}}, 1, {});
    check(L"ByText", {{"Name] = 1 OR [Name", L"x"}}, 0, {});
    check(L"ByText", {{"Missing", L"x"}}, 0, {});
    check(L"Missing", {}, 0, {});
    // whole numbers of any size stay what they are
    sql(configuration, {"CREATE TABLE Large ([Key] INTEGER PRIMARY KEY, Name TEXT, Size REAL, Section TEXT)",
                        "INSERT INTO Large VALUES (4294967303, '100000', 5, 'HEA'), (7, 'x', 1e15, 'IPE')"});
    for (const auto& [column, value, expected] :
         {std::tuple("Key", 4294967303.0, 4294967303L), {"Name", 100000.0, 4294967303L}, {"Size", 1e15, 7L}}) {
        KorColumn large = condition(column, {});
        large.setdValue(value);
        KorArray<KorColumn> wanted, found;
        wanted.append(large);
        EXPECT_EQ(korOdbcGetUserKeys(wanted, L"Large", found), 1);
        ASSERT_EQ(found.length(), 1) << column;
        EXPECT_EQ(found[0].getlValue(), expected);
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
    // a text key alone, and a key of either kind
    const auto check = [](const wchar_t* section, const wchar_t* table, const char* ofText, const char* ofEither) {
        SCOPED_TRACE(shown(KorString(section), KorString(table)));
        AssertionRecorder assertions;
        KorString key(L"kept"), textKey(L"kept");
        int intKey = 5, kind = 7, result = kor_odbc_getUserFirstKey(section, table, key);
        EXPECT_EQ(shown(result, key), ofText);
        result = kor_odbc_getUserFirstKey(section, table, textKey, intKey, kind);
        EXPECT_EQ(shown(result, textKey, intKey, kind), ofEither);
    };
    check(L"HEA's", L"ByText", "1 b'1", "1 b'1 5 0");
    check(L"IPE]", L"ByText", "1 a", "1 a 5 0");
    check(L"HEA", L"ByNumber", "1 kept", "1 kept 3 1");
    check(L"IPE", L"Alias", "1 kept", "1 kept 9 1");
    check(L"' OR 1=1 --", L"ByText", "1 kept", "1 kept 5 7");
    check(L"HEA", L"Two", "1 kept", "1 kept 5 7"); // no such column: nothing is searched
    check(L"HEA", L"Odd", "1 kept", "-2 kept 5 -1");
}

TEST_F(UserTablesTest, ComboBoxKeys)
{
    // an int key alone, and a key of either kind
    const auto check = [](const wchar_t* runName, const wchar_t* table, const char* ofInt, const char* ofEither) {
        SCOPED_TRACE(shown(KorString(runName), KorString(table)));
        KorString text(L"kept");
        int key = 5, number = 5, kind = 7, result = kor_odbc_getUserComboBoxKey(runName, table, key);
        EXPECT_EQ(shown(result, key), ofInt);
        result = kor_odbc_getUserComboBoxKey(runName, table, text, number, kind);
        EXPECT_EQ(shown(result, text, number, kind), ofEither);
    };
    check(L"x", L"ByNumber", "1 7", "1 kept 7 1");
    check(L"y", L"Alias", "1 3", "1 kept 3 1");
    check(L"it's [1] 板🔩 100%", L"ByText", "0 5", "1 b'1 5 0");
    check(L"X", L"ByNumber", "0 5", "0 kept 5 1"); // unknown: the kind that a new row needs
    check(L"none", L"ByText", "0 5", "0 kept 5 0");
    check(L"none", L"Odd", "0 5", "0 kept 5 -1");
    check(L"x", L"Missing", "0 5", "-2 kept 5 7");
    KorString runName(L"kept");
    EXPECT_EQ(kor_odbc_getUserComboBoxRunname(L"b'1' OR 1", L"ByText", runName), 0);
    EXPECT_EQ(shown(kor_odbc_getUserComboBoxRunname(3, L"Alias", runName), runName), "1 y");
    EXPECT_EQ(shown(kor_odbc_getUserComboBoxRunname(L"b'1", L"ByText", runName), runName), "1 it's [1] 板🔩 100%");
}

TEST_F(UserTablesTest, ComboBoxLists)
{
    const auto check = [](const wchar_t* table, int result, std::vector<long> expected,
                          const Texts& expectedNames) {
        KorArray<long> keys;
        keys.append(4);
        KorArray<KorString> names = korTexts({"kept"});
        EXPECT_EQ(kor_odbc_getUserComboBoxList(table, keys, names), result);
        EXPECT_EQ(std::vector<long>(keys.begin(), keys.end()), expected);
        EXPECT_EQ(texts(names), expectedNames);
    };
    check(L"ByText", 1, {20, 10}, {"it's [1] 板🔩 100%", "Träger"});
    check(L"Alias", 1, {2, 1, 3}, {"y", "x", "x"});
    check(L"Two", 1, {}, {"one"}); // no numbers
    check(L"Empty", 0, {}, {});
    check(L"Missing", 0, {}, {"kept"});
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
    EXPECT_EQ(shown(kor_odbc_getCombinationKey(key, L"ISO 4014", L"8.8", L"it's", L"M20", L"Plain", L"Site"), key),
              "1 5");
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
    // as it stands, and sorted by its key
    const auto check = [](const wchar_t* table, const char* found, const char* sorted) {
        SCOPED_TRACE(KorString(table).toUtf8());
        KorArray<KorColumnData> data;
        data.append(KorColumnData());
        KorArray<KorColumn> columns;
        columns.append(KorColumn());
        int result = kor_odbc_getListcontrolTable(table, data, columns);
        EXPECT_EQ(shown(result, values(data)), found);
        EXPECT_EQ(columns.length(), data.length());
        result = kor_odbc_getListcontrolTableSortedByKey(table, data, columns);
        EXPECT_EQ(shown(result, values(data)), sorted);
        EXPECT_EQ(columns.length(), data.length());
    };
    check(L"ByCode", "1 c|a|b,one|two|three", "1 a|b|c,two|three|one");
    check(L"Alias", "1 3|7|9,y|x|x,2|1|3,HEA|HEA|IPE", "1 3|7|9,y|x|x,2|1|3,HEA|HEA|IPE");
    check(L"Two", "1 1,one", "0 "); // has no column of that name
    check(L"Empty", "1 ", "0 ");
    check(L"Missing", "0 ", "0 ");
}

TEST_F(UserTablesTest, ListControlKeys)
{
    // as a text, and as a number
    const auto check = [](int row, const wchar_t* table, const char* ofText, const char* ofInt) {
        KorString text(L"kept");
        int number = 5, result = kor_odbc_getUserListcontrolKey(row, table, text);
        EXPECT_EQ(shown(result, text), ofText) << row;
        result = kor_odbc_getUserListcontrolKey(row, table, number);
        EXPECT_EQ(shown(result, number), ofInt) << row;
    };
    check(0, L"ByText", "1 b'1", "1 0");
    check(2, L"Alias", "1 9", "1 9");
    check(3, L"ByNumber", "1 kept", "0 5");
    check(0, L"Empty", "1 kept", "0 5");
}

TEST_F(UserTablesTest, LanguageDependentStrings)
{
    sql(KorDSNDefinitions::kTexts,
        {"INSERT INTO LanguageDependet_Strings VALUES ('Len''gth', 'Länge [l]', 1, 3)"});
    for (const auto read :
         {kor_odbc_LanguageDependent_getRunname, kor_odbc_LanguageDependent_getUserComboBoxRunname,
          kor_odbc_LanguageDependent_getUserComboBoxRunname_NonCaseSensitiveKey}) {
        KorString text(L"kept");
        EXPECT_EQ(shown(read(L"len'gth", text), text), "0 kept"); // every one of them is case-sensitive
        EXPECT_EQ(shown(read(L"Len'gth", text), text), "1 Länge [l]");
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
