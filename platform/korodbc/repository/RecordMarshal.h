#pragma once

#include <korodbc/repository/KorDSNManager.h>
#include <korodbc/repository/RecordAccess.h>

#include <algorithm>
#include <functional>
#include <limits>
#include <utility>

/// Typed reads of one record type, with the results of RecordAccess. Threads: one. Needs: an open repository.
template <class T>
struct RecordMarshal {
    static const RecordDescription& type() { return descriptionOf<T>(); }

    static int getStructByKey(const long& key, T& record) { return RecordAccess::readByKey(type(), key, &record); }
    static int getStructByKey(const KorString& key, T& record)
    {
        return RecordAccess::readByKey(type(), key, &record);
    }
    static int getStructByRunName(const KorString& runName, T& record)
    {
        return RecordAccess::readByRunName(type(), runName, &record);
    }
    static int getTable(KorArray<T>& records) { return RecordAccess::readTable(type(), &records); }
    static int getRunNameList(KorArray<KorString>& names) { return RecordAccess::runNames(type(), names, false); }
    static int getOrderedRunNameList(KorArray<KorString>& names)
    {
        return RecordAccess::runNames(type(), names, true);
    }
    static int getOrderedRunNameListByKeys(const KorArray<long>& keys, KorArray<KorString>& names)
    {
        return RecordAccess::runNamesOfKeys(type(), keys, names);
    }
    /// The same for keys given as texts; 0 also when no record has any of them.
    static int getOrderedRunNameListByKeys(const KorArray<KorString>& keys, KorArray<KorString>& names)
    {
        return RecordAccess::runNamesOfKeys(type(), keys, names);
    }
    /// The records with these keys, in the same order; 0 when there are none.
    static int getOrderedTableByKeys(const KorArray<KorString>& keys, KorArray<T>& records)
    {
        KorArray<T> found;
        RecordAccess::visitKeys(type(), keys, [&](const void* record) {
            found.append(*static_cast<const T*>(record));
            return true;
        });
        return foundAny(found, records);
    }
    template <class K>
    static int getKeyList(KorArray<K>& keys)
    {
        return RecordAccess::keys(type(), keys);
    }
    static int getKeyByRunName(const KorString& runName, KorString& key)
    {
        return RecordAccess::keyOfRunName(type(), runName, key);
    }
    static int getKeyByRunName(const KorString& runName, int& key)
    {
        return RecordAccess::keyOfRunName(type(), runName, key);
    }
    /// -1 when the table cannot be read.
    static int getRunNameByKey(const KorString& key, KorString& runName)
    {
        return RecordAccess::runNameOfKey(type(), key, runName);
    }
    static int getRunNameByKey(const long& key, KorString& runName)
    {
        return RecordAccess::runNameOfKey(type(), key, runName);
    }

    static int getStructByKeyAllSources(const long& key, T& record)
    {
        return RecordAccess::readByKey(type(), key, &record, RecordAccess::Sources::All);
    }
    static int getStructByKeyAllSources(const KorString& key, T& record)
    {
        return RecordAccess::readByKey(type(), key, &record, RecordAccess::Sources::All);
    }
    static int getStructByRunNameAllSources(const KorString& runName, T& record)
    {
        return RecordAccess::readByRunName(type(), runName, &record, RecordAccess::Sources::All);
    }
    static int getTableAllSources(KorArray<T>& records)
    {
        return RecordAccess::readTable(type(), &records, RecordAccess::Sources::All);
    }
    static int getRunNameListAllSources(KorArray<KorString>& names)
    {
        return RecordAccess::runNames(type(), names, false, RecordAccess::Sources::All);
    }
    static int getOrderedRunNameListAllSources(KorArray<KorString>& names)
    {
        return RecordAccess::runNames(type(), names, true, RecordAccess::Sources::All);
    }

    /// 1 when a record has exactly this run name, 0 when none has, -1 when the table cannot be read.
    static int hasRunName(const KorString& runName) { return RecordAccess::hasRunName(type(), runName); }
    /// A Derived made of the records of the current source, `Derived(const KorArray<T>&)`; it is made once and
    /// kept until one of them changes. nullptr when the table cannot be read. Items are not seen.
    template <class Derived>
    static std::shared_ptr<const Derived> derived()
    {
        const auto make = [](const void* records) -> std::shared_ptr<const void> {
            return std::make_shared<const Derived>(*static_cast<const KorArray<T>*>(records));
        };
        return std::static_pointer_cast<const Derived>(RecordAccess::derived(type(), typeid(Derived), make));
    }
    /// The next read sees what other programs have stored; the argument makes no difference.
    static void resetTableCache(int) { RecordAccess::resetCache(type()); }

protected:
    /// Column index of a field.
    template <auto Member>
    static int columnOf()
    {
        const T* fresh = static_cast<const T*>(type().elements->fresh);
        return type().columnAt(reinterpret_cast<const std::byte*>(&(fresh->*Member)) -
                               reinterpret_cast<const std::byte*>(fresh));
    }
    template <auto Member>
    static int getWhere(long value, KorArray<T>& records)
    {
        static const int column = columnOf<Member>();
        return RecordAccess::readWhere(type(), column, value, &records);
    }
    template <auto Member>
    static int getFirstWhere(long value, T& record)
    {
        return getFirstWhere<Member, Member>(value, value, record);
    }
    template <auto First, auto Second>
    static int getFirstWhere(long first, long second, T& record)
    {
        static const int columns[] = {columnOf<First>(), columnOf<Second>()};
        return RecordAccess::readFirstWhere(type(), columns[0], first, columns[1], second, &record);
    }

    // Look-ups by anything, over the records as the host keeps them. The conditions must not read or write through
    // the service.

    /// Calls `act` for every record until it returns false; 0 when the table cannot be read.
    template <class Act>
    static int visit(Act act, RecordAccess::Sources sources = RecordAccess::Sources::Current)
    {
        const auto typed = [&](const void* record) { return act(*static_cast<const T*>(record)); };
        return RecordAccess::visit(type(), std::ref(typed), sources);
    }
    /// 1 when a record matches; `records` is replaced then.
    template <class Matches>
    static int recordsThat(Matches matches, KorArray<T>& records)
    {
        KorArray<T> found;
        const int result = visit([&](const T& record) {
            if (matches(record))
                found.append(record);
            return true;
        });
        if (result != 1 || found.isEmpty())
            return 0;
        records = std::move(found);
        return 1;
    }
    template <auto Member, class Value>
    static int recordsWith(const Value& value, KorArray<T>& records)
    {
        return recordsThat([&](const T& record) { return record.*Member == value; }, records);
    }
    /// The first one in table order.
    template <class Matches>
    static int recordThat(Matches matches, T& record,
                          RecordAccess::Sources sources = RecordAccess::Sources::Current)
    {
        int found = 0;
        visit(
            [&](const T& candidate) {
                if (!matches(candidate))
                    return true;
                record = candidate;
                found = 1;
                return false;
            },
            sources);
        return found;
    }
    template <auto Member, class Value>
    static int recordWith(const Value& value, T& record)
    {
        return recordThat([&](const T& candidate) { return candidate.*Member == value; }, record);
    }
    // Names are looked up in the source whose records they are compared with, in tables that it does not have
    // where these are kept.

    /// Calls `act` source by source, with each source requested, until it returns false. Inside a request that is
    /// the requested one alone.
    template <class Act>
    static void eachSource(Act act)
    {
        const bool requested = KorDSNManager::getInstance().isRequested();
        RecordAccess::eachSource(type(), requested ? RecordAccess::Sources::Current : RecordAccess::Sources::All,
                                 std::ref(act));
    }
    /// Calls `act` once, with the source requested that a read goes to; not when there is none.
    template <class Act>
    static void inCurrentSource(Act act)
    {
        const auto once = [&] {
            act();
            return false;
        };
        RecordAccess::eachSource(type(), RecordAccess::Sources::Current, std::ref(once));
    }
    /// The first record that matches in any source; `matchesHere` gives the condition for the requested source.
    template <class MatchesHere>
    static int recordThatInAllSources(MatchesHere matchesHere, T& record)
    {
        int found = 0;
        const auto read = [&] {
            found = recordThat(matchesHere(), record);
            return found != 1;
        };
        RecordAccess::eachSource(type(), RecordAccess::Sources::All, std::ref(read));
        return found;
    }
    /// Adds the run names of the Target rows that the matching records of the requested source refer to, in the
    /// order of that table; a name that is there already is left out.
    template <auto Member, class Target, class Matches>
    static void addNamesReferredTo(Matches matches, KorArray<KorString>& names)
    {
        KorArray<long> keys;
        visit([&](const T& record) {
            if (matches(record))
                keys.append(record.*Member);
            return true;
        });
        KorArray<KorString> found;
        if (!keys.isEmpty())
            RecordAccess::runNamesOfKeys(descriptionOf<Target>(), keys, found,
                                         RecordAccess::Sources::CurrentElseHome);
        addNames(found, names);
    }
    static void addNames(const KorArray<KorString>& found, KorArray<KorString>& names)
    {
        for (const KorString& name : found)
            if (std::find(names.begin(), names.end(), name) == names.end())
                names.append(name);
    }
    /// Takes over what was found; 0, and `names` as it was, when that is nothing.
    template <class V>
    static int foundAny(KorArray<V>& found, KorArray<V>& out)
    {
        if (found.isEmpty())
            return 0;
        out = std::move(found);
        return 1;
    }
    /// Key of the Target row with that run name; without one, a key that no record refers to.
    template <class Target>
    static int keyOf(const KorString& runName)
    {
        Target record;
        const int result = RecordAccess::readByRunName(descriptionOf<Target>(), runName, &record,
                                                       RecordAccess::Sources::CurrentElseHome);
        return result == 1 ? record.key : std::numeric_limits<int>::min();
    }
};

/// Reads of a record type that keeps its items in a table of their own.
template <class T>
struct ItemRecordMarshal : RecordMarshal<T> {
    static int getStructByKeyWithItems(const long& key, T& record)
    {
        return RecordMarshal<T>::getStructByKey(key, record);
    }
    static int getStructByRunNameWithItems(const KorString& runName, T& record)
    {
        return RecordMarshal<T>::getStructByRunName(runName, record);
    }
    /// Reads the items of one record, or with -1 of all, so that the reads that follow carry them.
    static int loadItems(const long&) { return RecordAccess::loadItems(RecordMarshal<T>::type()); }
};
