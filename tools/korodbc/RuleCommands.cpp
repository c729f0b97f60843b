#include "Choices.h"
#include "CommandLine.h"

#include <korodbc/addins/AddInManagerInterface.h>
#include <korodbc/catalogues/KorODBCExplodeObjects.h>
#include <korodbc/catalogues/KorODBCNecessaryViewsConfiguration.h>
#include <korodbc/edit/KorOdbcMan.h>
#include <korodbc/host/SettingsStore.h>
#include <korodbc/records/configuration/ClassificationRecords.h>
#include <korodbc/records/detail/DetailCatalogueRecords.h>
#include <korodbc/repository/KorDatabaseAccess.h>
#include <korodbc/roots/KRSettings.h>

#include <algorithm>
#include <cstdio>
#include <memory>

namespace {

// Necessary views

struct ViewsOptions {
    std::string beam, view, from;
    bool keep = false; // the source as the setting
};

using View = StructNecessaryViewsConfiguration;

const std::vector<Named> viewTypes = {{View::kFrontView, "front"},   {View::kTopView, "top"},
                                      {View::kSideView, "side"},     {View::kSection, "section"},
                                      {View::kBottomView, "bottom"}, {View::kBackView, "back"}};
const std::vector<Named> viewRules = {{View::kAlways, "always"},
                                      {View::kWhenItShowsDimensions, "when it shows dimensions"},
                                      {View::kWhenPartsAreOnThatSide, "when parts are on that side"}};

/// The setting that has the rules read in that source.
KorString settingOf(const Source& source)
{
    switch (source.dsn) {
    case KorDSNDefinitions::kDetails:
        return L"/kDetails";
    case KorDSNDefinitions::kAddin:
        return L"/kAddin";
    case KorDSNDefinitions::kCountryAddin: {
        const KorAddIn* addIn =
            AddInManagerInterface::getInstance()->getAddIn(KorAddInId(KorString::fromUtf8(source.id)));
        return addIn == nullptr ? KorString()
                                : KorString::format(L"%s_%d/kDetailsCurrent", addIn->getName(),
                                                    KorDSNManager::getAddInIdx(source.index));
    }
    default:
        throw Failure{kUsage, "rules for views are kept in Details, Addin or a country add-in, not in " +
                                  source.name + "; name one of these with --from"};
    }
}

Failure notKept()
{
    return {kFailed, "the setting was not written" + advised(korodbc::host::lastFailure(), "Configuration")};
}

/// The source of that name; says where country add-ins come from when there is none.
Source ruleSource(const std::string& wanted)
{
    try {
        return sourceNamed(wanted);
    } catch (Failure& failure) {
        if (failure.code == kNotFound)
            failure.message +=
                "; a country add-in comes with a new repository: korodbc init FOLDER --country ID=NAME";
        throw;
    }
}

/// Has the rules read in that source, from now on or only by this program.
void choose(const Source& source, bool keep)
{
    const KorString setting = settingOf(source);
    if (!keep)
        korodbc::host::setSettingsStore(nullptr);
    if (KRSettings::setValue(KorODBCNecessaryViewsConfiguration::settingKey(), setting) != 1)
        throw notKept();
}

void runViews(const CommandLine& line, const ViewsOptions& options)
{
    using Reader = KorODBCNecessaryViewsConfiguration;
    const Format format = line.format();
    line.goesWith("--keep", !options.from.empty(), "--from");
    GlobalOptions global = line.global();
    if (options.keep)
        global.start = Start::Write;
    const StartedSession session(global);
    KorDatabaseBatch batch; // a source that says nothing about the beam is not kept
    const Named beam = rowNamed<StructBeamType>(options.beam, "beam type");
    std::vector<Named> views = viewTypes;
    if (!options.view.empty()) {
        std::string all;
        for (const Named& view : viewTypes)
            all += (all.empty() ? "" : ", ") + view.name;
        views = {chosen(viewTypes, options.view, "view type", "there are: " + all)};
    }
    if (!options.from.empty())
        choose(ruleSource(options.from), options.keep);
    eDSN dsn{}, savedDsn{};
    eIndex index{}, savedIndex{};
    if (Reader::getODBCDSNValue(dsn, index, savedIndex, savedDsn) != 1) {
        KorString setting;
        KRSettings::getValue(Reader::settingKey(), setting);
        throw Failure{kNotFound, "the setting " + quote(setting.toUtf8()) +
                                     " names a country add-in that is not installed; name a source with --from"};
    }
    const std::string source = sourceName(dsn, dsn == KorDSNDefinitions::kCountryAddin ? savedIndex : index);
    KorArray<View> records;
    const int read = Reader::getAllRecords(records);
    const KorDSNRequest request(dsn, dsn == KorDSNDefinitions::kCountryAddin ? savedIndex : index);
    if (read != 1)
        throw unreadable(descriptionOf<View>());
    Sheet sheet{{{"View", false},
                 {"Necessary", false},
                 {"For objects of", false},
                 {"Key", true},
                 {"Name", false},
                 {"Source", false}},
                {}};
    for (const Named& view : views) {
        for (const View& record : records) {
            if (!Reader::isApplicable(record, view.key, beam.key))
                continue;
            const auto rule = std::ranges::find(viewRules, record.rule, &Named::key);
            const std::string set = record.detObjQualifierSet == -1
                                        ? "any set"
                                        : nameOrKey<StructDetObjQualifierSet>(record.detObjQualifierSet);
            sheet.rows.push_back({view.name, rule == viewRules.end() ? std::to_string(record.rule) : rule->name,
                                  (record.notDetObjQualifierSet == 1 ? "all but " : "") + set,
                                  std::to_string(record.key), record.runName.toUtf8(), source});
        }
    }
    if (sheet.rows.empty())
        throw Failure{kNotFound, "no rule of " + source + " is for " +
                                     (views.size() == 1 ? "the " + views.front().name + " view" : "a view") +
                                     " of " + quote(beam.name) +
                                     (options.from.empty() ? "; name another source with --from"
                                      : options.keep       ? "; the setting stays as it was"
                                                           : "")};
    if (batch.end(1) != 1)
        throw notKept();
    printSheet(sheet, format);
}

// Exploding

struct ExplodeOptions {
    std::string what, subType;
};

std::string usedText()
{
    switch (KorODBCExplodeSettings::getUsedExplodeSettingsDefault()) {
    case -1:
        return "Nothing says whether explode settings are used; say it with: korodbc explode on";
    case 0:
        return "Explode settings are not used.";
    default:
        return "Explode settings are used.";
    }
}

/// The same where rows are printed: a line above a table, else a column.
void tellUsed(Sheet& sheet, Format format)
{
    if (format == Format::Text) {
        std::puts(usedText().c_str());
        return;
    }
    const int used = KorODBCExplodeSettings::getUsedExplodeSettingsDefault();
    sheet.columns.push_back({"Used"});
    for (std::vector<std::string>& row : sheet.rows)
        row.push_back(used == -1 ? "" : used == 0 ? "no" : "yes");
}

/// Throws when a table of the user's or of the configuration cannot be read.
template <class... T>
void requireSoundBoth()
{
    (requireSound(descriptionOf<T>(), KorDSNDefinitions::kAddin, KorDSNDefinitions::kFirstAddin), ...);
    (requireSound(descriptionOf<T>(), KorDSNDefinitions::kConfiguration, KorDSNDefinitions::kBase), ...);
}

/// What objects become, the user's rows merged in.
void printObjects(Format format)
{
    requireSoundBoth<StructExplodeObjects>();
    KorArray<StructExplodeObjects> objects;
    if (KorODBCExplodeObjects::getExplodeObjectsTable(objects, 1) != 1)
        throw unreadable(descriptionOf<StructExplodeObjects>());
    Sheet sheet{{{"Object", false},
                 {"Solids to", false},
                 {"Solids grouped", true},
                 {"Lines to", false},
                 {"Lines grouped", true},
                 {"Texts to", false},
                 {"Texts grouped", true},
                 {"Source", false}},
                {}};
    for (const StructExplodeObjects& object : objects) {
        StructExplodeObjects own;
        const bool isUsers = KorODBCExplodeObjects::getExplodeObjects(object.name, own, KorDSNDefinitions::kAddin,
                                                                      KorDSNDefinitions::kFirstAddin) == 1;
        sheet.rows.push_back({object.name.toUtf8(), object.solidsTo.toUtf8(), std::to_string(object.solidsGrouped),
                              object.linesTo.toUtf8(), std::to_string(object.linesGrouped),
                              object.textsTo.toUtf8(), std::to_string(object.textsGrouped),
                              isUsers ? sourceName(KorDSNDefinitions::kAddin, KorDSNDefinitions::kFirstAddin)
                                      : sourceName(KorDSNDefinitions::kConfiguration, KorDSNDefinitions::kBase)});
    }
    tellUsed(sheet, format);
    printSheet(sheet, format);
}

void printSettings(const ExplodeOptions& options, Format format)
{
    const Named model = rowNamed<StructDetModelType>(options.what, "model type");
    std::vector<Named> subTypes = namedRows<StructObjectSubType>();
    if (!options.subType.empty())
        subTypes = {
            chosen(subTypes, options.subType, "object sub-type", "list them with: korodbc list ObjectSubType")};
    requireSoundBoth<StructExplodeSettings, StructObjectStructure, StructExplodeProfile>();
    Sheet sheet{{{"Sub-type", false},
                 {"Layer", false},
                 {"Colour", true},
                 {"Line type", false},
                 {"On", true},
                 {"Key", true},
                 {"Source", false}},
                {}};
    for (const Named& subType : subTypes) {
        StructExplodeSettings setting;
        const bool found =
            KorODBCExplodeSettings::getExplodeSettingsForObjectStructure(model.key, subType.key, setting) == 1;
        sheet.rows.push_back(
            {subType.name, setting.layer.toUtf8(), std::to_string(setting.color), setting.lineType.toUtf8(),
             std::to_string(setting.on), std::to_string(setting.key),
             found ? sourceName(KorOdbcMan::m_currentDSN, KorOdbcMan::m_currentAddIn) : "fallback"});
    }
    tellUsed(sheet, format);
    printSheet(sheet, format);
}

void runExplode(const CommandLine& line, const ExplodeOptions& options)
{
    const Format format = line.format();
    GlobalOptions global = line.global();
    const bool on = sameName(options.what, "on");
    if (!on && !sameName(options.what, "off")) {
        const StartedSession session(global);
        options.what.empty() ? printObjects(format) : printSettings(options, format);
        return;
    }
    if (!options.subType.empty())
        throw Failure{kUsage, "\"explode " + options.what + "\" takes no sub-type"};
    line.refuseFormats("explode " + options.what);
    global.start = Start::Write;
    const StartedSession session(global);
    if (KorODBCExplodeSettings::setUsedExplodeSettingsDefault(on ? 1 : 0) != 1)
        throw Failure{kFailed, "the default C40_UseExplodeSettings was not written" +
                                   advised(korodbc::host::lastFailure(), "Configuration")};
    std::puts(usedText().c_str());
}

} // namespace

void addRuleCommands(CommandLine& line)
{
    const auto views = std::make_shared<ViewsOptions>();
    CLI::App* command =
        line.command("views", "Print which rules for views apply to a beam",
                     "korodbc views Column\n  korodbc views Beam section --from Addin\n\n"
                     "Country add-ins come with a new repository: korodbc init FOLDER --country no=Norway",
                     [&line, views] { runViews(line, *views); });
    command->add_option("BEAM", views->beam, "Beam type, by name or key")->required()->type_name("");
    command->add_option("VIEW", views->view, "front, top, side, section, bottom or back (default: all)")
        ->type_name("");
    command
        ->add_option("--from", views->from,
                     "Details, Addin or a country add-in (default: as the setting says, else Details)")
        ->type_name("SOURCE");
    command->add_flag("--keep", views->keep, "Keep the source of --from as the setting");
    line.addFormats(command);

    const auto explode = std::make_shared<ExplodeOptions>();
    command = line.command("explode", "Print what objects become when they are exploded, or switch the settings",
                           "korodbc explode\n  korodbc explode Beam Mark\n  korodbc explode off",
                           [&line, explode] { runExplode(line, *explode); });
    command
        ->add_option("WHAT", explode->what,
                     "Model type, by name or key: its layers, colours and line types; on or off: whether\n"
                     "these are used (default: what each kind of object becomes)")
        ->type_name("");
    command->add_option("SUBTYPE", explode->subType, "Object sub-type, by name or key (default: all)")
        ->type_name("");
    line.addFormats(command);
}
