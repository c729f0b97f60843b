#pragma once

#include "engine/Claims.h"
#include "engine/Statement.h"

#include <korodbc/host/HostError.h>
#include <korodbc/repository/KorColumn.h>

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace korodbc::host {

struct TableColumn {
    std::string name;
    std::string declaration; // "INTEGER", "VARCHAR(255)"
    KorItemType::BaseTypes type;
    int inPrimaryKey = 0; // position in the primary key, counted from 1; 0: no part of it
    bool notNull = false, hasDefault = false, computed = false;

    /// True when a row cannot leave the cell out.
    bool required() const { return notNull && !hasDefault && !computed; }
};
KorItemType::BaseTypes typeOfDeclaration(std::string_view declaration);

/// What a table does with a row that is written.
struct TableRules {
    bool mayRefuse = false;    // for more than a missing value
    bool replacesRows = false; // it removes rows that are in the way
};

/// One open database, for one thread. Its statements are of one dialect, which an engine translates where its own
/// differs: names in brackets, in double quotes or bare, ASCII case ignored; `?` for values; "rowid" where
/// rowIdName says so; LIKE without regard to ASCII case; "typeof" and "CAST"; rows without an order as they lie. A
/// failed statement undoes itself and nothing else, unless isInTransaction says that everything is undone. Several
/// statements may be stepped in turn.
class Engine {
public:
    enum class Access {
        Look,   // nothing is written, also where nothing can be: in a folder without permission, on a fixed medium
        Write,  // an existing database
        Create, // a missing one is made
    };

    virtual ~Engine() = default;
    Engine() = default;
    Engine(const Engine&) = delete;
    Engine& operator=(const Engine&) = delete;

    /// Why the last operation failed.
    virtual const HostError& failure() const = 0;
    /// Why nothing can be written; of no kind when something can.
    virtual const HostError& refusal() const = 0;
    /// How long an operation waits for another program that writes.
    virtual void setPatience(int milliseconds) = 0;

    // Statements

    /// One statement; nullptr, with failure(), for anything else. It must not outlive the engine. `kept`: it will
    /// be run often.
    virtual std::unique_ptr<Statement> prepare(std::string_view sql, bool kept) = 0;

    // Tables

    /// The names of all tables but the engine's own; false when they cannot be read.
    virtual bool tables(std::vector<std::string>& names) = 0;
    /// Empty when there is no such table.
    virtual std::vector<TableColumn> columns(const std::string& table) = 0;
    /// Name by which statements reach the number of a row, in table order, which is its key where that is a whole
    /// number; empty in a table whose rows have none, or none that can be named.
    virtual std::string rowIdName(const std::string& table) = 0;
    virtual TableRules rules(const std::string& table) = 0;
    /// Bytes that the database takes, as far as it is stored.
    virtual std::int64_t size() = 0;

    // Transactions

    /// One for writing shuts other writers out from its start; one for reading sees one state from its start.
    virtual bool begin(bool forWriting) = 0;
    virtual bool commit() = 0;
    virtual bool rollback() = 0;
    /// Marks are numbered from 1; a higher one is within a lower one.
    virtual bool setMark(int mark) = 0;
    /// Undoes what was written since; the mark stays.
    virtual bool undoToMark(int mark) = 0;
    virtual bool releaseMark(int mark) = 0;
    virtual bool isInTransaction() const = 0;

    // Changes and claims

    /// Rows written through this engine so far.
    virtual std::int64_t written() const = 0;
    /// Differs after others have changed the database; -1 when that cannot be told.
    virtual std::int64_t versionOfOthers() = 0;
    virtual Claims& claims() = 0;

    // The database as a whole

    /// Empty when it is sound; otherwise what is wrong, in one line.
    virtual std::string check() = 0;
    /// What is written goes to where it stays.
    virtual bool settle() = 0;
    /// The same, and nothing is kept beside the database any more.
    virtual bool fold() = 0;
};

/// A kind of engine: how its databases are named and opened.
struct EngineKind {
    std::string_view scheme;         // in front of what names a database in a connection string
    std::string_view readOnlyScheme; // the same for one that is never written: no byte of it changes
    std::string_view inMemory;       // names a database of this program alone, which ends with it
    /// The database of that name. On failure nullptr, with the reason in `error`.
    std::unique_ptr<Engine> (*open)(const std::string& name, Engine::Access access, HostError& error);
    /// True for names that the engine keeps for its own tables.
    bool (*isReserved)(std::string_view table);
    /// False when what the engine is made of is too old.
    bool (*isUsable)();
};

/// The engine of databases that are files.
const EngineKind& fileEngine();

} // namespace korodbc::host
