#include <korodbc/roots/KorRegExWrapper.h>

#include <algorithm>
#include <cstdint>
#include <re2/re2.h>
#include <string_view>
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
constexpr std::int64_t mostBytes = std::int64_t{256} * 1024;
/// What is found for each group is carried along at every character: thousands of them would take minutes.
constexpr int mostGroups = 99;

RE2::Options options(bool caseSensitive)
{
    RE2::Options result;
    result.set_case_sensitive(caseSensitive);
    result.set_log_errors(false);
    result.set_max_mem(mostBytes);
    return result;
}

/// The characters that every whole match begins with, as far as the pattern tells at a glance.
std::string literalBeginning(const std::string& pattern)
{
    const auto isPlain = [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == ' ';
    };
    if (pattern.find('|') != std::string::npos)
        return {};
    auto end = std::find_if_not(pattern.begin(), pattern.end(), isPlain);
    constexpr std::string_view repetitions = "*+?{";
    if (end != pattern.end() && end != pattern.begin() && repetitions.find(*end) != std::string_view::npos)
        --end;
    return {pattern.begin(), end};
}

} // namespace

struct KorRegExWrapper::Engine {
    Engine(const KorString& pattern, bool caseSensitive)
        : expression(pattern.toUtf8(), options(caseSensitive)), groups(expression.NumberOfCapturingGroups() + 1),
          beginning(caseSensitive ? literalBeginning(expression.pattern()) : std::string())
    {
    }

    bool isValid() const { return expression.ok() && groups - 1 <= mostGroups; }
    std::string error() const
    {
        return expression.ok() ? "more than " + std::to_string(mostGroups) + " groups" : expression.error();
    }

    bool matchWhole(const std::string& utf8, re2::StringPiece* found, int count) const
    {
        return utf8.starts_with(beginning) && isValid() &&
               expression.Match(utf8, 0, utf8.size(), RE2::ANCHOR_BOTH, found, count);
    }

    bool find(const KorString& text, int from, RE2::Anchor anchor, int& position, int& length) const
    {
        if (!isValid() || from < 0 || from > text.length())
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
    int groups;            // the whole match included
    std::string beginning; // of every whole match
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

bool KorRegExWrapper::isValid() const { return m_engine != nullptr && m_engine->isValid(); }

KorString KorRegExWrapper::error() const
{
    return isValid() || m_engine == nullptr ? KorString() : KorString::fromUtf8(m_engine->error());
}

bool KorRegExWrapper::match(const KorRegExText& text) const
{
    return m_engine != nullptr && m_engine->matchWhole(text.utf8(), nullptr, 0);
}

bool KorRegExWrapper::match(const KorRegExText& text, KorArray<KorString>& groups) const
{
    constexpr int usualGroups = 5;
    if (!isValid() || !text.utf8().starts_with(m_engine->beginning))
        return false;
    // asked for at once: the engine tells a short text that does not match sooner so
    const int count = m_engine->groups;
    re2::StringPiece usual[usualGroups];
    std::vector<re2::StringPiece> many(static_cast<std::size_t>(count > usualGroups ? count : 0));
    re2::StringPiece* const found = many.empty() ? usual : many.data();
    if (!m_engine->matchWhole(text.utf8(), found, count))
        return false;
    groups.removeAll();
    for (int i = 0; i < count; ++i)
        groups.append(KorString::fromUtf8(std::string_view(found[i].data(), found[i].size())));
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
