#include "Database.h"
#include "Results.h"
#include "Workplace.h"

#include <korodbc/exchange/SectionConversions.h>

#include <memory>
#include <re2/re2.h>
#include <string>
#include <vector>

namespace {

using namespace bench;

constexpr int ruleCount = 5000;
constexpr int classCount = 100;
constexpr int questions = 200; // in one run

struct Question {
    std::string profileClass, section, answer; // no answer: empty
};

/// What is measured.
struct Kind {
    const char* name;
    const char* item;
    bool withClass; // the names' own one, not all
    bool grouped;   // nothing literal is at the beginning of the expressions
};

std::string expressionOf(const Kind& kind, const std::string& rule)
{
    return (kind.grouped ? "[S]ECTION" : "SECTION") + rule + "X(\\d+)X([\\d.]+)";
}
std::string classOf(int rule) { return "Class " + std::to_string(rule % classCount); }
std::string sectionOf(int rule) { return "SECTION" + std::to_string(rule) + "X20X3.5"; }

/// A table of rules for families of sizes, and names that are answered by rules all over it or by none.
struct Rules {
    Repository repository;
    std::vector<Question> questions;

    explicit Rules(const Kind& kind)
    {
        Database database((repository.folder() / "configuration.db").string());
        database.run("DELETE FROM QXT_Profile_Conversion");
        database.run(
            "INSERT INTO QXT_Profile_Conversion WITH RECURSIVE n(i) AS (VALUES (0) UNION ALL SELECT i + 1 "
            "FROM n WHERE i + 1 < " +
            std::to_string(ruleCount) + ") SELECT i + 1, 'Class ' || (i % " + std::to_string(classCount) + "), '" +
            expressionOf(kind, "' || i || '") + "', 1, 1, 'N', 'S' || i || ' %1 %2', -1, -1, '' FROM n");
        std::uint64_t state = 7;
        for (int i = 0; i < ::questions; ++i) {
            state = state * 6364136223846793005u + 1442695040888963407u;
            const int rule = static_cast<int>((state >> 33) % ruleCount);
            const bool none = i % 4 == 0;
            questions.push_back({kind.withClass ? classOf(rule) : "-", sectionOf(none ? rule + ruleCount : rule),
                                 none ? "" : "S" + std::to_string(rule) + " 20 3.5"});
        }
    }
};

/// The names through the library; how many answers are right.
class Library {
public:
    explicit Library(const Rules& rules)
    {
        for (const Question& one : rules.questions)
            m_asked.push_back({KorString::fromUtf8(one.profileClass), KorString::fromUtf8(one.section),
                               KorString::fromUtf8(one.answer)});
    }
    int ask() const
    {
        int right = 0;
        for (const Asked& one : m_asked) {
            KorString outClass, out;
            KorODBCQXT_Profile_Conversion::getQXTProfiles(one.profileClass, one.section, 1, 1, outClass, out);
            right += out == one.answer;
        }
        return right;
    }

private:
    struct Asked {
        KorString profileClass, section, answer;
    };
    std::vector<Asked> m_asked;
};

/// The same by a loop over compiled expressions.
class Plain {
public:
    explicit Plain(const Kind& kind)
    {
        for (int i = 0; i < ruleCount; ++i)
            m_rules.push_back({classOf(i), 1, 1, std::make_unique<RE2>(expressionOf(kind, std::to_string(i))), "N",
                               "S" + std::to_string(i) + " %1 %2"});
    }
    int ask(const std::vector<Question>& asked) const
    {
        int right = 0;
        for (const Question& question : asked) {
            std::string outClass, out;
            map(question, outClass, out);
            right += out == question.answer;
        }
        return right;
    }

private:
    struct Rule {
        std::string profileClass;
        int application, objectType;
        std::unique_ptr<RE2> expression;
        std::string answerClass, answer;
    };

    void map(const Question& question, std::string& outClass, std::string& out) const
    {
        for (const Rule& rule : m_rules) {
            if ((question.profileClass != "-" && rule.profileClass != question.profileClass) ||
                rule.application != 1 || rule.objectType != 1)
                continue;
            re2::StringPiece groups[3];
            if (!rule.expression->Match(question.section, 0, question.section.size(), RE2::ANCHOR_BOTH, groups, 3))
                continue;
            outClass = rule.answerClass;
            out = rule.answer;
            for (int i = 1; i < 3; ++i)
                out.replace(out.find("%" + std::to_string(i)), 2, std::string(groups[i].data(), groups[i].size()));
            return;
        }
    }

    std::vector<Rule> m_rules;
};

/// Both in turn, so that other jobs on the machine are in the way of both.
void mapNames(benchmark::State& state, const Kind& kind, const std::string& series)
{
    const Rules rules(kind);
    const Library library(rules);
    const Plain plain(kind);
    int ours = library.ask(), theirs = plain.ask(rules.questions); // compiles the expressions
    for (auto _ : state) {
        note(series + " plain", seconds([&] { theirs = plain.ask(rules.questions); }));
        note(state, series + " library", seconds([&] { ours = library.ask(); }));
        require(ours == questions && theirs == questions, "sections were mapped wrongly");
    }
}

} // namespace

void registerMappingBenchmarks()
{
    static constexpr Kind kinds[] = {
        {"all", "section mapped by 5,000 rules", false, false},
        {"grouped", "the same, expressions without a literal beginning", false, true},
        {"a class", "section mapped by the rules of its class among 5,000", true, false},
    };
    const int runs = bench::quick ? 5 : 21;
    for (const Kind& kind : kinds) {
        const std::string series = std::string("mapping ") + kind.name;
        const auto run = [&kind, series](benchmark::State& state) { mapNames(state, kind, series); };
        benchmark::RegisterBenchmark((std::string("mapping/") + kind.name).c_str(), run)
            ->UseManualTime()
            ->Iterations(runs)
            ->Unit(benchmark::kMillisecond);
        bench::compare(kind.item, series + " library", series + " plain", 1.5, questions, "a name");
    }
}
