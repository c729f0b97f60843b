#include "Lookups.h"

namespace {

class SteelRulesTest : public RepositoryTest {
protected:
    void SetUp() override
    {
        RepositoryTest::SetUp();
        std::string contents;
        for (int i = 0; i < StructRules::kNumberOfContents; ++i)
            contents += ", '  text''s " + std::to_string(i) + " '";
        sql(KorDSNDefinitions::kRules, {"INSERT INTO RulesNew VALUES (1, 'End plate'" + contents + ", 7, 1)",
                                        "INSERT INTO Rules2nd VALUES (1, 'b', 'Beam''s', 'RuleB', 'joint b', 2), "
                                        "(2, 'a', 'Beam''s', 'RuleA', "
                                        "'joint a', 1), (3, 'a', 'Other', 'RuleA', 'other', 1)",
                                        "INSERT INTO RuleNameMapping VALUES (1, 'Header''s', 'End plate')"});
    }
};

TEST_F(SteelRulesTest, TextsOfARule)
{
    for (int content = 0; content < StructRules::kNumberOfContents; ++content) {
        const std::string text = "text's " + std::to_string(content);
        KorString found;
        EXPECT_EQ(kor_odbc_getRuleString(L"End plate", static_cast<StructRules::eContents>(content), found), 1);
        EXPECT_EQ(found.toUtf8(), content == 9 ? text : "  " + text + " "); // only this one is trimmed
    }
    KorString kept(L" kept ");
    EXPECT_EQ(kor_odbc_getRuleString(L"End plate", StructRules::kNumberOfContents, kept), 1);
    EXPECT_EQ(shown(kor_odbc_getRuleString(L"end plate", StructRules::kParameters, kept), kept), "0  kept ");
}

TEST_F(SteelRulesTest, OneTextByRunName)
{
    const auto check = [](int (*read)(const KorString&, KorString&), const wchar_t* runName,
                          const char* expected) {
        KorString text(L"kept");
        EXPECT_EQ(shown(read(L"' OR 1 --", text), text), "0 kept");
        EXPECT_EQ(shown(read(runName, text), text), expected);
    };
    check(kor_odbc_getRuleInternalName, L"End plate", "1   text's 0 ");
    check(kor_odbc_getRuleIntention, L"End plate", "1   text's 4 ");
    check(kor_odbc_getRuleSublistString, L"End plate", "1   text's 10 ");
    check(kor_odbc_getRules2ndJointName, L"b", "1 joint b");
    check(kor_odbc_mapRuleName, L"Header's", "1 End plate");
    StructRules rule;
    long version = 1;
    EXPECT_EQ(kor_odbc_getRuleObject(L"End plate", rule), 1);
    EXPECT_EQ(kor_odbc_getRuleVersion(L"End plate", version), 1);
    EXPECT_EQ(rule.description, KorString(L"  text's 11 "));
    EXPECT_EQ(version, 7);
}

TEST_F(SteelRulesTest, Categories)
{
    for (const auto read : {kor_odbc_getRuleSublist, kor_odbc_getRuleSublistUse2nd}) {
        KorArray<KorString> names = korTexts({"kept"});
        EXPECT_EQ(read(L"None", names), 0);
        EXPECT_EQ(texts(names), Texts{"kept"});
        EXPECT_EQ(read(L"Beam's", names), 1);
        EXPECT_EQ(texts(names), (Texts{"a", "b"}));
    }
    for (const auto& [category, position, expected] :
         {std::tuple(L"Beam's", 1, "RuleB"), {L"Beam's", 2, ""}, {L"Beam's", -1, ""}, {L"None", 0, ""}}) {
        KorString rule(L"emptied");
        kor_odbc_getRuleKeyUse2nd(category, position, rule);
        EXPECT_EQ(rule.toUtf8(), expected);
    }
    for (const auto& [category, rule, name] :
         {std::tuple(L"Beam's", L"RuleB", "b"), {L"Other", L"RuleA", "a"}, {L"Other", L"RuleB", ""}}) {
        KorString runName(category); // the output may be one of the inputs
        kor_odbc_getRuleRunbezeichnungUse2nd(runName, rule, runName);
        EXPECT_EQ(runName.toUtf8(), name);
    }
}

} // namespace
