// What a modelling command asks of the catalogue: a section's values, the bolts of a standard, a weld's text, and
// a table that the user added.

#include <korodbc/edit/KorOdbcMan.h>
#include <korodbc/host/EmbeddedHost.h>
#include <korodbc/lookup/KorOdbcSteelBolts.h>
#include <korodbc/lookup/KorOdbcSteelPlates.h>
#include <korodbc/lookup/KorOdbcSteelSections.h>
#include <korodbc/lookup/KorOdbcSteelWelding.h>
#include <korodbc/lookup/KorOdbcUserTables.h>
#include <korodbc/repository/KorDatabaseAccess.h>
#include <korodbc/startup/KorOdbcDSNDefinitions.h>

#include <iostream>

namespace {

int section(const KorString& internalName)
{
    KorArray<double> values;
    KorString material;
    if (kor_odbc_getSectionCalculationParams(values, internalName) != 1 ||
        kor_odbc_getMaterialForSectionClass(internalName, material) != 1)
        return 1;
    std::cout << internalName.toUtf8() << ": h " << values[0] << " mm, mass " << values[6] << " kg/m, "
              << material.toUtf8() << "\n";
    return 0;
}

int lists()
{
    KorArray<KorString> standards, thicknesses;
    if (kor_odbc_getStandardsList(standards) != 1 || kor_odbc_getPlateThicknessList(thicknesses) != 1)
        return 1;
    std::cout << standards.length() << " bolt standards, the first is " << standards[0].toUtf8() << "\n"
              << thicknesses.length() << " plate thicknesses, the first is " << thicknesses[0].toUtf8() << "\n"
              << "weld 1: " << kor_odbc_getWeldingDescription(1).toUtf8() << "\n";
    return 0;
}

/// A combo box over a table of the user's own.
int userTable()
{
    KorDatabaseAccess::doSQLStatement(
        KorDSNDefinitions::kConfiguration,
        L"CREATE TABLE Workshops ([Key] INTEGER PRIMARY KEY, RunName TEXT, Number INTEGER)");
    KorDatabaseAccess::doSQLStatement(KorDSNDefinitions::kConfiguration,
                                      L"INSERT INTO Workshops VALUES (7, 'Hall 3, O''Brien', 12)");
    KorArray<long> numbers;
    KorArray<KorString> names;
    int key = 0;
    if (kor_odbc_getUserComboBoxList(L"Workshops", numbers, names) != 1 ||
        kor_odbc_getUserComboBoxKey(names[0], L"Workshops", key) != 1)
        return 1;
    std::cout << names[0].toUtf8() << " has key " << key << " and number " << numbers[0] << "\n";
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::cerr << "usage: lookups NEW-FOLDER\n";
        return 2;
    }
    std::string error;
    if (!korodbc::host::buildRepository(argv[1], CATALOGUE, {}, {}, error) ||
        !korodbc::host::openRepository(argv[1], error)) {
        std::cerr << "lookups: " << error << "\n";
        return 1;
    }
    KorOdbcDSNDefinitions::initOEDbConnections();
    KorOdbcMan::initializeTables();
    const int failed = section(L"IPE@ipe200") + section(L"HEA@HEA300") + lists() + userTable();
    if (failed != 0)
        std::cerr << "lookups: " << korodbc::host::lastError() << "\n";
    korodbc::host::closeRepository();
    return failed == 0 ? 0 : 1;
}
