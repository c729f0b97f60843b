#pragma once

#include <korodbc/foundation/KorOdbcKey.h>
#include <korodbc/repository/KorDSNManager.h>
#include <korodbc/repository/RecordMarshal.h>

#include <concepts>
#include <tuple>
#include <type_traits>
#include <utility>

/// Types that a key is handed out in.
template <class K>
concept CatalogueKey =
    std::same_as<K, KorString> || std::same_as<K, KorOdbcKey> || std::same_as<K, long> || std::same_as<K, int>;

/// What the catalogue readers are made of: one operation for each kind of read. A reader holds no data; its
/// first record type is the one meant where an operation names none. Reads return 1 for success and another
/// value, mostly 0, otherwise; outputs are unchanged on failure; lists replace what the array held, where nothing
/// else is said. Without a data source, they go to the current one (RecordAccess). Threads: one. Needs: an open
/// repository.
template <class... Records>
class CatalogueReader {
public:
    /// The next reads see what other programs have stored.
    static void resetTable() { (RecordMarshal<Records>::resetTableCache(0), ...); }

protected:
    using Record = std::tuple_element_t<0, std::tuple<Records...>>;

    template <class T>
    static int byKey(const KorOdbcKey& key, T& record)
    {
        return RecordMarshal<T>::getStructByKey(key.getKey(), record);
    }
    template <class T>
    static int byKey(const KorString& key, T& record)
    {
        return RecordMarshal<T>::getStructByKey(key, record);
    }
    template <class T>
    static int byRunName(const KorString& runName, T& record)
    {
        return RecordMarshal<T>::getStructByRunName(runName, record);
    }
    template <class T = Record, CatalogueKey Key>
    static int keyOf(const KorString& runName, Key& key)
    {
        KorString text;
        const int result = RecordMarshal<T>::getKeyByRunName(runName, text);
        if (result != 1)
            return result;
        if constexpr (std::same_as<Key, KorString>)
            key = text;
        else if (!std::in_range<int>(text.toInteger()))
            return 0;
        else
            key = static_cast<Key>(text.toInteger());
        return result;
    }
    template <class T = Record>
    static int runNames(KorArray<KorString>& names)
    {
        return RecordMarshal<T>::getRunNameList(names);
    }
    /// In the order that the table's sort column gives.
    template <class T = Record>
    static int orderedRunNames(KorArray<KorString>& names)
    {
        return RecordMarshal<T>::getOrderedRunNameList(names);
    }
    template <class T>
    static int table(KorArray<T>& records)
    {
        return RecordMarshal<T>::getTable(records);
    }

    /// One field of a record. These give -1 for failure, whatever the record read gave.
    template <auto Field, class Key, class Value>
    static int fieldByKey(const Key& key, Value& value)
    {
        return field<Field>(value, [&](auto& record) { return byKey(key, record); });
    }
    template <auto Field, class Value>
    static int fieldByRunName(const KorString& runName, Value& value)
    {
        return field<Field>(value, [&](auto& record) { return byRunName(runName, record); });
    }
    /// The run name of a key, and the key itself when no record has it.
    template <auto RunName>
    static KorString runNameOrKey(const KorString& key)
    {
        KorString text = key;
        fieldByKey<RunName>(key, text);
        return text;
    }

    /// A read with a data source and slot requested.
    template <class Read>
    static int within(eDSN dsn, eIndex index, Read read)
    {
        const KorDSNRequest request(dsn, index);
        return read();
    }
    /// A read in the add-in's data source and, when that does not give 1, in the base one.
    template <class Read>
    static int addInFirst(eDSN base, Read read)
    {
        const int result = within(KorDSNDefinitions::kAddin, KorDSNDefinitions::kFirstAddin, read);
        return result == 1 ? result : within(base, KorDSNDefinitions::kBase, read);
    }

private:
    template <class>
    struct RecordOf;
    template <class T, class Value>
    struct RecordOf<Value T::*> {
        using type = T;
    };

    template <auto Field, class Value, class Read>
    static int field(Value& value, Read read)
    {
        typename RecordOf<decltype(Field)>::type record;
        if (read(record) != 1)
            return -1;
        value = record.*Field;
        return 1;
    }
};
