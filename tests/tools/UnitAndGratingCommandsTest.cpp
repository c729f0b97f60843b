#include "tools/CommandLine.h"

namespace {

class UnitAndGratingCommands : public CommandLine {};

} // namespace

TEST_F(UnitAndGratingCommands, PrintWhatIsAskedFor)
{
    expectPrinted({
        {"units", "\\nmoment of inertia +m4 +5  mm4, cm4, m4, in4, ft4"},
        {"units --csv", "^Kind,Base unit,Units,Symbols\\ndistance,m,9,\"mm, "},
        {"units distance", "\\n +6  Inch +in +0\\.0254  m +US +0\\.001"},
        {"units WeightPerDistance --csv", "\\n1,Kilogram per metre,kg/m,1,kg/m,metric,0\\.01\\n"},
        {"units stress ksi --json", "\"Symbol\": \"ksi\", \"Factor\": 6894757\\.293168361, \"Base unit\": \"Pa\""},
        {"units 'moment of inertia' 'inch to the fourth'", "\\n +4  Inch to the fourth +in4 +4\\.162314256e-07"},
        {"units distance --types", "\\nFeet and fractional inches +1/16 +16\\n"},
        {"units --convert 12.5 in mm", "^12\\.5 in = 317\\.5 mm\\n$"},
        {"units --convert 1e3 psi N/mm2 --csv", "^Kind,[^\\n]*\\nstress,1000,psi,6\\.89475729316836,N/mm2\\n$"},
        {"units --convert 90 '°' rad", "= 1\\.5707963267949 rad\\n$"},
        {"units 'section modulus' --convert 1 m3 cm3 --json",
         "\"Kind\": \"section modulus\".*\"Result\": 1000000"},
        {"grating", "^Series +Key\\n[- ]+\\nPressure-welded grating, plain +G\\n"},
        {"grating W", "\\n1-3/16 in +19 +30\\.1625\\n"},
        {"grating 'welded GRATING, plain' 19",
         "^Cross bar spacing +Key +Distance\\n[- ]+\\n2 in +2 +50\\.8\\n4 in "},
        {"grating W 19 4 --csv",
         "^Bearing bar thickness,Key,GratingThickness,BarThickness\\n1 x 1/8 in,1x1/8,25.4,"},
        {"grating W 19 4 1x3/16", "\\n24 in, 21 bars +24-19 +21\\n"},
        {"grating G 30 50 25x3 '500 mm, 17 bars' --json",
         "^\\[?\\s*\\{\"Cross bar\": \"Twisted bar 6 mm\", \"Key\": \"T6\""},
        {"grating G 30 50 25x3 500-30 T6", "\\nGrating +G@30@50@25x3@500-30@T6 +1\\nSeries +Pressure-welded"},
        {"grating --decompose C@33@11@30x2@500-33@F2", "\\nCross bar spacing +11\\.1 mm +11\\n"},
    });
}

TEST_F(UnitAndGratingCommands, BadInputIsRefusedInOneLine)
{
    expectRefused({
        {"units distanc", 4, "did you mean \"distance\""},
        {"units distance inhc", 4, "no unit \"inhc\" of distance .did you mean \"Inch\""},
        {"units --types", 2, "--types needs a kind"},
        {"units area m2 --types", 2, "goes with neither"},
        {"units --convert 1 in", 2, "."},
        {"units --convert 1,5 in mm", 2, "\"1,5\" is no number"},
        {"units --convert nan in mm", 2, "\"nan\" is no number"},
        {"units --convert 1e308 km mm", 2, "\"1e308\" is too large"},
        {"units --convert 1e400 km mm", 2, "\"1e400\" is too large or too small a number"},
        {"units distance --convert 1 ksi MPa", 4, "no unit \"ksi\" of distance; list"},
        {"units --convert 1 in kg", 2, "\"in\" measures distance, \"kg\" weight; only units of one kind"},
        {"units --convert 1 mN N", 4, "no unit \"mN\" .did you mean .*\"MN\""},
        {"grating Q", 4, "no series \"Q\".*korodbc grating"},
        {"grating 'Pressure-welded grating, plane'", 4, "did you mean \"Pressure-welded grating, plain\""},
        {"grating \"G' OR '1'='1\"", 4, "no series \"G' OR"},
        {"grating G 19", 4, "the choices before offer no bearing bar spacing \"19\".*: korodbc grating G"},
        {"grating G 30 50 25x3 24-19", 4, "offer no bearing bar width \"24-19\".*korodbc grating G 30 50 25x3"},
        {"grating G 30 50 25x3 500-30 T8", 4, "no cross bar \"T8\" .did you mean \"T6\""},
        {"grating G 30 50 25x3 500-30 T6 T6", 2, "."},
        {"grating --decompose G@30@50@25x3@500-30", 2, "has 5 fields, the name of a grating has six"},
        {"grating --decompose G@30x@50@25x3@500-30@T6", 2, "it would be read as \"G@30@50@25x3@500-30@T6\""},
        {"grating --decompose G@30@50@25x3@500-30@T6@", 2, "it would be read as"},
        {"grating --decompose @@@@@", 2, "has empty fields, the name of a grating has six"},
        {"grating --decompose G@30@50@25x9@500-30@T6", 4,
         "no bearing bar thickness \"25x9\" .did you mean \"25x3\""},
        {"grating G --decompose G@30@50@25x3@500-30@T6", 2, "needs no choices"},
    });
}

TEST_F(UnitAndGratingCommands, TablesThatDoNotFitAreNamed)
{
    sql(m_folder / "work/units.db",
        "DROP TABLE UnitsOfArea; UPDATE UnitsOfForce SET Factor = 0 WHERE Symbol = 'kip'");
    sql(m_folder / "work/configuration.db", "INSERT INTO CrossBar (StandardName, RunName) VALUES ('T@6', 'At 6');"
                                            "INSERT INTO BarGrating SELECT 900, SeriesName, BearingBarSpacing, "
                                            "CrossBarSpacing, BearingBarThicknessName, "
                                            "BearingBarWidthName, 'T@6', '' FROM BarGrating WHERE [Key] = 1");
    expectRefused("units", 1,
                  "table UnitsOfArea cannot be read: there is no .* in data source Units; see: korodbc status");
    expectRefused("units force --convert 1 kip kN", 1, "unit \"Kip\" of table UnitsOfForce has the factor 0");
    EXPECT_TRUE(matches(output("units force"), "Kip"));
    expectRefused("grating G 30 50 25x3 500-30 T@6", 1, "\"G@30@50@25x3@500-30@T@6\" could not be taken apart");
    const Outcome outcome = run("grating --decompose G@30@50@25x3@500-30@R8 --csv");
    EXPECT_EQ(outcome.code, 0);
    EXPECT_TRUE(matches(outcome.out, "^Part,Name,Key\\nGrating,G@30@50@25x3@500-30@R8,\\n")) << outcome.out;
    EXPECT_EQ(outcome.err, "korodbc: note: table BarGrating has no row of this combination\n");
    // what is missing is told beside an answer, which does not count as one
    sql(m_folder / "work/units.db", "ALTER TABLE UnitsOfDistance DROP COLUMN Factor");
    const Outcome guessed = run("units distance --convert 12 in mm");
    EXPECT_EQ(guessed.code, 1);
    EXPECT_TRUE(matches(guessed.err, "^korodbc: table UnitsOfDistance: no column Factor; what is said without it"))
        << guessed.err;
    sql(m_folder / "work/configuration.db", "DROP TABLE BarGrating");
    expectRefused("grating G", 1, "the choices of the bearing bar spacing cannot be read.*BarGrating");
}
