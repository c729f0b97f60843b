#include "support/RepositoryFixture.h"

#include <korodbc/maintenance/KorOdbcGUI.h>

namespace {

TEST(TextSplitTest, SplitsAtTheFirstDigit)
{
    const auto check = [](const wchar_t* text, const wchar_t* before, const wchar_t* rest) {
        KorString left(L"old"), right(L"old"), same(text);
        KorOdbcGUI::getLeftAndRightFromFirstNumber(text, left, right);
        EXPECT_EQ(left + L"|" + right, KorString(before) + L"|" + rest);
        KorOdbcGUI::getLeftAndRightFromFirstNumber(same, same, right);
        EXPECT_EQ(same, KorString(before));
        same = text;
        KorOdbcGUI::getLeftAndRightFromFirstNumber(same, left, same);
        EXPECT_EQ(same, KorString(rest));
    };
    check(L"HEA200", L"HEA", L"200");
    check(L"M.12x40", L"M.", L".12x40"); // the full stop is in both
    for (const wchar_t* text : {L"PL", L"", L"."})
        check(text, text, L"");
    for (const wchar_t* text : {L"12", L"0.5"})
        check(text, L"", text);
    check(L".5", L".", L".5");
    check(L"A..5", L"A..", L".5");
    check(L"A.B5", L"A.B", L"5");
    check(L"板🔩7ü", L"板🔩", L"7ü");
    check(L"٣x1", L"٣x", L"1"); // digits of other scripts are letters
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
