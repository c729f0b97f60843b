#include "CommandLine.h"
#include "exchange/ExchangeApplications.h"
#include "exchange/FormatConversions.h"
#include "exchange/MaterialConversions.h"
#include "exchange/SectionConversions.h"
#include "Records.h"
#include "repository/KorDatabaseProfileAccess.h"

#include <algorithm>
#include <cstdio>

namespace {

constexpr int thisApplication = 1;
constexpr int straightMembers = 1; // object type

struct MapOptions {
    std::string name, profileClass, to, from, format, application = "1", objectType = "1";
    bool neutral = false, back = false;
};

/// Key of the row with this key, or with this name in any case of letters.
template <class Record>
int keyNamed(const std::string& wanted, const char* thing)
{
    KorArray<Record> records;
    const std::string table(descriptionOf<Record>().table);
    if (RecordMarshal<Record>::getTable(records) != 1)
        throw Failure{kFailed, "table " + table + " cannot be read" + because()};
    std::vector<std::string> names;
    for (const Record& record : records) {
        names.push_back(record.runName.toUtf8());
        if (sameName(names.back(), wanted))
            return record.key;
    }
    for (const Record& record : records)
        if (std::to_string(record.key) == wanted)
            return record.key;
    throw Failure{kNotFound, std::string("there is no ") + thing + " " + quote(wanted) + nearest(wanted, names) +
                                 "; list them with: korodbc list " + table};
}

int application(const std::string& wanted) { return keyNamed<StructQXT_Application>(wanted, "application"); }

std::string applicationName(int key) { return runNameOf(descriptionOf<StructQXT_Application>(), key); }

void requireOneOf(const MapOptions& options, const char* choices)
{
    if (!options.to.empty() + !options.from.empty() + options.neutral + !options.format.empty() != 1)
        throw Failure{kUsage, std::string("give one of ") + choices};
    if (options.back && options.format != "sdnf")
        throw Failure{kUsage, "--back goes with --format sdnf"};
}

/// Says on stderr which rules are no expressions.
void noteFaultyRules()
{
    constexpr int most = 5; // of each table
    for (int (*read)(KorArray<KorExchangeRule>&) :
         {KorODBCQXT_Profile_Conversion::getFaultyRules, KorODBCProfile_Exports_Conversion::getFaultyRules}) {
        KorArray<KorExchangeRule> rules;
        read(rules);
        for (int i = 0; i < std::min(rules.length(), most); ++i)
            std::fprintf(stderr,
                         "korodbc: note: table %s: in the row of key %d the expression %s does not compile (%s); "
                         "it counts as a plain name\n",
                         rules[i].table.toUtf8().c_str(), rules[i].key,
                         singleLine(quote(rules[i].expression.toUtf8())).c_str(),
                         singleLine(rules[i].error.toUtf8()).c_str());
        if (rules.length() > most)
            std::fprintf(stderr, "korodbc: note: table %s: so do the expressions of %s more\n",
                         rules[0].table.toUtf8().c_str(), counted(rules.length() - most, "row").c_str());
    }
}

const std::vector<Sheet::Column> ruleColumns = {{"Names of", false}, {"Class", false}, {"Section", false},
                                                {"Table", false},    {"Row", true},    {"Expression", false}};

void addRule(Sheet& sheet, const std::string& namesOf, const KorExchangeRule& rule)
{
    sheet.rows.push_back({namesOf, rule.answerClass.toUtf8(), rule.answerSection.toUtf8(), rule.table.toUtf8(),
                          std::to_string(rule.key), rule.expression.toUtf8()});
}

/// The names of the catalogue's own sections that are near; nothing when it is one of them.
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
    return std::ranges::count(names, name) > 0 ? std::string() : nearest(name, names);
}

[[noreturn]] void noRule(const MapOptions& options, int from, int to, const KorArray<KorExchangeRule>& rules)
{
    if (!rules.isEmpty())
        throw Failure{kNotFound, "no row of table Profile_Exports_Conversion gives the neutral section " +
                                     quote(rules[0].answerSection.toUtf8()) + " of class " +
                                     quote(rules[0].answerClass.toUtf8()) + " a name of " +
                                     quote(applicationName(to))};
    const bool anyClass = options.profileClass.empty() || options.profileClass == "-";
    throw Failure{kNotFound, "no row of table QXT_Profile_Conversion gives the section " + quote(options.name) +
                                 (anyClass ? "" : " of class " + quote(options.profileClass)) + " of " +
                                 quote(applicationName(from)) + " a neutral name" +
                                 (from == thisApplication ? nearestSection(options.name) : "")};
}

Sheet mapSectionByRules(const MapOptions& options)
{
    const bool toNative = !options.from.empty();
    const int other = application(toNative ? options.from : options.neutral ? options.application : options.to);
    requireReadable(descriptionOf<StructQXT_Profile_Conversion>());
    requireReadable(descriptionOf<StructProfile_Exports_Conversion>());
    noteFaultyRules();
    const KorString profileClass = KorString::fromUtf8(options.profileClass);
    const KorString name = KorString::fromUtf8(options.name);
    const int from = toNative || options.neutral ? other : thisApplication;
    const int to = toNative ? thisApplication : other;
    Sheet sheet{ruleColumns, {}};
    KorArray<KorExchangeRule> rules;
    KorString outClass, outSection;
    if (options.neutral) {
        KorExchangeRule rule;
        const int objectType = keyNamed<StructObject_Type>(options.objectType, "object type");
        if (KorODBCQXT_Profile_Conversion::getQXTProfiles(profileClass, name, objectType, from, outClass,
                                                          outSection, rule) != 1)
            noRule(options, from, to, rules);
        addRule(sheet, "neutral", rule);
        return sheet;
    }
    if (KorODBCProfile_Exports_Conversion::getMappedSection(profileClass, name, other, toNative, outClass,
                                                            outSection, rules) != 1)
        noRule(options, from, to, rules);
    addRule(sheet, "neutral", rules[0]);
    addRule(sheet, applicationName(to), rules[1]);
    return sheet;
}

/// Looks a name up in a plain table; the row of the record that answers.
template <class Record, class Find>
Sheet found(const MapOptions& options, const std::string& thing, Find find)
{
    const RecordDescription& type = descriptionOf<Record>();
    requireReadable(type);
    Record record;
    if (find(KorString::fromUtf8(options.name), record) != 1) {
        KorArray<KorString> names; // native ones
        std::vector<std::string> known;
        if (!options.back)
            RecordMarshal<Record>::getRunNameList(names);
        for (const KorString& name : names)
            known.push_back(name.toUtf8());
        throw Failure{kNotFound, "table " + std::string(type.table) + " has no row for the " + thing + " " +
                                     quote(options.name) + nearest(options.name, known)};
    }
    Sheet sheet = sheetOf(type, 0);
    sheet.rows.push_back(rowOf(type, &record, 0));
    sheet.columns.insert(sheet.columns.begin(), {"Table", false});
    sheet.rows[0].insert(sheet.rows[0].begin(), std::string(type.table));
    return sheet;
}

Sheet mapSectionToFormat(const MapOptions& options)
{
    if (options.format == "kiss")
        return found<StructKISS_Profile_Conversion>(options, "section", [&](const KorString& name, auto& record) {
            return KorODBCKISS_Profile_Conversion::getKISSProfiles(
                name, keyNamed<StructKISS_Application>(options.application, "application"), record);
        });
    if (options.back)
        return found<StructSDNF_Profile_Conversion>(options, "SDNF section",
                                                    &KorODBCSDNF_Profile_Conversion::getHSProfiles);
    const int own = application(options.application);
    Sheet sheet =
        found<StructSDNF_Profile_Conversion>(options, "section", [&](const KorString& name, auto& record) {
            return KorODBCSDNF_Profile_Conversion::getSDNFProfiles(name, own, record);
        });
    StructSDNF_Profile_Definition definition;
    const int rotated = KorODBCSDNF_Profile_Definition::getClassRotation(KorString::fromUtf8(options.profileClass),
                                                                         own, straightMembers, definition);
    if (rotated == 1) {
        sheet.columns.push_back({"Rotation", true});
        sheet.rows[0].push_back(KorCellData(definition.rotation).getStringW().toUtf8());
    }
    return sheet;
}

Sheet mapMaterial(const MapOptions& options)
{
    if (options.format == "kiss")
        return found<StructKISS_Material_Conversion>(
            options, "material", [&](const KorString& name, auto& record) {
                return KorODBCKISS_Material_Conversion::getKISSMaterials(
                    name, keyNamed<StructKISS_Application>(options.application, "application"), record);
            });
    using Materials = KorODBCQXT_Material_Conversion;
    const bool toNative = !options.from.empty();
    const int other = application(toNative ? options.from : options.neutral ? options.application : options.to);
    const int from = toNative || options.neutral ? other : thisApplication;
    const int to = toNative ? thisApplication : other;
    requireReadable(descriptionOf<StructQXT_Material_Conversion>());
    const KorString name = KorString::fromUtf8(options.name);
    Sheet sheet{{{"Names of", false}, {"Material", false}, {"Table", false}, {"Row", true}}, {}};
    const auto add = [&](const std::string& namesOf, const KorString& material, int key) {
        sheet.rows.push_back({namesOf, material.toUtf8(), "QXT_Material_Conversion", std::to_string(key)});
    };
    StructQXT_Material_Conversion neutral, mapped;
    if (Materials::getQXTMaterials(name, from, neutral) != 1) {
        KorArray<StructQXT_Material_Conversion> rows;
        StructQXT_Material_ConversionMarshal::getTable(rows);
        std::vector<std::string> names;
        for (const StructQXT_Material_Conversion& row : rows)
            if (row.application == from)
                names.push_back(row.material.toUtf8());
        throw Failure{kNotFound, "no row of table QXT_Material_Conversion gives the material " +
                                     quote(options.name) + " of " + quote(applicationName(from)) +
                                     " a neutral name" + nearest(options.name, names)};
    }
    add("neutral", neutral.qxtMaterial, neutral.key);
    if (options.neutral)
        return sheet;
    if (Materials::getMappedMaterial(name, other, toNative, mapped) != 1)
        throw Failure{kNotFound, "no row of table QXT_Material_Conversion gives the neutral material " +
                                     quote(neutral.qxtMaterial.toUtf8()) + " a name of " +
                                     quote(applicationName(to))};
    add(applicationName(to), mapped.material, mapped.key);
    return sheet;
}

Sheet mapBolt(const MapOptions& options)
{
    if (options.back)
        return found<StructCIS2_Bolt_Conversion>(options, "CIS/2 bolt standard",
                                                 &KorODBCCIS2_Bolt_Conversion::getKRStandards);
    const int own = application(options.application);
    return found<StructCIS2_Bolt_Conversion>(options, "bolt standard", [&](const KorString& name, auto& record) {
        return KorODBCCIS2_Bolt_Conversion::getCIS2Standards(name, own, record);
    });
}

} // namespace

void addExchangeCommands(CommandLine& line)
{
    const auto options = std::make_shared<MapOptions>();
    const auto add = [&line, options](const char* name, const char* description, const char* example, auto map) {
        CLI::App* command = line.command(name, description, example, [&line, options, map] {
            const Format format = line.format();
            const StartedSession session(line.global());
            printSheet(map(*options), format);
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
        command->add_option("--to", options->to, "From this application to that one, by key or name")
            ->type_name("APP");
        command->add_option("--from", options->from, "From that application to this one")->type_name("APP");
        command->add_flag("--neutral", options->neutral, "To the neutral name");
        command->add_option("--format", options->format, std::string("By the plain table of a format: ") + formats)
            ->type_name("FORMAT");
    };
    CLI::App* section =
        add("map-section", "Map a section to the name that another application has for it, or back",
            "korodbc map-section HEA200 --to IFC\n"
            "  korodbc map-section HEA200 --class IfcIShapeProfileDef --from IFC\n"
            "  korodbc map-section HEA200 --class HEA --format sdnf\n\n"
            "Prints the names and the rows that gave them. Expressions that do not compile are noted on stderr.",
            [](const MapOptions& given) {
                requireOneOf(given, "--to, --from, --neutral, --format");
                if (given.format.empty())
                    return mapSectionByRules(given);
                if (given.format != "kiss" && given.format != "sdnf")
                    throw Failure{kUsage, "there is no format " + quote(given.format) +
                                              nearest(given.format, {"kiss", "sdnf"}) + "; give kiss or sdnf"};
                return mapSectionToFormat(given);
            });
    section->add_option("--class", options->profileClass, "Class of the section (default, or \"-\": any)")
        ->type_name("CLASS");
    section
        ->add_option("--object-type", options->objectType,
                     "With --neutral: key or name of the object type (default: straight members)")
        ->type_name("TYPE");
    addDirections(section, "kiss, sdnf");
    section->add_flag("--back", options->back, "With --format sdnf: NAME is the name in the format");
    CLI::App* material =
        add("map-material", "Map a material to the name that another application has for it, or back",
            "korodbc map-material S355J2 --to CIS/2\n  korodbc map-material S355J2 --format kiss",
            [](const MapOptions& given) {
                requireOneOf(given, "--to, --from, --neutral, --format");
                if (!given.format.empty() && given.format != "kiss")
                    throw Failure{kUsage, "there is no table of materials for the format " + quote(given.format) +
                                              "; give kiss"};
                return mapMaterial(given);
            });
    addDirections(material, "kiss");
    CLI::App* bolt = add("map-bolt", "Map a bolt standard to its name in CIS/2 files, or back",
                         "korodbc map-bolt \"ISO 4014\"\n  korodbc map-bolt ISO_4014 --back", &mapBolt);
    bolt->add_flag("--back", options->back, "NAME is the name in CIS/2 files");
}
