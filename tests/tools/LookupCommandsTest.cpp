#include "tools/CommandLine.h"

namespace {

class LookupCommands : public CommandLine {
protected:
    void csv(const std::string& name, const std::string& text) const { write(m_folder / name, text); }
};

} // namespace

TEST_F(LookupCommands, PrintWhatIsAskedFor)
{
    expectPrinted({
        {"list Standard", "^ISO 4014\\nISO 4017\\n"},
        {"list Sections", "^European I beams\\n"}, // by an alias
        {"list Profiles_HEA", "^HEA100\\nHEA120\\n"},
        {"get Material S355J2", "\\nRunName +S355J2\\n"},
        {"get Material 7 --json", "^\\{\"Key\": 7, [^\\n]*\\}\\n$"},
        {"get Profiles_HEA hea200 --csv", "^Key,[^\\n]*\\n[0-9]+,HEA200,190,200,[^\\n]*\\n$"},
        {"get DetObjReprMapsNew 1 --items --csv", "^Key,Order,Description,.*\\n1,0,"},
        {"find Material RunName=S235JR --csv", "^Key,RunName,[^\\n]*\\n[0-9]+,S235JR,[^\\n]*\\n$"},
        {"find material 'RUNNAME~s355%'", "  S355J2 "},
        {"find Profiles_HEA 'h>=190' 'h<210' --csv", "^Key,[^\\n]*\\n[0-9]+,HEA200,190,[^\\n]*\\n$"},
        {"section HEA200", "\\nSection +HEA200 +internal name HEA@HEA200\\n"},
        {"section 'hea 200'", "\\nClass +HEA +Wide flange beams, light\\n"},
        {"section hea@hea200 --csv", "\\nWely,388\\.7,cm3,"},
        {"section 'Wide flange beams, light@HEA200'", "\\nBehaviour +Rolled +unwound not\\n"},
        {"bolts", "\\nISO 4014 +Hexagon head, part thread "},
        {"bolts 'ISO 4014' M16", "\\n8\\.8 +Nut and washer +10 +24 +2 "},
        {"bolts 'ISO 4014' 16.0", "\\n\\nAssemblies\\n.*[^]*\\nNut and washer +80 +39 +58\\.2 +0\\.152\\n"},
        {"bolts 'ISO 4014' M8", "\\n\\nNo assemblies with lengths\\n$"},
    });
}

TEST_F(LookupCommands, BadInputIsRefusedInOneLineAndChangesNothing)
{
    csv("good.csv", "name,d_mm\nA,1\n");
    csv("short.csv", "name,d_mm\nA,1\n\nB\n");
    csv("open.csv", "name,d_mm\nA,1\n\"B,2\n");
    csv("latin.csv", "name,d_mm\nA,1\nTr\xE4ger,2\n");
    csv("double.csv", "Key,name\n1,A\n2,B\n1,C\n");
    csv("zero.csv", "Key,name\n0,A\n-0,B\n");
    csv("nokey.csv", "name,KEY\nA,1\nB,\n");
    csv("onlykey.csv", "Key\n1\n");
    csv("twice.csv", "name,d,d\nA,1,2\n");
    csv("unnamed.csv", "name,,d\nA,1,2\n");
    csv("heading.csv", "name,d\n");
    csv("empty.csv", "");
    csv("semicolons.csv", "name;size\nA;1,5\n");
    csv("tabs.csv", "\xEF\xBB\xBFname\tsize\nA\t1\n");
    expectRefused({
        {"list Matrial", 4, "no table \"Matrial\".*did you mean \"Material\""},
        {"list SetBolts", 2, "have no names.*korodbc show SetBolts"},
        {"get Material", 2, "ROW is required"},
        {"find Material", 2, "CONDITION is required"},
        {"find Material RunName", 2, "no condition"},
        {"find Material RunNam=x", 4, "no column \"RunNam\" .did you mean \"RunName\""},
        {"find Material Density=heavy", 2, "\"heavy\" is no number"},
        {"find Material 'Density<'", 2, "needs a number"},
        {"find Material \"RunName=x' OR '1'='1\"", 4, "no row that meets"},
        {"find Material 'RunName=x] OR 1=1 --'", 4, "no row that meets"},
        {"find Profiles_HEA 'SectionName<>HEA100' 'h<=96'", 4, "no row that meets"}, // all have to hold
        {"section HEA201", 4, "no section \"HEA201\" .did you mean "},
        {"section HEA@IPE300", 4, "no section \"IPE300\" in class HEA"},
        {"section XYZ@HEA200", 4, "no section class \"XYZ\""},
        {"bolts 'ISO 401'", 4, "no bolt standard \"ISO 401\".*did you mean"},
        {"bolts 'ISO 4014' M17", 4, "no diameter \"M17\""},
        {"import-csv Mine nowhere.csv", 1, "no file nowhere.csv"},
        {"import-csv Mine short.csv", 1, "short.csv line 4 has 1 cells, the header 2; nothing"},
        {"import-csv Mine open.csv", 1, "line 3: a quoted cell is not closed"},
        {"import-csv Mine latin.csv", 1, "latin.csv line 3: it is no UTF-8"},
        {"import-csv Mine double.csv", 1, "line 4: the key \"1\" stands on line 2 already"},
        {"import-csv Mine zero.csv", 1, "line 3: the key \"0\" stands on line 2"},
        {"import-csv Mine nokey.csv", 1, "line 3: the key is missing"},
        {"import-csv Mine onlykey.csv", 1, "no column beside the key"},
        {"import-csv Mine twice.csv", 1, "line 1: two columns have the name \"d\""},
        {"import-csv Mine unnamed.csv", 1, "line 1: column 2 has no name"},
        {"import-csv Mine heading.csv", 1, "no rows"},
        {"import-csv Mine semicolons.csv", 1, "line 1: the heading is one cell with semicolons .*--separator ';'"},
        {"import-csv Mine good.csv --separator :", 2, "\":\" separates no cells"},
        {"import-csv 'a]b' good.csv", 2, "cannot be the name"},
        {"import-csv sqlite_master good.csv", 2, "cannot be the name"},
        {"import-csv material good.csv --replace", 2, "Material is described by record type StructMaterial"},
        {"import-csv DetailStyle_VELCopy good.csv --source Details", 2, "described by record type"},
        {"import-csv Sections good.csv --replace", 2, "another name of table ProfileMasterTable"},
        {"import-csv Profiles_HEA good.csv --source Profiles --replace", 2, "record type StructSection"},
    });
}

TEST_F(LookupCommands, AFileBecomesATableWithInferredTypes)
{
    csv("beams.csv", "\xEF\xBB\xBF"
                     "d [mm],Name,mass,zeros,note,large,empty\r\n"
                     "12,\"O'Brien, \"\"A\"\"\",1.5,007,x,3000000000,\r\n"
                     ",梁 [😀] 100 %,-2e3,008,5,9999999999999999999,\r\n");
    const std::string out = output("import-csv \"it's mine\" beams.csv");
    for (const char* line :
         {"\\nKey +INTEGER +2  key, the rows are numbered\\nName +TEXT +2  name of the row\\n",
          "\\nd \\(mm\\) +INTEGER +1  in the file: d \\[mm\\]\\n", "\\nmass +REAL +2\\n", "\\nzeros +TEXT +2\\n",
          "\\nnote +TEXT +2  line 2 is no number: \"x", "\\nlarge +TEXT +2 ", "\\nempty +TEXT +0\\n",
          "\\n2 rows in table \"it's mine\" of data source Configuration\\n$"})
        EXPECT_TRUE(matches(out, line)) << line << "\n" << out;
    EXPECT_EQ(output("show \"it's mine\" --csv"), "Key,Name,d (mm),mass,zeros,note,large,empty\n"
                                                  "1,\"O'Brien, \"\"A\"\"\",12,1.5,007,x,3000000000,\n"
                                                  "2,梁 [😀] 100 %,,-2000,008,5,9999999999999999999,\n");
    EXPECT_EQ(output("list \"it's mine\""), "O'Brien, \"A\"\n梁 [😀] 100 %\n");
    EXPECT_TRUE(matches(output("find \"it's mine\" 'd (mm)=' --csv"), "\\n2,[^\\n]*\\n$")) << "empty cells";
    EXPECT_TRUE(matches(output("find \"it's mine\" \"Name=O'Brien, \\\"A\\\"\" --csv"), "\\n1,[^\\n]*\\n$"));
}

TEST_F(LookupCommands, KeysAndNamesOfTheFileAreKept)
{
    csv("ints.csv", "size,key\nbig,20\nsmall,-3\n");
    csv("texts.csv", "size,key,RunName\n1,b 1,Bee\n2,\"it's\",It\n");
    csv("cases.csv", "name,b_mm,B_mm\nA,1,2\n");
    csv("reals.csv", "key,name\n1.50,A\n1.5,B\n");
    output("import-csv Ints ints.csv --source Addin");
    EXPECT_EQ(output("get Ints 20 --csv"), "key,size\n20,big\n");
    EXPECT_EQ(output("get Ints small --csv"), "key,size\n-3,small\n");
    output("import-csv TextKeys texts.csv");
    EXPECT_EQ(output("get TextKeys \"it's\" --csv"), "key,RunName,size\nit's,It,2\n");
    EXPECT_EQ(output("get TextKeys bee --csv"), "key,RunName,size\nb 1,Bee,1\n");
    EXPECT_TRUE(matches(output("import-csv Cases cases.csv"), "\nB_mm_2 +INTEGER +1  in the file: B_mm\n"));
    EXPECT_EQ(output("show Cases --csv"), "Key,name,b_mm,B_mm_2\n1,A,1,2\n");
    csv("semicolons.csv", "name;size\nA;\"1,5;x\"\n");
    output("import-csv Semi semicolons.csv --separator ';'");
    EXPECT_EQ(output("show Semi --csv"), "Key,name,size\n1,A,\"1,5;x\"\n");
    output("import-csv Reals reals.csv");
    EXPECT_EQ(output("show Reals --csv"), "key,name\n1.50,A\n1.5,B\n");
    expectRefused("import-csv Ints ints.csv --source Addin", 1, "exists already in data source Addin.*--replace");
    expectRefused("import-csv reals ints.csv --source Toolbars --replace", 1,
                  "Reals exists already in data source Configuration");
}

TEST_F(LookupCommands, ARefilledTableIsReplacedWholeOrNotAtAll)
{
    std::string text = "name,n,text\n";
    for (int i = 1; i <= 5000; ++i)
        text += "R" + std::to_string(i) + "," + std::to_string(i) + ",it's " + std::to_string(i) + "\n";
    csv("many.csv", text);
    csv("few.csv", "name,other\nX,1.5\n");
    csv("bad.csv", text + "R5001,1\n");
    output("import-csv Mine few.csv");
    EXPECT_TRUE(matches(output("import-csv mine many.csv --replace"), "\\n5000 rows in table"));
    const std::string all = output("show Mine --csv");
    EXPECT_TRUE(matches(all.substr(0, 40), "^Key,name,n,text\\n1,R1,1,it's 1\\n"));
    EXPECT_NE(all.find("\n5000,R5000,5000,it's 5000\n"), std::string::npos);
    EXPECT_EQ(std::count(all.begin(), all.end(), '\n'), 5001);
    expectRefused("import-csv Mine bad.csv --replace", 1, "line 5002 has 2 cells, the header 3");
    const std::string tables = output("tables Configuration");
    csv("more.csv", text.substr(0, text.rfind("R5000")));
    for (const char* command : {"import-csv Mine more.csv --replace", "import-csv Yours more.csv"}) {
        const Outcome outcome = runIn(m_folder, command, "trap '' XFSZ; ulimit -f 200;");
        EXPECT_EQ(outcome.code, 1) << command;
        EXPECT_TRUE(
            matches(outcome.err, "^korodbc: table [^\\n]*I/O error; [^\\n]*full[^\\n]*; nothing was imported\\n$"))
            << outcome.err;
        EXPECT_EQ(output("show Mine --csv"), all) << command;
        EXPECT_EQ(output("tables Configuration"), tables) << command;
    }
    output("import-csv Mine few.csv --replace");
    EXPECT_EQ(output("show Mine --csv"), "Key,name,other\n1,X,1.5\n");
}
