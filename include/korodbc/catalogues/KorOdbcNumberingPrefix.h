#pragma once

#include <korodbc/catalogues/CatalogueReader.h>
#include <korodbc/records/detail/NumberingRecords.h>

/// What a numbering prefix is looked for by. Two ids are equal when they mean the same objects: their texts
/// without regard to case, their profiles only when both give one.
class KorNumberingPrefixId {
public:
    KorNumberingPrefixId() = default;
    KorNumberingPrefixId(const KorString& modelRole, int objectType, int profileGiven, int profile,
                         const KorString& profileSubtype)
        : m_modelRole(modelRole), m_objectType(objectType), m_profileGiven(profileGiven), m_profile(profile),
          m_profileSubtype(profileSubtype)
    {
    }

    const KorString& getModelRole() const { return m_modelRole; }
    int getObjectType() const { return m_objectType; }
    /// Not 0 when the profile counts.
    int getProfileGiven() const { return m_profileGiven; }
    int getProfile() const { return m_profile; }
    const KorString& getProfileSubtype() const { return m_profileSubtype; }

    friend bool operator==(const KorNumberingPrefixId& left, const KorNumberingPrefixId& right)
    {
        return left.m_objectType == right.m_objectType &&
               (left.m_profileGiven == 0 || right.m_profileGiven == 0 || left.m_profile == right.m_profile) &&
               left.m_modelRole.compareNoCase(right.m_modelRole) == 0 &&
               left.m_profileSubtype.compareNoCase(right.m_profileSubtype) == 0;
    }

private:
    KorString m_modelRole;
    int m_objectType = -1; // key
    int m_profileGiven = 0;
    int m_profile = -1; // key
    KorString m_profileSubtype;
};

/// The prefixes of part numbers: in the drawing's own table, in the add-in and in the main catalogue. Finding
/// returns 1, or -1 and leaves the output when nothing applies or a table cannot be read; what only reads a
/// record, or object types, returns 1 or 0.
class KorOdbcNumberingPrefix : public CatalogueReader<StructNumberingPrefix, StructObjectType> {
public:
    /// How well a record fits an object of its type, the best first.
    enum eLevel {
        kExact = 0,      // role and subtype
        kAnyRole = 1,    // the subtype, a record for all roles without one of their own
        kAnySubtype = 2, // the role, a record without subtype
        kAnyObject = 3,  // a record for all roles, without subtype
        kNone = 4,
    };
    enum ePlace { kDrawing = 0, kAddIn = 1, kMain = 2 };

    /// The record that applies to an object, from the first place that has one. With `currentProfile` other than 0
    /// the add-in's records of its selected profile are asked, otherwise those of the profile that the id gives,
    /// and without one none; the main catalogue is asked whatever the profile.
    static int findNumberingPrefix(const KorNumberingPrefixId& id, int currentProfile,
                                   StructNumberingPrefix& record);
    /// The same; `place` becomes where it was found.
    static int findNumberingPrefix(const KorNumberingPrefixId& id, int currentProfile,
                                   StructNumberingPrefix& record, ePlace& place);
    /// The same within the current data source.
    static int getNumberingPrefix(const KorNumberingPrefixId& id, int currentProfile,
                                  StructNumberingPrefix& record);
    static int getNumberingPrefix(const KorOdbcKey& key, StructNumberingPrefix& record)
    {
        return byKey(key, record);
    }
    /// How a record with the id's object type fits it; profiles do not count.
    static eLevel getLevel(const KorNumberingPrefixId& id, const StructNumberingPrefix& record);
    /// The ids of all records of the current data source, in table order; with `currentProfile` other than 0 only
    /// those that a look-up with it would ask. -1, and `ids` as it was, when the table cannot be read.
    static int getNumberingPrefixList(KorArray<KorNumberingPrefixId>& ids, int currentProfile);
    /// Key of the add-in's selected profile: 1, or -1 when none is selected; 0 when the add-in is not the current
    /// data source. `key` is 0 then.
    static int getCurrentProfile(long& key);

    // The drawing's own table, in the project of the current drawing. An id with a profile is not served by the
    // records of another one; records without profile serve all.

    static int getDWGNumberingPrefix(const KorNumberingPrefixId& id, StructNumberingPrefix& record);
    static int getDWGNumberingPrefix(const KorOdbcKey& key, StructNumberingPrefix& record);
    static int getDWGNumberingPrefixList(KorArray<KorNumberingPrefixId>& ids);
    /// Makes the table. 1; 0 when that fails or there is one, which stays as it is.
    static int createDWGNumberingPrefixTable();
    /// Adds a record under a new key. The key, or -1 with nothing added.
    static int appendDWGNumberingPrefix(const StructNumberingPrefix& record);
    /// Deletes the record with that one's key. 0 when there is none.
    static int deleteDWGNumberingPrefix(const StructNumberingPrefix& record);

    // Object types

    static int getObjectType(long key, StructObjectType& type)
    {
        return StructObjectTypeMarshal::getStructByKey(key, type);
    }
    static int getObjectTypeList(KorArray<KorString>& names) { return runNames<StructObjectType>(names); }
    static int getObjectTypeKey(const KorString& runName, long& key)
    {
        return keyOf<StructObjectType>(runName, key);
    }
    static int getObjectTypeByClassId(const KorString& classId, StructObjectType& type)
    {
        return StructObjectTypeMarshal::getByClassId(classId, type);
    }
    static int getObjectTypeByRunname(const KorString& runName, StructObjectType& type)
    {
        return byRunName(runName, type);
    }
    /// The first type of a model type.
    static int getObjectTypeByModelType(long modelType, StructObjectType& type)
    {
        return StructObjectTypeMarshal::getByModelType(modelType, type);
    }
    /// Keys of all types of a model type, of a group; 0, and `keys` as it was, when there are none.
    static int getAllObjectTypeKeysByModelType(long modelType, KorArray<int>& keys)
    {
        return StructObjectTypeMarshal::getAllObjectTypeKeysByModelType(modelType, keys);
    }
    static int getObjectGroup(int group, KorArray<int>& keys)
    {
        return StructObjectTypeMarshal::getObjectGroup(group, keys);
    }
};

/// Methods of numbering: those of the add-in go before those of the numbering catalogue.
class KorOdbcNumberingMethod : public CatalogueReader<StructNumberingMethod> {
public:
    /// Without such a method the result is 0 and the record a substitute: key -1, flag 1, a description in words.
    static int getByKey(long key, StructNumberingMethod& method);
    static int getByName(const KorString& runName, StructNumberingMethod& method);
    /// The names of both sources, each once; 0 when neither can be read.
    static int getRunNames(KorArray<KorString>& names);
};

/// The choices of numbering prefixes.
class KorODBCNumberingPrefixProfile : public CatalogueReader<StructNumberingPrefixProfile> {
public:
    static int getNumberingPrefixProfile(const KorOdbcKey& key, StructNumberingPrefixProfile& record)
    {
        return byKey(key, record);
    }
    static int getNumberingPrefixProfileKey(const KorString& runName, long& key) { return keyOf(runName, key); }
    static int getNumberingPrefixProfileTable(KorArray<StructNumberingPrefixProfile>& records)
    {
        return table(records);
    }
};
