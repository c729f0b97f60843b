#pragma once

#include <korodbc/roots/KorString.h>

#include <functional>
#include <string_view>

namespace korodbc::host {

/// Puts the text of a prompt into `text`; false when there is none, and `text` does not count then.
using PromptSource = std::function<bool(std::wstring_view module, unsigned number, KorString& text)>;

/// Installs where prompts come from, until another is installed or a repository is opened or closed, and forgets
/// the texts read so far. What the source does not know, and everything without one, comes from the built-in
/// texts.
void setPromptSource(PromptSource source);

/// The English text that the program brings along, nullptr when there is none.
const wchar_t* builtInPrompt(std::wstring_view module, unsigned number);

} // namespace korodbc::host
