#include <korodbc/host/PromptSource.h>
#include <korodbc/host/SettingsStore.h>
#include <korodbc/roots/KorLogfile.h>
#include <korodbc/roots/KorPromptsProxy.h>
#include <korodbc/roots/KorRegExWrapper.h>
#include <korodbc/roots/KRSettings.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>
#include <unistd.h>

static void PrintTo(const KorString& text, std::ostream* stream) { *stream << '"' << text.toUtf8() << '"'; }

namespace {

TEST(KorPromptsProxyTest, CachesUntilReset)
{
    KorPromptsProxy* prompts = KorPromptsProxy::getInstance();
    int asked = 0;
    KorString answer(L"Lesen");
    korodbc::host::setPromptSource([&](std::wstring_view module, unsigned number, KorString& text) {
        ++asked;
        text = answer;
        return module == L"UPS" && number == 21034;
    });
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(prompts->getPrompt(L"UPS", 21034), L"Lesen");
        EXPECT_EQ(prompts->getPrompt(L"UPS", 21035), L"Writing");
        EXPECT_EQ(prompts->getPrompt(L"GUI", 21034, KorString::format(L"own %d", i)),
                  KorString::format(L"own %d", i));
    }
    EXPECT_EQ(asked, 3);
    answer = L"Lire";
    EXPECT_EQ(prompts->getPrompt(L"UPS", 21034), L"Lesen");
    prompts->resetPromptsCache();
    EXPECT_EQ(prompts->getPrompt(L"UPS", 21034), L"Lire");
    korodbc::host::setPromptSource(nullptr);
    EXPECT_EQ(prompts->getPrompt(L"UPS", 21034), L"Reading");
    EXPECT_TRUE(prompts->getPrompt(L"UPS", 1).isEmpty());
}

TEST(KorPromptsProxyTest, MessagesTakeTheirArguments)
{
    KorPromptsProxy* prompts = KorPromptsProxy::getInstance();
    for (unsigned number : {45058U, 45059U, 45061U, 45062U, 45064U, 45068U}) {
        const KorString text = prompts->getPrompt(L"GUI", number);
        EXPECT_FALSE(text.isEmpty()) << number;
        const bool takesKey = number == 45061 || number == 45068;
        EXPECT_EQ(KorString::format(text, 4711).find(L"4711") >= 0, takesKey || number == 45064) << number;
        EXPECT_EQ(text.find(L"%d") >= 0, takesKey) << number;
    }
}

TEST(KRSettingsTest, KeepsTextsAndNumbers)
{
    KorString text(L"before");
    int number = -7;
    EXPECT_EQ(KRSettings::getValue(L"Region Key", text), 0);
    EXPECT_EQ(text, L"before");
    EXPECT_EQ(KRSettings::setValue(L"Region Key", 12), 1);
    EXPECT_EQ(KRSettings::getValue(L"Region Key", number), 1);
    EXPECT_EQ(KRSettings::getValue(L"Region Key", text), 1);
    EXPECT_EQ(number, 12);
    EXPECT_EQ(text, L"12");
    for (const wchar_t* noNumber : {L"", L"x", L"12x", L"99999999999"}) {
        KRSettings::setValue(L"Region Key", noNumber);
        EXPECT_EQ(KRSettings::getValue(L"Region Key", number), 0);
        EXPECT_EQ(number, 12);
    }
    korodbc::host::setSettingsStore(nullptr);
}

TEST(KorRegExWrapperTest, MatchesAndSearches)
{
    KorRegExWrapper expression;
    EXPECT_FALSE(expression.match(L""));
    EXPECT_FALSE(expression.setPattern(L"(open"));
    EXPECT_FALSE(expression.isValid() || expression.search(L"(open"));
    ASSERT_TRUE(expression.setPattern(L"[a-z\u00E4]+\\d"));
    EXPECT_TRUE(expression.match(L"tr\u00E4ger1"));
    EXPECT_FALSE(expression.match(L"tr\u00E4ger12"));
    int position = -1;
    int length = -1;
    ASSERT_TRUE(expression.search(L"\U0001F529 \u00E41 \u94A2 b2", 0, position, length));
    EXPECT_EQ(position * 10 + length, 22);
    ASSERT_TRUE(expression.search(L"\U0001F529 \u00E41 \u94A2 b2", 3, position, length));
    EXPECT_EQ(position * 10 + length, 72);
    EXPECT_FALSE(expression.search(L"b2", 1, position, length) || expression.search(L"b2", 9, position, length));
    EXPECT_EQ(position, 7);
    EXPECT_TRUE(KorRegExWrapper(L"HEA\u00C4", false).match(L"hea\u00E4"));

    // A backtracking engine would not come back from this one.
    std::wstring groups;
    for (int i = 0; i < 99; ++i)
        groups += L"(a)?";
    EXPECT_TRUE(KorRegExWrapper(groups.c_str()).match(L"aaa"));
    const KorRegExWrapper tooMany((groups + L"(a)?").c_str());
    EXPECT_FALSE(tooMany.isValid() || tooMany.match(L"aaa"));
    EXPECT_EQ(tooMany.error(), L"more than 99 groups");
    EXPECT_FALSE(KorRegExWrapper(L"(a+)+$").match(KorString(std::wstring_view(std::wstring(5000, L'a') + L'b'))));
}

TEST(KorLogfileTest, OpensWithTheFirstLine)
{
    const auto folder = std::filesystem::temp_directory_path() / ("korlog" + std::to_string(::getpid()));
    std::filesystem::create_directory(folder);
    ::setenv("KORODBC_LOG_DIR", folder.c_str(), 1);
    const auto file = folder / "velOdbc.log";
    {
        KorLogfile idle(L"velOdbc.log");
        EXPECT_FALSE(std::filesystem::exists(file));
    }
    EXPECT_FALSE(std::filesystem::exists(file));
    for (const wchar_t* line : {L"Tr\u00E4ger %d", L"second"})
        KorLogfile(L"velOdbc.log").write(line);
    std::ostringstream content;
    content << std::ifstream(file).rdbuf();
    EXPECT_EQ(content.str(), "Tr\xC3\xA4ger %d\nsecond\n");
    ::setenv("KORODBC_LOG_DIR", (folder / "missing").c_str(), 1);
    KorLogfile(L"velOdbc.log").write(L"dropped");
    EXPECT_FALSE(std::filesystem::exists(folder / "missing"));
    ::unsetenv("KORODBC_LOG_DIR");
    std::filesystem::remove_all(folder);
}

} // namespace
