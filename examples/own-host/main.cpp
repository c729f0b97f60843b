// The library on a host of one's own: a few look-ups, then what the library relies on in every host.

#include "MapHost.h"

#include <korodbc/conformance/Conformance.h>
#include <korodbc/lookup/KorOdbcSteelBolts.h>
#include <korodbc/lookup/KorOdbcSteelPlates.h>
#include <korodbc/records/configuration/DefaultRecords.h>
#include <korodbc/repository/KorDatabaseAccess.h>
#include <korodbc/repository/KorDefaults.h>
#include <korodbc/startup/KorOdbcDSNDefinitions.h>

#include <iostream>

namespace {

constexpr eDSN configuration = KorDSNDefinitions::kConfiguration;

/// Stores a record under its key.
template <class Record>
void store(const Record& record)
{
    const RecordDescription& type = descriptionOf<Record>();
    const KorString table = KorString::fromUtf8(type.table);
    if (maphost::findTable(configuration, table) == nullptr)
        maphost::makeTable(configuration, type);
    KorCellData key(record.key);
    KorDatabaseAccess::appendNewLine(configuration, table, key, true, true);
    KorDatabaseAccess::setRecord(configuration, table, type, key, &record);
}

int lookUp()
{
    StructStandard standard;
    standard.key = 4;
    standard.runName = L"EN 14399-4";
    store(standard);
    standard.key = 2;
    standard.runName = L"EN 15048";
    store(standard);
    StructDefaultString name;
    name.key = L"Office";
    name.value = L"Hall 3, O'Brien";
    store(name);

    KorArray<KorString> standards;
    KorString key, office;
    if (kor_odbc_getStandardsList(standards) != 1 || standards.length() != 2 ||
        KorODBCScrewsDll::kor_odbc_getNormKey(L"EN 15048", key) != 1 ||
        kor_odbc_getDefault(L"Office", office) != 1)
        return 1;
    for (const KorString& one : standards)
        std::cout << one.toUtf8() << "\n";
    std::cout << "EN 15048 has key " << key.toUtf8() << "; the office is " << office.toUtf8() << "\n";
    return key == L"2" ? 0 : 1;
}

} // namespace

int main()
{
    if (KorOdbcDSNDefinitions::initOEDbConnections() != 1 || lookUp() != 0) {
        std::cerr << "own-host: a look-up failed\n";
        return 1;
    }
    for (const RecordDescription* type : conformance::scratchTables())
        maphost::makeTable(configuration, *type);
    const int broken = conformance::runConformance(
        conformance::kClaims, [](const std::string& line) { std::cerr << "own-host: " << line << "\n"; });
    std::cout << "contracts broken: " << broken << "\n";
    return broken == 0 ? 0 : 1;
}
