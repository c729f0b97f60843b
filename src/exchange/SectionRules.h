#pragma once

#include <korodbc/exchange/SectionConversions.h>
#include <korodbc/roots/KorRegExWrapper.h>

#include <map>
#include <optional>
#include <utility>
#include <vector>

namespace korodbc {

/// What the rules of a table are asked.
struct SectionQuestion {
    KorString profileClass, section;
    int application, objectType;
    std::optional<std::pair<int, int>> familyAndSource = {}; // only rules of these
};

/// The rows of a conversion table as rules: those of each application and object type in table order, with their
/// expressions, which are compiled when they are first tried.
class SectionRules {
public:
    explicit SectionRules(const KorArray<StructQXT_Profile_Conversion>& rows);
    explicit SectionRules(const KorArray<StructProfile_Exports_Conversion>& rows);

    /// The answer of the first rule that has one.
    int map(const SectionQuestion& question, KorString& outClass, KorString& outSection,
            KorExchangeRule* answering) const;
    /// The rules whose expressions do not compile.
    KorArray<KorExchangeRule> faulty() const;

private:
    struct Rule {
        int key;
        KorString profileClass, section;
        int family, source;
        KorString answerClass, answer;
        int length = section.length();
        mutable bool isCompiled = false;
        mutable KorRegExWrapper expression = {};

        const KorRegExWrapper& compiled() const;
        /// True for the plain name of the section.
        bool equals(const KorString& name) const { return length == name.length() && section == name; }
    };
    KorExchangeRule shown(const Rule& rule, const KorString& answerClass = {}, const KorString& answer = {}) const;
    void add(int application, int objectType, Rule rule);

    KorString m_table;
    std::vector<Rule> m_rules;                                            // in table order
    std::map<std::pair<int, int>, std::vector<std::size_t>> m_candidates; // by application and object type
};

} // namespace korodbc
