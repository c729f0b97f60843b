#include <korodbc/roots/KorString.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cwchar>
#include <limits>

namespace {

constexpr int widthLimit = 4096;
constexpr int realPrecisionLimit = 1100; // no double has more decimals than that

/// Collects the result, in a fixed buffer as long as that suffices.
class Output {
public:
    void put(wchar_t character)
    {
        if (m_used == fixedSize)
            flush();
        m_fixed[m_used++] = character;
    }
    void put(std::wstring_view text)
    {
        if (text.size() > fixedSize - m_used) {
            flush();
            if (text.size() > fixedSize) {
                m_flushed.append(text);
                return;
            }
        }
        if (!text.empty())
            std::wmemcpy(m_fixed + m_used, text.data(), text.size());
        m_used += text.size();
    }
    void putAscii(std::string_view text)
    {
        for (const char character : text)
            put(static_cast<wchar_t>(character));
    }
    void fill(wchar_t character, long count)
    {
        for (; count > 0; --count)
            put(character);
    }
    KorString take()
    {
        if (m_flushed.isEmpty())
            return KorString(std::wstring_view(m_fixed, m_used));
        flush();
        return std::move(m_flushed);
    }

private:
    void flush()
    {
        m_flushed.append(std::wstring_view(m_fixed, m_used));
        m_used = 0;
    }

    static constexpr std::size_t fixedSize = 512;
    wchar_t m_fixed[fixedSize];
    std::size_t m_used = 0;
    KorString m_flushed;
};

struct Conversion {
    bool leftAligned = false;
    bool zeroFilled = false;
    int width = 0;
    int precision = -1;
};

using Kind = KorFormatArgument::Kind;

long long clampToInteger(double value)
{
    constexpr double limit = 9223372036854775808.0;
    if (std::isnan(value))
        return 0;
    if (value >= limit)
        return std::numeric_limits<long long>::max();
    return value < -limit ? std::numeric_limits<long long>::min() : static_cast<long long>(value);
}

double toReal(const KorFormatArgument& argument)
{
    switch (argument.kind()) {
    case Kind::kSigned:
        return static_cast<double>(argument.signedValue());
    case Kind::kUnsigned:
        return static_cast<double>(argument.unsignedValue());
    case Kind::kReal:
        return argument.realValue();
    case Kind::kText:
        break;
    }
    return static_cast<double>(KorString(argument.textValue()).toInteger());
}

void putText(Output& output, const Conversion& conversion, std::wstring_view text)
{
    if (conversion.precision >= 0)
        text = text.substr(0, static_cast<std::size_t>(conversion.precision));
    const long blanks = conversion.width - static_cast<long>(text.size());
    if (!conversion.leftAligned)
        output.fill(L' ', blanks);
    output.put(text);
    if (conversion.leftAligned)
        output.fill(L' ', blanks);
}

/// `zeros` stand between the sign and the digits; zero filling adds to them unless `fillable` forbids it.
void putNumber(Output& output, const Conversion& conversion, bool negative, long zeros, std::string_view digits,
               bool fillable)
{
    long blanks = conversion.width - (negative ? 1 : 0) - zeros - static_cast<long>(digits.size());
    if (conversion.zeroFilled && fillable && !conversion.leftAligned && blanks > 0)
        zeros += std::exchange(blanks, 0);
    if (!conversion.leftAligned)
        output.fill(L' ', blanks);
    if (negative)
        output.put(L'-');
    output.fill(L'0', zeros);
    output.putAscii(digits);
    if (conversion.leftAligned)
        output.fill(L' ', blanks);
}

void putInteger(Output& output, const Conversion& conversion, const KorFormatArgument& argument, bool asUnsigned)
{
    std::int64_t value = 0;
    std::uint64_t magnitude = 0;
    switch (argument.kind()) {
    case Kind::kSigned:
        value = argument.signedValue();
        break;
    case Kind::kUnsigned:
        magnitude = argument.unsignedValue();
        break;
    case Kind::kReal:
        value = clampToInteger(argument.realValue());
        break;
    case Kind::kText:
        value = KorString(argument.textValue()).toInteger();
        break;
    }
    if (value != 0)
        magnitude = static_cast<std::uint64_t>(value);
    bool negative = value < 0;
    if (negative && asUnsigned) {
        negative = false;
        if (argument.kind() == Kind::kSigned && argument.bits() <= 32)
            magnitude &= 0xFFFFFFFFU;
    } else if (negative)
        magnitude = 0 - magnitude;

    char digits[24];
    const char* end = digits;
    if (magnitude != 0 || conversion.precision != 0)
        end = std::to_chars(digits, digits + sizeof digits, magnitude).ptr;
    const long zeros = std::max<long>(conversion.precision - (end - digits), 0);
    putNumber(output, conversion, negative, zeros, {digits, static_cast<std::size_t>(end - digits)},
              conversion.precision < 0);
}

void putReal(Output& output, const Conversion& conversion, double value)
{
    const bool negative = std::signbit(value);
    value = std::abs(value);
    if (!std::isfinite(value)) {
        putNumber(output, conversion, negative, 0, std::isnan(value) ? "nan" : "inf", false);
        return;
    }
    char digits[std::numeric_limits<double>::max_exponent10 + realPrecisionLimit + 8];
    const int precision = conversion.precision < 0 ? 6 : std::min(conversion.precision, realPrecisionLimit);
    const char* end =
        std::to_chars(digits, digits + sizeof digits, value, std::chars_format::fixed, precision).ptr;
    putNumber(output, conversion, negative, 0, {digits, static_cast<std::size_t>(end - digits)}, true);
}

void putAsText(Output& output, const Conversion& conversion, const KorFormatArgument& argument)
{
    Conversion plain = conversion;
    plain.zeroFilled = false;
    if (argument.kind() == Kind::kText) {
        putText(output, plain, argument.textValue());
        return;
    }
    plain.precision = -1;
    if (argument.kind() == Kind::kReal)
        putReal(output, plain, argument.realValue());
    else
        putInteger(output, plain, argument, false);
}

void putCharacter(Output& output, const Conversion& conversion, const KorFormatArgument& argument)
{
    Conversion plain = conversion;
    plain.precision = -1;
    if (argument.kind() == Kind::kText) {
        putText(output, plain, argument.textValue().substr(0, 1));
        return;
    }
    const auto character = static_cast<wchar_t>(
        argument.kind() == Kind::kReal ? clampToInteger(argument.realValue()) : argument.signedValue());
    putText(output, plain, {&character, 1});
}

int readNumber(std::wstring_view& pattern)
{
    int number = 0;
    for (; !pattern.empty() && pattern.front() >= L'0' && pattern.front() <= L'9'; pattern.remove_prefix(1))
        number = std::min(number * 10 + static_cast<int>(pattern.front() - L'0'), widthLimit);
    return number;
}

Conversion readConversion(std::wstring_view& pattern)
{
    Conversion conversion;
    for (; !pattern.empty() && (pattern.front() == L'-' || pattern.front() == L'0'); pattern.remove_prefix(1))
        (pattern.front() == L'-' ? conversion.leftAligned : conversion.zeroFilled) = true;
    conversion.width = readNumber(pattern);
    if (pattern.starts_with(L'.')) {
        pattern.remove_prefix(1);
        conversion.precision = readNumber(pattern);
    }
    while (pattern.starts_with(L'l') || pattern.starts_with(L'h'))
        pattern.remove_prefix(1);
    return conversion;
}

/// Writes one argument as a conversion letter asks for it. False when there is no such letter.
bool putArgument(Output& output, const Conversion& conversion, wchar_t letter, const KorFormatArgument* argument)
{
    constexpr std::wstring_view letters = L"diufsc";
    if (letters.find(letter) == std::wstring_view::npos)
        return false;
    if (argument == nullptr)
        return true;
    switch (letter) {
    case L'd':
    case L'i':
    case L'u':
        putInteger(output, conversion, *argument, letter == L'u');
        break;
    case L'f':
        putReal(output, conversion, toReal(*argument));
        break;
    case L's':
        putAsText(output, conversion, *argument);
        break;
    default:
        putCharacter(output, conversion, *argument);
        break;
    }
    return true;
}

} // namespace

KorString KorString::formatArguments(std::wstring_view pattern, std::span<const KorFormatArgument> arguments)
{
    Output output;
    std::size_t next = 0;
    while (!pattern.empty()) {
        const std::size_t literal = std::min(pattern.find(L'%'), pattern.size());
        output.put(pattern.substr(0, literal));
        pattern.remove_prefix(literal);
        if (pattern.empty())
            break;
        const std::wstring_view whole = pattern;
        pattern.remove_prefix(1);
        if (pattern.starts_with(L'%')) {
            output.put(L'%');
            pattern.remove_prefix(1);
            continue;
        }
        const Conversion conversion = readConversion(pattern);
        const KorFormatArgument* argument = next < arguments.size() ? &arguments[next] : nullptr;
        if (!pattern.empty() && putArgument(output, conversion, pattern.front(), argument)) {
            ++next;
            pattern.remove_prefix(1);
        } else
            output.put(whole.substr(0, whole.size() - pattern.size())); // no conversion: stands as it is
    }
    return output.take();
}
