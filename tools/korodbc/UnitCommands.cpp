#include "CommandLine.h"
#include "Records.h"

#include <korodbc/catalogues/KorODBCMapping.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <memory>
#include <optional>
#include <utility>

namespace {

struct UnitsOptions {
    std::string kind, unit;
    std::vector<std::string> conversion; // value, from, to
    bool types = false;
};

/// A unit of any kind.
struct Unit {
    int key;
    std::string name, symbol, precision;
    double factor;
    bool isUS;
};

struct Kind {
    const UnitKindDescription& is;
    UnitKind number;
    std::vector<Unit> units;
};

std::string numberText(double number, int digits = 17)
{
    char text[64];
    const auto end = digits < 17
                         ? std::to_chars(text, text + sizeof text, number, std::chars_format::general, digits)
                         : std::to_chars(text, text + sizeof text, number);
    return {text, end.ptr};
}

template <UnitKind Number>
std::vector<Unit> unitsOf()
{
    KorArray<StructUnitsOf<Number>> records;
    if (StructUnitsOfMarshal<Number>::getTable(records) != 1)
        throw unreadable(descriptionOf<StructUnitsOf<Number>>());
    std::ranges::stable_sort(records, {}, &StructUnitsOf<Number>::sortOrder);
    std::vector<Unit> units;
    for (const auto& record : records) {
        StructUnits precision;
        precision.key = record.precision;
        KorODBCMapping::getUnitPrecisionByKey(precision);
        units.push_back({record.key, record.runName.toUtf8(), record.symbol.toUtf8(), precision.runName.toUtf8(),
                         record.factor, record.unitSystem == 1});
    }
    return units;
}

template <std::size_t... Number>
constexpr auto readers(std::index_sequence<Number...>)
{
    return std::array{&unitsOf<static_cast<UnitKind>(Number)>...};
}

Kind kindAt(std::size_t number)
{
    static constexpr auto read = readers(std::make_index_sequence<unitKinds.size()>());
    return {unitKinds[number], static_cast<UnitKind>(number), read[number]()};
}

/// A kind by its name, blanks or not.
Kind kindNamed(const std::string& wanted)
{
    const auto packed = [](std::string_view name) {
        return KorString::fromUtf8(name).replace(L" ", L"").replace(L"-", L"").foldedCase();
    };
    std::vector<std::string> names;
    for (std::size_t i = 0; i < unitKinds.size(); ++i) {
        names.emplace_back(unitKinds[i].name);
        if (packed(unitKinds[i].name) == packed(wanted))
            return kindAt(i);
    }
    throw Failure{kNotFound, "there is no kind of units " + quote(wanted) + nearest(wanted, names) +
                                 "; list them with: korodbc units"};
}

/// The unit with that symbol, name or key. Symbols count as written, mN is no MN; names in any case of letters.
const Unit* find(const Kind& kind, const std::string& wanted)
{
    const auto bySymbol = std::ranges::find(kind.units, wanted, &Unit::symbol);
    const auto found =
        bySymbol != kind.units.end() ? bySymbol : std::ranges::find_if(kind.units, [&](const Unit& unit) {
            return sameName(unit.name, wanted) || std::to_string(unit.key) == wanted;
        });
    return found == kind.units.end() ? nullptr : &*found;
}

void addNames(const Kind& kind, std::vector<std::string>& names)
{
    for (const Unit& unit : kind.units)
        for (const std::string& name : {unit.name, unit.symbol})
            if (std::find(names.begin(), names.end(), name) == names.end())
                names.push_back(name);
}

void listKinds(Format format)
{
    Sheet sheet{{{"Kind", false}, {"Base unit", false}, {"Units", true}, {"Symbols", false}}, {}};
    for (std::size_t i = 0; i < unitKinds.size(); ++i) {
        const Kind kind = kindAt(i);
        std::string symbols;
        for (const Unit& unit : kind.units)
            symbols += (symbols.empty() ? "" : ", ") + unit.symbol;
        sheet.rows.push_back({std::string(kind.is.name), std::string(kind.is.baseUnit),
                              std::to_string(kind.units.size()), symbols});
    }
    printSheet(sheet, format);
}

Failure unknownUnit(const Kind& kind, const std::string& wanted)
{
    std::vector<std::string> names;
    addNames(kind, names);
    return {kNotFound, "there is no unit " + quote(wanted) + " of " + std::string(kind.is.name) +
                           nearest(wanted, names) + "; list them with: korodbc units " +
                           quote(std::string(kind.is.name))};
}

void listUnits(const Kind& kind, const std::string& only, Format format)
{
    const Unit* one = only.empty() ? nullptr : find(kind, only);
    if (!only.empty() && one == nullptr)
        throw unknownUnit(kind, only);
    Sheet sheet{{{"Key", true},
                 {"Unit", false},
                 {"Symbol", false},
                 {"Factor", true},
                 {"Base unit", false},
                 {"System", false},
                 {"Precision", false}},
                {}};
    for (const Unit& unit : kind.units)
        if (one == nullptr || one == &unit)
            sheet.rows.push_back({std::to_string(unit.key), unit.name, unit.symbol, numberText(unit.factor),
                                  std::string(kind.is.baseUnit), unit.isUS ? "US" : "metric", unit.precision});
    printSheet(sheet, format);
}

void listTypes(const Kind& kind, Format format)
{
    Sheet sheet{{{"Type", false}, {"Precision", false}, {"Steps in one", true}}, {}};
    KorArray<KorString> types;
    if (KorODBCMapping::getUnitTypeList(static_cast<long>(kind.number), types) != 1)
        throw Failure{kNotFound, "no unit type serves " + std::string(kind.is.name) + because()};
    for (const KorString& name : types) {
        StructUnitsType type;
        type.runName = name;
        KorArray<KorString> precisions;
        KorODBCMapping::getUnitTypeByName(type);
        KorODBCMapping::getUnitPrecisionList(type.key, precisions);
        for (const KorString& shown : precisions) {
            StructUnits precision;
            precision.runName = shown;
            precision.unitType = type.key;
            KorODBCMapping::getUnitPrecisionByNameAndType(precision);
            sheet.rows.push_back({name.toUtf8(), shown.toUtf8(), std::to_string(precision.denominator)});
        }
    }
    printSheet(sheet, format);
}

double valueOf(const std::string& text)
{
    double value = 0;
    const auto end = std::from_chars(text.data(), text.data() + text.size(), value);
    if (end.ec == std::errc::result_out_of_range && end.ptr == text.data() + text.size())
        throw Failure{kUsage, quote(text) + " is too large or too small a number"};
    if (end.ec != std::errc() || end.ptr != text.data() + text.size() || !std::isfinite(value))
        throw Failure{kUsage, quote(text) + " is no number; write it as 1250 or -12.5"};
    return value;
}

/// The kinds that have a unit, or why no kind has.
std::string kindsOf(const std::vector<Kind>& kinds, const std::string& wanted)
{
    std::string list;
    std::vector<std::string> names;
    for (const Kind& kind : kinds) {
        addNames(kind, names);
        if (find(kind, wanted) != nullptr)
            list += (list.empty() ? "" : " or ") + std::string(kind.is.name);
    }
    if (list.empty() && kinds.size() == 1)
        throw unknownUnit(kinds.front(), wanted);
    if (list.empty())
        throw Failure{kNotFound, "there is no unit " + quote(wanted) + nearest(wanted, names) +
                                     "; list them with: korodbc units KIND"};
    return list;
}

void convert(const std::vector<Kind>& kinds, const std::vector<std::string>& conversion, Format format)
{
    const double value = valueOf(conversion[0]);
    for (const Kind& kind : kinds) {
        const Unit *from = find(kind, conversion[1]), *to = find(kind, conversion[2]);
        if (from == nullptr || to == nullptr)
            continue;
        for (const Unit* unit : {from, to})
            if (!std::isfinite(unit->factor) || unit->factor == 0)
                throw Failure{kFailed, "unit " + quote(unit->name) + " of table " + std::string(kind.is.table) +
                                           " has the factor " + numberText(unit->factor) +
                                           "; nothing can be converted by it"};
        // one rounding in the end; two quotients of decimals would show
        const auto exact = static_cast<long double>(value) * from->factor / to->factor;
        const double result = static_cast<double>(exact);
        if (!std::isfinite(result))
            throw Failure{kUsage, quote(conversion[0]) + " is too large to be shown in " + to->symbol};
        const std::string text = numberText(result, 15);
        if (format == Format::Text)
            std::printf("%s %s = %s %s\n", numberText(value).c_str(), singleLine(from->symbol).c_str(),
                        text.c_str(), singleLine(to->symbol).c_str());
        else
            printSheet({{{"Kind", false}, {"Value", true}, {"From", false}, {"Result", true}, {"To", false}},
                        {{std::string(kind.is.name), numberText(value), from->symbol, text, to->symbol}}},
                       format);
        return;
    }
    const std::string first = kindsOf(kinds, conversion[1]), second = kindsOf(kinds, conversion[2]);
    throw Failure{kUsage, quote(conversion[1]) + " measures " + first + ", " + quote(conversion[2]) + " " +
                              second + "; only units of one kind can be converted"};
}

void runUnits(const GlobalOptions& global, const UnitsOptions& options, Format format)
{
    if (options.types && options.kind.empty())
        throw Failure{kUsage, "--types needs a kind, as in: korodbc units distance --types"};
    if (!options.unit.empty() && (options.types || !options.conversion.empty()))
        throw Failure{kUsage, "a single unit goes with neither --types nor --convert; leave one of them out"};
    if (options.types && !options.conversion.empty())
        throw Failure{kUsage, "--types and --convert exclude each other; give one of them"};
    const StartedSession session(global);
    std::vector<Kind> kinds;
    if (!options.kind.empty())
        kinds.push_back(kindNamed(options.kind));
    if (!options.conversion.empty()) {
        for (std::size_t i = 0; options.kind.empty() && i < unitKinds.size(); ++i)
            kinds.push_back(kindAt(i));
        convert(kinds, options.conversion, format);
    } else if (kinds.empty()) {
        listKinds(format);
    } else if (options.types) {
        listTypes(kinds.front(), format);
    } else {
        listUnits(kinds.front(), options.unit, format);
    }
}

} // namespace

void addUnitCommands(CommandLine& line)
{
    const auto options = std::make_shared<UnitsOptions>();
    CLI::App* units = line.command(
        "units", "List the kinds of units, the units of a kind with their factors, or convert a value",
        "korodbc units\n  korodbc units distance\n  korodbc units \"moment of inertia\" in4\n"
        "  korodbc units --convert 12.5 in mm\n\n"
        "A value times the factor of its unit is the value in the base unit of the kind.",
        [&line, options] { runUnits(line.global(), *options, line.format()); });
    units->add_option("KIND", options->kind, "Kind of units (default: list them)")->type_name("");
    units->add_option("UNIT", options->unit, "Name, symbol or key of a unit (default: all of the kind)")
        ->type_name("");
    units->add_flag("--types", options->types, "The ways to write values of the kind, with their precisions");
    units->add_option("--convert", options->conversion, "Value, unit that it is in, unit that is wanted")
        ->type_size(3)
        ->expected(1)
        ->type_name("VALUE FROM TO");
    line.addFormats(units);
}
