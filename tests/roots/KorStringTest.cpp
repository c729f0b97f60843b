#include "support/RepositoryFixture.h"

#include <korodbc/roots/KorString.h>

#include <cmath>
#include <cstdio>
#include <limits>
#include <random>
#include <unordered_set>
#include <utf8proc.h>

namespace {

using namespace std::string_literals;

TEST(KorStringTest, CopiesShareAndChangesStayApart)
{
    KorString original(L"beam");
    KorString copy = original;
    EXPECT_EQ(copy.c_str(), original.c_str());
    // Growing in place must neither disturb another copy nor text taken from itself.
    for (int i = 0; i < 6; ++i)
        copy += copy;
    EXPECT_EQ(original, L"beam");
    const KorString before = copy;
    copy += copy.view().substr(2, 4);
    EXPECT_EQ(before.length(), 4 * 64);
    EXPECT_TRUE(copy.endsWith(L"beamambe"s));
    EXPECT_EQ(copy.c_str()[copy.length()], L'\0');

    // A copy taken while there is room behind the text must not see what comes after it.
    KorString growing;
    for (int i = 0; i < 40; ++i) {
        growing += L'a';
        const KorString held = growing;
        growing += L'b';
        ASSERT_EQ(held.length(), 2 * i + 1);
        ASSERT_TRUE(held.endsWith(L"a") && held.c_str()[held.length()] == L'\0');
        ASSERT_TRUE(growing.endsWith(L"ab"));
    }

    KorString moved = std::move(copy);
    EXPECT_EQ(moved.length(), 4 * 64 + 4);
    moved = moved.left(3);
    EXPECT_EQ(moved + L"-" + moved, L"bea-bea");
    EXPECT_TRUE(KorString(static_cast<const wchar_t*>(nullptr)).isEmpty());
    EXPECT_EQ(std::wstring(KorString().c_str()), L"");
}

TEST(KorStringTest, DecodesUtf8)
{
    struct Case {
        std::string utf8;
        std::wstring wide;
    };
    const Case cases[] = {
        {"", L""},
        {"a\0b"s, L"a\0b"s},
        {"\xDF\xBF\xE0\xA0\x80\xEF\xBF\xBF\xF4\x8F\xBF\xBF", L"\u07FF\u0800\uFFFF\U0010FFFF"},
    };
    for (const Case& one : cases) {
        EXPECT_EQ(KorString::fromUtf8(one.utf8), std::wstring_view(one.wide)) << one.utf8;
        EXPECT_EQ(KorString(one.wide).toUtf8(), one.utf8);
    }

    const Case faulty[] = {
        {"\x80", L"\uFFFD"},                               // continuation without a start
        {"a\xC3", L"a\uFFFD"},                             // cut off
        {"\xF0\x9F\x94", L"\uFFFD"},                       // cut off late
        {"\xC0\xAF", L"\uFFFD\uFFFD"},                     // overlong
        {"\xE0\x80\xAF", L"\uFFFD\uFFFD\uFFFD"},           // overlong
        {"\xED\xA0\x80", L"\uFFFD\uFFFD\uFFFD"},           // surrogate
        {"\xF4\x90\x80\x80", L"\uFFFD\uFFFD\uFFFD\uFFFD"}, // above the last code point
        {"\xE9\x92z\xFFz", L"\uFFFDz\uFFFDz"},
    };
    for (const Case& one : faulty)
        EXPECT_EQ(KorString::fromUtf8(one.utf8), std::wstring_view(one.wide));

    const wchar_t noCodePoints[] = {L'x', static_cast<wchar_t>(0xD800), static_cast<wchar_t>(0x110000),
                                    static_cast<wchar_t>(-1), L'y'};
    std::string text = "<";
    KorString(std::wstring_view(noCodePoints, 5)).appendUtf8To(text);
    EXPECT_EQ(text, "<x\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBDy");
}

TEST(KorStringTest, EveryCodePointSurvivesUtf8)
{
    std::wstring all;
    for (wchar_t character = 0; character <= 0x10FFFF; ++character)
        if (character < 0xD800 || character > 0xDFFF)
            all.push_back(character);
    EXPECT_TRUE(KorString::fromUtf8(KorString(all).toUtf8()) == std::wstring_view(all));
}

TEST(KorStringTest, ComparesWithoutCase)
{
    const auto check = [](const KorString& left, const KorString& right, int order) {
        EXPECT_EQ(left.compareNoCase(right), order) << left.toUtf8() << ' ' << right.toUtf8();
        EXPECT_EQ(KorString::strCompareNoCase(right, left), -order) << left.toUtf8() << ' ' << right.toUtf8();
        EXPECT_EQ(left.foldedCase() == right.foldedCase(), order == 0) << left.toUtf8();
    };
    const wchar_t* const equal[] = {
        L"",        L"",       L"HEA 200",    L"hea 200",      L"Stra\u00DFe",  L"STRASSE",     L"Stra\u1E9Ee",
        L"strasse", L"\u0130", L"i\u0307",    L"\u03A3\u03A3", L"\u03C3\u03C2", L"TR\u00C4GER", L"tr\u00E4ger",
        L"\u0416",  L"\u0436", L"\U00010400", L"\U00010428",   L"\uFB03",       L"FFI"};
    for (std::size_t i = 0; i < std::size(equal); i += 2)
        check(equal[i], equal[i + 1], 0);
    // the underscore stands before the folded letters; capital I with a dot and dotless i are letters of their own
    const wchar_t* const ascending[] = {L"",   L"a",      L"HEA 20",     L"hea 200", L"A_",
                                        L"aB", L"stras",  L"stra\u00DF", L"i",       L"\u0130",
                                        L"I",  L"\u0131", L"\u94A2a",    L"\u94A2B"};
    for (std::size_t i = 0; i < std::size(ascending); i += 2)
        check(ascending[i], ascending[i + 1], -1);
    EXPECT_LT(KorString(L"B").compare(L"a"), 0);
    EXPECT_TRUE(KorString(L"B") < KorString(L"a") && KorString(L"b") > L"a" && KorString(L"x") != L"X");
}

TEST(KorStringTest, FoldsEveryCharacterAsUtf8procDoes)
{
    const std::string_view known = utf8proc_unicode_version();
    for (utf8proc_int32_t character = 0; character <= 0x110000; ++character) {
        utf8proc_int32_t expected[8] = {};
        int boundClass = 0;
        const auto length = utf8proc_decompose_char(character, expected, 8, UTF8PROC_CASEFOLD, &boundClass);
        // nothing is folded that is no code point
        std::wstring folded = length < 0 ? std::wstring(1, character) : std::wstring(expected, expected + length);
        const KorString text(std::wstring_view(std::wstring(1, character)));
        const KorString ours = text.foldedCase();
        // a utf8proc of another year knows more letters, or fewer; none that both know is folded otherwise
        const bool isKnown = ours != text && folded.front() != character;
        ASSERT_TRUE(ours == std::wstring_view(folded) || !(known.starts_with("15.") || isKnown))
            << character << ", Unicode " << known;
        if (ours == text)
            continue;
        // with characters around it, and as the end of a text
        ASSERT_EQ((KorString(L"A") + text + KorString(L"Z")).foldedCase(),
                  KorString(L"a") + ours + KorString(L"z"))
            << character;
        ASSERT_EQ(text.compareNoCase(ours), 0) << character;
    }
    for (const wchar_t none : {static_cast<wchar_t>(-1), static_cast<wchar_t>(0x7FFFFFFF)})
        EXPECT_EQ(KorString(std::wstring_view(&none, 1)).foldedCase().getAt(0), none);
}

TEST(KorStringTest, FindsAndCuts)
{
    const KorString text(L"a;bb;;bb");
    EXPECT_EQ(text.find(L"bb"), 2);
    EXPECT_EQ(text.find(L"bb", 3), 6);
    EXPECT_EQ(text.find(L"bb", 99), -1);
    EXPECT_EQ(text.find(L"a", -5), 0);
    EXPECT_EQ(text.replace(L"bb", L"bbb"), L"a;bbb;;bbb");
    EXPECT_EQ(text.replace(L";", L""), L"abbbb");
    EXPECT_EQ(text.replace(L"", L"x"), text);
    EXPECT_EQ(KorString(L"'''").replace(L"'", L"''"), L"''''''");
    EXPECT_EQ(text.left(3) + text.right(2) + text.mid(1, 1) + text.mid(6), L"a;bbb;bb");
    EXPECT_EQ(text.left(99), text);
    EXPECT_EQ(text.left(-1) + text.right(-1) + text.mid(99) + text.mid(8, 3), L"");
    EXPECT_EQ(text.mid(-2, 2), L"a;");
    EXPECT_EQ(KorString(L" \t x y\t ").trimmed(), L"x y");

    constexpr long largest = std::numeric_limits<long>::max(), smallest = std::numeric_limits<long>::min();
    const std::pair<const wchar_t*, long> numbers[] = {{L"", 0},
                                                       {L"x7", 0},
                                                       {L" \t12mm", 12},
                                                       {L"-3-4", -3},
                                                       {L"+5", 5},
                                                       {L"- 5", 0},
                                                       {L"007.9", 7},
                                                       {L"9223372036854775807", largest},
                                                       {L"9223372036854775808", largest},
                                                       {L"-9223372036854775808", smallest},
                                                       {L"-99999999999999999999", smallest}};
    for (const auto& [digits, value] : numbers)
        EXPECT_EQ(KorString(digits).toInteger(), value) << KorString(digits).toUtf8();

    KorArray<KorString> tokens;
    tokens.append(L"old");
    EXPECT_EQ(KorString::getTokens(L";a,;b b;", tokens, L";,"), 2);
    ASSERT_EQ(tokens.length(), 2);
    EXPECT_EQ(tokens[0] + L"|" + tokens[1], L"a|b b");
    EXPECT_EQ(KorString::getTokens(tokens[1], tokens, L""), 1);
    EXPECT_EQ(KorString::getTokens(L";;", tokens, L";"), 0);

    std::unordered_set<KorString, KorStringHash, std::equal_to<>> set{L"a", KorString::fromUtf8("\xC3\xA4")};
    EXPECT_TRUE(set.contains(std::wstring_view(L"\u00E4")) && !set.contains(std::wstring_view(L"b")));
}

template <class Value>
void expectLikePrintf(const char* pattern, Value value)
{
    std::string expected(5000, '\0');
    expected.resize(static_cast<std::size_t>(std::snprintf(expected.data(), expected.size(), pattern, value)));
    EXPECT_EQ(KorString::format(KorString::fromUtf8(pattern), value).toUtf8(), expected) << pattern;
}

TEST(KorStringFormatTest, WritesNumbersLikeC)
{
    std::mt19937_64 random(7);
    for (const char* modifiers :
         {"", "5", "-5", "05", "-05", "22", "-22", "022", ".3", "8.3", "-8.3", "08.3", ".0", "12.0", "700"}) {
        const std::string start = std::string("<%") + modifiers;
        for (long value : {0L, 1L, -1L, 42L, -99999L, 2147483648L, std::numeric_limits<long>::min()}) {
            expectLikePrintf((start + "ld>").c_str(), value);
            expectLikePrintf((start + "lli>").c_str(), static_cast<long long>(value));
            expectLikePrintf((start + "lu>").c_str(), static_cast<unsigned long>(value));
            expectLikePrintf((start + "d>").c_str(), static_cast<int>(value));
            expectLikePrintf((start + "u>").c_str(), static_cast<int>(value));
            expectLikePrintf((start + "u>").c_str(), static_cast<unsigned>(value));
        }
        const double limits[] = {0.0,  -0.0,       0.5,   1.5,     2.5,      0.0005,    -0.0000001,
                                 1e15, 123456.789, 1e308, -5e-324, HUGE_VAL, -HUGE_VAL, std::nan("")};
        for (double value : limits)
            expectLikePrintf((start + "f>").c_str(), value);
        for (int i = 0; i < 200; ++i) {
            const auto digits = static_cast<double>(static_cast<long>(random() % 2000000) - 1000000);
            expectLikePrintf((start + "lf>").c_str(), std::ldexp(digits, static_cast<int>(random() % 80) - 40));
        }
    }
    expectLikePrintf("%.400f", 1e-300);
}

TEST(KorStringFormatTest, WritesTextsAndMismatches)
{
    enum eKind { kSecond = 1 };
    const KorString name(L"%d 'x' \U0001F529");
    const std::wstring wide(600, L'w');
    EXPECT_EQ(KorString::format(L"%ld, %ld, '%s'%%", 7, kSecond, name), L"7, 1, '%d 'x' \U0001F529'%");
    EXPECT_EQ(KorString::format(L"[%6s|%-6s|%.2s|%06s]", L"abc", L"abc", L"abc", L"abc"),
              L"[   abc|abc   |ab|   abc]");
    EXPECT_EQ(KorString::format(L"%s-%s", wide, 5), std::wstring_view(wide + L"-5"));
    EXPECT_EQ(KorString::format(L"%c%c%3c%-3c|", L'\u94A2', 'b', L"cd", 100), L"\u94A2b  cd  |");
    EXPECT_EQ(KorString::format(L"%d|%d|%d", L"12 OR 1=1", L"x", 3.9), L"12|0|3");
    EXPECT_EQ(KorString::format(L"%f|%s|%d|%u", 2, 0.25, true, 4294967295U), L"2.000000|0.250000|1|4294967295");
    EXPECT_EQ(KorString::format(L"<%d><%s><%5f>", 1), L"<1><><>");
    EXPECT_EQ(KorString::format(L"100% ok %q %5", 1, 2), L"100% ok %q %5");
    EXPECT_EQ(KorString::format(L"%-"), L"%-");
    EXPECT_EQ(KorString::format(L"%d %d", 1e300, std::nan("")), L"9223372036854775807 0");
    EXPECT_EQ(KorString::format(L"%99999999999d", 1).length(), 4096);
    EXPECT_TRUE(KorString::format(L"").isEmpty());
    const wchar_t* none = nullptr;
    EXPECT_EQ(KorString::format(L"(%s)", none), L"()");
}

} // namespace
