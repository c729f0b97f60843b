#include "service/NamedTables.h"

#include "database/Query.h"

#include <korodbc/repository/KorDatabaseAccess.h>

#include <set>
#include <utility>

namespace korodbc::host {

RecordCache* recordsOfTable(const RecordDescription& type, const KorString& name)
{
    const KorString physical = KorDatabaseAccess::getTableName(name);
    const eDSN dsn = service().dataSourceOf(physical);
    Database* database = dsn == KorDSNDefinitions::kUnresolved ? nullptr : service().database(dsn);
    if (database == nullptr || !database->flush())
        return nullptr;
    database->validate();
    Table* table = database->table(physical);
    return table == nullptr ? nullptr : table->records(type);
}

int readQuery(const RecordDescription& type, const KorString& query, void* records)
{
    const eDSN dsn = service().dataSourceOf(service().physicalName(type));
    Database* database = dsn == KorDSNDefinitions::kUnresolved ? nullptr : service().database(dsn);
    if (database == nullptr || !database->flush())
        return 0;
    const Query run(*database, query);
    Statement* select = run.statement();
    if (select == nullptr) {
        service().setError(run.error());
        return 0;
    }
    const int columns = select->columns();
    const ListOperations list = type.list();
    Step step;
    while ((step = select->step()) == Step::Row) {
        void* record = list.at(records, list.append(records, type.elements->fresh));
        for (int i = 0; i < columns; ++i) {
            const std::string_view name = select->columnName(i);
            for (const ColumnDescription& column : type.columns) {
                if (column.name != name)
                    continue;
                if (column.kind == FieldKind::Integer && !std::in_range<int>(select->integer(i))) {
                    service().setError("column " + std::string(name) + " holds a number out of range");
                    return 0;
                }
                if (column.kind == FieldKind::Integer)
                    column.integer(record) = static_cast<int>(select->integer(i));
                else if (column.kind == FieldKind::Real)
                    column.real(record) = select->real(i);
                else
                    column.text(record) = select->text(i);
            }
        }
    }
    return step == Step::Done ? 1 : 0;
}

int namesOfKeys(RecordCache* records, const KorArray<long>& keys, KorArray<KorString>& names)
{
    if (records == nullptr || records->type().runName < 0)
        return 0;
    std::set<long> positions;
    for (const long key : keys)
        if (const long position = records->findKey(key); position >= 0)
            positions.insert(position);
    names.removeAll();
    for (const long position : positions)
        names.append(records->type().runNameColumn()->text(records->at(position)));
    return 1;
}

} // namespace korodbc::host
