#include "Commands.h"
#include "Records.h"

#include <korodbc/catalogues/Bolts.h>
#include <korodbc/lookup/KorOdbcSteelBolts.h>
#include <korodbc/lookup/KorOdbcSteelSections.h>
#include <korodbc/repository/KorDatabaseAccess.h>
#include <korodbc/repository/KorDatabaseProfileAccess.h>
#include <korodbc/repository/RecordAccess.h>

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace {

std::string numberText(double number) { return KorCellData(number).getStringW().toUtf8(); }

KorArray<KorColumn> structureOf(const StoredTable& table)
{
    KorArray<KorColumn> columns;
    if (KorDatabaseAccess::getTableStructure(table.source.dsn, KorString::fromUtf8(table.name), columns) != 1)
        throw unreadable(table.name);
    return columns;
}

/// Run names of a table that no record type describes: its second column.
void storedRunNames(const StoredTable& table, KorArray<KorString>& names)
{
    const KorArray<KorColumn> columns = structureOf(table);
    KorArray<KorCellData> cells;
    if (columns.length() < 2)
        throw Failure{kUsage, "the rows of table " + table.name +
                                  " have no names; print them with: korodbc show " + table.name};
    KorString order;
    for (const KorColumn& column : columns)
        if (column.getName().compareNoCase(L"SortOrder") == 0)
            order = L"[SortOrder], rowid";
    if (KorDatabaseAccess::getColumnValues(table.source.dsn, KorString::fromUtf8(table.name), {}, order, 1,
                                           cells) != 1)
        throw unreadable(table.name);
    KorDatabaseAccess::cellDataArr2StringArr(cells, names);
}

// Conditions

struct Relation {
    const char* sign;
    KorColumn::eRelationalOperators code;
};
constexpr Relation relations[] = {{"<=", KorColumn::kLessOrEqual}, {">=", KorColumn::kGreaterOrEqual},
                                  {"<>", KorColumn::kNotEqual},    {"=", KorColumn::kEqual},
                                  {"<", KorColumn::kLess},         {">", KorColumn::kGreater},
                                  {"~", KorColumn::kLike}};

/// Puts the text into the condition, as the type of its column asks for.
void setValue(KorColumn& condition, const std::string& text)
{
    const std::string name = condition.getName().toUtf8();
    const KorItemType::BaseTypes type = condition.getType();
    const bool isNumber = type == KorItemType::kInt || type == KorItemType::kDouble || type == KorItemType::kBool;
    if (!isNumber || condition.getRelationalOperator() == KorColumn::kLike) {
        condition.setsValue(KorString::fromUtf8(text));
    } else if (text.empty()) {
        if (condition.getRelationalOperator() != KorColumn::kEqual) // only "=" asks for empty cells
            throw Failure{kUsage, "the condition on column " + name + " needs a number"};
    } else if (const auto whole = numberIn<int>(text)) {
        condition.setlValue(*whole);
    } else if (const auto real = numberIn<double>(text); real && std::isfinite(*real)) {
        condition.setdValue(*real);
    } else {
        throw Failure{kUsage, quote(text) + " is no number, and column " + name + " holds numbers"};
    }
}

KorColumn conditionOf(const std::string& text, const StoredTable& table, const KorArray<KorColumn>& columns)
{
    const std::size_t at = text.find_first_of("=<>~");
    if (at == std::string::npos || at == 0)
        throw Failure{kUsage, quote(text) + " is no condition; write COLUMN=VALUE, or another of "
                                            "= <> < <= > >= ~ (like) between them"};
    const Relation& relation = *std::find_if(std::begin(relations), std::end(relations), [&](const Relation& r) {
        return text.compare(at, std::char_traits<char>::length(r.sign), r.sign) == 0;
    });
    const std::string name = text.substr(0, at);
    std::vector<std::string> known;
    for (const KorColumn& column : columns) {
        known.push_back(column.getName().toUtf8());
        if (!sameName(known.back(), name))
            continue;
        KorColumn condition = column;
        condition.setRelationalOperator(relation.code);
        condition.setLogicalOperator(KorColumn::kAnd);
        setValue(condition, text.substr(at + std::char_traits<char>::length(relation.sign)));
        return condition;
    }
    throw Failure{kNotFound, "table " + table.name + " has no column " + quote(name) + nearest(name, known)};
}

// Sections

struct FoundSection {
    StructProfileClass profileClass;
    KorString name;

    std::string internalName() const { return (profileClass.key + KorString(L"@") + name).toUtf8(); }
};

KorString withoutBlanks(const KorString& name) { return name.replace(L" ", L""); }

FoundSection findSection(const std::string& given)
{
    const std::size_t separator = given.find('@');
    const bool ofClass = separator != std::string::npos;
    const std::string className = ofClass ? given.substr(0, separator) : std::string();
    const KorString name = KorString::fromUtf8(ofClass ? given.substr(separator + 1) : given);
    KorArray<StructProfileClass> classes;
    if (StructProfileClassMarshal::getTable(classes) != 1)
        throw Failure{kFailed, "the section classes cannot be read" + because()};
    std::vector<FoundSection> found, similar;
    std::vector<std::string> knownClasses, known;
    for (const StructProfileClass& profileClass : classes) {
        knownClasses.push_back(profileClass.key.toUtf8());
        if (ofClass && !sameName(knownClasses.back(), className) &&
            !sameName(profileClass.runName.toUtf8(), className))
            continue;
        KorArray<KorString> names;
        if (kor_odbc_get_menu_sublist(profileClass.runName, names) != 1) {
            if (!ofClass)
                continue; // a class without a table hides no other
            throw Failure{kFailed, "the sections of class " + knownClasses.back() + " cannot be read" + because()};
        }
        for (const KorString& candidate : names) {
            known.push_back(candidate.toUtf8());
            if (candidate.compareNoCase(name) == 0)
                found.push_back({profileClass, candidate});
            else if (withoutBlanks(candidate).compareNoCase(withoutBlanks(name)) == 0)
                similar.push_back({profileClass, candidate});
        }
        if (ofClass)
            break;
    }
    if (ofClass && known.empty() &&
        std::none_of(knownClasses.begin(), knownClasses.end(),
                     [&](const std::string& key) { return sameName(key, className); }))
        throw Failure{kNotFound, "there is no section class " + quote(className) +
                                     nearest(className, knownClasses) +
                                     "; list them with: korodbc list ProfileMasterTable"};
    if (found.empty())
        found = similar;
    if (found.empty())
        throw Failure{kNotFound, "there is no section " + quote(name.toUtf8()) +
                                     (ofClass ? " in class " + className : "") + nearest(name.toUtf8(), known)};
    if (found.size() > 1) {
        std::string all;
        for (const FoundSection& one : found)
            all += (all.empty() ? "" : ", ") + quote(one.internalName());
        throw Failure{kUsage, counted(static_cast<long>(found.size()), "section") + " have the name " +
                                  quote(given) + "; give one of: " + all};
    }
    return found.front();
}

struct CalculationValue {
    const char* meaning;
    const char* unit;
};
/// In stored order.
constexpr CalculationValue calculationValues[] = {
    {"height", "mm"},
    {"width", "mm"},
    {"thickness of the web, leg or wall", "mm"},
    {"thickness of the flange", "mm"},
    {"radius", "mm"},
    {"area", "cm2"},
    {"mass", "kg/m"},
    {"angle to the strong axis", "degrees"},
    {"moment of inertia, y", "cm4"},
    {"moment of inertia, z", "cm4"},
    {"elastic section modulus, y", "cm3"},
    {"elastic section modulus, z", "cm3"},
    {"plastic section modulus, y", "cm3"},
    {"plastic section modulus, z", "cm3"},
    {"radius of gyration, y", "cm"},
    {"radius of gyration, z", "cm"},
    {"torsion constant", "cm4"},
    {"warping constant", "cm6"},
};

// Bolts

/// The name among those listed, in any case of letters.
std::string nameAmong(const std::vector<std::string>& names, const std::string& wanted, const std::string& thing,
                      const std::string& list)
{
    for (const std::string& name : names)
        if (sameName(name, wanted))
            return name;
    throw Failure{kNotFound, "there is no " + thing + " " + quote(wanted) + nearest(wanted, names) +
                                 "; list them with: " + list};
}

StructStandard standardNamed(const std::string& wanted)
{
    KorArray<KorString> names;
    kor_odbc_getStandardsList(names);
    const std::string name = nameAmong(texts(names), wanted, "bolt standard", "korodbc bolts");
    StructStandard standard;
    if (KorODBCBolts::getStandardExtension(KorString::fromUtf8(name), standard) != 1)
        throw Failure{kFailed, "bolt standard " + quote(name) + " cannot be read" + because()};
    return standard;
}

struct BoltTables {
    KorArray<StructScrew> bolts;
    KorArray<StructSetBolts> assemblies;
    KorArray<StructScrewDiameter> diameters;
};

bool isDiameter(double a, double b) { return std::abs(a - b) <= 1e-6; }

/// The bolts and assemblies of a standard, and the diameters that it has of either.
BoltTables boltsOf(const StructStandard& standard)
{
    BoltTables all, own;
    if (StructScrewMarshal::getTableAllSources(all.bolts) != 1 ||
        StructSetBoltsMarshal::getTableAllSources(all.assemblies) != 1 ||
        StructScrewDiameterMarshal::getTableAllSources(all.diameters) != 1)
        throw Failure{kFailed, "the tables of bolts cannot be read" + because()};
    for (const StructScrew& bolt : all.bolts)
        if (bolt.standard == standard.key)
            own.bolts.append(bolt);
    for (const StructSetBolts& assembly : all.assemblies)
        if (assembly.standard == standard.key)
            own.assemblies.append(assembly);
    for (const StructScrewDiameter& diameter : all.diameters) {
        const auto has = [&](const auto& record) { return isDiameter(record.diameter, diameter.diameter); };
        if (std::any_of(own.bolts.begin(), own.bolts.end(), has) ||
            std::any_of(own.assemblies.begin(), own.assemblies.end(), has))
            own.diameters.append(diameter);
    }
    std::stable_sort(own.diameters.begin(), own.diameters.end(),
                     [](const auto& a, const auto& b) { return a.sortOrder < b.sortOrder; });
    return own;
}

/// Run names of the rows with these keys, each once.
template <class Record, class Records, class KeyOf>
std::string namesOf(const Records& records, double diameter, KeyOf keyOf)
{
    std::string list;
    std::vector<int> seen;
    for (const auto& record : records) {
        if (!isDiameter(record.diameter, diameter) || std::count(seen.begin(), seen.end(), keyOf(record)) > 0)
            continue;
        seen.push_back(keyOf(record));
        list += (list.empty() ? "" : ", ") + runNameOf(descriptionOf<Record>(), keyOf(record));
    }
    return list;
}

void listStandards()
{
    KorArray<KorString> names;
    if (kor_odbc_getStandardsList(names) != 1)
        throw Failure{kFailed, "the bolt standards cannot be read" + because()};
    Sheet sheet{{{"Standard", false}, {"Form", false}, {"Description", false}}, {}};
    for (const KorString& name : names) {
        StructStandard standard;
        KorODBCBolts::getStandardExtension(name, standard);
        sheet.rows.push_back({name.toUtf8(), runNameOf(descriptionOf<StructScrewType>(), standard.screwType),
                              standard.description.toUtf8()});
    }
    printText(sheet);
}

void listDiameters(const StructStandard& standard)
{
    const BoltTables own = boltsOf(standard);
    Sheet sheet{{{"Diameter", false},
                 {"mm", true},
                 {"Hole mm", true},
                 {"Strength classes", false},
                 {"Sets with lengths", false}},
                {}};
    for (const StructScrewDiameter& diameter : own.diameters)
        sheet.rows.push_back(
            {diameter.runName.toUtf8(), numberText(diameter.diameter), numberText(diameter.holeDiameter),
             namesOf<StructStrengthClass>(own.bolts, diameter.diameter,
                                          [](const StructScrew& bolt) { return bolt.strengthClass; }),
             namesOf<StructSet>(own.assemblies, diameter.diameter,
                                [](const StructSetBolts& assembly) { return assembly.boltSet; })});
    printText(sheet);
}

void listBolts(const StructStandard& standard, const std::string& wanted)
{
    const BoltTables own = boltsOf(standard);
    std::vector<std::string> names;
    const StructScrewDiameter* diameter = nullptr;
    const auto number = numberIn<double>(wanted);
    for (const StructScrewDiameter& candidate : own.diameters) {
        names.push_back(candidate.runName.toUtf8());
        if (diameter == nullptr &&
            (sameName(names.back(), wanted) || (number && isDiameter(candidate.diameter, *number))))
            diameter = &candidate;
    }
    if (diameter == nullptr) {
        const std::string name = standard.runName.toUtf8();
        throw Failure{kNotFound, "bolt standard " + name + " has no diameter " + quote(wanted) +
                                     nearest(wanted, names) + "; list them with: korodbc bolts " + quote(name)};
    }
    Sheet bolts{{{"Strength class", false},
                 {"Set", false},
                 {"Head mm", true},
                 {"Across flats mm", true},
                 {"Pitch mm", true},
                 {"Length from mm", true},
                 {"to mm", true}},
                {}};
    for (const StructScrew& bolt : own.bolts)
        if (isDiameter(bolt.diameter, diameter->diameter))
            bolts.rows.push_back({runNameOf(descriptionOf<StructStrengthClass>(), bolt.strengthClass),
                                  runNameOf(descriptionOf<StructSet>(), bolt.boltSet), numberText(bolt.headHeight),
                                  numberText(bolt.acrossFlats), numberText(bolt.pitch),
                                  numberText(bolt.minimumLength), numberText(bolt.maximumLength)});
    Sheet assemblies{
        {{"Set", false}, {"Length mm", true}, {"Grip from mm", true}, {"to mm", true}, {"Mass kg", true}}, {}};
    for (const StructSetBolts& assembly : own.assemblies)
        if (isDiameter(assembly.diameter, diameter->diameter))
            assemblies.rows.push_back({runNameOf(descriptionOf<StructSet>(), assembly.boltSet),
                                       numberText(assembly.length), numberText(assembly.minimumGrip),
                                       numberText(assembly.maximumGrip), numberText(assembly.mass)});
    std::printf("Bolts %s %s\n", standard.runName.toUtf8().c_str(), diameter->runName.toUtf8().c_str());
    printText(bolts);
    if (assemblies.rows.empty()) {
        std::puts("\nNo assemblies with lengths");
        return;
    }
    std::puts("\nAssemblies");
    printText(assemblies);
}

} // namespace

void runList(const GlobalOptions& global, const ListOptions& options)
{
    const StartedSession session(global);
    const StoredTable table = findTable(options.table, options.source);
    noteOpenEdits(table.source, table.name);
    const KorDSNRequest request(table.source.dsn, table.source.index);
    KorArray<KorString> names;
    if (table.type == nullptr) {
        storedRunNames(table, names);
    } else if (table.type->runName < 0) {
        throw Failure{kUsage, "the rows of table " + table.name +
                                  " have no names; print them with: korodbc show " + table.name};
    } else {
        requireReadable(*table.type);
        RecordAccess::runNames(*table.type, names, table.type->sortOrder >= 0); // 0 for a table without rows
    }
    for (const KorString& name : names)
        std::puts(singleLine(name.toUtf8()).c_str());
}

void runFind(const GlobalOptions& global, const FindOptions& options)
{
    const StartedSession session(global);
    const StoredTable table = findTable(options.table, options.source);
    noteOpenEdits(table.source, table.name);
    const KorDSNRequest request(table.source.dsn, table.source.index);
    const KorArray<KorColumn> columns = structureOf(table);
    KorArray<KorColumn> conditions;
    for (const std::string& condition : options.conditions)
        conditions.append(conditionOf(condition, table, columns));
    KorString where;
    KorColumn::getWherePartOfStatement(conditions, where);
    const Sheet sheet = readStored(table, {}, where);
    if (sheet.rows.empty())
        throw Failure{kNotFound,
                      "table " + table.name + " (" + table.source.name + ") has no row that meets the conditions"};
    printSheet(sheet, options.format);
}

void runSection(const GlobalOptions& global, const std::string& name, Format format)
{
    const StartedSession session(global);
    const FoundSection section = findSection(name);
    const KorString internalName = KorString::fromUtf8(section.internalName());
    KorString subtype, material;
    KorArray<double> values;
    double alpha = 0;
    long behaviour = -1;
    int unwind = 0;
    if (kor_odbc_getSectionCalculationParams(values, internalName) != 1 ||
        kor_odbc_getSectionAlpha(alpha, internalName) != 1 ||
        values.length() != static_cast<long>(std::size(calculationValues)))
        throw Failure{kFailed,
                      "the values of section " + quote(section.internalName()) + " cannot be read" + because()};
    kor_odbc_get_sec_subtype_name(internalName, subtype);
    kor_odbc_getMaterialForSectionClass(internalName, material);
    const bool behaves = kor_odbc_getSectionBehaviourKey(section.profileClass.key, behaviour) == 1 &&
                         kor_odbc_getSectionUnwind(unwind, behaviour) == 1;
    constexpr const char* unwindings[] = {"not", "along the outer face", "along the middle of the wall"};
    const bool isKnown = behaves && unwind >= 0 && unwind < static_cast<int>(std::size(unwindings));
    const StructProfileClass& profileClass = section.profileClass;
    Sheet sheet{{{"Property", false}, {"Value", false}, {"Unit", false}, {"Meaning", false}}, {}};
    sheet.rows = {
        {"Section", section.name.toUtf8(), "", "internal name " + section.internalName()},
        {"Class", profileClass.key.toUtf8(), "", profileClass.runName.toUtf8()},
        {"Subtype", subtype.toUtf8(), "", ""},
        {"Standard", profileClass.standard.toUtf8(), "", ""},
        {"Material", material.toUtf8(), "", ""},
        {"Behaviour",
         behaves ? runNameOf(descriptionOf<StructSectionBehaviour>(), static_cast<int>(behaviour)) : "-", "",
         isKnown ? std::string("unwound ") + unwindings[unwind] : ""},
        {"Alpha", numberText(alpha), "degrees", "from the y axis to the strong principal axis"},
    };
    int value = 0;
    for (const ColumnDescription& column : descriptionOf<StructSection>().columns) {
        if (column.kind != FieldKind::Real)
            continue;
        const CalculationValue& meant = calculationValues[value];
        const std::string text = numberText(values[value++]);
        if (!sameName(std::string(column.name), "Alpha")) // stands above
            sheet.rows.push_back({std::string(column.name), text, meant.unit, meant.meaning});
    }
    printSheet(sheet, format);
}

void runBolts(const GlobalOptions& global, const std::string& standard, const std::string& diameter)
{
    const StartedSession session(global);
    if (standard.empty())
        listStandards();
    else if (diameter.empty())
        listDiameters(standardNamed(standard));
    else
        listBolts(standardNamed(standard), diameter);
}
