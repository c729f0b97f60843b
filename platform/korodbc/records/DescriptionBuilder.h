#pragma once

// Turns the lists of records into their descriptions, and checks them. Included by the record sources only.

#include <korodbc/records/RecordList.h>
#include <korodbc/records/Registry.h>

#include <array>
#include <utility>

namespace records {

/// What is wrong with a list; the sentences stand in Lists.
enum class Fault {
    None,
    OtherRecord,
    Twice,
    Order,
    Layout,
    ColumnType,
    SameName,
    TwoKeys,
    TwoRunNames,
    SameRole,
    TwoLists,
    ToleratedType,
    WrittenAfterNothing,
};

/// True when a member is declared before another. Some compilers compare untyped addresses only when they are
/// asked to fold.
constexpr bool isBefore(const void* left, const void* right)
{
    return __builtin_constant_p(left < right) ? left < right : left < right;
}

constexpr bool isColumn(const Entry& entry) { return entry.kind == EntryKind::Column; }

constexpr Fault faultOfColumns(std::span<const Entry> list)
{
    std::int8_t last = -1;
    for (std::size_t i = 0; i < list.size(); ++i) {
        const Entry& one = list[i];
        if (!isColumn(one))
            continue;
        ++last;
        if (one.member.kind == MemberKind::Bytes || one.member.kind == MemberKind::List)
            return Fault::ColumnType;
        if (one.column.tolerant && one.column.kind != FieldKind::Real)
            return Fault::ToleratedType;
        for (const Entry& other : list.subspan(i + 1)) {
            if (!isColumn(other))
                continue;
            if (one.column.name == other.column.name)
                return Fault::SameName;
            if (one.column.role == other.column.role && one.column.role != ColumnRole::Value)
                return one.column.role == ColumnRole::Key       ? Fault::TwoKeys
                       : one.column.role == ColumnRole::RunName ? Fault::TwoRunNames
                                                                : Fault::SameRole;
        }
    }
    for (const Entry& one : list)
        if (one.column.writtenAfter > last)
            return Fault::WrittenAfterNothing;
    return Fault::None;
}

/// Places members one behind the other.
struct Layout {
    std::size_t end = 0, alignment = 1; // in bytes

    /// The offset of a member that follows.
    constexpr std::uint16_t add(const Member& member)
    {
        const std::size_t offset = roundedUp(end, member.alignment);
        end = offset + member.size;
        alignment = member.alignment > alignment ? member.alignment : alignment;
        return static_cast<std::uint16_t>(offset);
    }
    constexpr std::size_t size() const { return roundedUp(end, alignment); }
    static constexpr std::size_t roundedUp(std::size_t value, std::size_t to)
    {
        return (value + to - 1) / to * to;
    }
};

constexpr Fault faultOf(std::span<const Entry> list, const void* record, std::size_t size)
{
    Layout layout;
    int lists = 0;
    for (std::size_t i = 0; i < list.size(); ++i) {
        const Entry& one = list[i];
        if (one.member.record != record)
            return Fault::OtherRecord;
        for (const Entry& other : list.first(i))
            if (other.member.place == one.member.place)
                return Fault::Twice;
        if (i > 0 && !isBefore(list[i - 1].member.place, one.member.place))
            return Fault::Order;
        layout.add(one.member);
        lists += one.member.kind == MemberKind::List && one.kind != EntryKind::Unstored;
    }
    if (layout.size() != size)
        return Fault::Layout;
    return lists > 1 ? Fault::TwoLists : faultOfColumns(list);
}

/// Becomes whatever a member wants.
struct Anything {
    template <class T>
    operator T() const;
};
/// True when R has that many members, or more.
template <class R, std::size_t... I>
constexpr bool hasMembers(std::index_sequence<I...>)
{
    return requires { R{(static_cast<void>(I), Anything())...}; };
}

/// The name of a type without its namespace.
template <class R>
constexpr std::string_view nameOf()
{
    constexpr std::string_view function = __PRETTY_FUNCTION__;
    constexpr std::size_t start = function.find("R = ") + 4;
    constexpr std::string_view name = function.substr(start, function.find_first_of(";]", start) - start);
    return name.substr(name.rfind(':') + 1);
}

constexpr bool isOwned(const Entry& entry)
{
    return entry.member.kind == MemberKind::Text || entry.member.kind == MemberKind::List;
}
constexpr std::size_t count(std::span<const Entry> list, bool (*is)(const Entry&))
{
    std::size_t found = 0;
    for (const Entry& entry : list)
        found += is(entry);
    return found;
}
template <std::size_t N>
constexpr std::array<ColumnDescription, N> columnsOf(std::span<const Entry> list)
{
    std::array<ColumnDescription, N> columns;
    std::size_t next = 0;
    Layout layout;
    for (const Entry& entry : list) {
        const std::uint16_t offset = layout.add(entry.member);
        if (!isColumn(entry))
            continue;
        columns[next] = entry.column;
        columns[next++].offset = offset;
    }
    return columns;
}
template <std::size_t N>
constexpr std::array<OwnedMember, N> ownedOf(std::span<const Entry> list)
{
    std::array<OwnedMember, N> owned{};
    std::size_t next = 0;
    Layout layout;
    for (const Entry& entry : list) {
        const std::uint16_t offset = layout.add(entry.member);
        if (isOwned(entry))
            owned[next++] = {offset, entry.member.elements};
    }
    return owned;
}
/// The description that a list gives, with what was made of it.
constexpr RecordDescription describe(const Entry& table, std::string_view record, std::span<const Entry> list,
                                     std::span<const ColumnDescription> columns, const RecordElements& elements)
{
    const auto at = [&](ColumnRole role) {
        for (std::size_t i = 0; i < columns.size(); ++i)
            if (columns[i].role == role)
                return static_cast<int>(i);
        return -1;
    };
    RecordDescription d{table.record.empty() ? record : table.record,
                        table.column.name,
                        table.homes,
                        columns,
                        {},
                        {},
                        &elements,
                        at(ColumnRole::Key),
                        at(ColumnRole::RunName),
                        at(ColumnRole::Owner),
                        at(ColumnRole::SortOrder),
                        at(ColumnRole::ItemCount),
                        at(ColumnRole::ItemOwner),
                        at(ColumnRole::ItemOrder)};
    Layout layout;
    for (const Entry& entry : list) {
        const MemberList items{layout.add(entry.member), entry.member.elements};
        if (entry.kind == EntryKind::Items)
            d.items = {items, entry.item};
        else if (entry.kind == EntryKind::NumberedItems)
            d.numbered = {items, entry.columns, entry.initialItems};
        else if (entry.kind == EntryKind::NumberedReferences)
            d.numbered = {items, std::span(&entry.column, 1), entry.initialItems};
    }
    return d;
}

/// What is made of the list of R, checked.
template <class R>
struct Lists {
    static constexpr bool hasTable = listOf<R>[0].kind == EntryKind::Table;
    static constexpr std::span<const Entry> list = std::span<const Entry>(listOf<R>).subspan(hasTable ? 1 : 0);
    static constexpr Fault fault = faultOf(list, &fresh<R>, sizeof(R));
    static constexpr bool complete = !hasMembers<R>(std::make_index_sequence<list.size() + 1>());

    static_assert(std::is_aggregate_v<R> && std::is_standard_layout_v<R>, "a record is a plain struct");
    static_assert(fault != Fault::OtherRecord, "a described member belongs to another record");
    static_assert(fault != Fault::Twice, "a member of the record is described twice");
    static_assert(fault != Fault::Order, "the members are described in another order than they are declared");
    static_assert(complete, "a member of the record is not described");
    static_assert(!complete || fault != Fault::Layout,
                  "the members of the record do not lie one behind the other");
    static_assert(fault != Fault::ColumnType, "a column holds an int, a double or a KorString");
    static_assert(fault != Fault::SameName, "two columns of the record have the same name");
    static_assert(fault != Fault::TwoKeys, "the record has two keys");
    static_assert(fault != Fault::TwoRunNames, "the record has two run names");
    static_assert(fault != Fault::SameRole, "two columns of the record have the same role");
    static_assert(fault != Fault::TwoLists, "the record has two lists of items");
    static_assert(fault != Fault::ToleratedType, "only reals are compared with tolerance");
    static_assert(fault != Fault::WrittenAfterNothing,
                  "a column is written after one that the record does not have");

    static constexpr auto columns = columnsOf<count(list, isColumn)>(list);
    static constexpr auto owned = ownedOf<count(list, isOwned)>(list);
    static constexpr RecordElements elements{sizeof(R), &fresh<R>, owned};
};

template <Listed R>
struct Described<R> {
    static_assert(Lists<R>::hasTable, "the list of a record begins with its table");

    static const RecordDescription& description()
    {
        static constexpr RecordDescription constant =
            describe(listOf<R>[0], nameOf<R>(), Lists<R>::list, Lists<R>::columns, Lists<R>::elements);
        return constant;
    }
};

/// The descriptions of a source's records.
template <class... R>
inline constexpr DescriptionFunction family[] = {&Described<R>::description...};

} // namespace records
