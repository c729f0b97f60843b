#include "../src/foundation/TableCatalogue.h"

#include "support/RepositoryFixture.h"

#include <map>
#include <set>

using korodbc::tableNameOfId;

namespace {

TEST(TableCatalogueTest, NamesStandAtTheirIds)
{
    struct Case {
        unsigned id;
        const wchar_t* name;
    };
    for (const Case& one : {Case{0, L"AnlagenteilKategorienn"},
                            {10, L"Default_STR"},
                            {19, L"Material"},
                            {31, L"DSTVNames"},
                            {46, L"DetObjQualifier"},
                            {73, L"Texts"},
                            {95, L"Authors"},
                            {106, L"DetailStyle"},
                            {119, L"Toolbars"},
                            {133, L"MapInternToExtern"},
                            {138, L"XMLData"},
                            {154, L"ModelSelections"},
                            {161, L"ReportCategories"},
                            {168, L"UnwindingElongation"},
                            {180, L"DetailProcessMain2CutScale"},
                            {226, L"AutoConnectionConfig"},
                            {243, L"AutoConnectionProfiles"},
                            {273, L"AutoConnectionGeomConditions"},
                            {283, L"GratingVariableMaster"},
                            {286, L"GratingConnectorType"},
                            {300, L"ProfileDynamic"},
                            {303, L"FootingIsolatedFormulaMask"},
                            {329, L"Sources"}})
        EXPECT_EQ(tableNameOfId(one.id), one.name) << one.id;
}

TEST(TableCatalogueTest, RetiredAndUnknownIdsHaveNoName)
{
    const std::set<unsigned> retired = {1,   3,   4,   5,   7,   8,   9,   16,  18,  21,  24,  32,  33, 89,
                                        114, 115, 122, 130, 131, 135, 162, 163, 164, 284, 285, 301, 302};
    ASSERT_EQ(retired.size(), 27u);
    for (unsigned id = 0; id < 330; ++id)
        EXPECT_EQ(tableNameOfId(id).isEmpty(), retired.contains(id)) << id;
    for (const unsigned id : {330u, 331u, 65536u, 0xFFFFFFFFu})
        EXPECT_TRUE(tableNameOfId(id).isEmpty()) << id;
}

TEST(TableCatalogueTest, OnlyTheseNamesHaveSeveralIds)
{
    std::map<std::string, std::vector<unsigned>> shared;
    for (unsigned id = 0; id < 330; ++id)
        if (const KorString name = tableNameOfId(id); !name.isEmpty())
            shared[name.toUtf8()].push_back(id);
    std::erase_if(shared, [](const auto& entry) { return entry.second.size() == 1; });
    const std::map<std::string, std::vector<unsigned>> expected = {
        {"Rules2nd", {2, 6}},
        {"DetObjQualifierSet", {42, 45}},
        {"DetObjReprMapsNew", {48, 175, 176}},
        {"DetViewDimStrategyNew", {57, 58, 199}},
        {"DetViewRequestCategories", {100, 205}},
        {"DetailStyleMapNew", {113, 184, 185}},
        {"Units", {141, 142, 144, 146, 149, 151, 153, 250, 252, 263, 265, 325, 327}},
    };
    // "Units" follows each unit category
    EXPECT_EQ(shared, expected);
}

} // namespace
