#include <korodbc/repository/KorDatabaseAccess.h>

#include <exception>

int KorDatabaseAccess::cellDataArr2StringArr(const KorArray<KorCellData>& values, KorArray<KorString>& out)
{
    out.removeAll();
    out.reserve(values.length());
    for (const KorCellData& value : values)
        out.append(value.getStringW());
    return 1;
}

int KorDatabaseAccess::cellDataArr2LongArr(const KorArray<KorCellData>& values, KorArray<long>& out)
{
    out.removeAll();
    for (const KorCellData& value : values)
        out.append(value.getLong());
    return 1;
}

int KorDatabaseAccess::cellDataArr2ColumnData(const KorArray<KorCellData>& values, KorColumnData& out)
{
    KorColumnData column;
    for (const KorCellData& value : values)
        column.append(value.getStringW());
    out = column;
    return 1;
}

KorDatabaseBatch::~KorDatabaseBatch()
{
    if (m_open && std::uncaught_exceptions() > m_exceptions)
        undo();
    else
        end(1);
}
