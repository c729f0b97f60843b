#include "catalogues/CatalogueFixture.h"
#include "support/DetailRecords.h"

#include <korodbc/records/configuration/ExchangeRecords.h>
#include <korodbc/references/KorDetailReferences.h>

#include <algorithm>
#include <map>
#include <set>

using namespace details;

namespace {

constexpr eDSN inDetails = KorDSNDefinitions::kDetails;
constexpr eIndex base = KorDSNDefinitions::kBase;

/// "table key name [item] column -> target key"
Texts shown(const KorArray<KorDetailReference>& references)
{
    Texts texts;
    for (const KorDetailReference& one : references)
        texts.push_back(one.table.toUtf8() + " " + std::to_string(one.key) + " " + one.name.toUtf8() +
                        (one.item < 0 ? " " : " [" + std::to_string(one.item) + "] ") + one.column.toUtf8() +
                        " -> " + one.target.toUtf8() + " " +
                        (one.targetText.isEmpty() ? std::to_string(one.targetKey) : one.targetText.toUtf8()));
    return texts;
}
Texts referrers(const char* table, int key)
{
    KorArray<KorDetailReference> found;
    EXPECT_EQ(KorDetailReferences::getReferrers(inDetails, base, KorString::fromUtf8(table), key, found), 1);
    return shown(found);
}
Texts dangling()
{
    KorArray<KorDetailReference> found;
    EXPECT_EQ(KorDetailReferences::getDangling(inDetails, base, found), 1);
    return shown(found);
}

class DetailReferencesTest : public RepositoryTest {};

TEST_F(DetailReferencesTest, ReferencesToNothing)
{
    EXPECT_EQ(dangling(), Texts{});
    put(inDetails, StructDetViewArrangeStrategy{1, L"a", -1, 10, 12.5, 1, L"o"}); // chooses no direction
    put(inDetails,
        StructDetailStyle{1, L"it's", 1, -1, -1, L"", 1, L"", 2, L"", L"", 1, 3, 1, L"o", 0, list<int>({7, -1})});
    StructDetObjReprMap map{1, L"map", L"o", 0, list<StructDetObjReprMapItem>({StructDetObjReprMapItem{}})};
    map.items[0].objQualifier = 3;
    map.items[0].appearance = 4;
    map.items[0].annotationStrategy = 5;
    map.items[0].geometricRestrictions = 6;
    put(inDetails, map); // its line type of -1 is none
    // rows that a copy leaves behind: of owners, text keys, overrides of styles, rules
    put(inDetails, StructDetViewRequestCategory{1, 6, 9, 0});
    put(inDetails, StructDetObjQualifierSet{1, L"set", 3, L"o", 0,
                                            list<StructDetObjQualifierSetItem>(
                                                {{-1, -1, 0, -1, L"role", L""}, {-1, -1, 1, -1, L"", L"BIG"}})});
    put(inDetails,
        StructDetailStyleMap{1, L"styles", L"o", 0,
                             list<StructDetailStyleMapItem>({{-1, 0, L"", 1, 1, 0}, {-1, 1, L"", 1, 1, 8}})});
    put(inDetails, StructNecessaryViewsConfiguration{1, L"rule", 1, -1, 0, -1, 0, 1, L"o"});
    put(inDetails, StructNecessaryViewsConfiguration{2, L"rule 2", 1, 1, 0, 12, 0, 1, L"o"});
    EXPECT_EQ(dangling(),
              (Texts{"DetailStyle 1 it's [0] Request1 -> DetViewRequest 7",
                     "DetailStyle 1 it's [1] Request2 -> DetViewRequest -1",
                     "DetViewRequestCategories 1  BaseCategory -> DetBaseCategories 6",
                     "DetViewRequestCategories 1  DetViewRequest -> DetViewRequest 9",
                     "DetObjReprMapItems 1 map [0] ObjQualifier -> DetObjQualifierSet 3",
                     "DetObjReprMapItems 1 map [0] GeometricRestrictions -> DetVwDimGeomRestrictions 6",
                     "DetObjReprMapItems 1 map [0] Appearance -> DetObjAppearance 4",
                     "DetObjReprMapItems 1 map [0] AnnotationStrategy -> DetObjAnnotationStrategy 5",
                     "DetObjQualifierSet 1 set Group -> DetObjQualifierSetGroup 3",
                     "DetObjQualifierSetItem 1 set [1] Filter -> DetObjQualifierFilter BIG",
                     "DetailStyleMapItems 1 styles [1] DetailStyleOverrides -> DetailStyleOverrides 8",
                     "NecessaryViewsConfiguration 2 rule 2 BeamType -> BeamType 1",
                     "NecessaryViewsConfiguration 2 rule 2 DetObjQualifierSet -> DetObjQualifierSet 12"}));
    KorArray<KorDetailReference> found;
    EXPECT_EQ(
        KorDetailReferences::getReferrers(inDetails, base, L"DetObjQualifierFilter", KorString(L"BIG"), found), 1);
    EXPECT_EQ(found.length(), 1);
    sql(inDetails, {"DROP TABLE DetailStyle"});
    EXPECT_EQ(dangling().size(), 13u); // without two of its own, with two to it
}

/// A number or a text that is called like a table, or like one without "Det", names its rows: its description has
/// to say so, or every check would miss it.
TEST(DetailDescriptionsTest, WhatLooksLikeAReferenceIsOne)
{
    const std::set<std::string> others = {
        // figures and texts of their own that are called like a table by chance
        "DetailProcessSelection.Selection",
    };
    const auto lower = [](std::string_view name) {
        std::string text(name.substr(0, name.find('%')));
        std::transform(text.begin(), text.end(), text.begin(), [](unsigned char c) { return std::tolower(c); });
        for (const char* ending : {"new", "s"})
            if (text.ends_with(ending))
                text.erase(text.size() - std::string_view(ending).size());
        return text;
    };
    std::map<std::string, std::string> tables;
    for (const auto describe : records::all())
        if (describe().homes.contains(KorDSNDefinitions::kDetails) && describe().key >= 0)
            for (const std::string_view start : {"", "Det", "Detail", "DetView", "DetObj", "DetailProcess"})
                if (const std::string_view table = describe().table;
                    table.starts_with(start) && table.size() > start.size() + 4)
                    tables.emplace(lower(table.substr(start.size())), table);
    int links = 0;
    for (const auto describe : records::all()) {
        const RecordDescription& type = describe();
        if (!type.homes.contains(KorDSNDefinitions::kDetails))
            continue;
        for (const auto columns : {type.columns, type.numbered.columns})
            for (const ColumnDescription& column : columns) {
                links += column.link != LinkKind::None ? 1 : 0;
                const bool isOwned = column.role == ColumnRole::ItemOwner && type.key >= 0 && type.itemOrder < 0;
                if ((column.role != ColumnRole::Value && !isOwned) || column.link != LinkKind::None ||
                    column.kind == FieldKind::Real)
                    continue;
                const auto table = tables.find(lower(column.name));
                const std::string name = std::string(type.table) + "." + std::string(column.name);
                EXPECT_TRUE(table == tables.end() || others.contains(name))
                    << name << " may name " << table->second;
            }
    }
    EXPECT_GT(links, 50);
}

class ShippedReferencesTest : public CatalogueTest {};

TEST_F(ShippedReferencesTest, AllLeadSomewhereAndAreFound)
{
    EXPECT_EQ(dangling(), Texts{});
    const struct {
        const RecordDescription& target;
        std::vector<std::pair<const char*, const char*>> columns; // table, column
    } cases[] = {
        {descriptionOf<StructDetObjQualifierSet>(),
         {{"DetObjReprMapItems", "ObjQualifier"},
          {"DetViewDimPointSelection", "Objects"},
          {"DetailStyleMapItems", "ObjQualifierSet"},
          {"NecessaryViewsConfiguration", "DetObjQualifierSet"}}},
        {descriptionOf<StructDetailStyle>(),
         {{"DetailMasterTable", "DetailStyle"}, {"DetailStyleMapItems", "DetailStyle"}}},
        {descriptionOf<StructDetViewDimRequestLinear>(), {{"DetViewDimStrategyItems", "RequestLinear"}}},
        {descriptionOf<StructDetailProcessDefinition>(), {{"DetProcessesSuiteItems", "Process"}}},
        {descriptionOf<StructDetViewDimPointSelection>(),
         {{"DetViewDimRequestLinear", "Point1"},
          {"DetViewDimRequestLinear", "Point2"},
          {"DetViewDimRequestLinear", "Point3"}}},
    };
    for (const auto& one : cases) {
        SCOPED_TRACE(one.target.table);
        std::map<std::string, int> stored;
        for (const auto& [table, column] : one.columns) {
            const Texts names = columns(details, table);
            const auto at = std::find(names.begin(), names.end(), column);
            ASSERT_NE(at, names.end()) << table << "." << column;
            for (const std::string& value :
                 valuesOf(*records::ofTable(table), static_cast<int>(at - names.begin())))
                ++stored[value];
        }
        int total = 0;
        for (const std::string& key : valuesOf(one.target, one.target.key)) {
            const auto found =
                static_cast<int>(referrers(std::string(one.target.table).c_str(), std::stoi(key)).size());
            EXPECT_EQ(found, stored[key]) << key;
            total += found;
        }
        EXPECT_GT(total, 0);
    }
}

} // namespace
