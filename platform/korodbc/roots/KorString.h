#pragma once

#include <atomic>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

class KorFormatArgument;

template <class T>
class KorArray;

/// Wide text, one element per code point. A copy shares the characters with its original and costs a counter;
/// an empty text owns nothing.
class KorString {
public:
    KorString() noexcept = default;
    /// nullptr gives an empty text.
    KorString(const wchar_t* text) : KorString(text != nullptr ? std::wstring_view(text) : std::wstring_view()) {}
    KorString(std::wstring_view text);
    KorString(const KorString& other) noexcept : m_buffer(other.m_buffer)
    {
        if (m_buffer != nullptr)
            m_buffer->references.fetch_add(1, std::memory_order_relaxed);
    }
    KorString(KorString&& other) noexcept : m_buffer(std::exchange(other.m_buffer, nullptr)) {}
    constexpr ~KorString()
    {
        if (m_buffer != nullptr)
            release(m_buffer);
    }

    KorString& operator=(const KorString& other) noexcept
    {
        KorString(other).swap(*this);
        return *this;
    }
    KorString& operator=(KorString&& other) noexcept
    {
        KorString(std::move(other)).swap(*this);
        return *this;
    }
    void swap(KorString& other) noexcept { std::swap(m_buffer, other.m_buffer); }

    /// Decodes UTF-8; each invalid sequence becomes U+FFFD, zero characters are kept.
    static KorString fromUtf8(std::string_view text);
    /// Encodes as UTF-8; values that are no code point become U+FFFD.
    std::string toUtf8() const;
    void appendUtf8To(std::string& text) const;

    std::wstring_view view() const noexcept
    {
        return m_buffer != nullptr ? std::wstring_view(m_buffer->text(), m_buffer->length) : std::wstring_view();
    }
    operator std::wstring_view() const noexcept { return view(); }
    /// The characters with a terminating zero; valid until this text changes.
    const wchar_t* c_str() const noexcept { return m_buffer != nullptr ? m_buffer->text() : L""; }
    /// Number of characters.
    int length() const noexcept { return m_buffer != nullptr ? static_cast<int>(m_buffer->length) : 0; }
    bool isEmpty() const noexcept { return m_buffer == nullptr; }
    /// The character at an index, 0 outside the text.
    wchar_t getAt(int index) const noexcept
    {
        return index >= 0 && index < length() ? m_buffer->text()[index] : L'\0';
    }

    KorString& append(std::wstring_view text);
    KorString& operator+=(std::wstring_view text) { return append(text); }
    KorString& operator+=(wchar_t character) { return append(std::wstring_view(&character, 1)); }
    friend KorString operator+(const KorString& left, const KorString& right)
    {
        return join(left.view(), right.view());
    }
    friend KorString operator+(const KorString& left, std::wstring_view right) { return join(left.view(), right); }
    friend KorString operator+(std::wstring_view left, const KorString& right) { return join(left, right.view()); }
    friend KorString operator+(const KorString& left, const wchar_t* right)
    {
        return join(left.view(), seen(right));
    }
    friend KorString operator+(const wchar_t* left, const KorString& right)
    {
        return join(seen(left), right.view());
    }

    friend bool operator==(const KorString& left, const KorString& right) noexcept
    {
        return left.m_buffer == right.m_buffer || left.view() == right.view();
    }
    friend bool operator==(const KorString& left, std::wstring_view right) noexcept
    {
        return left.view() == right;
    }
    friend bool operator==(const KorString& left, const wchar_t* right) noexcept
    {
        return left.view() == seen(right);
    }
    friend std::strong_ordering operator<=>(const KorString& left, const KorString& right) noexcept
    {
        return left.view() <=> right.view();
    }
    friend std::strong_ordering operator<=>(const KorString& left, std::wstring_view right) noexcept
    {
        return left.view() <=> right;
    }
    friend std::strong_ordering operator<=>(const KorString& left, const wchar_t* right) noexcept
    {
        return left.view() <=> seen(right);
    }

    /// Negative, zero or positive, by code points.
    int compare(const KorString& other) const noexcept { return view().compare(other.view()); }
    /// As `compare`, over the texts' full Unicode case folding, which is the same in every locale.
    int compareNoCase(const KorString& other) const;
    static int strCompareNoCase(const KorString& left, const KorString& right)
    {
        return left.compareNoCase(right);
    }
    /// The case-folded text: equal for exactly those texts that `compareNoCase` finds equal.
    KorString foldedCase() const;

    /// Index of the first occurrence at or after `from`, -1 when there is none.
    int find(std::wstring_view what, int from = 0) const noexcept;
    bool startsWith(std::wstring_view prefix) const noexcept { return view().starts_with(prefix); }
    bool endsWith(std::wstring_view suffix) const noexcept { return view().ends_with(suffix); }
    /// A text with every occurrence of `what` replaced; an empty `what` replaces nothing.
    KorString replace(std::wstring_view what, std::wstring_view with) const;

    /// Parts of the text; lengths and positions outside it are cut to it, and a count of -1 reaches to the
    /// end.
    KorString left(int count) const;
    KorString right(int count) const;
    KorString mid(int from, int count = -1) const;

    /// The text without the blanks and tabs at its ends.
    KorString trimmed() const;
    KorString trimmedLeft() const;
    KorString trimmedRight() const;

    /// The decimal number that the text begins with (after blanks and tabs), 0 when it begins with none;
    /// numbers out of range give the nearest limit.
    long toInteger() const noexcept;

    /// Splits `text` at every character of `separators` into `tokens`, leaving empty pieces out.
    /// Returns the number of tokens. Include KorArray.h to call it.
    static int getTokens(const KorString& text, KorArray<KorString>& tokens, const KorString& separators);

    /// Text from a pattern with %d %i %u %f %s %c %% (length letters are accepted and mean nothing), the
    /// flags
    /// '-' and '0', width and precision. Numbers come out alike in every locale, a missing argument as
    /// nothing. Arguments are converted to what the pattern asks for: text under %d gives the number it
    /// begins with.
    template <class... Args>
    static KorString format(std::wstring_view pattern, const Args&... args);
    static KorString formatArguments(std::wstring_view pattern, std::span<const KorFormatArgument> arguments);

    /// Hash of the characters; kept with them after the first call.
    std::size_t hash() const noexcept
    {
        if (m_buffer == nullptr)
            return hashOf({});
        std::uint32_t known = m_buffer->hash.load(std::memory_order_relaxed);
        if (known == 0) {
            known = hashOf(view());
            m_buffer->hash.store(known, std::memory_order_relaxed);
        }
        return known;
    }
    /// The same hash of characters that no KorString holds; never 0.
    static std::uint32_t hashOf(std::wstring_view text) noexcept;

private:
    struct Buffer {
        std::atomic<std::uint32_t> references;
        std::uint32_t length;
        std::uint32_t capacity;
        std::atomic<std::uint32_t> hash; // 0: not computed

        wchar_t* text() noexcept { return reinterpret_cast<wchar_t*>(this + 1); }
    };

    static std::wstring_view seen(const wchar_t* text) noexcept
    {
        return text != nullptr ? std::wstring_view(text) : std::wstring_view();
    }
    static KorString join(std::wstring_view left, std::wstring_view right);
    static Buffer* allocate(std::size_t length, std::size_t capacity);
    static void destroy(Buffer* buffer) noexcept;
    static void release(Buffer* buffer) noexcept
    {
        if (buffer != nullptr && buffer->references.fetch_sub(1, std::memory_order_acq_rel) == 1)
            destroy(buffer);
    }

    Buffer* m_buffer = nullptr;
};

/// One argument of `KorString::format`; it refers to texts and does not own them.
class KorFormatArgument {
public:
    enum class Kind : std::uint8_t { kSigned, kUnsigned, kReal, kText };

    template <class T>
    KorFormatArgument(const T& value) noexcept
    {
        if constexpr (std::is_floating_point_v<T>) {
            m_kind = Kind::kReal;
            m_real = static_cast<double>(value);
        } else if constexpr (std::is_enum_v<T>)
            setInteger(static_cast<std::underlying_type_t<T>>(value));
        else if constexpr (std::is_integral_v<T>)
            setInteger(value);
        else if constexpr (std::is_convertible_v<const T&, const wchar_t*>) {
            const wchar_t* characters = value;
            setText(characters != nullptr ? std::wstring_view(characters) : std::wstring_view());
        } else if constexpr (std::is_convertible_v<const T&, std::wstring_view>)
            setText(static_cast<std::wstring_view>(value));
        else {
            static_assert(std::is_convertible_v<const T&, long>, "only numbers and wide texts can be formatted");
            setInteger(static_cast<long>(value));
        }
    }

    Kind kind() const noexcept { return m_kind; }
    /// Width of the integer type that was passed, in bits.
    int bits() const noexcept { return m_bits; }
    std::int64_t signedValue() const noexcept { return m_signed; }
    std::uint64_t unsignedValue() const noexcept { return m_unsigned; }
    double realValue() const noexcept { return m_real; }
    std::wstring_view textValue() const noexcept { return {m_text.characters, m_text.length}; }

private:
    template <class T>
    void setInteger(T value) noexcept
    {
        m_bits = static_cast<std::uint8_t>(sizeof(T) * 8);
        if constexpr (std::is_signed_v<T>) {
            m_kind = Kind::kSigned;
            m_signed = value;
        } else {
            m_kind = Kind::kUnsigned;
            m_unsigned = value;
        }
    }
    void setText(std::wstring_view text) noexcept
    {
        m_kind = Kind::kText;
        m_text = {text.data(), text.size()};
    }

    struct Text {
        const wchar_t* characters;
        std::size_t length;
    };
    union {
        std::int64_t m_signed;
        std::uint64_t m_unsigned;
        double m_real;
        Text m_text;
    };
    Kind m_kind = Kind::kSigned;
    std::uint8_t m_bits = 0;
};

template <class... Args>
KorString KorString::format(std::wstring_view pattern, const Args&... args)
{
    if constexpr (sizeof...(Args) == 0)
        return formatArguments(pattern, {});
    else {
        const KorFormatArgument arguments[] = {KorFormatArgument(args)...};
        return formatArguments(pattern, arguments);
    }
}

template <>
struct std::hash<KorString> {
    std::size_t operator()(const KorString& text) const noexcept { return text.hash(); }
};

/// Hash for look-ups by view in containers keyed by text; pair it with `std::equal_to<>`.
struct KorStringHash {
    using is_transparent = void;

    std::size_t operator()(std::wstring_view text) const noexcept { return KorString::hashOf(text); }
};
