#include <korodbc/host/PromptSource.h>
#include <korodbc/roots/KorPromptsProxy.h>

#include <optional>
#include <unordered_map>

namespace {

using korodbc::host::PromptSource;

struct Prompts {
    PromptSource source;
    /// Without a value: known to have no text.
    std::unordered_map<KorString, std::unordered_map<unsigned, std::optional<KorString>>> cache;
};

Prompts& prompts()
{
    static Prompts instance;
    return instance;
}

std::optional<KorString> readPrompt(const KorString& module, unsigned number)
{
    KorString text;
    if (prompts().source && prompts().source(module, number, text))
        return text;
    if (const wchar_t* builtIn = korodbc::host::builtInPrompt(module, number))
        return KorString(builtIn);
    return std::nullopt;
}

} // namespace

void korodbc::host::setPromptSource(PromptSource source)
{
    prompts().source = std::move(source);
    prompts().cache.clear();
}

KorPromptsProxy* KorPromptsProxy::getInstance()
{
    static KorPromptsProxy instance;
    return &instance;
}

void KorPromptsProxy::resetPromptsCache() { prompts().cache.clear(); }

KorString KorPromptsProxy::getPrompt(const KorString& module, unsigned number, const KorString& fallback)
{
    const auto& cache = prompts().cache;
    if (const auto ofModule = cache.find(module); ofModule != cache.end())
        if (const auto known = ofModule->second.find(number); known != ofModule->second.end())
            return known->second.value_or(fallback);
    // The source may itself ask for prompts or reset them, so nothing of the cache is held while it runs.
    std::optional<KorString> text = readPrompt(module, number);
    prompts().cache[module][number] = text;
    return text.value_or(fallback);
}
