#include "PreferredLists.h"

#include "Records.h"

#include <korodbc/catalogues/KorOdbcGrouping.h>
#include <korodbc/records/configuration/AnchorRecords.h>
#include <korodbc/records/configuration/BoltRecords.h>
#include <korodbc/records/configuration/ConnectorRecords.h>
#include <korodbc/records/configuration/GratingRecords.h>
#include <korodbc/records/configuration/SectionRecords.h>
#include <korodbc/repository/KorDatabaseAccess.h>

#include <algorithm>
#include <vector>

namespace {

using Grouping = KorOdbcGrouping;
using Names = KorArray<KorString>;

struct Kind {
    const char* name;
    Grouping::eRole kind;
};
constexpr Kind kinds[] = {{"beam", Grouping::kBeam},     {"plate", Grouping::kPlate},
                          {"bolt", Grouping::kBolt},     {"stud", Grouping::kStudShears},
                          {"weld", Grouping::kWeld},     {"grating", Grouping::kGrating},
                          {"anchor", Grouping::kAnchor}, {"wall", Grouping::kWall},
                          {"slab", Grouping::kSlab},     {"footing", Grouping::kFootingIsolated}};

constexpr unsigned anyKind = ~0u;
constexpr unsigned ofMaterials = 1u << Grouping::kBeam | 1u << Grouping::kPlate | 1u << Grouping::kGrating |
                                 1u << Grouping::kWall | 1u << Grouping::kSlab | 1u << Grouping::kFootingIsolated;

/// The options for what is chosen before, as PreferredQuestion holds them.
struct Choice {
    const char* name;
    const char* shows;
};
constexpr Choice choices[PreferredQuestion::options] = {{"--standard", "Standard of bolts, anchors or studs"},
                                                        {"--strength", "Strength class of bolts or anchors"},
                                                        {"--set", "Set of nuts and washers"},
                                                        {"--material", "Material of studs"},
                                                        {"--class", "Class of sections or gratings"},
                                                        {"--subtype", "Subtype of sections"}};

/// What a list needs chosen before: the option, and the table whose row it names.
struct Need {
    std::size_t choice;
    const RecordDescription& (*type)();
    eDSN dsn = KorDSNDefinitions::kConfiguration;
    bool optional = false;
};

struct List {
    const char* name;
    const char* shows;
    unsigned kinds; // object kinds that one has to be given of, a bit each; 0: it is for one kind
    std::vector<Need> needs;
    int (*fill)(Grouping::eRole kind, const std::vector<KorString>& keys, Names& names);
    Grouping::eRole kind = Grouping::kBeam; // of the others
};

template <class Record>
Need need(std::size_t choice)
{
    return {choice, descriptionOf<Record>};
}
template <class Record>
std::vector<Need> allUnless(std::size_t choice, eDSN dsn = KorDSNDefinitions::kConfiguration)
{
    return {{choice, descriptionOf<Record>, dsn, true}};
}

const std::vector<List>& lists()
{
    using Keys = const std::vector<KorString>&;
    using Role = Grouping::eRole;
    constexpr eDSN profiles = KorDSNDefinitions::kProfiles;
    const std::vector<Need> none;
    const auto bolt = std::vector{need<StructStandard>(0), need<StructStrengthClass>(1), need<StructSet>(2)};
    const auto anchor =
        std::vector{need<StructAnchorsStandard>(0), need<StructStrengthClass>(1), need<StructSet>(2)};
    const auto stud = std::vector{need<StructConnectorStandard>(0), need<StructMaterialConnector>(3)};
    const auto first = [](const std::vector<Need>& all, std::ptrdiff_t count) {
        return std::vector<Need>(all.begin(), all.begin() + count);
    };
    static const std::vector<List> all = {
        {"materials", "Materials", ofMaterials, none,
         [](Role e, Keys, Names& n) { return Grouping::getMaterialList(n, e, 0); }},
        {"coatings", "Coatings", anyKind, none,
         [](Role e, Keys, Names& n) { return Grouping::getCoatingList(e, n); }},
        {"model-roles", "Model roles", anyKind, none,
         [](Role e, Keys, Names& n) { return Grouping::getModelRoleList(e, n); }},
        {"plate-thicknesses", "Thicknesses of plates", 0, none,
         [](Role e, Keys, Names& n) { return Grouping::getPlateThicknessList(e, n); }, Grouping::kPlate},
        {"bolt-standards", "Standards of bolts", 0, none,
         [](Role e, Keys, Names& n) { return Grouping::getStandardsList(e, n); }, Grouping::kBolt},
        {"strength-classes", "Strength classes of bolts of a standard", 0, first(bolt, 1),
         [](Role e, Keys k, Names& n) { return Grouping::getStrengthClassList(e, k[0], n); }, Grouping::kBolt},
        {"bolt-sets", "Sets that they come with", 0, first(bolt, 2),
         [](Role e, Keys k, Names& n) { return Grouping::getSetList(e, k[0], k[1], n); }, Grouping::kBolt},
        {"bolt-diameters", "Diameters that they have", 0, bolt,
         [](Role e, Keys k, Names& n) { return Grouping::getDiameterList(e, k[0], k[1], k[2], n); },
         Grouping::kBolt},
        {"anchor-standards", "Standards of anchors", 0, none,
         [](Role e, Keys, Names& n) { return Grouping::getAnchorsStandardsList(n, e); }, Grouping::kAnchor},
        {"anchor-materials", "Strength classes of anchors of a standard", 0, first(anchor, 1),
         [](Role e, Keys k, Names& n) { return Grouping::getAnchorsMaterialList(n, e, k[0]); }, Grouping::kAnchor},
        {"anchor-sets", "Sets that they come with", 0, first(anchor, 2),
         [](Role e, Keys k, Names& n) { return Grouping::getAnchorsSetList(n, e, k[0], k[1]); },
         Grouping::kAnchor},
        {"anchor-diameters", "Diameters that they have", 0, anchor,
         [](Role e, Keys k, Names& n) { return Grouping::getAnchorsDiameterList(n, e, k[0], k[1], k[2]); },
         Grouping::kAnchor},
        {"stud-standards", "Standards of shear studs", 0, none,
         [](Role e, Keys, Names& n) { return Grouping::getConnectorStandardsList(e, n); }, Grouping::kStudShears},
        {"stud-materials", "Materials of shear studs", 0, none,
         [](Role e, Keys, Names& n) { return Grouping::getConnectorMaterialList(e, n); }, Grouping::kStudShears},
        {"stud-materials-of-standard", "Materials of shear studs of a standard", 0, first(stud, 1),
         [](Role e, Keys k, Names& n) { return Grouping::getConnectorMaterialList(e, k[0], n); },
         Grouping::kStudShears},
        {"stud-diameters", "Diameters that they have", 0, stud,
         [](Role e, Keys k, Names& n) { return Grouping::getConnectorDiameterList(e, k[0], k[1], n); },
         Grouping::kStudShears},
        {"basic-welds", "Basic welds", 0, none,
         [](Role e, Keys, Names& n) { return Grouping::getBasicWeldingList(e, n); }, Grouping::kWeld},
        {"combined-welds", "Combined welds", 0, none,
         [](Role e, Keys, Names& n) { return Grouping::getCombiWeldingList(e, n); }, Grouping::kWeld},
        {"weld-shapes", "Shapes of the faces of welds", 0, none,
         [](Role e, Keys, Names& n) { return Grouping::getFaceShapeDescriptionList(e, n); }, Grouping::kWeld},
        {"weld-designs", "How welds are made", 0, none,
         [](Role e, Keys, Names& n) { return Grouping::getSeamExecutingDescriptionList(e, n); }, Grouping::kWeld},
        {"section-subtypes", "Subtypes of sections", 0, none,
         [](Role, Keys, Names& n) { return Grouping::getProfileSubTypesList(n); }},
        {"section-classes", "Classes of sections, of all subtypes or of one", 0,
         allUnless<StructProfileSubtype>(5, profiles),
         [](Role, Keys k, Names& n) { return Grouping::GetMenuSubList(k[0], n); }},
        {"sections", "Sections of all classes or of one", 0, allUnless<StructProfileClass>(4, profiles),
         [](Role, Keys k, Names& n) { return Grouping::GetMenuList(k[0], n); }},
        {"grating-classes", "Classes of gratings of fixed size", 0, none,
         [](Role, Keys, Names& n) { return Grouping::getGratingClassesGrouping(n); }},
        {"gratings", "Gratings of fixed size, of all classes or of one", 0,
         allUnless<StructGratingStandardMaster>(4),
         [](Role, Keys k, Names& n) { return Grouping::getGratingItemsGrouping(k[0], n); }},
        {"cut-grating-classes", "Classes of gratings cut to size", 0, none,
         [](Role, Keys, Names& n) { return Grouping::getGratingVariableClassesGrouping(n); }},
        {"cut-gratings", "Gratings cut to size, of all classes or of one", 0,
         allUnless<StructGratingVariableMaster>(4),
         [](Role, Keys k, Names& n) { return Grouping::getGratingVariableItemsGrouping(k[0], n); }},
        {"scales", "Drawing scales", 0, none, [](Role, Keys, Names& n) { return Grouping::getScaleList(n); }},
    };
    return all;
}

const List& listNamed(const std::string& wanted)
{
    std::vector<std::string> names;
    for (const List& list : lists()) {
        names.push_back(list.name);
        if (sameName(names.back(), wanted))
            return list;
    }
    throw Failure{kNotFound, "there is no list " + quote(wanted) + nearest(wanted, names) +
                                 "; list them with: korodbc preferred list"};
}

/// Those among the kinds, separated by commas.
std::string kindNames(unsigned among)
{
    std::string all;
    for (const Kind& kind : kinds)
        if ((among >> kind.kind & 1u) != 0)
            all += (all.empty() ? "" : ", ") + std::string(kind.name);
    return all;
}

/// The kind that a list is asked for.
Grouping::eRole kindOf(const List& list, const std::string& wanted)
{
    const std::string theList = "the list " + std::string(list.name);
    if (list.kinds == 0 && !wanted.empty())
        throw Failure{kUsage, theList + " is for one kind of objects and takes no --kind"};
    if (list.kinds == 0)
        return list.kind;
    if (wanted.empty())
        throw Failure{kUsage, theList + " needs --kind, one of: " + kindNames(list.kinds)};
    std::vector<std::string> names;
    for (const Kind& kind : kinds) {
        names.emplace_back(kind.name);
        if (!sameName(kind.name, wanted))
            continue;
        if ((list.kinds >> kind.kind & 1u) == 0)
            throw Failure{kUsage, theList + " is for " + kindNames(list.kinds) + ", not for " + kind.name};
        return kind.kind;
    }
    throw Failure{kNotFound, "there is no object kind " + quote(wanted) + nearest(wanted, names) +
                                 "; known: " + kindNames(anyKind)};
}

/// The key of the row that an option names.
KorString keyOf(const Need& need, const std::string& wanted)
{
    const RecordDescription& type = need.type();
    const KorDSNRequest request(need.dsn, KorDSNDefinitions::kBase);
    requireReadable(type);
    const AnyRecord record(type);
    if (readRecord(type, wanted, record.get()))
        return KorString::fromUtf8(keyText(type, record.get()));
    KorArray<KorString> known;
    RecordAccess::runNames(type, known, false);
    throw Failure{kNotFound, "there is no row " + quote(wanted) + " in " + std::string(type.table) + ", which " +
                                 choices[need.choice].name + " names" + nearest(wanted, texts(known)) +
                                 "; list them with: korodbc list " + std::string(type.table)};
}

} // namespace

void addPreferredOptions(CLI::App* command, PreferredQuestion& question)
{
    command->add_option("--kind", question.kind, "Kind of objects: " + kindNames(anyKind))->type_name("KIND");
    for (std::size_t i = 0; i < PreferredQuestion::options; ++i)
        command
            ->add_option(choices[i].name, question.chosen[i], std::string(choices[i].shows) + ", by name or key")
            ->type_name("NAME");
}

PreferredAnswer preferredList(const PreferredQuestion& question, const std::function<void()>& activate)
{
    const List& list = listNamed(question.list);
    const Grouping::eRole kind = kindOf(list, question.kind);
    const auto needs = [&](std::size_t choice) {
        return std::any_of(list.needs.begin(), list.needs.end(),
                           [=](const Need& need) { return need.choice == choice; });
    };
    for (std::size_t i = 0; i < PreferredQuestion::options; ++i)
        if (!question.chosen[i].empty() && !needs(i))
            throw Failure{kUsage, "the list " + std::string(list.name) + " takes no " + choices[i].name};
    for (const Need& need : list.needs)
        if (question.chosen[need.choice].empty() && !need.optional)
            throw Failure{kUsage, "the list " + std::string(list.name) + " needs " + choices[need.choice].name +
                                      "; see the names with: korodbc list " + std::string(need.type().table)};
    std::vector<KorString> keys;
    for (const Need& need : list.needs)
        keys.push_back(question.chosen[need.choice].empty() ? KorString()
                                                            : keyOf(need, question.chosen[need.choice]));
    {
        const KorDSNRequest request(KorDSNDefinitions::kAddin, KorDSNDefinitions::kFirstAddin);
        const RecordDescription& sizes = descriptionOf<StructPreferredSizesItems>();
        requireReadable(sizes);
        if (KorDatabaseAccess::checkTable(KorDSNDefinitions::kAddin, sizes, false) != 1)
            throw Failure{kFailed, "the preferred sizes cannot be relied on" + because()};
    }
    activate();
    PreferredAnswer answer;
    answer.title = list.name + (list.kinds != 0 ? " for " + question.kind : "");
    list.fill(kind, keys, answer.names);
    return answer;
}

Sheet preferredListNames()
{
    Sheet sheet{{{"List"}, {"Shows"}, {"Options"}}, {}};
    for (const List& list : lists()) {
        std::string options = list.kinds != 0 ? "--kind" : "";
        for (const Need& need : list.needs)
            options +=
                (options.empty() ? "" : " ") + (need.optional ? "[" + std::string(choices[need.choice].name) + "]"
                                                              : std::string(choices[need.choice].name));
        sheet.rows.push_back({list.name, list.shows, options});
    }
    return sheet;
}
