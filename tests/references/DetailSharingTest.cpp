#include "catalogues/CatalogueFixture.h"
#include "support/DetailRecords.h"

#include <korodbc/maintenance/KorOdbcGUI.h>

#include <functional>
#include <type_traits>

namespace {

using G = KorOdbcGUI;
using details::put;

constexpr eDSN inDetails = KorDSNDefinitions::kDetails;

/// Stores a record with that key that refers to each of the components: one for a single field.
using Store = std::function<void(int key, const std::vector<int>& components)>;

/// Where references come from: a field of a type, a list of numbers, or a field of the items.
struct Referring {
    const RecordDescription& type;
    Store store;
    bool many; // one record can hold several references
};

template <class T, class Field>
Referring from(Field field)
{
    const auto store = [=](int key, const std::vector<int>& components) {
        T record;
        record.key = key;
        for (const int component : components)
            if constexpr (std::is_same_v<Field, int T::*>)
                record.*field = component;
            else if constexpr (std::is_same_v<Field, KorArray<int> T::*>)
                (record.*field).append(component);
            else {
                typename std::decay_t<decltype(record.items[0])> item;
                item.*field = component;
                record.items.append(item);
            }
        put(inDetails, record);
    };
    return {descriptionOf<T>(), store, !std::is_same_v<Field, int T::*>};
}

using Check = bool (*)(const KorOdbcKey&);

struct Case {
    const char* name;
    Check shared;
    Referring from;
    Check exists = nullptr; // not all have such a check
};

std::vector<Case> cases()
{
    using Strategy = StructDetObjAnnotationStrategy;
    using Request = StructDetViewRequest;
    using Style = StructDetailStyle;
    using Map = StructDetObjReprMap;
    using MapItem = StructDetObjReprMapItem;
    using Points = StructDetViewDimPointSelection;
    using Linear = StructDetViewDimRequestLinear;
    return {
        {"LabelsInMaps", &G::isAnnotationStrategyShared, from<Map>(&MapItem::annotationStrategy),
         &G::findAnnotationStrategy},
        {"SetsInMaps", &G::isQualifierSetShared, from<Map>(&MapItem::objQualifier), &G::findQualifierSet},
        {"SetsInPoints", &G::isQualifierSetShared, from<Points>(&Points::objects), &G::findQualifierSet},
        {"DimensionRequest", &G::isDimensionRequestShared,
         from<StructDetViewDimStrategy>(&StructDetViewDimStrategyItem::requestLinear), &G::findDimensionRequest},
        {"PointSelection", &G::isDimPointSelectionShared, from<Linear>(&Linear::points)},
        {"ViewRequest", &G::isViewRequestShared, from<Style>(&Style::requests)},
        {"ArrangeStrategy", &G::isViewArrangeStrategyShared, from<Style>(&Style::viewArrangeStrategy)},
        {"LengthClip", &G::isViewLengthClipShared, from<Request>(&Request::lengthClipXY)},
        {"RepresentationMap", &G::isObjReprMapRuleShared, from<Request>(&Request::objReprMap)},
        {"DimensionStrategy", &G::isViewDimStrategyShared, from<Request>(&Request::dimStrategy)},
        {"SystemAndBox", &G::isSystemAndBoxShared, from<Request>(&Request::systemAndBox)},
        {"ArrangerControl", &G::isArrangerControlShared, from<Strategy>(&Strategy::arrangerControl)},
        {"AnnotationType", &G::isAnnotationTypeShared, from<Strategy>(&Strategy::annotationType)},
        // of the control with the key of the strategy
        {"ArrangerStrategy", &G::isArrangerStrategyShared, from<Strategy>(&Strategy::arrangerControl)},
    };
}

class DetailSharingTest : public RepositoryTest {
protected:
    static constexpr int component = 40, other = 41;
};

class DetailReferencesFromTest : public DetailSharingTest, public testing::WithParamInterface<Case> {
protected:
    static void store(int key, const std::vector<int>& components) { GetParam().from.store(key, components); }
    static const RecordDescription& type() { return GetParam().from.type; }
    static void expect(int references, const KorOdbcKey& key = component)
    {
        const Check exists = GetParam().exists;
        EXPECT_EQ(GetParam().shared(key), references >= 2) << references;
        EXPECT_TRUE(exists == nullptr || exists(key) == (references >= 1)) << references;
    }
};
INSTANTIATE_TEST_SUITE_P(Components, DetailReferencesFromTest, testing::ValuesIn(cases()),
                         [](const auto& one) { return one.param.name; });

TEST_P(DetailReferencesFromTest, SeveralRecords)
{
    store(component, {other}); // a record with the component's key refers to another one
    store(1, {other});
    expect(0);
    for (int references = 1; references <= 4; ++references) {
        store(10 + references, {component});
        expect(references);
    }
    for (const int key : {2, 3})
        store(key, {-1});
    expect(0, -1); // nothing refers to no record
}

TEST_P(DetailReferencesFromTest, OneRecord)
{
    if (!GetParam().from.many)
        return;
    store(1, {other, component, other});
    store(2, {other, other});
    expect(1);
    sql(details, {"DELETE FROM [" + std::string(type().table) + "]"});
    store(3, {component, other, component});
    expect(2);
}

TEST_P(DetailReferencesFromTest, ItemsWithoutTheirRecordDoNotCount)
{
    for (const int key : {1, 2, 3})
        store(key, {component});
    for (const int key : {1, 2}) {
        sql(details, {"DELETE FROM [" + std::string(type().table) + "] WHERE Key = " + std::to_string(key)});
        expect(3 - key);
    }
}

TEST_F(DetailSharingTest, ItemsOfAnotherSourceDoNotCount)
{
    StructDetObjReprMap map;
    map.key = 1;
    map.items.setLogicalLength(2);
    for (StructDetObjReprMapItem& item : map.items)
        item.annotationStrategy = component;
    put(details, map);
    put(KorDSNDefinitions::kAddin, map);
    EXPECT_TRUE(G::isAnnotationStrategyShared(component));
    sql(details, {"DROP TABLE DetObjReprMapItems"});
    EXPECT_FALSE(G::isAnnotationStrategyShared(component));
    EXPECT_FALSE(G::findAnnotationStrategy(component));
}

TEST_F(DetailSharingTest, PointSelectionsCountOnlyForSetsThatNoMapUses)
{
    const Store map = from<StructDetObjReprMap>(&StructDetObjReprMapItem::objQualifier).store;
    const Store points = from<StructDetViewDimPointSelection>(&StructDetViewDimPointSelection::objects).store;
    map(1, {component});
    for (const int key : {1, 2, 3}) {
        points(key, {component});
        EXPECT_FALSE(G::isQualifierSetShared(component)) << key;
    }
    EXPECT_TRUE(G::findQualifierSet(component));
    sql(details, {"DELETE FROM DetObjReprMapsNew", "DELETE FROM DetObjReprMapItems"});
    EXPECT_TRUE(G::isQualifierSetShared(component));
    map(1, {component, component});
    sql(details, {"DELETE FROM DetViewDimPointSelection"});
    EXPECT_TRUE(G::isQualifierSetShared(component));
}

TEST_F(DetailSharingTest, ArrangerStrategiesAreLookedUpAmongControls)
{
    using Strategy = StructDetObjAnnotationStrategy;
    for (const int key : {1, 2})
        from<Strategy>(&Strategy::arrangerStrategy).store(key, {component});
    EXPECT_FALSE(G::isArrangerStrategyShared(component));
    EXPECT_FALSE(G::isArrangerControlShared(component));
}

TEST_F(DetailSharingTest, OnlyTheCurrentSourceCounts)
{
    from<StructDetailStyle>(&StructDetailStyle::requests).store(1, {component, component});
    EXPECT_TRUE(G::isViewRequestShared(component));
    const KorDSNRequest request(KorDSNDefinitions::kAddin, KorDSNDefinitions::kFirstAddin);
    EXPECT_FALSE(G::isViewRequestShared(component));
}

} // namespace
