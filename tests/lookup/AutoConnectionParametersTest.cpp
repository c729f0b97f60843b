#include "Lookups.h"

namespace {

using Param = AutoConnParamSetSituationStruct;

class AutoConnectionParametersTest : public RepositoryTest {
protected:
    static constexpr const char* table = "AutoConnectionParamSetItems";
    const Texts initial{"1|1|10|Bolt's [1]|11|M20|12", "2|2|20|Plate|21|15|22", "3|1|30|Twice|31|first|32",
                        "4|1|40|Twice|41|second|42"};

    void SetUp() override
    {
        RepositoryTest::SetUp();
        sql(configuration,
            {"INSERT INTO AutoConnectionParamSetItems VALUES (1, 1, 10, 'Bolt''s [1]', 11, 'M20', 12),"
             "(2, 2, 20, 'Plate', 21, '15', 22), (3, 1, 30, 'Twice', 31, 'first', 32),"
             "(4, 1, 40, 'Twice', 41, 'second', 42)",
             "CREATE TABLE Short ([Key] INTEGER PRIMARY KEY, Situation INTEGER, V1 INTEGER)",
             "INSERT INTO Short VALUES (5, 1, 50)", "CREATE TABLE KeyOnly ([Key] INTEGER PRIMARY KEY)",
             "INSERT INTO KeyOnly VALUES (1)",
             "INSERT INTO TableAliases VALUES (1, 'Params', 'AutoConnectionParamSetItems')"});
    }
    static Texts read(int situation, const wchar_t* name, int result)
    {
        KorArray<Param> params;
        EXPECT_EQ(kor_odbc_getAutoConnSituationParams(situation, name, params), result);
        Texts list;
        for (const Param& one : params)
            list.push_back(std::to_string(one.key) + "|" + std::to_string(one.situation) + "|" +
                           std::to_string(one.intValue1) + "|" + one.name.toUtf8() + "|" +
                           std::to_string(one.intValue2) + "|" + one.textValue.toUtf8() + "|" +
                           std::to_string(one.intValue3));
        return list;
    }
    static int write(int situation, const std::vector<Param>& params, const wchar_t* name = L"Params")
    {
        KorArray<Param> array;
        for (const Param& param : params)
            array.append(param);
        return kor_odbc_setAutoConnSituationParams(situation, name, array);
    }
};

TEST_F(AutoConnectionParametersTest, Reads)
{
    EXPECT_EQ(read(1, L"Params", 1), (Texts{initial[0], initial[2], initial[3]}));
    EXPECT_EQ(read(2, L"AutoConnectionParamSetItems", 1), Texts{initial[1]});
    EXPECT_EQ(read(3, L"Params", 0), Texts{});
    EXPECT_EQ(read(1, L"Short", 1), Texts{"5|1|50||0||0"}); // ends at the first column that is missing
    EXPECT_EQ(read(1, L"KeyOnly", 0), Texts{});
    EXPECT_EQ(read(1, L"Missing", 0), Texts{});
}

TEST_F(AutoConnectionParametersTest, Writes)
{
    const auto check = [&](int situation, const std::vector<Param>& params, int result, const Texts& after) {
        RepositoryTest::TearDown();
        SetUp();
        EXPECT_EQ(write(situation, params), result);
        EXPECT_EQ(rows(configuration, table), after);
    };
    const Param changed{99, 1, -1, L"Bolt's [1]", -2, L"it's 板🔩", -3};
    const std::string changedRow = "1|1|-1|Bolt's [1]|-2|it's 板🔩|-3";
    check(3, {changed}, 0, initial); // a situation is never started
    check(1, {}, 1, initial);
    check(1, {changed}, 1, {changedRow, initial[1], initial[2], initial[3]});
    check(1, {{0, 1, 5, L"Twice", 6, L"new", 7}}, 1, {initial[0], initial[1], "3|1|5|Twice|6|new|7", initial[3]});
    check(1, {{0, 1, 5, L"twice", 6, L"new", 7}, changed}, 1,
          {changedRow, initial[1], initial[2], initial[3], "5|1|5|twice|6|new|7"});
    // the parameter's own situation is written
    check(2, {{0, 8, 5, L"Plate", 6, L"", 7}}, 1, {initial[0], "2|8|5|Plate|6||7", initial[2], initial[3]});
    EXPECT_EQ(write(1, {changed}, L"Missing"), 0);
}

TEST_F(AutoConnectionParametersTest, FailedRowIsReported)
{
    sql(configuration,
        {"CREATE TABLE Tight ([Key] INTEGER PRIMARY KEY CHECK ([Key] < 3), Situation INTEGER, V1 INTEGER, "
         "Name TEXT, V2 INTEGER, Value TEXT, V3 INTEGER)",
         "INSERT INTO Tight VALUES (1, 1, 1, 'old', 1, '', 1)"});
    EXPECT_EQ(write(1, {{0, 1, 2, L"fits", 2, L"", 2}}, L"Tight"), 1);
    EXPECT_EQ(write(1, {{0, 1, 3, L"new", 3, L"", 3}}, L"Tight"), 0);
    EXPECT_EQ(rows(configuration, "Tight"), (Texts{"1|1|1|old|1||1", "2|1|2|fits|2||2"}));
}

} // namespace
