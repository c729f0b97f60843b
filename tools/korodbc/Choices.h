#pragma once

#include "Records.h"

#include <korodbc/repository/RecordMarshal.h>

#include <map>
#include <span>
#include <string>
#include <vector>

/// A choice by its name or number.
struct Named {
    int key;
    std::string name;
};

/// The one that the user names, by name in any case of letters or by number. Throws when there is none; `remedy`
/// ends the line.
Named chosen(std::span<const Named> all, const std::string& wanted, const std::string& thing,
             const std::string& remedy);
/// Name of a data source and slot as the user knows it.
std::string sourceName(eDSN dsn, eIndex index);
/// Throws when the database of the source cannot be used, or has the table of the type but it cannot be read: what
/// it holds would not be seen.
void requireSound(const RecordDescription& type, eDSN dsn, eIndex index);

/// Stores the flags "Selected" of rows of the add-in, by key; false when that fails. Throws without such a column.
bool storeSelected(const RecordDescription& type, const std::map<int, bool>& selected);

/// The rows of a table of names in the requested source.
template <class T>
std::vector<Named> namedRows()
{
    requireReadable(descriptionOf<T>());
    KorArray<T> records;
    RecordMarshal<T>::getTable(records);
    std::vector<Named> all;
    for (const T& record : records)
        all.push_back({record.key, record.runName.toUtf8()});
    return all;
}

template <class T>
Named rowNamed(const std::string& wanted, const std::string& thing)
{
    return chosen(namedRows<T>(), wanted, thing,
                  "list them with: korodbc list " + std::string(descriptionOf<T>().table));
}

/// Name of the row with that key, or the key itself.
template <class T>
std::string nameOrKey(int key)
{
    const std::string name = runNameOf(descriptionOf<T>(), key);
    return name.empty() ? std::to_string(key) : name;
}
