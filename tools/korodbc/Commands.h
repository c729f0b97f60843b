#pragma once

#include "DetailKind.h"
#include "Output.h"
#include "Session.h"

#include <korodbc/compaction/KorOdbcCompactDetailsTables.h>

#include <string>
#include <vector>

// Each command prints its result on stdout and throws a Failure when it cannot do its work.

struct InitOptions {
    std::string folder, catalogue;
    std::vector<std::string> countries; // "ID=NAME"
};
void runInit(const InitOptions& options);
/// Folder of the catalogue: the given one, else where the environment, the source tree or the installation
/// has one.
std::string catalogueFolder(const std::string& given);

void runSources(const GlobalOptions& global);
void runTables(const GlobalOptions& global, const std::string& source);
struct ShowOptions {
    std::string table, record, source;
    bool items = false;
    Format format = Format::Text;
};
void runShow(const GlobalOptions& global, const ShowOptions& options);

struct ListOptions {
    std::string table, source;
};
void runList(const GlobalOptions& global, const ListOptions& options);
struct FindOptions {
    std::string table, source;
    std::vector<std::string> conditions; // "COLUMN=VALUE"
    Format format = Format::Text;
};
void runFind(const GlobalOptions& global, const FindOptions& options);
void runSection(const GlobalOptions& global, const std::string& name, Format format);
/// Empty names list what there is to choose from.
void runBolts(const GlobalOptions& global, const std::string& standard, const std::string& diameter);
struct ImportCsvOptions {
    std::string table, file, source = "Configuration";
    std::string separator; // ",", ";" or "tab"; empty: a comma, unless the heading says otherwise
    bool replace = false;
};
void runImportCsv(const GlobalOptions& global, const ImportCsvOptions& options);

void runStyles(const GlobalOptions& global, const std::string& source, Format format);
void runProcesses(const GlobalOptions& global, const std::string& source, Format format);
void runGroups(const GlobalOptions& global, const std::string& source, Format format);
void runTree(const GlobalOptions& global, Detail kind, const std::string& name, const std::string& source);
struct ExportOptions {
    Detail kind;
    std::string name, source, file;
    bool withStyles = true; // of a process: the styles that its style maps name
};
void runExport(const GlobalOptions& global, const ExportOptions& options);
struct ImportOptions {
    Detail kind;
    std::string file, name, into;
    bool withStyles = true;
};
void runImport(const GlobalOptions& global, const ImportOptions& options);

struct CompactOptions {
    std::string what = "all", source = "Details"; // or styles, processes, qualifier-sets
    bool keep = false, dryRun = false, force = false, backup = false;
    Format format = Format::Text;
};
void runCompact(const GlobalOptions& global, const CompactOptions& options);
struct SharedOptions {
    std::string table, row, source = "Details";
    Format format = Format::Text;
};
void runShared(const GlobalOptions& global, const SharedOptions& options);
/// With an empty name of the source all detail databases.
void runCheck(const GlobalOptions& global, const std::string& source, Format format);

enum class Closing { Ok, Cancel, Update, LeaveOpen };
struct EditOptions {
    std::string table, key, column, value, source = "Details";
    int depth = 0;
    int item = 0; // number of the item in an item table, from 1; 0: the row itself
    Closing closing = Closing::Ok;
    bool force = false; // also what the row or the tables of its database do not know
};
void runEdit(const GlobalOptions& global, const EditOptions& options);
void runStatus(const GlobalOptions& global);
/// Brings back what unfinished edits left; with `discard` what cannot be brought back is put aside.
void runRecover(const GlobalOptions& global, bool discard);
struct RestoreOptions {
    std::string file, source = "Details";
};
/// Brings a backup back into a data source, which is backed up itself before.
void runRestore(const GlobalOptions& global, const RestoreOptions& options);

void runDemo(const GlobalOptions& global, const std::string& folder, const std::string& catalogue);

/// A command on a repository, started as its options say. Notes on stderr what start-up brought back and, unless
/// the command fails, what it could not use.
class StartedSession {
public:
    explicit StartedSession(const GlobalOptions& options);
    ~StartedSession();
    StartedSession(const StartedSession&) = delete;
    StartedSession& operator=(const StartedSession&) = delete;

private:
    const Session m_session;
    const int m_exceptions; // under way when the command began
};

// The work behind the commands, on an open repository

/// What a transfer did.
struct Moved {
    std::string detail, name;       // in the source and in the target
    std::string from, into;         // data source or file
    int key;                        // in the target
    int rows, reused;               // newly written, and found there
    int keptItems;                  // items that name a style by its key in the source
    std::vector<int> unknownStyles; // those of these keys that the target does not have
};
/// "70 rows written and 4 reused".
std::string rowsOf(const Moved& moved);
Moved exportDetail(const ExportOptions& options);
Moved importDetail(const ImportOptions& options);
/// What a compaction did, or with a dry run would do.
struct Compacted {
    std::vector<KorCompactedTable> tables;
    std::vector<KorDetailReference> stranded; // name rows that are gone
    std::string backup;                       // file, empty without
    bool nothingToDo = false;
};
Compacted compact(const CompactOptions& options);
/// "DetailStyle 1 "Beam" Request2 -> DetViewRequest 7"
std::string referenceText(const KorDetailReference& reference);
struct Edited {
    std::string record, column, before, after, source;
    bool underCopy = true;
};
/// Changes a value, under a copy where the table is a detail table, and closes the edit.
Edited edit(const EditOptions& options);
std::string copyPlace(const LeftBehind& copy);
