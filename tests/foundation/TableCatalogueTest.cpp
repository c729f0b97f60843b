#include "../src/foundation/TableCatalogue.h"

#include "support/RepositoryFixture.h"

#include <set>

namespace {

using TableCatalogueTest = RepositoryTest;

TEST_F(TableCatalogueTest, IdsNameTablesThatThereAre)
{
    std::set<std::string> tables;
    for (unsigned dsn = 0; dsn < KorDSNDefinitions::kNumberOfDataSources; ++dsn) {
        KorArray<KorString> names;
        KorDatabaseAccess::getTablesNames(static_cast<eDSN>(dsn), names);
        for (const KorString& name : names)
            tables.insert(name.toUtf8());
    }
    Texts unknown;
    std::set<std::string> named;
    int retired = 0;
    for (unsigned id = 0; id < 330; ++id) {
        const std::string name = korodbc::tableNameOfId(id).toUtf8();
        retired += name.empty() ? 1 : 0;
        if (named.insert(name).second && !name.empty() && !tables.contains(name))
            unknown.push_back(std::to_string(id) + " " + name);
    }
    EXPECT_EQ(unknown.size(), 23u) << testing::PrintToString(unknown); // tables that are no more
    EXPECT_EQ(retired, 27);
    EXPECT_EQ(named.size(), 283u);
    for (const unsigned id : {330u, 65536u, 0xFFFFFFFFu})
        EXPECT_TRUE(korodbc::tableNameOfId(id).isEmpty()) << id;
    for (const auto& [id, name] : {std::pair(0u, L"AnlagenteilKategorienn"),
                                   {106u, L"DetailStyle"},
                                   {138u, L"XMLData"},
                                   {226u, L"AutoConnectionConfig"},
                                   {329u, L"Sources"}})
        EXPECT_EQ(korodbc::tableNameOfId(id), name);
}

} // namespace
