#pragma once

#include <korodbc/catalogues/KorDetailCatalogue.h>
#include <korodbc/foundation/KorCountryAddIns.h>
#include <korodbc/foundation/KorOdbcKey.h>
#include <korodbc/records/configuration/ToolbarRecords.h>
#include <korodbc/references/KorDetailSharing.h>
#include <korodbc/repository/KorDSNDefinitions.h>
#include <korodbc/roots/KorArray.h>
#include <korodbc/roots/KorString.h>

/// What the configuration editors read of the detail catalogue, and what they do with tables. Tables go by their
/// logical names; without a data source they are worked on where they are found, with one in that data source, of
/// the country add-ins in the manager's slot unless one is requested. Results: 1 for success, 0 for failure, other
/// values where stated. Each write is a batch of its own, or a part of the caller's.
/// Threads: one. Needs: an open repository.
class KorOdbcGUI : public KorDetailCatalogue, public KorDetailSharing, public KorCountryAddIns {
public:
    virtual ~KorOdbcGUI() = default;

    // Saving a table and putting it back

    /// Copies a table, columns and rows; a table with the name of the copy is replaced.
    static int backupTable(const KorString& table, const KorString& copy);
    static int backupTable(const KorString& table, const KorString& copy, eDSN dsn);
    /// Replaces the rows of a table by those of its copy, then drops the copy. The copy stays when its rows
    /// could not be put back.
    static int restoreTable(const KorString& table, const KorString& copy);
    /// The same; -1, with nothing changed, when table and copy differ in their number of columns. The copy is
    /// reset.
    static int restoreTable(const KorString& table, const KorString& copy, eDSN dsn);
    /// Drops the columns that the table has got at its end since the copy was made. Rows stay as they are. 0
    /// when the copy does not exist.
    static int restoreTableStructure(const KorString& table, const KorString& copy);
    static int restoreTableStructure(const KorString& table, const KorString& copy, eDSN dsn);

    // Tables, columns, rows

    static int dropTable(const KorString& table);
    /// The same; the table is reset.
    static int dropTable(const KorString& table, eDSN dsn);
    static int dropColumn(const KorString& table, const KorString& column);
    static int dropColumn(const KorString& table, const KorString& column, eDSN dsn);
    /// Appends columns, each given as name and type ("[Width] INTEGER"), all or none. -1 without any.
    static int setNewColumns(const KorString& table, const KorArray<KorString>& definitions);
    static int setNewColumns(const KorString& table, const KorArray<KorString>& definitions, eDSN dsn);
    /// Deletes all rows.
    static int deleteTableInformation(const KorString& table);
    static int deleteTableInformation(const KorString& table, eDSN dsn);
    /// Deletes the rows that the condition selects, SQL text that begins with WHERE.
    static int deleteTableInformation(const KorString& table, const KorString& condition);
    static int deleteTableInformation(const KorString& table, const KorString& condition, eDSN dsn);
    /// Assigns columns in the rows that the condition selects; both are SQL text, without SET and WHERE.
    static int updateTableInformation(const KorString& table, const KorString& assignments,
                                      const KorString& condition);

    // Toolbars

    static int getToolbarInformation(const KorOdbcKey& key, StructToolbarsTable& toolbar);
    /// Writes the values of an existing toolbar. Returns the result of writing the last one.
    static int putToolbarInformation(const StructToolbarsTable& toolbar);
    /// Brings the menus and toolbars back to what was delivered.
    static int reopenMenu();

    // Texts

    /// Splits a text at every one of the separators, leaving empty pieces out. Returns the number of tokens.
    static int getTokens(const KorString& text, KorArray<KorString>& tokens, const KorString& separators);
    /// Splits a text before its first digit: "HEA200" into "HEA" and "200". A full stop before the digit
    /// stands in both parts; a text without a digit is left part only.
    static void getLeftAndRightFromFirstNumber(const KorString& text, KorString& left, KorString& right);
};
