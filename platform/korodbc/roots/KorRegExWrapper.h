#pragma once

#include <korodbc/roots/KorArray.h>
#include <korodbc/roots/KorString.h>

#include <memory>
#include <string>

/// A text that many expressions are to be matched against; it is made ready for that once.
class KorRegExText {
public:
    explicit KorRegExText(const KorString& text) : m_utf8(text.toUtf8()) {}
    const std::string& utf8() const { return m_utf8; }

private:
    std::string m_utf8;
};

/// A regular expression. Its running time grows linearly with the text, whatever the pattern, and its memory is
/// limited: a pattern that needs more does not compile. There are groups, alternatives, classes, counted and lazy
/// repetition and "(?i)"; no references back to a group and no looking around.
class KorRegExWrapper {
public:
    KorRegExWrapper();
    /// Compiles a pattern; ask `isValid` for the outcome.
    explicit KorRegExWrapper(const KorString& pattern, bool caseSensitive = true);
    ~KorRegExWrapper();
    KorRegExWrapper(KorRegExWrapper&&) noexcept;
    KorRegExWrapper& operator=(KorRegExWrapper&&) noexcept;

    /// Compiles a pattern. A faulty one gives false and leaves an expression that matches nothing.
    bool setPattern(const KorString& pattern, bool caseSensitive = true);
    /// The same, with regard to case.
    bool setRegularExpression(const KorString& expression) { return setPattern(expression); }
    bool isValid() const;
    /// Why the pattern does not compile, in one line; empty when it does.
    KorString error() const;

    /// Whether the whole text matches.
    bool match(const KorString& text) const { return match(KorRegExText(text)); }
    bool match(const KorRegExText& text) const;
    /// The same; `groups` becomes the texts of the groups, 0 being the whole match, and stays as it was without
    /// one. A group that took no part is empty.
    bool match(const KorString& text, KorArray<KorString>& groups) const
    {
        return match(KorRegExText(text), groups);
    }
    bool match(const KorRegExText& text, KorArray<KorString>& groups) const;
    /// Whether a part of the text matches.
    bool search(const KorString& text) const;
    /// Finds the first match that starts at or after `from`. `position` and `length` count characters and
    /// stay as they were when there is none.
    bool search(const KorString& text, int from, int& position, int& length) const;

private:
    struct Engine;
    std::unique_ptr<Engine> m_engine;
};
