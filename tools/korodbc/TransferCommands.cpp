#include "Commands.h"
#include "DetailFile.h"
#include "Records.h"
#include "repository/Manifest.h"
#include "repository/NewPath.h"

#include <korodbc/records/detail/DetailProcessRecords.h>
#include <korodbc/records/detail/DetailStyleRecords.h>
#include <korodbc/repository/KorDatabaseAccess.h>
#include <korodbc/repository/RecordAccess.h>
#include <korodbc/transfer/KorDetailProcessTableDependencies.h>
#include <korodbc/transfer/KorDetailTableDependencies.h>

#include <cstdio>
#include <filesystem>
#include <optional>
#include <set>

namespace fs = std::filesystem;
using korodbc::host::NewPath;
using Exports = KorODBCDetailStyleExports;

namespace {

/// Why a transfer failed, and what to do about it.
std::string transferError(Detail kind, const std::string& what)
{
    KorString message;
    Exports::GetErrorMessage(message, 1);
    const korodbc::host::HostError& reason = korodbc::host::lastFailure();
    if (message.isEmpty())
        return what + advised(reason);
    const std::string text = what + ": " + message.toUtf8() + (message.endsWith(L"!") ? "" : "!");
    if (message.find(L"older than") >= 0)
        return text + " Bring the database up to version 5.1 first";
    if (message.find(L"dependencies") >= 0 && !reason.text.empty())
        return text + " (" + reason.text + ")" + remedy(reason);
    if (message.find(L"dependencies") >= 0)
        return text + " A row that it refers to, or a detail master, is missing; see: korodbc tree" +
               (kind == Detail::Process ? " --process" : "");
    return text + (reason.text.empty() ? "" : " (" + reason.text + ")") + remedy(reason);
}

std::string absolute(const std::string& file)
{
    std::error_code code;
    return fs::absolute(file, code).lexically_normal().string();
}

/// Keeps the connection of a data source, and lets go of a file that was used in its place.
class KeptConnection {
public:
    KeptConnection(eDSN dsn, const std::string& file) : m_dsn(dsn), m_file(KorString::fromUtf8(file))
    {
        KorDatabaseAccess::getConnectionString(dsn, m_before);
    }
    ~KeptConnection()
    {
        KorDatabaseAccess::setConnectionString(m_dsn, m_before);
        KorDatabaseAccess::detachDatabase(m_file);
    }
    KeptConnection(const KeptConnection&) = delete;
    KeptConnection& operator=(const KeptConnection&) = delete;

private:
    eDSN m_dsn;
    KorString m_file, m_before;
};

/// A file that is only read, in the place of a data source, until this object goes.
class AttachedFile {
public:
    AttachedFile(eDSN dsn, const std::string& file) : m_kept(dsn, file)
    {
        const std::string connection = korodbc::host::connectionTo(absolute(file), true);
        if (KorDatabaseAccess::setConnectionString(dsn, KorString::fromUtf8(connection)) != 1)
            throw Failure{kFailed, file + " cannot be attached" + advised(korodbc::host::lastFailure())};
    }

private:
    const KeptConnection m_kept;
};

/// Whether processes take their styles along, while this object lives.
class StylesTaken {
public:
    explicit StylesTaken(bool taken) { KorDetailProcessTableDependencies::m_bDeepCopyWithDetailStyles = taken; }
    ~StylesTaken() { KorDetailProcessTableDependencies::m_bDeepCopyWithDetailStyles = 0; }
    StylesTaken(const StylesTaken&) = delete;
    StylesTaken& operator=(const StylesTaken&) = delete;
};

/// A transfer is stored as a whole; one that fails leaves everything as it was.
class Transfer {
public:
    /// `file` is named in messages for `path`, where it is in the making.
    Transfer(Detail kind, std::string what, std::string path = {}, std::string file = {})
        : m_kind(kind), m_what(std::move(what)), m_path(std::move(path)), m_file(std::move(file))
    {
    }
    /// Throws unless the transfer succeeded and was stored.
    void end(int result)
    {
        if (result == 1 && m_batch.end(1) == 1)
            return;
        Failure failure{kFailed, transferError(m_kind, m_what)};
        for (std::size_t at; !m_path.empty() && (at = failure.message.find(m_path)) != std::string::npos;)
            failure.message.replace(at, m_path.size(), m_file);
        if (result != 1)
            m_batch.undo();
        Exports::setExportInProgress(0);
        throw failure;
    }

private:
    const Detail m_kind;
    const std::string m_what, m_path, m_file;
    KorDatabaseBatch m_batch;
};

/// The styles that the items of a process's style maps name.
struct MappedStyles {
    int items = 0;
    std::set<int> keys;
};

MappedStyles mappedStyles(int process)
{
    MappedStyles styles;
    StructDetailProcessDefinition definition;
    StructDetailProcessDefinitionMarshal::getStructByKey(process, definition);
    std::set<int> maps;
    for (const int key : definition.steps) {
        StructDetailProcessStep step;
        StructDetailStyleMap map;
        if (StructDetailProcessStepMarshal::getStructByKey(key, step) != 1 ||
            StructDetailStyleMapMarshal::getStructByKeyWithItems(step.styleMap, map) != 1 ||
            !maps.insert(map.key).second)
            continue;
        styles.items += map.items.length();
        for (const StructDetailStyleMapItem& item : map.items)
            styles.keys.insert(item.detailStyle);
    }
    return styles;
}

/// Those of the keys that no style of the requested data source has.
std::vector<int> withoutStyle(const std::set<int>& keys)
{
    std::vector<int> missing;
    for (const int key : keys) {
        StructDetailStyle style;
        if (StructDetailStyleMarshal::getStructByKey(key, style) != 1)
            missing.push_back(key);
    }
    return missing;
}

std::string listed(const std::vector<int>& keys)
{
    std::string list;
    for (std::size_t i = 0; i < keys.size() && i < 10; ++i)
        list += (i == 0 ? "" : ", ") + std::to_string(keys[i]);
    return list + (keys.size() > 10 ? ", ..." : "");
}

/// Throws when a process is to take styles along that its database, the requested one, does not have.
void requireStyles(const NamedDetail& process, const std::string& place)
{
    const std::vector<int> missing = withoutStyle(mappedStyles(process.key).keys);
    if (!missing.empty())
        throw Failure{kFailed, "process " + quote(process.name) + " names " +
                                   counted(static_cast<long>(missing.size()), "detail style") + " that " + place +
                                   " does not have (keys " + listed(missing) +
                                   "); transfer it with --without-styles"};
}

/// Key that the transferred style or process got in the target; it is the first one collected.
int newKeyOf(Detail kind, int sourceKey)
{
    const rowInfo identity{KorString::fromUtf8(kindOf(kind).root().record), 0, sourceKey};
    long key = -1;
    (kind == Detail::Style ? KorDetailTableDependencies::m_writeTransferKeyMap
                           : KorDetailProcessTableDependencies::m_writeTransferKeyMap)
        .lookup(identity, key);
    return static_cast<int>(key);
}

/// What the summary says about a process without its styles, and the note about keys that name nothing.
std::string keptKeys(const Moved& moved)
{
    if (moved.keptItems == 0)
        return "";
    if (!moved.unknownStyles.empty())
        std::fprintf(
            stderr,
            "korodbc: note: %s has no detail styles with the keys %s, which the style maps of the process "
            "name; transfer those styles too, or the process with its styles\n",
            moved.into.c_str(), listed(moved.unknownStyles).c_str());
    return " " +
           (moved.keptItems == 1
                ? std::string("1 item of its style maps keeps the style key")
                : std::to_string(moved.keptItems) + " items of its style maps keep the style keys") +
           " of " + moved.from + ", which can mean other styles elsewhere.";
}

/// The style or process of the attached file that is to be imported.
NamedDetail chosenIn(const ImportOptions& options)
{
    const DetailKind& kind = kindOf(options.kind);
    const std::vector<std::string> names = detailNames(options.kind);
    if (names.empty() && !because().empty())
        throw Failure{kFailed, options.file + " cannot be read" + because()};
    if (names.empty())
        throw Failure{kNotFound, options.file + " holds no " + kind.noun +
                                     "; export one into it with: korodbc export-" + kind.shortNoun};
    if (options.name.empty() && names.size() > 1) {
        std::string list;
        for (std::size_t i = 0; i < names.size() && i < 10; ++i)
            list += (i == 0 ? "" : ", ") + quote(names[i]);
        throw Failure{kUsage, options.file + " holds " + std::to_string(names.size()) + " " + kind.plural +
                                  "; name one with --" + kind.shortNoun + ": " + list +
                                  (names.size() > 10 ? ", ..." : "")};
    }
    const std::string wanted = options.name.empty() ? names.front() : options.name;
    const RecordDescription& type = kind.root();
    const AnyRecord record(type);
    if (!readRecord(type, wanted, record.get()))
        throw Failure{kNotFound,
                      options.file + " holds no " + kind.noun + " " + quote(wanted) + nearest(wanted, names)};
    return {type.keyOf(record.get()), cellText(*type.runNameColumn(), record.get())};
}

} // namespace

std::string rowsOf(const Moved& moved)
{
    return counted(moved.rows, "row") + " written" +
           (moved.reused > 0 ? " and " + std::to_string(moved.reused) + " reused" : "");
}

Moved exportDetail(const ExportOptions& options)
{
    const DetailKind& kind = kindOf(options.kind);
    const Source source = sourceNamed(options.source);
    if (source.dsn != KorDSNDefinitions::kDetails && source.dsn != KorDSNDefinitions::kAddin)
        throw Failure{kUsage, kind.plural + " are exported from Details or Addin, not from " + source.name};
    const NamedDetail detail = detailNamed(options.kind, options.name, source);
    checkSound(source);
    MappedStyles styles;
    if (options.kind == Detail::Process) {
        const KorDSNRequest request(source.dsn, source.index);
        if (options.withStyles)
            requireStyles(detail, source.name);
        else
            styles = mappedStyles(detail.key);
    }
    const bool isNew = checkExportTarget(options.file);
    eDSN dsn;
    eIndex index;
    KorString connection;
    Exports::GetDSNAndIndexToUse(source.dsn, dsn, index, connection);
    // a new file appears whole or not at all
    std::optional<NewPath> making;
    if (isNew)
        making.emplace(absolute(options.file));
    const std::string file = isNew ? making->path().string() : options.file;
    const std::string what = kind.shortNoun + " " + quote(options.name) + " was not exported";
    if (isNew && !making->error().text.empty())
        throw Failure{kFailed, what + advised(making->error())};
    {
        const KeptConnection kept(dsn, file);
        const StylesTaken taken(options.withStyles);
        Transfer transfer(options.kind, what, isNew ? file : "", options.file);
        transfer.end(Exports::exportDetail(kind.type, KorOdbcKey(detail.key), source.dsn, source.index,
                                           KorString::fromUtf8(file)));
    }
    korodbc::host::HostError error;
    if (isNew && making->place(error) != NewPath::Placed::Yes)
        throw Failure{kFailed, what + ": " + error.text + "; another program made it; try again"};
    Moved moved{detail.name,
                detail.name,
                source.name,
                options.file,
                newKeyOf(options.kind, detail.key),
                KorDetailTableDependencies::m_RowsWritten,
                KorDetailTableDependencies::m_RowsReused,
                styles.items,
                {}};
    if (styles.items > 0) {
        const AttachedFile attached(dsn, options.file);
        const KorDSNRequest request(dsn, index);
        moved.unknownStyles = withoutStyle(styles.keys);
    }
    return moved;
}

void runExport(const GlobalOptions& global, const ExportOptions& options)
{
    const StartedSession session(global);
    const Moved moved = exportDetail(options);
    noteOpenEdits(sourceNamed(options.source));
    const std::string kept = keptKeys(moved);
    std::printf("Exported %s with everything that it refers to, %s%s, to %s.%s\n", quote(moved.detail).c_str(),
                options.withStyles ? "" : "except its detail styles, ", rowsOf(moved).c_str(), moved.into.c_str(),
                kept.c_str());
}

Moved importDetail(const ImportOptions& options)
{
    const DetailKind& kind = kindOf(options.kind);
    const Source target = sourceNamed(options.into);
    if (target.dsn != KorDSNDefinitions::kDetails && target.dsn != KorDSNDefinitions::kAddin &&
        target.dsn != KorDSNDefinitions::kCountryAddin)
        throw Failure{kUsage, "data source " + target.name +
                                  " holds no detail tables; import into Details, Addin or a "
                                  "country add-in"};
    refuseStuck(target);
    checkSound(target);
    checkImportFile(options.file);
    // the file takes the place of a source that is not the target
    const eDSN dsn =
        target.dsn == KorDSNDefinitions::kAddin ? KorDSNDefinitions::kDetails : KorDSNDefinitions::kAddin;
    const eIndex index =
        dsn == KorDSNDefinitions::kAddin ? KorDSNDefinitions::kFirstAddin : KorDSNDefinitions::kBase;
    refuseSameFile(options.file, target);
    const AttachedFile attached(dsn, options.file);
    noteOpenEdits({dsn, index, options.file, {}, options.file, true});
    NamedDetail detail;
    MappedStyles styles;
    {
        const KorDSNRequest request(dsn, index);
        detail = chosenIn(options);
        if (options.kind == Detail::Process && options.withStyles)
            requireStyles(detail, options.file);
        else if (options.kind == Detail::Process)
            styles = mappedStyles(detail.key);
    }
    const StylesTaken taken(options.withStyles);
    Transfer transfer(options.kind, kind.shortNoun + " " + quote(detail.name) + " was not imported");
    transfer.end(Exports::importDetail(kind.type, KorOdbcKey(detail.key), dsn, index, target.dsn, target.index));
    const int key = newKeyOf(options.kind, detail.key);
    const int rows = KorDetailTableDependencies::m_RowsWritten, reused = KorDetailTableDependencies::m_RowsReused;
    const KorDSNRequest request(target.dsn, target.index);
    return {detail.name,  runNameOf(kind.root(), key), options.file, target.name, key, rows, reused,
            styles.items, withoutStyle(styles.keys)};
}

void runImport(const GlobalOptions& global, const ImportOptions& options)
{
    const StartedSession session(global);
    const Moved moved = importDetail(options);
    const std::string kept = keptKeys(moved);
    std::printf("Imported %s into %s as %s, key %d; %s.%s\n", quote(moved.detail).c_str(), moved.into.c_str(),
                quote(moved.name).c_str(), moved.key, rowsOf(moved).c_str(), kept.c_str());
}
