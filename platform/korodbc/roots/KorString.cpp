#include <korodbc/roots/KorArray.h>
#include <korodbc/roots/KorString.h>

#include <algorithm>
#include <climits>
#include <new>
#include <string>

namespace {

constexpr std::wstring_view blanks = L" \t";
constexpr wchar_t replacementCharacter = 0xFFFD;

bool isCodePoint(wchar_t character)
{
    const auto value = static_cast<std::uint32_t>(character);
    return value < 0xD800 || (value > 0xDFFF && value <= 0x10FFFF);
}

/// Decodes the sequence at the start of `bytes` (not empty) and takes it off; of an invalid one it takes the
/// bytes that could have begun a valid one, at least one.
wchar_t decodeFirst(std::string_view& bytes)
{
    const auto lead = static_cast<unsigned char>(bytes.front());
    bytes.remove_prefix(1);
    if (lead < 0x80)
        return static_cast<wchar_t>(lead);
    if (lead < 0xC2 || lead > 0xF4)
        return replacementCharacter;

    const int following = lead < 0xE0 ? 1 : lead < 0xF0 ? 2 : 3;
    // The second byte's range keeps out overlong forms, surrogates and values above the last code point.
    unsigned lowest = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
    unsigned highest = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
    unsigned value = lead & (0x3FU >> following);
    for (int i = 0; i < following; ++i) {
        const unsigned byte = bytes.empty() ? 0U : static_cast<unsigned char>(bytes.front());
        if (byte < lowest || byte > highest)
            return replacementCharacter;
        value = (value << 6) | (byte & 0x3F);
        bytes.remove_prefix(1);
        lowest = 0x80;
        highest = 0xBF;
    }
    return static_cast<wchar_t>(value);
}

} // namespace

KorString::Buffer* KorString::allocate(std::size_t length, std::size_t capacity)
{
    if (length > INT_MAX - 1)
        throw std::bad_alloc();
    capacity = std::min<std::size_t>(capacity, INT_MAX - 1);
    void* storage = ::operator new(sizeof(Buffer) + (capacity + 1) * sizeof(wchar_t));
    auto* buffer =
        new (storage) Buffer{1, static_cast<std::uint32_t>(length), static_cast<std::uint32_t>(capacity), 0};
    buffer->text()[length] = L'\0';
    return buffer;
}

void KorString::destroy(Buffer* buffer) noexcept
{
    buffer->~Buffer();
    ::operator delete(buffer);
}

KorString::KorString(std::wstring_view text)
{
    if (text.empty())
        return;
    m_buffer = allocate(text.size(), text.size());
    text.copy(m_buffer->text(), text.size());
}

std::uint32_t KorString::hashOf(std::wstring_view text) noexcept
{
    std::uint64_t hash = 0x9E3779B97F4A7C15u ^ text.size();
    for (const wchar_t c : text)
        hash = (hash ^ static_cast<std::uint32_t>(c)) * 0xD6E8FEB86659FD93u;
    hash ^= hash >> 32;
    return static_cast<std::uint32_t>(hash) | 1u;
}

KorString KorString::join(std::wstring_view left, std::wstring_view right)
{
    KorString result;
    const std::size_t length = left.size() + right.size();
    if (length == 0)
        return result;
    result.m_buffer = allocate(length, length);
    left.copy(result.m_buffer->text(), left.size());
    right.copy(result.m_buffer->text() + left.size(), right.size());
    return result;
}

KorString& KorString::append(std::wstring_view text)
{
    if (text.empty())
        return *this;
    const std::size_t before = view().size();
    const std::size_t length = before + text.size();
    if (m_buffer != nullptr && length <= m_buffer->capacity &&
        m_buffer->references.load(std::memory_order_acquire) == 1) {
        text.copy(m_buffer->text() + before, text.size());
        m_buffer->text()[length] = L'\0';
        m_buffer->length = static_cast<std::uint32_t>(length);
        m_buffer->hash.store(0, std::memory_order_relaxed);
        return *this;
    }
    // The text may be a part of this one, so the old characters live until the new ones are complete.
    Buffer* grown = allocate(length, before == 0 ? length : std::max(length, before + before / 2));
    view().copy(grown->text(), before);
    text.copy(grown->text() + before, text.size());
    release(std::exchange(m_buffer, grown));
    return *this;
}

KorString KorString::fromUtf8(std::string_view text)
{
    KorString result;
    if (text.empty())
        return result;
    unsigned char seen = 0;
    for (const char byte : text)
        seen |= static_cast<unsigned char>(byte);
    if (seen < 0x80) {
        result.m_buffer = allocate(text.size(), text.size());
        std::copy(text.begin(), text.end(), result.m_buffer->text());
        return result;
    }
    std::size_t length = 0;
    for (std::string_view rest = text; !rest.empty(); ++length)
        decodeFirst(rest);
    result.m_buffer = allocate(length, length);
    wchar_t* target = result.m_buffer->text();
    for (std::string_view rest = text; !rest.empty();)
        *target++ = decodeFirst(rest);
    return result;
}

std::string KorString::toUtf8() const
{
    std::string text;
    appendUtf8To(text);
    return text;
}

void KorString::appendUtf8To(std::string& text) const
{
    std::uint32_t seen = 0;
    for (const wchar_t character : view())
        seen |= static_cast<std::uint32_t>(character);
    if (seen < 0x80) {
        const std::size_t before = text.size();
        text.resize(before + view().size());
        std::transform(view().begin(), view().end(), text.begin() + static_cast<std::ptrdiff_t>(before),
                       [](wchar_t character) { return static_cast<char>(character); });
        return;
    }
    for (const wchar_t character : view()) {
        const auto value = static_cast<std::uint32_t>(isCodePoint(character) ? character : replacementCharacter);
        const auto put = [&text](std::uint32_t byte) { text.push_back(static_cast<char>(byte)); };
        if (value < 0x80) {
            put(value);
            continue;
        }
        if (value < 0x800)
            put(0xC0 | (value >> 6));
        else {
            if (value < 0x10000)
                put(0xE0 | (value >> 12));
            else {
                put(0xF0 | (value >> 18));
                put(0x80 | ((value >> 12) & 0x3F));
            }
            put(0x80 | ((value >> 6) & 0x3F));
        }
        put(0x80 | (value & 0x3F));
    }
}

int KorString::find(std::wstring_view what, int from) const noexcept
{
    const std::size_t position = view().find(what, static_cast<std::size_t>(std::max(from, 0)));
    return position == std::wstring_view::npos ? -1 : static_cast<int>(position);
}

KorString KorString::replace(std::wstring_view what, std::wstring_view with) const
{
    const std::wstring_view text = view();
    std::size_t position = what.empty() ? std::wstring_view::npos : text.find(what);
    if (position == std::wstring_view::npos)
        return *this;
    std::wstring result;
    result.reserve(text.size() + with.size());
    std::size_t done = 0;
    for (; position != std::wstring_view::npos; position = text.find(what, done)) {
        result.append(text, done, position - done).append(with);
        done = position + what.size();
    }
    result.append(text, done);
    return KorString(std::wstring_view(result));
}

KorString KorString::left(int count) const { return mid(0, std::max(count, 0)); }

KorString KorString::right(int count) const { return mid(length() - std::clamp(count, 0, length())); }

KorString KorString::mid(int from, int count) const
{
    from = std::clamp(from, 0, length());
    const int rest = length() - from;
    count = count < 0 ? rest : std::min(count, rest);
    if (count == length())
        return *this;
    return KorString(view().substr(static_cast<std::size_t>(from), static_cast<std::size_t>(count)));
}

KorString KorString::trimmed() const { return trimmedLeft().trimmedRight(); }

KorString KorString::trimmedLeft() const
{
    const std::size_t first = view().find_first_not_of(blanks);
    return first == std::wstring_view::npos ? KorString() : mid(static_cast<int>(first));
}

KorString KorString::trimmedRight() const { return left(static_cast<int>(view().find_last_not_of(blanks) + 1)); }

long KorString::toInteger() const noexcept
{
    std::wstring_view text = view();
    text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size()));
    const bool negative = text.starts_with(L'-');
    if (negative || text.starts_with(L'+'))
        text.remove_prefix(1);
    // Counting downwards reaches both limits.
    long value = 0;
    for (const wchar_t character : text) {
        if (character < L'0' || character > L'9')
            break;
        const long digit = character - L'0';
        if (value < (LONG_MIN + digit) / 10)
            return negative ? LONG_MIN : LONG_MAX;
        value = value * 10 - digit;
    }
    if (negative)
        return value;
    return value == LONG_MIN ? LONG_MAX : -value;
}

int KorString::getTokens(const KorString& text, KorArray<KorString>& tokens, const KorString& separators)
{
    KorArray<KorString> found;
    const std::wstring_view all = text.view();
    std::size_t first = 0;
    while ((first = all.find_first_not_of(separators.view(), first)) != std::wstring_view::npos) {
        const std::size_t last = std::min(all.find_first_of(separators.view(), first), all.size());
        found.append(KorString(all.substr(first, last - first)));
        first = last;
    }
    tokens = std::move(found);
    return tokens.length();
}
