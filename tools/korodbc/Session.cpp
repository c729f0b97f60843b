#include "Session.h"

#include "CurrentDatabase.h"
#include "Output.h"
#include "repository/Manifest.h"

#include <korodbc/addins/AddInManagerInterface.h>
#include <korodbc/edit/KorOdbcMan.h>
#include <korodbc/host/ProgressSink.h>
#include <korodbc/repository/KorDatabaseAccess.h>
#include <korodbc/roots/KorAssert.h>
#include <korodbc/startup/KorOdbcDSNDefinitions.h>

#include <algorithm>
#include <charconv>
#include <cstdio>

using namespace korodbc::host;

namespace {

bool traced = false;

void traceEvent(const StatementEvent& event)
{
    const bool known = event.dsn < KorDSNDefinitions::kNumberOfDataSources;
    std::string place = known ? KorDSNDefinitions::m_DataSourceNames[event.dsn].toUtf8() : "-";
    if (event.index != KorDSNDefinitions::kBase)
        place += "/" + std::to_string(event.index);
    const bool ofLibrary = event.origin == StatementEvent::Origin::Library;
    std::fprintf(stderr, "trace  %-16s  %-7s  %-6s  %s%s\n", place.c_str(), ofLibrary ? "library" : "host",
                 event.result == 1 ? "ok" : "FAILED", singleLine(event.sql.toUtf8()).c_str(),
                 event.error.isEmpty() ? "" : (" -- " + singleLine(event.error.toUtf8())).c_str());
}

void assertionRaised(const char* expression, const char* source, int line, void*)
{
    // what failed is told by the operation's own message
    if (traced)
        std::fprintf(stderr, "trace  assertion \"%s\" (%s, line %d)\n", expression, source, line);
}

std::size_t editDistance(const std::wstring_view a, const std::wstring_view b)
{
    std::vector<std::size_t> row(b.size() + 1);
    for (std::size_t j = 0; j <= b.size(); ++j)
        row[j] = j;
    for (std::size_t i = 1; i <= a.size(); ++i) {
        std::size_t diagonal = row[0];
        row[0] = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const std::size_t above = row[j];
            row[j] = std::min({above + 1, row[j - 1] + 1, diagonal + (a[i - 1] == b[j - 1] ? 0 : 1)});
            diagonal = above;
        }
    }
    return row[b.size()];
}

std::filesystem::path folder; // of the open repository

void add(std::vector<Source>& sources, eDSN dsn, eIndex index, const std::string& name, const std::string& id)
{
    const KorDSNRequest request(dsn, index);
    KorString connection;
    Source source{dsn, index, name, id, {}, false};
    std::string error;
    ConnectionTarget target;
    if (KorDatabaseAccess::getConnectionString(dsn, connection) != 1 || connection.isEmpty() ||
        !targetOfConnection(connection.toUtf8(), folder, target, error))
        return;
    source.file = target.file;
    source.readOnly = target.readOnly;
    sources.push_back(source);
}

/// Sources that hold detail tables: without them nothing can be recovered.
bool holdsDetails(eDSN dsn)
{
    return dsn == KorDSNDefinitions::kDetails || dsn == KorDSNDefinitions::kAddin ||
           dsn == KorDSNDefinitions::kConfiguration || dsn == KorDSNDefinitions::kCountryAddin;
}

} // namespace

Failure unreadable(std::string_view table)
{
    return {kFailed, "table " + std::string(table) + " cannot be read" + because()};
}

void traceStatements()
{
    traced = true;
    setStatementObserver(traceEvent);
}

Session::Session(const GlobalOptions& options, Start start)
{
    KorAssert::setHandler(assertionRaised);
    if (options.trace)
        traceStatements();
    std::error_code code;
    if (std::filesystem::exists(options.repository, code) &&
        !std::filesystem::is_directory(options.repository, code))
        throw Failure{kNoRepository,
                      options.repository + " is a file; name the repository's folder with --repository"};
    std::string error;
    if (!openRepository(options.repository, error, start == Start::Look ? Access::Look : Access::Write))
        throw Failure{kNoRepository, error};
    folder = options.repository;
    setProgressSink(transferProgress());
    KorOdbcMan::InitializeStatics::build();
    if (start == Start::Write)
        recover();
}

Session::~Session()
{
    setProgressSink(nullptr);
    closeRepository();
    KorOdbcMan::InitializeStatics::release();
    setStatementObserver({});
}

void Session::recover()
{
    if (KorOdbcDSNDefinitions::initOEDbConnections() != 1)
        throw Failure{kNoRepository,
                      "the database engine cannot be used" + advised(lastFailure(), "Configuration")};
    for (const Source& source : allSources())
        if (holdsDetails(source.dsn) && !canBeUsed(source))
            m_unusable.push_back(lastError() + remedy(lastFailure(), source.name));
    m_broughtBack = copiesLeftBehind();
    const bool initialized = KorOdbcMan::initializeTables() == 1;
    m_reason = lastFailure();
    m_stuck = copiesLeftBehind();
    std::erase_if(m_broughtBack, [&](const LeftBehind& before) {
        return std::any_of(m_stuck.begin(), m_stuck.end(), [&](const LeftBehind& after) {
            return after.copy == before.copy && after.source.name == before.source.name;
        });
    });
    std::erase_if(m_stuck, [](const LeftBehind& copy) { return !copy.holder.empty(); });
    if (initialized && m_stuck.empty())
        m_reason = {};
}

std::vector<Source> allSources()
{
    std::vector<Source> sources;
    for (unsigned dsn = 0; dsn < KorDSNDefinitions::kNumberOfDataSources; ++dsn)
        if (dsn != KorDSNDefinitions::kCountryAddin)
            add(sources, static_cast<eDSN>(dsn),
                dsn == KorDSNDefinitions::kAddin ? KorDSNDefinitions::kFirstAddin : KorDSNDefinitions::kBase,
                KorDSNDefinitions::m_DataSourceNames[dsn].toUtf8(), {});
    AddInManagerInterface* manager = AddInManagerInterface::getInstance();
    KorArray<KorAddInId> ids;
    manager->getInstalledCountryAddInIds(ids);
    for (int position = 0; position < ids.length(); ++position) {
        const KorAddIn* addIn = manager->getAddIn(ids[position]);
        const std::string id = ids[position].getText().toUtf8();
        add(sources, KorDSNDefinitions::kCountryAddin, KorDSNManager::getAddInIdx(position),
            "CountryAddin " + (addIn == nullptr ? id : addIn->getName().toUtf8()), id);
    }
    return sources;
}

bool canBeUsed(const Source& source)
{
    const KorDSNRequest request(source.dsn, source.index);
    KorArray<KorString> names;
    return KorDatabaseAccess::getTablesNames(source.dsn, names) == 1;
}

std::vector<Source> usableSources()
{
    std::vector<Source> sources = allSources();
    std::erase_if(sources, [](const Source& source) { return !canBeUsed(source); });
    return sources;
}

Source sourceNamed(const std::string& name, bool evenBroken)
{
    std::vector<std::string> names;
    for (const Source& source : allSources()) {
        names.push_back(source.name);
        const bool isIt =
            sameName(source.name, name) ||
            (!source.id.empty() && (sameName(source.id, name) || sameName(source.name, "CountryAddin " + name)));
        if (!isIt)
            continue;
        if (!evenBroken && !canBeUsed(source))
            throw Failure{kNoRepository, lastError() + remedy(lastFailure(), source.name)};
        return source;
    }
    throw Failure{kNotFound, "there is no data source " + quote(name) + nearest(name, names) +
                                 "; list them with: korodbc sources"};
}

std::vector<LeftBehind> copiesLeftBehind(const Source& source)
{
    std::vector<LeftBehind> copies;
    if (!holdsDetails(source.dsn) || !canBeUsed(source))
        return copies;
    const std::vector<ClaimedTable> claimed = claimedByOthers(source.dsn, source.index);
    const KorDSNRequest request(source.dsn, source.index);
    for (int type = 0; type < KorOdbcMan::kTableTypes; ++type) {
        KorString table;
        KorOdbcMan::getTableName(static_cast<KorOdbcMan::eTableType>(type), table);
        for (int depth = 0; depth < KorOdbcMan::kCopies; ++depth) {
            const KorString copy = KorDatabaseAccess::getTableName(table + KorOdbcMan::ccKorVELCopyString[depth]);
            if (KorDatabaseAccess::doesTableExists(source.dsn, copy) != 1)
                continue;
            copies.push_back({type, table.toUtf8(), copy.toUtf8(), depth, source, {}});
            for (const ClaimedTable& claim : claimed)
                if (sameName(claim.table, table.toUtf8()))
                    copies.back().holder = claim.holder;
        }
    }
    return copies;
}

std::vector<LeftBehind> copiesLeftBehind()
{
    std::vector<LeftBehind> copies;
    for (const Source& source : allSources())
        for (LeftBehind& copy : copiesLeftBehind(source))
            copies.push_back(std::move(copy));
    return copies;
}

std::string sourceOption(const Source& source)
{
    return source.name == "Details"
               ? ""
               : " --source " + (source.name.find(' ') == std::string::npos ? source.name : quote(source.name));
}

void refuseStuck(const Source& source, const std::string& table)
{
    const auto isStuck = [&](const LeftBehind& copy) {
        return copy.holder.empty() && (table.empty() || sameName(copy.table, table));
    };
    // another program may have left it since this one started
    if (std::ranges::any_of(copiesLeftBehind(source), isStuck)) {
        const CurrentDatabase current(source);
        KorOdbcMan::bringBackLeftCopies();
    }
    for (const LeftBehind& copy : copiesLeftBehind(source))
        if (isStuck(copy))
            throw Failure{kFailed, "an edit of " + copy.table + " (" + source.name +
                                       ") was left open and could not be brought back; see: korodbc recover"};
}

void noteOpenEdits(const Source& source, const std::string& table)
{
    std::string edited, left;
    for (const LeftBehind& copy : copiesLeftBehind(source)) {
        std::string& list = copy.holder.empty() ? left : edited;
        const std::string text = copy.table + (copy.holder.empty() ? "" : " by " + copy.holder);
        if ((table.empty() || sameName(copy.table, table)) && list.find(text) == std::string::npos)
            list += (list.empty() ? "" : "; ") + text;
    }
    if (!edited.empty())
        std::fprintf(stderr, "korodbc: note: being edited in %s, what it holds is not confirmed yet: %s\n",
                     source.name.c_str(), singleLine(edited).c_str());
    if (!left.empty())
        std::fprintf(stderr,
                     "korodbc: note: an edit was left open in %s, what it wrote is shown: %s; take it back with: "
                     "korodbc recover\n",
                     source.name.c_str(), singleLine(left).c_str());
}

std::string nearest(const std::string& wanted, const std::vector<std::string>& names)
{
    const KorString folded = KorString::fromUtf8(wanted).foldedCase();
    const auto length = static_cast<std::size_t>(folded.length());
    const std::size_t most = std::min(2 + length / 5, length / 2); // half of a short name has to stay
    std::vector<std::pair<std::size_t, std::string>> near;
    for (const std::string& name : names) {
        if (name == wanted) // the name is not what is wrong
            return {};
        const KorString other = KorString::fromUtf8(name).foldedCase();
        std::size_t distance = editDistance(folded, other);
        const bool isPart = length >= 3 && other.find(folded) >= 0;
        if (isPart)
            distance = std::min<std::size_t>(distance, 2);
        if (isPart || distance <= most)
            near.emplace_back(distance, name);
    }
    std::stable_sort(near.begin(), near.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
    std::string text;
    // an exact or very near name needs no others beside it
    for (std::size_t i = 0;
         i < near.size() && i < 3 && near[i].first <= near[0].first + (near[0].first > 1 ? 1 : 0); ++i)
        text += (i == 0 ? " (did you mean " : " or ") + quote(near[i].second);
    return text.empty() ? text : text + "?)";
}

bool sameName(const std::string& a, const std::string& b)
{
    return KorString::fromUtf8(a).compareNoCase(KorString::fromUtf8(b)) == 0;
}

std::string quote(const std::string& name) { return '"' + singleLine(name) + '"'; }

std::string counted(long number, const std::string& thing)
{
    return std::to_string(number) + " " + thing + (number == 1 ? "" : "s");
}
