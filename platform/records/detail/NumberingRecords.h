#pragma once

#include "repository/RecordMarshal.h"

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
};
template <>
const RecordDescription& descriptionOf<StructNumberingPrefix>();
struct StructNumberingPrefixMarshal : RecordMarshal<StructNumberingPrefix> {};

/// A choice of numbering prefixes. Table "NumberingPrefixProfile".
struct StructNumberingPrefixProfile {
    int key = -1;
    KorString runName;
    int selected = 0;

    int getKey() const { return key; }
    void setKey(int newKey) { key = newKey; }
    int getSelected() const { return selected; }
};
template <>
const RecordDescription& descriptionOf<StructNumberingPrefixProfile>();

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

/// The display name of a section subtype. Table "ProfileShapeRunName".
struct StructProfileShapeRunName {
    int key = -1;
    KorString runName;
    KorString profileSubtype;

    int getKey() const { return key; }
    void setKey(int newKey) { key = newKey; }
};
template <>
const RecordDescription& descriptionOf<StructProfileShapeRunName>();

struct StructProfileShapeRunNameMarshal : RecordMarshal<StructProfileShapeRunName> {
    /// The first record of a section subtype.
    static int getByProfileSubtype(const KorString& profileSubtype, StructProfileShapeRunName& record);
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
template <>
const RecordDescription& descriptionOf<StructExplodeSettings>();
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
template <>
const RecordDescription& descriptionOf<StructExplodeProfile>();
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
template <>
const RecordDescription& descriptionOf<StructObjectStructure>();
struct StructObjectStructureMarshal : RecordMarshal<StructObjectStructure> {};
