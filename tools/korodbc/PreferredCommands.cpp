#include "Choices.h"
#include "CommandLine.h"
#include "PreferredLists.h"
#include "Records.h"

#include <korodbc/catalogues/KorOdbcGrouping.h>
#include <korodbc/repository/KorDatabaseAccess.h>
#include <korodbc/roots/KRSettings.h>

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <map>
#include <memory>
#include <set>

namespace {

using Profiles = KorArray<StructPreferredSizesProfiles>;

constexpr eDSN addin = KorDSNDefinitions::kAddin;

struct Options {
    std::vector<std::string> profiles;
    std::string region;
    PreferredQuestion question;
};

Profiles readProfiles()
{
    const KorDSNRequest request(addin, KorDSNDefinitions::kFirstAddin);
    requireReadable(descriptionOf<StructPreferredSizesProfiles>());
    Profiles profiles;
    StructPreferredSizesProfilesMarshal::getTable(profiles);
    return profiles;
}

std::string regionText(int region)
{
    const KorDSNRequest request(KorDSNDefinitions::kConfiguration, KorDSNDefinitions::kBase);
    StructRegion record;
    return StructRegionMarshal::getStructByKey(region, record) == 1 ? record.runName.toUtf8() : std::string();
}

/// "region 1 (Europe)"
std::string shownRegion(int region)
{
    if (region == -1)
        return "no region";
    const std::string name = regionText(region);
    return "region " + std::to_string(region) + (name.empty() ? "" : " (" + name + ")");
}

/// The region with that key or name: one that has a row or a profile.
int regionNamed(const std::string& wanted, const Profiles& profiles)
{
    std::map<int, std::string> known;
    {
        const KorDSNRequest request(KorDSNDefinitions::kConfiguration, KorDSNDefinitions::kBase);
        KorArray<StructRegion> regions;
        StructRegionMarshal::getTable(regions);
        for (const StructRegion& region : regions)
            known[region.key] = region.runName.toUtf8();
    }
    for (const StructPreferredSizesProfiles& profile : profiles)
        known.emplace(profile.region, std::string());
    std::vector<std::string> names;
    std::string all;
    for (const auto& [key, name] : known) {
        if (wanted == std::to_string(key) || (!name.empty() && sameName(name, wanted)))
            return key;
        names.push_back(name);
        all += (all.empty() ? "" : ", ") + std::to_string(key) + (name.empty() ? "" : " " + name);
    }
    throw Failure{kNotFound, "there is no region " + quote(wanted) + nearest(wanted, names) + "; known: " + all};
}

const StructPreferredSizesProfiles& profileNamed(const std::string& wanted, const Profiles& profiles)
{
    std::vector<std::string> names;
    std::vector<const StructPreferredSizesProfiles*> found;
    std::string keys;
    for (const StructPreferredSizesProfiles& profile : profiles) {
        names.push_back(profile.runName.toUtf8());
        if (std::to_string(profile.key) == wanted)
            return profile;
        if (!sameName(names.back(), wanted))
            continue;
        found.push_back(&profile);
        keys += (keys.empty() ? "" : ", ") + std::to_string(profile.key);
    }
    if (found.size() > 1)
        throw Failure{kUsage, "there are several profiles " + quote(wanted) + "; give the key: " + keys};
    if (found.size() == 1)
        return *found.front();
    throw Failure{kNotFound, "there is no profile " + quote(wanted) + nearest(wanted, names) +
                                 "; list them with: korodbc preferred"};
}

bool isInUse(const StructPreferredSizesProfiles& profile, int region)
{
    return profile.selected != 0 && profile.region == region;
}

void listProfiles(const Options& options, Format format)
{
    const Profiles profiles = readProfiles();
    const int region = KorOdbcGrouping::getRegionKey();
    const bool all = options.region.empty();
    const int shown = all ? region : regionNamed(options.region, profiles);
    std::map<int, long> sizes;
    {
        const KorDSNRequest request(addin, KorDSNDefinitions::kFirstAddin);
        RecordAccess::visit(descriptionOf<StructPreferredSizesItems>(), [&](const void* record) {
            ++sizes[static_cast<const StructPreferredSizesItems*>(record)->profileID];
            return true;
        });
    }
    Sheet sheet{
        {{"Key", true}, {"Profile"}, {"Region key", true}, {"Region"}, {"Chosen"}, {"In use"}, {"Sizes", true}},
        {}};
    for (const StructPreferredSizesProfiles& profile : profiles)
        if (all || profile.region == shown)
            sheet.rows.push_back({std::to_string(profile.key), profile.runName.toUtf8(),
                                  std::to_string(profile.region), regionText(profile.region),
                                  profile.selected != 0 ? "yes" : "no", isInUse(profile, region) ? "yes" : "no",
                                  std::to_string(sizes[profile.key])});
    if (sheet.rows.empty() && format == Format::Text)
        note("there are no profiles" + (all ? "" : " of " + shownRegion(shown)));
    else
        printSheet(sheet, format);
}

void choose(const Options& options)
{
    if (options.profiles.empty() && options.region.empty())
        throw Failure{kUsage, "name the profiles to choose, or a region with --region; list the profiles with: "
                              "korodbc preferred"};
    const Profiles profiles = readProfiles();
    std::set<int> chosen, regions;
    for (const std::string& wanted : options.profiles) {
        const StructPreferredSizesProfiles& profile = profileNamed(wanted, profiles);
        chosen.insert(profile.key);
        regions.insert(profile.region);
    }
    KorDatabaseBatch batch;
    bool stored = true;
    if (!options.region.empty())
        stored = KRSettings::setValue(L"Region Key", regionNamed(options.region, profiles)) == 1;
    std::map<int, bool> selected;
    for (const StructPreferredSizesProfiles& profile : profiles)
        if (regions.contains(profile.region) && (profile.selected != 0) != chosen.contains(profile.key))
            selected[profile.key] = chosen.contains(profile.key);
    stored = stored && storeSelected(descriptionOf<StructPreferredSizesProfiles>(), selected);
    if (stored ? batch.end(1) != 1 : batch.undo(0) == 0)
        throw Failure{kFailed, "the choice cannot be stored" + because()};
    std::printf("The lists use %s\n", shownRegion(KorOdbcGrouping::getRegionKey()).c_str());
    for (const StructPreferredSizesProfiles& profile : readProfiles())
        if (profile.selected != 0)
            std::printf("Chosen for %s: %s\n", shownRegion(profile.region).c_str(),
                        singleLine(profile.runName.toUtf8()).c_str());
}

/// Makes the chosen profiles of the region the active ones.
void activate(const Options& options)
{
    const Profiles profiles = readProfiles();
    const int region =
        options.region.empty() ? KorOdbcGrouping::getRegionKey() : regionNamed(options.region, profiles);
    KorArray<int> active;
    for (const StructPreferredSizesProfiles& profile : profiles)
        if (isInUse(profile, region))
            active.append(profile.key);
    if (active.isEmpty() && region == -1)
        throw Failure{kNotFound,
                      "no region is set, so every list is empty; set one with: korodbc preferred choose "
                      "--region REGION"};
    if (active.isEmpty())
        throw Failure{kNotFound,
                      "no profile of " + shownRegion(region) +
                          " is chosen, so every list is empty; choose one with: korodbc preferred choose "
                          "PROFILE, or another region with --region"};
    KorOdbcGrouping::setPreferredProfiles(active);
}

void printList(const Options& options, Format format)
{
    if (options.question.list.empty()) {
        printSheet(preferredListNames(), format);
        return;
    }
    const PreferredAnswer answer = preferredList(options.question, [&] { activate(options); });
    Sheet sheet{{{"Name"}}, {}};
    for (const KorString& name : answer.names)
        sheet.rows.push_back({name.toUtf8()});
    if (sheet.rows.empty() && format == Format::Text)
        note("nothing is preferred in the list " + answer.title);
    else
        printSheet(sheet, format);
}

} // namespace

void addPreferredCommands(CommandLine& line)
{
    const auto options = std::make_shared<Options>();
    const auto preferred = std::make_shared<CLI::App*>(nullptr);
    const auto run = [&line, options, preferred] {
        const Format format = line.format();
        GlobalOptions global = line.global();
        const std::string action =
            (*preferred)->get_subcommands().empty() ? "" : (*preferred)->get_subcommands().front()->get_name();
        if (action == "choose")
            line.refuseFormats("preferred choose");
        if (action == "list" && options->question.list.empty())
            return printList(*options, format);
        global.start = action == "choose" ? Start::Write : Start::Look;
        const StartedSession session(global);
        if (action == "choose")
            choose(*options);
        else if (action == "list")
            printList(*options, format);
        else
            listProfiles(*options, format);
    };
    CLI::App* command = line.command(
        "preferred", "Preferred sizes: list the profiles, choose some, print the lists that they restrict",
        "korodbc preferred\n  korodbc preferred choose \"Europe, full range\"\n  korodbc preferred list materials "
        "--kind beam\n\nThe dialogs offer the sizes of the chosen profiles of one region, that of the setting "
        "\"Region Key\".",
        run);
    *preferred = command;
    command->require_subcommand(0, 1);
    line.addFormats(command);
    const auto addRegion = [&](CLI::App* to, const char* text) {
        to->add_option("--region", options->region, text)->type_name("REGION");
    };
    addRegion(command, "Only the profiles of this region, given by its key or name");

    CLI::App* choosing =
        command->add_subcommand("choose", "Choose profiles: those named are, others of their regions "
                                          "are not, other regions keep their choice");
    choosing->footer("Example:\n  korodbc preferred choose \"Europe, common sizes\"\n"
                     "  korodbc preferred choose 3 --region \"North America\"");
    choosing->add_option("PROFILE", options->profiles, "Names or keys of profiles")->type_name("");
    addRegion(choosing, "Also make the lists use this region, given by its key or name");

    CLI::App* listing = command->add_subcommand("list", "Print a list as the chosen profiles restrict it");
    listing->footer(
        "Example:\n  korodbc preferred list\n  korodbc preferred list materials --kind plate\n"
        "  korodbc preferred list bolt-diameters --standard \"ISO 4014\" --strength 8.8 --set \"Nut and "
        "washer\"\n  korodbc preferred list sections --class IPE --csv");
    listing->add_option("WHAT", options->question.list, "Name of the list (default: the names of all lists)")
        ->type_name("");
    addPreferredOptions(listing, options->question);
    addRegion(listing, "Use this region instead of that of the setting");
    line.addFormats(listing);
}
