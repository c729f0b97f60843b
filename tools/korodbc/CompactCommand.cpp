#include "Advice.h"
#include "Commands.h"
#include "CurrentDatabase.h"
#include "DetailFile.h"
#include "Records.h"

#include <korodbc/records/detail/DetailObjectRecords.h>
#include <korodbc/records/Registry.h>
#include <korodbc/repository/KorDatabaseAccess.h>
#include <korodbc/roots/KorProgressCtrl.h>
#include <korodbc/transfer/KorODBCDetailStyleExports.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>

namespace {

using Compact = KorOdbcCompactDetailsTables;
using korodbc::host::FailureKind;
using korodbc::host::HostError;
using korodbc::host::lastError;
using korodbc::host::lastFailure;

struct Kind {
    const char* name;
    Compact::eCompactType type;
    bool onlyQualifierSets = false;
};

const Kind kinds[] = {
    {"styles", Compact::kCompactDetailStyles},
    {"processes", Compact::kCompactDetailProcesses},
    {"all", Compact::kCompactAll},
    {"qualifier-sets", Compact::kCompactDetailStyles, true},
};

const Kind& kindNamed(const std::string& name)
{
    for (const Kind& kind : kinds)
        if (name == kind.name)
            return kind;
    throw Failure{kUsage, quote(name) + " cannot be compacted; name styles, processes, all or qualifier-sets"};
}

Source sourceToCompact(const std::string& name)
{
    const Source source = sourceNamed(name);
    if (source.dsn != KorDSNDefinitions::kDetails && source.dsn != KorDSNDefinitions::kAddin)
        throw Failure{kUsage, "detail tables are compacted in Details or Addin, not in " + source.name};
    return source;
}

void keepTablesOf(const Kind& kind, KorArray<KorCompactedTable>& reports, std::vector<KorCompactedTable>& tables)
{
    const auto referring = {L"DetObjQualifierSet", L"DetObjReprMapsNew", L"DetViewDimPointSelection",
                            L"DetailStyleMapNew", L"NecessaryViewsConfiguration"};
    tables.clear();
    for (const KorCompactedTable& report : reports)
        if (!kind.onlyQualifierSets ||
            std::any_of(referring.begin(), referring.end(), [&](auto name) { return report.table == name; }))
            tables.push_back(report);
}

/// True when the keys of the qualifier sets of the requested data source are not 1, 2, 3, ...
bool qualifierSetsHaveGaps()
{
    KorArray<StructDetObjQualifierSet> sets;
    StructDetObjQualifierSetMarshal::getTable(sets);
    std::vector<int> keys;
    for (const StructDetObjQualifierSet& set : sets)
        keys.push_back(set.key);
    std::sort(keys.begin(), keys.end());
    for (std::size_t i = 0; i < keys.size(); ++i)
        if (keys[i] != static_cast<int>(i) + 1)
            return true;
    return false;
}

Failure unreadable(const Source& source)
{
    if (const KorString failure = Compact::getFailure(); !failure.isEmpty())
        return {kFailed, source.name + " cannot be compacted: " + failure.toUtf8()};
    HostError reason = lastFailure();
    for (const auto describe : records::all()) {
        const KorString table = KorString::fromUtf8(describe().table);
        if (records::isDetailTable(describe()) && KorDatabaseAccess::doesTableExists(source.dsn, table) != 1)
            reason = {FailureKind::Layout, "table " + table.toUtf8() + " is missing"};
    }
    return {kFailed, "the detail tables of " + source.name + " cannot be read" + advised(reason, source.name)};
}

Compacted preview(const Kind& kind, const Source& source, bool keep)
{
    Compacted planned;
    KorArray<KorCompactedTable> reports;
    KorArray<KorDetailReference> stranded;
    const int read = kind.onlyQualifierSets
                         ? Compact::previewQualifierSets(source.dsn, reports, stranded)
                         : Compact::previewCompactProcess(source.dsn, kind.type, reports, stranded);
    if (read != 1)
        throw unreadable(source);
    keepTablesOf(kind, reports, planned.tables);
    if (!keep)
        planned.stranded.assign(stranded.begin(), stranded.end());
    planned.nothingToDo = !kind.onlyQualifierSets || !qualifierSetsHaveGaps();
    for (KorCompactedTable& table : planned.tables) {
        table.deleted = keep ? 0 : table.deleted;
        planned.nothingToDo = planned.nothingToDo && table.redirected == 0 && table.deleted == 0;
    }
    return planned;
}

std::string firstOf(const std::vector<KorDetailReference>& references)
{
    std::string list;
    for (std::size_t i = 0; i < references.size() && i < 3; ++i)
        list += (i == 0 ? "" : "; ") + referenceText(references[i]);
    return list + (references.size() > 3 ? "; ..." : "");
}

void refuseStranded(const Kind& kind, const std::vector<KorDetailReference>& stranded)
{
    if (stranded.empty())
        return;
    const std::string safe =
        kind.type == Compact::kCompactAll ? "" : "run \"korodbc compact all\", which redirects them, or ";
    throw Failure{kFailed, counted(static_cast<long>(stranded.size()), "reference") +
                               " to rows that would be deleted " + (stranded.size() == 1 ? "is" : "are") +
                               " not redirected by compacting " + kind.name + " (" + firstOf(stranded) + "); " +
                               safe + "keep the rows with --keep"};
}

/// A new number must not give a reference that names nothing a meaning.
void refuseUnknownSets(const Source& source)
{
    KorArray<KorDetailReference> dangling;
    if (KorDetailReferences::getDangling(source.dsn, source.index, dangling) != 1)
        throw unreadable(source);
    std::vector<KorDetailReference> unknown;
    for (const KorDetailReference& reference : dangling)
        if (reference.target == KorString::fromUtf8(descriptionOf<StructDetObjQualifierSet>().table))
            unknown.push_back(reference);
    if (!unknown.empty())
        throw Failure{kFailed, counted(static_cast<long>(unknown.size()), "reference") +
                                   " to qualifier sets that do not exist would name others after renumbering (" +
                                   firstOf(unknown) + "); correct them first, see: korodbc check"};
}

/// Lets no copies be taken: what runs in one batch needs none.
class WithoutCopies {
public:
    WithoutCopies() { KorODBCDetailStyleExports::CancelBackupTables(1); }
    ~WithoutCopies() { KorODBCDetailStyleExports::CancelBackupTables(0); }
    WithoutCopies(const WithoutCopies&) = delete;
    WithoutCopies& operator=(const WithoutCopies&) = delete;
};

/// Throws, with everything as before, when the tables cannot be compacted.
void run(const Kind& kind, const Source& source, bool keep)
{
    KorProgressCtrl::setTitle(KorString::fromUtf8("Compacting " + source.name));
    const CurrentDatabase current(source);
    const WithoutCopies copies;
    KorDatabaseBatch batch;
    int result = KorDatabaseBatch::lock(source.dsn) == 1 ? KorOdbcMan::bringBackLeftCopies() : 0;
    HostError reason;
    if (result == 1) {
        result = kind.onlyQualifierSets ? Compact::compactQualifierSets(source.dsn, keep ? 0 : 1, kind.type)
                                        : Compact::startCompactProcess(source.dsn, keep ? 0 : 1, kind.type);
        if (result != 1 && lastError().empty())
            reason.text = Compact::getFailure().toUtf8();
    }
    if (result != 1 && reason.text.empty())
        reason = lastFailure();
    if ((result == 1 ? batch.end(1) : batch.undo(0)) == 1)
        return;
    if (reason.text.empty())
        reason = lastFailure();
    const std::string help = remedy(reason, source.name);
    throw Failure{kFailed, source.name + " was not compacted" + (reason.text.empty() ? "" : ": " + reason.text) +
                               (help.empty() ? "; nothing was changed" : help)};
}

/// Totals of all tables.
struct Totals {
    int rows = 0, duplicates = 0, redirected = 0, deleted = 0;

    explicit Totals(const std::vector<KorCompactedTable>& tables)
    {
        for (const KorCompactedTable& table : tables) {
            rows += table.rows;
            duplicates += table.duplicates;
            redirected += table.redirected;
            deleted += table.deleted;
        }
    }
    /// "redirect 3 references and delete 2 of 100 rows", with the words of the caller.
    std::string text(const char* redirect, const char* remove) const
    {
        return std::string(redirect) + " " + counted(redirected, "reference") + " and " + remove + " " +
               std::to_string(deleted) + " of " + counted(rows, "row");
    }
};

/// What a table's row says of the references to its deleted rows that are left.
std::vector<KorDetailReference> strandedBy(const Compacted& compacted, const std::string& table)
{
    std::vector<KorDetailReference> left;
    for (const KorDetailReference& reference : compacted.stranded)
        if (table.empty() || reference.target.toUtf8() == table)
            left.push_back(reference);
    return left;
}

/// The other formats say in columns of their own what the text says below the table.
void print(const Compacted& compacted, const CompactOptions& options)
{
    const bool isText = options.format == Format::Text;
    Sheet sheet{{{"Table", false},
                 {"Rows", true},
                 {"Duplicates", true},
                 {options.dryRun ? "To redirect" : "Redirected", true},
                 {options.dryRun ? "To delete" : "Deleted", true}},
                {}};
    if (!isText)
        sheet.columns.insert(sheet.columns.end(),
                             {{"Left", true}, {"Left references", false}, {"Result", false}, {"Backup", false}});
    const std::string result = compacted.nothingToDo ? "nothing to do" : options.dryRun ? "planned" : "done";
    const auto add = [&](const std::string& name, const std::string& table, const auto& report) {
        sheet.rows.push_back({name, std::to_string(report.rows), std::to_string(report.duplicates),
                              std::to_string(report.redirected), std::to_string(report.deleted)});
        if (isText)
            return;
        const std::vector<KorDetailReference> left = strandedBy(compacted, table);
        std::string texts;
        for (const KorDetailReference& reference : left)
            texts += (texts.empty() ? "" : "; ") + referenceText(reference);
        sheet.rows.back().insert(sheet.rows.back().end(),
                                 {std::to_string(left.size()), texts, table.empty() ? result : "",
                                  table.empty() ? compacted.backup : ""});
    };
    for (const KorCompactedTable& table : compacted.tables)
        add(table.table.toUtf8(), table.table.toUtf8(), table);
    add("Total", "", Totals(compacted.tables));
    printSheet(sheet, options.format);
}

/// Which duplicates are still there, and why.
void printKept(const Compacted& compacted)
{
    std::string kept;
    for (const KorCompactedTable& table : compacted.tables)
        if (table.duplicates > table.deleted)
            kept += (kept.empty() ? "" : ", ") + table.table.toUtf8() + " " +
                    std::to_string(table.duplicates - table.deleted);
    if (!kept.empty())
        std::printf("Duplicates that stay in their tables, with nothing referring to them: %s.\n", kept.c_str());
}

} // namespace

Compacted compact(const CompactOptions& options)
{
    const Kind& kind = kindNamed(options.what);
    const Source source = sourceToCompact(options.source);
    if (options.dryRun && (options.backup || options.force))
        throw Failure{kUsage, "a dry run changes nothing; leave out --backup and --force, or --dry-run"};
    checkSound(source.file);
    const KorDSNRequest request(source.dsn, source.index);
    Compacted planned = preview(kind, source, options.keep);
    if (options.dryRun || planned.nothingToDo)
        return planned;
    if (!options.force) {
        refuseStranded(kind, planned.stranded);
        if (kind.onlyQualifierSets)
            refuseUnknownSets(source);
    }
    const std::string backup = options.backup ? backUp(source.file) : std::string();
    try {
        run(kind, source, options.keep);
    } catch (const Failure&) {
        std::error_code ignored;
        std::filesystem::remove(backup, ignored);
        throw;
    }
    Compacted done;
    done.backup = backup;
    done.stranded = planned.stranded;
    KorArray<KorCompactedTable> reports;
    Compact::getCompactedTables(reports);
    keepTablesOf(kind, reports, done.tables);
    return done;
}

void runCompact(const GlobalOptions& global, const CompactOptions& options)
{
    const StartedSession session(global);
    const Compacted compacted = compact(options);
    if (options.dryRun)
        noteOpenEdits(sourceToCompact(options.source));
    print(compacted, options);
    if (options.format != Format::Text)
        return;
    const Totals totals(compacted.tables);
    const long stranded = static_cast<long>(compacted.stranded.size());
    std::puts("");
    if (compacted.nothingToDo)
        std::printf("%s has nothing to compact; nothing was changed.\n", options.source.c_str());
    else if (options.dryRun)
        std::printf("Nothing was changed. The run would %s.\n", totals.text("redirect", "delete").c_str());
    else
        std::printf("Compacted %s: %s.\n", options.source.c_str(), totals.text("redirected", "deleted").c_str());
    if (!compacted.nothingToDo && options.what == "qualifier-sets")
        std::printf("Qualifier sets %s numbered from 1.\n", options.dryRun ? "would be" : "are now");
    printKept(compacted);
    if (stranded > 0)
        std::printf("%s %s to deleted rows, in tables that this does not redirect: %s.\n",
                    counted(stranded, "reference").c_str(), options.dryRun ? "would be left" : "were left",
                    firstOf(compacted.stranded).c_str());
    if (!compacted.backup.empty())
        std::printf("A backup was kept in %s. Bring it back with: korodbc restore %s%s\n",
                    compacted.backup.c_str(), compacted.backup.c_str(),
                    options.source == "Details" ? "" : (" --source " + options.source).c_str());
    else if (options.dryRun && !compacted.nothingToDo)
        std::puts("With --backup the run keeps a backup of the database.");
}
