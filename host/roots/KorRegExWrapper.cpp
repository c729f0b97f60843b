#include "roots/KorRegExWrapper.h"

#include <algorithm>
#include <cstdint>
#include <re2/re2.h>
#include <vector>

namespace {

bool startsCharacter(char byte) { return (static_cast<unsigned char>(byte) & 0xC0) != 0x80; }

int countCharacters(std::string_view utf8)
{
    return static_cast<int>(std::count_if(utf8.begin(), utf8.end(), &startsCharacter));
}

std::size_t byteOffset(std::string_view utf8, int characters)
{
    std::size_t offset = 0;
    for (; offset < utf8.size(); ++offset)
        if (startsCharacter(utf8[offset]) && characters-- == 0)
            break;
    return offset;
}

/// For the program and the states of one expression. Tables hold thousands of them, and each is written by a user.
constexpr std::int64_t mostBytes = 256 * 1024;

RE2::Options options(bool caseSensitive)
{
    RE2::Options result;
    result.set_case_sensitive(caseSensitive);
    result.set_log_errors(false);
    result.set_max_mem(mostBytes);
    return result;
}

} // namespace

struct KorRegExWrapper::Engine {
    Engine(const KorString& pattern, bool caseSensitive) : expression(pattern.toUtf8(), options(caseSensitive)) {}

    bool find(const KorString& text, int from, RE2::Anchor anchor, int& position, int& length) const
    {
        if (!expression.ok() || from < 0 || from > text.length())
            return false;
        const std::string utf8 = text.toUtf8();
        re2::StringPiece found;
        if (!expression.Match(utf8, byteOffset(utf8, from), utf8.size(), anchor, &found, 1))
            return false;
        const auto first = static_cast<std::size_t>(found.data() - utf8.data());
        position = countCharacters(std::string_view(utf8).substr(0, first));
        length = countCharacters(std::string_view(utf8).substr(first, found.size()));
        return true;
    }

    RE2 expression;
};

KorRegExWrapper::KorRegExWrapper() = default;
KorRegExWrapper::~KorRegExWrapper() = default;
KorRegExWrapper::KorRegExWrapper(KorRegExWrapper&&) noexcept = default;
KorRegExWrapper& KorRegExWrapper::operator=(KorRegExWrapper&&) noexcept = default;

KorRegExWrapper::KorRegExWrapper(const KorString& pattern, bool caseSensitive)
{
    setPattern(pattern, caseSensitive);
}

bool KorRegExWrapper::setPattern(const KorString& pattern, bool caseSensitive)
{
    m_engine = std::make_unique<Engine>(pattern, caseSensitive);
    return isValid();
}

bool KorRegExWrapper::isValid() const { return m_engine != nullptr && m_engine->expression.ok(); }

KorString KorRegExWrapper::error() const
{
    return isValid() || m_engine == nullptr ? KorString() : KorString::fromUtf8(m_engine->expression.error());
}

bool KorRegExWrapper::match(const KorRegExText& text) const
{
    const std::string& utf8 = text.utf8();
    return isValid() && m_engine->expression.Match(utf8, 0, utf8.size(), RE2::ANCHOR_BOTH, nullptr, 0);
}

bool KorRegExWrapper::match(const KorRegExText& text, KorArray<KorString>& groups) const
{
    if (!match(text)) // most do not, and that is told faster without groups
        return false;
    const std::string& utf8 = text.utf8();
    const int count = m_engine->expression.NumberOfCapturingGroups() + 1;
    std::vector<re2::StringPiece> found(static_cast<std::size_t>(count));
    if (!m_engine->expression.Match(utf8, 0, utf8.size(), RE2::ANCHOR_BOTH, found.data(), count))
        return false;
    groups.removeAll();
    for (const re2::StringPiece& group : found)
        groups.append(KorString::fromUtf8(std::string_view(group.data(), group.size())));
    return true;
}

bool KorRegExWrapper::search(const KorString& text) const
{
    int position = 0;
    int length = 0;
    return search(text, 0, position, length);
}

bool KorRegExWrapper::search(const KorString& text, int from, int& position, int& length) const
{
    return m_engine != nullptr && m_engine->find(text, from, RE2::UNANCHORED, position, length);
}
