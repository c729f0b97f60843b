#include "CommandLine.h"
#include "Records.h"

#include <korodbc/catalogues/BarGratings.h>
#include <korodbc/repository/RecordAccess.h>
#include <korodbc/roots/KorStringSeparators.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdio>
#include <memory>

namespace {

using Names = KorArray<KorString>;
using Grating = KorODBCBarGrating;

constexpr std::size_t steps = 6;

struct GratingOptions {
    std::array<std::string, steps> choices;
    std::array<CLI::Option*, steps> options;
    std::string name;
    CLI::Option* decompose;

    /// Those that stand on the command line, empty ones included.
    std::size_t numberOfChoices() const
    {
        return static_cast<std::size_t>(
            std::count_if(options.begin(), options.end(), [](const auto* option) { return option->count() > 0; }));
    }
};

/// The component that was chosen in a step.
struct Choice {
    KorString key, name;

    int number() const { return static_cast<int>(key.toInteger()); }
};
using Choices = std::vector<Choice>;

struct Step {
    const char* thing;
    const RecordDescription& type;
    int (*list)(const Choices& before, Names& names);
};

const Step& stepAt(std::size_t number)
{
    static const Step list[steps] = {
        {"series", descriptionOf<StructBarGratingSeries>(),
         [](const Choices&, Names& names) { return KorODBCBarGratingSeries::getList(names); }},
        {"bearing bar spacing", descriptionOf<StructBearingBarSpacing>(),
         [](const Choices& c, Names& names) { return Grating::getBearingBarSpacingList(c[0].key, names); }},
        {"cross bar spacing", descriptionOf<StructCrossBarSpacing>(),
         [](const Choices& c, Names& names) {
             return Grating::getCrossBarSpacingList(c[0].key, c[1].number(), names);
         }},
        {"bearing bar thickness", descriptionOf<StructBearingBarThickness>(),
         [](const Choices& c, Names& names) {
             return Grating::getBearingBarThicknessList(c[0].key, c[1].number(), c[2].number(), names);
         }},
        {"bearing bar width", descriptionOf<StructBearingBarWidth>(),
         [](const Choices& c, Names& names) {
             return Grating::getBearingBarWidthList(c[0].key, c[1].number(), c[2].number(), c[3].key, names);
         }},
        {"cross bar", descriptionOf<StructCrossBar>(),
         [](const Choices& c, Names& names) {
             return Grating::getCrossBarList(c[0].key, c[1].number(), c[2].number(), c[3].key, c[4].key, names);
         }},
    };
    return list[number];
}

std::string heading(const char* thing)
{
    std::string text = thing;
    text[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(text[0])));
    return text;
}

/// "korodbc grating G 30", which lists what comes next.
std::string commandFor(const Choices& choices)
{
    std::string command = "korodbc grating";
    for (const Choice& choice : choices) {
        const std::string key = choice.key.toUtf8();
        command += " " + (key.find_first_of(" '\"$*") == std::string::npos ? key : quote(key));
    }
    return command;
}

/// What a step offers after the choices before it.
Choices offered(const Choices& before)
{
    const Step& step = stepAt(before.size());
    Names names;
    if (step.list(before, names) != 1)
        throw Failure{kFailed, std::string("the choices of the ") + step.thing + " cannot be read" + because()};
    Choices list;
    for (const KorString& name : names) {
        KorString key;
        if (RecordAccess::keyOfRunName(step.type, name, key) == 1)
            list.push_back({key, name});
    }
    if (list.empty())
        throw Failure{kNotFound, before.empty() ? "there are no series of gratings; import them into table "
                                                  "BarGratingSeries"
                                                : "no grating goes on from these choices; choose among: " +
                                                      commandFor({before.begin(), before.end() - 1})};
    return list;
}

Choice choose(const Choices& before, const std::string& wanted)
{
    const Choices list = offered(before);
    std::vector<std::string> names;
    for (const Choice& choice : list) {
        names.push_back(choice.name.toUtf8());
        names.push_back(choice.key.toUtf8());
        if (choice.key == KorString::fromUtf8(wanted))
            return choice;
    }
    for (const Choice& choice : list)
        if (sameName(choice.name.toUtf8(), wanted) || sameName(choice.key.toUtf8(), wanted))
            return choice;
    const Step& step = stepAt(before.size());
    const AnyRecord known(step.type);
    const bool isKnown = !before.empty() && readRecord(step.type, wanted, known.get());
    throw Failure{kNotFound,
                  (isKnown ? std::string("the choices before offer no ") : std::string("there is no ")) +
                      step.thing + " " + quote(wanted) + nearest(wanted, names) +
                      "; list them with: " + commandFor(before)};
}

void printOffered(const Choices& before, Format format)
{
    const Step& step = stepAt(before.size());
    Sheet sheet{{{heading(step.thing), false}, {"Key", !step.type.hasTextKey()}}, {}};
    for (const ColumnDescription& column : step.type.columns)
        if (column.role == ColumnRole::Value)
            sheet.columns.push_back({std::string(column.name), column.kind != FieldKind::Text});
    for (const Choice& choice : offered(before)) {
        const AnyRecord record(step.type);
        RecordAccess::readByRunName(step.type, choice.name, record.get());
        std::vector<std::string> row{choice.name.toUtf8(), choice.key.toUtf8()};
        for (const ColumnDescription& column : step.type.columns)
            if (column.role == ColumnRole::Value)
                row.push_back(cellText(column, record.get()));
        sheet.rows.push_back(std::move(row));
    }
    printSheet(sheet, format);
}

/// The grating and its parts. `name` is its name.
void printGrating(const KorString& name, const Choices& parts, Format format)
{
    StructBarGrating row;
    const bool exists = Grating::getByKey(parts[0].key, parts[1].number(), parts[2].number(), parts[3].key,
                                          parts[4].key, parts[5].key, row) == 1;
    Sheet sheet{{{"Part", false}, {"Name", false}, {"Key", false}}, {}};
    sheet.rows.push_back({"Grating", name.toUtf8(), exists ? std::to_string(row.key) : ""});
    for (std::size_t i = 0; i < steps; ++i)
        sheet.rows.push_back({heading(stepAt(i).thing), parts[i].name.toUtf8(), parts[i].key.toUtf8()});
    printSheet(sheet, format);
    if (!exists)
        note("table BarGrating has no row of this combination");
}

KorString joined(const Choices& parts)
{
    KorString name;
    for (const Choice& part : parts)
        name = name.isEmpty() ? part.key : name + KorStringSeparators::kStrSectionNameSeparator + part.key;
    return name;
}

/// The keys of a name; false unless it has six fields.
bool takeApart(const KorString& name, Choices& parts)
{
    int bearingBarSpacing = 0, crossBarSpacing = 0;
    parts.resize(steps);
    if (Grating::decomposeBarGratingName(name, parts[0].key, bearingBarSpacing, crossBarSpacing, parts[3].key,
                                         parts[4].key, parts[5].key) != 1)
        return false;
    parts[1].key = KorString::format(L"%d", bearingBarSpacing);
    parts[2].key = KorString::format(L"%d", crossBarSpacing);
    return true;
}

/// The parts of a name with their run names.
Choices partsOf(const KorString& name)
{
    Choices parts;
    const std::string shown = quote(name.toUtf8());
    if (!takeApart(name, parts)) {
        const std::string text = name.toUtf8();
        const long number = text.empty() ? 0 : std::ranges::count(text, '@') + 1;
        throw Failure{kUsage,
                      shown + (number == long{steps} ? " has empty fields" : " has " + counted(number, "field")) +
                          ", the name of a grating has six with \"@\" between them; compose one with: "
                          "korodbc grating"};
    }
    if (joined(parts) != name)
        throw Failure{kUsage, shown + " is no name of a grating: it would be read as " +
                                  quote(joined(parts).toUtf8()) +
                                  "; the second and third field are whole numbers, and no field is empty"};
    for (std::size_t i = 0; i < steps; ++i) {
        const Step& step = stepAt(i);
        if (RecordAccess::runNameOfKey(step.type, parts[i].key, parts[i].name) == 1)
            continue;
        requireReadable(step.type);
        KorArray<KorString> known;
        RecordAccess::keys(step.type, known);
        throw Failure{kNotFound, std::string("there is no ") + step.thing + " " + quote(parts[i].key.toUtf8()) +
                                     nearest(parts[i].key.toUtf8(), texts(known)) +
                                     "; list them with: korodbc list " + std::string(step.type.table)};
    }
    return parts;
}

void runGrating(const GlobalOptions& global, const GratingOptions& options, Format format)
{
    const std::size_t given = options.numberOfChoices();
    if (options.decompose->count() > 0 && given > 0)
        throw Failure{kUsage, "--decompose takes a grating apart and needs no choices; leave one of them out"};
    const StartedSession session(global);
    if (options.decompose->count() > 0) {
        const KorString name = KorString::fromUtf8(options.name);
        printGrating(name, partsOf(name), format);
        return;
    }
    Choices choices;
    while (choices.size() < given)
        choices.push_back(choose(choices, options.choices[choices.size()]));
    if (given < steps) {
        printOffered(choices, format);
        return;
    }
    KorString name;
    if (Grating::composeBarGratingName(choices[0].name, choices[1].name, choices[2].name, choices[3].name,
                                       choices[4].name, choices[5].name, name) != 1)
        throw Failure{kFailed, "the name of the grating cannot be composed" + because()};
    Choices parts;
    if (!takeApart(name, parts) || name != joined(choices) || joined(parts) != name)
        throw Failure{kFailed, quote(name.toUtf8()) +
                                   " could not be taken apart again: give each of its parts a run "
                                   "name of its own and a key without \"@\""};
    printGrating(name, choices, format);
}

} // namespace

void addGratingCommands(CommandLine& line)
{
    static constexpr const char* names[steps] = {"SERIES",    "BEARING-SPACING", "CROSS-SPACING",
                                                 "THICKNESS", "WIDTH",           "CROSS-BAR"};
    const auto options = std::make_shared<GratingOptions>();
    CLI::App* grating =
        line.command("grating", "Choose a bar grating in six steps, or take the name of one apart",
                     "korodbc grating\n  korodbc grating G\n  korodbc grating W 19 4 1x3/16 24-19 T1/4\n"
                     "  korodbc grating --decompose G@30@50@25x3@500-30@T6\n\n"
                     "With fewer choices it lists what the next step offers.",
                     [&line, options] { runGrating(line.global(), *options, line.format()); });
    for (std::size_t i = 0; i < steps; ++i)
        options->options[i] =
            grating->add_option(names[i], options->choices[i], heading(stepAt(i).thing) + ", by its name or key")
                ->type_name("");
    options->decompose =
        grating->add_option("--decompose", options->name, "Name of a grating, six fields with @ between them")
            ->type_name("NAME");
    line.addFormats(grating);
}
