#pragma once

#include "records/Registry.h"
#include "repository/RecordAccess.h"
#include "support/RepositoryFixture.h"
#include "support/RepositoryFolder.h"

#include <memory>

/// A repository filled from the shipped catalogue, in a temporary folder.
class CatalogueTest : public RepositoryTest {
protected:
    static constexpr eDSN addin = KorDSNDefinitions::kAddin;

    void SetUp() override { m_folder = std::make_unique<RepositoryFolder>(KORODBC_SOURCE_CATALOGUE); }
    void TearDown() override { m_folder.reset(); }

    const RepositoryFolder& folder() const { return *m_folder; }

    /// The first data source that has the tables of a type.
    static eDSN homeOf(const RecordDescription& type)
    {
        unsigned dsn = 0;
        while (!type.homes.contains(static_cast<eDSN>(dsn)))
            ++dsn;
        return static_cast<eDSN>(dsn);
    }
    static Texts rowsOf(const RecordDescription& type) { return rows(homeOf(type), std::string(type.table)); }
    /// Values of one column in table order, as text.
    static Texts valuesOf(const RecordDescription& type, int column)
    {
        KorArray<KorCellData> cells;
        KorDatabaseAccess::getColumnValues(homeOf(type), KorString::fromUtf8(type.table), {}, {}, column, cells);
        Texts values;
        for (const KorCellData& cell : cells)
            values.push_back(cell.getStringW().toUtf8());
        return values;
    }
    static Texts utf8(const KorArray<KorString>& names)
    {
        Texts texts;
        for (const KorString& name : names)
            texts.push_back(name.toUtf8());
        return texts;
    }
    /// Takes a table out of every data source that a read may look in.
    static void dropTable(const RecordDescription& type)
    {
        for (unsigned dsn = 0; dsn < KorDSNDefinitions::kNumberOfDataSources; ++dsn)
            if (type.homes.contains(static_cast<eDSN>(dsn)))
                sql(static_cast<eDSN>(dsn), {"DROP TABLE [" + std::string(type.table) + "]"});
    }

    /// The described columns of a record as `rows` has them; items of the record are left out.
    static std::string textOf(const RecordDescription& type, const void* record)
    {
        std::string text;
        for (const ColumnDescription& column : type.columns) {
            const KorCellData cell = column.kind == FieldKind::Integer ? KorCellData(column.integer(record))
                                     : column.kind == FieldKind::Real  ? KorCellData(column.real(record))
                                                                       : KorCellData(column.text(record));
            text += (text.empty() && &column == type.columns.data() ? "" : "|") + cell.getStringW().toUtf8();
        }
        return text;
    }
    /// True when the row begins with the columns of the record.
    static testing::AssertionResult isRow(const RecordDescription& type, const void* record,
                                          const std::string& row)
    {
        const std::string text = textOf(type, record);
        if (row == text || row.rfind(text + "|", 0) == 0)
            return testing::AssertionSuccess();
        return testing::AssertionFailure() << text << " is not the row " << row;
    }
    /// Puts values that no catalogue has into every column.
    static void mark(const RecordDescription& type, void* record)
    {
        for (const ColumnDescription& column : type.columns)
            if (column.kind == FieldKind::Integer)
                column.integer(record) = -4711;
            else if (column.kind == FieldKind::Real)
                column.real(record) = -47.5;
            else
                column.text(record) = L"it's [unchanged] 未变";
    }

private:
    std::unique_ptr<RepositoryFolder> m_folder;
};
