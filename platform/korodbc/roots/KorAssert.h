#pragma once

/// Receives every failed assertion; the caller goes on when the handler returns, which throws nothing.
class KorAssert {
public:
    using Handler = void (*)(const char* expression, const char* sourceFile, int line, void* context);

    /// Reports a failed assertion to the installed handler.
    static void korAssert(const char* expression, const char* sourceFile, int line);

    /// Installs a handler that gets `context` back with each call; nullptr restores the default one, which
    /// writes the first 20 failures of the process to stderr, one line each.
    static void setHandler(Handler handler, void* context = nullptr);
};
