#pragma once

#include <korodbc/roots/KorLogfile.h>
#include <korodbc/roots/KorString.h>

/// What the library sets up when it is loaded and takes down when it is unloaded.
namespace korodbc {

extern const KorString firstCopySuffix; // follows the name of a table in the name of its copy at depth 0

// Keys of default values
extern const KorString defaultNewKeyValueStart;
extern const KorString defaultOwnerKey;
extern const KorString defaultOwnerText;
extern const KorString defaultProfileMaxPoints;
extern const KorString defaultProfileMaxContours;

extern KorLogfile odbcLog;
extern KorLogfile odbcDataLog;

/// 1 from the moment on that the objects above are destroyed.
extern int shutDown;

} // namespace korodbc
