#pragma once

#include "Output.h"
#include "records/detail/DetailStyleRecords.h"
#include "Session.h"

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
    bool replace = false;
};
void runImportCsv(const GlobalOptions& global, const ImportCsvOptions& options);

void runStyles(const GlobalOptions& global, const std::string& source);
void runTree(const GlobalOptions& global, const std::string& style, const std::string& source);
void runExport(const GlobalOptions& global, const std::string& style, const std::string& source,
               const std::string& file);
struct ImportOptions {
    std::string file, style, into = "Details";
};
void runImport(const GlobalOptions& global, const ImportOptions& options);

enum class Closing { Ok, Cancel, Update, LeaveOpen };
struct EditOptions {
    std::string table, key, column, value, source = "Details";
    int depth = 0;
    Closing closing = Closing::Ok;
};
void runEdit(const GlobalOptions& global, const EditOptions& options);
void runStatus(const GlobalOptions& global);
void runRecover(const GlobalOptions& global);

void runDemo(const GlobalOptions& global, const std::string& folder, const std::string& catalogue);

/// Start of a command on a repository: says on stderr what start-up brought back.
class StartedSession {
public:
    explicit StartedSession(const GlobalOptions& options);

private:
    Session m_session;
};

// The work behind the commands, on an open repository

/// The detail style with that name or key.
StructDetailStyle styleNamed(const std::string& style, const Source& source);
struct Exported {
    std::string style;
    int rows;
};
Exported exportStyle(const std::string& style, const Source& source, const std::string& file);
struct Imported {
    std::string style, name; // in the file, and where it was imported
    std::string into;        // data source
    int key = -1, rows = 0;  // where it was imported
};
Imported importStyle(const ImportOptions& options);
struct Edited {
    std::string record, column, before, after, source;
};
/// Changes a value under a copy, and closes the edit.
Edited edit(const EditOptions& options);
std::string copyPlace(const LeftBehind& copy);
