#pragma once

#include <korodbc/repository/RecordMarshal.h>

/// Objects that one rule of a representation map draws. Table "DetObjReprMapItems".
struct StructDetObjReprMapItem {
    int key = -1; // of the map
    int order = 0;
    int description = 0; // prompt number of the rule's text, 0 without
    KorString ownerText;
    int objQualifier = -1;
    int geometricRestrictions = -1;
    int depthPosition = -1;
    int appearance = -1;
    int annotationStrategy = -1;
    int lineType = -1;        // -1: the line type of the appearance's layers
    double simplifiedGap = 0; // mm
    int compassMark = 0;
};
struct StructDetObjReprMapItemMarshal : RecordMarshal<StructDetObjReprMapItem> {};

/// Which objects a view shows, and how. Table "DetObjReprMapsNew".
struct StructDetObjReprMap {
    int key = -1;
    KorString runName;
    KorString ownerText;
    int numberItems = 0;
    KorArray<StructDetObjReprMapItem> items;

    int getKey() const { return key; }
    void setKey(int newKey) { key = newKey; }
};
struct StructDetObjReprMapMarshal : ItemRecordMarshal<StructDetObjReprMap> {};

/// How an object is drawn. Table "DetObjAppearance".
struct StructDetObjAppearance {
    int key = -1;
    KorString runName;
    int hatchSettings = -1;
    int presentation = 0; // 0 exact, 1 simplified, 2 axis only, 3 symbol
    KorString visibleLayer;
    int visibleColor = 256; // colour number, 256: of the layer
    int drawHiddenEdges = 1;
    KorString hiddenLayer;
    int hiddenColor = 256;
    int drawAxis = 0;
    KorString axisLayer;
    KorString ownerText;
};
struct StructDetObjAppearanceMarshal : RecordMarshal<StructDetObjAppearance> {};

/// Hatch of cut faces. Table "DetHatchSettings".
struct StructDetHatchSettings {
    int key = -1;
    KorString runName;
    KorString pattern;  // empty: no hatch
    double spacing = 0; // mm on paper
    double angle = 0;   // degrees
    int color = 256;    // colour number, 256: of the layer
    KorString layer;
    KorString ownerText;
};
struct StructDetHatchSettingsMarshal : RecordMarshal<StructDetHatchSettings> {};

/// How positions are told by grid lines. Table "DetGridReferenceSettings".
struct StructDetGridRefSettings {
    int key = -1;
    KorString runName;
    KorString format;
    double textSize = 0; // mm on paper
    KorString layer;
    int showOffset = 0; // 1: with the distance to the grid line
    KorString ownerText;
};
struct StructDetGridRefSettingsMarshal : RecordMarshal<StructDetGridRefSettings> {};

/// One kind of object of a qualifier set. Table "DetObjQualifierSetItem".
struct StructDetObjQualifierSetItem {
    int key = -1;
    int qualifierSet = -1; // key of the set
    int order = 0;
    int objectQualifier = -1;
    KorString modelRole; // empty: any
    KorString filter;    // key of a filter, empty without
};
struct StructDetObjQualifierSetItemMarshal : RecordMarshal<StructDetObjQualifierSetItem> {};

/// A group of qualifier sets. Table "DetObjQualifierSetGroup".
struct StructDetObjQualifierSetGroup {
    int key = -1;
    KorString runName;
    int bitmapId = 0;

    int getKey() const { return key; }
    void setKey(int newKey) { key = newKey; }
    const KorString& getRunBezeichnung() const { return runName; }
    int getBitmapId() const { return bitmapId; }
};
struct StructDetObjQualifierSetGroupMarshal : RecordMarshal<StructDetObjQualifierSetGroup> {};

/// A set of kinds of objects. Table "DetObjQualifierSet".
struct StructDetObjQualifierSet {
    int key = -1;
    KorString runName;
    int group = -1;
    KorString ownerText;
    int numberItems = 0;
    KorArray<StructDetObjQualifierSetItem> items;

    int getKey() const { return key; }
    void setKey(int newKey) { key = newKey; }
};

struct StructDetObjQualifierSetMarshal : ItemRecordMarshal<StructDetObjQualifierSet> {
    /// Appends the sets of a group to `records`; 1 when there are any.
    static int getByGroup(long group, KorArray<StructDetObjQualifierSet>& records)
    {
        return getWhere<&StructDetObjQualifierSet::group>(group, records);
    }
};

/// A script that narrows a kind of object down. Table "DetObjQualifierFilter".
struct StructDetObjQualifierFilter {
    KorString key;
    KorString runName;
    KorString script;
    KorString ownerText;
};
struct StructDetObjQualifierFilterMarshal : RecordMarshal<StructDetObjQualifierFilter> {};

/// A line type of the drawing. Table "Linetypes".
struct StructLinetypes {
    int key = -1;
    KorString runName; // also its name in the drawing
    KorString ownerText;
};
struct StructLinetypesMarshal : RecordMarshal<StructLinetypes> {};
