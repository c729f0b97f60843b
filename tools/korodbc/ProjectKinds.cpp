#include "ProjectKinds.h"

#include "Session.h"

#include <korodbc/project/KorODBCProject.h>
#include <korodbc/project/KorODBCProjectAdvance.h>
#include <korodbc/project/KorODBCProjectUser.h>

#include <algorithm>

namespace {

using Intern = KorODBCProjectIntern;
using Field = ProjectKind::Field;

template <class Record, class Marshal>
constexpr ProjectKind kind(const char* command, const char* noun, std::span<const Field> fields,
                           int (*remove)(const void* record, const ProjectDatabase& database))
{
    return {command,
            noun,
            descriptionOf<Record>,
            fields,
            [](long key, void* record) { return Marshal::getStructByKey(key, *static_cast<Record*>(record)); },
            [](const KorString& runName, void* record) {
                return Marshal::getStructByRunName(runName, *static_cast<Record*>(record));
            },
            [](void* records) { return Marshal::getTable(*static_cast<KorArray<Record>*>(records)); },
            [](void* record, const ProjectDatabase& database) {
                return Intern::save(*static_cast<Record*>(record), database.index, database.dsn);
            },
            remove,
            [](const void* record) { return static_cast<const Record*>(record)->dataSource; }};
}

template <class Record, int (*remove)(const Record&, eIndex, eDSN)>
int removed(const void* record, const ProjectDatabase& database)
{
    return remove(*static_cast<const Record*>(record), database.index, database.dsn);
}

constexpr Field description{"--description", "Description", "Description"};
constexpr Field templateFields[] = {{"--type", "ReportType", "Report type, by key or name"},
                                    {"--file", "FileName", "File of the template"},
                                    description};
constexpr Field reportFields[] = {
    {"--template", "Template", "Template, by key or name"},
    {"--extract", "ModelExtract", "Model extract, by key or name; none: the whole model"},
    {"--file", "FileName", "File of the report"},
    description};
constexpr Field selectionFields[] = {description};
constexpr Field applicationFields[] = {{"--selection", "ModelSelection", "Model selection, by key or name"},
                                       description};
constexpr Field extractFields[] = {
    {"--application", "ModelSelectionApplication", "Application of a selection, by key or name"},
    {"--update", "UpdateInfo", "When it is updated, by key or name of the update setting; or none"},
    {"--file", "FileName", "File of the extract"}};
constexpr Field typeFields[] = {{"--category", "Category", "Report category, by key or name"},
                                {"--extension", "FileExtension", "Extension of the files"}};

using Template = StructProjTemplate;
using Report = StructProjReport;
using Selection = StructProjModelSelection;
using Application = StructProjModelSelectionApplication;
using Extract = StructProjModelExtract;
using Type = StructProjReportType;

constexpr ProjectKind kinds[] = {
    kind<Template, StructProjTemplateMarshal>("templates", "template", templateFields,
                                              removed<Template, Intern::deleteTemplate>),
    kind<Report, StructProjReportMarshal>("reports", "report", reportFields,
                                          removed<Report, Intern::deleteReport>),
    kind<Selection, StructProjModelSelectionMarshal>("selections", "selection", selectionFields,
                                                     removed<Selection, Intern::deleteModelSelection>),
    kind<Application, StructProjModelSelectionApplicationMarshal>(
        "applications", "application", applicationFields,
        removed<Application, Intern::deleteModelSelectionApplication>),
    kind<Extract, StructProjModelExtractMarshal>("extracts", "extract", extractFields,
                                                 removed<Extract, Intern::deleteModelExtract>),
    kind<Type, StructProjReportTypeMarshal>("report-types", "report type", typeFields,
                                            removed<Type, Intern::deleteReportType>),
    kind<StructProjReportCategory, StructProjReportCategoryMarshal>("report-categories", "report category", {},
                                                                    nullptr),
    kind<StructProjModelExtractUpdateInfo, StructProjModelExtractUpdateInfoMarshal>("update-settings",
                                                                                    "update setting", {}, nullptr),
};

} // namespace

ProjectDatabase projectDatabase(const std::string& name)
{
    const ProjectDatabase databases[] = {
        {"drawing", "the drawing's project data", KorODBCProject::dsn(), KorODBCProject::index()},
        {"user", "the user's project data", KorODBCProjectUser::dsn(), KorODBCProjectUser::index()},
        {"advanced", "the advanced project data", KorODBCProjectAdvance::dsn(), KorODBCProjectAdvance::index()}};
    std::vector<std::string> names;
    for (const ProjectDatabase& database : databases) {
        if (sameName(database.name, name))
            return database;
        names.emplace_back(database.name);
    }
    throw Failure{kUsage, "there is no database " + quote(name) + nearest(name, names) +
                              "; give --database drawing, user or advanced"};
}

const ColumnDescription* ProjectKind::xmlColumn() const
{
    for (const ColumnDescription& column : type().columns)
        if (column.link != LinkKind::None && kindOf(column.target()) == nullptr)
            return &column;
    return nullptr;
}

const ColumnDescription& ProjectKind::column(const Field& field) const
{
    const auto columns = type().columns;
    return *std::find_if(columns.begin(), columns.end(),
                         [&](const ColumnDescription& known) { return known.name == field.column; });
}

std::span<const ProjectKind> projectKinds() { return kinds; }

const ProjectKind* kindOf(const RecordDescription& type)
{
    for (const ProjectKind& known : kinds)
        if (&known.type() == &type)
            return &known;
    return nullptr;
}

std::vector<ProjectChildren> childrenOf(const ProjectKind& kind)
{
    std::vector<ProjectChildren> children;
    for (const ProjectKind& other : kinds)
        for (const ColumnDescription& column : other.type().columns)
            if (column.link != LinkKind::None && &column.target() == &kind.type())
                children.push_back({&other, &column});
    return children;
}
