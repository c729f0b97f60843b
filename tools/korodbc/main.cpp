#include "CommandLine.h"

#include <algorithm>
#include <cctype>

namespace {

/// The commands for repositories, tables, detail styles and their maintenance.
class RepositoryCommands : public CommandLine {
public:
    RepositoryCommands()
    {
        addRepositoryCommands();
        addLookupCommands();
        addUnitCommands(*this);
        addGratingCommands(*this);
        addDetailCommands();
        addEditCommands();
        addMaintenance();
        addDemo();
        addExchangeCommands(*this);
        addProjectCommands(*this);
        addPrefixCommands(*this);
        addRuleCommands(*this);
        addPreferredCommands(*this);
    }

private:
    void addRepositoryCommands()
    {
        CLI::App* init = command("init", "Make a repository from the catalogue",
                                 "korodbc init work --country no=Norway", [this] { runInit(m_init); });
        init->add_option("FOLDER", m_init.folder, "New or empty folder")->required()->type_name("");
        init->add_option("--catalogue", m_init.catalogue,
                         "Folder of the catalogue (default: $KORODBC_CATALOGUE, else the shipped one)")
            ->type_name("DIR");
        init->add_option("--country", m_init.countries, "Install a country add-in; can be repeated")
            ->type_name("ID=NAME")
            ->expected(1)
            ->take_all();
        command("sources", "List the data sources and their databases", "korodbc sources",
                [this] { runSources(m_global); });
        CLI::App* tables = command("tables", "List the tables, with their rows and record types",
                                   "korodbc tables Details", [this] { runTables(m_global, m_source); });
        tables->add_option("SOURCE", m_source, "Data source (default: all)")->type_name("");
        CLI::App* show = command("show", "Print a table, or one row of it",
                                 "korodbc show DetObjReprMapsNew 1 --items\n  korodbc show Material --csv",
                                 [this] { showTable(); });
        show->add_option("TABLE", m_show.table, "Name of the table")->required()->type_name("");
        show->add_option("ROW", m_show.record, "Key or name of the row (default: all)")->type_name("");
        addSource(show, "Data source (default: the first that has the table)");
        show->add_flag("--items", m_show.items, "The items of the rows, too; with --csv only them");
        show->add_flag("--csv", m_csv, "As CSV with a heading");
        show->add_flag("--json", m_json, "As JSON, items included");
    }

    void addLookupCommands()
    {
        const char* const source = "Data source (default: the first that has the table)";
        CLI::App* list = command("list", "List the names of a table's rows, in their sort order if they have one",
                                 "korodbc list Standard", [this] {
                                     runList(m_global, {m_show.table, m_source});
                                 });
        list->add_option("TABLE", m_show.table, "Name of the table")->required()->type_name("");
        addSource(list, source);
        CLI::App* get =
            command("get", "Print one row of a table", "korodbc get Material S355J2\n  korodbc get Scale 3 --json",
                    [this] { showTable(); });
        get->add_option("TABLE", m_show.table, "Name of the table")->required()->type_name("");
        get->add_option("ROW", m_show.record, "Key or name of the row")->required()->type_name("");
        addSource(get, source);
        get->add_flag("--items", m_show.items, "The items of the row, too; with --csv only them");
        addFormats(get);
        CLI::App* find = command("find", "Print the rows of a table that meet all conditions",
                                 "korodbc find ScrewNew Diameter=16 \"MaximumLength>=100\"\n"
                                 "  korodbc find Material \"RunName~S355%\"",
                                 [this] {
                                     m_find.table = m_show.table;
                                     m_find.source = m_source;
                                     m_find.format = format();
                                     runFind(m_global, m_find);
                                 });
        find->add_option("TABLE", m_show.table, "Name of the table")->required()->type_name("");
        find->add_option("CONDITION", m_find.conditions,
                         "COLUMN=VALUE; also <> < <= > >=, and ~ for a pattern with % and _")
            ->required()
            ->type_name("");
        addSource(find, source);
        addFormats(find);
        CLI::App* section = command("section", "Print a section: class, behaviour, material, calculation values",
                                    "korodbc section HEA200\n  korodbc section HEA@HEA200",
                                    [this] { runSection(m_global, m_name, format()); });
        section->add_option("NAME", m_name, "Name of the section, or CLASS@NAME; in any case of letters")
            ->required()
            ->type_name("");
        addFormats(section);
        CLI::App* bolts = command("bolts", "Choose a bolt step by step: standard, diameter, strength and length",
                                  "korodbc bolts\n  korodbc bolts \"ISO 4014\"\n  korodbc bolts \"ISO 4014\" M16",
                                  [this] { runBolts(m_global, m_name, m_diameter); });
        bolts->add_option("STANDARD", m_name, "Standard (default: list them)")->type_name("");
        bolts->add_option("DIAMETER", m_diameter, "Diameter, M16 or 16 (default: list those of the standard)")
            ->type_name("");
        CLI::App* importing = command(
            "import-csv", "Make a user table from a CSV file, or fill it anew",
            "korodbc import-csv Beams_W sections_us_W_metric.csv --replace",
            [this] { runImportCsv(m_global, m_importCsv); }, Start::Write);
        importing->add_option("TABLE", m_importCsv.table, "Name of the table")->required()->type_name("");
        importing
            ->add_option("FILE", m_importCsv.file,
                         "CSV file in UTF-8 with a heading; the column Key is the key (default: rows are\n"
                         "numbered), the column RunName or name the name (default: the first column)")
            ->required()
            ->type_name("");
        importing->add_option("--source", m_importCsv.source, "Data source")
            ->type_name("SOURCE")
            ->capture_default_str();
        importing
            ->add_option("--separator", m_importCsv.separator,
                         "What separates cells: ',' ';' or tab (default: ',')")
            ->type_name("CHAR");
        importing->add_flag("--replace", m_importCsv.replace, "Replace the table when it exists");
    }

    void addDetailCommands()
    {
        listing("styles", "List the detail styles", runStyles);
        listing("processes", "List the detail processes, with their numbers of steps", runProcesses);
        listing("groups", "List the groups of annotations, qualifier sets and linear dimensions", runGroups);
        CLI::App* tree = command("tree", "Print a detail style or process and everything that it reaches",
                                 "korodbc tree \"Beam, single part\"\n"
                                 "  korodbc tree \"All workshop drawings\" --process",
                                 [this] {
                                     runTree(m_global, m_process ? Detail::Process : Detail::Style, m_name,
                                             sourceOr("Details"));
                                 });
        tree->add_option("NAME", m_name, "Name or key of the style")->required()->type_name("");
        tree->add_flag("--process", m_process, "NAME is a process: its steps, scales, style maps, styles");
        addSource(tree, "Data source (default: Details)");
        addTransfer(Detail::Style, "\"Beam, single part\"", "beam.db",
                    "Write a detail style, and everything that it refers to, into a file",
                    "Copy a detail style from a file into the repository, under new keys");
        addTransfer(Detail::Process, "\"All workshop drawings\"", "workshop.db",
                    "Write a detail process with its steps, style maps and styles into a file",
                    "Copy a detail process from a file into the repository, under new keys");
    }

    void listing(const char* name, const char* description,
                 void (*run)(const GlobalOptions&, const std::string&, Format))
    {
        CLI::App* list = command(name, description, (std::string("korodbc ") + name + " --source Addin").c_str(),
                                 [this, run] { run(m_global, sourceOr("Details"), format()); });
        addSource(list, "Data source (default: Details)");
        addFormats(list);
    }

    void addTransfer(Detail detail, const std::string& example, const std::string& file, const char* exportText,
                     const char* importText)
    {
        const DetailKind& kind = kindOf(detail);
        std::string upper = kind.shortNoun;
        std::transform(upper.begin(), upper.end(), upper.begin(),
                       [](unsigned char letter) { return static_cast<char>(std::toupper(letter)); });
        const std::string exportName = "export-" + kind.shortNoun, importName = "import-" + kind.shortNoun;
        CLI::App* exporting = command(
            exportName.c_str(), exportText, ("korodbc " + exportName + " " + example + " " + file).c_str(),
            [this, detail] {
                runExport(m_global, {detail, m_name, sourceOr("Details"), m_file, withStyles()});
            },
            Start::Write);
        exporting->add_option(upper, m_name, "Name or key of the " + kind.shortNoun)->required()->type_name("");
        exporting->add_option("FILE", m_file, "Detail database; made when it is missing")
            ->required()
            ->type_name("");
        addSource(exporting, ("Data source of the " + kind.shortNoun + " (default: Details)").c_str());
        CLI::App* importing = command(
            importName.c_str(), importText, ("korodbc " + importName + " " + file + " --into Addin").c_str(),
            [this, detail] {
                runImport(m_global, {detail, m_file, m_name, m_into, withStyles()});
            },
            Start::Write);
        importing->add_option("FILE", m_file, "Detail database, as " + exportName + " makes it")
            ->required()
            ->type_name("");
        importing
            ->add_option("--" + kind.shortNoun, m_name,
                         upper.substr(0, 1) + kind.shortNoun.substr(1) + " in the file (default: the only one)")
            ->type_name(upper);
        importing->add_option("--into", m_into, "Data source to import into")
            ->type_name("SOURCE")
            ->capture_default_str();
        if (detail == Detail::Style)
            return;
        for (CLI::App* moving : {exporting, importing}) {
            moving->add_flag("--with-styles", m_withStyles, "The styles that the style maps name, too (default)");
            moving->add_flag("--without-styles", m_withoutStyles,
                             "Only the process: the style maps keep the style keys of their source, which can\n"
                             "mean other styles elsewhere");
        }
    }

    void addMaintenance()
    {
        CLI::App* compact =
            command("compact", "Merge rows of detail tables whose values are equal",
                    "korodbc compact all --dry-run\n  korodbc compact all --backup\n\n"
                    "Every reference to a duplicate is redirected to the row that stays, then the duplicates are\n"
                    "deleted. A run that would leave references to deleted rows is refused; \"all\" leaves none.\n"
                    "The run is stored whole or not at all. With --backup the database is first copied to a file\n"
                    "beside it, as in details.db.backup-1, which \"korodbc restore\" brings back.",
                    [this] {
                        m_compact.source = sourceOr("Details");
                        m_compact.format = format();
                        m_global.start = m_compact.dryRun ? Start::Look : Start::Write;
                        runCompact(m_global, m_compact);
                    });
        compact
            ->add_option("WHAT", m_compact.what,
                         "styles, processes, all, or qualifier-sets, which are also numbered from 1")
            ->type_name("")
            ->capture_default_str();
        addSource(compact, "Details or Addin (default: Details)");
        compact->add_flag("--dry-run", m_compact.dryRun, "Say what would be done, change nothing");
        compact->add_flag("--keep", m_compact.keep, "Only redirect the references, delete nothing");
        compact->add_flag("--force", m_compact.force, "Also when references to deleted rows are left");
        compact->add_flag("--backup", m_compact.backup, "Keep a backup of the database beside it");
        addFormats(compact);
        CLI::App* restore = command(
            "restore", "Bring a backup back into a data source",
            "korodbc restore work/details.db.backup-1\n\n"
            "The database becomes what FILE holds, its log included. Its state before is first kept in a backup\n"
            "of its own beside it. While another program edits one of its tables nothing is done.",
            [this] {
                m_restore.source = sourceOr("Details");
                runRestore(m_global, m_restore);
            });
        restore->add_option("FILE", m_restore.file, "A backup, or another sound database of that kind")
            ->required()
            ->type_name("");
        addSource(restore, "Data source to bring it back into (default: Details)");
        CLI::App* shared =
            command("shared", "Print what refers to a row of a detail or project table",
                    "korodbc shared DetObjQualifierSet 1\n  korodbc shared DetViewRequest \"Beam, front\" --csv\n"
                    "  korodbc shared XMLData 1 --source Project",
                    [this] {
                        m_shared.source = sourceOr("Details");
                        m_shared.format = format();
                        runShared(m_global, m_shared);
                    });
        shared->add_option("TABLE", m_shared.table, "Detail or project table")->required()->type_name("");
        shared->add_option("ROW", m_shared.row, "Key or name of the row")->required()->type_name("");
        addSource(shared, "Data source (default: Details)");
        addFormats(shared);
        CLI::App* check =
            command("check", "Look for references that name rows which do not exist",
                    "korodbc check --source Addin", [this] { runCheck(m_global, m_source, format()); });
        addSource(check, "Data source (default: all with detail or project tables)");
        addFormats(check);
    }

    void addEditCommands()
    {
        CLI::App* edit = command(
            "edit", "Change one value under a copy of its table, then close the edit",
            "korodbc edit DetailStyle 1 TitleFormat \"%PartMark%\" --depth 1 --cancel\n"
            "  korodbc edit DetObjQualifierSet 1 ModelRole Column --item 2",
            [this] { editValue(); }, Start::Write);
        edit->add_option("TABLE", m_edit.table, "Detail table")->required()->type_name("");
        edit->add_option("KEY", m_edit.key, "Key of the row")->required()->type_name("");
        edit->add_option("COLUMN", m_edit.column, "Name of the column")->required()->type_name("");
        edit->add_option("VALUE", m_edit.value, "New value")->required()->type_name("");
        addSource(edit, "Data source (default: Details)");
        edit->add_option("--depth", m_edit.depth, "Depth of the edit: how deep it is nested in others, 0 to 3")
            ->type_name("N")
            ->check(CLI::Range(0, 3))
            ->capture_default_str();
        edit->add_option("--item", m_edit.item,
                         "Number of an item of the row, from 1: COLUMN is one of the table that holds its items")
            ->type_name("N")
            ->check(CLI::PositiveNumber);
        edit->add_flag("--force", m_edit.force,
                       "Also a name that another row has, a look-up value that does not exist, a numbered\n"
                       "column behind the items of the row");
        edit->add_flag("--ok", m_ok, "Keep the edit, drop the copy (default)")->group("Closing, one of");
        edit->add_flag("--cancel", m_cancel, "Bring the table back from the copy")->group("Closing, one of");
        edit->add_flag("--update", m_update, "Keep the edit so far, renew the copy, then close")
            ->group("Closing, one of");
        edit->add_flag("--leave-open", m_leaveOpen,
                       "Stop without closing: the next writing command recovers the table")
            ->group("Closing, one of");
        command("status", "Report data sources, edits left open and tables that differ; changes nothing",
                "korodbc status", [this] { runStatus(m_global); });
        CLI::App* recover = command(
            "recover", "Bring back the tables of edits that were left open", "korodbc recover",
            [this] { runRecover(m_global, m_discard); }, Start::Write);
        recover->add_flag("--discard", m_discard,
                          "Put copies that cannot be brought back aside; their tables stay as they are");
    }

    void addDemo()
    {
        CLI::App* demo =
            command("demo", "Show how a style and a process are transferred, in a new folder, step by step",
                    "korodbc demo /tmp/demo", [this] { runDemo(m_global, m_file, m_init.catalogue); });
        m_file = "demo";
        demo->add_option("FOLDER", m_file,
                         "New or empty folder, or that of an earlier demonstration (default: ./demo)")
            ->type_name("");
        demo->add_option("--catalogue", m_init.catalogue, "Folder of the catalogue, as for init")
            ->type_name("DIR");
    }

    bool withStyles() const
    {
        if (m_withStyles && m_withoutStyles)
            throw Failure{kUsage, "--with-styles and --without-styles exclude each other; give one of them"};
        return !m_withoutStyles;
    }

    void showTable()
    {
        m_show.source = m_source;
        m_show.format = format();
        runShow(m_global, m_show);
    }

    void editValue()
    {
        if (m_ok + m_cancel + m_update + m_leaveOpen > 1)
            throw Failure{kUsage,
                          "an edit is closed in one way; give one of --ok, --cancel, --update, --leave-open"};
        m_edit.source = sourceOr("Details");
        m_edit.closing = m_cancel      ? Closing::Cancel
                         : m_update    ? Closing::Update
                         : m_leaveOpen ? Closing::LeaveOpen
                                       : Closing::Ok;
        runEdit(m_global, m_edit);
    }

    InitOptions m_init;
    ShowOptions m_show;
    CompactOptions m_compact;
    RestoreOptions m_restore;
    SharedOptions m_shared;
    EditOptions m_edit;
    FindOptions m_find;
    ImportCsvOptions m_importCsv;
    std::string m_file, m_name, m_diameter, m_into = "Details";
    bool m_process = false, m_withStyles = false, m_withoutStyles = false;
    bool m_ok = false, m_cancel = false, m_update = false, m_leaveOpen = false, m_discard = false;
};

} // namespace

int main(int argc, char** argv)
{
    RepositoryCommands line;
    return line.run(argc, argv);
}
