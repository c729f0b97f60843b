#include "ProjectStore.h"

#include "Records.h"

#include <korodbc/project/KorODBCUserProfile.h>
#include <korodbc/repository/KorDatabaseAccess.h>

#include <algorithm>
#include <set>

using korodbc::host::lastError;
using korodbc::host::lastFailure;

namespace {

using Intern = KorODBCProjectIntern;

const KorString& runName(const ProjectKind& kind, const void* record)
{
    return kind.type().runNameColumn()->text(record);
}

/// Reads all records of the requested database.
AnyRecords& readAll(const ProjectKind& kind, AnyRecords& records)
{
    if (kind.readAll(records.get()) == 1)
        return records;
    throw unreadable(kind.type());
}

std::vector<std::string> names(const ProjectKind& kind, const ProjectDatabase& database)
{
    std::vector<std::string> all;
    eachRecord(kind, database, [&](const void* record) { all.push_back(runName(kind, record).toUtf8()); });
    return all;
}

/// Throws unless the table can be written.
void requireWritable(const RecordDescription& type, const ProjectDatabase& database)
{
    if (KorDatabaseAccess::checkTable(database.dsn, type, true) != 1)
        throw Failure{kFailed, "nothing was written to " + std::string(database.text) + advised(lastFailure())};
}

/// The open batch of a command that writes.
class Writing {
public:
    explicit Writing(const ProjectDatabase& database) : m_database(database)
    {
        if (KorDatabaseBatch::lock(database.dsn) != 1)
            throw failure();
    }
    void end()
    {
        if (m_batch.end(1) != 1)
            throw failure();
    }
    Failure failure() const
    {
        return {kFailed, "nothing was written to " + std::string(m_database.text) + advised(lastFailure())};
    }

private:
    const ProjectDatabase& m_database;
    KorDatabaseBatch m_batch; // undone when an exception passes
};

/// Saves a record and looks whether it is stored as it was meant.
void save(const ProjectKind& kind, const ProjectDatabase& database, void* record, const Writing& writing)
{
    const AnyRecord stored(kind.type());
    const bool saved = kind.save(record, database) == 1 &&
                       kind.read(kind.type().keyOf(record), stored.get()) == 1 &&
                       kind.source(stored.get()) == database.dsn;
    if (!saved || rowOf(kind.type(), stored.get(), 0) != rowOf(kind.type(), record, 0))
        throw writing.failure();
}

/// Number of the records that name an XML document.
int usersOfXml(int key, const ProjectDatabase& database)
{
    int users = 0;
    for (const ProjectKind& kind : projectKinds())
        if (const ColumnDescription* column = kind.xmlColumn())
            eachRecord(kind, database, [&](const void* record) {
                users += column->integer(record) == key && kind.source(record) == database.dsn ? 1 : 0;
            });
    return users;
}

/// Stores the document of a record, which must not be that of another one, too.
void putXml(const ProjectKind& kind, const ProjectDatabase& database, void* record, const KorString& text,
            const Writing& writing)
{
    int& key = kind.xmlColumn()->integer(record);
    StructProjXMLData xml, stored;
    const bool isOwn = key >= 0 && kind.source(record) == database.dsn && usersOfXml(key, database) == 1 &&
                       StructProjXMLDataMarshal::getStructByKey(key, stored) == 1 &&
                       stored.dataSource == database.dsn;
    xml.key = isOwn ? key : -1;
    xml.xmlText = text;
    stored.xmlText = {};
    if (Intern::putXMLData(xml, database.index, database.dsn) != 1 ||
        StructProjXMLDataMarshal::getStructByKey(xml.key, stored) != 1 || stored.xmlText != text)
        throw writing.failure();
    key = xml.key;
}

/// Stores the shipped records that a record refers to among the user's own, so that these are complete.
void takeParents(const ProjectKind& kind, const ProjectDatabase& database, const void* record,
                 const Writing& writing)
{
    for (const ColumnDescription& column : kind.type().columns) {
        const ProjectKind* parent = column.link == LinkKind::None ? nullptr : kindOf(column.target());
        if (parent == nullptr || column.isNone(column.integer(record)))
            continue;
        const AnyRecord above(parent->type());
        if (parent->read(column.integer(record), above.get()) != 1 || parent->source(above.get()) == database.dsn)
            continue;
        takeParents(*parent, database, above.get(), writing);
        if (parent->xmlColumn() != nullptr)
            if (const auto xml = xmlOf(*parent, database, above.get()))
                putXml(*parent, database, above.get(), KorString::fromUtf8(*xml), writing);
        save(*parent, database, above.get(), writing);
    }
}

void setField(const ProjectKind& kind, const ProjectDatabase& database, const ProjectKind::Field& field,
              const std::string& value, void* record)
{
    const ColumnDescription& column = kind.column(field);
    if (column.link == LinkKind::None) {
        column.text(record) = KorString::fromUtf8(value);
        if (column.text(record).toUtf8() != value)
            throw Failure{kUsage, std::string(field.option) + " is no valid UTF-8 text"};
        return;
    }
    if (column.noneAllowed && sameName(value, "none")) {
        column.integer(record) = -1;
        return;
    }
    const ProjectKind& target = *kindOf(column.target());
    const AnyRecord found(target.type());
    requireRecord(target, database, value, found.get());
    column.integer(record) = target.type().keyOf(found.get());
}

/// Gives the record its name; throws when that cannot be.
void setName(const ProjectKind& kind, const ProjectDatabase& database, const std::string& name, void* record)
{
    const KorString wanted = KorString::fromUtf8(name);
    if (name.empty() || wanted.toUtf8() != name || numberIn<int>(name))
        throw Failure{kUsage, "a " + std::string(kind.noun) + " needs a name that is " +
                                  (numberIn<int>(name) ? "no number" : "a valid text") + ", not " + quote(name)};
    eachRecord(kind, database, [&](const void* other) {
        if (runName(kind, other).compareNoCase(wanted) == 0 &&
            kind.type().keyOf(other) != kind.type().keyOf(record))
            throw Failure{kUsage, "there is a " + described(kind, other) + " already; choose another name"};
    });
    kind.type().runNameColumn()->text(record) = wanted;
}

/// Throws when a new record lacks what it cannot be without.
void requireComplete(const ProjectKind& kind, const void* record)
{
    for (const ProjectKind::Field& field : kind.fields) {
        const ColumnDescription& column = kind.column(field);
        if (column.link != LinkKind::None && !column.noneAllowed && column.integer(record) < 0)
            throw Failure{kUsage, "there is no " + described(kind, record) + "; to add it, give " + field.option +
                                      " as well"};
    }
    if (kind.xmlColumn() != nullptr && kind.xmlColumn()->integer(record) < 0)
        throw Failure{kUsage, "there is no " + described(kind, record) + "; to add it, give --xml FILE as well"};
}

} // namespace

void eachRecord(const ProjectKind& kind, const ProjectDatabase& database,
                const std::function<void(const void* record)>& act)
{
    AnyRecords own(kind.type());
    std::set<int> keys;
    for (long i = 0, length = readAll(kind, own).length(); i < length; ++i) {
        keys.insert(kind.type().keyOf(own.at(i)));
        act(own.at(i));
    }
    if (database.dsn != KorDSNDefinitions::kAddin)
        return;
    AnyRecords shipped(kind.type());
    {
        const KorDSNRequest request(KorDSNDefinitions::kConfiguration, KorDSNDefinitions::kBase);
        readAll(kind, shipped);
    }
    for (long i = 0; i < shipped.length(); ++i)
        if (!keys.contains(kind.type().keyOf(shipped.at(i))))
            act(shipped.at(i));
}

bool findRecord(const ProjectKind& kind, const ProjectDatabase& database, const std::string& keyOrName,
                void* record)
{
    const std::optional<int> key = numberIn<int>(keyOrName);
    const KorString name = KorString::fromUtf8(keyOrName);
    if ((key && kind.read(*key, record) == 1) || kind.readByName(name, record) == 1)
        return true;
    bool found = false;
    eachRecord(kind, database, [&](const void* candidate) {
        if (!found && runName(kind, candidate).compareNoCase(name) == 0) {
            kind.type().elements->assign(record, candidate);
            found = true;
        }
    });
    return found;
}

void requireRecord(const ProjectKind& kind, const ProjectDatabase& database, const std::string& keyOrName,
                   void* record)
{
    const std::vector<std::string> known = names(kind, database); // fails when the table cannot be read
    if (!findRecord(kind, database, keyOrName, record))
        throw Failure{kNotFound, "there is no " + std::string(kind.noun) + " " + quote(keyOrName) + " in " +
                                     database.text + nearest(keyOrName, known) + "; list them with: korodbc " +
                                     kind.command + " --database " + database.name};
}

std::string nameOf(const ProjectKind& kind, int key)
{
    const AnyRecord record(kind.type());
    return kind.read(key, record.get()) == 1 ? runName(kind, record.get()).toUtf8() : std::to_string(key);
}

std::string described(const ProjectKind& kind, const void* record)
{
    return std::string(kind.noun) + " " + quote(runName(kind, record).toUtf8());
}

std::optional<std::string> xmlOf(const ProjectKind& kind, const ProjectDatabase& database, const void* record)
{
    StructProjXMLData xml;
    const ColumnDescription* column = kind.xmlColumn();
    const eDSN source = kind.source(record);
    if (column == nullptr || column->isNone(column->integer(record)))
        return std::nullopt;
    xml.key = column->integer(record);
    const KorDSNRequest request(source, source == database.dsn ? database.index : KorDSNDefinitions::kBase);
    if (KorDatabaseAccess::checkTable(source, column->target(), false) != 1)
        throw unreadable(column->target());
    if (StructProjXMLDataMarshal::getStructByKey(xml.key, xml) != 1)
        throw Failure{kFailed, "the XML document " + std::to_string(xml.key) + " of " + described(kind, record) +
                                   " is missing; give it one with: korodbc " + kind.command + " save " +
                                   std::to_string(kind.type().keyOf(record)) + " --xml FILE --database " +
                                   database.name};
    return xml.xmlText.toUtf8();
}

std::map<int, int> childCounts(const ProjectChildren& children, const ProjectDatabase& database)
{
    std::map<int, int> counts;
    eachRecord(*children.kind, database, [&](const void* record) { ++counts[children.column->integer(record)]; });
    return counts;
}

std::vector<std::string> childNames(const ProjectChildren& children, const ProjectDatabase& database, int parent,
                                    bool ownOnly)
{
    std::vector<std::string> found;
    eachRecord(*children.kind, database, [&](const void* record) {
        if (children.column->integer(record) == parent &&
            (!ownOnly || children.kind->source(record) == database.dsn))
            found.push_back(runName(*children.kind, record).toUtf8());
    });
    return found;
}

ProjectStored storeRecord(const ProjectKind& kind, const ProjectDatabase& database, const ProjectChange& change)
{
    Writing writing(database);
    requireWritable(kind.type(), database);
    if (kind.xmlColumn() != nullptr)
        requireWritable(kind.xmlColumn()->target(), database);
    const AnyRecord record(kind.type());
    const bool isNew = !findRecord(kind, database, change.which, record.get());
    if (isNew && numberIn<int>(change.which))
        requireRecord(kind, database, change.which, record.get());
    if (isNew || change.newName)
        setName(kind, database, change.newName.value_or(change.which), record.get());
    for (const auto& [field, value] : change.fields)
        setField(kind, database, *field, value, record.get());
    const auto text = change.xml                                  ? change.xml
                      : isNew                                     ? std::nullopt
                      : kind.source(record.get()) == database.dsn ? std::nullopt
                                                                  : xmlOf(kind, database, record.get());
    if (text)
        putXml(kind, database, record.get(), KorString::fromUtf8(*text), writing);
    if (isNew)
        requireComplete(kind, record.get());
    takeParents(kind, database, record.get(), writing);
    KorODBCUserProfile::resetOwnerText();
    KorODBCUserProfile::getOwnerText(kind.type().ownerColumn()->text(record.get()));
    save(kind, database, record.get(), writing);
    writing.end();
    return {isNew, kind.type().keyOf(record.get()), runName(kind, record.get()).toUtf8()};
}

std::string deleteRecord(const ProjectKind& kind, const ProjectDatabase& database, const std::string& which)
{
    Writing writing(database);
    const AnyRecord record(kind.type());
    requireRecord(kind, database, which, record.get());
    const std::string what = described(kind, record.get());
    if (kind.source(record.get()) != database.dsn)
        throw Failure{kFailed, what + " is shipped for every user and cannot be deleted; only what stands in " +
                                   database.text + " itself can"};
    requireWritable(kind.type(), database);
    for (const ProjectChildren& child : childrenOf(kind)) {
        const std::vector<std::string> standing =
            childNames(child, database, kind.type().keyOf(record.get()), true);
        if (standing.empty())
            continue;
        std::string list;
        for (std::size_t i = 0; i < std::min<std::size_t>(standing.size(), 5); ++i)
            list += (i == 0 ? "" : ", ") + quote(standing[i]);
        const bool isOne = standing.size() == 1;
        throw Failure{kFailed,
                      what + " is kept: " + counted(static_cast<long>(standing.size()), child.kind->noun) +
                          (isOne ? " refers" : " refer") + " to it: " + list +
                          (standing.size() > 5 ? " and more" : "") + "; delete " + (isOne ? "it" : "them") +
                          " first, see: korodbc " + child.kind->command + " --help"};
    }
    if (kind.xmlColumn() != nullptr && usersOfXml(kind.xmlColumn()->integer(record.get()), database) > 1)
        throw Failure{kFailed, what +
                                   " is kept: another record has the same XML document, which would go with it; "
                                   "give it one of its own first: korodbc " +
                                   kind.command + " save " + quote(which) + " --xml FILE --database " +
                                   database.name};
    const int result = kind.remove(record.get(), database);
    const AnyRecord left(kind.type());
    const bool isGone = result == 1 && (kind.read(kind.type().keyOf(record.get()), left.get()) != 1 ||
                                        kind.source(left.get()) != database.dsn);
    if (!isGone && kind.xmlColumn() != nullptr && lastError().empty() && !xmlOf(kind, database, record.get()))
        throw Failure{kFailed, what +
                                   " has no XML document and is deleted only with one; give it one first: "
                                   "korodbc " +
                                   kind.command + " save " + quote(which) + " --xml FILE --database " +
                                   database.name};
    if (!isGone)
        throw Failure{kFailed, what + " was not deleted" + advised(lastFailure())};
    writing.end();
    return what;
}
