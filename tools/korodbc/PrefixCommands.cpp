#include "Choices.h"
#include "CommandLine.h"

#include <korodbc/catalogues/KorOdbcNumberingPrefix.h>
#include <korodbc/project/KorODBCUserProfile.h>
#include <korodbc/records/configuration/ClassificationRecords.h>
#include <korodbc/records/configuration/SectionRecords.h>
#include <korodbc/repository/KorDatabaseAccess.h>

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <map>
#include <memory>

namespace {

struct PrefixOptions {
    std::string type, role, subtype, profile;
    // of the drawing's own
    std::string action = "list", key, single, main, preliminary;
};

const char* const anyRole = "Not_overridden_role"; // of records for all roles without one of their own

struct PrefixPlace {
    const char* name;
    eDSN dsn;
    eIndex index;
};

/// In the order in which they are asked.
std::vector<PrefixPlace> prefixPlaces()
{
    return {{"drawing", KorDSNDefinitions::kProject, KorDSNSetDwgSource::GeteIndexForDwg()},
            {"add-in", KorDSNDefinitions::kAddin, KorDSNDefinitions::kFirstAddin},
            {"main", KorDSNDefinitions::kConfiguration, KorDSNDefinitions::kBase}};
}

/// Why the record fits: "exact: this role, this subtype", "any role, no subtype".
std::string levelText(const KorNumberingPrefixId& id, const StructNumberingPrefix& record)
{
    const auto level = KorOdbcNumberingPrefix::getLevel(id, record);
    const bool anyRole = level == KorOdbcNumberingPrefix::kAnyRole || level == KorOdbcNumberingPrefix::kAnyObject;
    const char* const subtype = id.getProfileSubtype().isEmpty()            ? ", no subtype"
                                : level <= KorOdbcNumberingPrefix::kAnyRole ? ", this subtype"
                                                                            : ", any subtype";
    return (level == KorOdbcNumberingPrefix::kExact ? "exact: " : "") +
           std::string(anyRole                       ? "any role"
                       : id.getModelRole().isEmpty() ? "no role"
                                                     : "this role") +
           subtype;
}

Named profileNamed(const std::string& wanted)
{
    const KorDSNRequest request(KorDSNDefinitions::kAddin, KorDSNDefinitions::kFirstAddin);
    return chosen(namedRows<StructNumberingPrefixProfile>(), wanted, "numbering prefix profile",
                  "list them with: korodbc prefix-profiles");
}

/// Says that there is no row of that name, when there is none.
template <class T>
void noteUnknown(const std::string& wanted, const char* thing)
{
    KorArray<KorString> known;
    RecordMarshal<T>::getRunNameListAllSources(known);
    const std::vector<std::string> names = texts(known);
    if (std::ranges::none_of(names, [&](const std::string& name) { return sameName(name, wanted); }))
        note(std::string("there is no ") + thing + " " + quote(wanted) + nearest(wanted, names));
}

void runPrefix(const GlobalOptions& global, const PrefixOptions& options, Format format)
{
    const StartedSession session(global);
    const std::vector<PrefixPlace> places = prefixPlaces();
    const Named type = rowNamed<StructObjectType>(options.type, "object type");
    const Named profile = options.profile.empty() ? Named{-1, {}} : profileNamed(options.profile);
    for (const PrefixPlace& place : places)
        requireSound(descriptionOf<StructNumberingPrefix>(), place.dsn, place.index);
    const KorNumberingPrefixId id(KorString::fromUtf8(options.role), type.key, profile.key == -1 ? 0 : 1,
                                  profile.key, KorString::fromUtf8(options.subtype));
    StructNumberingPrefix found;
    KorOdbcNumberingPrefix::ePlace where{};
    if (KorOdbcNumberingPrefix::findNumberingPrefix(id, profile.key == -1 ? 1 : 0, found, where) != 1)
        throw Failure{kNotFound, "no numbering prefix applies to " + quote(type.name) +
                                     (options.role.empty() ? "" : " in the role " + quote(options.role)) +
                                     "; see them with: korodbc show NumberingPrefix"};
    if (!options.role.empty() && !sameName(found.modelRole.toUtf8(), options.role))
        noteUnknown<StructModelRole>(options.role, "model role");
    if (!options.subtype.empty() && !sameName(found.profileSubtype.toUtf8(), options.subtype))
        noteUnknown<StructProfileSubtype>(options.subtype, "profile subtype");
    const PrefixPlace& place = places[where];
    const KorDSNRequest request(place.dsn, place.index);
    Sheet sheet{{{"Single part", false},
                 {"Main part", false},
                 {"Preliminary", false},
                 {"Place", false},
                 {"Level", false},
                 {"Key", true},
                 {"Role", false},
                 {"Subtype", false},
                 {"Profile", false},
                 {"Source", false}},
                {}};
    sheet.rows.push_back({found.singlePartPrefix.toUtf8(), found.mainPartPrefix.toUtf8(),
                          found.preliminaryPartPrefix.toUtf8(), place.name, levelText(id, found),
                          std::to_string(found.key), found.modelRole.toUtf8(), found.profileSubtype.toUtf8(),
                          found.profile == -1 ? "" : nameOrKey<StructNumberingPrefixProfile>(found.profile),
                          sourceName(place.dsn, place.index)});
    printSheet(sheet, format);
}

// The drawing's own prefixes

using Prefixes = KorOdbcNumberingPrefix;

constexpr eDSN drawing = KorDSNDefinitions::kProject;

bool drawingHasPrefixes()
{
    const KorDSNRequest request(drawing, KorDSNSetDwgSource::GeteIndexForDwg());
    return KorDatabaseAccess::doesTableExists(drawing, KorDatabaseAccess::getTableName(L"NumberingPrefix")) == 1;
}

void listDrawingPrefixes(Format format)
{
    KorArray<StructNumberingPrefix> records;
    if (drawingHasPrefixes()) {
        const KorDSNRequest request(drawing, KorDSNSetDwgSource::GeteIndexForDwg());
        requireReadable(descriptionOf<StructNumberingPrefix>());
        StructNumberingPrefixMarshal::getTable(records);
    }
    if (records.isEmpty() && format == Format::Text) {
        std::puts("There are no numbering prefixes in the drawing.");
        return;
    }
    Sheet sheet{{{"Key", true},
                 {"Type"},
                 {"Role"},
                 {"Subtype"},
                 {"Profile"},
                 {"Single part"},
                 {"Main part"},
                 {"Preliminary"}},
                {}};
    for (const StructNumberingPrefix& record : records)
        sheet.rows.push_back({std::to_string(record.key), nameOrKey<StructObjectType>(record.objectType),
                              record.modelRole.toUtf8(), record.profileSubtype.toUtf8(),
                              record.profile == -1 ? "" : nameOrKey<StructNumberingPrefixProfile>(record.profile),
                              record.singlePartPrefix.toUtf8(), record.mainPartPrefix.toUtf8(),
                              record.preliminaryPartPrefix.toUtf8()});
    printSheet(sheet, format);
}

Failure notWritten()
{
    return {kFailed, "nothing was written to the drawing's numbering prefixes" +
                         advised(korodbc::host::lastFailure(), "Project")};
}

void addDrawingPrefix(const PrefixOptions& options)
{
    StructNumberingPrefix record;
    record.objectType = rowNamed<StructObjectType>(options.type, "object type").key;
    record.profile = options.profile.empty() ? -1 : profileNamed(options.profile).key;
    record.modelRole = KorString::fromUtf8(options.role.empty() ? anyRole : options.role);
    record.profileSubtype = KorString::fromUtf8(options.subtype);
    record.singlePartPrefix = KorString::fromUtf8(options.single);
    record.mainPartPrefix = KorString::fromUtf8(options.main);
    record.preliminaryPartPrefix = KorString::fromUtf8(options.preliminary);
    KorODBCUserProfile::resetOwnerText();
    KorODBCUserProfile::getOwnerText(record.ownerText);
    KorDatabaseBatch batch;
    if (!drawingHasPrefixes() && Prefixes::createDWGNumberingPrefixTable() != 1)
        throw notWritten();
    const int key = Prefixes::appendDWGNumberingPrefix(record);
    if (key < 0 || batch.end(1) != 1)
        throw notWritten();
    if (!options.role.empty())
        noteUnknown<StructModelRole>(options.role, "model role");
    if (!options.subtype.empty())
        noteUnknown<StructProfileSubtype>(options.subtype, "profile subtype");
    std::printf("Added numbering prefix %d to the drawing.\n", key);
}

void deleteDrawingPrefix(const PrefixOptions& options)
{
    StructNumberingPrefix record;
    const char* const end = options.key.data() + options.key.size();
    int key = -1;
    const bool isKey = std::from_chars(options.key.data(), end, key).ptr == end;
    if (!isKey || !drawingHasPrefixes() || Prefixes::getDWGNumberingPrefix(KorOdbcKey(key), record) != 1)
        throw Failure{kNotFound, "there is no numbering prefix " + quote(options.key) +
                                     " in the drawing; list them with: korodbc drawing-prefixes"};
    if (Prefixes::deleteDWGNumberingPrefix(record) != 1)
        throw notWritten();
    std::printf("Deleted numbering prefix %d from the drawing.\n", key);
}

void runDrawingPrefixes(const CommandLine& line, const PrefixOptions& options)
{
    const std::vector<std::string> actions = {"list", "add", "delete"};
    const Format format = line.format();
    const bool adds = options.action == "add", deletes = options.action == "delete";
    if (std::ranges::find(actions, options.action) == actions.end())
        throw Failure{kUsage, "there is no action " + quote(options.action) + nearest(options.action, actions) +
                                  "; give list, add or delete"};
    if (deletes == options.key.empty())
        throw Failure{kUsage, deletes ? "give the key of the prefix: korodbc drawing-prefixes delete KEY"
                                      : options.action + " takes no key"};
    for (const char* option :
         {"--type", "--role", "--subtype", "--profile", "--single", "--main", "--preliminary"})
        line.goesWith(option, adds, "drawing-prefixes add");
    if (adds && options.type.empty())
        throw Failure{kUsage, "say what objects the prefix is for with --type"};
    if (adds && !line.given("--single") && !line.given("--main") && !line.given("--preliminary"))
        throw Failure{kUsage, "give the prefix with --single, --main or --preliminary"};
    if (adds || deletes)
        line.refuseFormats("drawing-prefixes " + options.action);
    GlobalOptions global = line.global();
    global.start = adds || deletes ? Start::Write : Start::Look;
    const StartedSession session(global);
    sourceNamed("Project"); // its database can be used
    if (adds)
        addDrawingPrefix(options);
    else if (deletes)
        deleteDrawingPrefix(options);
    else
        listDrawingPrefixes(format);
}

// Profiles

void runProfiles(const CommandLine& line, const std::string& choice)
{
    using Profile = StructNumberingPrefixProfile;
    const Format format = line.format();
    if (!choice.empty())
        line.refuseFormats("choosing a profile");
    GlobalOptions global = line.global();
    global.start = choice.empty() ? Start::Look : Start::Write;
    const StartedSession session(global);
    if (!choice.empty()) {
        const Named profile = profileNamed(choice);
        std::map<int, bool> selected;
        for (const Named& one : [] {
                 const KorDSNRequest addIn(KorDSNDefinitions::kAddin, KorDSNDefinitions::kFirstAddin);
                 return namedRows<Profile>();
             }())
            selected[one.key] = one.key == profile.key;
        KorDatabaseBatch batch;
        if (!storeSelected(descriptionOf<Profile>(), selected) || batch.end(1) != 1)
            throw Failure{kFailed, "the choice cannot be stored" + because()};
        std::printf("Numbering prefixes of the add-in are those of the profile %s.\n",
                    quote(profile.name).c_str());
        return;
    }
    const KorDSNRequest addIn(KorDSNDefinitions::kAddin, KorDSNDefinitions::kFirstAddin);
    requireReadable(descriptionOf<Profile>());
    std::map<int, int> prefixes;
    StructNumberingPrefixMarshal::visit([&](const StructNumberingPrefix& record) {
        ++prefixes[record.profile];
        return true;
    });
    KorArray<Profile> profiles;
    StructNumberingPrefixProfileMarshal::getTable(profiles);
    Sheet sheet{{{"Key", true}, {"Profile"}, {"Chosen"}, {"Prefixes", true}}, {}};
    for (const Profile& profile : profiles)
        sheet.rows.push_back({std::to_string(profile.key), profile.runName.toUtf8(),
                              profile.selected != 0 ? "yes" : "no", std::to_string(prefixes[profile.key])});
    printSheet(sheet, format);
}

} // namespace

void addPrefixCommands(CommandLine& line)
{
    const auto options = std::make_shared<PrefixOptions>();
    const auto addObject = [options](CLI::App* command, CLI::Option* type) {
        type->type_name(type->get_positional() ? "" : "TYPE");
        command->add_option("--role", options->role, "Model role")->type_name("ROLE");
        command->add_option("--subtype", options->subtype, "Profile subtype")->type_name("SUBTYPE");
        command->add_option("--profile", options->profile, "Prefix profile of the add-in, by name or key")
            ->type_name("PROFILE");
        return command;
    };
    CLI::App* command = line.command(
        "prefix", "Print which numbering prefix applies to an object, and why",
        "korodbc prefix Beam --role Column\n"
        "  korodbc prefix Beam --subtype \"Round tube\" --profile \"By section family\"\n\n"
        "The drawing's own prefixes are asked first (drawing-prefixes), then those of the add-in, then the main\n"
        "ones. Without --profile the add-in is asked for the profile that is chosen there (prefix-profiles).",
        [&line, options] { runPrefix(line.global(), *options, line.format()); });
    addObject(command, command->add_option("TYPE", options->type, "Object type, by name or key")->required());
    line.addFormats(command);

    command = line.command("drawing-prefixes", "The drawing's own numbering prefixes: list, add, delete",
                           "korodbc drawing-prefixes\n"
                           "  korodbc drawing-prefixes add --type Beam --role Column --main HC --single hc\n"
                           "  korodbc drawing-prefixes delete 1",
                           [&line, options] { runDrawingPrefixes(line, *options); });
    command->add_option("ACTION", options->action, "list (the standard), add or delete")->type_name("");
    command->add_option("KEY", options->key, "delete: key of the prefix")->type_name("");
    addObject(command, command->add_option("--type", options->type, "add: object type, by name or key"));
    command->add_option("--single", options->single, "add: prefix of single parts")->type_name("TEXT");
    command->add_option("--main", options->main, "add: prefix of main parts")->type_name("TEXT");
    command->add_option("--preliminary", options->preliminary, "add: prefix of preliminary parts")
        ->type_name("TEXT");
    line.addFormats(command);

    const auto choice = std::make_shared<std::string>();
    command =
        line.command("prefix-profiles", "List the profiles of the add-in's numbering prefixes, or choose one",
                     "korodbc prefix-profiles\n  korodbc prefix-profiles \"By section family\"",
                     [&line, choice] { runProfiles(line, *choice); });
    command->add_option("PROFILE", *choice, "Profile to choose, by name or key (default: list them)")
        ->type_name("");
    line.addFormats(command);
}
