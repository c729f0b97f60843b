#pragma once

#include <korodbc/roots/KorString.h>

#include <memory>

/// Log file in the folder that the environment variable KORODBC_LOG_DIR names, or else in the working
/// directory. The file is opened for appending by the first line written and closed with this object; lines
/// that cannot be written are dropped.
class KorLogfile {
public:
    explicit KorLogfile(const KorString& fileName);
    ~KorLogfile();
    KorLogfile(const KorLogfile&) = delete;
    KorLogfile& operator=(const KorLogfile&) = delete;

    /// Writes a line.
    void write(const KorString& text);

private:
    struct State;
    std::unique_ptr<State> m_state;
};
