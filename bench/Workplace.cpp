#include "Workplace.h"

#include "Database.h"

#include <korodbc/edit/KorOdbcMan.h>
#include <korodbc/host/EmbeddedHost.h>
#include <korodbc/repository/KorDatabaseAccess.h>
#include <korodbc/startup/KorOdbcDSNDefinitions.h>

#include <set>
#include <unistd.h>

namespace bench {

namespace fs = std::filesystem;

namespace {

/// Folders that exist now; what an early end of the program leaves is removed here.
struct Folders {
    std::set<fs::path> live;
    ~Folders()
    {
        std::error_code ignored;
        for (const fs::path& folder : live)
            fs::remove_all(folder, ignored);
    }
};

Folders folders; // outlives the places that statics of functions hold

/// The repository that all others are copies of.
const fs::path& original()
{
    static const Workplace place;
    static const fs::path folder = [] {
        std::string error;
        const fs::path made = place.folder() / "repository";
        require(korodbc::host::buildRepository(made, KORODBC_SOURCE_CATALOGUE, {}, {}, error), error);
        return made;
    }();
    return folder;
}

void open(const fs::path& folder)
{
    std::string error;
    require(korodbc::host::openRepository(folder, error), error);
    KorOdbcMan::InitializeStatics::release();
    require(KorOdbcDSNDefinitions::initOEDbConnections() == 1 && KorOdbcMan::initializeTables() == 1,
            "the repository does not start");
}

} // namespace

Workplace::Workplace()
{
    static int made = 0;
    m_folder =
        fs::temp_directory_path() / ("korodbc-bench-" + std::to_string(::getpid()) + "-" + std::to_string(++made));
    fs::create_directories(m_folder);
    folders.live.insert(m_folder);
}

Workplace::~Workplace()
{
    std::error_code ignored;
    fs::remove_all(m_folder, ignored);
    folders.live.erase(m_folder);
}

Repository::Repository()
{
    fs::copy(original(), folder(), fs::copy_options::recursive);
    open(folder());
}

Repository::~Repository()
{
    KorOdbcMan::InitializeStatics::release();
    korodbc::host::closeRepository();
}

void Repository::use(eDSN dsn, const std::string& file)
{
    korodbc::host::closeRepository();
    open(folder());
    require(KorDatabaseAccess::setConnection(dsn, KorString::fromUtf8(file)) == 1, "cannot use " + file);
}

void copyDatabase(const std::string& from, const std::string& to)
{
    for (const char* side : {"-wal", "-shm"})
        fs::remove(to + side);
    fs::copy_file(from, to, fs::copy_options::overwrite_existing);
}

} // namespace bench
