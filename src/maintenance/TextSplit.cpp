#include <korodbc/maintenance/KorOdbcGUI.h>

int KorOdbcGUI::getTokens(const KorString& text, KorArray<KorString>& tokens, const KorString& separators)
{
    return KorString::getTokens(text, tokens, separators);
}

void KorOdbcGUI::getLeftAndRightFromFirstNumber(const KorString& text, KorString& left, KorString& right)
{
    const KorString whole = text; // the outputs may be the text itself
    left = right = KorString();
    int digit = 0;
    while (digit < whole.length() && (whole.getAt(digit) < L'0' || whole.getAt(digit) > L'9'))
        ++digit;
    left = whole.left(digit);
    if (digit == whole.length())
        return;
    // the full stop of ".5" belongs to the number, and stays with the left part too
    right = whole.mid(digit > 0 && whole.getAt(digit - 1) == L'.' ? digit - 1 : digit);
}
