#include "foundation/ResolvedTable.h"

#include <korodbc/maintenance/KorOdbcGUI.h>
#include <korodbc/repository/KorDatabaseAccess.h>

using namespace korodbc;

namespace {
const wchar_t* const toolbars = L"Toolbars";
} // namespace

int KorOdbcGUI::getToolbarInformation(const KorOdbcKey& key, StructToolbarsTable& toolbar)
{
    return StructToolbarsTableMarshal::getStructByKey(key.getKey(), toolbar);
}

int KorOdbcGUI::putToolbarInformation(const StructToolbarsTable& toolbar)
{
    const KorString key = KorString::format(L"%d", toolbar.key);
    const KorCellData values[] = {toolbar.runName,  toolbar.toolTip, toolbar.parent,
                                  toolbar.position, toolbar.visible, toolbar.docking};
    if (KorDatabaseAccess::checkTable(KorDSNDefinitions::kToolbars, StructToolbarsTableMarshal::type(), true) != 1)
        return 0; // its columns stand elsewhere
    KorDatabaseBatch batch;
    int result = 0;
    int column = 0;
    for (const KorCellData& value : values)
        result = KorDatabaseAccess::setTableColumnValue(KorDSNDefinitions::kToolbars, resolveTable(toolbars).name,
                                                        L"Key", key, ++column, value);
    return batch.end(result);
}

int KorOdbcGUI::reopenMenu()
{
    KorDatabaseBatch batch;
    const int deleted = deleteTableInformation(toolbars);
    const int result = KorDatabaseAccess::doSQLStatement(resolveTable(toolbars).dsn,
                                                         L"INSERT INTO [Toolbars] SELECT * FROM ToolbarsDefault");
    StructToolbarsTableMarshal::resetTableCache(0);
    return result == 1 && deleted == 1 ? batch.end(1) : batch.undo(result == 1 ? 0 : result);
}
