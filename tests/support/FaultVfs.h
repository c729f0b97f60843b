#pragma once

#include <csignal>
#include <cstring>
#include <functional>
#include <span>
#include <sqlite3.h>
#include <unistd.h>

/// A file system between SQLite and the real one, for every database opened while it is installed. It counts the
/// calls that change files; at the n-th it kills the process or fails. On its way it passes points at which
/// another program may act: these calls, and those that take or release a lock.
namespace faults {

struct Plan {
    long calls = 0;    // that change files, since the plan was set
    long killAt = 0;   // the process dies at this call, which is torn when its number is even; 0: never
    long failFrom = 0; // calls fail from this one on; 0: none
    int failure = SQLITE_OK;
    bool armed = false;
    long points = 0;                // passed since the plan was set
    long actAt = 0;                 // `act` is called at this point; 0: never
    std::function<void()> act = {}; // must not touch a database
    std::span<char> kinds = {};     // takes what the points are: a change, a lock to read, a lock to write
};
enum Kind : char { Change = 'c', ToRead = 'r', ToWrite = 'w' };
inline Plan plan;

inline sqlite3_vfs* real = nullptr;
inline sqlite3_vfs shim;

struct File {
    sqlite3_file base;
    sqlite3_file* under() { return reinterpret_cast<sqlite3_file*>(this + 1); }
};
inline sqlite3_file* under(sqlite3_file* file) { return reinterpret_cast<File*>(file)->under(); }

inline void die()
{
    ::kill(::getpid(), SIGKILL);
    ::pause();
}

inline void pass(Kind kind)
{
    if (!plan.armed)
        return;
    if (plan.points < static_cast<long>(plan.kinds.size()))
        plan.kinds[static_cast<std::size_t>(plan.points)] = kind;
    if (++plan.points == plan.actAt)
        plan.act();
}

/// Counts a call; SQLITE_OK when it may go on.
inline int count()
{
    if (!plan.armed)
        return SQLITE_OK;
    pass(Change);
    ++plan.calls;
    if (plan.calls == plan.killAt)
        die();
    return plan.failFrom != 0 && plan.calls >= plan.failFrom ? plan.failure : SQLITE_OK;
}

inline int write(sqlite3_file* file, const void* data, int length, sqlite3_int64 offset)
{
    if (plan.armed && plan.calls + 1 == plan.killAt && plan.killAt % 2 == 0)
        under(file)->pMethods->xWrite(under(file), data, length / 2, offset);
    const int failed = count();
    return failed != SQLITE_OK ? failed : under(file)->pMethods->xWrite(under(file), data, length, offset);
}

/// What a killed process wrote stays with the operating system: nothing has to reach the disk here.
inline int sync(sqlite3_file*, int) { return count(); }

inline int truncate(sqlite3_file* file, sqlite3_int64 size)
{
    const int failed = count();
    return failed != SQLITE_OK ? failed : under(file)->pMethods->xTruncate(under(file), size);
}

inline int erase(sqlite3_vfs*, const char* name, int syncFolder)
{
    const int failed = count();
    return failed != SQLITE_OK ? failed : real->xDelete(real, name, syncFolder);
}

/// The locks of a write-ahead log: the first one is that to write, one of the last that to read.
inline int lockLog(sqlite3_file* file, int at, int n, int flags)
{
    const bool toWrite = at == 0 && n == 1 && (flags & SQLITE_SHM_EXCLUSIVE) != 0;
    const bool takes = (flags & SQLITE_SHM_LOCK) != 0;
    if (takes && (toWrite || (flags & SQLITE_SHM_SHARED) != 0))
        pass(toWrite ? ToWrite : ToRead);
    const int code = under(file)->pMethods->xShmLock(under(file), at, n, flags);
    if (toWrite && !takes)
        pass(ToWrite);
    return code;
}

inline int lock(sqlite3_file* file, int level)
{
    if (level == SQLITE_LOCK_RESERVED)
        pass(ToWrite);
    return under(file)->pMethods->xLock(under(file), level);
}

inline const sqlite3_io_methods methods = {
    2,
    [](sqlite3_file* f) { return under(f)->pMethods->xClose(under(f)); },
    [](sqlite3_file* f, void* to, int n, sqlite3_int64 at) {
        return under(f)->pMethods->xRead(under(f), to, n, at);
    },
    write,
    truncate,
    sync,
    [](sqlite3_file* f, sqlite3_int64* size) { return under(f)->pMethods->xFileSize(under(f), size); },
    lock,
    [](sqlite3_file* f, int level) { return under(f)->pMethods->xUnlock(under(f), level); },
    [](sqlite3_file* f, int* out) { return under(f)->pMethods->xCheckReservedLock(under(f), out); },
    [](sqlite3_file* f, int op, void* arg) { return under(f)->pMethods->xFileControl(under(f), op, arg); },
    [](sqlite3_file* f) { return under(f)->pMethods->xSectorSize(under(f)); },
    [](sqlite3_file* f) { return under(f)->pMethods->xDeviceCharacteristics(under(f)); },
    [](sqlite3_file* f, int page, int size, int extend, void volatile** out) {
        return under(f)->pMethods->xShmMap(under(f), page, size, extend, out);
    },
    lockLog,
    [](sqlite3_file* f) { under(f)->pMethods->xShmBarrier(under(f)); },
    [](sqlite3_file* f, int erased) { return under(f)->pMethods->xShmUnmap(under(f), erased); },
    nullptr,
    nullptr,
};

inline int open(sqlite3_vfs*, const char* name, sqlite3_file* file, int flags, int* outFlags)
{
    file->pMethods = nullptr;
    const int code = real->xOpen(real, name, under(file), flags, outFlags);
    if (under(file)->pMethods != nullptr)
        file->pMethods = &methods;
    return code;
}

/// Makes the shim what databases are opened through from now on.
inline void install()
{
    if (real == nullptr) {
        real = sqlite3_vfs_find(nullptr);
        shim = *real;
        shim.zName = "faults";
        shim.szOsFile = static_cast<int>(sizeof(File)) + real->szOsFile;
        shim.xOpen = open;
        shim.xDelete = erase;
    }
    plan = {};
    sqlite3_vfs_register(&shim, 1);
}

/// Only when no database is open through the shim.
inline void remove()
{
    plan = {};
    sqlite3_vfs_unregister(&shim);
    sqlite3_vfs_register(real, 1);
}

} // namespace faults
