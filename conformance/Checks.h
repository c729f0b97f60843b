#pragma once

#include "conformance/ScratchRecords.h"

#include <korodbc/conformance/Conformance.h>
#include <korodbc/repository/KorDatabaseAccess.h>

namespace conformance {

inline constexpr eDSN source = KorDSNDefinitions::kConfiguration;
inline constexpr const wchar_t* rowTable = L"ConformanceRows";
inline constexpr const wchar_t* copyOfRows = L"ConformanceCopy";

/// What one contract finds broken.
class Findings {
public:
    void expect(bool holds, const char* what)
    {
        if (!holds)
            m_broken += (m_broken.empty() ? "" : "; ") + std::string(what);
    }
    const std::string& broken() const { return m_broken; }

private:
    std::string m_broken;
};

struct Contract {
    const char* name;
    unsigned needs;
    void (*check)(Findings& findings);
};

std::span<const Contract> tableContracts();
std::span<const Contract> recordContracts();

/// Appends a row to a scratch table and writes the record into it; 1 when both succeed.
template <class R>
int add(const R& record)
{
    const RecordDescription& type = descriptionOf<R>();
    const KorString table = KorString::fromUtf8(type.table);
    KorCellData key(record.key);
    const int appended = KorDatabaseAccess::appendNewLine(source, table, key, true, true);
    return appended == 1 ? KorDatabaseAccess::setRecord(source, table, type, key, &record) : appended;
}

/// A scratch row with as many items as `parts` says, the first 10 times its number.
ConformanceRow row(int key, const wchar_t* runName, int number = 0, int sortOrder = 0, int parts = 0);

/// The keys of the scratch rows in table order: "1 4 7 ".
std::string rowKeys();
/// The cells of the row with that key, joined by "|"; "none" without it.
std::string cells(int key, const wchar_t* table = rowTable);

} // namespace conformance
