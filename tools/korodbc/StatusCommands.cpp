#include "Commands.h"
#include "CurrentDatabase.h"
#include "DetailFile.h"

#include <cstdio>
#include <exception>

using namespace korodbc::host;

namespace {

std::string placeOf(const LeftBehind& copy) { return copy.table + " (" + copy.source.name + ")"; }

/// The tables of the copies, each once.
std::string tablesOf(const std::vector<LeftBehind>& copies)
{
    std::string tables;
    for (const LeftBehind& copy : copies)
        if (tables.find(placeOf(copy)) == std::string::npos)
            tables += (tables.empty() ? "" : ", ") + placeOf(copy);
    return tables;
}

/// The databases that cannot be used or are damaged; returns what to do about the last one.
std::string printBroken(int& usable, int& all)
{
    std::string error;
    for (const SourceState& state : sources()) {
        ++all;
        usable += state.usable ? 1 : 0;
        if (state.usable)
            continue;
        std::printf("Cannot be used: %s\n", state.error.c_str());
        error = state.error + remedy({state.trouble, state.error}, state.name);
    }
    for (const Source& source : usableSources()) {
        try {
            checkSound(source);
        } catch (const Failure& damaged) {
            std::printf("Damaged: data source %s\n", source.name.c_str());
            error = damaged.message;
        }
    }
    return error;
}

/// True when there are claims.
bool printClaims()
{
    Sheet sheet{{{"Source", false}, {"Table", false}, {"By", false}}, {}};
    for (const Source& source : usableSources())
        for (const ClaimedTable& claim : claimedByOthers(source.dsn, source.index))
            sheet.rows.push_back({source.name, claim.table, claim.holder});
    if (sheet.rows.empty())
        return false;
    std::puts("Being edited:");
    printText(sheet);
    return true;
}

void printLeftOpen(bool edited, const char* where)
{
    std::vector<LeftBehind> copies = copiesLeftBehind();
    std::erase_if(copies, [](const LeftBehind& copy) { return !copy.holder.empty(); });
    if (copies.empty()) {
        std::printf("No edit %s open%s: no %stable has a copy.\n", edited ? "was left" : "is", where,
                    edited ? "other " : "");
        return;
    }
    std::printf(
        "An edit was left open: %s of tables. The next command that writes, or \"korodbc recover\", brings "
        "them back.\n",
        copies.size() == 1 ? "1 copy" : (std::to_string(copies.size()) + " copies").c_str());
    Sheet sheet{{{"Source", false}, {"Table", false}, {"Depth", true}, {"Copy", false}}, {}};
    for (const LeftBehind& copy : copies)
        sheet.rows.push_back({copy.source.name, copy.table, std::to_string(copy.depth), copy.copy});
    printText(sheet);
}

void printDifferences(const char* where)
{
    bool differs = false;
    for (const Source& source : usableSources()) {
        const std::string differences = tableDifferences(source.dsn, source.index);
        if (differences.empty())
            continue;
        if (!differs)
            std::puts("Tables that differ from their record types:");
        differs = true;
        std::printf("%s: %s", source.name.c_str(), differences.c_str());
    }
    if (!differs)
        std::printf("All tables%s agree with their record types.\n", where);
}

} // namespace

StartedSession::StartedSession(const GlobalOptions& options)
    : m_session(options, options.start), m_exceptions(std::uncaught_exceptions())
{
    if (!m_session.broughtBack().empty())
        std::fprintf(stderr, "korodbc: note: an edit was left open; brought back to the state before it: %s\n",
                     tablesOf(m_session.broughtBack()).c_str());
}

StartedSession::~StartedSession()
{
    if (std::uncaught_exceptions() > m_exceptions)
        return;
    if (!m_session.stuck().empty())
        std::fprintf(stderr,
                     "korodbc: note: an edit that was left open could not be taken back: %s; see: korodbc "
                     "recover\n",
                     tablesOf(m_session.stuck()).c_str());
    if (!m_session.unusable().empty())
        std::fprintf(stderr, "korodbc: note: %s\n", singleLine(m_session.unusable().front()).c_str());
}

std::string copyPlace(const LeftBehind& copy) { return copy.copy + " (" + copy.source.name + ")"; }

void runStatus(const GlobalOptions& global)
{
    const Session session(global, Start::Look);
    int usable = 0, all = 0;
    const std::string error = printBroken(usable, all);
    const char* const where = usable == all ? "" : " in the others";
    std::printf("Repository %s: %d of %d data sources can be used.\n", global.repository.c_str(), usable, all);
    printLeftOpen(printClaims(), where);
    printDifferences(where);
    takeReadGaps(); // told among the differences
    if (!error.empty())
        throw Failure{kNoRepository, error};
}

void runRecover(const GlobalOptions& global, bool discard)
{
    const Session session(global, Start::Write);
    if (!session.broughtBack().empty()) {
        std::puts("Brought back to the state before the edit that was left open:");
        for (const LeftBehind& copy : session.broughtBack())
            std::printf("  %s in %s, from %s\n", copy.table.c_str(), copy.source.name.c_str(), copy.copy.c_str());
    } else if (session.stuck().empty() && session.unusable().empty()) {
        std::puts("Nothing to bring back: no edit was left open.");
    }
    if (!session.stuck().empty() && !discard) {
        // only a copy that will not come back at a better time is worth putting aside
        const HostError reason = session.reason().text.empty()
                                     ? HostError{FailureKind::Layout, "the copy does not fit the table"}
                                     : session.reason();
        const bool forGood = reason.kind == FailureKind::Refused || reason.kind == FailureKind::Layout ||
                             reason.kind == FailureKind::Damaged;
        throw Failure{
            kFailed,
            "what an unfinished edit left cannot be brought back: " + tablesOf(session.stuck()) +
                (forGood ? ": " + reason.text + "; to go on with the tables as they are: korodbc recover --discard"
                         : advised(reason))};
    }
    for (const LeftBehind& copy : session.stuck()) {
        const CurrentDatabase current(copy.source);
        KorString aside;
        const auto type = static_cast<KorOdbcMan::eTableType>(copy.type);
        if (KorOdbcMan::putCopyAside(type, static_cast<KorOdbcMan::eCopyDepth>(copy.depth), aside) != 1)
            throw Failure{kFailed, "copy " + copyPlace(copy) + " cannot be put aside" + advised(lastFailure())};
        std::printf("Put aside: %s, as table %s; %s stays as it is.\n", copyPlace(copy).c_str(),
                    aside.toUtf8().c_str(), copy.table.c_str());
    }
    if (!session.unusable().empty())
        throw Failure{kNoRepository, session.unusable().front()};
}
