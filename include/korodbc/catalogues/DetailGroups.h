#pragma once

#include <korodbc/catalogues/DetailReader.h>
#include <korodbc/records/detail/DetailAnnotationRecords.h>
#include <korodbc/records/detail/DetailObjectRecords.h>
#include <korodbc/records/detail/DetailViewRecords.h>

// The groups that annotation strategies, qualifier sets and linear dimension requests are sorted into. Reads go to
// the requested data source, without a request to the manager's database, saves always to the manager's database.
// A save appends the group when `isNew` is not 0 or its key is unknown, and then gives it its new key; otherwise
// it updates the group's row. It returns the result of the last write; with 0 for a save that could not be stored
// the group's key is unchanged.

/// Groups of annotation strategies.
class KorODBCDetObjAnnotationGroup : public DetailReader<StructDetObjAnnotationGroup> {
public:
    static int getDetObjAnnotationGroup(const KorOdbcKey& key, StructDetObjAnnotationGroup& group)
    {
        return byKey(key, group);
    }
    static int getDetObjAnnotationGroupByRunName(const KorString& runName, StructDetObjAnnotationGroup& group)
    {
        return byRunName(runName, group);
    }
    static int getDetObjAnnotationGroupList(KorArray<StructDetObjAnnotationGroup>& groups)
    {
        return table(groups);
    }
    static int getDetObjAnnotationSetGroupRunNameList(KorArray<KorString>& names) { return runNames(names); }
    static int saveDetObjAnnotationGroup(StructDetObjAnnotationGroup& group, int isNew);
};

/// Groups of qualifier sets.
class KorODBCDetObjQualifierSetGroup : public DetailReader<StructDetObjQualifierSetGroup> {
public:
    static int getDetObjQualifierSetGroup(const KorOdbcKey& key, StructDetObjQualifierSetGroup& group)
    {
        return byKey(key, group);
    }
    static int getDetObjQualifierSetGroupByRunName(const KorString& runName, StructDetObjQualifierSetGroup& group)
    {
        return byRunName(runName, group);
    }
    static int getDetObjQualifierSetGroupTable(KorArray<StructDetObjQualifierSetGroup>& groups)
    {
        return table(groups);
    }
    static int getDetObjQualifierSetGroupRunNameList(KorArray<KorString>& names) { return runNames(names); }
    static int saveDetObjQualifierSetGroup(StructDetObjQualifierSetGroup& group, int isNew);
};

/// Groups of linear dimension requests.
class KorODBCDetViewDimRequestLinearGroup : public DetailReader<StructDetViewDimRequestLinearGroup> {
public:
    static int getDetViewDimRequestLinearGroup(const KorOdbcKey& key, StructDetViewDimRequestLinearGroup& group)
    {
        return byKey(key, group);
    }
    static int getDetViewDimRequestLinearGroupByRunName(const KorString& runName,
                                                        StructDetViewDimRequestLinearGroup& group)
    {
        return byRunName(runName, group);
    }
    static int getDetViewDimRequestLinearGroupList(KorArray<StructDetViewDimRequestLinearGroup>& groups)
    {
        return table(groups);
    }
    static int getDetViewDimRequestLinearGroupRunNameList(KorArray<KorString>& names) { return runNames(names); }
    static int saveDetViewDimRequestLinearGroup(StructDetViewDimRequestLinearGroup& group, int isNew);
};
