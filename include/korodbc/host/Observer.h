#pragma once

#include <korodbc/repository/KorDSNDefinitions.h>
#include <korodbc/roots/KorString.h>

#include <functional>
#include <string_view>

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
    bool prepared; // compiled for this execution; false when a kept statement was used
    KorString error;
};
using StatementObserver = std::function<void(const StatementEvent&)>;

/// Has every statement reported from now on, after it was run and on the caller's thread; an empty function ends
/// it. Neither function may call the service.
void setStatementObserver(StatementObserver observer);

/// For trying what happens when statements fail: asked before each statement that writes, transactions excepted,
/// is run; true lets it fail without running. An empty function ends it.
using StatementFault = std::function<bool(std::string_view sql)>;
void setStatementFault(StatementFault fault);

} // namespace korodbc::host
