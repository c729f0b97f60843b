#pragma once

#include "support/RepositoryFixture.h"
#include "support/RepositoryFolder.h"

#include <korodbc/records/Registry.h>
#include <korodbc/repository/RecordAccess.h>

#include <memory>

/// A table that is not there, in any data source, while this object lives.
class MissingTable {
public:
    explicit MissingTable(const RecordDescription& type) : m_type(type) { rename("", "Missing"); }
    ~MissingTable() { rename("Missing", ""); }
    MissingTable(const MissingTable&) = delete;
    MissingTable& operator=(const MissingTable&) = delete;

private:
    void rename(const std::string& prefix, const std::string& newPrefix) const
    {
        const std::string name(m_type.table);
        const std::string sql = "ALTER TABLE [" + prefix + name + "] RENAME TO [" + newPrefix + name + "]";
        for (unsigned dsn = 0; dsn < KorDSNDefinitions::kNumberOfDataSources; ++dsn)
            if (m_type.homes.contains(static_cast<eDSN>(dsn))) {
                EXPECT_EQ(KorDatabaseAccess::doSQLStatement(static_cast<eDSN>(dsn), KorString::fromUtf8(sql)), 1);
            }
    }
    const RecordDescription& m_type;
};

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
    /// The described columns of a record, the numbered ones included, as `rows` has them.
    static std::string textOf(const RecordDescription& type, const void* record)
    {
        std::string text;
        const auto add = [&](std::span<const ColumnDescription> columns, const void* from) {
            for (const ColumnDescription& column : columns) {
                const KorCellData cell = column.kind == FieldKind::Integer ? KorCellData(column.integer(from))
                                         : column.kind == FieldKind::Real  ? KorCellData(column.real(from))
                                                                           : KorCellData(column.text(from));
                text += cell.getStringW().toUtf8() + "|";
            }
        };
        add(type.columns, record);
        for (long i = 0; type.numbered.exists() && i < type.numbered.list.length(record); ++i)
            add(type.numbered.columns, type.numbered.list.at(record, i));
        text.pop_back();
        return text;
    }
    /// True when the row begins with the columns of the record; a table can have more than are described.
    static testing::AssertionResult isRow(const RecordDescription& type, const void* record,
                                          const std::string& row)
    {
        const std::string text = textOf(type, record);
        if (row == text || row.rfind(text + "|", 0) == 0)
            return testing::AssertionSuccess();
        return testing::AssertionFailure() << text << " is not the row " << row;
    }

private:
    std::unique_ptr<RepositoryFolder> m_folder;
};
