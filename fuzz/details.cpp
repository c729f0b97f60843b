// A detail file whose tables, columns and cells were changed: listing, checking and importing it neither crashes
// nor hangs, and an import that is taken back leaves the target as it was.

#include "Fuzz.h"
#include "repository/DetailDatabase.h"
#include "service/Service.h"
#include "support/DetailRecords.h"

#include <korodbc/edit/KorOdbcMan.h>
#include <korodbc/host/EmbeddedHost.h>
#include <korodbc/records/AnyRecord.h>
#include <korodbc/records/Registry.h>
#include <korodbc/references/KorDetailReferences.h>
#include <korodbc/transfer/KorDetailProcessTableDependencies.h>
#include <korodbc/transfer/KorDetailTableDependencies.h>
#include <korodbc/transfer/KorODBCDetailStyleExports.h>

#include <memory>
#include <sqlite3.h>

using namespace korodbc::host;
using Exports = KorODBCDetailStyleExports;

namespace {

constexpr eDSN source = KorDSNDefinitions::kAddin, target = KorDSNDefinitions::kDetails;
constexpr eIndex sourceSlot = KorDSNDefinitions::kFirstAddin, targetSlot = KorDSNDefinitions::kBase;

std::string detailFile() { return (ownFolder() / "details.db").string(); }

std::string bytesOf(const std::string& file)
{
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

/// Everything in the database of a data source, as text.
std::string contents(eDSN dsn)
{
    std::string text;
    Database* database = service().database(dsn);
    require(database != nullptr && database->flush(), "the target cannot be read");
    const auto read = [&](const std::string& sql) {
        const auto select = database->engine().prepare(sql, false);
        std::vector<std::string> first;
        while (select != nullptr && select->step() == Step::Row) {
            first.emplace_back(select->bytes(0));
            for (int i = 0; i < select->columns(); ++i)
                text.append(select->bytes(i)).append("|");
            text += '\n';
        }
        return first;
    };
    for (const std::string& table : read("SELECT name, sql FROM sqlite_master WHERE type = 'table' ORDER BY name"))
        read("SELECT rowid, * FROM " + bracketed(table) + " ORDER BY rowid");
    return text;
}

/// The repository in memory, and the bytes of a sound detail file with a style and a process.
class Ground {
public:
    Ground()
    {
        std::string error;
        require(openRepositoryInMemory({}, error), error);
        details::fillConfiguration();
        details::fillStyle(target, "target", 200);
        HostError reason;
        require(createDetailDatabase(detailFile(), reason), reason.text);
        require(KorDatabaseAccess::setConnection(source, KorString::fromUtf8(detailFile())) == 1, lastError());
        details::fillStyle(source, "file");
        details::fillProcess(source, "file");
        detach();
        m_file = bytesOf(detailFile());
        m_target = contents(target);
    }
    void attach() const
    {
        require(KorDatabaseAccess::setConnection(source, KorString::fromUtf8(detailFile())) == 1, lastError());
    }
    static void detach()
    {
        KorDatabaseAccess::setConnectionString(source, L"sqlite::memory:");
        require(KorDatabaseAccess::detachDatabase(KorString::fromUtf8(detailFile())) == 1 ||
                    service().database(source) != nullptr,
                "the file stays attached");
    }
    const std::string& fileBytes() const { return m_file; }
    const std::string& targetContents() const { return m_target; }

private:
    std::string m_file, m_target;
};

/// What the input has the file changed to.
class Changes {
public:
    Changes(const std::uint8_t* data, std::size_t size) : m_data(data), m_left(size) {}

    void apply(sqlite3* database)
    {
        m_database = database;
        for (int count = 0; m_left > 0 && count < 24; ++count)
            applyOne();
    }

private:
    std::size_t next(std::size_t below)
    {
        if (m_left == 0 || below == 0)
            return 0;
        --m_left;
        return *m_data++ % below;
    }
    std::vector<std::string> names(const std::string& sql) const
    {
        std::vector<std::string> names;
        sqlite3_exec(
            m_database, sql.c_str(),
            [](void* out, int, char** cells, char**) {
                static_cast<std::vector<std::string>*>(out)->emplace_back(cells[0] == nullptr ? "" : cells[0]);
                return 0;
            },
            &names, nullptr);
        return names;
    }
    std::string oneOf(const std::vector<std::string>& list)
    {
        return list.empty() ? std::string() : list[next(list.size())];
    }
    std::string table()
    {
        return oneOf(names("SELECT name FROM sqlite_master WHERE type = 'table' ORDER BY name"));
    }
    std::string column(const std::string& table)
    {
        return oneOf(names("SELECT name FROM pragma_table_info('" + table + "')"));
    }
    std::string value()
    {
        static const char* const special[] = {"NULL",
                                              "-1",
                                              "0",
                                              "2147483647",
                                              "2147483648",
                                              "-2147483648",
                                              "9223372036854775807",
                                              "4294967297",
                                              "1e300",
                                              "-0.001",
                                              "9e99",
                                              "'text'",
                                              "''",
                                              "x'00ff'",
                                              "zeroblob(100)",
                                              "'-'",
                                              "'2x'",
                                              "'%s%n'",
                                              "'''",
                                              "char(0)",
                                              "'a' || char(10)",
                                              "1.5"};
        const std::size_t which = next(std::size(special) + 8);
        return which < std::size(special) ? special[which] : std::to_string(next(5));
    }
    std::string type()
    {
        static const char* const types[] = {"INTEGER",
                                            "TEXT",
                                            "REAL",
                                            "BLOB",
                                            "VARCHAR(3)",
                                            "INT UNIQUE",
                                            "TEXT NOT NULL",
                                            "INTEGER CHECK (0)",
                                            "ANY COLLATE NOCASE",
                                            ""};
        return types[next(std::size(types))];
    }
    std::string otherName()
    {
        static const char* const others[] = {"rowid",   "Key",   "Other", "a]b", "O''x",
                                             "RunName", "Item1", "Order", "梁"};
        return bracketed(others[next(std::size(others))]);
    }
    void run(const std::string& sql) const { sqlite3_exec(m_database, sql.c_str(), nullptr, nullptr, nullptr); }

    void applyOne()
    {
        const std::size_t what = next(16);
        const std::string name = table(), of = bracketed(name);
        switch (what) {
        case 0:
            return run("DROP TABLE " + of);
        case 1:
            return run("ALTER TABLE " + of + " RENAME COLUMN " + bracketed(column(name)) + " TO " + otherName());
        case 2:
            return run("ALTER TABLE " + of + " DROP COLUMN " + bracketed(column(name)));
        case 3:
            return run("ALTER TABLE " + of + " ADD COLUMN " + otherName() + " " + type());
        case 4:
            return run("ALTER TABLE " + of + " RENAME TO " + otherName());
        case 5:
            return run("DELETE FROM " + of + " WHERE rowid % 2 = " + std::to_string(next(2)));
        case 6:
            return retype(name);
        case 7:
            run("ALTER TABLE " + of + " RENAME TO Hidden");
            return run("CREATE VIEW " + of + " AS SELECT * FROM Hidden");
        case 8:
            return run("CREATE TRIGGER Made AFTER UPDATE ON " + of + " BEGIN DELETE FROM " + of + "; END");
        default:
            return run("UPDATE " + of + " SET " + bracketed(column(name)) + " = " + value() +
                       " WHERE rowid % 3 <> " + std::to_string(next(4)));
        }
    }
    /// The same rows in columns of other types, and perhaps without keys or in another order.
    void retype(const std::string& name)
    {
        std::string columns;
        std::vector<std::string> all = names("SELECT name FROM pragma_table_info('" + name + "')");
        if (next(2) == 1 && all.size() > 1)
            std::swap(all[0], all[next(all.size())]);
        std::string list;
        for (const std::string& one : all) {
            columns += (columns.empty() ? "" : ", ") + bracketed(one) + " " + type() +
                       (columns.empty() && next(2) == 1 ? " PRIMARY KEY" : "");
            list += (list.empty() ? "" : ", ") + bracketed(one);
        }
        const bool withoutRows = next(4) == 1;
        run("CREATE TABLE Fresh (" + columns + ")" + (withoutRows ? " WITHOUT ROWID" : ""));
        run("INSERT OR IGNORE INTO Fresh (" + list + ") SELECT " + list + " FROM " + bracketed(name));
        run("DROP TABLE " + bracketed(name));
        run("ALTER TABLE Fresh RENAME TO " + bracketed(name));
    }

    const std::uint8_t* m_data;
    std::size_t m_left;
    sqlite3* m_database = nullptr;
};

void changeFile(const std::uint8_t* data, std::size_t size)
{
    sqlite3* database = nullptr;
    require(sqlite3_open(detailFile().c_str(), &database) == SQLITE_OK, "the file cannot be opened");
    sqlite3_exec(database, "PRAGMA synchronous = OFF; PRAGMA journal_mode = MEMORY", nullptr, nullptr, nullptr);
    Changes(data, size).apply(database);
    sqlite3_close(database);
}

/// What a program shows of a file before it imports from it.
void look()
{
    const KorDSNRequest request(source, sourceSlot);
    for (const auto describe : records::all()) {
        const RecordDescription& type = describe();
        if (!type.homes.contains(source))
            continue;
        const AnyRecords list(type);
        RecordAccess::readTable(type, list.get());
        KorArray<KorString> names;
        RecordAccess::runNames(type, names, true);
        KorDatabaseAccess::checkTable(source, type, false);
    }
    KorArray<KorDetailReference> dangling;
    KorDetailReferences::getDangling(source, sourceSlot, dangling);
    tableDifferences(source, sourceSlot);
}

template <class Marshal>
KorArray<long> keysOf()
{
    const KorDSNRequest request(source, sourceSlot);
    KorArray<long> keys;
    Marshal::getKeyList(keys);
    return keys;
}

void import(const Ground& ground, Exports::eType what, const KorArray<long>& keys)
{
    for (long i = 0; i < keys.length() && i < 3; ++i) {
        KorDatabaseBatch batch;
        const int result = Exports::importDetail(what, KorOdbcKey(static_cast<int>(keys[i])), source, sourceSlot,
                                                 target, targetSlot);
        batch.undo();
        Exports::setImportInProgress(0);
        require(contents(target) == ground.targetContents(),
                result == 1 ? "an import that was taken back left something" : "a failed import left something");
    }
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const Ground ground;
    write(detailFile(), ground.fileBytes());
    changeFile(data, size);
    ground.attach();
    KorOdbcMan::InitializeStatics::release();
    KorOdbcMan::InitializeStatics::build();
    look();
    KorDetailProcessTableDependencies::m_bDeepCopyWithDetailStyles = 1;
    import(ground, Exports::kDetailStyle, keysOf<StructDetailStyleMarshal>());
    import(ground, Exports::kDetailProcess, keysOf<StructDetailProcessDefinitionMarshal>());
    KorDetailProcessTableDependencies::ResetDeepCopyInfo();
    KorDetailTableDependencies::ResetDeepCopyInfo();
    Ground::detach();
    return 0;
}
