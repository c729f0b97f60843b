#pragma once

#include "Session.h"

#include <string>

// Detail database files, before they are attached. None of this changes the file.

/// Throws when the database is damaged: a transfer would lose rows unseen. `source` is the data source that it
/// belongs to, empty for a file from elsewhere.
void checkSound(const std::string& file, const std::string& source = {});
inline void checkSound(const Source& source) { checkSound(source.file, source.name); }
/// Throws unless the existing file can stand for the database of that data source: a sound one with its tables.
void checkBackup(const std::string& file, const Source& source);
/// Throws unless the file can be imported from: a sound detail database of version 5.1.
void checkImportFile(const std::string& file);
/// Throws unless the file can be exported to. Returns true when it does not exist yet.
bool checkExportTarget(const std::string& file);
/// Throws when the file is the database of that source.
void refuseSameFile(const std::string& file, const Source& source);
/// Copies the database, with what its log holds, to a new file beside it, "details.db.backup-1" and so on; returns
/// the copy's path. Throws, with no file left behind, when that fails.
std::string backUp(const std::string& file);
/// Makes the database of the data source equal to that in `from`, a sound one, under the write lock of the former;
/// returns where its state before is kept, empty when there was none. Throws, with everything as before, when that
/// fails.
std::string restoreFrom(const std::string& from, const Source& source);
