#pragma once

#include <korodbc/repository/RecordMarshal.h>

/// How objects are labelled. Table "DetObjAnnotationStrategy".
struct StructDetObjAnnotationStrategy {
    int key = -1;
    KorString runName;
    int annotationType = -1;
    int arrangerControl = -1;
    int arrangerStrategy = -1;
    int group = -1;
    int annotateOnce = 0; // 1: equal objects share a label
    KorString layer;
    double textSize = 0; // mm on paper
    KorString ownerText;
};

struct StructDetObjAnnotationStrategyMarshal : RecordMarshal<StructDetObjAnnotationStrategy> {
    /// Each appends the strategies that use the component to `records`; 1 when there are any.
    static int getByArrangerControl(long key, KorArray<StructDetObjAnnotationStrategy>& records)
    {
        return getWhere<&StructDetObjAnnotationStrategy::arrangerControl>(key, records);
    }
    static int getByAnnotationType(long key, KorArray<StructDetObjAnnotationStrategy>& records)
    {
        return getWhere<&StructDetObjAnnotationStrategy::annotationType>(key, records);
    }
    static int getByGroup(long group, KorArray<StructDetObjAnnotationStrategy>& records)
    {
        return getWhere<&StructDetObjAnnotationStrategy::group>(group, records);
    }
};

/// A group of annotation strategies. Table "DetObjAnnotationGroup".
struct StructDetObjAnnotationGroup {
    int key = -1;
    KorString runName;
    int bitmapId = 0;

    int getKey() const { return key; }
    void setKey(int newKey) { key = newKey; }
    const KorString& getRunBezeichnung() const { return runName; }
    int getBitmapId() const { return bitmapId; }
};
struct StructDetObjAnnotationGroupMarshal : RecordMarshal<StructDetObjAnnotationGroup> {};

/// What a label looks like. Table "DetAnnotationType".
struct StructDetAnnotationType {
    int key = -1;
    KorString runName;
    int leaderStyle = -1;
    KorString ownerText;
    KorString contents; // tokens of the annotation contents, between percent signs
};
struct StructDetAnnotationTypeMarshal : RecordMarshal<StructDetAnnotationType> {};

/// One try of an arranger control.
struct StructDetArrangerControlItem {
    double angle = 0;             // degrees, of the leader
    double preferredDistance = 0; // mm on paper
    double maxDistance = 0;       // mm on paper
};

/// At which angles and distances a label is tried. Table "DetArrangerControl".
struct StructDetArrangerControl {
    int key = -1;
    KorString runName;
    int arrangeGlobally = 0;
    int arrangeInCentre = 0;
    int oppositeAngleAllowed = 0;
    int terminateOnFirstFit = 0;
    int useBasePositionOnFailure = 0;
    KorString ownerText;
    int lengthItems = 0;
    KorArray<StructDetArrangerControlItem> items;

    int getKey() const { return key; }
    void setKey(int newKey) { key = newKey; }
};
struct StructDetArrangerControlMarshal : RecordMarshal<StructDetArrangerControl> {};

/// One search of an arranger strategy.
struct StructDetArrangerStrategyItem {
    int searchArea = 0;      // 0 inside the object, 1 around it, 2 around the view
    int searchDirection = 0; // 0 any, 1 along, 2 across the object
    double minDistance = 0;  // mm on paper
    double maxDistance = 0;  // mm on paper
};

/// Where the places of labels are searched. Table "DetArrangerStrategy".
struct StructDetArrangerStrategy {
    int key = -1;
    KorString runName;
    int terminateOnFirstFit = 0;
    int arrangeGlobally = 0;
    int arrangeInCenter = 0;
    KorString ownerText;
    int lengthItems = 0;
    KorArray<StructDetArrangerStrategyItem> items;

    int getKey() const { return key; }
    void setKey(int newKey) { key = newKey; }
};
struct StructDetArrangerStrategyMarshal : RecordMarshal<StructDetArrangerStrategy> {};

/// One line of a manual label.
struct StructDetManualAnnotationTypeItem {
    KorString contents;
};

/// A label that is placed by hand. Table "DetManualAnnotationType".
struct StructDetManualAnnotationType {
    int key = -1;
    KorString runName;
    int leaderStyle = -1;
    KorString ownerText;
    int numberItems = 0;
    KorArray<StructDetManualAnnotationTypeItem> items;
};
struct StructDetManualAnnotationTypeMarshal : RecordMarshal<StructDetManualAnnotationType> {};
