#include "engine/sqlite/FileClaims.h"

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <fcntl.h>
#include <filesystem>
#include <map>
#include <pwd.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

namespace korodbc::host {

namespace fs = std::filesystem;

namespace {

constexpr int mostTries = 500; // against programs that are just taking the file away

std::string fileBeside(const std::string& database)
{
    if (database == ":memory:")
        return {};
    std::error_code code;
    const fs::path real = fs::canonical(database, code); // one file, one place for its claims
    return (code ? database : real.string()) + "-claims";
}

/// The byte that stands for a table.
off_t placeOf(const std::string& name)
{
    std::uint64_t hash = 0xcbf29ce484222325u;
    for (const char c : name)
        hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001b3u;
    return static_cast<off_t>(hash >> 2 | 1);
}

struct flock regionOf(short type, off_t start, off_t length)
{
    struct flock region = {};
    region.l_type = type;
    region.l_whence = SEEK_SET;
    region.l_start = start;
    region.l_len = length;
    return region;
}

std::string singleField(std::string text)
{
    for (char& c : text)
        if (static_cast<unsigned char>(c) < ' ')
            c = ' ';
    return text;
}

std::string thisProgram()
{
    const passwd* user = ::getpwuid(::geteuid());
    char computer[256] = "";
    ::gethostname(computer, sizeof computer - 1);
    char since[32] = "";
    const std::time_t now = std::time(nullptr);
    std::tm local = {};
    std::strftime(since, sizeof since, "%Y-%m-%d %H:%M", ::localtime_r(&now, &local));
    return singleField((user == nullptr ? "user " + std::to_string(::geteuid()) : std::string(user->pw_name)) +
                       " on " + computer + ", " + program_invocation_short_name + " (process " +
                       std::to_string(::getpid()) + "), since " + since);
}

/// What the file says, the last line of a table last.
std::map<std::string, Claims::Claim> linesOf(int handle)
{
    std::string text;
    char block[4096];
    for (off_t at = 0;;) {
        const ssize_t read = ::pread(handle, block, sizeof block, at);
        if (read <= 0)
            break;
        text.append(block, static_cast<std::size_t>(read));
        at += read;
    }
    std::map<std::string, Claims::Claim> lines;
    for (std::size_t from = 0; from < text.size();) {
        const std::size_t end = std::min(text.find('\n', from), text.size());
        const std::size_t tab = text.find('\t', from);
        if (tab < end) {
            const std::string table = text.substr(from, tab - from);
            lines[Claims::nameOf(table)] = {table, text.substr(tab + 1, end - tab - 1)};
        }
        from = end + 1;
    }
    return lines;
}

} // namespace

FileClaims::FileClaims(const std::string& database) : m_file(fileBeside(database)) {}

FileClaims::~FileClaims()
{
    if (m_handle >= 0)
        leave();
}

bool FileClaims::open(HostError& reason)
{
    if (m_handle >= 0)
        return true;
    m_handle = ::open(m_file.c_str(), O_RDWR | O_CREAT | O_APPEND | O_CLOEXEC, 0666);
    if (m_handle < 0) {
        reason = {failureOfSystem(errno), "cannot be claimed: " + m_file + ": " + std::strerror(errno)};
        return false;
    }
    // whoever may write the database may claim its tables
    struct stat database = {};
    if (::stat(m_file.substr(0, m_file.size() - std::strlen("-claims")).c_str(), &database) == 0)
        (void)::fchmod(m_handle, database.st_mode & 0666);
    return true;
}

void FileClaims::close()
{
    if (m_handle >= 0)
        ::close(m_handle);
    m_handle = -1;
}

FileClaims::Lock FileClaims::tryLock(const std::string& name, HostError& reason)
{
    struct flock region = regionOf(F_WRLCK, placeOf(name), 1);
    if (::fcntl(m_handle, F_OFD_SETLK, &region) != 0) {
        if (errno != EAGAIN && errno != EACCES) {
            reason = {failureOfSystem(errno), "cannot be claimed: " + m_file + ": " + std::strerror(errno)};
            return Lock::Refused;
        }
        region = regionOf(F_WRLCK, placeOf(name), 1);
        if (::fcntl(m_handle, F_OFD_GETLK, &region) != 0 || region.l_type == F_UNLCK || region.l_len != 1)
            return Lock::Again; // just given back, or the file is about to go
        const auto lines = linesOf(m_handle);
        const auto holder = lines.find(name);
        if (holder == lines.end())
            return Lock::Again; // just taken
        reason = {FailureKind::Edited, heldBy(holder->second)};
        return Lock::Refused;
    }
    // a claim on a file that is gone is none
    struct stat held = {}, there = {};
    if (::fstat(m_handle, &held) == 0 && ::stat(m_file.c_str(), &there) == 0 && held.st_ino == there.st_ino &&
        held.st_dev == there.st_dev)
        return Lock::Taken;
    close();
    return Lock::Again;
}

bool FileClaims::lock(const std::string& name, const std::string& table, HostError& reason)
{
    if (m_file.empty())
        return true;
    Lock result = Lock::Again;
    for (int tries = 0; result == Lock::Again; ++tries) {
        if (tries > 0)
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        if (tries == mostTries)
            reason = {FailureKind::Edited, heldBy({table, "another program"})};
        if (tries == mostTries || !open(reason))
            break;
        result = tryLock(name, reason);
    }
    if (result != Lock::Taken) {
        if (!holdsAny())
            close();
        return false;
    }
    const std::string line = singleField(table) + "\t" + thisProgram() + "\n";
    if (::write(m_handle, line.data(), line.size()) == static_cast<ssize_t>(line.size()))
        return true;
    reason = {failureOfSystem(errno), "cannot be claimed: " + m_file + ": " + std::strerror(errno)};
    unlock(name);
    return false;
}

void FileClaims::unlock(const std::string& name)
{
    if (m_handle < 0)
        return;
    struct flock region = regionOf(F_UNLCK, placeOf(name), 1);
    ::fcntl(m_handle, F_OFD_SETLK, &region);
    if (!holdsAny())
        leave();
}

void FileClaims::leave()
{
    // nobody holds a claim: the file can go, and nobody takes one while it goes
    struct flock all = regionOf(F_WRLCK, 0, 0);
    if (::fcntl(m_handle, F_OFD_SETLK, &all) == 0)
        ::unlink(m_file.c_str());
    close();
}

std::vector<Claims::Claim> FileClaims::ofOthers() const
{
    std::vector<Claim> claims;
    if (m_file.empty())
        return claims;
    const int handle = m_handle >= 0 ? m_handle : ::open(m_file.c_str(), O_RDONLY | O_CLOEXEC);
    if (handle < 0)
        return claims;
    for (const auto& [name, claim] : linesOf(handle)) {
        struct flock region = regionOf(F_WRLCK, placeOf(name), 1);
        // a lock on all bytes belongs to a program that takes the file away
        if (::fcntl(handle, F_OFD_GETLK, &region) == 0 && region.l_type != F_UNLCK && region.l_len == 1)
            claims.push_back(claim);
    }
    if (handle != m_handle)
        ::close(handle);
    return claims;
}

} // namespace korodbc::host
