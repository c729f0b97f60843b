#pragma once

#include <korodbc/repository/RecordMarshal.h>

/// Reads of the project records. A record that the user's project data (kAddin) do not have is read where it is
/// shipped, in the main configuration; lists, tables and children are those of the requested source alone. Every
/// record carries the data source that it was read from.
template <class T>
struct ProjectMarshal : RecordMarshal<T> {
    static int getStructByKey(const long& key, T& record)
    {
        return readOne([&](T& found) { return RecordMarshal<T>::getStructByKey(key, found); }, record);
    }
    static int getStructByKey(const KorString& key, T& record)
    {
        return readOne([&](T& found) { return RecordMarshal<T>::getStructByKey(key, found); }, record);
    }
    static int getStructByRunName(const KorString& runName, T& record)
    {
        return readOne([&](T& found) { return RecordMarshal<T>::getStructByRunName(runName, found); }, record);
    }
    static int getTable(KorArray<T>& records)
    {
        return readMany(
            [](KorArray<T>& found) {
                return RecordMarshal<T>::visit([&](const T& record) {
                    found.append(record);
                    return true;
                });
            },
            records);
    }

protected:
    /// The records whose field holds that key, in table order; 1 also when there are none, 0 when they cannot be
    /// told.
    template <auto Parent>
    static int getChildren(long key, KorArray<T>& records)
    {
        return readMany(
            [key](KorArray<T>& found) {
                return RecordMarshal<T>::template getWhere<Parent>(key, found) < 0 ? 0 : 1;
            },
            records);
    }

private:
    static eDSN source() { return KorDSNManager::getInstance().getCurrentDSN(); }

    template <class Read>
    static int readOne(Read read, T& record)
    {
        eDSN from = source();
        int found = 0;
        RecordMarshal<T>::inCurrentSource([&] {
            from = source();
            found = read(record);
        });
        if (found != 1 && from == KorDSNDefinitions::kAddin) {
            const KorDSNRequest shipped(KorDSNDefinitions::kConfiguration, KorDSNDefinitions::kBase);
            from = source();
            found = read(record);
        }
        if (found == 1)
            record.dataSource = from;
        return found;
    }
    template <class Read>
    static int readMany(Read read, KorArray<T>& records)
    {
        KorArray<T> found;
        int result = 0;
        RecordMarshal<T>::inCurrentSource([&] {
            result = read(found);
            for (T& record : found)
                record.dataSource = source();
        });
        if (result == 1)
            records = std::move(found);
        return result;
    }
};
