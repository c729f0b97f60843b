#pragma once

#include "roots/KorString.h"

#include <optional>
#include <regex>
#include <string>
#include <vector>

/// A row of a table of rules.
struct WalkedRule {
    std::wstring profileClass, section;
    int application, objectType;
    std::wstring answerClass, answer;
};

/// The answer of the rows to a question, found row by row with another engine for expressions.
inline const WalkedRule* walk(const std::vector<WalkedRule>& rules, const std::wstring& profileClass,
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
