#pragma once

// Turns the list that stands beside a record type into its description. Included by the record sources only.

#include <korodbc/records/RecordDescription.h>

#include <algorithm>
#include <array>
#include <tuple>
#include <type_traits>

namespace records {

template <class T>
inline constexpr ListOperations listOperationsOf{
    [] { return static_cast<void*>(new KorArray<T>); },
    [](void* list) { delete static_cast<KorArray<T>*>(list); },
    [](const void* list) { return static_cast<long>(static_cast<const KorArray<T>*>(list)->length()); },
    [](void* list, long length) { static_cast<KorArray<T>*>(list)->setLogicalLength(length); },
    [](void* list, long length) { static_cast<KorArray<T>*>(list)->reserve(length); },
    [](void* list, long index) { return static_cast<void*>(&static_cast<KorArray<T>*>(list)->getAt(index)); },
    [](void* list, const void* element) {
        return static_cast<long>(static_cast<KorArray<T>*>(list)->append(*static_cast<const T*>(element)));
    },
    [](void* list, const void* from) {
        *static_cast<KorArray<T>*>(list) = *static_cast<const KorArray<T>*>(from);
    },
    [](void* list, long index) { static_cast<KorArray<T>*>(list)->deleteAt(index); },
};

template <class T>
inline constexpr RecordOperations recordOperationsOf{
    [] { return static_cast<void*>(new T); },
    [](void* record) { delete static_cast<T*>(record); },
    [](void* to, const void* from) { *static_cast<T*>(to) = *static_cast<const T*>(from); },
    listOperationsOf<T>,
};

template <class F>
struct KindOf; // no other field types: an unknown one does not compile
template <>
struct KindOf<int> : std::integral_constant<FieldKind, FieldKind::Integer> {
};
template <>
struct KindOf<double> : std::integral_constant<FieldKind, FieldKind::Real> {
};
template <>
struct KindOf<KorString> : std::integral_constant<FieldKind, FieldKind::Text> {
};

template <class M>
struct MemberParts;
template <class R, class F>
struct MemberParts<F R::*> {
    using Record = R;
    using Field = F;
};
template <auto Member>
using RecordOf = typename MemberParts<std::remove_cv_t<decltype(Member)>>::Record;
template <auto Member>
using FieldOf = typename MemberParts<std::remove_cv_t<decltype(Member)>>::Field;

template <auto Member>
void* fieldAddress(void* record)
{
    return &(static_cast<RecordOf<Member>*>(record)->*Member);
}

template <auto Member>
struct Column {
    static constexpr auto member = Member;
    using Record = RecordOf<Member>;
    using Field = FieldOf<Member>;
    ColumnDescription description;

    /// Reals of this column are compared with tolerance.
    constexpr Column tolerant() const
    {
        Column c = *this;
        c.description.tolerant = true;
        return c;
    }
    /// A value of -1 refers to nothing.
    constexpr Column noneAllowed() const
    {
        Column c = *this;
        c.description.noneAllowed = true;
        return c;
    }
    /// Nor does a value of 0.
    constexpr Column zeroIsNone() const
    {
        Column c = *this;
        c.description.zeroIsNone = true;
        return c;
    }
    /// Holds the key of a Target row of the same database, which a copy of the record does not take along.
    template <class Target>
    constexpr Column names() const
    {
        Column c = *this;
        c.description.link = LinkKind::Mention;
        c.description.target = &descriptionOf<Target>;
        return c;
    }
    /// The record store writes this column right after the column at that index.
    constexpr Column writtenAfter(int column) const
    {
        Column c = *this;
        c.description.writtenAfter = static_cast<std::int8_t>(column);
        return c;
    }
};

template <auto Member>
constexpr Column<Member> make(std::string_view name, ColumnRole role)
{
    ColumnDescription d;
    d.name = name;
    d.kind = KindOf<FieldOf<Member>>::value;
    d.role = role;
    d.field = &fieldAddress<Member>;
    return {d};
}

template <auto Member>
constexpr auto column(std::string_view name)
{
    return make<Member>(name, ColumnRole::Value);
}
template <auto Member>
constexpr auto key(std::string_view name)
{
    return make<Member>(name, ColumnRole::Key);
}
template <auto Member>
constexpr auto runName(std::string_view name)
{
    return make<Member>(name, ColumnRole::RunName);
}
template <auto Member>
constexpr auto owner(std::string_view name)
{
    return make<Member>(name, ColumnRole::Owner);
}
template <auto Member>
constexpr auto sortOrder(std::string_view name)
{
    return make<Member>(name, ColumnRole::SortOrder);
}
template <auto Member>
constexpr auto itemCount(std::string_view name)
{
    return make<Member>(name, ColumnRole::ItemCount);
}
template <auto Member>
constexpr auto itemOwner(std::string_view name)
{
    return make<Member>(name, ColumnRole::ItemOwner);
}
template <auto Member>
constexpr auto itemOrder(std::string_view name)
{
    return make<Member>(name, ColumnRole::ItemOrder);
}
/// A field that holds the key of a Target row, which a copy of the record takes along.
template <auto Member, class Target>
constexpr auto reference(std::string_view name)
{
    auto c = make<Member>(name, ColumnRole::Value);
    c.description.link = LinkKind::Reference;
    c.description.target = &descriptionOf<Target>;
    return c;
}
/// A field that holds the key of a Target row of a fixed catalogue table.
template <auto Member, class Target>
constexpr auto lookup(std::string_view name)
{
    auto c = reference<Member, Target>(name);
    c.description.link = LinkKind::Lookup;
    return c;
}

template <auto List, std::size_t N>
struct Numbered {
    static constexpr auto member = List;
    std::array<ColumnDescription, N> columns;
    int initialItems = 0;
};

/// Items that are single keys of Target rows: `KorArray<int>`.
template <auto List, class Target>
constexpr auto numberedReferences(std::string_view pattern, int initialItems)
{
    ColumnDescription d;
    d.name = pattern;
    d.link = LinkKind::Reference;
    d.target = &descriptionOf<Target>;
    d.field = [](void* element) { return element; };
    return Numbered<List, 1>{{d}, initialItems};
}
/// Items of several columns: `KorArray<Item>` with a column list of Item.
template <auto List, class... C>
constexpr auto numberedGroup(int initialItems, C... columns)
{
    return Numbered<List, sizeof...(C)>{{columns.description...}, initialItems};
}

template <auto List>
struct Items {
    static constexpr auto member = List;
};
/// Items kept in a table of their own: `KorArray<StructItem>`.
template <auto List>
constexpr Items<List> items()
{
    return {};
}

template <auto Member>
struct Unstored {
    static constexpr auto member = Member;
};
/// A member that no column holds; reads leave it at its default.
template <auto Member>
constexpr Unstored<Member> unstored()
{
    return {};
}

template <class E>
struct ElementOf;
template <class E>
struct ElementOf<KorArray<E>> {
    using type = E;
};

template <class X>
struct IsColumn : std::false_type {
};
template <auto M>
struct IsColumn<Column<M>> : std::true_type {
};
template <class X>
struct IsNumbered : std::false_type {
};
template <auto M, std::size_t N>
struct IsNumbered<Numbered<M, N>> : std::true_type {
};
template <class X>
struct IsItems : std::false_type {
};
template <auto M>
struct IsItems<Items<M>> : std::true_type {
};

template <class X>
struct IsUnstored : std::false_type {
};
template <auto M>
struct IsUnstored<Unstored<M>> : std::true_type {
};

template <auto A>
struct Tag {
};

template <class First, class... Rest>
constexpr bool allDistinct()
{
    if constexpr (sizeof...(Rest) == 0)
        return true;
    else
        return (!std::is_same_v<First, Rest> && ...) && allDistinct<Rest...>();
}

/// Size of a record that consists of exactly these fields in this order.
template <class... F>
constexpr std::size_t packedSize()
{
    std::size_t size = 0, alignment = 1;
    ((size = (size + alignof(F) - 1) / alignof(F) * alignof(F) + sizeof(F),
      alignment = std::max(alignment, alignof(F))),
     ...);
    return (size + alignment - 1) / alignment * alignment;
}

template <class R, std::size_t N, std::size_t G>
struct Description {
    std::string_view record, table;
    DataSources homes;
    std::array<ColumnDescription, N> columns{};
    std::array<ColumnDescription, G> groupColumns{};
    NumberedGroup numbered{};
    ItemTable items{};

    constexpr int find(ColumnRole role) const
    {
        for (std::size_t i = 0; i < N; ++i)
            if (columns[i].role == role)
                return static_cast<int>(i);
        return -1;
    }
    constexpr bool namesUnique() const
    {
        for (std::size_t i = 0; i < N; ++i)
            for (std::size_t j = i + 1; j < N; ++j)
                if (columns[i].name == columns[j].name)
                    return false;
        return true;
    }
    constexpr int count(ColumnRole role) const
    {
        return static_cast<int>(
            std::count_if(columns.begin(), columns.end(), [&](auto& c) { return c.role == role; }));
    }
    /// The description that the rest of the system reads; this object must outlive it.
    RecordDescription erased() const
    {
        RecordDescription d{record,
                            table,
                            homes,
                            columns,
                            numbered,
                            items,
                            &recordOperationsOf<R>,
                            find(ColumnRole::Key),
                            find(ColumnRole::RunName),
                            find(ColumnRole::Owner),
                            find(ColumnRole::SortOrder),
                            find(ColumnRole::ItemCount),
                            find(ColumnRole::ItemOwner),
                            find(ColumnRole::ItemOrder)};
        d.numbered.columns = groupColumns;
        return d;
    }
};

/// The description of record type R: its name, its table, where the table is made, and its columns in stored
/// order, which is also the order of the fields; a list of items comes last.
template <class R, class... Part>
constexpr auto describe(std::string_view record, std::string_view table, DataSources homes, Part... parts)
{
    static_assert(allDistinct<Tag<Part::member>...>(), "a member of the record is described twice");
    static_assert((std::is_same_v<RecordOf<Part::member>, R> && ...),
                  "a described member belongs to another record");
    static_assert(packedSize<FieldOf<Part::member>...>() == sizeof(R),
                  "a member of the record is not described, or the fields are declared in another order");
    constexpr std::size_t columnCount = (std::size_t{IsColumn<Part>::value} + ...);
    constexpr std::size_t groupSize = [] {
        std::size_t n = 0;
        auto count = [&]<class P>(std::type_identity<P>) {
            if constexpr (IsNumbered<P>::value)
                n = std::tuple_size_v<decltype(P::columns)>;
        };
        (count(std::type_identity<Part>{}), ...);
        return n;
    }();
    Description<R, columnCount, groupSize> d{record, table, homes};
    std::size_t next = 0;
    auto take = [&](auto part) {
        using P = decltype(part);
        if constexpr (IsColumn<P>::value) {
            d.columns[next++] = part.description;
        } else if constexpr (!IsUnstored<P>::value) {
            using Element = typename ElementOf<FieldOf<P::member>>::type;
            MemberList list{&fieldAddress<P::member>, &listOperationsOf<Element>};
            if constexpr (IsNumbered<P>::value) {
                d.groupColumns = part.columns;
                d.numbered.list = list;
                d.numbered.initialItems = part.initialItems;
            } else {
                d.items.list = list;
                d.items.item = &descriptionOf<Element>;
            }
        }
    };
    (take(parts), ...);
    return d;
}

/// The description that a list such as describe() makes, given as a function without captures. It lives as long as
/// the program.
template <class List>
const RecordDescription& described(List)
{
    static constexpr auto list = List{}();
    static_assert(list.namesUnique(), "two columns of the record have the same name");
    static_assert(list.count(ColumnRole::Key) <= 1, "the record has two keys");
    static_assert(list.count(ColumnRole::RunName) <= 1, "the record has two run names");
    static const RecordDescription description = list.erased();
    return description;
}

/// Tables of the detail databases: base details, add-in details, country add-ins, and exported detail files.
inline constexpr DataSources inDetails{
    KorDSNDefinitions::kDetails, KorDSNDefinitions::kAddin, KorDSNDefinitions::kCountryAddin};
/// Fixed catalogue tables that detail records name rows of; they stay with the base details.
inline constexpr DataSources inDetailCatalogue{KorDSNDefinitions::kDetails};
inline constexpr DataSources inConfiguration{KorDSNDefinitions::kConfiguration};
inline constexpr DataSources inConfigurationAndAddin{
    KorDSNDefinitions::kConfiguration, KorDSNDefinitions::kAddin, KorDSNDefinitions::kCountryAddin};

} // namespace records
