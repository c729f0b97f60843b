#pragma once

#include <korodbc/roots/KorString.h>

/// Localised texts for the user, addressed by module and number.
class KorPromptsProxy {
public:
    /// The one instance; never nullptr.
    static KorPromptsProxy* getInstance();

    /// Forgets the texts read so far, so that they are read again when they are next asked for.
    void resetPromptsCache();

    /// The text of a prompt, `fallback` when the host has none.
    KorString getPrompt(const KorString& module, unsigned number, const KorString& fallback = {});

private:
    KorPromptsProxy() = default;
};
