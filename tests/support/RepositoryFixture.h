#pragma once

#include <korodbc/host/EmbeddedHost.h>
#include <korodbc/repository/KorDatabaseAccess.h>
#include <korodbc/repository/KorDSNManager.h>
#include <korodbc/roots/KorAssert.h>

#include <gtest/gtest.h>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

using Texts = std::vector<std::string>; // UTF-8

inline void PrintTo(const KorString& text, std::ostream* out) { *out << '"' << text.toUtf8() << '"'; }

/// Texts as an array, from UTF-8.
inline KorArray<KorString> korTexts(const Texts& texts)
{
    KorArray<KorString> array;
    for (const std::string& text : texts)
        array.append(KorString::fromUtf8(text));
    return array;
}

/// Collects the assertions raised while it lives, as "source: expression".
class AssertionRecorder {
public:
    AssertionRecorder() { KorAssert::setHandler(&AssertionRecorder::record, this); }
    ~AssertionRecorder() { KorAssert::setHandler(nullptr); }
    AssertionRecorder(const AssertionRecorder&) = delete;
    AssertionRecorder& operator=(const AssertionRecorder&) = delete;

    /// What was raised since the last call.
    Texts take() { return std::exchange(m_texts, {}); }
    int lastLine() const { return m_lastLine; }

private:
    static void record(const char* expression, const char* sourceFile, int line, void* context)
    {
        auto* self = static_cast<AssertionRecorder*>(context);
        self->m_texts.push_back(std::string(sourceFile) + ": " + expression);
        self->m_lastLine = line;
    }
    Texts m_texts;
    int m_lastLine = 0;
};

/// Collects the statements that reach the databases while it lives: by default those of the library alone, on
/// demand also what the host makes of its calls. Only one recorder at a time.
class StatementRecorder {
public:
    using Event = korodbc::host::StatementEvent;

    explicit StatementRecorder(bool ofHostToo = false)
    {
        korodbc::host::setStatementObserver([this, ofHostToo](const Event& event) {
            if (ofHostToo || event.origin == Event::Origin::Library)
                m_events.push_back(event);
        });
    }
    ~StatementRecorder() { korodbc::host::setStatementObserver({}); }
    StatementRecorder(const StatementRecorder&) = delete;
    StatementRecorder& operator=(const StatementRecorder&) = delete;

    const std::vector<Event>& events() const { return m_events; }
    /// The statements since the last call.
    Texts take()
    {
        Texts texts;
        for (const Event& event : m_events)
            texts.push_back(event.sql.toUtf8());
        m_events.clear();
        return texts;
    }

private:
    std::vector<Event> m_events;
};

/// Opens a repository in memory with every table, all of them empty, and two country add-ins.
class RepositoryTest : public testing::Test {
protected:
    static constexpr eDSN details = KorDSNDefinitions::kDetails;
    static constexpr eDSN configuration = KorDSNDefinitions::kConfiguration;

    void SetUp() override
    {
        std::string error;
        ASSERT_TRUE(korodbc::host::openRepositoryInMemory(
            {{"no", "Norway", "sqlite::memory:"}, {"fr", "France", "sqlite::memory:"}}, error))
            << error;
    }
    void TearDown() override
    {
        korodbc::host::setStatementObserver({});
        korodbc::host::closeRepository();
        KorDSNSetDwgSource::SeteIndexForDwg(KorDSNDefinitions::kBase);
    }

    /// Executes statements, each of which must succeed.
    static void sql(eDSN dsn, const Texts& statements)
    {
        for (const std::string& statement : statements)
            ASSERT_EQ(KorDatabaseAccess::doSQLStatement(dsn, KorString::fromUtf8(statement)), 1)
                << statement << ": " << korodbc::host::lastError();
    }
    static bool exists(eDSN dsn, const std::string& table)
    {
        return KorDatabaseAccess::doesTableExists(dsn, KorString::fromUtf8(table)) == 1;
    }
    /// Column names of a table; none when it does not exist.
    static Texts columns(eDSN dsn, const std::string& table)
    {
        KorArray<KorColumn> structure;
        KorDatabaseAccess::getTableStructure(dsn, KorString::fromUtf8(table), structure);
        Texts names;
        for (const KorColumn& column : structure)
            names.push_back(column.getName().toUtf8());
        return names;
    }
    /// The rows of a table in stored order, the cells of each joined by "|".
    static Texts rows(eDSN dsn, const std::string& table)
    {
        Texts lines;
        const int count = static_cast<int>(columns(dsn, table).size());
        for (int column = 0; column < count; ++column) {
            KorArray<KorCellData> cells;
            KorDatabaseAccess::getColumnValues(dsn, KorString::fromUtf8(table), {}, {}, column, cells);
            lines.resize(static_cast<std::size_t>(cells.length()));
            for (int row = 0; row < cells.length(); ++row)
                lines[static_cast<std::size_t>(row)] +=
                    (column == 0 ? "" : "|") + cells[row].getStringW().toUtf8();
        }
        return lines;
    }
};
