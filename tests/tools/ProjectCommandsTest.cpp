#include "tools/CommandLine.h"

namespace {

class ProjectCommands : public CommandLine {
protected:
    void xml(const std::string& text) const { write(m_folder / "in.xml", text); }
    /// The document that `show` writes to a file.
    std::string document(const std::string& which) const
    {
        output(which + " --xml-out out.xml");
        return contents(m_folder / "out.xml");
    }
};

} // namespace

TEST_F(ProjectCommands, PrintWhatIsAskedFor)
{
    expectPrinted({
        {"templates", "^ *Key +Name +Type +File +Description +Category +Drawing +Reports *\\n[^]*"
                      "\\n *1 +Hall: material +Material list +HallMaterial.lst +[^\\n]* Lists +no +2 *\\n"},
        {"templates --csv", "\\n3,Hall: single parts,Workshop drawing,[^\\n]*,Details,yes,0\\n"},
        {"templates list --database user --csv",
         "\\n1001,Painting list by coating,[^\\n]*,user,0\\n[^]*\\n5,Assembly drawing,[^\\n]*,yes,shipped,0\\n"},
        {"templates --database advanced --json", "\"Name\": \"Bolts by size\"[^\\n]*\"Reports\": 1}"},
        {"templates show 'hall: BOLTS'",
         "\\nName +Hall: bolts *\\n[^]*\\nreport +Bolts *\\n\\n<\\?xml[^]*</reportTemplate>\\n$"},
        {"templates show 2 --json", "\"Key\": 2, [^]*\"Reports\": 1, \"XML\": \"<\\?xml version=\\\\\"1.0\\\\\""},
        {"report-categories --csv", "\\n1,Lists,[0-9]+\\n"},
        {"update-settings show 'Before each report'", "\\nextract +Hall, as built *\\n"},
        {"reports --csv", "\\n3,Bolts,Hall: bolts,,Bolts.csv,The whole model\\n$"},
        {"selections --csv", "\\n1,Phase 1,What is erected first,2\\n"},
        {"selections show 'Phase 1'", "\\napplication +Phase 1, hall *\\n[^]*<condition property=\"Phase\""},
        {"applications --csv", "\\n1,\"Phase 1, hall\",Phase 1,[^\\n]*,2\\n"},
        {"extracts --csv", "\\n2,\"Hall, as built\",\"Phase 1, hall\",Before each report,HallBuilt.xtr,1\\n"},
        {"report-types --csv", "\\n1,Material list,Lists,csv,1\\n"},
        {"reports --database user", "^There are no reports in the user's project data\\.\\n$"},
        {"check --source Project", "^Project: [0-9]+ references, all lead somewhere\\n$"},
        {"shared ReportTemplates 1 --source Project", "2 references"},
    });
}

TEST_F(ProjectCommands, DocumentsGoIntoAnyDatabaseAndOutUnharmed)
{
    std::string text = "\xEF\xBB\xBF<?xml version=\"1.0\"?>\r\n<!DOCTYPE a [<!ENTITY b \"c\">]>\n"
                       "<a x='\"' \xC3\xA4=\"&b;\"><!-- <> --><![CDATA[ ]] > & ]]>\n";
    while (text.size() < 1'000'000)
        text += "<p>it's &#x1F529; \xE6\xA2\x81 %s; DROP TABLE XMLData</p>";
    xml(text + "</a>");
    write(m_folder / "linked.xml", "");
    fs::create_symlink("linked.xml", m_folder / "link.xml");
    EXPECT_EQ(run("templates show 1 --xml-out link.xml").code, 0);
    EXPECT_TRUE(fs::is_symlink(m_folder / "link.xml") && contents(m_folder / "linked.xml").starts_with("<?xml"));
    for (const std::string database : {" --database drawing", " --database user", " --database advanced"}) {
        const std::string added = output("templates save 'It''s new' --type 'Bolt list' --xml in.xml" + database);
        EXPECT_TRUE(
            matches(added, "^Added template \"Its new\" \\(key [0-9]+\\)[^\\n]* with 1[0-9]* bytes of XML"))
            << added;
        EXPECT_TRUE(document("templates show 'its new'" + database) == text + "</a>");
        EXPECT_EQ(run("templates save 'Its new' --xml -" + database + " <in.xml").code, 0);
        EXPECT_TRUE(document("templates show 'its new'" + database) == text + "</a>");
        EXPECT_TRUE(
            matches(output("templates save 'Its new' --name \"It's\" --file f --description \"d'\"" + database),
                    "^Changed template \"It's\" \\(key"));
        EXPECT_TRUE(document("templates show \"It's\"" + database) == text + "</a>");
        EXPECT_TRUE(matches(output("templates --csv" + database), ",It's,Bolt list,f,d',Lists,no,"));
        output("reports save R --template \"it's\"" + database);
        expectRefused("templates delete \"It's\"" + database, 1,
                      "template \"It's\" is kept: 1 report refers to it: \"R\"; delete it first, see: korodbc "
                      "reports --help");
        output("reports delete R" + database);
        EXPECT_TRUE(
            matches(output("templates delete \"It's\"" + database), "^Deleted template \"It's\" from the "));
        output("check");
        for (const std::string kind : {"report-categories", "update-settings"}) {
            output(kind + " save Ours" + database);
            EXPECT_TRUE(
                matches(output(kind + " save ours --name Theirs" + database), "^Changed [^\\n]*\"Theirs\""));
            EXPECT_TRUE(matches(output(kind + " --csv" + database), ",Theirs,"));
        }
    }
}

TEST_F(ProjectCommands, ShippedRecordsAreChangedAmongTheUsersOwn)
{
    const std::string shipped = contents(m_folder / "work/configuration.db");
    const std::string before = document("templates show 4 --database user");
    output("templates save 4 --description Mine --database user");
    EXPECT_TRUE(document("templates show 4 --database user") == before);
    const std::string list = output("templates --database user --csv");
    EXPECT_TRUE(
        matches(list, "\\n4,Single part drawing,Workshop drawing,SinglePart.dwt,Mine,Details,yes,user,0\\n"))
        << list;
    EXPECT_TRUE(matches(output("check --source Addin"), "all lead somewhere"));
    EXPECT_EQ(contents(m_folder / "work/configuration.db"), shipped);
    output("templates delete 4 --database user");
    EXPECT_TRUE(matches(output("templates --database user --csv"), "\\n4,[^\\n]*,shipped,0\\n"));
    expectRefused("templates delete 4 --database user", 1, "is shipped for every user and cannot be deleted");
}

TEST_F(ProjectCommands, BadInputIsRefusedInOneLineAndChangesNothing)
{
    xml("<a/>");
    const std::string save = "templates save New --type 1 --xml in.xml";
    expectRefused({
        {"templates lst", 2, "no action \"lst\" \\(did you mean \"list\""},
        {"templates list 1", 2, "list takes no name"},
        {"templates show", 2, "name the template: korodbc templates show NAME"},
        {"templates show 'Hall: bolt'", 4, "did you mean \"Hall: bolts\""},
        {"templates show 1 --database usr", 2, "no database \"usr\" \\(did you mean \"user\""},
        {"templates show 1 --xml-out nowhere/x", 1, "nowhere/x cannot be written"},
        {"reports show 1 --xml in.xml", 2, "--xml"},
        {"templates show 1 --file x", 2, "with save only"},
        {"templates save New", 2, "no template \"New\"; to add it, give --type as well"},
        {"templates save New --type 1", 2, "give --xml FILE as well"},
        {"templates save 77 --type 1 --xml in.xml", 4, "no template \"77\""},
        {"templates save 1 --name 'HALL: bolts'", 2, "a template \"Hall: bolts\" already"},
        {"templates save 1 --name ''", 2, "needs a name that is a valid text"},
        {"templates save 1 --xml ''", 4, "there is no file  to read"},
        {"templates save 1 --file x --json", 2,
         "--csv and --json go with what is printed as a table, not with templates"},
        {"templates delete 1 --csv", 2, "not with templates delete"},
        {"templates show 1 --xml-out - --json", 2, "not with --xml-out -"},
        {"templates --xml-out x", 2, "--xml-out goes with show"},
        {"templates save 1 --xml - </dev/null", 2, "the standard input is no XML document"},
        {"report-categories delete 1", 2, "a report category is kept for good"},
        {"extracts save E --application 1 --update Nevr", 4, "korodbc update-settings --database drawing"},
        {"report-types save T --category Foo --database user", 4, "korodbc report-categories --database user"},
        {"templates save 1 --name 5", 2, "needs a name that is no number"},
        {"templates save 1 --type Lists", 4, "no report type \"Lists\""},
        {"templates save 1 --file '\xFF'", 2, "--file is no valid UTF-8"},
        {"templates save 1 --xml nothere.xml", 4, "no file nothere.xml"},
        {"templates save 1 --xml work", 4, "no file work to read"},
        {"reports save R", 2, "give --template as well"},
        {"report-types delete 'material LIST'", 1, "kept: 1 template refers to it: \"Hall: material\""},
        {"selections delete 1", 1, "2 applications refer to it: \"Phase 1, hall\", \"Phase 1, canopy\""},
        {"applications delete 1", 1, "2 extracts refer to it"},
        {"extracts delete 1", 1, "1 report refers to it: \"Material of the hall\""},
    });

    const std::pair<std::string, std::string> documents[] = {
        {"", "line 1: there is no element"},
        {"<a>\n<b></a>", "line 2: the element \"b\" is not closed"},
        {"<a>", "the element \"a\" is not closed"},
        {"<a/>\n<b/>", "line 2: something stands behind the end"},
        {"<a b=1/>", "where XML allows none"},
        {"<a b='1' b='2'/>", "given twice"},
        {"<a>x & y</a>", "write \"&lt;\" for \"<\" and \"&amp;\""},
        {"<a>&none;</a>", "\"&\" begins no known entity"},
        {"<a>\n\xE4</a>", "line 2: this is no UTF-8 text"},
        {std::string("<a>\0</a>", 8), "no UTF-8 text"},
        {"\xFF\xFE<\0a\0", "no UTF-8 text"},
        {"<?xml version='1.0' encoding='ISO-8859-1'?><a/>", "another encoding"},
        {"<a><!-- </a>", "is not closed"},
        {"{\"json\": 1}", "where XML allows none"},
    };
    for (const auto& [text, error] : documents) {
        xml(text);
        expectRefused(save, 2, "in.xml is no XML document: .*" + error);
    }
    const fs::path drawing = m_folder / "work/project.db";
    sql(drawing, "UPDATE ReportTemplates SET XMLData = 2 WHERE [Key] = 3");
    expectRefused("templates delete 3", 1, "another record has the same XML document");
    sql(drawing, "UPDATE ReportTemplates SET XMLData = -1 WHERE [Key] = 3;"
                 "UPDATE ModelSelections SET XMLData = 77 WHERE [Key] = 2");
    xml("<a/>");
    expectRefused("templates show 3 --xml-out x", 4, "has no XML document");
    expectRefused("templates delete 3", 1, "deleted only with one; give it one first: korodbc templates save");
    const std::string missing = "the XML document 77 of selection \"Stairs and railings\" is missing; give it one "
                                "with: korodbc selections save 2 --xml FILE --database drawing";
    expectRefused("selections show 2 --xml-out x", 1, missing);
    const Outcome shown = run("selections show 2");
    EXPECT_EQ(shown.code, 0);
    EXPECT_EQ(shown.err, "korodbc: note: " + missing + "\n");
    EXPECT_TRUE(matches(shown.out, "\\nName +Stairs and railings"));
    const Outcome check = run("check --source Project");
    EXPECT_TRUE(matches(check.out, "ModelSelections 2 \"Stairs and railings\" XMLData -> XMLData 77, which"));
    EXPECT_TRUE(matches(check.err, "^korodbc: 1 reference leads nowhere; save project records"));
    sql(drawing, "ALTER TABLE Reports DROP COLUMN Template; INSERT INTO XMLData VALUES (50, 1, '<a/>'); "
                 "UPDATE ReportTemplates SET XMLData = 50 WHERE [Key] = 3");
    expectRefused("templates delete 3", 1, "no column Template");
    sql(drawing, "DROP TABLE Reports; ALTER TABLE XMLData DROP COLUMN XMLText");
    expectRefused("reports", 1, "table Reports cannot be read: there is no table Reports");
    expectRefused("templates delete 3", 1, "table Reports cannot be read");
    expectRefused("templates show 1 --xml-out x", 1,
                  "table XMLData cannot be read: .*XMLText.*; see: korodbc status");
    expectRefused("reports save R --template 1", 1,
                  "nothing was written to the drawing's project data: there is no");
    expectRefused(save, 1, "nothing was written to the drawing's project data: [^\\n]*XMLText");
    makeReadOnly(m_folder / "work/projectadvance.db");
    expectRefused(save + " --database advanced", 1, "nothing was written to the advanced project data");
}
