#include <korodbc/catalogues/KorOdbcNumberingPrefix.h>
#include <korodbc/repository/KorDatabaseAccess.h>

#include <span>
#include <unordered_map>
#include <utility>
#include <vector>

namespace {

const wchar_t* const notOverridden = L"Not_overridden_role";

/// Which profiles' records a look-up asks.
struct AskedProfiles {
    enum Which { All, OfKey, OfKeyOrNone, Nobody };
    Which which = All;
    long key = -1;

    bool contains(int profile) const
    {
        return which == All || (which != Nobody && profile == key) || (which == OfKeyOrNone && profile == -1);
    }
};

/// In a catalogue it depends on whether the add-in is current, and has selected one.
AskedProfiles askedProfiles(int currentProfile, int profileGiven, int profile)
{
    long selected = 0;
    const int status = KorOdbcNumberingPrefix::getCurrentProfile(selected);
    if (status == 0)
        return {};
    if (currentProfile != 0)
        return status == 1 ? AskedProfiles{AskedProfiles::OfKey, selected}
                           : AskedProfiles{AskedProfiles::Nobody, -1};
    return profileGiven != 0 ? AskedProfiles{AskedProfiles::OfKey, profile}
                             : AskedProfiles{AskedProfiles::Nobody, -1};
}

using Prefixes = KorOdbcNumberingPrefix;

Prefixes::eLevel levelOf(bool sameSubtype, bool noSubtype, bool sameRole, bool anyRole)
{
    if (!sameSubtype && !noSubtype)
        return Prefixes::kNone;
    if (sameRole)
        return sameSubtype ? Prefixes::kExact : Prefixes::kAnySubtype;
    if (anyRole)
        return sameSubtype ? Prefixes::kAnyRole : Prefixes::kAnyObject;
    return Prefixes::kNone;
}

/// The records of a table by object type, in table order, their texts ready to be compared.
class PrefixIndex {
public:
    struct Entry {
        StructNumberingPrefix record;
        KorString role, subtype; // folded
        bool anyRole;
    };

    explicit PrefixIndex(const KorArray<StructNumberingPrefix>& records)
    {
        const KorString any = KorString(notOverridden).foldedCase();
        for (const StructNumberingPrefix& record : records) {
            const KorString role = record.modelRole.foldedCase();
            m_byType[record.objectType].push_back({record, role, record.profileSubtype.foldedCase(), role == any});
        }
    }
    std::span<const Entry> ofType(int objectType) const
    {
        const auto found = m_byType.find(objectType);
        return found == m_byType.end() ? std::span<const Entry>() : found->second;
    }

private:
    std::unordered_map<int, std::vector<Entry>> m_byType;
};

/// The record of the current data source that fits best; of several that fit equally, the last one, but the first
/// exact one.
int bestMatch(const KorNumberingPrefixId& id, const AskedProfiles& profiles, StructNumberingPrefix& out)
{
    const auto index = StructNumberingPrefixMarshal::derived<PrefixIndex>();
    // a scan that may not go on ends with its first record, and with what it has gathered: nothing
    if (index == nullptr || profiles.which == AskedProfiles::Nobody)
        return -1;
    const KorString role = id.getModelRole().foldedCase(), subtype = id.getProfileSubtype().foldedCase();
    const PrefixIndex::Entry* best = nullptr;
    Prefixes::eLevel bestLevel = Prefixes::kNone;
    for (const PrefixIndex::Entry& entry : index->ofType(id.getObjectType())) {
        if (!profiles.contains(entry.record.profile))
            continue;
        const Prefixes::eLevel level =
            levelOf(entry.subtype == subtype, entry.subtype.isEmpty(), entry.role == role, entry.anyRole);
        if (level == Prefixes::kNone || level > bestLevel)
            continue;
        best = &entry;
        bestLevel = level;
        if (level == Prefixes::kExact)
            break;
    }
    if (best == nullptr)
        return -1;
    out = best->record;
    return 1;
}

int idsOf(const AskedProfiles& profiles, KorArray<KorNumberingPrefixId>& ids)
{
    KorArray<KorNumberingPrefixId> found;
    const int read = StructNumberingPrefixMarshal::visit([&](const StructNumberingPrefix& record) {
        if (profiles.contains(record.profile))
            found.append(KorNumberingPrefixId(record.modelRole, record.objectType, record.profile != -1 ? 1 : 0,
                                              record.profile, record.profileSubtype));
        return true;
    });
    if (read != 1)
        return -1;
    ids = std::move(found);
    return 1;
}

/// What is read and written in the drawing's project.
class Drawing {
public:
    static constexpr eDSN dsn = KorDSNDefinitions::kProject;

    Drawing() : m_request(dsn, KorDSNSetDwgSource::GeteIndexForDwg()) {}
    const KorString& table() const { return m_table; }
    bool hasTable() const { return KorDatabaseAccess::doesTableExists(dsn, m_table) == 1; }

private:
    const KorDSNRequest m_request;
    const KorString m_table = KorDatabaseAccess::getTableName(L"NumberingPrefix");
};

} // namespace

KorOdbcNumberingPrefix::eLevel KorOdbcNumberingPrefix::getLevel(const KorNumberingPrefixId& id,
                                                                const StructNumberingPrefix& record)
{
    return levelOf(record.profileSubtype.compareNoCase(id.getProfileSubtype()) == 0,
                   record.profileSubtype.isEmpty(), record.modelRole.compareNoCase(id.getModelRole()) == 0,
                   record.modelRole.compareNoCase(notOverridden) == 0);
}

int KorOdbcNumberingPrefix::findNumberingPrefix(const KorNumberingPrefixId& id, int currentProfile,
                                                StructNumberingPrefix& record)
{
    ePlace place = kDrawing;
    return findNumberingPrefix(id, currentProfile, record, place);
}

int KorOdbcNumberingPrefix::findNumberingPrefix(const KorNumberingPrefixId& id, int currentProfile,
                                                StructNumberingPrefix& record, ePlace& place)
{
    const auto found = [&](int result, ePlace where) {
        if (result == 1)
            place = where;
        return result == 1;
    };
    const auto inCatalogue = [&](eDSN dsn, eIndex index, int current) {
        return within(dsn, index, [&] { return getNumberingPrefix(id, current, record); });
    };
    return found(getDWGNumberingPrefix(id, record), kDrawing) ||
                   found(inCatalogue(KorDSNDefinitions::kAddin, KorDSNDefinitions::kFirstAddin, currentProfile),
                         kAddIn) ||
                   found(inCatalogue(KorDSNDefinitions::kConfiguration, KorDSNDefinitions::kBase, 0), kMain)
               ? 1
               : -1;
}

int KorOdbcNumberingPrefix::getNumberingPrefix(const KorNumberingPrefixId& id, int currentProfile,
                                               StructNumberingPrefix& record)
{
    return bestMatch(id, askedProfiles(currentProfile, id.getProfileGiven(), id.getProfile()), record);
}

int KorOdbcNumberingPrefix::getNumberingPrefixList(KorArray<KorNumberingPrefixId>& ids, int currentProfile)
{
    return idsOf(currentProfile != 0 ? askedProfiles(1, 0, -1) : AskedProfiles{}, ids);
}

int KorOdbcNumberingPrefix::getCurrentProfile(long& key)
{
    key = 0;
    const KorDSNManager& manager = KorDSNManager::getInstance();
    if (manager.getCurrentDSN() != KorDSNDefinitions::kAddin)
        return 0;
    return within(KorDSNDefinitions::kAddin, manager.getCurrentIndex(),
                  [&] { return StructNumberingPrefixProfileMarshal::getKeyBySelected(1, key); });
}

int KorOdbcNumberingPrefix::getDWGNumberingPrefix(const KorNumberingPrefixId& id, StructNumberingPrefix& record)
{
    const Drawing drawing;
    return bestMatch(id,
                     id.getProfileGiven() != 0 ? AskedProfiles{AskedProfiles::OfKeyOrNone, id.getProfile()}
                                               : AskedProfiles{},
                     record);
}

int KorOdbcNumberingPrefix::getDWGNumberingPrefix(const KorOdbcKey& key, StructNumberingPrefix& record)
{
    const Drawing drawing;
    return byKey(key, record);
}

int KorOdbcNumberingPrefix::getDWGNumberingPrefixList(KorArray<KorNumberingPrefixId>& ids)
{
    const Drawing drawing;
    return idsOf({}, ids);
}

int KorOdbcNumberingPrefix::createDWGNumberingPrefixTable()
{
    const Drawing drawing;
    if (drawing.hasTable())
        return 0;
    return KorDatabaseAccess::doSQLStatement(
        Drawing::dsn,
        KorString::format(L"CREATE TABLE [%s] ([Key] INTEGER PRIMARY KEY, ModelRole TEXT, SinglePartPrefix TEXT, "
                          L"MainPartPrefix TEXT, OwnerText TEXT, ObjectType INTEGER, Profile INTEGER, "
                          L"ProfileSubtype TEXT, PreliminaryPartPrefix TEXT)",
                          drawing.table()));
}

int KorOdbcNumberingPrefix::appendDWGNumberingPrefix(const StructNumberingPrefix& record)
{
    const Drawing drawing;
    KorDatabaseBatch batch;
    KorCellData key;
    if (KorDatabaseAccess::appendNewLine(Drawing::dsn, drawing.table(), key, true, false) != 1)
        return batch.undo(-1);
    StructNumberingPrefix row = record;
    row.key = key.getInt();
    if (KorDatabaseAccess::setRecord(Drawing::dsn, drawing.table(), descriptionOf<StructNumberingPrefix>(), key,
                                     &row) != 1)
        return batch.undo(-1);
    return batch.end(1) == 1 ? row.key : -1;
}

int KorOdbcNumberingPrefix::deleteDWGNumberingPrefix(const StructNumberingPrefix& record)
{
    const Drawing drawing;
    // without the table the row of that key would go from the catalogue
    return drawing.hasTable() ? KorDatabaseAccess::deleteLine(drawing.table(), KorCellData(record.key)) : 0;
}
