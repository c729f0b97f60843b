#pragma once

#include <korodbc/records/RecordDescription.h>
#include <korodbc/roots/KorArray.h>
#include <korodbc/roots/KorString.h>

#include <functional>
#include <memory>
#include <typeinfo>

/// The host's record reads, for records of any described type. `Struct<Record>Marshal` classes are the typed
/// way in. Reads go to the current data source; without a request, a table that it does not have is read from the
/// first of the type's homes, in the order of eDSN, that has it. Results: 1 found or read, 0 not, also when the
/// table cannot be read; operations that give -1 for that say so below. Outputs are unchanged unless the result is
/// 1. Nothing is thrown but by what is passed in. Threads: one. Needs: an open repository.
///
/// Records are copies, with their items in the order of these; a record whose items cannot be read is not read.
/// Numbered items are as many as the count column says and the table has columns for; without a count column, all
/// of these. Columns are found by name; one that the table lacks leaves the member as a new record has it; so does
/// an empty cell, but a text becomes empty. Run names and text keys are compared exactly. Table order is that of
/// KorDatabaseAccess.
namespace RecordAccess {

enum class Sources {
    Current,
    All,             // see below
    CurrentElseHome, // the current one, also a requested one; when it has no such table, the one that keeps it
};

// `All` is the add-in, the country add-ins in the order of their slots, the base (the current data source if it is
// one of the type's homes, else the first of these that has the table), and what is current if that is none of
// them; each only if it has the table and it can be read. A single record comes from the first that has it, a list
// is one behind the other, each sorted by itself, and what several have is in it several times.

int readByKey(const RecordDescription& type, long key, void* record, Sources sources = Sources::Current);
/// The text of an integer key finds it, too.
int readByKey(const RecordDescription& type, const KorString& key, void* record,
              Sources sources = Sources::Current);
int readByRunName(const RecordDescription& type, const KorString& runName, void* record,
                  Sources sources = Sources::Current);
/// `records` is a KorArray of the type.
int readTable(const RecordDescription& type, void* records, Sources sources = Sources::Current);
/// The records whose column `column`, an index into the description, holds `value`, appended to `records` in table
/// order; those of an item table that an owner has, in the order of items. Returns 1 when there are any, 0 when
/// there are none, -1 when the table cannot be read or lacks that column, or it does not hold integers.
int readWhere(const RecordDescription& type, int column, long value, void* records);
/// First record, in table order, whose columns hold these values.
int readFirstWhere(const RecordDescription& type, int column, long value, int column2, long value2, void* record);
/// Calls `act` for the records of a table, in table order and with their items, until it returns false. A record
/// is valid during the call only, and `act` must not read or write through the service. Returns 1 when the table
/// could be read, else 0 without having called `act`.
int visit(const RecordDescription& type, const std::function<bool(const void* record)>& act,
          Sources sources = Sources::Current);
/// What `make` makes of the records, a KorArray of the type without items: made once for each `kind` and kept with
/// the records until one of them changes. nullptr when the table cannot be read. `make` must not read or write
/// through the service.
std::shared_ptr<const void> derived(const RecordDescription& type, const std::type_info& kind,
                                    const std::function<std::shared_ptr<const void>(const void* records)>& make);
/// Calls `act` in the same way for the records that have these keys, in the table's sort order. Keys are texts;
/// those of a table with integer keys are the texts of these. Returns 1 when there is any such record, else 0.
int visitKeys(const RecordDescription& type, const KorArray<KorString>& keys,
              const std::function<bool(const void* record)>& act, Sources sources = Sources::Current);
/// Calls `act` for each source that has the table of the type, with that source requested, until it returns false:
/// keys mean something within their source only. `Current` is the one that a read would go to.
void eachSource(const RecordDescription& type, Sources sources, const std::function<bool()>& act);
/// Run names in table order or, with `ordered`, by the sort order of the type, equal ones in table order.
int runNames(const RecordDescription& type, KorArray<KorString>& names, bool ordered,
             Sources sources = Sources::Current);
/// Run names of the given keys, in the table's sort order; 1 also when no record has any of them.
int runNamesOfKeys(const RecordDescription& type, const KorArray<long>& keys, KorArray<KorString>& names,
                   Sources sources = Sources::Current);
/// The same for keys given as texts; 0 also when no record has any of them.
int runNamesOfKeys(const RecordDescription& type, const KorArray<KorString>& keys, KorArray<KorString>& names,
                   Sources sources = Sources::Current);
/// Keys in table order. Texts are no integers: 0 then; integer keys are given as texts, too.
int keys(const RecordDescription& type, KorArray<long>& keys);
int keys(const RecordDescription& type, KorArray<KorString>& keys);
/// Key of the first record, in table order, with that run name.
int keyOfRunName(const RecordDescription& type, const KorString& runName, KorString& key);
/// The same for an integer key.
int keyOfRunName(const RecordDescription& type, const KorString& runName, int& key);
/// 0 when no record has the key, -1 when the table cannot be read or its type has no run names.
int runNameOfKey(const RecordDescription& type, const KorString& key, KorString& runName);
int runNameOfKey(const RecordDescription& type, long key, KorString& runName);
/// 1 when a record has exactly this run name, 0 when none has, -1 when the table cannot be read or its type has no
/// run names.
int hasRunName(const RecordDescription& type, const KorString& runName);
/// Reads the item table of the type, so that record reads find it ready. 0 also for a type without one.
int loadItems(const RecordDescription& type);
/// The next reads see what other programs have stored; those of every type, where the host does not tell them
/// apart.
void resetCache(const RecordDescription& type);

} // namespace RecordAccess
