#include "roots/KorString.h"

#include <string>
#include <utf8proc.h>

namespace {

bool isAscii(wchar_t character) { return static_cast<std::uint32_t>(character) < 0x80; }

wchar_t foldAscii(wchar_t character)
{
    return character >= L'A' && character <= L'Z' ? character + (L'a' - L'A') : character;
}

/// Hands out the folded characters of a text one by one.
class FoldedReader {
public:
    explicit FoldedReader(std::wstring_view text) : m_text(text) {}

    bool next(wchar_t& character)
    {
        while (m_used == m_count) {
            if (m_text.empty())
                return false;
            const wchar_t original = m_text.front();
            m_text.remove_prefix(1);
            if (isAscii(original)) {
                character = foldAscii(original);
                return true;
            }
            fold(original);
        }
        character = m_folded[m_used++];
        return true;
    }

private:
    void fold(wchar_t original)
    {
        int boundClass = 0;
        const utf8proc_ssize_t count =
            utf8proc_decompose_char(original, m_folded, maxFolded, UTF8PROC_CASEFOLD, &boundClass);
        m_used = 0;
        m_count = count;
        if (count < 0 || count > maxFolded) {
            m_folded[0] = original;
            m_count = 1;
        }
    }

    static constexpr utf8proc_ssize_t maxFolded = 8;
    std::wstring_view m_text;
    utf8proc_int32_t m_folded[maxFolded] = {};
    utf8proc_ssize_t m_used = 0;
    utf8proc_ssize_t m_count = 0;
};

} // namespace

int KorString::compareNoCase(const KorString& other) const
{
    if (m_buffer == other.m_buffer)
        return 0;
    std::wstring_view left = view();
    std::wstring_view right = other.view();
    while (!left.empty() && !right.empty() && isAscii(left.front()) && isAscii(right.front())) {
        const int difference = foldAscii(left.front()) - foldAscii(right.front());
        if (difference != 0)
            return difference < 0 ? -1 : 1;
        left.remove_prefix(1);
        right.remove_prefix(1);
    }
    FoldedReader leftReader(left);
    FoldedReader rightReader(right);
    wchar_t leftCharacter = 0;
    wchar_t rightCharacter = 0;
    for (;;) {
        const bool leftHasMore = leftReader.next(leftCharacter);
        const bool rightHasMore = rightReader.next(rightCharacter);
        if (!leftHasMore || !rightHasMore)
            return static_cast<int>(leftHasMore) - static_cast<int>(rightHasMore);
        if (leftCharacter != rightCharacter)
            return leftCharacter < rightCharacter ? -1 : 1;
    }
}

KorString KorString::foldedCase() const
{
    std::wstring folded;
    folded.reserve(view().size());
    FoldedReader reader(view());
    wchar_t character = 0;
    while (reader.next(character))
        folded.push_back(character);
    return folded == view() ? *this : KorString(std::wstring_view(folded));
}
