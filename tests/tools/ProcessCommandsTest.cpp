#include "tools/CommandLine.h"

namespace {

class ProcessCommands : public CommandLine {
protected:
    /// A tree without the keys of its rows.
    static std::string shape(const std::string& tree)
    {
        return std::regex_replace(tree, std::regex("([A-Za-z]) [0-9]+\\]"), "$1]");
    }
    /// The number that a pattern finds in a text.
    static std::string found(const std::string& text, const std::string& pattern)
    {
        std::smatch match;
        EXPECT_TRUE(std::regex_search(text, match, std::regex(pattern))) << pattern << "\n" << text;
        return match.size() > 1 ? match[1].str() : "";
    }
    fs::path details() const { return m_folder / "work/details.db"; }
};

} // namespace

TEST_F(ProcessCommands, PrintWhatIsAskedFor)
{
    expectPrinted({
        {"processes", "\\n  5  Sheets of small parts  Sheets of small parts +2  VEL\\n"},
        {"processes --csv",
         "^Key,Process,Category,Steps,Owner\\n1,All workshop drawings,Workshop drawings,2,VEL\\n"},
        {"processes --source no", "^Key  Process[^\\n]*\\n[- ]+\\n$"},
        {"styles --csv", "^Key,Style,Category,No,Views,Owner\\n1,\"Beam, single part\",Single parts,1,5,VEL\\n"},
        {"groups", "\\nDetViewDimRequestLinearGroup +2  Parts +4302 +[1-9]"},
        {"tree 'All workshop drawings' --process", "^All workshop drawings  \\[DetailProcessDefinition 1\\]\\n"
                                                   "├─ Category: Workshop drawings  [^\\n]*\\n"
                                                   "├─ Step1: Single parts  \\[DetailProcessStep 1\\]\\n"},
        {"tree 2 --process",
         "StyleMap: [^\\n]*\\n[^]*item 1 DetailStyle: Plate, single part  \\[DetailStyle 2\\]"},
        {"tree 2 --process", "item 3 ObjQualifierSet: Main beam  \\[DetObjQualifierSet 1\\]"},
        {"shared DetObjQualifierSet 'Main beam'",
         "\\nDetailStyleMapItems +3  Assemblies by kind +ObjQualifierSet +6\\n\\n"
         "DetObjQualifierSet 1 \"Main beam\": 5 references\\.\\nShared: yes\\n$"},
        {"shared DetailProcessDefinition 1", "1 reference\\.\\nShared: no\\n$"},
        {"shared DetLeaderStyle 1", "Shared: yes\\n$"}, // a fixed catalogue row
        {"shared DetailProcessStep 1 --csv",
         "^Table,Key,Name,Column,Item,References,Shared\\nDetailProcessDefinition,1,All workshop "
         "drawings,Step1,1,,\\nDetailProcessDefinition,2,[^\\n]*\\nTotal,,,,,2,yes\\n$"},
        {"check",
         "^Details: [0-9]{4} references, all lead somewhere\\n([A-Z][A-Za-z]+: [0-9]+ references, all lead "
         "somewhere\\n){4}CountryAddin Norway: 0 references, all lead somewhere\\n$"},
        {"check --json", "^\\[\\n[^\\n]*\"Details\"[^\\n]*\"Lead nowhere\": 0},\\n([^\\n]*\\n){5}\\]\\n$"},
    });
}

TEST_F(ProcessCommands, BadInputIsRefusedInOneLineAndChangesNothing)
{
    output("export-process 2 good.db");
    output("export-process 3 several.db");
    output("export-process 2 several.db");
    for (const char* file : {"old.db", "dangling.db", "nostyle.db", "damaged.db", "readonly.db"})
        fs::copy_file(m_folder / "good.db", m_folder / file);
    sql(m_folder / "old.db", "DROP TABLE DetObjQualifierSetGroup");
    sql(m_folder / "dangling.db", "DELETE FROM DetailProcessStep");
    sql(m_folder / "nostyle.db", "DELETE FROM DetailStyle WHERE [Key] = 2");
    damage(m_folder / "damaged.db");
    makeReadOnly(m_folder / "readonly.db");
    write(m_folder / "text.db", "a text file that is long enough to be taken for something else");
    fs::create_directory(m_folder / "folder.db");
    fs::copy_file(details(), m_folder / "work/details.good");
    expectRefused({
        {"processes --source Toolbars", 1, "data source Toolbars has no detail processes"},
        {"groups --source Configuration", 1, "has no table DetObjAnnotationGroup"},
        {"tree 'Single part drawing' --process", 4,
         "no detail process .*did you mean \"Single part drawings\".*korodbc processes"},
        {"export-process Nothing new.db", 4, "no detail process \"Nothing\" in Details; list them with: korodbc "},
        {"export-process 2", 2, "FILE is required"},
        {"export-process 2 new.db --with-styles --without-styles", 2, "exclude each other"},
        {"export-process 2 old.db", 1, "older than version 5.1: table DetObjQualifierSetGroup"},
        {"export-process 2 readonly.db", 1, "was not exported: Unable to write info .*readonly"},
        {"export-process 2 new.db --source Rules", 2, "processes are exported from Details or Addin"},
        {"import-process nowhere.db", 1, "no file nowhere.db.*export-process"},
        {"import-process old.db", 1, "older than version 5.1"},
        {"import-process one.db", 4, "one.db holds no detail process; .*korodbc export-process"},
        {"import-process several.db", 2, "2 processes; name one with --process: \"Single part drawings\", \"Asse"},
        {"import-process several.db --process Nothing", 4, "holds no detail process \"Nothing\""},
        {"import-process dangling.db", 1,
         "process \"Single part drawings\" was not imported: Failed to load dependencies .*tree --process"},
        {"import-process nostyle.db", 1,
         "names 1 detail style that nostyle.db does not have .keys 2.; .*--without-"},
        {"shared DetObjQualifierSets 1", 4, "did you mean \"DetObjQualifierSet\""},
        {"shared DetObjQualifierSet 'Main bean'", 4,
         "did you mean \"Main beam\".*korodbc show DetObjQualifierSet"},
        {"shared DetObjReprMapItems 1", 2, "rows of DetObjReprMapItems by a key of their own"},
        {"shared DetailStyle 1 --source Rules", 2, "data source Rules holds no detail tables"},
        {"shared DetailStyle 1 --source Addin", 4, "no row with the key or name \"1\""},
        {"check --source Rules", 2, "data source Rules holds no detail tables"},
    });

    makeReadOnly(m_folder / "work/addin.db");
    expectRefused("import-process good.db --into Addin", 1, "was not imported: Unable to write info .*readonly");
    sql(details(), "DROP TABLE DetViewDimStrategyItems");
    expectRefused("import-process good.db", 1, "version 5.1");
    expectRefused("export-process 2 new.db", 1, "Source database is older than version 5.1!");
    fs::copy_file(m_folder / "work/details.good", details(), fs::copy_options::overwrite_existing);
    damageTable(details(), "DetailProcessStep");
    expectRefused("export-process 2 new.db", 1, "details.db is damaged");
    expectRefused("import-process good.db", 1, "details.db is damaged");
    expectRefused("check", 1, "the references of Details cannot be read");
    expectRefused("shared DetailStyle 1", 1, "the references of Details cannot be read");
}

TEST_F(ProcessCommands, AProcessTravelsWithItsStyles)
{
    const std::string name = "Prozess 'A' 100 % [梁] 😀";
    output("edit DetailProcessDefinition 1 RunName \"" + name + "\"");
    const std::string tree = output("tree \"" + name + "\" --process");
    const std::string rows = found(tree, "\\n([0-9]+ rows) in ");
    EXPECT_TRUE(matches(output("export-process \"" + name + "\" \"it's.db\""),
                        ", " + rows + " written, to it's\\.db\\.\\n$"));
    const std::string exported = contents(m_folder / "it's.db");
    for (const char* into : {"Addin", "no"}) {
        const std::string out = output(std::string("import-process \"it's.db\" --into ") + into);
        EXPECT_NE(out.find("\"" + name + "\", key 1; " + rows + " written.\n"), std::string::npos) << out;
        EXPECT_EQ(shape(output(std::string("tree 1 --process --source ") + into)), shape(tree)) << into;
    }
    EXPECT_TRUE(
        matches(output("import-process \"it's.db\" --with-styles"), "as \"Copy of Prozess [^\\n]*, key 9;"));
    EXPECT_EQ(contents(m_folder / "it's.db"), exported) << "an import leaves the file as it is";
    EXPECT_EQ(output("tree 1 --process"), tree) << "the process itself is as it was";
    EXPECT_FALSE(matches(output("tree 9 --process"), "DetailStyle: (Plate, single part|Beam assembly)  "))
        << "the copy has styles of its own";
    output("check");
}

TEST_F(ProcessCommands, WithoutItsStylesAProcessKeepsTheirKeys)
{
    const Outcome exported = run("export-process 'Single part drawings' keys.db --without-styles");
    EXPECT_EQ(exported.code, 0);
    EXPECT_TRUE(matches(exported.out,
                        "except its detail styles, [0-9]+ rows written, to keys\\.db\\. 3 items of its style "
                        "maps keep the style keys of Details, "))
        << exported.out;
    EXPECT_TRUE(matches(exported.err, "^korodbc: note: keys\\.db has no detail styles with the keys 1, 2, 3, "));
    EXPECT_TRUE(matches(output("import-process keys.db --without-styles"),
                        "key 9; [0-9]+ rows written and [0-9]+ reused\\. 3 items"));
    EXPECT_TRUE(
        matches(output("tree 9 --process"), "item 1 DetailStyle: Plate, single part  \\[DetailStyle 2\\]"));
    output("check");
    expectRefused("import-process keys.db", 1, "3 detail styles that keys.db does not have .keys 1, 2, 3.");

    const Outcome elsewhere = run("import-process keys.db --without-styles --into no");
    EXPECT_EQ(elsewhere.code, 0);
    EXPECT_TRUE(
        matches(elsewhere.err, "^korodbc: note: CountryAddin Norway has no detail styles with the keys 1"));
    const Outcome check = run("check --source no");
    EXPECT_EQ(check.code, 1);
    EXPECT_TRUE(matches(check.out, "^CountryAddin Norway: DetailStyleMapItems 1 \"Single parts by kind\" item 1 "
                                   "DetailStyle -> DetailStyle 2, which does not exist\\n"))
        << check.out;
    EXPECT_EQ(check.err,
              "korodbc: 3 references lead nowhere; name rows that exist with: korodbc edit TABLE KEY COLUMN "
              "VALUE, for an item --item N\n");
    output("check --source Details");
    expectRefused("export-process 1 new.db --source no", 2, "exported from Details or Addin");
    output("import-style one.db --into no");
    // the style gets none of the keys that are referred to
    EXPECT_TRUE(matches(run("check --source no").err, "^korodbc: 3 references lead nowhere"));
}

TEST_F(ProcessCommands, CheckNamesEveryReferenceThatLeadsNowhere)
{
    sql(details(), "UPDATE DetailStyle SET Request2 = 901 WHERE [Key] = 1;"
                   "UPDATE DetObjReprMapItems SET ObjQualifier = 902 WHERE [Key] = 2 AND [Order] = 1;"
                   "UPDATE DetAnnotationType SET LeaderStyle = 903 WHERE [Key] = 3;"
                   "UPDATE DetailProcessStep SET StyleMap = -1, Sort = -1 WHERE [Key] = 4;"
                   "UPDATE DetObjAnnotationStrategy SET RunName = 'O''Brien' || char(10) || '梁' WHERE [Key] = 5;"
                   "UPDATE DetObjAnnotationStrategy SET ArrangerControl = 904 WHERE [Key] = 5");
    const auto before = files();
    const Outcome check = run("check");
    EXPECT_EQ(check.code, 1);
    EXPECT_EQ(check.err,
              "korodbc: 5 references lead nowhere; name rows that exist with: korodbc edit TABLE KEY COLUMN "
              "VALUE, for an item --item N\n");
    EXPECT_NE(check.out.find("Details: DetailStyle 1 \"Beam, single part\" item 2 Request2 -> DetViewRequest 901, "
                             "which does not exist\n"),
              std::string::npos);
    EXPECT_EQ(files(), before);
    EXPECT_EQ(run("check --source Addin").code, 0);
}
