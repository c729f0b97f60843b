#include "tools/CommandLine.h"

#include <functional>
#include <vector>

TEST_F(CommandLine, BadInputIsRefusedInOneLineAndChangesNothing)
{
    write(m_folder / "text.db", "Key,RunName\n1,a text file that is long enough to be taken for something else\n");
    write(m_folder / "empty.db", "");
    for (const char* file : {"old.db", "partial.db", "damaged.db", "nostyle.db", "dangling.db"})
        fs::copy_file(m_folder / "one.db", m_folder / file);
    sql(m_folder / "old.db", "DROP TABLE DetViewDimStrategyItems");
    sql(m_folder / "partial.db", "DROP TABLE DetHatchSettings");
    sql(m_folder / "nostyle.db", "DELETE FROM DetailStyle");
    sql(m_folder / "dangling.db", "DELETE FROM DetViewRequest");
    damage(m_folder / "damaged.db");
    fs::create_directory(m_folder / "folder.db");
    expectRefused({
        {"", 2, "korodbc --help"},
        {"frobnicate", 2, "there is no command \"frobnicate\"; see: korodbc --help"},
        {"-r work stiles", 2, "no command \"stiles\" .did you mean \"styles\""},
        {"show", 2, "TABLE is required"},
        {"show Material --csv --json", 2, "--csv and --json"},
        {"edit DetailStyle 1 TitleFormat x --depth 4", 2, "--depth"},
        {"init work", 1, "is not empty"},
        {"init fresh --catalogue nowhere", 1, "no catalogue folder nowhere"},
        {"init fresh --country Norway", 2, "--country ID=NAME"},
        {"init fresh --country ../no=Norway", 2, "letters and digits"},
        {"tables Detail", 4, "did you mean \"Details\""},
        {"show Matrial", 4, "did you mean \"Material\".*korodbc tables"},
        {"show Material --source Details", 4, "no table \"Material\" in data source Details"},
        {"show Material 999", 4, "no row with the key or name \"999\""},
        {"show Material --items", 2, "no items"},
        {"tree 'Beam, singel part'", 4, "no detail style .*did you mean \"Beam, single part\""},
        {"export-style Nothing new.db", 4, "no detail style \"Nothing\".*korodbc styles"},
        {"export-style 1 folder.db", 1, "folder.db is a folder"},
        {"export-style 1 nowhere/new.db", 1, "no folder .*nowhere"},
        {"export-style 1 text.db", 1, "text.db is no detail database"},
        {"export-style 1 old.db", 1, "older than version 5.1: table DetViewDimStrategyItems"},
        {"export-style 1 work/details.db", 1, "data source Details itself"},
        {"export-style 1 new.db --source Toolbars", 2, "Details or Addin"},
        {"import-style nowhere.db", 1, "no file nowhere.db"},
        {"import-style text.db", 1, "text.db is no detail database"},
        {"import-style partial.db", 1, "DetHatchSettings is missing"},
        {"import-style damaged.db", 1, "damaged.db is damaged"},
        {"import-style nostyle.db", 4, "holds no detail style"},
        {"import-style dangling.db", 1,
         "was not imported: Failed to load dependencies for detail style with key 1"},
        {"import-style two.db", 2, "2 styles.*--style: \"Beam, single part\""},
        {"import-style two.db --style Nothing", 4, "no detail style \"Nothing\""},
        {"import-style one.db --into Configuration", 2, "import into Details"},
        {"edit Material 1 Density 1", 2, "no detail table"},
        {"edit DetObjReprMapItems 1 LineType 1", 2, "items of another table"},
        {"edit DetObjReprMapItems 1 LineType 2 --item 99", 4, "has 3 items and no item 99"},
        {"edit DetObjReprMapItems 1 LineType 999 --item 1", 4, "no row with the key 999 in Linetypes"},
        {"edit DetObjReprMapItems 1 Order 7 --item 1", 2, "tells which item it is"},
        {"edit DetailStyle 1 Request1 2 --item 1", 2, "no items in a table of their own"},
        {"edit NecessaryViewsConfiguration 1 DetObjQualifierSet 999", 4, "no row with the key 999"},
        {"edit NecessaryViewsConfiguration 1 Rule 2 --leave-open", 2, "no copies are taken"},
        {"edit DetailStyle one TitleFormat x", 2, "key \"one\" is no number"},
        {"edit DetailStyle 99 TitleFormat x", 4, "no row with the key 99"},
        {"edit DetailStyle 1 TitelFormat x", 4, "did you mean \"TitleFormat\""},
        {"edit DetailStyle 2 Request2 1", 2, "has 1 item and no item 2, .*--force"},
        {"edit DetailStyle 2 RunName 'Beam, single part'", 2, "key 1 has the name .* already; .*--force"},
        {"edit DetViewSystemAndBox 1 SystemSource 99", 4,
         "no row with the key 99 in DetViewSystemSource.*--force"},
        {"edit DetailStyle 1 Request1 999 --force", 4, "no row with the key 999 in DetViewRequest"},
        {"restore damaged.db", 1, "damaged.db is damaged"},
        {"restore one.db", 1, "no backup of data source Details: table [A-Za-z]* is missing"},
        {"restore one.db --source Rules", 1, "no backup of data source Rules"},
        {"edit DetailStyle 1 Key 5", 2, "key of a row stays"},
        {"edit DetailStyle 1 TitlePosition left", 2, "\"left\" is no whole number"},
        {"edit DetViewRequest 1 ScaleFactor 1,5", 2, "\"1,5\" is no number"},
    });
}

TEST_F(CommandLine, ABadRepositoryIsRefusedInOneLineAndStaysAsItIs)
{
    const fs::path manifest = m_folder / "work/repository.toml", details = m_folder / "work/details.db";
    const std::string good = contents(manifest);
    const auto withManifest = [&](const std::string& text) { return [=] { write(manifest, text); }; };
    const struct {
        std::function<void()> spoil;
        std::string arguments;
        int code;
        std::string error;
    } cases[] = {
        {[] {}, "-r nowhere styles", 3, "no repository in nowhere .*korodbc init nowhere"},
        {[&] { fs::create_directory(m_folder / "bare"); }, "-r bare status", 3, "repository.toml is missing"},
        {withManifest("version = \n"), "styles", 3, "repository.toml line 1"},
        {withManifest("version = 1\n[source]\n"), "styles", 3, "line 2.*\"source\" is not understood"},
        {withManifest("version = 1\nbusy-milliseconds = \"long\"\n"), "styles", 3, "line 2.*busy"},
        {withManifest("version = 2\n"), "styles", 3, "version"},
        {withManifest("version = 1\n[sources]\nDetails = \"\xFF\"\n"), "styles", 3, "line 3: it is no UTF-8"},
        {withManifest("version = 1\n[sources]\nDetials = \"sqlite:details.db\"\n"), "styles", 3,
         "line 3.*Detials"},
        {withManifest("version = 1\n[sources]\nDetails = \"details.db\"\n"), "styles", 3,
         "\"sqlite:\" and a file name"},
        {withManifest("version = 1\n[[country-addin]]\nid = \"no\"\n"), "styles", 3,
         "needs an id and a connection"},
        {[&] { fs::remove(details); }, "check", 3, "details.db: the file is missing"},
        {withManifest("version = 1\n[sources]\nDetails = \"sqlite-readonly:details.db\"\n"), "restore one.db", 1,
         "Details is only read"},
        {[&] { fs::remove(details); }, "styles", 3,
         "details.db: the file is missing; correct [^\n]*korodbc restore"},
        {[&] { write(details, std::string(5000, 'x')); }, "styles", 3, "details.db: file is not a database"},
        {[&] { damage(details); }, "styles", 3,
         "details.db: database disk image is malformed; .*korodbc restore FILE"},
        {[&] { damageTable(details, "DetObjReprMapItems"); }, "export-style 1 new.db", 1, "details.db is damaged"},
        {[&] { sql(details, "DROP TABLE DetObjQualifierSetItem"); }, "edit DetObjQualifierSet 1 RunName x", 1,
         "there is no table DetObjQualifierSetItem, which holds the items of DetObjQualifierSet"},
        {[&] { damageTable(details, "DetailStyle"); }, "edit DetailStyle 1 TitleFormat x", 1,
         "DetailStyle cannot be read: .*malformed"},
        {[&] { damageTable(details, "DetObjReprMapItems"); }, "import-style one.db", 1, "details.db is damaged"},
    };
    for (const auto& entry : cases) {
        SetUp();
        write(manifest, good);
        entry.spoil();
        expectRefused(entry.arguments, entry.code, entry.error);
    }
    SetUp();
    write(m_folder / "work/toolbars.db", std::string(5000, 'x'));
    const Outcome sources = run("sources");
    EXPECT_TRUE(matches(sources.out, "Toolbars .*cannot be used"));
    EXPECT_EQ(sources.code, 3);
}

TEST_F(CommandLine, PrintsWhatIsAskedFor)
{
    expectPrinted({
        {"--version", "^korodbc [0-9.]+\\n$"},
        {"--help", "Exit codes:"},
        {"sources", "\\n 1  Details +0 +[0-9]+  sqlite:details.db +ok\\n"},
        {"sources", "CountryAddin Norway"},
        {"tables Details", "\\nDetails  DetailStyle +19  StructDetailStyle\\n"},
        {"show detailstyle 'Plate, single part'", "\\nRequest1 +[0-9]+ +-> DetViewRequest \"Plate, front\"\\n"},
        {"show DetObjReprMapsNew 1 --items --csv", "^Key,Order,Description,.*\\n1,0,"},
        {"show DetObjReprMapsNew 1 --json",
         "^\\{\"Key\": 1, .*\"items\": \\[\\{\"Key\": 1, \"Order\": 0, .*\\}\\]\\}\\n$"},
        {"tree 2", "^Plate, single part  \\[DetailStyle 2\\]\\n├─ ViewArrangeStrategy: One view"},
        {"status", "No edit is open"},
        {"recover", "Nothing to bring back"},
    });
}

TEST_F(CommandLine, ColumnsLineUpWhateverTheScript)
{
    output("edit DetailStyle 1 RunName '梁 – Träger 😀'");
    EXPECT_NE(output("styles").find("\n  1  梁 – Träger 😀" + std::string(16, ' ') + "  Single parts "),
              std::string::npos);
}

TEST_F(CommandLine, AnEditIsKeptUndoneOrRecovered)
{
    const std::string text = "O''Brien [100 %] größer 中文 😀",
                      command = "edit DetailStyle 1 TitleFormat \"" + text + "\" ";
    const std::string before = title();
    EXPECT_EQ(before.find(text), std::string::npos);
    const auto items = [&] { return output("get DetObjReprMapsNew 1 --items --csv"); };
    const std::string itemsBefore = items();
    for (const char* closing : {"--cancel", "--leave-open", "--update"}) {
        output(std::string("edit DetObjReprMapItems 1 LineType 3 --item 2 ") + closing);
        if (closing == std::string("--leave-open"))
            output("recover");
        EXPECT_EQ(items() == itemsBefore, closing != std::string("--update")) << closing;
    }
    for (const char* depth : {"", "--depth 1", "--depth 3"}) {
        output(command + "--cancel " + depth);
        EXPECT_EQ(title(), before) << depth;
        output(command + "--leave-open " + depth);
        const auto left = files();
        EXPECT_TRUE(matches(output("status"), "Details  DetailStyle +[0-3]  DetailStyle_VEL[A-Za-z]*Copy"));
        EXPECT_EQ(files(), left) << "status changes nothing";
        EXPECT_TRUE(matches(output("recover"), "DetailStyle in Details, from DetailStyle_VEL")) << depth;
        EXPECT_EQ(title(), before) << depth;
    }
    output(command + "--leave-open");
    const auto left = files();
    for (const char* looking : {"show DetailStyle 1 --json", "styles", "find DetailStyle Key=1"}) {
        const Outcome look = run(looking);
        EXPECT_EQ(look.code, 0) << looking;
        EXPECT_TRUE(matches(look.err, "^korodbc: note: [^\\n]*Details[^\\n]*: DetailStyle; [^\\n]*recover\\n$"))
            << look.err;
    }
    EXPECT_TRUE(files() == left) << "who looks brings nothing back";
    const Outcome next = run("edit DetailStyle 2 TitleFormat x");
    EXPECT_TRUE(matches(next.err, "^korodbc: note: [^\\n]*DetailStyle \\(Details\\)\\n$")) << next.err;
    EXPECT_EQ(title(), before);
    for (const char* closing : {"--ok", "--update"}) {
        output(command + closing);
        EXPECT_NE(title().find(text), std::string::npos) << closing;
        EXPECT_TRUE(matches(output("status"), "No edit is open")) << closing;
        output("edit DetailStyle 1 TitleFormat x");
    }
}

TEST_F(CommandLine, TheTraceNamesSourceOriginAndResult)
{
    const Outcome traced = run("--trace edit DetailStyle 1 TitleFormat x");
    EXPECT_EQ(traced.code, 0);
    EXPECT_TRUE(
        matches(traced.err, "\\ntrace  Details +host +ok +UPDATE \\[DetailStyle\\] SET \\[TitleFormat\\] = 'x'"));
    EXPECT_TRUE(matches(traced.err, "\\ntrace  Details +library +ok +DROP TABLE \\[DetailStyle_VELCopy\\]\\n"));
    EXPECT_FALSE(matches(traced.err, "FAILED"));
    EXPECT_EQ(std::regex_replace(traced.err, std::regex("[^]*?(  COMMIT\n|$)"), "$1"), "  COMMIT\n")
        << "the copy is never seen";
}

TEST_F(CommandLine, TheDemonstrationComesOutAsItSays)
{
    const std::string out = output("demo shown");
    for (const char* line :
         {"\\n8\\. ", "74 rows written to", "Addin: 74 rows written, under new keys",
          "Details: 54 rows written and 16 reused, under", "\"Copy of Beam, single part\", key 20",
          "%Quantity%x\", as before", "Copy DetailStyle_VELCopy \\(Details\\)", "Brought back: DetailStyle"})
        EXPECT_TRUE(matches(out, line)) << line << "\n" << out;
    EXPECT_TRUE(matches(output("-r shown/repository status"), "No edit is open"));
    write(m_folder / "shown/mine.txt", "mine");
    expectRefused("demo shown", 1, "no demonstration made shown/mine.txt");
    fs::remove(m_folder / "shown/mine.txt");
    output("demo shown");
}
