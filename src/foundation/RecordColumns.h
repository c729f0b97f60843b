#pragma once

#include <korodbc/records/RecordDescription.h>

namespace korodbc {

enum class ColumnOrder { ItemsLast, ItemsFirst };

/// Calls `act(column, record or item that holds it, index of the item or -1)` for every column of a record, those
/// of its items included, until it returns false; then the result is false.
template <class Record, class Act>
bool forEachColumn(const RecordDescription& type, Record* record, Act act,
                   ColumnOrder order = ColumnOrder::ItemsLast)
{
    const auto own = [&] {
        for (const ColumnDescription& column : type.columns)
            if (!act(column, record, -1L))
                return false;
        return true;
    };
    const auto items = [&] {
        const MemberList* list = type.itemList();
        if (list == nullptr)
            return true;
        const auto columns = type.numbered.exists() ? type.numbered.columns : type.items.item().columns;
        for (long i = 0; i < list->length(record); ++i)
            for (const ColumnDescription& column : columns)
                if (!act(column, list->at(record, i), i))
                    return false;
        return true;
    };
    return order == ColumnOrder::ItemsFirst ? items() && own() : own() && items();
}

} // namespace korodbc
