#include <korodbc/host/PromptSource.h>

namespace {

struct Prompt {
    std::wstring_view module;
    unsigned number;
    const wchar_t* text;
};

constexpr Prompt prompts[] = {
    {L"UPS", 21034, L"Reading"},
    {L"UPS", 21035, L"Writing"},
    {L"UPS", 22200, L"New item"},
    {L"GUI", 45058, L"The source database has a format older than 5.1. Upgrade it and try again."},
    {L"GUI", 45059, L"The target database has a format older than 5.1. Upgrade it and try again."},
    {L"GUI", 45061,
     L"Detail style %d is incomplete: some records it refers to could not be read. Repair the style and try "
     L"again."},
    {L"GUI", 45062,
     L"The target database could not be written. Check that it is not read-only and that its disk has room."},
    {L"GUI", 45064, L"The file %s could not be created. Check that its folder exists and may be written to."},
    {L"GUI", 45068,
     L"Detail process %d is incomplete: some records it refers to could not be read. Repair it and try "
     L"again."},
};

} // namespace

const wchar_t* korodbc::host::builtInPrompt(std::wstring_view module, unsigned number)
{
    for (const Prompt& prompt : prompts)
        if (prompt.number == number && prompt.module == module)
            return prompt.text;
    return nullptr;
}
