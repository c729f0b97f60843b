#include "support/RepositoryFixture.h"

#include <korodbc/exchange/SectionConversions.h>

#include <chrono>
#include <random>
#include <regex>
#include <span>

using Native = KorODBCQXT_Profile_Conversion;
using Exports = KorODBCProfile_Exports_Conversion;

namespace {

/// A row of a table of rules.
struct WalkedRule {
    std::wstring profileClass, section;
    int application, objectType;
    std::wstring answerClass, answer;
};

/// The answer of the rows to a question, found row by row with another engine for expressions.
const WalkedRule* walk(const std::vector<WalkedRule>& rules, const std::wstring& profileClass,
                       const std::wstring& section, int application, int objectType, std::wstring& answer)
{
    for (const WalkedRule& rule : rules) {
        const bool anyClass = profileClass.empty() || profileClass == L"-";
        if ((!anyClass && rule.profileClass != profileClass) || rule.application != application ||
            rule.objectType != objectType)
            continue;
        std::wsmatch groups;
        bool matches = false;
        try {
            matches = std::regex_match(section, groups, std::wregex(rule.section));
        } catch (const std::regex_error&) {
        }
        if (!matches && rule.section != section)
            continue;
        answer = rule.answer;
        for (std::size_t i = 1; matches && i < groups.size(); ++i) {
            const std::wstring mark = L"%" + std::to_wstring(i), text = groups[i].str();
            for (std::size_t at = 0; (at = answer.find(mark, at)) != std::wstring::npos; at += text.size())
                answer.replace(at, mark.size(), text);
        }
        return &rule;
    }
    return nullptr;
}

std::string quoted(const std::wstring& text)
{
    std::string literal = "'";
    for (const char c : KorString(text).toUtf8())
        literal += c == '\'' ? "''" : std::string(1, c);
    return literal + "'";
}

std::string rowOf(std::size_t key, const WalkedRule& rule)
{
    return "(" + std::to_string(key) + ", " + quoted(rule.profileClass) + ", " + quoted(rule.section) + ", " +
           std::to_string(rule.application) + ", " + std::to_string(rule.objectType) + ", " +
           quoted(rule.answerClass) + ", " + quoted(rule.answer) + ", -1, -1, 'o')";
}

class SectionRulesTest : public RepositoryTest {
protected:
    static constexpr eDSN addin = KorDSNDefinitions::kAddin;

    static void store(eDSN dsn, const char* table, const std::vector<WalkedRule>& rules)
    {
        sql(dsn, {std::string("DELETE FROM ") + table});
        for (std::size_t i = 0; i < rules.size(); ++i)
            sql(dsn, {std::string("INSERT INTO ") + table + " VALUES " + rowOf(i + 1, rules[i])});
    }
    static void native(const std::vector<WalkedRule>& rules)
    {
        store(configuration, "QXT_Profile_Conversion", rules);
    }
    /// "class section" of a name with the class "C" in application 1, "0" without an answer.
    static std::string neutral(const std::wstring& name, const wchar_t* profileClass = L"C")
    {
        KorString outClass = L"before", out = L"before";
        const int result = Native::getQXTProfiles(profileClass, KorString(name), 1, 1, outClass, out);
        EXPECT_TRUE(result == 1 || (outClass == L"before" && out == L"before"));
        return result != 1 ? std::to_string(result) : outClass.toUtf8() + " " + out.toUtf8();
    }
};

/// Rules and questions of few parts, so that many meet.
class Generator {
public:
    explicit Generator(unsigned seed) : m_random(seed) {}

    template <class T, std::size_t N>
    const T& one(const T (&of)[N])
    {
        return of[m_random() % N];
    }
    std::wstring joined(std::span<const wchar_t* const> parts, unsigned most)
    {
        std::wstring text;
        for (unsigned left = 1 + m_random() % most; left > 0; --left)
            text += parts[m_random() % parts.size()];
        return text;
    }
    std::wstring profileClass() { return one(classes); }
    std::wstring name()
    {
        static constexpr const wchar_t* parts[] = {L"HEA", L"100", L"20", L"x", L"Ä", L"梁", L"7", L"(", L"H E"};
        return joined(parts, 4);
    }
    WalkedRule rule()
    {
        static constexpr const wchar_t* parts[] = {
            L"HEA",   L"A?",      L"10*",  L"x{2}", L"(\\d+)", L"x",
            L"(x|Ä)", L"(H ?E)?", L"(.*)", L"(A)|", L"100",    L"([A-Z]{3})(1)",
            L"(",     L"(.)",     L"[^x]", L"梁",   L"()",     L"(.)(.)(.)(.)(.)(.)(.)(.)(.)(.)"};
        static constexpr const wchar_t* answers[] = {L"%1", L"%2", L"%3", L"%0", L"%12", L"%10",
                                                     L"%",  L"1",  L"Ä ", L"%%", L"it's"};
        return {profileClass(), m_random() % 5 == 0 ? name() : joined(parts, 4),
                number(),       number(),
                profileClass(), joined(answers, 5)};
    }
    int number() { return 1 + static_cast<int>(m_random() % 2); }

private:
    static constexpr const wchar_t* classes[] = {L"A", L"B", L"", L"-"};
    std::mt19937 m_random;
};

TEST_F(SectionRulesTest, AnswerAsAPlainWalkOverTheRows)
{
    sql(addin, {"CREATE TABLE QXT_Profile_Conversion ([Key] INTEGER PRIMARY KEY, Class TEXT, Section TEXT, "
                "Application INTEGER, ObjectType INTEGER, QXTClass TEXT, QXTSection TEXT, Family INTEGER, "
                "Source INTEGER, OwnerText TEXT)"});
    Generator generate(11);
    int answered = 0, both = 0;
    for (int state = 0; state < 50; ++state) {
        std::vector<WalkedRule> rules[2], exports;
        for (int i = 0; i < 12; ++i) {
            rules[0].push_back(generate.rule());
            rules[1].push_back(generate.rule());
        }
        for (int i = 0; i < 60; ++i)
            exports.push_back(generate.rule());
        native(rules[0]);
        store(addin, "QXT_Profile_Conversion", rules[1]);
        store(configuration, "Profile_Exports_Conversion", exports);
        for (int question = 0; question < 200; ++question) {
            if (question == 100) { // one row changes
                rules[0][5] = generate.rule();
                sql(configuration, {"DELETE FROM QXT_Profile_Conversion WHERE [Key] = 6",
                                    "INSERT INTO QXT_Profile_Conversion VALUES " + rowOf(6, rules[0][5])});
            }
            const std::wstring name = generate.name(), profileClass = generate.profileClass();
            const int application = generate.number(), objectType = generate.number();
            SCOPED_TRACE(KorString(profileClass + L" " + name).toUtf8() + " " + std::to_string(application) + " " +
                         std::to_string(objectType));
            const auto expect = [&](const std::vector<WalkedRule>& walked, auto ask) {
                std::wstring answer;
                const WalkedRule* rule = walk(walked, profileClass, name, application, objectType, answer);
                KorString outClass = L"before", out = L"before";
                EXPECT_EQ(ask(outClass, out), rule != nullptr ? 1 : 0);
                EXPECT_EQ(outClass, KorString(rule != nullptr ? rule->answerClass : L"before"));
                EXPECT_EQ(out, KorString(rule != nullptr ? answer : L"before"));
                answered += rule != nullptr;
            };
            const auto askNative = [&](KorString& outClass, KorString& out) {
                return Native::getQXTProfiles(KorString(profileClass), KorString(name), objectType, application,
                                              outClass, out);
            };
            expect(rules[0], askNative);
            {
                const KorDSNRequest request(addin, KorDSNDefinitions::kBase);
                expect(rules[1], askNative);
            }
            expect(exports, [&](KorString& outClass, KorString& out) {
                return Exports::getExportProfiles(KorString(profileClass), KorString(name), application,
                                                  objectType, outClass, out);
            });
            // both tables: out from application 1, back from the other
            for (const bool toNative : {false, true}) {
                std::wstring between, answer;
                const WalkedRule* first =
                    walk(rules[0], profileClass, name, toNative ? application : 1, 1, between);
                const WalkedRule* second = first == nullptr ? nullptr
                                                            : walk(exports, first->answerClass, between,
                                                                   toNative ? 1 : application, 1, answer);
                KorString outClass(profileClass), out(name); // the outputs are the inputs
                EXPECT_EQ(Exports::getMappedSection(outClass, out, application, toNative, outClass, out),
                          second != nullptr ? 1 : 0);
                EXPECT_EQ(outClass, KorString(second != nullptr ? second->answerClass : profileClass));
                EXPECT_EQ(out, KorString(second != nullptr ? answer : name));
                both += second != nullptr;
            }
        }
    }
    EXPECT_GT(answered, 3000);
    EXPECT_GT(both, 200);
}

TEST_F(SectionRulesTest, EdgesOfClassesAndAnswers)
{
    const struct {
        WalkedRule rule;
        const wchar_t *name, *profileClass;
        const char* answer;
    } cases[] = {
        {{L"X", L"HEA(\\d+)", 1, 1, L"N", L"%1"}, L"HEA200", L"-", "N 200"},
        {{L"-", L"HEA(\\d+)", 1, 1, L"N", L"%1"}, L"HEA200", L"C", "0"}, // the class of a row is no wildcard
        {{L"C", L"(\\d+)x(\\d+)", 1, 1, L"N", L"%2/%1/%3/%0"}, L"10x20", L"C", "N 20/10/%3/%0"},
        {{L"C", L"\\d+", 1, 1, L"N", L"%1"}, L"\\d+", L"C", "N %1"}, // equal, though it does not match
        {{L"C", L"(?i)hea", 1, 1, L"N", L"n"}, L"HEA", L"C", "N n"},
        {{L"C", L"(a)(b)", 1, 1, L"N", L"%12 %2"}, L"ab", L"C", "N a2 b"},
        {{L"C", L"(%2)(b)", 1, 1, L"N", L"%1"}, L"%2b", L"C", "N b"}, // one group into another
        {{L"C", L"(梁)(🏗?)", 1, 1, L"Ä", L"%2-%1"}, L"梁🏗", L"C", "Ä 🏗-梁"},
        {{L"C", L"", 1, 1, L"N", L"n"}, L"", L"C", "N n"},
        {{L"C", L"a(", 1, 1, L"N", L"%1"}, L"a(", L"C", "N %1"},
        {{L"C", L"(a)\\1", 1, 1, L"N", L"%1"}, L"aa", L"C", "0"},
    };
    for (const auto& [rule, name, profileClass, answer] : cases) {
        native({rule});
        EXPECT_EQ(neutral(name, profileClass), answer) << KorString(rule.section).toUtf8();
    }
    sql(configuration, {"DROP TABLE QXT_Profile_Conversion"});
    EXPECT_EQ(neutral(L"a"), "0");
    KorArray<KorExchangeRule> rules;
    EXPECT_EQ(Native::getFaultyRules(rules), 0);
}

TEST_F(SectionRulesTest, HostileExpressionsStopNothing)
{
    const std::wstring many(100000, L'a');
    std::wstring nested, twos;
    for (int i = 0; i < 20000; ++i) {
        nested += L"(";
        twos += L"%2";
    }
    const std::vector<WalkedRule> rules = {
        {L"C", L"(a+)+$b", 1, 1, L"N", L"1"},
        {L"C", L"(a|aa)*(a|b)*(.*)*c", 1, 1, L"N", L"2"},
        {L"C", L"((a{0,100}){0,100}){0,100}z", 1, 1, L"N", L"3"}, // too large
        {L"C", many, 1, 1, L"N", L"4"},                           // too
        {L"C", nested, 1, 1, L"N", L"5"},
        {L"C", L"[z-a]", 1, 1, L"N", L"6 %1"},
        {L"C", L"\\", 1, 1, L"N", L"7"},
        {L"C", L"([%2]+)(a+)", 1, 1, L"N", L"%1"}, // a gigabyte, if it were made
        {L"C", L"[%2]+a+", 1, 1, L"N", L"8"},
        {L"C", L"(a+)b", 1, 1, L"N", L"9"},
        {L"C", L"ok(.)", 1, 1, L"N", L"%1"},
    };
    native(rules);
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(neutral(many), "N 4"); // by its plain text
    EXPECT_EQ(neutral(many + L"b"), "N 9");
    EXPECT_EQ(neutral(L"[z-a]"), "N 6 %1");
    EXPECT_EQ(neutral(L"\\"), "N 7");
    EXPECT_EQ(neutral(twos + many), "N 8");
    EXPECT_EQ(neutral(L"ok!"), "N !");
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20));

    KorArray<KorExchangeRule> faulty;
    ASSERT_EQ(Native::getFaultyRules(faulty), 1);
    Texts keys;
    for (const KorExchangeRule& rule : faulty) {
        keys.push_back(std::to_string(rule.key));
        EXPECT_EQ(rule.table, L"QXT_Profile_Conversion");
        EXPECT_EQ(rule.expression, KorString(rules[static_cast<std::size_t>(rule.key - 1)].section));
        EXPECT_FALSE(rule.error.isEmpty());
    }
    EXPECT_EQ(keys, (Texts{"3", "4", "5", "6", "7"}));
}

TEST_F(SectionRulesTest, FamilyAndSourceComeFirst)
{
    for (const char* table : {"QXT_Profile_Conversion", "Profile_Exports_Conversion"})
        sql(configuration,
            {std::string("INSERT INTO ") + table +
             " VALUES (1, 'C', '.*', 2, 1, 'N', 'any', -1, -1, ''), "
             "(2, 'C', 'a', 2, 1, 'N', 'family', 7, -1, ''), "
             "(3, 'C', 'a', 2, 1, 'N', 'both', 7, 8, ''), (4, 'C', 'a', 1, 2, 'N', 'no', 7, 8, '')"});
    const struct {
        const wchar_t* section;
        int objectType, application, family, source;
        const char* answer;
    } cases[] = {{L"a", 1, 2, 7, 8, "both"}, {L"a", 1, 2, 7, -1, "family"}, {L"a", 1, 2, -1, -1, "any"},
                 {L"a", 1, 2, 8, 7, "any"},  {L"b", 1, 2, 7, 8, "any"},     {L"a", 2, 1, 7, 8, "no"},
                 {L"a", 2, 1, 7, 9, "no"},   {L"a", 2, 2, 7, 8, "before"}};
    for (const auto& [section, objectType, application, family, source, answer] : cases)
        for (const auto& ask : {Native::getQXTProfileForHalden, Exports::getExportProfileForHalden}) {
            KorString outClass, out = L"before";
            const int result = ask(L"C", section, objectType, application, family, source, outClass, out);
            EXPECT_EQ(result, out == L"before" ? 0 : 1);
            EXPECT_EQ(out.toUtf8(), answer) << family << " " << source;
        }
}

} // namespace
