#pragma once

#include <korodbc/edit/KorOdbcMan.h>
#include <korodbc/records/RecordDescription.h>

#include <array>
#include <string_view>

namespace korodbc {

/// Columns that comparing two rows treats otherwise than their description says.
struct ComparedColumns {
    std::string_view ignored = {}; // is not compared
    std::string_view counted = {}; // is compared although it is no value: the owner's key, the number of items
    std::string_view loose = {};   // text of the items that counts only where it is longer than 2 characters in
                                   // both records
};

/// What the library knows of a detail table type beyond the description of its record.
struct DetailTable {
    using Type = KorOdbcMan::eTableType;

    struct Record {
        const RecordDescription& (*description)();
        void* current; // the editors fill it; nullptr: the type has none
    };
    /// As the editor counts and adds them.
    struct Columns {
        int fixed = 0, perItem = 0;
        std::array<const wchar_t*, 5> ofItem = {}; // definitions, with "%i" for the item's number
    };
    enum class Editing { Unsaid, OfOwner, OfAll };
    enum class Travel { None, WithStyles, WithProcesses };
    enum class Naming { None, BeforeReferences, AfterReferences };
    enum class Callback {
        Asked,    // the host's callback names the row; -1 abandons the copy
        MustName, // any result of the callback but 1 abandons the copy
        NotAsked, // the row gets its default name
    };
    /// How rows travel in a deep copy.
    struct Copying {
        Travel travel = Travel::None;
        Naming naming = Naming::BeforeReferences;
        Callback callback = Callback::Asked;
        bool reusedByName = false;         // a row of the same name in the target is taken instead
        bool keepsKey = false;             // the row keeps its key where it is free
        int catalogueId = -1;              // of the table, where exports tell it
        const wchar_t* identity = nullptr; // in the transfer key map, where it is not the name of the record type
        int readAs = -1; // table type of the progress report while collecting, -1: the type itself
    };
    /// How rows that say the same become one.
    struct Compaction {
        bool ofStyles = false, ofProcesses = false;
        ComparedColumns columns = {};
        bool listFirst = false;   // references in the list are redirected before those in the columns
        int minimumCondition = 8; // a condition for deleting rows has more characters
        bool stays = false;       // duplicates are never deleted

        constexpr bool exists() const { return ofStyles || ofProcesses; }
    };

    Type type;
    Record record;
    Columns columns = {};
    bool hidesKey = false;          // getRecordKey does not give the current record's key
    bool readsBack = false;         // a reset reads the current record again
    bool checksItems = false;       // checkItems removes items that refer to nothing
    bool itemsAtFirstDepth = false; // storing the items takes the copy of their table at the first depth
    int readWith = -1;              // each of the two types is reset with the other, as with that of the items
    bool namesUnique = false;       // a new row gets a name that no other row has
    Editing editing = Editing::Unsaid;
    Copying copying = {};
    Compaction compaction = {};

    const RecordDescription& description() const { return record.description(); }
    void* currentRecord() const { return record.current; }
    /// Name of the rows in the transfer key map.
    KorString identity() const
    {
        return copying.identity != nullptr ? KorString(copying.identity)
                                           : KorString::fromUtf8(description().record);
    }
};

} // namespace korodbc
