#include "CommandLine.h"
#include "ProjectStore.h"
#include "Records.h"
#include "repository/KorDSNManager.h"
#include "XmlCheck.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <filesystem>
#include <fstream>

namespace fs = std::filesystem;

namespace {

struct ProjectOptions {
    std::string action = "list", which, database = "drawing", newName, xmlFile, xmlOut;
    std::map<std::string, std::string> fields; // by option
};

std::string heading(const ProjectKind::Field& field)
{
    std::string name = std::string(field.option).substr(2);
    name[0] = static_cast<char>(std::toupper(name[0]));
    return name;
}

std::string heading(const ProjectChildren& children)
{
    std::string name = *children.kind->command != '\0' ? children.kind->command : children.kind->noun;
    name[0] = static_cast<char>(std::toupper(name[0]));
    return name;
}

std::string fieldText(const ColumnDescription& column, const void* record)
{
    if (column.link == LinkKind::None)
        return cellText(column, record);
    return column.isNone(column.integer(record)) ? "" : nameOf(*kindOf(column.target()), column.integer(record));
}

/// What a list and a single record say of it: heading and value.
std::vector<std::pair<Sheet::Column, std::string>> facts(const ProjectKind& kind, const ProjectDatabase& database,
                                                         const void* record)
{
    std::vector<std::pair<Sheet::Column, std::string>> found;
    found.push_back({{"Key", true}, keyText(kind.type(), record)});
    found.push_back({{"Name"}, cellText(*kind.type().runNameColumn(), record)});
    for (const ProjectKind::Field& field : kind.fields)
        found.push_back({{heading(field)}, fieldText(kind.column(field), record)});
    if (&kind.type() == &descriptionOf<StructProjTemplate>()) {
        const auto& made = *static_cast<const StructProjTemplate*>(record);
        StructProjReportType type;
        const bool known = StructProjReportTypeMarshal::getStructByKey(made.reportType, type) == 1;
        found.push_back({{"Category"},
                         known ? nameOf(*kindOf(descriptionOf<StructProjReportCategory>()), type.category) : ""});
        const bool isDrawing = KorODBCProjectIntern::isDrawingTemplate(made, database.index, database.dsn);
        found.push_back({{"Drawing"}, isDrawing ? "yes" : "no"});
    }
    if (database.dsn == KorDSNDefinitions::kAddin)
        found.push_back({{"Kept by"}, kind.source(record) == database.dsn ? "user" : "shipped"});
    return found;
}

void runList(const ProjectKind& kind, const ProjectDatabase& database, Format format)
{
    const std::vector<ProjectChildren> children = childrenOf(kind);
    std::vector<std::map<int, int>> counts;
    for (const ProjectChildren& child : children)
        counts.push_back(childCounts(child, database));
    Sheet sheet;
    const AnyRecord none(kind.type()); // for the headings
    for (const auto& [column, value] : facts(kind, database, none.get()))
        sheet.columns.push_back(column);
    for (const ProjectChildren& child : children)
        sheet.columns.push_back({heading(child), true});
    eachRecord(kind, database, [&](const void* record) {
        std::vector<std::string> row;
        for (const auto& [column, value] : facts(kind, database, record))
            row.push_back(value);
        for (std::map<int, int>& count : counts)
            row.push_back(std::to_string(count[kind.type().keyOf(record)]));
        sheet.rows.push_back(row);
    });
    if (sheet.rows.empty() && format == Format::Text)
        std::printf("There are no %s in %s.\n", kind.command, database.text);
    else
        printSheet(sheet, format);
}

void writeFile(const std::string& file, const std::string& text)
{
    if (file == "-") {
        std::fwrite(text.data(), 1, text.size(), stdout);
        return;
    }
    // beside the old file first, which stays when there is no room for the new one
    std::error_code status;
    const bool isOrdinary = !fs::exists(file, status) || fs::is_regular_file(fs::symlink_status(file, status));
    const std::string fresh = isOrdinary ? file + ".new" : file;
    std::ofstream out(fresh, std::ios::binary | std::ios::trunc);
    out.write(text.data(), static_cast<std::streamsize>(text.size()));
    out.close();
    std::error_code code;
    if (out && isOrdinary)
        fs::rename(fresh, file, code);
    if (out && !code)
        return;
    std::error_code ignored;
    if (isOrdinary)
        fs::remove(fresh, ignored);
    throw Failure{kFailed, "the file " + file + " cannot be written" + (code ? ": " + code.message() : "") +
                               "; look whether its folder exists and is yours to write"};
}

void runShow(const ProjectKind& kind, const ProjectDatabase& database, const ProjectOptions& options,
             Format format)
{
    const AnyRecord record(kind.type());
    requireRecord(kind, database, options.which, record.get());
    const std::optional<std::string> xml = xmlOf(kind, database, record.get());
    if (!options.xmlOut.empty()) {
        if (!xml)
            throw Failure{kNotFound, described(kind, record.get()) + " has no XML document"};
        writeFile(options.xmlOut, *xml);
        if (options.xmlOut == "-")
            return;
    }
    Sheet sheet{{{"Property"}, {"Value"}}, {}};
    for (const auto& [column, value] : facts(kind, database, record.get()))
        sheet.rows.push_back({column.name, value});
    sheet.rows.push_back({"Owner", cellText(*kind.type().ownerColumn(), record.get())});
    for (const ProjectChildren& child : childrenOf(kind))
        for (const std::string& name : childNames(child, database, kind.type().keyOf(record.get())))
            sheet.rows.push_back({child.kind->noun, name});
    const bool showsXml = xml && options.xmlOut.empty();
    if (showsXml && format != Format::Text)
        sheet.rows.push_back({"XML", *xml});
    printSheet(sheet, format);
    if (showsXml && format == Format::Text) {
        std::printf("\n");
        writeFile("-", *xml);
        if (!xml->ends_with('\n'))
            std::printf("\n");
    }
    if (!options.xmlOut.empty() && format == Format::Text)
        std::printf("\nThe XML document is in %s.\n", options.xmlOut.c_str());
}

std::string readXml(const std::string& file)
{
    std::error_code code;
    std::ifstream in(file, std::ios::binary);
    if (!in || fs::is_directory(file, code))
        throw Failure{kNotFound, "there is no file " + file + " to read"};
    std::string text((std::istreambuf_iterator<char>(in)), {});
    if (const std::string why = whyNoXml(text); !why.empty())
        throw Failure{kUsage, file + " is no XML document: " + why};
    return text;
}

void runSave(const ProjectKind& kind, const ProjectDatabase& database, const ProjectOptions& options)
{
    ProjectChange change{options.which, options.newName, {}, {}};
    for (const ProjectKind::Field& field : kind.fields)
        if (const auto given = options.fields.find(field.option); given != options.fields.end())
            change.fields.emplace_back(&field, given->second);
    if (!options.xmlFile.empty())
        change.xml = readXml(options.xmlFile);
    const ProjectStored stored = storeRecord(kind, database, change);
    std::printf("%s %s %s (key %d) in %s%s.\n", stored.isNew ? "Added" : "Changed", kind.noun,
                quote(stored.name).c_str(), stored.key, database.text,
                change.xml
                    ? (", with " + counted(static_cast<long>(change.xml->size()), "byte") + " of XML").c_str()
                    : "");
}

void runDelete(const ProjectKind& kind, const ProjectDatabase& database, const ProjectOptions& options)
{
    const std::string deleted = deleteRecord(kind, database, options.which);
    std::printf("Deleted %s from %s.\n", deleted.c_str(), database.text);
}

void run(CommandLine& line, const ProjectKind& kind, const ProjectOptions& options)
{
    const std::vector<std::string> actions = {"list", "show", "save", "delete"};
    const std::string& action = options.action;
    if (std::find(actions.begin(), actions.end(), action) == actions.end())
        throw Failure{kUsage, "there is no action " + quote(action) + nearest(action, actions) +
                                  "; give list, show, save or delete, and then the " + kind.noun};
    const bool saves = action == "save", writes = saves || action == "delete";
    if (options.which.empty() == (action != "list"))
        throw Failure{kUsage, action == "list" ? "list takes no name; print one with: korodbc " +
                                                     std::string(kind.command) + " show " + quote(options.which)
                                               : "name the " + std::string(kind.noun) + ": korodbc " +
                                                     kind.command + " " + action + " NAME"};
    if (!saves && (!options.fields.empty() || !options.newName.empty() || !options.xmlFile.empty()))
        throw Failure{kUsage, "what is to be changed is given with save only; see: korodbc " +
                                  std::string(kind.command) + " --help"};
    if (action != "show" && !options.xmlOut.empty())
        throw Failure{kUsage, "--xml-out goes with show only"};
    GlobalOptions global = line.global();
    global.start = writes ? Start::Write : Start::Look;
    const StartedSession session(global);
    const ProjectDatabase database = projectDatabase(options.database);
    const KorDSNRequest request(database.dsn, database.index);
    if (action == "list")
        runList(kind, database, line.format());
    else if (action == "show")
        runShow(kind, database, options, line.format());
    else if (saves)
        runSave(kind, database, options);
    else
        runDelete(kind, database, options);
}

std::string example(const ProjectKind& kind)
{
    const std::string command = std::string("korodbc ") + kind.command;
    if (kind.xmlColumn() == nullptr)
        return command + "\n  " + command + " show 1\n  " + command + " delete 1 --database user";
    return command + " --database user\n  " + command + " show 1 --xml-out document.xml\n  " + command +
           " save 1 --xml document.xml";
}

} // namespace

void addProjectCommands(CommandLine& line)
{
    static const std::map<std::string, const char*> texts = {
        {"templates", "Report templates: list, show, save, delete"},
        {"reports", "Reports made from templates: list, show, save, delete"},
        {"selections", "Selections of the model: list, show, save, delete"},
        {"applications", "Applications of model selections: list, show, save, delete"},
        {"extracts", "Model extracts that applications gave: list, show, save, delete"},
        {"report-types", "Kinds of reports: list, show, save, delete"}};
    for (const ProjectKind& kind : projectKinds()) {
        if (*kind.command == '\0')
            continue;
        const auto options = std::make_shared<ProjectOptions>();
        CLI::App* command = line.command(kind.command, texts.at(kind.command), example(kind).c_str(),
                                         [&line, &kind, options] { run(line, kind, *options); });
        command->add_option("ACTION", options->action, "list (the standard), show, save or delete")->type_name("");
        command->add_option("NAME", options->which, "Key or name; save adds a new one under a new name")
            ->type_name("");
        command
            ->add_option("--database", options->database,
                         "drawing: of the current drawing (the standard); user: your own, and those shipped for "
                         "every user; advanced: advanced project data")
            ->type_name("DATABASE");
        command->add_option("--name", options->newName, "save: new name")->type_name("NAME");
        for (const ProjectKind::Field& field : kind.fields)
            command
                ->add_option_function<std::string>(
                    field.option,
                    [options, &field](const std::string& value) { options->fields[field.option] = value; },
                    std::string("save: ") + field.help)
                ->type_name("TEXT");
        if (kind.xmlColumn() != nullptr) {
            command->add_option("--xml", options->xmlFile, "save: file with the XML document")->type_name("FILE");
            command
                ->add_option("--xml-out", options->xmlOut,
                             "show: write the XML document to a file; -: print it alone")
                ->type_name("FILE");
        }
        line.addFormats(command);
    }
}
