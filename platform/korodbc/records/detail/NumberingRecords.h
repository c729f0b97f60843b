#pragma once

#include <korodbc/repository/RecordMarshal.h>

/// Object types that belong together. Table "ObjectGroup".
struct StructObjectGroup {
    int key = -1;
    KorString runName;

    int getKey() const { return key; }
    void setKey(int newKey) { key = newKey; }
};
struct StructObjectGroupMarshal : RecordMarshal<StructObjectGroup> {};

/// A type of model objects, as numbering and exploding tell them apart. Table "ObjectType".
struct StructObjectType {
    int key = -1;
    KorString runName;
    KorString classId; // of the objects in the model
    int modelType = -1;
    int objectGroup = -1; // -1 without

    int getKey() const { return key; }
    void setKey(int newKey) { key = newKey; }
    const KorString& getRunName() const { return runName; }
    const KorString& getClassId() const { return classId; }
    int getModelType() const { return modelType; }
    int getObjectGroup() const { return objectGroup; }
};

struct StructObjectTypeMarshal : RecordMarshal<StructObjectType> {
    static int getByClassId(const KorString& classId, StructObjectType& type);
    /// The first type of a model type.
    static int getByModelType(long modelType, StructObjectType& type);
    /// Keys of all types of a model type, in table order; 0, and `keys` as it was, when there are none.
    static int getAllObjectTypeKeysByModelType(long modelType, KorArray<int>& keys);
    /// Keys of the types in a group, in the same way.
    static int getObjectGroup(int group, KorArray<int>& keys);

private:
    template <auto Member>
    static int keysWith(long value, KorArray<int>& keys);
};

/// How numbers are given. Table "NumberingMethod".
struct StructNumberingMethod {
    int key = -1;
    KorString runName;
    int flag = 1; // 1: numbers that were given stay, 0: all are given anew
    KorString description;

    int getKey() const { return key; }
    void setKey(int newKey) { key = newKey; }
    int getFlag() const { return flag; }
    const KorString& getDescription() const { return description; }
};
struct StructNumberingMethodMarshal : RecordMarshal<StructNumberingMethod> {};

/// Prefixes of part numbers. Table "NumberingPrefix".
struct StructNumberingPrefix {
    int key = -1;
    KorString modelRole; // "Not_overridden_role": any role without a record of its own
    KorString singlePartPrefix;
    KorString mainPartPrefix;
    KorString ownerText;
    int objectType = -1;
    int profile = -1; // prefix profile, -1 without
    KorString profileSubtype;
    KorString preliminaryPartPrefix;

    int getKey() const { return key; }
    void setKey(int newKey) { key = newKey; }
};

struct StructNumberingPrefixMarshal : RecordMarshal<StructNumberingPrefix> {
    using RecordMarshal<StructNumberingPrefix>::visit;
};

/// A choice of numbering prefixes. Table "NumberingPrefixProfile".
struct StructNumberingPrefixProfile {
    int key = -1;
    KorString runName;
    int selected = 0;

    int getKey() const { return key; }
    void setKey(int newKey) { key = newKey; }
    int getSelected() const { return selected; }
};

struct StructNumberingPrefixProfileMarshal : RecordMarshal<StructNumberingPrefixProfile> {
    /// Key of the first profile whose selected flag is `selected`. Returns 1 when found, -1 when not.
    static int getKeyBySelected(long selected, long& key)
    {
        StructNumberingPrefixProfile record;
        if (getFirstWhere<&StructNumberingPrefixProfile::selected>(selected, record) != 1)
            return -1;
        key = record.key;
        return 1;
    }
};

/// The run name of a section subtype. Table "ProfileShapeRunName".
struct StructProfileShapeRunName {
    int key = -1;
    KorString runName;
    KorString profileSubtype;

    int getKey() const { return key; }
    void setKey(int newKey) { key = newKey; }
};

struct StructProfileShapeRunNameMarshal : RecordMarshal<StructProfileShapeRunName> {
    /// The first record of a section subtype.
    static int getByProfileSubtype(const KorString& profileSubtype, StructProfileShapeRunName& record);
};

/// What the parts of an object become when it is exploded. Table "ExplodeObjectsTo".
struct StructExplodeObjects {
    KorString name;        // of the kind of object, and the row's key
    KorString solidsTo;    // "Solid", "Mesh", "Lines" or "Nothing"
    int solidsGrouped = 0; // 1: kept together as one block
    KorString linesTo;
    int linesGrouped = 0;
    KorString textsTo;
    int textsGrouped = 0;
    int order = 0; // place in lists
};

struct StructExplodeObjectsMarshal : RecordMarshal<StructExplodeObjects> {
    /// The whole table; with a `sorted` other than 0 in rising order, otherwise as in the table.
    static int getExplodeObjectsTable(KorArray<StructExplodeObjects>& records, int sorted);
};

/// How objects of one structure are exploded into drawing entities. Table "ExplodeSettings".
struct StructExplodeSettings {
    int key = -1;
    int objectStructure = -1;
    int profile = -1;
    KorString layer;
    int color = 256; // colour number, 256: of the layer
    KorString lineType;
    int on = 1;

    int getKey() const { return key; }
    void setKey(int newKey) { key = newKey; }
    int getObjectStructure() const { return objectStructure; }
    int getProfile() const { return profile; }
    const KorString& getLayer() const { return layer; }
    void setLayer(const KorString& newLayer) { layer = newLayer; }
    int getColor() const { return color; }
    void setColor(int newColor) { color = newColor; }
    const KorString& getLineType() const { return lineType; }
    void setLineType(const KorString& newLineType) { lineType = newLineType; }
    int getOn() const { return on; }
    void setOn(int newOn) { on = newOn; }
};
struct StructExplodeSettingsMarshal : RecordMarshal<StructExplodeSettings> {};

/// A choice of explode settings. Table "ExplodeProfile".
struct StructExplodeProfile {
    int key = -1;
    KorString runName;
    int selected = 0;

    int getKey() const { return key; }
    void setKey(int newKey) { key = newKey; }
    int getSelected() const { return selected; }
};
struct StructExplodeProfileMarshal : RecordMarshal<StructExplodeProfile> {};

/// An object type with one of its sub-types. Table "ObjectStructure".
struct StructObjectStructure {
    int key = -1;
    int objectType = -1;
    int objectSubType = -1;

    int getKey() const { return key; }
    void setKey(int newKey) { key = newKey; }
    int getObjectType() const { return objectType; }
    int getObjectSubType() const { return objectSubType; }
};
struct StructObjectStructureMarshal : RecordMarshal<StructObjectStructure> {};
