#include "tools/CommandLine.h"

namespace {

using ExchangeCommands = CommandLine;

TEST_F(ExchangeCommands, PrintTheNameAndTheRowThatGaveIt)
{
    expectPrinted({
        {"map-section HEA200 --to ifc", "\\nneutral +HE +HE 200 A +QXT_Profile_Conversion +1 +HEA[^\\n]*\\n"
                                        "IFC +IfcIShapeProfileDef +HEA200 +Profile_Exports_Conversion +[0-9]+ "},
        {"map-section HE200A --from 3 --csv", "\\nThis application,HEA,HEA200,Profile_Exports_Conversion,1,HE "},
        {"map-section L100x50x6 --class L --neutral --json",
         "\"Section\": \"L 100x50x6\", \"Table\": \"QXT_Profile_Conversion\", \"Row\": 5, "},
        {"map-section IPE200 --format kiss --csv", "\\nKISS_Profile_Conversion,[0-9]+,IPE200,1,IPE,200,"},
        {"map-section L20x20x3 --class L --format sdnf --csv", "OwnerText,Rotation\\n[^\\n]*\\*3,OFFICE,90\\n"},
        {"map-section 'L20*20*3' --format sdnf --back", "L20x20x3"},
        {"map-material S355J2 --to CIS/2", "\\nneutral +1.0577 [^\\n]*\\nCIS/2 +EN 10025-2 S355J2 "},
        {"map-material S355J2 --from SDNF", "\\nThis application +S355J2 "},
        {"map-material S355J2 --format kiss", "KISS_Material_Conversion"},
        {"map-bolt 'ISO 4014' --csv", "\\nCIS2_Bolt_Conversion,1,ISO 4014,1,ISO_4014,"},
        {"map-bolt ISO_4014 --back", "ISO 4014"},
        {"map-section 'HE 200 A' --from Neutral --csv",
         "\\nThis application,HEA,HEA200,Profile_Exports_[^\\n]*\\n$"},
        {"map-section HEA200 --from IFC --to SDNF --csv", "\\nneutral,HE,HE 200 A,[^\\n]*\\nSDNF,[^\\n]*HE200A,"},
        {"map-section HEA200 --to neutral --csv", "\\nneutral,HE,HE 200 A,[^\\n]*\\n$"},
        {"map-material 1.0577 --from neutral --to CIS/2", "\\nCIS/2 +EN 10025-2 S355J2 "},
        {"map-material 'EN 10025-2 S355J2' --from CIS/2 --to IFC", "\\nneutral +1.0577 [^\\n]*\\nIFC +S355J2 "},
        {"map-material 'Base plate' --format kiss --plate --csv", "\\nKissPlateMaterial,3,Base plate,PL,S355J2,"},
    });
}

TEST_F(ExchangeCommands, BadInputIsRefusedInOneLine)
{
    expectRefused({
        {"map-section HEA200 --to IFG", 4, "no application \"IFG\" \\(did you mean \"IFC"},
        {"map-section HEA2O0 --to IFC", 4,
         "\"HEA2O0\" of \"This application\" a neutral name \\(did you mean \"HEA200\" or "},
        {"map-section HEA200 --class it\\'s --to IFC", 4, "of class \"it's\""},
        {"map-section PL10x200 --to KISS", 4, "QXT_Profile_Conversion"},
        {"map-section HEA200", 2, "give one of --to, --from, --neutral, --format"},
        {"map-section HEA200 --format dxf", 2, "no format \"dxf\""},
        {"map-section HEA200 --neutral --object-type Plates", 4, "object type \"Plates\" \\(did you mean \"Plate"},
        {"map-section HEA200 --format kiss --back", 2, "--back goes with"},
        {"map-material S355J3 --to IFC", 4, "a neutral name \\(did you mean \"S355J"},
        {"map-material S355J2 --format sdnf", 2, "give kiss"},
        {"map-bolt 'ISO 1'", 4, "gives the bolt standard \"ISO 1\" of \"This application\" a name in CIS/2 files"},
        {"map-bolt 'ISO 4014' --application 2", 4, "of \"IFC\" a name in CIS/2 files"},
        {"map-bolt ISO_4014 --back --application 2", 2, "--application goes with"},
        {"map-section HEA20 --format sdnf", 4, "a name in SDNF files \\(did you mean \"HEA120\""},
        {"map-section HEA200 --format sdnf --class FOO", 4,
         "table SDNF_Profile_Definition gives the class \"FOO\""},
        {"map-section HEA200 --format kiss --application fabricator", 4,
         "\"HEA200\" of \"Fabricator\" a name[^(]*"},
        {"map-section HEA200 --format kiss --class HEA", 2, "--class goes with --to, --from"},
        {"map-section HEA200 --format kiss --object-type 1", 2, "--object-type goes with --to"},
        {"map-section HEA200 --to IFC --object-type Foo", 4, "no object type \"Foo\""},
        {"map-section HEA200 --to IFC --application 1", 2, "--application goes with --neutral or --format"},
        {"map-section HE200A --format sdnf --back --application 2", 2, "--application goes with"},
        {"map-section 'HE 200 A' --from neutral --neutral", 2, "give one of"},
        {"map-section 'HE 200 A' --from neutral --to neutral", 2, "name that with --to"},
        {"map-section 'HE A' --from neutral --to IFC", 4, "neutral section \"HE A\" a name of \"IFC\""},
        {"map-material 1.057 --from neutral --to KISS", 4,
         "neutral material \"1.057\" a name of \"KISS\" .did you mean \"1.057"},
        {"map-material 'Base plat' --format kiss --plate", 4,
         "\"Base plat\" a name in KISS files .did you mean \"Base"},
        {"map-material S355J2 --to IFC --plate", 2, "--plate goes with --format kiss"},
    });
    sql(m_folder / "work/configuration.db", "DROP TABLE Profile_Exports_Conversion");
    expectRefused("map-section HEA200 --to IFC", 1,
                  "Profile_Exports_Conversion cannot be read: .*; see: korodbc status");
}

TEST_F(ExchangeCommands, ExpressionsThatDoNotCompileAreNamed)
{
    sql(m_folder / "work/configuration.db",
        "UPDATE QXT_Profile_Conversion SET Section = 'HEA(' WHERE Key = 1;"
        "UPDATE Profile_Exports_Conversion SET QXTSection = '[\n', Application = 3 WHERE Key > 40;"
        "UPDATE Profile_Exports_Conversion SET QXTSection = '(' WHERE Key = 1");
    const Outcome outcome = run("map-section IPE200 --to SDNF --csv");
    EXPECT_EQ(outcome.code, 0);
    EXPECT_TRUE(matches(outcome.out, "\\nSDNF,IPE,IPE200,"));
    EXPECT_TRUE(matches(outcome.err, "^korodbc: note: table QXT_Profile_Conversion: in the row of key 1 the "
                                     "expression \"HEA\\(\" does not compile \\([^\\n]+\\); it counts[^\\n]*\\n"
                                     "(korodbc: note: table Profile_Exports_Conversion: in the row [^\\n]*\\n){5}"
                                     "korodbc: note: [^\\n]* of 9 rows more\\n$"))
        << outcome.err;
    EXPECT_EQ(run("map-section HEA200 --to SDNF").code, 4);
    EXPECT_EQ(run("map-section 'HEA(' --neutral").code, 0); // its plain text
}

} // namespace
