#include "catalogues/CatalogueFixture.h"
#include "maintenance/KorOdbcGUI.h"
#include "support/DetailRecords.h"

#include <functional>

namespace {

using G = KorOdbcGUI;
using details::put;

constexpr eDSN inDetails = KorDSNDefinitions::kDetails;

/// Stores a record with that key that refers to each of the components.
struct Referring {
    const RecordDescription& type;
    std::function<void(int key, const std::vector<int>& components)> store;
    bool many; // one record can hold several references
};

template <class T>
Referring column(int T::*field)
{
    return {descriptionOf<T>(),
            [=](int key, const std::vector<int>& components) {
                T record;
                record.key = key;
                record.*field = components.at(0);
                put(inDetails, record);
            },
            false};
}
template <class T>
Referring numbered(KorArray<int> T::*list)
{
    return {descriptionOf<T>(),
            [=](int key, const std::vector<int>& components) {
                T record;
                record.key = key;
                for (const int component : components)
                    (record.*list).append(component);
                put(inDetails, record);
            },
            true};
}
template <class T, class Item>
Referring item(int Item::*field)
{
    return {descriptionOf<T>(),
            [=](int key, const std::vector<int>& components) {
                T record;
                record.key = key;
                for (const int component : components) {
                    Item one;
                    one.*field = component;
                    record.items.append(one);
                }
                put(inDetails, record);
            },
            true};
}

using Check = bool (*)(const KorOdbcKey&);

struct Case {
    const char* name;
    Check shared;
    Check exists; // nullptr: the type has no such check
    Referring from;
};

std::vector<Case> cases()
{
    const auto control = column(&StructDetObjAnnotationStrategy::arrangerControl);
    return {
        {"annotation strategy", &G::isAnnotationStrategyShared, &G::findAnnotationStrategy,
         item<StructDetObjReprMap>(&StructDetObjReprMapItem::annotationStrategy)},
        {"qualifier set in maps", &G::isQualifierSetShared, &G::findQualifierSet,
         item<StructDetObjReprMap>(&StructDetObjReprMapItem::objQualifier)},
        {"qualifier set in point selections", &G::isQualifierSetShared, &G::findQualifierSet,
         column(&StructDetViewDimPointSelection::objects)},
        {"dimension request", &G::isDimensionRequestShared, &G::findDimensionRequest,
         item<StructDetViewDimStrategy>(&StructDetViewDimStrategyItem::requestLinear)},
        {"point selection", &G::isDimPointSelectionShared, nullptr,
         numbered(&StructDetViewDimRequestLinear::points)},
        {"view request", &G::isViewRequestShared, nullptr, numbered(&StructDetailStyle::requests)},
        {"arrange strategy", &G::isViewArrangeStrategyShared, nullptr,
         column(&StructDetailStyle::viewArrangeStrategy)},
        {"length clip", &G::isViewLengthClipShared, nullptr, column(&StructDetViewRequest::lengthClipXY)},
        {"representation map", &G::isObjReprMapRuleShared, nullptr, column(&StructDetViewRequest::objReprMap)},
        {"dimension strategy", &G::isViewDimStrategyShared, nullptr, column(&StructDetViewRequest::dimStrategy)},
        {"system and box", &G::isSystemAndBoxShared, nullptr, column(&StructDetViewRequest::systemAndBox)},
        {"arranger control", &G::isArrangerControlShared, nullptr, control},
        {"annotation type", &G::isAnnotationTypeShared, nullptr,
         column(&StructDetObjAnnotationStrategy::annotationType)},
        {"arranger strategy, of the control with its key", &G::isArrangerStrategyShared, nullptr, control},
    };
}

class DetailSharingTest : public RepositoryTest {
protected:
    static void expect(const Case& one, int references)
    {
        EXPECT_EQ(one.shared(component), references >= 2) << references;
        EXPECT_EQ(one.exists != nullptr && one.exists(component), one.exists != nullptr && references >= 1)
            << references;
    }
    static void empty(const RecordDescription& type)
    {
        Texts statements{"DELETE FROM [" + std::string(type.table) + "]"};
        if (type.items.exists())
            statements.push_back("DELETE FROM [" + std::string(type.items.item().table) + "]");
        sql(details, statements);
    }
    static constexpr int component = 40, other = 41;
};

TEST_F(DetailSharingTest, ReferencesFromSeveralRecords)
{
    for (const Case& one : cases()) {
        SCOPED_TRACE(one.name);
        one.from.store(component, {other}); // a record with the component's key refers to another one
        one.from.store(1, {other});
        expect(one, 0);
        for (int references = 1; references <= 4; ++references) {
            one.from.store(10 + references, {component});
            expect(one, references);
        }
        empty(one.from.type);
        expect(one, 0);
    }
}

TEST_F(DetailSharingTest, ReferencesFromOneRecord)
{
    for (const Case& one : cases()) {
        SCOPED_TRACE(one.name);
        if (!one.from.many)
            continue;
        one.from.store(1, {other, component, other});
        expect(one, 1);
        one.from.store(2, {other, other});
        expect(one, 1);
        empty(one.from.type);
        one.from.store(3, {component, other, component});
        expect(one, 2);
        empty(one.from.type);
    }
}

TEST_F(DetailSharingTest, TablesThatCannotBeReadHoldNoReferences)
{
    for (const Case& one : cases()) {
        SCOPED_TRACE(one.name);
        const RecordDescription& type = one.from.type;
        one.from.store(1, {component});
        one.from.store(2, {component});
        for (const RecordDescription* missing : {&type, type.items.exists() ? &type.items.item() : &type}) {
            const std::string table(missing->table);
            sql(details, {"ALTER TABLE [" + table + "] RENAME TO [Elsewhere]"});
            expect(one, 0);
            sql(details, {"ALTER TABLE [Elsewhere] RENAME TO [" + table + "]"});
            expect(one, 2);
        }
        empty(type);
    }
}

TEST_F(DetailSharingTest, ItemsWithoutTheirRecordDoNotCount)
{
    for (const Case& one : cases()) {
        SCOPED_TRACE(one.name);
        if (!one.from.type.items.exists())
            continue;
        for (const int key : {1, 2, 3})
            one.from.store(key, {component});
        sql(details, {"DELETE FROM [" + std::string(one.from.type.table) + "] WHERE Key = 1"});
        expect(one, 2);
        sql(details, {"DELETE FROM [" + std::string(one.from.type.table) + "] WHERE Key = 2"});
        expect(one, 1);
        empty(one.from.type);
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

TEST_F(DetailSharingTest, NothingRefersToNoRecord)
{
    for (const Case& one : cases()) {
        SCOPED_TRACE(one.name);
        for (const int key : {1, 2})
            one.from.store(key, {-1});
        EXPECT_FALSE(one.shared(KorOdbcKey()));
        EXPECT_TRUE(one.exists == nullptr || !one.exists(-1));
        empty(one.from.type);
    }
}

TEST_F(DetailSharingTest, PointSelectionsCountOnlyForSetsThatNoMapUses)
{
    const Referring maps = item<StructDetObjReprMap>(&StructDetObjReprMapItem::objQualifier);
    const Referring points = column(&StructDetViewDimPointSelection::objects);
    maps.store(1, {component});
    for (const int key : {1, 2, 3}) {
        points.store(key, {component});
        EXPECT_FALSE(G::isQualifierSetShared(component)) << key;
    }
    EXPECT_TRUE(G::findQualifierSet(component));
    empty(maps.type);
    EXPECT_TRUE(G::isQualifierSetShared(component));
    maps.store(1, {component, component});
    empty(points.type);
    EXPECT_TRUE(G::isQualifierSetShared(component));
}

TEST_F(DetailSharingTest, ArrangerStrategiesAreLookedUpAmongControls)
{
    const Referring strategies = column(&StructDetObjAnnotationStrategy::arrangerStrategy);
    for (const int key : {1, 2})
        strategies.store(key, {component});
    EXPECT_FALSE(G::isArrangerStrategyShared(component));
    EXPECT_FALSE(G::isArrangerControlShared(component));
}

TEST_F(DetailSharingTest, OnlyTheCurrentSourceCounts)
{
    const Referring styles = numbered(&StructDetailStyle::requests);
    styles.store(1, {component, component});
    EXPECT_TRUE(G::isViewRequestShared(component));
    const KorDSNRequest request(KorDSNDefinitions::kAddin, KorDSNDefinitions::kFirstAddin);
    EXPECT_FALSE(G::isViewRequestShared(component));
}

} // namespace
