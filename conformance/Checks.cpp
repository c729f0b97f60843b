#include "conformance/Checks.h"

#include <korodbc/repository/KorDSNManager.h>

namespace conformance {

namespace {

const RecordDescription* const scratch[] = {&descriptionOf<ConformanceRow>(), &descriptionOf<ConformanceItem>(),
                                            &descriptionOf<ConformanceList>(), &descriptionOf<ConformanceName>()};

/// Empties the scratch tables, in whatever state a contract left them.
void empty()
{
    for (const RecordDescription* type : scratch) {
        KorArray<KorString> keys;
        RecordAccess::keys(*type, keys);
        for (const KorString& key : keys)
            KorDatabaseAccess::deleteLine(KorString::fromUtf8(type->table), KorCellData(key));
    }
}

} // namespace

std::span<const RecordDescription* const> scratchTables() { return scratch; }

ConformanceRow row(int key, const wchar_t* runName, int number, int sortOrder, int parts)
{
    ConformanceRow record{key, runName, number, number + 0.5, sortOrder, parts, KorArray<ConformancePart>()};
    for (int i = 0; i < parts; ++i)
        record.items.append({10 * number + i});
    return record;
}

std::string rowKeys()
{
    KorArray<long> keys;
    RecordAccess::keys(descriptionOf<ConformanceRow>(), keys);
    std::string text;
    for (const long key : keys)
        text += std::to_string(key) + " ";
    return text;
}

std::string cells(int key, const wchar_t* table)
{
    std::string text;
    const int columns = KorDatabaseAccess::getNumberOfColumns(source, table);
    for (int column = 0; column < columns; ++column) {
        KorCellData cell;
        if (KorDatabaseAccess::getTableColumnValue(source, table, L"Key", KorCellData(key), column, cell) != 1)
            return "none";
        text += (column == 0 ? "" : "|") + cell.getStringW().toUtf8();
    }
    return text;
}

int runConformance(unsigned offers, const std::function<void(const std::string& line)>& tell)
{
    const KorDSNRequest here(source, KorDSNDefinitions::kBase);
    int broken = 0;
    for (const std::span<const Contract> contracts : {tableContracts(), recordContracts()}) {
        for (const Contract& contract : contracts) {
            if ((contract.needs & ~offers) != 0)
                continue;
            Findings findings;
            contract.check(findings);
            empty();
            findings.expect(rowKeys().empty(), "the scratch tables can be emptied");
            if (findings.broken().empty())
                continue;
            tell(std::string(contract.name) + ": " + findings.broken());
            ++broken;
        }
    }
    return broken;
}

} // namespace conformance
