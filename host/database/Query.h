#pragma once

#include "database/Database.h"

#include <memory>
#include <string>

namespace korodbc::host {

/// One run of a SELECT whose text comes from elsewhere, in part or as a whole. Texts that differ in the values of
/// their condition only run on one kept statement; any other text is compiled for its run and not kept, so that
/// no number of different texts fills the memory.
class Query {
public:
    Query(Database& database, const KorString& text);
    /// "SELECT ... FROM ..." of the host's own, a condition and an order, each of which may be empty: without an
    /// order `tableOrder`, " ORDER BY ..." of the host's own.
    Query(Database& database, const std::string& select, const KorString& condition, const KorString& order,
          const std::string& tableOrder);
    ~Query();
    Query(const Query&) = delete;
    Query& operator=(const Query&) = delete;

    /// The statement, values bound; nullptr when the text is not one statement that reads.
    Statement* statement() const { return m_statement; }
    /// True when the result depends on nothing but the rows of the table.
    bool isOfTableAlone() const { return m_own == nullptr; }
    /// Why there is no statement.
    const HostError& error() const { return m_error; }

private:
    void compile(const std::string& text);

    Database& m_database;
    std::unique_ptr<Statement> m_own;
    Statement* m_statement = nullptr;
    HostError m_error;
};

} // namespace korodbc::host
