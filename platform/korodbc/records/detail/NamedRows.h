#pragma once

#include <korodbc/records/DescriptionBuilder.h>

namespace records {

/// The description of a catalogue table that has a key and a run name only. Included by the record sources only.
template <class R>
const RecordDescription& namedRows(std::string_view record, std::string_view table)
{
    static const auto list =
        describe<R>(record, table, inDetailCatalogue, key<&R::key>("Key"), runName<&R::runName>("RunName"));
    static const RecordDescription description = list.erased();
    return description;
}

} // namespace records
