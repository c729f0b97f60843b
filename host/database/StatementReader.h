#pragma once

#include "database/StatementPattern.h"
#include "engine/Value.h"

#include <string>
#include <string_view>
#include <vector>

namespace korodbc::host {

/// Reads the few shapes of text whose values can be taken out without changing what the text means:
///   INSERT INTO t (columns) VALUES (values), ...    UPDATE t SET column=value, ... WHERE condition
///   DELETE FROM t WHERE condition
/// where a condition compares columns with values, joined by AND, OR and brackets. In any other place a number or
/// a text may be more than a value (a column to sort by, the length of a type), so every other text is refused.
/// What is no value goes into the pattern as it stands.
class StatementReader {
public:
    /// Values are literals; they are put into `values`.
    StatementReader(std::wstring_view text, std::string& pattern, std::vector<Value>& values);
    /// Values are conversions: %ld, %lf, '%s'; what they become is put into `kinds`. Literals stay in the pattern.
    StatementReader(std::wstring_view text, std::string& pattern, std::vector<StatementPattern::Kind>& kinds);

    /// True when the whole text is one such statement; pattern and values mean nothing otherwise.
    bool readStatement();
    /// The same for a condition alone, and for a name.
    bool readCondition();
    bool readName();

private:
    bool insertion();
    bool update();
    bool deletion();
    bool list(bool (StatementReader::*element)());
    bool row();
    bool assignment();
    bool where();
    bool condition();
    bool comparison();
    bool atEnd();
    bool isWhole();

    bool keyword(std::string_view word);
    bool symbol(std::string_view sign);
    bool name();
    bool plainName();
    bool delimitedName(wchar_t closing);
    bool value();
    bool text();
    bool number();
    bool conversion(StatementPattern::Kind kind, std::size_t end);

    wchar_t at(std::size_t place) const { return place < m_text.size() ? m_text[place] : L'\0'; }
    void skipBlanks();
    void copyTo(std::size_t end);
    bool take(Value literal, std::size_t end);

    std::wstring_view m_text;
    std::string& m_pattern;
    std::vector<Value>* m_values = nullptr;
    std::vector<StatementPattern::Kind>* m_kinds = nullptr;
    std::size_t m_at = 0;
    int m_depth = 0;
    bool m_refused = false;
};

/// Splits the literals off an INSERT, UPDATE or DELETE, so that statements that differ in their values only are
/// prepared once. Returns false when the text has to run as it is: unless it is one of the shapes that
/// StatementReader knows, where a literal is nothing but its value (a real the nearest double).
bool splitLiterals(std::wstring_view sql, std::string& pattern, std::vector<Value>& values);
/// The same for the condition of a look-up, without the word WHERE.
bool splitCondition(std::wstring_view condition, std::string& pattern, std::vector<Value>& values);

} // namespace korodbc::host
