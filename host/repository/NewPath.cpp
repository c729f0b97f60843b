#include "repository/NewPath.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace korodbc::host {

namespace fs = std::filesystem;

namespace {

constexpr const char* mark = ".korodbc-new-";

fs::path folderOf(const fs::path& target) { return target.has_parent_path() ? target.parent_path() : "."; }

/// The lock on a folder, -1 when another program has it or it cannot be opened.
int locked(const fs::path& path)
{
    const int handle = ::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    if (handle < 0)
        return -1;
    struct stat held = {}, there = {};
    if (::flock(handle, LOCK_EX | LOCK_NB) == 0 && ::fstat(handle, &held) == 0 &&
        ::lstat(path.c_str(), &there) == 0 && held.st_ino == there.st_ino && held.st_dev == there.st_dev)
        return handle;
    ::close(handle);
    return -1;
}

/// Moves without replacing anything but an empty folder; 0 or the system's error.
int move(const fs::path& from, const fs::path& to)
{
    std::error_code code;
    if (fs::is_directory(from, code)) // a folder replaces an empty one at most
        return ::rename(from.c_str(), to.c_str()) == 0 ? 0 : errno;
    if (::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0)
        return 0;
    if (errno != EINVAL && errno != ENOSYS) // file systems that know no such renaming know links
        return errno;
    return ::link(from.c_str(), to.c_str()) == 0 ? 0 : errno;
}

} // namespace

NewPath::NewPath(const fs::path& target) : m_target(target.has_filename() ? target : target.parent_path())
{
    removeLeftOvers();
    for (int tries = 0; m_lock < 0 && tries < 10; ++tries) {
        std::string folder = m_target.string() + mark + "XXXXXX";
        if (::mkdtemp(folder.data()) == nullptr) {
            m_error = {failureOfSystem(errno), folderOf(m_target).string() + ": " + std::strerror(errno)};
            return;
        }
        m_folder = folder;
        m_lock = locked(m_folder); // refused where another program takes it for a left-over
        if (m_lock < 0)
            ::rmdir(folder.c_str());
    }
    if (m_lock < 0)
        m_error = {FailureKind::Refused, folderOf(m_target).string() + ": no folder can be locked there"};
    m_path = m_folder / m_target.filename();
}

NewPath::~NewPath()
{
    std::error_code code;
    if (m_lock < 0)
        return;
    fs::remove_all(m_folder, code);
    ::close(m_lock);
}

NewPath::Placed NewPath::place(const fs::path& target, HostError& error)
{
    const int result = move(m_path, target);
    if (result == 0)
        return Placed::Yes;
    const bool exists = result == EEXIST || result == ENOTEMPTY || result == ENOTDIR;
    error = {failureOfSystem(result),
             target.string() + ": " + (exists ? "it exists already" : std::strerror(result))};
    return exists ? Placed::Exists : Placed::Failed;
}

void NewPath::removeLeftOvers() const
{
    std::error_code code;
    const std::string begin = m_target.filename().string() + mark;
    for (fs::directory_iterator entry(folderOf(m_target), code), end; !code && entry != end;
         entry.increment(code)) {
        const fs::path path = entry->path();
        if (!path.filename().string().starts_with(begin))
            continue;
        const int lock = locked(path);
        if (lock < 0)
            continue;
        std::error_code ignored;
        fs::remove_all(path, ignored);
        ::close(lock);
    }
}

} // namespace korodbc::host
