#pragma once

#include <korodbc/records/RecordDescription.h>
#include <korodbc/repository/KorDSNDefinitions.h>

#include <span>
#include <string>
#include <vector>

/// A database with project records, as the user names it.
struct ProjectDatabase {
    const char* name; // "drawing"
    const char* text; // "the drawing's project data"
    eDSN dsn;
    eIndex index;
};
/// Throws when there is none of that name.
ProjectDatabase projectDatabase(const std::string& name);

/// A kind of project record: what the commands do with it.
struct ProjectKind {
    struct Field {
        const char* option; // "--type"
        const char* column; // "ReportType"
        const char* help;
    };
    const char* command; // "templates"
    const char* noun;    // "template"
    const RecordDescription& (*type)();
    std::span<const Field> fields; // that the user gives
    int (*read)(long key, void* record);
    int (*readByName)(const KorString& runName, void* record);
    int (*readAll)(void* records); // a KorArray
    int (*save)(void* record, const ProjectDatabase& database);
    int (*remove)(const void* record, const ProjectDatabase& database); // nullptr: never deleted
    eDSN (*source)(const void* record);                                 // where it was read

    /// The column that names the XML document; nullptr without.
    const ColumnDescription* xmlColumn() const;
    const ColumnDescription& column(const Field& field) const;
};

std::span<const ProjectKind> projectKinds();
/// The kind that is kept in the table of a type; nullptr for XML documents.
const ProjectKind* kindOf(const RecordDescription& type);

/// A kind whose records refer to those of another.
struct ProjectChildren {
    const ProjectKind* kind;
    const ColumnDescription* column;
};
std::vector<ProjectChildren> childrenOf(const ProjectKind& kind);
