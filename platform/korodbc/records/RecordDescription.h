#pragma once

#include <korodbc/repository/KorDSNDefinitions.h>
#include <korodbc/roots/KorArray.h>
#include <korodbc/roots/KorString.h>

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

/// What the library and the host know about a record type: one description per type, read by every operation.
struct RecordDescription;

namespace records {

/// Holds the description of a record type; the source with the record's list defines it.
template <class R>
struct Described {
    static const RecordDescription& description();
};

} // namespace records

/// The description of record type T.
template <class T>
const RecordDescription& descriptionOf()
{
    return records::Described<T>::description();
}

enum class FieldKind : std::uint8_t { Integer, Real, Text }; // int, double, KorString

enum class ColumnRole : std::uint8_t {
    Value,
    Key,       // the row's key
    RunName,   // the name that users see and choose by
    Owner,     // text of the owner that wrote the row
    SortOrder, // position in ordered lists
    ItemCount, // number of items of the record, kept beside the items
    ItemOwner, // in an item table: key of the record that owns the item
    ItemOrder, // in an item table: position of the item, counted from 0
};

enum class LinkKind : std::uint8_t {
    None,
    Reference, // the row belongs to what a copy of the record takes along
    Lookup,    // names a row of a fixed catalogue table; checked, never copied
    Mention,   // names a row of the same database; checked and redirected, but a copy leaves that row behind
};

/// One column of a table, bound to a field of its record.
struct ColumnDescription {
    std::string_view name; // of a numbered column: the pattern, "Request%d"
    FieldKind kind = FieldKind::Integer;
    ColumnRole role = ColumnRole::Value;
    LinkKind link = LinkKind::None;
    bool tolerant = false;    // reals within 1e-10 count as equal
    bool noneAllowed = false; // a reference of -1 means: refers to nothing
    bool zeroIsNone = false;  // so does 0
    // index of the column after which the record store writes this one, -1: in order
    std::int8_t writtenAfter = -1;
    std::uint16_t offset = 0;                       // of the field in the record, in bytes
    const RecordDescription& (*target)() = nullptr; // of a link

    void* field(void* record) const { return static_cast<std::byte*>(record) + offset; }
    /// True when the column holds keys, or the text keys, of rows of the same database.
    bool namesRows() const { return link == LinkKind::Reference || link == LinkKind::Mention; }
    /// True for a value of a link that names no row; a look-up of -1 chooses nothing.
    bool isNone(int value) const
    {
        return (value == -1 && (noneAllowed || link == LinkKind::Lookup)) || (value == 0 && zeroIsNone);
    }
    int& integer(void* record) const { return *static_cast<int*>(field(record)); }
    double& real(void* record) const { return *static_cast<double*>(field(record)); }
    KorString& text(void* record) const { return *static_cast<KorString*>(field(record)); }
    int integer(const void* record) const { return integer(const_cast<void*>(record)); }
    double real(const void* record) const { return real(const_cast<void*>(record)); }
    const KorString& text(const void* record) const { return text(const_cast<void*>(record)); }
};

/// A text or a list of a record; all else in it is copied as bytes.
struct OwnedMember {
    std::uint16_t offset;        // in bytes
    const KorElements* elements; // of the list; nullptr for a text
};

/// How records are kept in arrays and alone.
struct RecordElements : KorElements {
    const void* fresh; // a new record, which owns nothing yet
    std::span<const OwnedMember> owned;

    constexpr RecordElements(std::size_t bytes, const void* newRecord, std::span<const OwnedMember> members)
        : KorElements{bytes,
                      makeRecords,
                      members.empty() ? nullptr : copyRecords,
                      nullptr,
                      members.empty() ? nullptr : destroyRecords},
          fresh(newRecord), owned(members)
    {
    }

private:
    static void makeRecords(const KorElements& type, void* first, long count);
    static void copyRecords(const KorElements& type, void* to, const void* from, long count);
    static void destroyRecords(const KorElements& type, void* first, long count);
};

/// Operations on a `KorArray<E>` whose element type is known only to its description. Results are those of
/// `KorArray`.
class ListOperations {
public:
    explicit constexpr ListOperations(const KorElements& elements) : m_elements(&elements) {}

    long length(const void* list) const { return static_cast<const KorAnyArray*>(list)->length(); }
    void resize(void* list, long length) const { of(list).setLogicalLength(*m_elements, length); }
    void reserve(void* list, long length) const { of(list).reserve(*m_elements, length); } // room for growing
    void* at(void* list, long index) const { return of(list).getAt(*m_elements, index); }
    long append(void* list, const void* element) const { return of(list).append(*m_elements, element); }
    void assign(void* list, const void* from) const
    {
        of(list).assign(*m_elements, *static_cast<const KorAnyArray*>(from));
    }
    void erase(void* list, long index) const { of(list).deleteAt(*m_elements, index); }

private:
    static KorAnyArray& of(void* list) { return *static_cast<KorAnyArray*>(list); }

    const KorElements* m_elements;
};

/// A `KorArray` member of a record.
struct MemberList {
    std::uint16_t offset = 0; // in bytes
    const KorElements* elements = nullptr;

    ListOperations operations() const { return ListOperations(*elements); }
    void* field(void* record) const { return static_cast<std::byte*>(record) + offset; }
    long length(const void* record) const { return operations().length(field(const_cast<void*>(record))); }
    void resize(void* record, long length) const { operations().resize(field(record), length); }
    void* at(void* record, long index) const { return operations().at(field(record), index); }
    const void* at(const void* record, long index) const { return at(const_cast<void*>(record), index); }
    void append(void* record, const void* element) const { operations().append(field(record), element); }
    void erase(void* record, long index) const { operations().erase(field(record), index); }
};

/// Columns that repeat per item at the end of the row ("Request1", "Request2", ...). Item i takes the columns
/// whose names have its number, counted from 1.
struct NumberedGroup {
    MemberList list;
    std::span<const ColumnDescription> columns;
    int initialItems = 0; // items for which a newly made table has columns

    bool exists() const { return list.elements != nullptr; }
};

/// Items in a table of their own; the item's description has the columns with the roles ItemOwner and
/// ItemOrder.
struct ItemTable {
    MemberList list;
    const RecordDescription& (*item)() = nullptr;

    bool exists() const { return item != nullptr; }
};

struct RecordDescription {
    std::string_view record;                    // "StructDetailStyle"
    std::string_view table;                     // logical table name
    DataSources homes;                          // data sources that keep such a table
    std::span<const ColumnDescription> columns; // in stored order; column 0 is first
    NumberedGroup numbered;
    ItemTable items;
    const RecordElements* elements;
    int key;       // index of the column with that role, -1 without
    int runName;   //
    int owner;     //
    int sortOrder; //
    int itemCount; //
    int itemOwner; //
    int itemOrder; //

    /// Index of the column whose field lies that many bytes into the record, -1 without one.
    int columnAt(std::ptrdiff_t offset) const
    {
        for (std::size_t i = 0; i < columns.size(); ++i)
            if (columns[i].offset == offset)
                return static_cast<int>(i);
        return -1;
    }
    /// Operations on arrays of such records.
    ListOperations list() const { return ListOperations(*elements); }
    const ColumnDescription& keyColumn() const { return columns[static_cast<std::size_t>(key)]; }
    const ColumnDescription* runNameColumn() const { return at(runName); }
    const ColumnDescription* ownerColumn() const { return at(owner); }
    const ColumnDescription* at(int index) const
    {
        return index < 0 ? nullptr : &columns[static_cast<std::size_t>(index)];
    }
    bool hasTextKey() const { return key >= 0 && keyColumn().kind == FieldKind::Text; }
    /// Key of a record with an integer key; -1 when the type has none.
    int keyOf(const void* record) const { return key < 0 || hasTextKey() ? -1 : keyColumn().integer(record); }
    /// The list that the record carries its items in, numbered or in a table; nullptr without.
    const MemberList* itemList() const
    {
        return numbered.exists() ? &numbered.list : items.exists() ? &items.list : nullptr;
    }
};
