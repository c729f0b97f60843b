#pragma once

#include <korodbc/repository/KorDSNDefinitions.h>

#include <filesystem>
#include <string>

namespace bench {

/// A folder of its own among the temporary files, removed with the object.
class Workplace {
public:
    Workplace();
    ~Workplace();
    Workplace(const Workplace&) = delete;
    Workplace& operator=(const Workplace&) = delete;

    const std::filesystem::path& folder() const { return m_folder; }
    std::string file(const std::string& name) const { return (m_folder / name).string(); }

private:
    std::filesystem::path m_folder;
};

/// A repository made from the shipped catalogue, open while the object lives. Making it is done once per
/// program; each object works on a copy.
class Repository {
public:
    Repository();
    ~Repository();

    std::filesystem::path folder() const { return m_place.folder() / "repository"; }
    std::string file(const std::string& name) const { return m_place.file(name); }
    /// Puts another database file behind a data source, and starts with nothing cached.
    void use(eDSN dsn, const std::string& file);

private:
    Workplace m_place;
};

/// Copies a database file that is not open.
void copyDatabase(const std::string& from, const std::string& to);

} // namespace bench
