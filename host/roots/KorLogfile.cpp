#include <korodbc/roots/KorLogfile.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

struct KorLogfile::State {
    KorString fileName;
    std::ofstream file;
    bool tried = false;
};

KorLogfile::KorLogfile(const KorString& fileName) : m_state(new State{fileName, {}, false}) {}

KorLogfile::~KorLogfile() = default;

void KorLogfile::write(const KorString& text)
{
    if (!m_state->tried) {
        m_state->tried = true;
        const char* folder = std::getenv("KORODBC_LOG_DIR");
        std::filesystem::path path(folder != nullptr ? folder : "");
        path /= std::filesystem::path(m_state->fileName.toUtf8());
        m_state->file.open(path, std::ios::app | std::ios::binary);
    }
    if (!m_state->file.is_open())
        return;
    std::string line;
    text.appendUtf8To(line);
    line.push_back('\n');
    m_state->file << line << std::flush;
}
