#pragma once

#include "ProjectKinds.h"

#include <korodbc/project/KorODBCProjectIntern.h>
#include <korodbc/records/AnyRecord.h>

#include <functional>
#include <map>
#include <optional>
#include <utility>

// Project records of one database, which is requested meanwhile. In the user's database these are the own ones
// and, where there is no own one with the same key, those that are shipped. Failures are thrown.

/// Shows every record, in table order.
void eachRecord(const ProjectKind& kind, const ProjectDatabase& database,
                const std::function<void(const void* record)>& act);
/// Reads a record by its key or name, if need be without regard to case; false when there is none.
bool findRecord(const ProjectKind& kind, const ProjectDatabase& database, const std::string& keyOrName,
                void* record);
/// The same; throws, with the nearest names, when there is none.
void requireRecord(const ProjectKind& kind, const ProjectDatabase& database, const std::string& keyOrName,
                   void* record);
/// Name of the record with that key; the key when there is none.
std::string nameOf(const ProjectKind& kind, int key);
/// template "Bolt list"
std::string described(const ProjectKind& kind, const void* record);
/// The XML document of a record.
std::optional<std::string> xmlOf(const ProjectKind& kind, const ProjectDatabase& database, const void* record);

/// Number of children by key of the parent.
std::map<int, int> childCounts(const ProjectChildren& children, const ProjectDatabase& database);
/// Names of the children; `ownOnly`: without those that are shipped, which a shipped parent stays for.
std::vector<std::string> childNames(const ProjectChildren& children, const ProjectDatabase& database, int parent,
                                    bool ownOnly = false);

struct ProjectChange {
    std::string which; // key or name; a name that there is none of adds a record
    std::optional<std::string> newName;
    std::vector<std::pair<const ProjectKind::Field*, std::string>> fields;
    std::optional<std::string> xml;
};
struct ProjectStored {
    bool isNew;
    int key;
    std::string name;
};
/// Stores a new or changed record, its document and, in the user's database, what it refers to. All or nothing.
ProjectStored storeRecord(const ProjectKind& kind, const ProjectDatabase& database, const ProjectChange& change);
/// Deletes a record that nothing refers to; the text says which. All or nothing.
std::string deleteRecord(const ProjectKind& kind, const ProjectDatabase& database, const std::string& which);
