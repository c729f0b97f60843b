#include <korodbc/roots/KorAssert.h>

#include <atomic>
#include <cstdio>

namespace {

void writeToStderr(const char* expression, const char* sourceFile, int line, void*)
{
    constexpr int lineLimit = 20;
    static std::atomic<int> lines{0};
    if (lines.load(std::memory_order_relaxed) >= lineLimit || lines.fetch_add(1) >= lineLimit)
        return;
    std::fprintf(stderr, "Assertion failed: %s (%s, line %d)\n", expression, sourceFile, line);
}

KorAssert::Handler currentHandler = &writeToStderr;
void* currentContext = nullptr;

} // namespace

void KorAssert::korAssert(const char* expression, const char* sourceFile, int line)
{
    currentHandler(expression, sourceFile, line, currentContext);
}

void KorAssert::setHandler(Handler handler, void* context)
{
    currentHandler = handler != nullptr ? handler : &writeToStderr;
    currentContext = handler != nullptr ? context : nullptr;
}
