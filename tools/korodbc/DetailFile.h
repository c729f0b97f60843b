#pragma once

#include "Session.h"

#include <string>

/// Looks at a detail database file before it is attached, without changing it.

/// Throws when the database is damaged: a transfer would lose rows unseen.
void checkSound(const std::string& file);
/// Throws unless the file can be imported from: a sound detail database of version 5.1.
void checkImportFile(const std::string& file);
/// Throws unless the file can be exported to. Returns true when it does not exist yet.
bool checkExportTarget(const std::string& file);
/// Throws when the file is the database of that source.
void refuseSameFile(const std::string& file, const Source& source);
