#pragma once

#include "database/RecordCache.h"
#include "service/Service.h"

namespace korodbc::host {

/// The rows of a table that a catalogue row names, as records of the type that describes such tables; nullptr when
/// no data source has the table. The current data source is asked first.
RecordCache* recordsOfTable(const RecordDescription& type, const KorString& table);
/// Appends the rows of a SELECT statement to `records`, a KorArray of the type; result columns are matched by
/// name. Returns 1, or 0 when the statement cannot be read.
int readQuery(const RecordDescription& type, const KorString& query, void* records);
/// Run names of the records with these keys, in table order.
int namesOfKeys(RecordCache* records, const KorArray<long>& keys, KorArray<KorString>& names);

} // namespace korodbc::host
