#include <korodbc/records/configuration/DefaultRecords.h>
#include <korodbc/repository/KorDatabaseAccess.h>
#include <korodbc/repository/KorDefaults.h>
#include <korodbc/repository/KorDSNManager.h>

namespace {

template <class Record, class Value>
int defaultIn(eDSN dsn, eIndex index, const KorString& key, Value& value)
{
    const KorDSNRequest request(dsn, index);
    Record record;
    const int result = RecordMarshal<Record>::getStructByKey(key, record);
    if (result == 1)
        value = record.value;
    return result;
}

template <class Record, class Value>
int defaultOf(const KorString& key, Value& value)
{
    return defaultIn<Record>(KorDSNDefinitions::kConfiguration, KorDSNDefinitions::kBase, key, value);
}

template <class Record, class Value>
int drawingDefaultOf(const KorString& key, Value& value)
{
    const int result =
        defaultIn<Record>(KorDSNDefinitions::kProject, KorDSNSetDwgSource::GeteIndexForDwg(), key, value);
    return result == 1 ? result : defaultOf<Record>(key, value);
}

} // namespace

int kor_odbc_getDefault(const KorString& key, KorString& value)
{
    return defaultOf<StructDefaultString>(key, value);
}
int kor_odbc_getDefault(const KorString& key, int& value) { return defaultOf<StructDefaultInteger>(key, value); }
int kor_odbc_getDefault(const KorString& key, double& value) { return defaultOf<StructDefaultReal>(key, value); }

int kor_odbc_getDwgDataDefault(const KorString& key, KorString& value)
{
    return drawingDefaultOf<StructDefaultString>(key, value);
}
int kor_odbc_getDwgDataDefault(const KorString& key, int& value)
{
    return drawingDefaultOf<StructDefaultInteger>(key, value);
}
int kor_odbc_getDwgDataDefault(const KorString& key, double& value)
{
    return drawingDefaultOf<StructDefaultReal>(key, value);
}

int kor_odbc_setDefault(const KorString& key, int value)
{
    const KorDSNRequest request(KorDSNDefinitions::kConfiguration, KorDSNDefinitions::kBase);
    const KorString table(L"Default_INT");
    if (KorDatabaseAccess::checkTable(KorDSNDefinitions::kConfiguration, descriptionOf<StructDefaultInteger>(),
                                      true) != 1)
        return 0; // its columns stand elsewhere
    KorDatabaseBatch batch;
    int known = 0;
    int result = 1;
    if (kor_odbc_getDefault(key, known) != 1) {
        KorCellData cell(key);
        result = KorDatabaseAccess::appendNewLine(KorDSNDefinitions::kConfiguration, table, cell, true, true);
    }
    if (result == 1)
        result = KorDatabaseAccess::setTableColumnValue(KorDSNDefinitions::kConfiguration, table, L"Key", key, 1,
                                                        KorCellData(value));
    return result == 1 ? batch.end(1) : batch.undo(result);
}
