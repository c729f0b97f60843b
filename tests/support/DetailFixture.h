#pragma once

#include "../src/foundation/RecordColumns.h"
#include "support/DetailRecords.h"
#include "support/RepositoryFixture.h"

#include <korodbc/edit/KorOdbcMan.h>
#include <korodbc/transfer/KorDetailTableDependencies.h>
#include <korodbc/transfer/KorODBCDetailStyleExports.h>

/// The values of a record and of its items; without those that say which row of whom it is, unless `withKeys`.
inline std::string shown(const RecordDescription& type, const void* record, bool withKeys = false)
{
    std::string line;
    korodbc::forEachColumn(type, record, [&](const ColumnDescription& column, const void* of, long) {
        const bool own = column.role == ColumnRole::Key || column.role == ColumnRole::ItemOwner ||
                         column.role == ColumnRole::Owner;
        line += withKeys || !own ? details::literal(column, of) + " " : "";
        return true;
    });
    return line;
}

/// A repository in memory with one complete detail style in the base details (keys from 1) and one in the add-in
/// (keys from 101); two country add-ins, empty.
class DetailTest : public RepositoryTest {
protected:
    using Man = KorOdbcMan;
    using Exports = KorODBCDetailStyleExports;
    using Copy = KorDetailTableDependencies;
    static constexpr eDSN addin = KorDSNDefinitions::kAddin;
    static constexpr eDSN country = KorDSNDefinitions::kCountryAddin;
    static constexpr eIndex base = KorDSNDefinitions::kBase;
    static constexpr eIndex firstAddin = KorDSNDefinitions::kFirstAddin;
    static constexpr eIndex secondAddin = static_cast<eIndex>(2); // of the country add-ins

    void SetUp() override
    {
        RepositoryTest::SetUp();
        details::fillConfiguration();
        details::fillStyle(details, details::awkward);
        details::fillStyle(addin, "add-in", 100);
        Man::InitializeStatics::release();
        Man::InitializeStatics::build();
        ASSERT_EQ(Man::initializeTables(), 1);
        current(details, base);
    }
    void TearDown() override
    {
        Copy::ResetDeepCopyInfo();
        Exports::setExportInProgress(0);
        Exports::setImportInProgress(0);
        Exports::CancelBackupTables(0);
        Man::InitializeStatics::release();
        current(details, base);
        RepositoryTest::TearDown();
    }

    static void current(eDSN dsn, eIndex index)
    {
        Man::setCurrentDSN(dsn);
        Man::setCurrentAddIn(index);
    }
    /// `act` with a database requested.
    template <class Act>
    static auto within(eDSN dsn, eIndex index, Act act)
    {
        const KorDSNRequest request(dsn, index);
        return act();
    }
    /// A style with keys from 201 in the second country add-in, which becomes the manager's database.
    static void useSecondCountryAddIn()
    {
        within(country, secondAddin, [] { details::fillStyle(country, "second", 200); });
        current(country, secondAddin);
    }
    static Man::eTableType type(int number) { return static_cast<Man::eTableType>(number); }
    static Man::eCopyDepth depth(int number) { return static_cast<Man::eCopyDepth>(number); }
    /// One cell of the row with that key, as text.
    static std::string cell(eDSN dsn, const std::string& table, int key, int column)
    {
        KorCellData value;
        return KorDatabaseAccess::getTableColumnValue(dsn, details::text(table), L"Key", KorCellData(key), column,
                                                      value) == 1
                   ? value.getStringW().toUtf8()
                   : "(none)";
    }
};
