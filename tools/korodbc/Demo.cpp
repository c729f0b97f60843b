#include "Commands.h"
#include "Records.h"

#include <korodbc/host/RepositoryBuilder.h>
#include <korodbc/records/detail/DetailStyleRecords.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <set>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

void say(const std::string& text) { std::printf("%s\n", text.c_str()); }

void step(const std::string& title)
{
    static int number = 0;
    std::printf("\n%d. %s\n", ++number, title.c_str());
}

std::vector<korodbc::host::CountryAddIn> countryAddIns(const std::vector<std::string>& texts)
{
    std::vector<korodbc::host::CountryAddIn> addIns;
    for (const std::string& text : texts) {
        const std::size_t equals = text.find('=');
        const std::string id = text.substr(0, equals);
        const bool plain = !id.empty() && std::all_of(id.begin(), id.end(), [](unsigned char c) {
            return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-' ||
                   c == '_';
        });
        if (equals == std::string::npos || equals + 1 == text.size() || !plain)
            throw Failure{kUsage, "country add-in " + quote(text) +
                                      " is not understood; write --country ID=NAME, as in "
                                      "--country no=Norway, the id of letters and digits"};
        for (const auto& known : addIns)
            if (sameName(known.id, id))
                throw Failure{kUsage, "the country add-in id " + quote(id) + " is used twice"};
        addIns.push_back({id, text.substr(equals + 1), korodbc::host::connectionTo("addins/" + id + ".db")});
    }
    return addIns;
}

void build(const InitOptions& options)
{
    ProgressBar bar;
    std::string error;
    const bool made = korodbc::host::buildRepository(
        options.folder, catalogueFolder(options.catalogue), countryAddIns(options.countries),
        [&](const std::string& what, int done, int total) { bar.show("Making " + what, done * 100 / total); },
        error);
    bar.clear();
    if (made)
        return;
    // a catalogue can have many errors; the first says where to start
    const std::size_t end = error.find('\n');
    const auto more = std::count(error.begin(), error.end(), '\n');
    throw Failure{kFailed, error.substr(0, end) + (more > 0 ? " (and " + counted(more, "more error") + ")" : "")};
}

/// Exports the first process of the catalogue and imports it again; returns its name.
void showProcess(const Source& details, const std::string& file)
{
    std::vector<std::string> names;
    {
        const KorDSNRequest request(details.dsn, details.index);
        names = detailNames(Detail::Process);
    }
    if (names.empty())
        throw Failure{kFailed, "the catalogue has no detail process to show"};
    step("Detail process " + quote(names.front()) + " is exported and imported with the styles of its style maps");
    const Moved exported = exportDetail({Detail::Process, names.front(), "Details", file});
    say("   " + rowsOf(exported) + " to " + file + ".");
    const Moved imported = importDetail({Detail::Process, file, "", "Details"});
    say("   Details: " + rowsOf(imported) + ", under new keys; the process is " + quote(imported.name) + ", key " +
        std::to_string(imported.key) + ".");
}

std::string sums(const Compacted& compacted)
{
    int rows = 0, redirected = 0, deleted = 0;
    for (const KorCompactedTable& table : compacted.tables) {
        rows += table.rows;
        redirected += table.redirected;
        deleted += table.deleted;
    }
    return std::to_string(deleted) + " of " + counted(rows, "row") + " deleted, " +
           counted(redirected, "reference") + " redirected";
}

} // namespace

std::string catalogueFolder(const std::string& given)
{
    if (!given.empty())
        return given;
    const char* environment = std::getenv("KORODBC_CATALOGUE");
    if (environment != nullptr && *environment != '\0')
        return environment;
    std::error_code code;
    // where the installation has it, seen from this program; else the source tree
    const fs::path own = fs::read_symlink("/proc/self/exe", code).parent_path() / KORODBC_CATALOGUE_FROM_PROGRAM;
    if (!code && fs::is_directory(own, code))
        return own.lexically_normal().string();
    return fs::is_directory(KORODBC_SOURCE_CATALOGUE, code) ? KORODBC_SOURCE_CATALOGUE
                                                            : KORODBC_INSTALLED_CATALOGUE;
}

void runInit(const InitOptions& options)
{
    build(options);
    std::printf("Made a repository in %s. Look at it with: korodbc --repository %s styles\n",
                options.folder.c_str(), options.folder.c_str());
}

namespace {

/// Lists what a demonstration made in its folder, so that the next one there removes that and nothing else.
constexpr const char* listOfMade = ".korodbc-demo";

void writeMade(const fs::path& folder)
{
    std::ofstream list(folder / listOfMade, std::ios::binary);
    for (const auto& entry : fs::recursive_directory_iterator(folder))
        list << entry.path().lexically_relative(folder).string() << '\n';
}

/// Removes what an earlier demonstration made; throws, and removes nothing, when there is more in the folder.
void clearFolder(const fs::path& folder)
{
    std::error_code code;
    if (!fs::exists(folder, code))
        return;
    if (!fs::is_directory(folder, code))
        throw Failure{kFailed, folder.string() + " is a file; name a new folder"};
    std::set<fs::path> made;
    std::ifstream list(folder / listOfMade, std::ios::binary);
    for (std::string line; std::getline(list, line);)
        made.insert(line);
    for (const auto& entry : fs::recursive_directory_iterator(folder, code))
        if (!made.contains(entry.path().lexically_relative(folder)))
            throw Failure{kFailed, folder.string() + " exists and is not empty" +
                                       (made.empty() ? "" : ": no demonstration made " + entry.path().string()) +
                                       "; name a new folder"};
    for (auto path = made.rbegin(); path != made.rend(); ++path) // a folder after what is in it
        if (fs::exists(folder / *path, code))
            fs::remove(folder / *path, code);
}

} // namespace

void runDemo(const GlobalOptions& given, const std::string& folder, const std::string& catalogue)
{
    std::error_code code;
    clearFolder(folder);
    GlobalOptions global = given;
    global.repository = (fs::path(folder) / "repository").string();
    const std::string file = (fs::path(folder) / "style.db").string();
    if (!fs::create_directories(folder, code) && code)
        throw Failure{kFailed, "cannot make the folder " + folder + ": " + code.message()};

    step("A repository is made from the catalogue");
    build({global.repository, catalogue, {"no=Norway"}});
    std::string style, key;
    {
        const Session session(global, Start::Write);
        const Source details = sourceNamed("Details");
        KorArray<StructDetailStyle> styles;
        {
            const KorDSNRequest request(details.dsn, details.index);
            StructDetailStyleMarshal::getTable(styles);
        }
        if (styles.length() == 0)
            throw Failure{kFailed, "the catalogue has no detail style to show"};
        style = styles[0].runName.toUtf8();
        key = std::to_string(styles[0].key);
        say("   " + global.repository + " holds " +
            counted(static_cast<long>(usableSources().size()), "database") + " and " +
            counted(styles.length(), "detail style") + ".");

        step("Detail style " + quote(style) + " is exported");
        const Moved exported = exportDetail({Detail::Style, style, "Details", file});
        say("   The style and everything that it refers to: " + rowsOf(exported) + " to " + file + ".");

        step("It is imported into the add-in database, and once more into the one that it came from");
        for (const char* into : {"Addin", "Details"}) {
            const Moved imported = importDetail({Detail::Style, file, "", into});
            say("   " + std::string(into) + ": " + rowsOf(imported) + ", under new keys; the style is " +
                quote(imported.name) + ", key " + std::to_string(imported.key) + ".");
        }

        showProcess(details, (fs::path(folder) / "process.db").string());

        step("The duplicates that the imports left are merged, after a dry run");
        CompactOptions compaction;
        compaction.dryRun = true;
        say("   It would leave: " + sums(compact(compaction)) + ".");
        compaction.dryRun = false;
        compaction.backup = true;
        const Compacted compacted = compact(compaction);
        say("   Done: " + sums(compacted) + ".");
        say("   The database as it was is in " + compacted.backup + ".");

        step("The style's title is edited under a copy, and the edit is cancelled");
        EditOptions change{"DetailStyle",  key, "TitleFormat", "O'Brien's beam – 100 % größer", "Details", 0, 0,
                           Closing::Cancel};
        const Edited cancelled = edit(change);
        say("   Written: " + quote(change.value) + ". After Cancel the title is " + quote(cancelled.after) +
            (cancelled.after == cancelled.before ? ", as before." : ", WHICH IS NOT WHAT IT WAS."));

        step("It is edited again, and the program ends with the edit open");
        change.closing = Closing::LeaveOpen;
        say("   The title is now " + quote(edit(change).after) + ".");
        for (const LeftBehind& copy : copiesLeftBehind())
            say("   Copy " + copyPlace(copy) + " keeps the table as it was before.");
    }

    step("The next start finds the copy");
    const Session session(global, Start::Write);
    for (const LeftBehind& copy : session.broughtBack())
        say("   Brought back: " + copy.table + " in " + copy.source.name + ", from " + copy.copy + ".");
    const Source details = sourceNamed("Details");
    const KorDSNRequest request(details.dsn, details.index);
    StructDetailStyle record;
    const bool found = readRecord(descriptionOf<StructDetailStyle>(), key, &record);
    say("   The title is " + quote(found ? record.titleFormat.toUtf8() : "?") + " again.");
    if (!found || session.broughtBack().empty() || !copiesLeftBehind().empty())
        throw Failure{kFailed, "the demonstration did not come out as it should"};
    writeMade(folder);
    say("\nLook around with: " + global.program + " --repository " + global.repository + " tree " + quote(style));
}
