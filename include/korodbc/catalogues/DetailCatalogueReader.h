#pragma once

#include <korodbc/catalogues/CatalogueReader.h>
#include <korodbc/records/detail/DetailStyleRecords.h>

/// What the readers of the detail catalogue are made of, beside what all catalogue readers are made of. Results: 1
/// for found or read, another value, mostly 0, otherwise; outputs are unchanged on failure.
class DetailCatalogueReader : protected CatalogueReader<StructDetailMaster> {
protected:
    /// One field of the record with that run name.
    template <class T, class Value>
    static int fieldOfRunName(const KorString& runName, Value T::*field, Value& value)
    {
        T record;
        const int result = byRunName(runName, record);
        if (result == 1)
            value = record.*field;
        return result;
    }
    /// A record of a type that keeps its items in a table of their own; they are read first.
    template <class T>
    static int withItemsByKey(const KorOdbcKey& key, T& record)
    {
        ItemRecordMarshal<T>::loadItems(key.getKey());
        return byKey(key, record);
    }
    template <class T>
    static int withItemsByRunName(const KorString& runName, T& record)
    {
        int key = -1;
        const int result = RecordMarshal<T>::getKeyByRunName(runName, key);
        if (result != 1)
            return result;
        ItemRecordMarshal<T>::loadItems(key);
        return byRunName(runName, record);
    }

    // Scans of whole tables

    /// Calls `act` for every record in table order, until it returns false; 0 when the table cannot be read.
    template <class T, class Act>
    static int scan(Act act)
    {
        return RecordAccess::visit(descriptionOf<T>(),
                                   [&](const void* record) { return act(*static_cast<const T*>(record)); });
    }
    /// The last matching record in table order.
    template <class T, class Matches>
    static int lastThat(Matches matches, T& record)
    {
        int found = 0;
        scan<T>([&](const T& candidate) {
            if (matches(candidate)) {
                record = candidate;
                found = 1;
            }
            return true;
        });
        return found;
    }
    template <class T>
    static int lastNamed(const KorString& runName, T& record)
    {
        return lastThat([&](const T& candidate) { return candidate.runName == runName; }, record);
    }
    /// Appends one field of every record, in table order.
    template <class T, class Value>
    static int appendEach(Value T::*field, KorArray<Value>& values)
    {
        return scan<T>([&](const T& record) {
            values.append(record.*field);
            return true;
        });
    }
};
