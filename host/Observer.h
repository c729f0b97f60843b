#pragma once

#include "repository/KorDSNDefinitions.h"
#include "roots/KorString.h"

#include <functional>

namespace korodbc::host {

/// One statement as it reached a database.
struct StatementEvent {
    enum class Origin {
        Library, // passed to KorDatabaseAccess::doSQLStatement
        Host,    // the host's own: rows stored, tables read, transactions
    };
    eDSN dsn;
    eIndex index;
    Origin origin;
    KorString sql; // of the library: the text exactly as it came
    int result;    // 1 executed, 0 failed
    bool prepared; // compiled for this execution; false when a kept statement served
    KorString error;
};
using StatementObserver = std::function<void(const StatementEvent&)>;

/// Sees every statement from now on; an empty function ends it.
void setStatementObserver(StatementObserver observer);

} // namespace korodbc::host
