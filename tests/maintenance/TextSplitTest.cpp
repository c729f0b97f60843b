#include "maintenance/KorOdbcGUI.h"
#include "support/RepositoryFixture.h"

namespace {

TEST(TextSplitTest, SplitsAtTheFirstDigit)
{
    struct Case {
        const wchar_t *text, *left, *right;
    };
    for (const Case& one : {Case{L"HEA200", L"HEA", L"200"},
                            {L"M.12x40", L"M.", L".12x40"}, // the full stop is in both
                            {L"PL", L"PL", L""},
                            {L"12", L"", L"12"},
                            {L"", L"", L""},
                            {L".", L".", L""},
                            {L".5", L".", L".5"},
                            {L"A..5", L"A..", L".5"},
                            {L"A.B5", L"A.B", L"5"},
                            {L"0.5", L"", L"0.5"},
                            {L"板🔩7ü", L"板🔩", L"7ü"},
                            {L"٣x1", L"٣x", L"1"}}) { // digits of other scripts are letters
        KorString left(L"old"), right(L"old");
        KorOdbcGUI::getLeftAndRightFromFirstNumber(one.text, left, right);
        EXPECT_EQ(left, KorString(one.left));
        EXPECT_EQ(right, KorString(one.right));

        KorString same(one.text);
        KorOdbcGUI::getLeftAndRightFromFirstNumber(same, same, right);
        EXPECT_EQ(same, KorString(one.left));
        same = one.text;
        KorOdbcGUI::getLeftAndRightFromFirstNumber(same, left, same);
        EXPECT_EQ(same, KorString(one.right));
    }
}

TEST(TextSplitTest, TokensAreWhatStandsBetweenSeparators)
{
    KorArray<KorString> tokens = korTexts({"old"});
    EXPECT_EQ(KorOdbcGUI::getTokens(L"a;b,,c 板;", tokens, L";,"), 3);
    ASSERT_EQ(tokens.length(), 3);
    EXPECT_EQ(tokens[0], L"a");
    EXPECT_EQ(tokens[2], L"c 板");
}

} // namespace
