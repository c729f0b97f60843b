#include "exchange/SectionRules.h"

namespace korodbc {
namespace {

constexpr long longestAnswer = 1000000;

/// Puts the groups into the answer, each into what the one before it left. False when it would get too long.
bool fill(KorString& answer, const KorArray<KorString>& groups)
{
    for (int i = 1; i < groups.length(); ++i) {
        const KorString placeholder = KorString::format(L"%%%d", i);
        long places = 0;
        for (int at = answer.find(placeholder); at >= 0; at = answer.find(placeholder, at + placeholder.length()))
            ++places;
        if (answer.length() + places * groups[i].length() > longestAnswer)
            return false;
        if (places > 0)
            answer = answer.replace(placeholder, groups[i]);
    }
    return true;
}

} // namespace

const KorRegExWrapper& SectionRules::Rule::compiled() const
{
    if (!isCompiled)
        expression.setRegularExpression(section);
    isCompiled = true;
    return expression;
}

SectionRules::SectionRules(const KorArray<StructQXT_Profile_Conversion>& rows)
    : m_table(KorString::fromUtf8(descriptionOf<StructQXT_Profile_Conversion>().table))
{
    m_rules.reserve(static_cast<std::size_t>(rows.length()));
    for (const StructQXT_Profile_Conversion& row : rows)
        add(row.application, row.objectType,
            {row.key, row.profileClass, row.section, row.family, row.source, row.qxtClass, row.qxtSection});
}

SectionRules::SectionRules(const KorArray<StructProfile_Exports_Conversion>& rows)
    : m_table(KorString::fromUtf8(descriptionOf<StructProfile_Exports_Conversion>().table))
{
    m_rules.reserve(static_cast<std::size_t>(rows.length()));
    for (const StructProfile_Exports_Conversion& row : rows)
        add(row.application, row.objectType,
            {row.key, row.qxtClass, row.qxtSection, row.family, row.source, row.exportClass, row.exportSection});
}

void SectionRules::add(int application, int objectType, Rule rule)
{
    m_candidates[{application, objectType}].push_back(m_rules.size());
    m_rules.push_back(std::move(rule));
}

KorExchangeRule SectionRules::shown(const Rule& rule, const KorString& answerClass, const KorString& answer) const
{
    return {m_table, rule.key, rule.section, rule.compiled().error(), answerClass, answer};
}

int SectionRules::map(const SectionQuestion& question, KorString& outClass, KorString& outSection,
                      KorExchangeRule* answering) const
{
    const auto candidates = m_candidates.find({question.application, question.objectType});
    if (candidates == m_candidates.end())
        return 0;
    const bool anyClass = question.profileClass.isEmpty() || question.profileClass == L"-";
    const KorRegExText text(question.section);
    KorArray<KorString> groups;
    for (const std::size_t at : candidates->second) {
        const Rule& rule = m_rules[at];
        if (!anyClass && !(rule.profileClass == question.profileClass))
            continue;
        if (question.familyAndSource && *question.familyAndSource != std::pair(rule.family, rule.source))
            continue;
        const bool matches = rule.compiled().match(text, groups);
        if (!matches && !rule.equals(question.section))
            continue;
        KorString answer = rule.answer;
        if (matches && !fill(answer, groups))
            continue;
        outClass = rule.answerClass;
        outSection = answer;
        if (answering != nullptr)
            *answering = shown(rule, outClass, outSection);
        return 1;
    }
    return 0;
}

KorArray<KorExchangeRule> SectionRules::faulty() const
{
    KorArray<KorExchangeRule> rules;
    for (const Rule& rule : m_rules)
        if (!rule.compiled().isValid())
            rules.append(shown(rule));
    return rules;
}

} // namespace korodbc
