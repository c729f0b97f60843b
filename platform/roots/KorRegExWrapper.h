#pragma once

#include "roots/KorString.h"

#include <memory>

/// A regular expression. Its running time grows linearly with the text, whatever the pattern.
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
    bool isValid() const;

    /// Whether the whole text matches.
    bool match(const KorString& text) const;
    /// Whether a part of the text matches.
    bool search(const KorString& text) const;
    /// Finds the first match that starts at or after `from`. `position` and `length` count characters and
    /// stay as they were when there is none.
    bool search(const KorString& text, int from, int& position, int& length) const;

private:
    struct Engine;
    std::unique_ptr<Engine> m_engine;
};
