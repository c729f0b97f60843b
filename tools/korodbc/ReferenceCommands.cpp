#include "Commands.h"
#include "Records.h"

#include <korodbc/records/Registry.h>
#include <korodbc/repository/RecordAccess.h>

#include <cstdio>
#include <sstream>

namespace {

/// True for the databases with detail or project tables.
bool holdsReferences(const Source& source)
{
    constexpr DataSources holders{KorDSNDefinitions::kDetails,        KorDSNDefinitions::kConfiguration,
                                  KorDSNDefinitions::kProjectAdvance, KorDSNDefinitions::kProject,
                                  KorDSNDefinitions::kAddin,          KorDSNDefinitions::kCountryAddin};
    return holders.contains(source.dsn);
}

/// The databases whose rows refer to one another, or the one of that name.
std::vector<Source> databases(const std::string& name)
{
    std::vector<Source> sources;
    for (const Source& source : name.empty() ? allSources() : std::vector<Source>{sourceNamed(name)})
        if (holdsReferences(source))
            sources.push_back(sourceNamed(source.name));
    if (sources.empty())
        throw Failure{kUsage, "data source " + name +
                                  " holds no detail tables and no project tables; name Details, Addin, a country "
                                  "add-in, Project, ProjectAdvance or Configuration"};
    return sources;
}

std::string targetText(const KorDetailReference& reference)
{
    return reference.targetText.isEmpty() ? std::to_string(reference.targetKey) : reference.targetText.toUtf8();
}

std::string itemText(const KorDetailReference& reference)
{
    return reference.item < 0 ? "" : std::to_string(reference.item + 1);
}

} // namespace

void runShared(const GlobalOptions& global, const SharedOptions& options)
{
    const StartedSession session(global);
    const Source source = databases(options.source).front();
    const StoredTable table = findTable(options.table, options.source);
    if (table.type == nullptr || table.type->key < 0)
        throw Failure{kUsage, "nothing refers to the rows of " + table.name +
                                  " by a key of their own; name the table whose rows they belong to"};
    const RecordDescription& type = *table.type;
    const KorDSNRequest request(source.dsn, source.index);
    requireReadable(type);
    const AnyRecord record(type);
    if (!readRecord(type, options.row, record.get())) {
        KorArray<KorString> runNames;
        RecordAccess::runNames(type, runNames, false);
        throw Failure{kNotFound, "table " + table.name + " (" + source.name +
                                     ") has no row with the key or name " + quote(options.row) +
                                     nearest(options.row, texts(runNames)) + "; list them with: korodbc show " +
                                     table.name};
    }
    const std::string key = keyText(type, record.get());
    const KorString target = KorString::fromUtf8(type.table);
    noteOpenEdits(source);
    KorArray<KorDetailReference> references;
    if ((type.hasTextKey() ? KorDetailReferences::getReferrers(source.dsn, source.index, target,
                                                               KorString::fromUtf8(key), references)
                           : KorDetailReferences::getReferrers(source.dsn, source.index, target,
                                                               type.keyOf(record.get()), references)) != 1)
        throw Failure{kFailed, "the references of " + source.name + " cannot be read" + because()};
    const bool isText = options.format == Format::Text;
    const std::string isShared = references.length() >= 2 ? "yes" : "no";
    Sheet sheet{{{"Table", false}, {"Key", true}, {"Name", false}, {"Column", false}, {"Item", true}}, {}};
    for (const KorDetailReference& reference : references)
        sheet.rows.push_back({reference.table.toUtf8(), std::to_string(reference.key), reference.name.toUtf8(),
                              reference.column.toUtf8(), itemText(reference)});
    if (!isText) {
        sheet.columns.insert(sheet.columns.end(), {{"References", true}, {"Shared", false}});
        for (std::vector<std::string>& row : sheet.rows)
            row.resize(sheet.columns.size());
        sheet.rows.push_back({"Total", "", "", "", "", std::to_string(references.length()), isShared});
    }
    if (!isText || references.length() > 0)
        printSheet(sheet, options.format);
    if (!isText)
        return;
    const std::string name = type.runName < 0 ? "" : " " + quote(cellText(*type.runNameColumn(), record.get()));
    std::printf("%s%s %s%s: %s.\nShared: %s\n", references.length() > 0 ? "\n" : "", table.name.c_str(),
                key.c_str(), name.c_str(),
                references.length() == 0 ? "nothing refers to it"
                                         : counted(references.length(), "reference").c_str(),
                isShared.c_str());
}

std::string referenceText(const KorDetailReference& reference)
{
    return reference.table.toUtf8() + " " + std::to_string(reference.key) +
           (reference.name.isEmpty() ? "" : " " + quote(reference.name.toUtf8())) +
           (reference.item < 0 ? "" : " item " + itemText(reference)) + " " + reference.column.toUtf8() + " -> " +
           reference.target.toUtf8() + " " + targetText(reference);
}

void runCheck(const GlobalOptions& global, const std::string& sourceName, Format format)
{
    const StartedSession session(global);
    Sheet sheet{{{"Source", false},
                 {"Table", false},
                 {"Key", true},
                 {"Name", false},
                 {"Item", true},
                 {"Column", false},
                 {"Target", false},
                 {"Target key", true},
                 {"References", true},
                 {"Lead nowhere", true}},
                {}};
    long dangling = 0;
    bool inItems = false, inDetails = false, inProjects = false;
    std::string summary;
    std::string misfits;
    for (const Source& source : databases(sourceName)) {
        noteOpenEdits(source);
        KorArray<KorDetailReference> references;
        if (KorDetailReferences::getDangling(source.dsn, source.index, references) != 1)
            throw Failure{kFailed, "the references of " + source.name + " cannot be read" + because()};
        dangling += references.length();
        for (const KorDetailReference& reference : references) {
            const RecordDescription* type = records::ofTable(reference.table.toUtf8());
            (type != nullptr && records::isProjectTable(*type) ? inProjects : inDetails) = true;
            inItems = inItems || !ownerOfItems(reference.table.toUtf8()).empty();
            sheet.rows.push_back({source.name, reference.table.toUtf8(), std::to_string(reference.key),
                                  reference.name.toUtf8(), itemText(reference), reference.column.toUtf8(),
                                  reference.target.toUtf8(), targetText(reference)});
            if (format == Format::Text)
                std::printf("%s: %s, which does not exist\n", source.name.c_str(),
                            referenceText(reference).c_str());
        }
        const int count = KorDetailReferences::count(source.dsn, source.index);
        if (count < 0)
            throw Failure{kFailed, "the references of " + source.name + " cannot be read" + because()};
        summary += source.name + ": " + counted(count, "reference") + ", " +
                   (references.length() == 0 ? "all lead somewhere"
                                             : std::to_string(references.length()) + " lead nowhere") +
                   "\n";
        sheet.rows.push_back({source.name, "Total", "", "", "", "", "", "", std::to_string(count),
                              std::to_string(references.length())});
        std::istringstream differences(korodbc::host::tableDifferences(source.dsn, source.index));
        for (std::string line; std::getline(differences, line);)
            misfits += "korodbc: note: " + source.name + ": " + singleLine(line) + "\n";
    }
    std::fprintf(stderr, "%s", misfits.c_str());
    korodbc::host::takeReadGaps(); // told by the notes
    for (std::vector<std::string>& row : sheet.rows)
        row.resize(sheet.columns.size());
    if (format != Format::Text)
        printSheet(sheet, format);
    else
        std::printf("%s", summary.c_str());
    if (dangling > 0)
        throw Failure{kFailed,
                      counted(dangling, "reference") + (dangling == 1 ? " leads" : " lead") + " nowhere" +
                          (inDetails ? "; name rows that exist with: korodbc edit TABLE KEY COLUMN VALUE" : "") +
                          (inItems ? ", for an item --item N" : "") +
                          (inProjects ? "; save project records with rows that exist, see: korodbc "
                                        "templates --help"
                                      : "")};
}
