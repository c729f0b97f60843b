#include "foundation/ResolvedTable.h"

#include <korodbc/repository/KorDatabaseAccess.h>

korodbc::ResolvedTable korodbc::resolveTable(const KorString& logical)
{
    constexpr int longestChain = 8; // aliases in a circle lead nowhere
    ResolvedTable table{logical};
    for (int i = 0; i <= longestChain; ++i) {
        const KorString name = table.name;
        if (KorDatabaseAccess::getDSNandTableName(name, table.name, table.dsn) != 1 ||
            table.dsn != KorDSNDefinitions::kUnresolved)
            break;
    }
    return table;
}
