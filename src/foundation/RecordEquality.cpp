#include "RecordEquality.h"

namespace korodbc {

namespace {

bool equalColumns(std::span<const ColumnDescription> columns, const void* a, const void* b)
{
    for (const ColumnDescription& column : columns) {
        if (column.role == ColumnRole::Key || column.role == ColumnRole::ItemOwner)
            continue;
        switch (column.kind) {
        case FieldKind::Integer:
            if (column.integer(a) != column.integer(b))
                return false;
            break;
        case FieldKind::Real:
            if (!(column.real(a) == column.real(b)))
                return false;
            break;
        case FieldKind::Text:
            if (!(column.text(a) == column.text(b)))
                return false;
            break;
        }
    }
    return true;
}

} // namespace

bool equalRecords(const RecordDescription& type, const void* a, const void* b)
{
    if (!equalColumns(type.columns, a, b))
        return false;
    const MemberList* list = type.itemList();
    if (list == nullptr)
        return true;
    const auto columns = type.numbered.exists() ? type.numbered.columns : type.items.item().columns;
    if (list->length(a) != list->length(b))
        return false;
    for (long i = 0; i < list->length(a); ++i)
        if (!equalColumns(columns, list->at(a, i), list->at(b, i)))
            return false;
    return true;
}

} // namespace korodbc
