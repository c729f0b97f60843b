#pragma once

#include "Advice.h"

#include <korodbc/host/EmbeddedHost.h>
#include <korodbc/repository/KorDSNManager.h>

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

enum ExitCode { kOk = 0, kFailed = 1, kUsage = 2, kNoRepository = 3, kNotFound = 4 };

/// Ends a command: one line for the user, and the exit code.
struct Failure {
    ExitCode code;
    std::string message;
};
/// "table X cannot be read: why; what to do", about the last failure.
Failure unreadable(std::string_view table);

/// How a command starts on its repository.
enum class Start {
    Look,  // the databases are only read, nothing is brought back
    Write, // as a host starts: what unfinished edits left is brought back
};

struct GlobalOptions {
    std::string program = "korodbc"; // as the user called it
    std::string repository = "repository";
    bool trace = false;
    Start start = Start::Look;
};

/// A data source of the open repository, as the user names it.
struct Source {
    eDSN dsn = KorDSNDefinitions::kDetails;
    eIndex index = KorDSNDefinitions::kBase;
    std::string name;
    std::string id;        // of a country add-in
    std::string file;      // path of the database
    bool readOnly = false; // by its connection
};
/// What names the source in a command, " --source Addin"; empty for Details, which commands take by themselves.
std::string sourceOption(const Source& source);

/// A copy of a table: of an edit that is open now, or that was never closed.
struct LeftBehind {
    int type; // of the manager's table types
    std::string table;
    std::string copy;
    int depth;
    Source source;
    std::string holder; // who is editing the table; empty: nobody, the edit was left open
};

/// Reports every statement on stderr from now on.
void traceStatements();

/// An open repository; closed at the end.
class Session {
public:
    Session(const GlobalOptions& options, Start start);
    ~Session();
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    /// What start-up brought back.
    const std::vector<LeftBehind>& broughtBack() const { return m_broughtBack; }
    /// What it could not bring back, and why.
    const std::vector<LeftBehind>& stuck() const { return m_stuck; }
    const korodbc::host::HostError& reason() const { return m_reason; }
    /// Why databases that edits are recovered in cannot be used.
    const std::vector<std::string>& unusable() const { return m_unusable; }

private:
    void recover();
    std::vector<LeftBehind> m_broughtBack, m_stuck;
    std::vector<std::string> m_unusable;
    korodbc::host::HostError m_reason;
};

/// The data sources of the repository, opened or not.
std::vector<Source> allSources();
/// Opens the database of a source; false when that fails, for the reason that the host gives.
bool canBeUsed(const Source& source);
/// The data sources that can be used.
std::vector<Source> usableSources();
/// A data source by its name, "Details", or a country add-in by its id or name. Throws when there is none, or,
/// unless `evenBroken`, when its database cannot be used.
Source sourceNamed(const std::string& name, bool evenBroken = false);
/// Copies of detail tables in all databases that can be used, or in one of them.
std::vector<LeftBehind> copiesLeftBehind();
std::vector<LeftBehind> copiesLeftBehind(const Source& source);
/// Throws when an edit of that table, or of any table of the source, was left open and could not be brought back:
/// what is written now would be lost when that comes to pass.
void refuseStuck(const Source& source, const std::string& table = {});
/// Says in one line on stderr when the table, or any of the source, is being edited or has an edit left open: what
/// is read from it is not confirmed.
void noteOpenEdits(const Source& source, const std::string& table = {});

/// " (did you mean A or B?)" from the names that are nearest, or nothing, also when the wanted one is among them.
std::string nearest(const std::string& wanted, const std::vector<std::string>& names);
bool sameName(const std::string& a, const std::string& b);
std::string quote(const std::string& name);
/// "1 row", "2 rows".
std::string counted(long number, const std::string& thing);
