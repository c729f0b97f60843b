#pragma once

// The list of a record type: which members it has, and the columns of its table that they are bound to. One
// constant in the record's source:
//
//     template <std::same_as<StructObjectGroup> R>
//     constexpr Entry listOf<R>[] = {
//         table("ObjectGroup", inConfiguration),
//         key(&R::key, "Key"),
//         runName(&R::runName, "RunName"),
//     };
//
// Its columns stand in stored order, which is also the order of the members; every member has one entry. What a
// record's `KorArray` holds has a list in the same source, without a table when it is no record.

#include <korodbc/records/RecordDescription.h>

#include <concepts>
#include <type_traits>

namespace records {
struct Entry;
}

/// The list of record type R.
template <class R>
inline constexpr records::Entry* listOf = nullptr;

namespace records {

template <class R>
concept Listed = std::is_array_v<decltype(listOf<R>)>;

/// A new record. It is a constant: a record type's texts and lists begin empty.
template <class R>
inline constexpr R fresh = R();

template <class R>
struct Lists;

enum class MemberKind : std::uint8_t { Bytes, Integer, Real, Text, List };

/// A member of a record whose type is told by values.
struct Member {
    const void* place = nullptr; // in the new record
    const void* record = nullptr;
    std::uint16_t size = 0, alignment = 1; // in bytes
    MemberKind kind = MemberKind::Bytes;
    const KorElements* elements = nullptr; // of a list

    constexpr Member() = default;
    template <class R, class F>
    constexpr Member(F R::*member)
        : place(&(fresh<R>.*member)), record(&fresh<R>), size(sizeof(F)), alignment(alignof(F))
    {
        if constexpr (std::same_as<F, int>)
            kind = MemberKind::Integer;
        else if constexpr (std::same_as<F, double>)
            kind = MemberKind::Real;
        else if constexpr (std::same_as<F, KorString>)
            kind = MemberKind::Text;
        else
            static_assert(std::is_trivially_copyable_v<F>,
                          "a record holds texts, lists of plain values or of described records, and plain values");
    }
    template <class R, class E>
    constexpr Member(KorArray<E> R::*member)
        : place(&(fresh<R>.*member)), record(&fresh<R>), size(sizeof(KorArray<E>)),
          alignment(alignof(KorArray<E>)), kind(MemberKind::List)
    {
        if constexpr (std::is_trivially_copyable_v<E> && !Listed<E>)
            elements = &korElements<E>;
        else {
            static_assert(Listed<E>, "the record has a list of what is not described in its source");
            elements = &Lists<E>::elements;
        }
    }
};

enum class EntryKind : std::uint8_t { Table, Column, Items, NumberedItems, NumberedReferences, Unstored };

/// One line of a list.
struct Entry {
    EntryKind kind = EntryKind::Unstored;
    Member member = {};
    ColumnDescription column = {};                   // the table's name in the entry of a table
    DataSources homes = {};                          // of the table
    std::string_view record = {};                    // its record, if that has not the name of its type
    const RecordDescription& (*item)() = nullptr;    // of items in a table
    std::span<const ColumnDescription> columns = {}; // of numbered items
    int initialItems = 0;                            // numbered ones

    /// Reals of this column are compared with tolerance.
    constexpr Entry& tolerant()
    {
        column.tolerant = true;
        return *this;
    }
    /// A value of -1 refers to nothing.
    constexpr Entry& noneAllowed()
    {
        column.noneAllowed = true;
        return *this;
    }
    /// Nor does a value of 0.
    constexpr Entry& zeroIsNone()
    {
        column.zeroIsNone = true;
        return *this;
    }
    constexpr Entry& inRole(ColumnRole role)
    {
        column.role = role;
        return *this;
    }
    /// The record store writes this column right after the column at that index.
    constexpr Entry& writtenAfter(int index)
    {
        column.writtenAfter = static_cast<std::int8_t>(index);
        return *this;
    }
};

/// The name of the table, and the data sources in which it is made.
constexpr Entry table(std::string_view name, DataSources homes, std::string_view record = {})
{
    return {EntryKind::Table, {}, {name}, homes, record};
}

constexpr Entry column(const Member& member, std::string_view name, ColumnRole role = ColumnRole::Value)
{
    constexpr FieldKind kinds[] = {
        FieldKind::Integer, FieldKind::Integer, FieldKind::Real, FieldKind::Text, FieldKind::Integer};
    return {EntryKind::Column, member, {name, kinds[static_cast<int>(member.kind)], role}};
}
constexpr Entry key(const Member& member, std::string_view name) { return column(member, name, ColumnRole::Key); }
constexpr Entry runName(const Member& member, std::string_view name)
{
    return column(member, name, ColumnRole::RunName);
}
constexpr Entry owner(const Member& member, std::string_view name)
{
    return column(member, name, ColumnRole::Owner);
}
constexpr Entry sortOrder(const Member& member, std::string_view name)
{
    return column(member, name, ColumnRole::SortOrder);
}
constexpr Entry itemCount(const Member& member, std::string_view name)
{
    return column(member, name, ColumnRole::ItemCount);
}
constexpr Entry itemOwner(const Member& member, std::string_view name)
{
    return column(member, name, ColumnRole::ItemOwner);
}
constexpr Entry itemOrder(const Member& member, std::string_view name)
{
    return column(member, name, ColumnRole::ItemOrder);
}

constexpr Entry link(Entry entry, LinkKind kind, const RecordDescription& (*target)())
{
    entry.column.link = kind;
    entry.column.target = target;
    return entry;
}
/// Holds the key of a Target row, which a copy of the record takes along.
template <class Target>
constexpr Entry reference(const Member& member, std::string_view name)
{
    return link(column(member, name), LinkKind::Reference, &descriptionOf<Target>);
}
/// Holds the key of a Target row of a fixed catalogue table.
template <class Target>
constexpr Entry lookup(const Member& member, std::string_view name)
{
    return link(column(member, name), LinkKind::Lookup, &descriptionOf<Target>);
}
/// Holds the key of a Target row of the same database, which a copy of the record does not take along.
template <class Target>
constexpr Entry names(const Member& member, std::string_view name)
{
    return link(column(member, name), LinkKind::Mention, &descriptionOf<Target>);
}

/// Items kept in a table of their own.
template <class R, class Item>
constexpr Entry items(KorArray<Item> R::*list)
{
    return {.kind = EntryKind::Items, .member = list, .item = &descriptionOf<Item>};
}
/// Items of one or several columns that stand in the record's row; a newly made table has columns for that many.
template <class R, class Item>
constexpr Entry numberedItems(KorArray<Item> R::*list, int initialItems)
{
    return {.kind = EntryKind::NumberedItems,
            .member = list,
            .columns = Lists<Item>::columns,
            .initialItems = initialItems};
}
/// The same for items that are single keys of Target rows.
template <class Target, class R>
constexpr Entry numberedReferences(KorArray<int> R::*list, std::string_view pattern, int initialItems)
{
    Entry entry =
        link({EntryKind::NumberedReferences, list, {pattern}}, LinkKind::Reference, &descriptionOf<Target>);
    entry.initialItems = initialItems;
    return entry;
}

/// A member that no column holds; reads leave it at its default.
constexpr Entry unstored(const Member& member) { return {EntryKind::Unstored, member, {}}; }

/// Tables of the detail databases: base details, add-in details, country add-ins, and exported detail files.
inline constexpr DataSources inDetails{
    KorDSNDefinitions::kDetails, KorDSNDefinitions::kAddin, KorDSNDefinitions::kCountryAddin};
/// Fixed catalogue tables that detail records name rows of; they stay with the base details.
inline constexpr DataSources inDetailCatalogue{KorDSNDefinitions::kDetails};
inline constexpr DataSources inConfiguration{KorDSNDefinitions::kConfiguration};
inline constexpr DataSources inConfigurationAndAddin{
    KorDSNDefinitions::kConfiguration, KorDSNDefinitions::kAddin, KorDSNDefinitions::kCountryAddin};

} // namespace records
