#include "tools/CommandLine.h"

namespace {

class RuleCommands : public CommandLine {};

} // namespace

TEST_F(RuleCommands, SayWhatAppliesAndWhy)
{
    expectPrinted({
        {"prefix Beam --role column",
         "\\np +C +c +main +exact: this role, no subtype +2 +Column .*Standard +Configuration\\n"},
        {"prefix 1 --subtype 'Round TUBE' --json",
         "\"Main part\": \"R\".*\"Level\": \"any role, this subtype\", \"Key\": 14"},
        {"prefix plate --role Stiffener --subtype 'round TUBE' --csv",
         "\\nst,ST,st,main,\"?this role, any subtype\"?,10,"},
        {"prefix Beam --role Column --subtype 'I section, parallel flanges' --profile 'by section family' --csv",
         "\\ni,IC,ic,add-in,\"exact: this role, this subtype\",2,.*,By section family,Addin\\n"},
        {"views Column section", "\\nsection +always +End plates and base plates +11 .* Details\\n"},
        {"views Purlin back --csv", "\\nback,[^\\n]*,all but Small parts,9,Back view unless small,Details\\n$"},
        {"views 'railing post' --json",
         "\"View\": \"front\", \"Necessary\": \"always\", \"For objects of\": \"any set\""},
        {"explode",
         "^Explode settings are used\\.\\n.*[^]*\\nBeam +Solid +0 +Lines +0 +Text +0 +Configuration\\n"},
        {"explode Beam mark --csv", "^[^\\n]*\\nMark,EXPLODE-BEAM-MARK,7,ByLayer,0,3,Configuration,yes\\n$"},
        {"explode Cope --csv", "\\nMark,ExplodeDefaultLayer,253,ByLayer,1,-1,fallback,yes\\n"},
        {"explode Bolts Shape", "^Explode settings are used\\.\\n[^]*\\nShape +EXPLODE-BOLT "},
        {"views Beam section --from Addin --csv",
         "\\nsection,when it shows dimensions,any set,3,[^\\n]*,Addin\\n$"},
        {"drawing-prefixes", "^There are no numbering prefixes in the drawing\\.\\n$"},
        {"prefix-profiles --csv", "\\n1,Standard,yes,0\\n2,By section family,no,5\\n"},
    });
    EXPECT_EQ(output("explode off"), "Explode settings are not used.\n");
    EXPECT_TRUE(matches(output("explode Beam"), "^Explode settings are not used\\.\\n"));
    EXPECT_TRUE(matches(output("explode --json"), "\"Used\": \"no\"\\}\\n\\]\\n$"));
    for (const auto& [arguments, what] :
         {std::pair("Beam --role Colum", "model role \"Colum\" (did you mean \"Column\"?)"),
          std::pair("Beam --subtype Foo", "profile subtype \"Foo\"")}) {
        const Outcome unknown = run(std::string("prefix ") + arguments);
        EXPECT_EQ(unknown.code, 0);
        EXPECT_EQ(unknown.err, std::string("korodbc: note: there is no ") + what + "\n");
    }
    EXPECT_EQ(output("get Default_INT C40_UseExplodeSettings --csv"), "Key,Value\nC40_UseExplodeSettings,0\n");
    sql(m_folder / "work/addins/no.db",
        "INSERT INTO NecessaryViewsConfiguration VALUES (4, 'ours', 4, -1, 0, -1, 0, 2, '')");
    EXPECT_TRUE(matches(output("views Beam --from no --csv"),
                        "^[^\\n]*\\nsection,when it shows dimensions,any set,4,ours,CountryAddin Norway\\n$"));
    EXPECT_TRUE(matches(output("views Beam front"), " Details\\n"));
    output("views Beam section --from Norway --keep");
    EXPECT_TRUE(matches(output("views Beam section --csv"), ",ours,CountryAddin Norway\\n$"));
    output("prefix-profiles 'by section FAMILY'");
    EXPECT_TRUE(matches(output("prefix-profiles --csv"),
                        "\\n1,Standard,no,0\\n2,By section family,yes,5\\n3,[^\\n]*,no,"));
    EXPECT_EQ(output("drawing-prefixes add --type beam --role COLUMN --main \"it's\""),
              "Added numbering prefix 1 to the drawing.\n");
    EXPECT_TRUE(
        matches(output("prefix Beam --role Column --csv"), "\\n,it's,,drawing,\"exact: this role, no sub"));
    EXPECT_TRUE(matches(output("drawing-prefixes --csv"), "\\n1,Beam,COLUMN,,,,it's,\\n$"));
    EXPECT_EQ(output("drawing-prefixes delete 1"), "Deleted numbering prefix 1 from the drawing.\n");
    sql(m_folder / "work/project.db",
        "DROP TABLE NumberingPrefix; CREATE TABLE NumberingPrefix AS SELECT 7 AS Key, 'COLUMN' AS ModelRole, "
        "'own' AS "
        "SinglePartPrefix, '' AS MainPartPrefix, '' AS OwnerText, 1 AS ObjectType, -1 AS "
        "Profile, '' AS ProfileSubtype, '' AS PreliminaryPartPrefix");
    EXPECT_TRUE(matches(output("prefix Beam --role Column --csv"),
                        "\\nown,,,drawing,\"exact: this role, no subtype\",7,COLUMN,,,Project\\n"));
}

TEST_F(RuleCommands, BadInputIsRefusedInOneLineAndChangesNothing)
{
    expectRefused({
        {"prefix Beem", 4,
         "there is no object type \"Beem\" \\(did you mean \"Beam\"\\?\\); list them with: korodbc list "
         "ObjectType"},
        {"prefix Beam --profile standart", 4, "did you mean \"Standard\""},
        {"prefix Bolt --role \"it's\"", 4, "no numbering prefix applies to \"Bolt\" in the role \"it's\""},
        {"prefix", 2, "TYPE is required"},
        {"views Colum", 4, "there is no beam type \"Colum\" \\(did you mean \"Column\"\\?\\)"},
        {"views Column sektion", 4,
         "there is no view type \"sektion\" \\(did you mean \"section\"\\?\\); there are: front, top"},
        {"views Column --from Units", 2, "not in Units; name one of these with --from"},
        {"views Column --from Sweden", 4, "there is no data source \"Sweden\".*init FOLDER --country"},
        {"views Beam --from Norway", 4, "no rule of CountryAddin Norway is for a view of \"Beam\""},
        {"views Beam --from Norway --keep", 4, "of \"Beam\"; the setting stays as it was"},
        {"drawing-prefixes add", 2, "with --type"},
        {"drawing-prefixes add --type Beam", 2, "give the prefix with --single"},
        {"drawing-prefixes add --type Beem --main B", 4, "did you mean \"Beam\""},
        {"drawing-prefixes add --type Beam --main B --profile Foo", 4, "list them with: korodbc prefix-profiles"},
        {"drawing-prefixes add --type Beam --main B --json", 2, "--csv and --json go with"},
        {"drawing-prefixes delete", 2, "give the key"},
        {"drawing-prefixes delete 1", 4, "no numbering prefix \"1\" in the drawing"},
        {"drawing-prefixes --main B", 2, "--main goes with drawing-prefixes add"},
        {"prefix-profiles Standart", 4, "did you mean \"Standard\""},
        {"views Beam --keep", 2, "--keep goes with --from"},
        {"explode Beam Shap", 4, "there is no object sub-type \"Shap\" \\(did you mean \"Shape\"\\?\\)"},
        {"explode on Shape", 2, "takes no sub-type"},
        {"explode off --json", 2, "--csv and --json go with"},
    });
    sql(m_folder / "work/details.db", "DROP TABLE NecessaryViewsConfiguration");
    expectRefused("views Beam", 1, "table NecessaryViewsConfiguration cannot be read: .*; see: korodbc status");
    sql(m_folder / "work/configuration.db", "UPDATE NumberingPrefix SET ObjectType = 'x' WHERE Key = 3");
    sql(m_folder / "work/configuration.db",
        "UPDATE Settings SET Value = 'Sweden_1/kDetailsCurrent' WHERE Key LIKE '%Views%'");
    expectRefused("views Beam", 4, "\"Sweden_1/kDetailsCurrent\" names a country add-in that is not installed");
    sql(m_folder / "work/addin.db", "INSERT INTO ObjectStructure VALUES (1, 'x', 1)");
    expectRefused("explode Beam", 1, "table ObjectStructure cannot be read: ");
    fs::remove(m_folder / "work/project.db");
    expectRefused("prefix Plate", 3, "the file is missing");
    fs::copy(s_made / "pristine/work/project.db", m_folder / "work/project.db");
    expectRefused("prefix Beam", 1, "table NumberingPrefix cannot be read: .*ObjectType");
}
