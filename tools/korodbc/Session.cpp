#include "Session.h"

#include "addins/AddInManagerInterface.h"
#include "edit/KorOdbcMan.h"
#include "foundation/KorOdbcDSNDefinitions.h"
#include "Output.h"
#include "repository/KorDatabaseAccess.h"
#include "repository/Manifest.h"
#include "roots/KorAssert.h"
#include "roots/ProgressSink.h"

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
    Source source{dsn, index, name, id, {}};
    std::string error;
    ConnectionTarget target;
    if (KorDatabaseAccess::getConnectionString(dsn, connection) != 1 || connection.isEmpty() ||
        !targetOfConnection(connection.toUtf8(), folder, target, error))
        return;
    source.file = target.file;
    sources.push_back(source);
}

/// The data sources of the manifest, opened or not.
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

/// Opens the database of a source; false with lastError set when that fails.
bool canBeUsed(const Source& source)
{
    const KorDSNRequest request(source.dsn, source.index);
    KorArray<KorString> names;
    return KorDatabaseAccess::getTablesNames(source.dsn, names) == 1;
}

/// Sources that hold detail tables: without them nothing can be recovered.
bool holdsDetails(eDSN dsn)
{
    return dsn == KorDSNDefinitions::kDetails || dsn == KorDSNDefinitions::kAddin ||
           dsn == KorDSNDefinitions::kConfiguration || dsn == KorDSNDefinitions::kCountryAddin;
}

} // namespace

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
    if (!openRepository(options.repository, error))
        throw Failure{kNoRepository, error};
    folder = options.repository;
    setProgressSink(transferProgress());
    if (start == Start::LookOnly)
        return;
    for (const Source& source : allSources())
        if (holdsDetails(source.dsn) && !canBeUsed(source))
            throw Failure{kNoRepository, lastError() + remedy(lastError())};
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
        throw Failure{kNoRepository, "the database engine cannot be used" + because()};
    const std::vector<LeftBehind> before = copiesLeftBehind();
    const int initialized = KorOdbcMan::initializeTables();
    const std::vector<LeftBehind> after = copiesLeftBehind();
    if (initialized != 1 || !after.empty()) {
        const std::string table =
            after.empty() ? "" : " of " + after.front().table + " (" + after.front().source.name + ")";
        throw Failure{kNoRepository, "the copy" + table + " that an unfinished edit left cannot be brought back" +
                                         because() + "; make the database writable and run: korodbc recover"};
    }
    m_broughtBack = before;
}

std::vector<Source> usableSources()
{
    std::vector<Source> sources = allSources();
    std::erase_if(sources, [](const Source& source) { return !canBeUsed(source); });
    return sources;
}

Source sourceNamed(const std::string& name)
{
    std::vector<std::string> names;
    for (const Source& source : allSources()) {
        names.push_back(source.name);
        const bool isIt =
            sameName(source.name, name) ||
            (!source.id.empty() && (sameName(source.id, name) || sameName(source.name, "CountryAddin " + name)));
        if (!isIt)
            continue;
        if (!canBeUsed(source))
            throw Failure{kNoRepository, lastError() + remedy(lastError())};
        return source;
    }
    throw Failure{kNotFound, "there is no data source " + quote(name) + nearest(name, names) +
                                 "; list them with: korodbc sources"};
}

std::vector<LeftBehind> copiesLeftBehind()
{
    std::vector<LeftBehind> copies;
    for (const Source& source : allSources()) {
        if (!holdsDetails(source.dsn) || !canBeUsed(source))
            continue;
        const KorDSNRequest request(source.dsn, source.index);
        for (int type = 0; type < KorOdbcMan::kTableTypes; ++type) {
            KorString table;
            KorOdbcMan::getTableName(static_cast<KorOdbcMan::eTableType>(type), table);
            for (int depth = 0; depth < KorOdbcMan::kCopies; ++depth) {
                const KorString copy =
                    KorDatabaseAccess::getTableName(table + KorOdbcMan::ccKorVELCopyString[depth]);
                if (KorDatabaseAccess::doesTableExists(source.dsn, copy) == 1)
                    copies.push_back({table.toUtf8(), copy.toUtf8(), depth, source});
            }
        }
    }
    return copies;
}

std::string remedy(const std::string& error)
{
    const auto says = [&](const char* text) { return error.find(text) != std::string::npos; };
    if (says("readonly") || says("unable to open"))
        return "; make the file and its folder writable for you";
    if (says("locked"))
        return "; try again when the other program is done with it";
    return "; put a good copy of the file there, or correct the connection in " +
           (folder / Manifest::fileName).string();
}

std::string because()
{
    const std::string error = lastError();
    return error.empty() ? "" : ": " + error;
}

std::string nearest(const std::string& wanted, const std::vector<std::string>& names)
{
    const KorString folded = KorString::fromUtf8(wanted).foldedCase();
    std::vector<std::pair<std::size_t, std::string>> near;
    for (const std::string& name : names) {
        const KorString other = KorString::fromUtf8(name).foldedCase();
        std::size_t distance = editDistance(folded, other);
        if (folded.length() >= 3 && other.find(folded) >= 0)
            distance = std::min<std::size_t>(distance, 2);
        if (distance <= 2 + static_cast<std::size_t>(folded.length()) / 5)
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
