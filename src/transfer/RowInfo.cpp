#include <korodbc/transfer/RowInfo.h>

#include <charconv>

std::size_t KorRowInfoHash::operator()(const rowInfo& row) const
{
    std::uint32_t hash = 0;
    const auto add = [&](char c) { hash = hash * 5u + static_cast<std::uint32_t>(static_cast<std::int8_t>(c)); };
    for (const wchar_t c : row.name.view())
        add(static_cast<char>(c));
    for (const std::int32_t number : {row.index, row.key}) {
        char digits[12];
        const char* end = std::to_chars(digits, digits + sizeof digits, number).ptr;
        for (const char* digit = digits; digit != end; ++digit)
            add(*digit);
    }
    return hash;
}
