#include "Choices.h"
#include "CommandLine.h"

#include <korodbc/exchange/ExchangeApplications.h>
#include <korodbc/exchange/FormatConversions.h>
#include <korodbc/exchange/MaterialConversions.h>
#include <korodbc/exchange/SectionConversions.h>
#include <korodbc/repository/KorDatabaseProfileAccess.h>

#include <algorithm>
#include <memory>

namespace {

struct MapOptions {
    std::string name, profileClass, to, from, format, application = "1", objectType = "1";
    bool neutral = false, back = false, plate = false;
};

constexpr int thisApplication = 1;
constexpr int straightMembers = 1; // object type
const Named neutralSide{-1, "neutral"};

Named application(const std::string& wanted)
{
    return wanted.empty() ? application(std::to_string(thisApplication))
                          : rowNamed<StructQXT_Application>(wanted, "application");
}

/// An application, or the neutral names.
Named side(const std::string& wanted)
{
    return sameName(wanted, neutralSide.name) ? neutralSide : application(wanted);
}

struct Way {
    Named from, to;
};

Way wayOf(const MapOptions& options)
{
    const Way way = options.neutral ? Way{application(options.application), neutralSide}
                                    : Way{side(options.from), side(options.to)};
    if (way.from.key == neutralSide.key && way.to.key == neutralSide.key)
        throw Failure{kUsage, "a neutral name is to become the name of an application; name that with --to"};
    return way;
}

/// Refuses options that say nothing beside the others.
void requireFitting(const CommandLine& line, const MapOptions& options)
{
    const bool byRules = options.format.empty();
    if ((!options.to.empty() || !options.from.empty()) + options.neutral + !byRules != 1)
        throw Failure{kUsage, "give one of --to, --from, --neutral, --format; only --to and --from go together"};
    line.goesWith("--back", options.format == "sdnf", "--format sdnf");
    line.goesWith("--plate", options.format == "kiss", "--format kiss");
    line.goesWith("--application", options.neutral || (!byRules && !options.back && !options.plate),
                  "--neutral or --format, with neither --back nor --plate");
    line.goesWith("--object-type", byRules, "--to, --from or --neutral");
    line.goesWith("--class", byRules || (options.format == "sdnf" && !options.back),
                  "--to, --from, --neutral or --format sdnf, without --back");
}

/// What no row gives: of `thing`, say a section of an application, `answer`.
Failure noRow(std::string_view table, const std::string& thing, const std::string& answer,
              const std::string& hint = {})
{
    return {kNotFound, "no row of table " + std::string(table) + " gives the " + thing + " " + answer + hint};
}

std::string ofApplication(const Named& application) { return " of " + quote(application.name); }

std::string ofClass(const KorString& profileClass)
{
    return profileClass.isEmpty() || profileClass == L"-" ? "" : " of class " + quote(profileClass.toUtf8());
}

/// What column `name` holds in the rows of an application.
template <class Record>
std::vector<std::string> namesOf(const Named& application, KorString Record::*name)
{
    KorArray<Record> records;
    RecordMarshal<Record>::getTable(records);
    std::vector<std::string> names;
    for (const Record& record : records) {
        if constexpr (requires { record.application; })
            if (record.application != application.key)
                continue;
        names.push_back((record.*name).toUtf8());
    }
    return names;
}

/// Says which rules of an application are no expressions.
template <class Record>
void noteFaultyRules(int (*read)(KorArray<KorExchangeRule>&), const Named& application)
{
    constexpr int most = 5;
    KorArray<KorExchangeRule> rules;
    read(rules);
    int faulty = 0;
    for (const KorExchangeRule& rule : rules) {
        Record record;
        if (RecordMarshal<Record>::getStructByKey(rule.key, record) == 1 && record.application != application.key)
            continue;
        if (++faulty > most)
            continue;
        const std::string expression = rule.expression.toUtf8();
        std::string error = rule.error.toUtf8();
        if (error.ends_with(": " + expression)) // it is quoted before
            error.resize(error.size() - expression.size() - 2);
        note("table " + rule.table.toUtf8() + ": in the row of key " + std::to_string(rule.key) +
             " the expression " + quote(expression) + " does not compile (" + error +
             "); it counts as a plain name");
    }
    if (faulty > most)
        note("table " + rules[0].table.toUtf8() + ": so do the expressions of " + counted(faulty - most, "row") +
             " more");
}

/// The names of the catalogue's own sections that are near.
std::string nearestSection(const std::string& name)
{
    KorArray<StructProfileClass> classes;
    StructProfileClassMarshal::getTable(classes);
    std::vector<std::string> names;
    for (const StructProfileClass& profileClass : classes)
        KorDatabaseProfileAccess::visitSections(profileClass, [&](const StructSection& section) {
            names.push_back(section.sectionName.toUtf8());
            return true;
        });
    return nearest(name, names);
}

Sheet mapSectionByRules(const MapOptions& options)
{
    using Native = KorODBCQXT_Profile_Conversion;
    using Exports = KorODBCProfile_Exports_Conversion;
    const Way way = wayOf(options);
    const int objectType = rowNamed<StructObject_Type>(options.objectType, "object type").key;
    KorString profileClass = KorString::fromUtf8(options.profileClass);
    KorString section = KorString::fromUtf8(options.name);
    KorExchangeRule rule;
    Sheet sheet{{{"Names of"}, {"Class"}, {"Section"}, {"Table"}, {"Row", true}, {"Expression"}}, {}};
    const auto add = [&](const Named& namesOf) {
        sheet.rows.push_back({namesOf.name, rule.answerClass.toUtf8(), rule.answerSection.toUtf8(),
                              rule.table.toUtf8(), std::to_string(rule.key), rule.expression.toUtf8()});
    };
    if (way.from.key != neutralSide.key) {
        requireReadable(descriptionOf<StructQXT_Profile_Conversion>());
        noteFaultyRules<StructQXT_Profile_Conversion>(Native::getFaultyRules, way.from);
        if (Native::getQXTProfiles(profileClass, section, objectType, way.from.key, profileClass, section, rule) !=
            1)
            throw noRow("QXT_Profile_Conversion",
                        "section " + quote(options.name) + ofClass(profileClass) + ofApplication(way.from),
                        "a neutral name", way.from.key == thisApplication ? nearestSection(options.name) : "");
        add(neutralSide);
    }
    if (way.to.key != neutralSide.key) {
        requireReadable(descriptionOf<StructProfile_Exports_Conversion>());
        noteFaultyRules<StructProfile_Exports_Conversion>(Exports::getFaultyRules, way.to);
        if (Exports::getExportProfiles(profileClass, section, way.to.key, objectType, profileClass, section,
                                       rule) != 1)
            throw noRow("Profile_Exports_Conversion",
                        "neutral section " + quote(section.toUtf8()) + ofClass(profileClass),
                        "a name" + ofApplication(way.to));
        add(way.to);
    }
    return sheet;
}

/// A row of a plain table, as it stands.
template <class Record>
Sheet shown(const Record& record)
{
    const RecordDescription& type = descriptionOf<Record>();
    Sheet sheet = sheetOf(type, 0);
    sheet.rows.push_back(rowOf(type, &record, 0));
    sheet.columns.insert(sheet.columns.begin(), {"Table"});
    sheet.rows[0].insert(sheet.rows[0].begin(), std::string(type.table));
    return sheet;
}

/// Looks a native name up in the table of a format.
template <class Record, class Find>
Sheet toFormat(const MapOptions& options, const std::string& thing, const char* answer, const Named& application,
               Find find)
{
    requireReadable(descriptionOf<Record>());
    Record record;
    if (find(KorString::fromUtf8(options.name), application.key, record) != 1)
        throw noRow(descriptionOf<Record>().table,
                    thing + " " + quote(options.name) +
                        (application.name.empty() ? "" : ofApplication(application)),
                    answer, nearest(options.name, namesOf<Record>(application, &Record::runName)));
    return shown(record);
}

/// Looks a name of a format up.
template <class Record>
Sheet fromFormat(const MapOptions& options, const char* thing, int (*find)(KorString name, Record& record))
{
    requireReadable(descriptionOf<Record>());
    Record record;
    if (find(KorString::fromUtf8(options.name), record) != 1)
        throw noRow(descriptionOf<Record>().table, thing + (" " + quote(options.name)), "a name of the catalogue");
    return shown(record);
}

Named kissApplication(const MapOptions& options)
{
    return rowNamed<StructKISS_Application>(options.application, "KISS application");
}

Sheet mapSectionToFormat(const MapOptions& options)
{
    if (options.format == "kiss")
        return toFormat<StructKISS_Profile_Conversion>(options, "section", "a name in KISS files",
                                                       kissApplication(options),
                                                       &KorODBCKISS_Profile_Conversion::getKISSProfiles);
    if (options.back)
        return fromFormat<StructSDNF_Profile_Conversion>(options, "SDNF section",
                                                         &KorODBCSDNF_Profile_Conversion::getHSProfiles);
    const Named own = application(options.application);
    Sheet sheet = toFormat<StructSDNF_Profile_Conversion>(options, "section", "a name in SDNF files", own,
                                                          &KorODBCSDNF_Profile_Conversion::getSDNFProfiles);
    if (options.profileClass.empty() || options.profileClass == "-")
        return sheet;
    using Definition = StructSDNF_Profile_Definition;
    requireReadable(descriptionOf<Definition>());
    Definition definition;
    if (KorODBCSDNF_Profile_Definition::getClassRotation(KorString::fromUtf8(options.profileClass), own.key,
                                                         straightMembers, definition) != 1)
        throw noRow("SDNF_Profile_Definition", "class " + quote(options.profileClass) + ofApplication(own),
                    "a rotation", nearest(options.profileClass, namesOf<Definition>(own, &Definition::runName)));
    sheet.columns.push_back({"Rotation", true});
    sheet.rows[0].push_back(KorCellData(definition.rotation).getStringW().toUtf8());
    return sheet;
}

Sheet mapMaterialToFormat(const MapOptions& options)
{
    if (options.plate)
        return toFormat<StructKISSPlate_Material>(
            options, "plate in the role", "a name in KISS files", {},
            [](const KorString& role, int, StructKISSPlate_Material& record) {
                return KorODBCKISS_Plate_Material::getKissPlateMaterial(role, record);
            });
    return toFormat<StructKISS_Material_Conversion>(options, "material", "a name in KISS files",
                                                    kissApplication(options),
                                                    &KorODBCKISS_Material_Conversion::getKISSMaterials);
}

Sheet mapMaterialByNames(const MapOptions& options)
{
    using Materials = KorODBCQXT_Material_Conversion;
    using Row = StructQXT_Material_Conversion;
    const Way way = wayOf(options);
    requireReadable(descriptionOf<Row>());
    KorString material = KorString::fromUtf8(options.name);
    Row row;
    Sheet sheet{{{"Names of"}, {"Material"}, {"Table"}, {"Row", true}}, {}};
    const auto add = [&](const Named& namesOf, const KorString& name) {
        sheet.rows.push_back({namesOf.name, name.toUtf8(), "QXT_Material_Conversion", std::to_string(row.key)});
        material = name;
    };
    if (way.from.key != neutralSide.key) {
        if (Materials::getQXTMaterials(material, way.from.key, row) != 1)
            throw noRow("QXT_Material_Conversion", "material " + quote(options.name) + ofApplication(way.from),
                        "a neutral name", nearest(options.name, namesOf(way.from, &Row::material)));
        add(neutralSide, row.qxtMaterial);
    }
    if (way.to.key != neutralSide.key) {
        if (Materials::getAppMaterials(way.to.key, material, row) != 1)
            throw noRow("QXT_Material_Conversion", "neutral material " + quote(material.toUtf8()),
                        "a name" + ofApplication(way.to),
                        sheet.rows.empty() ? nearest(options.name, namesOf(way.to, &Row::qxtMaterial)) : "");
        add(way.to, row.material);
    }
    return sheet;
}

Sheet mapSection(const CommandLine& line, const MapOptions& options)
{
    requireFitting(line, options);
    if (options.format.empty())
        return mapSectionByRules(options);
    if (options.format != "kiss" && options.format != "sdnf")
        throw Failure{kUsage, "there is no format " + quote(options.format) +
                                  nearest(options.format, {"kiss", "sdnf"}) + "; give kiss or sdnf"};
    return mapSectionToFormat(options);
}

Sheet mapMaterial(const CommandLine& line, const MapOptions& options)
{
    requireFitting(line, options);
    if (!options.format.empty() && options.format != "kiss")
        throw Failure{kUsage, "there is no table of materials for the format " + quote(options.format) +
                                  nearest(options.format, {"kiss"}) + "; give kiss"};
    return options.format.empty() ? mapMaterialByNames(options) : mapMaterialToFormat(options);
}

Sheet mapBolt(const CommandLine& line, const MapOptions& options)
{
    line.goesWith("--application", !options.back, "names of the catalogue, not with --back");
    if (options.back)
        return fromFormat<StructCIS2_Bolt_Conversion>(options, "CIS/2 bolt standard",
                                                      &KorODBCCIS2_Bolt_Conversion::getKRStandards);
    return toFormat<StructCIS2_Bolt_Conversion>(options, "bolt standard", "a name in CIS/2 files",
                                                application(options.application),
                                                &KorODBCCIS2_Bolt_Conversion::getCIS2Standards);
}

} // namespace

void addExchangeCommands(CommandLine& line)
{
    const auto options = std::make_shared<MapOptions>();
    const auto add = [&line, options](const char* name, const char* description, const char* example,
                                      Sheet (*map)(const CommandLine&, const MapOptions&)) {
        CLI::App* command = line.command(name, description, example, [&line, options, map] {
            const Format format = line.format();
            const StartedSession session(line.global());
            printSheet(map(line, *options), format);
        });
        command->add_option("NAME", options->name, "Name to map, in its own case of letters")
            ->required()
            ->type_name("");
        command
            ->add_option(
                "--application", options->application,
                "With --neutral or a format: the application that NAME is of, by key or name\n(default: this one)")
            ->type_name("APP");
        line.addFormats(command);
        return command;
    };
    const auto addDirections = [options](CLI::App* command, const char* formats) {
        command
            ->add_option(
                "--to", options->to,
                "To the name of this application, by key or name, or neutral (default:\nthis application)")
            ->type_name("APP");
        command
            ->add_option("--from", options->from,
                         "NAME is a name of this application, or neutral (default: the same)")
            ->type_name("APP");
        command->add_flag("--neutral", options->neutral, "To the neutral name");
        command->add_option("--format", options->format, std::string("By the plain table of a format: ") + formats)
            ->type_name("FORMAT");
    };
    CLI::App* section =
        add("map-section", "Map a section to the name that another application has for it, or back",
            "korodbc map-section HEA200 --to IFC\n"
            "  korodbc map-section HEA200 --class IfcIShapeProfileDef --from IFC\n"
            "  korodbc map-section \"HE 200 A\" --from neutral --to SDNF\n"
            "  korodbc map-section HEA200 --class HEA --format sdnf\n\n"
            "Prints the names and the rows that gave them. Expressions that do not compile are noted on stderr.",
            mapSection);
    section->add_option("--class", options->profileClass, "Class of the section (default, or \"-\": any)")
        ->type_name("CLASS");
    section
        ->add_option("--object-type", options->objectType,
                     "Key or name of the object type whose rules are asked (default: straight members)")
        ->type_name("TYPE");
    addDirections(section, "kiss, sdnf");
    section->add_flag("--back", options->back, "With --format sdnf: NAME is the name in the format");
    CLI::App* material =
        add("map-material", "Map a material to the name that another application has for it, or back",
            "korodbc map-material S355J2 --to CIS/2\n  korodbc map-material S355J2 --format kiss\n"
            "  korodbc map-material \"Base plate\" --format kiss --plate",
            mapMaterial);
    addDirections(material, "kiss");
    material->add_flag("--plate", options->plate, "With --format kiss: NAME is the model role of a plate");
    CLI::App* bolt = add("map-bolt", "Map a bolt standard to its name in CIS/2 files, or back",
                         "korodbc map-bolt \"ISO 4014\"\n  korodbc map-bolt ISO_4014 --back", mapBolt);
    bolt->add_flag("--back", options->back, "NAME is the name in CIS/2 files");
}
