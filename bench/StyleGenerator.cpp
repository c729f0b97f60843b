#include "StyleGenerator.h"

#include "Database.h"
#include "repository/DetailDatabase.h"

#include <algorithm>
#include <initializer_list>
#include <string_view>
#include <variant>
#include <vector>

namespace bench {

namespace {

/// Numbers that are the same with every standard library.
class Random {
public:
    explicit Random(std::uint64_t seed) : m_state(seed * 0x9E3779B97F4A7C15u + 1) {}
    long below(long limit)
    {
        m_state ^= m_state << 13;
        m_state ^= m_state >> 7;
        m_state ^= m_state << 17;
        return static_cast<long>((m_state >> 11) % static_cast<std::uint64_t>(limit));
    }

private:
    std::uint64_t m_state;
};

/// The rows of one table that others refer to: each is referred to once before any is shared.
class Pool {
public:
    Pool(long size, int firstKey) : m_size(std::max(size, 1L)), m_firstKey(firstKey) {}
    long size() const { return m_size; }
    int key(long index) const { return m_firstKey + static_cast<int>(index); }
    int pick(Random& random) { return key(m_next < m_size ? m_next++ : random.below(m_size)); }

private:
    long m_size;
    int m_firstKey;
    long m_next = 0;
};

using Cell = std::variant<int, double, std::string>;

class Writer {
public:
    Writer(Database& database, GeneratedStyle& made) : m_database(database), m_made(made) {}

    /// Inserts a row; columns that are not named keep their default.
    void insert(const std::string& table, const std::string& columns, const std::vector<Cell>& cells)
    {
        const std::string id = table + "|" + columns;
        auto known = m_queries.find(id);
        if (known == m_queries.end()) {
            std::string marks = "?";
            for (std::size_t i = 1; i < cells.size(); ++i)
                marks += ", ?";
            known = m_queries
                        .emplace(id, m_database.prepare("INSERT INTO [" + table + "] (" + columns + ") VALUES (" +
                                                        marks + ")"))
                        .first;
        }
        Query& query = known->second;
        int position = 0;
        for (const Cell& cell : cells) {
            ++position;
            if (const auto* integer = std::get_if<int>(&cell))
                query.bind(position, std::int64_t{*integer});
            else if (const auto* real = std::get_if<double>(&cell))
                query.bind(position, *real);
            else
                query.bind(position, std::string_view(std::get<std::string>(cell)));
        }
        query.run();
        ++m_made.rows;
        ++m_made.rowsOfTable[table];
    }

private:
    Database& m_database;
    GeneratedStyle& m_made;
    std::map<std::string, Query> m_queries;
};

const char* const subjects[] = {"Column", "Beam",       "Bracing Ø20", "End plate 'A'", "Stiffener",
                                "Purlin", "Gusset [2]", "Base plate",  "Handrail",      "Träger",
                                "Splice", "Haunch",     "Stair tread", "Anchor 100%",   "Rail"};
const char* const layers[] = {"STEEL-VISIBLE", "STEEL-HIDDEN", "STEEL-AXIS", "DIMENSIONS", "TEXT"};

class Generator {
public:
    Generator(Database& database, const StyleShape& shape, GeneratedStyle& made)
        : m_shape(shape), m_random(shape.seed), m_writer(database, made), m_database(database), m_made(made)
    {
    }

    void run();

private:
    long share(double perThousand) const
    {
        return std::max(1L, static_cast<long>(static_cast<double>(m_shape.rows) * perThousand / 1000));
    }
    Pool pool(long size) const { return Pool(size, m_shape.firstKey); }
    std::string name(const char* kind, long index)
    {
        return m_shape.prefix + subjects[m_random.below(std::size(subjects))] + " " + kind + " " +
               std::to_string(index + 1);
    }
    std::string layer() { return layers[m_random.below(std::size(layers))]; }
    int flag() { return static_cast<int>(m_random.below(2)); }
    double millimetres() { return static_cast<double>(m_random.below(4000)) / 4; }

    void writeGroups(const char* table, Pool& groups);
    void writeNumbered(const std::string& table, const std::string& fixed, std::vector<Cell> cells,
                       std::initializer_list<const char*> patterns, const std::vector<Cell>& items);

    const StyleShape& m_shape;
    Random m_random;
    Writer m_writer;
    Database& m_database;
    GeneratedStyle& m_made;
};

void Generator::writeGroups(const char* table, Pool& groups)
{
    for (long i = 0; i < groups.size(); ++i)
        m_writer.insert(table, "Key, RunName, BitmapId",
                        {groups.key(i), name("group", i), 100 + static_cast<int>(i)});
}

/// Writes a row whose items stand in numbered columns, `patterns` one after the other for each item.
void Generator::writeNumbered(const std::string& table, const std::string& fixed, std::vector<Cell> cells,
                              std::initializer_list<const char*> patterns, const std::vector<Cell>& items)
{
    std::string columns = fixed;
    std::size_t at = 0;
    for (int item = 1; at < items.size(); ++item) {
        for (const char* pattern : patterns) {
            columns += ", " + std::string(pattern) + std::to_string(item);
            cells.push_back(items[at++]);
        }
    }
    m_writer.insert(table, columns, cells);
}

void Generator::run()
{
    const std::string owner = "VEL";
    const long fewRequests = std::clamp(m_shape.rows / 250, 4L, 100L);
    Pool qualifierGroups = pool(5), annotationGroups = pool(5), dimensionGroups = pool(5), lineTypes = pool(8),
         categories = pool(5), arrangements = pool(1);
    Pool qualifierSets = pool(share(100)), hatches = pool(share(12)), appearances = pool(share(60));
    Pool annotationTypes = pool(share(30)), controls = pool(share(15)), strategies = pool(share(15));
    Pool annotations = pool(share(60)), points = pool(share(60)), linears = pool(share(45));
    Pool maps = pool(fewRequests * 3 / 4), dimensions = pool(fewRequests * 3 / 4),
         boxes = pool(fewRequests * 3 / 4);
    Pool clips = pool(fewRequests / 2), requests = pool(fewRequests), styles = pool(1);

    writeGroups("DetObjQualifierSetGroup", qualifierGroups);
    writeGroups("DetObjAnnotationGroup", annotationGroups);
    writeGroups("DetViewDimRequestLinearGroup", dimensionGroups);
    for (long i = 0; i < lineTypes.size(); ++i)
        m_writer.insert("Linetypes", "Key, RunName, OwnerText", {lineTypes.key(i), name("line", i), owner});
    for (long i = 0; i < categories.size(); ++i)
        m_writer.insert("DetBaseCategories", "Key, RunName, SortOrder, OwnerText",
                        {categories.key(i), name("category", i), static_cast<int>(i), owner});

    int itemKey = m_shape.firstKey;
    for (long i = 0; i < qualifierSets.size(); ++i) {
        m_writer.insert("DetObjQualifierSet", "Key, RunName, [Group], OwnerText, NumberItems",
                        {qualifierSets.key(i), name("objects", i), qualifierGroups.pick(m_random), owner, 3});
        for (int item = 0; item < 3; ++item)
            m_writer.insert("DetObjQualifierSetItem",
                            "Key, IdDetObjQualifierSet, [Order], ObjectQualifier, ModelRole, Filter",
                            {itemKey++, qualifierSets.key(i), item, 1 + static_cast<int>(m_random.below(40)),
                             std::string(subjects[m_random.below(std::size(subjects))]), std::string()});
    }
    for (long i = 0; i < hatches.size(); ++i)
        m_writer.insert(
            "DetHatchSettings", "Key, RunName, Pattern, Spacing, Angle, Color, Layer, OwnerText",
            {hatches.key(i), name("hatch", i), std::string("ANSI31"), millimetres(), 45.0, 256, layer(), owner});
    for (long i = 0; i < appearances.size(); ++i)
        m_writer.insert("DetObjAppearance",
                        "Key, RunName, HatchSettings, Presentation, VisibleLayer, VisibleColor, DrawHiddenEdges, "
                        "HiddenLayer, HiddenColor, DrawAxis, AxisLayer, OwnerText",
                        {appearances.key(i), name("appearance", i), hatches.pick(m_random), flag(), layer(), 256,
                         flag(), layer(), 8, flag(), layer(), owner});
    for (long i = 0; i < annotationTypes.size(); ++i)
        m_writer.insert("DetAnnotationType", "Key, RunName, LeaderStyle, OwnerText, AnnotationTypeContents1",
                        {annotationTypes.key(i), name("label", i), 1 + flag(), owner,
                         std::string("%PositionNumber% %Profile% L=%Length%")});
    for (long i = 0; i < controls.size(); ++i) {
        std::vector<Cell> items;
        for (int item = 0; item < 12; ++item)
            items.emplace_back(millimetres());
        writeNumbered("DetArrangerControl",
                      "Key, RunName, ArrangeGlobally, ArrangeInCentre, OppositeAngleAllowed, TerminateOnFirstFit, "
                      "UseBasePositionOnFailure, OwnerText, LengthItems",
                      {controls.key(i), name("placing", i), flag(), flag(), flag(), flag(), flag(), owner, 4},
                      {"Angle", "PreferredDistance", "MaxDistance"}, items);
    }
    for (long i = 0; i < strategies.size(); ++i) {
        std::vector<Cell> items;
        for (int item = 0; item < 4; ++item)
            items.insert(items.end(), {flag(), flag(), millimetres(), millimetres()});
        writeNumbered(
            "DetArrangerStrategy",
            "Key, RunName, TerminateOnFirstFit, ArrangeGlobally, ArrangeInCenter, OwnerText, LengthItems",
            {strategies.key(i), name("search", i), flag(), flag(), flag(), owner, 4},
            {"SearchArea", "SearchDirection", "MinDistance", "MaxDistance"}, items);
    }
    for (long i = 0; i < annotations.size(); ++i)
        m_writer.insert("DetObjAnnotationStrategy",
                        "Key, RunName, AnnotationType, ArrangerControl, ArrangerStrategy, [Group], AnnotateOnce, "
                        "Layer, TextSize, OwnerText",
                        {annotations.key(i), name("annotation", i), annotationTypes.pick(m_random),
                         controls.pick(m_random), strategies.pick(m_random), annotationGroups.pick(m_random),
                         flag(), layer(), 2.5, owner});

    const long mapItems = share(170) / maps.size(), dimensionItems = share(70) / dimensions.size();
    for (long i = 0; i < maps.size(); ++i) {
        m_writer.insert("DetObjReprMapsNew", "Key, RunName, OwnerText, NumberItems",
                        {maps.key(i), name("representation", i), owner, static_cast<int>(mapItems)});
        for (int item = 0; item < mapItems; ++item)
            m_writer.insert("DetObjReprMapItems",
                            "Key, [Order], Description, OwnerText, ObjQualifier, GeometricRestrictions, "
                            "DepthPosition, Appearance, AnnotationStrategy, LineType, SimplifiedGap, CompassMark",
                            {maps.key(i), item, 0, owner, qualifierSets.pick(m_random), 1, 1,
                             appearances.pick(m_random), annotations.pick(m_random), lineTypes.pick(m_random), 0.5,
                             flag()});
    }
    for (long i = 0; i < points.size(); ++i)
        m_writer.insert("DetViewDimPointSelection",
                        "Key, RunName, Type, Objects, GeometricRestrictions, OutermostOnly, OwnerText",
                        {points.key(i), name("points", i), 1, qualifierSets.pick(m_random), 1, flag(), owner});
    for (long i = 0; i < linears.size(); ++i) {
        std::vector<Cell> items;
        for (int item = 0; item < 3; ++item)
            items.emplace_back(points.pick(m_random));
        writeNumbered(
            "DetViewDimRequestLinear",
            "Key, RunName, Direction, AllowCombine, ArrangeAbove, ArrangeGlobally, GroupRelatedDimensions, "
            "OneChainPerObjectInFirstSelection, LabelContents, LabelPosition, [Group], SortOrder, OwnerText, "
            "NumberPoints",
            {linears.key(i), name("chain", i), 1, flag(), flag(), flag(), flag(), flag(), std::string("%Spacing%"),
             0, dimensionGroups.pick(m_random), static_cast<int>(i), owner, 3},
            {"Point"}, items);
    }
    for (long i = 0; i < dimensions.size(); ++i) {
        m_writer.insert(
            "DetViewDimStrategyNew", "Key, RunName, OneChainPerBoltDiam, OwnerText, NumberItems",
            {dimensions.key(i), name("dimensions", i), flag(), owner, static_cast<int>(dimensionItems)});
        for (int item = 0; item < dimensionItems; ++item)
            m_writer.insert("DetViewDimStrategyItems",
                            "Key, [Order], Description, OwnerText, Type, RequestLinear, GroupEqualDistances, "
                            "BrokenRunningDimension, RunningDimensionTextAlignment, HideDimensionPoint",
                            {dimensions.key(i), item, std::string("chain of ") + subjects[item % 15], owner, 1,
                             linears.pick(m_random), flag(), 0, 0, flag()});
    }
    for (long i = 0; i < boxes.size(); ++i)
        m_writer.insert("DetViewSystemAndBox",
                        "Key, RunName, SystemSource, SelectMode, ViewDirection, BoxMode, RotationX, RotationZ, "
                        "DepthFront, DepthBack, OwnerText",
                        {boxes.key(i), name("view", i), 1, 1, static_cast<int>(m_random.below(6)), flag(), 0.0,
                         0.0, millimetres(), millimetres(), owner});
    for (long i = 0; i < clips.size(); ++i)
        m_writer.insert("DetViewLengthClip",
                        "Key, RunName, ClipX, ClipY, ClippingType, MinimumLength, Gap, OwnerText",
                        {clips.key(i), name("clip", i), flag(), flag(), 1, millimetres(), 2.0, owner});
    int categoryKey = m_shape.firstKey;
    for (long i = 0; i < requests.size(); ++i) {
        m_writer.insert(
            "DetViewRequest",
            "Key, RunName, SystemAndBox, ObjReprMap, DimStrategy, LengthClipXY, UsedForCutsAndCallouts, "
            "TitlePosition, CalloutTitleTemplate, ScaleFactor, Rotation, OwnerText",
            {requests.key(i), name("request", i), boxes.pick(m_random), maps.pick(m_random),
             dimensions.pick(m_random), clips.pick(m_random), flag(), 0, std::string("%Title%"), 1.0, 0.0, owner});
        for (int entry = 0; entry < 2; ++entry)
            m_writer.insert("DetViewRequestCategories", "Key, BaseCategory, DetViewRequest",
                            {categoryKey++, categories.pick(m_random), requests.key(i)});
    }
    m_writer.insert("DetViewArrangeStrategy",
                    "Key, RunName, ArrangeDirection, HorizontalGap, VerticalGap, AlignViews, OwnerText",
                    {arrangements.key(0), name("arrangement", 0), 1, 10.0, 10.0, 1, owner});

    const long columns = m_database.value("SELECT count(*) FROM pragma_table_info('DetailStyle') WHERE name LIKE "
                                          "'Request%'");
    for (long column = columns + 1; column <= fewRequests; ++column)
        m_database.run("ALTER TABLE DetailStyle ADD COLUMN Request" + std::to_string(column) + " INT");
    std::vector<Cell> items;
    for (long i = 0; i < fewRequests; ++i)
        items.emplace_back(requests.key(i));
    writeNumbered(
        "DetailStyle",
        "Key, RunName, ViewArrangeStrategy, DetailOrientation, ObjectSelectionStrategy, TitleFormat, "
        "TitlePosition, CutViewTitleFormat, CutViewTitlePosition, ScaleFormat, DateFormat, FrameAppearance, "
        "ObjectPosition, AutomaticClipping, OwnerText, NumberRequests",
        {styles.key(0), name("style", 0), arrangements.key(0), 0, 0, std::string("%Title%"), 0,
         std::string("%Cut%-%Cut%"), 0, std::string("1:%Scale%"), std::string("%d.%m.%Y"), 1, 0, 1, owner,
         static_cast<int>(fewRequests)},
        {"Request"}, items);
    m_writer.insert("DetailMasterTable", "Key, RunName, DetailStyle, BaseCategory, SubCategory, OwnerText",
                    {m_shape.firstKey, name("style", 0), styles.key(0), categories.key(0), 1, owner});
    m_made.key = styles.key(0);
    m_made.masterKey = m_shape.firstKey;
}

} // namespace

GeneratedStyle generateStyle(const std::string& databaseFile, const StyleShape& shape)
{
    GeneratedStyle made;
    Database database(databaseFile);
    database.run("PRAGMA synchronous = OFF");
    database.run("BEGIN");
    Generator(database, shape, made).run();
    database.run("COMMIT");
    return made;
}

GeneratedStyle generateStyleDatabase(const std::string& newFile, const StyleShape& shape)
{
    korodbc::host::HostError error;
    require(korodbc::host::createDetailDatabase(newFile, error), error.text);
    return generateStyle(newFile, shape);
}

} // namespace bench
