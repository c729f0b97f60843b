#include "CommandLine.h"
#include "ProjectStore.h"
#include "Records.h"
#include "XmlCheck.h"

#include <korodbc/repository/KorDSNManager.h>

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iostream>

namespace fs = std::filesystem;

namespace {

struct ProjectOptions {
    std::string action = "list", which, database = "drawing";
    std::optional<std::string> newName, xmlFile, xmlOut;
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
    std::string name = children.kind->command;
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
using Facts = std::vector<std::pair<Sheet::Column, std::string>>;

Facts facts(const ProjectKind& kind, const ProjectDatabase& database, const void* record)
{
    Facts found;
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
    const fs::file_status itself = fs::symlink_status(file, status);
    const bool isOrdinary = !fs::exists(itself) || fs::is_regular_file(itself);
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

/// A line for each fact and each child.
void printRecord(const ProjectKind& kind, const ProjectDatabase& database, const void* record, const Facts& shown)
{
    Sheet sheet{{{"Property"}, {"Value"}}, {}};
    for (const auto& [column, value] : shown)
        sheet.rows.push_back({column.name, value});
    for (const ProjectChildren& child : childrenOf(kind))
        for (const std::string& name : childNames(child, database, kind.type().keyOf(record)))
            sheet.rows.push_back({child.kind->noun, name});
    printSheet(sheet, Format::Text);
}

/// The row that the list has of it, with the owner and the XML document.
void printRow(const ProjectKind& kind, const ProjectDatabase& database, const void* record, Facts shown,
              const std::string& xml, Format format)
{
    for (const ProjectChildren& child : childrenOf(kind))
        shown.push_back({{heading(child), true},
                         std::to_string(childNames(child, database, kind.type().keyOf(record)).size())});
    if (kind.xmlColumn() != nullptr)
        shown.push_back({{"XML"}, xml});
    Sheet sheet{{}, {{}}};
    for (const auto& [column, value] : shown) {
        sheet.columns.push_back(column);
        sheet.rows[0].push_back(value);
    }
    printSheet(sheet, format);
}

void runShow(const ProjectKind& kind, const ProjectDatabase& database, const ProjectOptions& options,
             Format format)
{
    const AnyRecord record(kind.type());
    requireRecord(kind, database, options.which, record.get());
    std::optional<std::string> xml;
    try {
        xml = xmlOf(kind, database, record.get());
    } catch (const Failure& failure) {
        if (options.xmlOut)
            throw;
        note(failure.message); // the record is shown without it
    }
    if (options.xmlOut) {
        if (!xml)
            throw Failure{kNotFound, described(kind, record.get()) + " has no XML document"};
        writeFile(*options.xmlOut, *xml);
        if (options.xmlOut == "-")
            return;
    }
    auto shown = facts(kind, database, record.get());
    if (const ColumnDescription* owner = kind.type().ownerColumn())
        shown.push_back({{"Owner"}, cellText(*owner, record.get())});
    const bool showsXml = xml && !options.xmlOut;
    format == Format::Text ? printRecord(kind, database, record.get(), shown)
                           : printRow(kind, database, record.get(), shown, showsXml ? *xml : "", format);
    if (format != Format::Text)
        return;
    if (showsXml) {
        std::printf("\n");
        writeFile("-", *xml);
        if (!xml->ends_with('\n'))
            std::printf("\n");
    }
    if (options.xmlOut)
        std::printf("\nThe XML document is in %s.\n", options.xmlOut->c_str());
}

std::string readXml(const std::string& file)
{
    std::error_code code;
    std::ifstream in;
    const bool isInput = file == "-";
    if (!isInput)
        in.open(file, std::ios::binary);
    if (!in || (!isInput && fs::is_directory(file, code)))
        throw Failure{kNotFound, "there is no file " + file + " to read"};
    std::string text(std::istreambuf_iterator<char>(isInput ? std::cin.rdbuf() : in.rdbuf()), {});
    if (const std::string why = whyNoXml(text); !why.empty())
        throw Failure{kUsage, (isInput ? "the standard input" : file) + " is no XML document: " + why};
    return text;
}

void runSave(const ProjectKind& kind, const ProjectDatabase& database, const ProjectOptions& options)
{
    ProjectChange change{options.which, options.newName, {}, {}};
    for (const ProjectKind::Field& field : kind.fields)
        if (const auto given = options.fields.find(field.option); given != options.fields.end())
            change.fields.emplace_back(&field, given->second);
    if (options.xmlFile)
        change.xml = readXml(*options.xmlFile);
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
    if (!saves && (!options.fields.empty() || options.newName || options.xmlFile))
        throw Failure{kUsage, "what is to be changed is given with save only; see: korodbc " +
                                  std::string(kind.command) + " --help"};
    if (action == "delete" && kind.remove == nullptr)
        throw Failure{kUsage, "a " + std::string(kind.noun) + " is kept for good; rename it with: korodbc " +
                                  kind.command + " save " + quote(options.which) + " --name NAME"};
    const Format format = line.format();
    if (writes)
        line.refuseFormats(std::string(kind.command) + " " + action);
    if (options.xmlOut == "-")
        line.refuseFormats("--xml-out -");
    line.goesWith("--xml-out", action == "show", "show");
    GlobalOptions global = line.global();
    global.start = writes ? Start::Write : Start::Look;
    const StartedSession session(global);
    const ProjectDatabase database = projectDatabase(options.database);
    const KorDSNRequest request(database.dsn, database.index);
    if (action == "list")
        runList(kind, database, format);
    else if (action == "show")
        runShow(kind, database, options, format);
    else if (saves)
        runSave(kind, database, options);
    else
        runDelete(kind, database, options);
}

std::string example(const ProjectKind& kind)
{
    const std::string command = std::string("korodbc ") + kind.command;
    if (kind.xmlColumn() == nullptr)
        return command + "\n  " + command + " show 1\n  " + command +
               (kind.remove != nullptr ? " delete 1 --database user" : " save New --database user");
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
        {"report-types", "Kinds of reports: list, show, save, delete"},
        {"report-categories", "Categories of report types: list, show, save"},
        {"update-settings", "When model extracts are updated: list, show, save"}};
    for (const ProjectKind& kind : projectKinds()) {
        const auto options = std::make_shared<ProjectOptions>();
        CLI::App* command = line.command(kind.command, texts.at(kind.command), example(kind).c_str(),
                                         [&line, &kind, options] { run(line, kind, *options); });
        command
            ->add_option("ACTION", options->action,
                         std::string("list (the standard), show") +
                             (kind.remove != nullptr ? ", save or delete" : " or save"))
            ->type_name("");
        command->add_option("NAME", options->which, "Key or name; save adds a new one under a new name")
            ->type_name("");
        command
            ->add_option("--database", options->database,
                         "drawing: of the current drawing (the standard); user: your own, and those shipped for "
                         "every user; advanced: advanced project data")
            ->type_name("DATABASE");
        // an empty text is given, too
        const auto addText = [command](const char* option, const std::string& help, const char* shown,
                                       const std::function<void(const std::string&)>& take) {
            command->add_option_function<std::string>(option, take, help)->type_name(shown);
        };
        addText("--name", "save: new name", "NAME",
                [options](const std::string& value) { options->newName = value; });
        for (const ProjectKind::Field& field : kind.fields)
            addText(field.option, std::string("save: ") + field.help, "TEXT",
                    [options, &field](const std::string& value) { options->fields[field.option] = value; });
        if (kind.xmlColumn() != nullptr) {
            addText("--xml", "save: file with the XML document; -: the standard input", "FILE",
                    [options](const std::string& value) { options->xmlFile = value; });
            addText("--xml-out", "show: write the XML document to a file; -: print it alone", "FILE",
                    [options](const std::string& value) { options->xmlOut = value; });
        }
        line.addFormats(command);
    }
}
