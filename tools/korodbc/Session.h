#pragma once

#include "EmbeddedHost.h"
#include "repository/KorDSNManager.h"

#include <filesystem>
#include <string>
#include <vector>

enum ExitCode { kOk = 0, kFailed = 1, kUsage = 2, kNoRepository = 3, kNotFound = 4 };

/// Ends a command: one line for the user, and the exit code.
struct Failure {
    ExitCode code;
    std::string message;
};

struct GlobalOptions {
    std::string program = "korodbc"; // as the user called it
    std::string repository = "repository";
    bool trace = false;
};

/// A data source of the open repository, as the user names it.
struct Source {
    eDSN dsn = KorDSNDefinitions::kDetails;
    eIndex index = KorDSNDefinitions::kBase;
    std::string name;
    std::string id;   // of a country add-in
    std::string file; // path of the database
};

/// A copy that an unfinished edit left.
struct LeftBehind {
    std::string table;
    std::string copy;
    int depth;
    Source source;
};

/// Reports every statement on stderr from now on.
void traceStatements();

/// An open repository; closed at the end.
class Session {
public:
    enum class Start {
        Recover,  // as a host starts: copies left behind are brought back
        LookOnly, // nothing is changed
    };
    Session(const GlobalOptions& options, Start start);
    ~Session();
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    /// What start-up brought back.
    const std::vector<LeftBehind>& broughtBack() const { return m_broughtBack; }

private:
    void recover();
    std::vector<LeftBehind> m_broughtBack;
};

/// The data sources that can be used.
std::vector<Source> usableSources();
/// A data source by its name, "Details", or a country add-in by its id or name.
Source sourceNamed(const std::string& name);
/// Copies of detail tables in all databases.
std::vector<LeftBehind> copiesLeftBehind();

/// What to do when a database cannot be used, from the engine's reason.
std::string remedy(const std::string& error);
/// ": reason" as the database engine gives it, empty when it gave none.
std::string because();
/// " (did you mean A or B?)" from the names that are nearest, or nothing.
std::string nearest(const std::string& wanted, const std::vector<std::string>& names);
bool sameName(const std::string& a, const std::string& b);
std::string quote(const std::string& name);
/// "1 row", "2 rows".
std::string counted(long number, const std::string& thing);
