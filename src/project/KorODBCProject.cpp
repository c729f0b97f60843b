#include <korodbc/project/KorODBCProject.h>
#include <korodbc/repository/KorDatabaseAccess.h>

namespace {

/// Deletes every record of the drawing's table; the number of results other than 0. All or none of it is stored.
template <class Marshal, class Record>
int deleteAll(int (*deleteOne)(const Record&))
{
    KorDatabaseBatch batch;
    KorArray<Record> all;
    {
        const KorDSNRequest request(KorODBCProject::dsn(), KorODBCProject::index());
        KorDatabaseBatch::lock(KorODBCProject::dsn());
        Marshal::getTable(all);
    }
    int count = 0;
    for (const Record& record : all)
        if (deleteOne(record) != 0)
            ++count;
    return batch.end(count);
}

} // namespace

int KorODBCProject::deleteModelSelectionApplications()
{
    return deleteAll<StructProjModelSelectionApplicationMarshal>(&deleteModelSelectionApplication);
}

int KorODBCProject::deleteModelExtracts() { return deleteAll<StructProjModelExtractMarshal>(&deleteModelExtract); }
