#include "tools/CommandLine.h"

namespace {

class PreferredCommands : public CommandLine {};

TEST_F(PreferredCommands, PrintWhatIsChosenAndWhatItOffers)
{
    expectPrinted({
        {"preferred", "\\n +1 +Europe, common sizes +1 +Europe +yes +yes +[0-9]+\\n"},
        {"preferred --csv", "\\n3,\"North America, common sizes\",2,North America,yes,no,[0-9]+\\n$"},
        {"preferred --region 'north america' --json",
         "^\\[\\n +\\{\"Key\": 3, \"Profile\": \"North America[^\\n]*\\n\\]\\n$"},
        {"preferred list", "\\nbolt-diameters +Diameters that they have +--standard --strength --set\\n"},
        {"preferred list materials --kind beam", "\\nS235JR\\nS355JR\\nS355J2\\n$"},
        {"preferred list bolt-diameters --standard 'ISO 4014' --strength 8.8 --set 'Nut and washer'",
         "\\nM12\\nM16\\nM20\\nM24\\n$"},
        {"preferred list anchor-sets --standard 'DIN 529' --strength 1 --json", "\"Name\": \"Nut and washer\""},
        {"preferred list coatings --kind bolt --csv", "^Name\\nUncoated\\nHot-dip galvanised\\n$"},
        {"preferred list coatings --kind weld --region 2 --csv",
         "^Name\\n\"Shop primer, one coat\"\\nUncoated\\n$"},
        {"preferred list model-roles --kind bolt --region 2 --csv", "^Name\\nShop bolt\\nSite bolt\\n$"},
        {"preferred list section-classes --subtype Angle", "\\nAngles\\n$"},
        {"preferred list sections --class UPN --csv", "^Name\\nUPN120\\nUPN160\\nUPN200\\n$"},
        {"preferred list stud-diameters --standard 1 --material 1 --region 2 --csv", "^Name\\n$"},
    });
}

TEST_F(PreferredCommands, AChoiceIsKept)
{
    EXPECT_TRUE(matches(output("preferred choose 'europe, full range'"),
                        "^The lists use region 1 \\(Europe\\)\\nChosen for region 1 \\(Europe\\): Europe, full "
                        "range\\nChosen for region 2 \\(North America\\): North America, common sizes\\n$"));
    EXPECT_TRUE(matches(output("preferred list materials --kind beam --csv"), "\\nS460NH\\n"));
    output("preferred choose 1 2");
    EXPECT_TRUE(matches(output("preferred --csv"), "\\n1,[^\\n]*,yes,yes,.*\\n2,[^\\n]*,yes,yes,"));
    output("preferred choose --region 'North America'");
    EXPECT_EQ(output("get Settings 'Region Key' --csv"), "Key,Value\nRegion Key,2\n");
    EXPECT_TRUE(matches(output("preferred list scales --csv"), "^Name\\n\"3\"\"=1'-0\"\"\"\\n"));
    output("preferred choose 1 --region 3");
    EXPECT_EQ(run("preferred --region 3").err,
              "korodbc: note: there are no profiles of region 3 (Asia and Pacific)\n");
    EXPECT_TRUE(matches(run("preferred list scales").err,
                        "^korodbc: no profile of region 3 \\(Asia and Pacific\\) is chosen[^\\n]*\\n$"));
}

TEST_F(PreferredCommands, BadInputIsRefusedInOneLineAndChangesNothing)
{
    expectRefused({
        {"preferred chose", 2, "chose"},
        {"preferred choose", 2, "name the profiles"},
        {"preferred choose 1 --json", 2, "not with preferred choose"},
        {"preferred choose 'Europe, comon sizes'", 4, "did you mean \"Europe, common sizes\""},
        {"preferred choose 1 --region Europa", 4, "no region \"Europa\" .did you mean \"Europe\""},
        {"preferred --region 7", 4, "no region \"7\"; known: 1 Europe, 2 North America"},
        {"preferred list material --kind beam", 4, "did you mean \"materials\""},
        {"preferred list materials", 2, "needs --kind"},
        {"preferred list materials --kind baem", 4, "did you mean \"beam\""},
        {"preferred list materials --kind bolt", 2, "is for beam, plate, grating, wall, slab, footing"},
        {"preferred list scales --class IPE", 2, "takes no --class"},
        {"preferred list bolt-sets --standard 1", 2, "needs --strength"},
        {"preferred list bolt-sets --standard \"ISO 4014'\" --strength 8.8", 4, "did you mean \"ISO 4014\""},
    });
    sql(m_folder / "work" / "configuration.db", "DELETE FROM Settings");
    expectRefused("preferred list scales", 4, "no region is set");
    sql(m_folder / "work" / "addin.db", "ALTER TABLE PreferredSizesItems DROP COLUMN TypeID");
    expectRefused("preferred list scales", 1, "PreferredSizesItems.*TypeID");
    sql(m_folder / "work" / "addin.db", "DROP TABLE PreferredSizesItems");
    expectRefused("preferred list scales", 1, "PreferredSizesItems");
    sql(m_folder / "work" / "addin.db", "ALTER TABLE PreferredSizesProfiles DROP COLUMN Selected");
    expectRefused("preferred choose 1", 1, "Selected");
}

} // namespace
