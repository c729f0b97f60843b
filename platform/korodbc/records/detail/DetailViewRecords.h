#pragma once

#include <korodbc/repository/RecordMarshal.h>

/// Entry of a view request in a base category. Table "DetViewRequestCategories".
struct StructDetViewRequestCategory {
    int key = -1; // negative while the entry is not stored
    int baseCategory = -1;
    int detViewRequest = -1; // key of the request
    int deleted = 0;         // not stored: 1 for an entry that the next save removes
};

struct StructDetViewRequestCategoryMarshal : RecordMarshal<StructDetViewRequestCategory> {
    /// Appends the category entries of a view request to `records`; 1 when there are any.
    static int getByDetViewRequest(long key, KorArray<StructDetViewRequestCategory>& records)
    {
        return getWhere<&StructDetViewRequestCategory::detViewRequest>(key, records);
    }
};

/// A view that a detail style asks for. Table "DetViewRequest".
struct StructDetViewRequest {
    int key = -1;
    KorString runName;
    int systemAndBox = -1;
    int objReprMap = -1;
    int dimStrategy = -1;
    int lengthClipXY = -1;
    int usedForCutsAndCallouts = 0;
    int titlePosition = 0;
    KorString calloutTitleTemplate;
    double scaleFactor = 1; // view scale over style scale
    double rotation = 0;    // degrees, in the plane of the sheet
    KorString ownerText;
    KorArray<StructDetViewRequestCategory> categories; // not stored with the request; see loadCategories

    int getKey() const { return key; }
    void setKey(int newKey) { key = newKey; }
};

struct StructDetViewRequestMarshal : RecordMarshal<StructDetViewRequest> {
    /// Each appends the view requests that use the component to `records`; 1 when there are any.
    static int getByLengthClipKey(long key, KorArray<StructDetViewRequest>& records)
    {
        return getWhere<&StructDetViewRequest::lengthClipXY>(key, records);
    }
    static int getByObjectReprMap(long key, KorArray<StructDetViewRequest>& records)
    {
        return getWhere<&StructDetViewRequest::objReprMap>(key, records);
    }
    static int getByDimStrategy(long key, KorArray<StructDetViewRequest>& records)
    {
        return getWhere<&StructDetViewRequest::dimStrategy>(key, records);
    }
    static int getBySystemAndBox(long key, KorArray<StructDetViewRequest>& records)
    {
        return getWhere<&StructDetViewRequest::systemAndBox>(key, records);
    }
    /// Replaces the record's category entries by the stored ones; 1 when there are any.
    static int loadCategories(StructDetViewRequest& record);
};

/// Direction and depth of a view. Table "DetViewSystemAndBox".
struct StructDetViewSystemAndBox {
    int key = -1;
    KorString runName;
    int systemSource = -1;
    int selectMode = -1;
    int viewDirection = 0; // 0 front, 1 top, 2 right, 3 bottom, 4 left, 5 back
    int boxMode = 0;       // 0 whole object, 1 fixed depths, 2 to the next grid line
    double rotationX = 0;  // degrees
    double rotationZ = 0;  // degrees
    double depthFront = 0; // mm
    double depthBack = 0;  // mm
    KorString ownerText;
};
struct StructDetViewSystemAndBoxMarshal : RecordMarshal<StructDetViewSystemAndBox> {};

/// How long objects are shortened in a view. Table "DetViewLengthClip".
struct StructDetViewLengthClip {
    int key = -1;
    KorString runName;
    int clipX = 0;
    int clipY = 0;
    int clippingType = -1;
    double minimumLength = 0; // mm, shorter pieces without details stay whole
    double gap = 0;           // mm on paper
    KorString ownerText;
};
struct StructDetViewLengthClipMarshal : RecordMarshal<StructDetViewLengthClip> {};

/// One dimension request of a dimension strategy. Table "DetViewDimStrategyItems".
struct StructDetViewDimStrategyItem {
    int key = -1; // of the strategy
    int order = 0;
    KorString description;
    KorString ownerText;
    int type = -1;
    int requestLinear = -1;
    int groupEqualDistances = 0;
    int brokenRunningDimension = 0;
    int runningDimensionTextAlignment = 0;
    int hideDimensionPoint = 0;
};
struct StructDetViewDimStrategyItemMarshal : RecordMarshal<StructDetViewDimStrategyItem> {};

/// The dimensions of a view. Table "DetViewDimStrategyNew".
struct StructDetViewDimStrategy {
    int key = -1;
    KorString runName;
    int oneChainPerBoltDiam = 0;
    KorString ownerText;
    int numberItems = 0;
    KorArray<StructDetViewDimStrategyItem> items;

    int getKey() const { return key; }
    void setKey(int newKey) { key = newKey; }
};
struct StructDetViewDimStrategyMarshal : ItemRecordMarshal<StructDetViewDimStrategy> {};

/// A group of linear dimension requests. Table "DetViewDimRequestLinearGroup".
struct StructDetViewDimRequestLinearGroup {
    int key = -1;
    KorString runName;
    int bitmapId = 0;

    int getKey() const { return key; }
    void setKey(int newKey) { key = newKey; }
    const KorString& getRunBezeichnung() const { return runName; }
    int getBitmapId() const { return bitmapId; }
};
struct StructDetViewDimRequestLinearGroupMarshal : RecordMarshal<StructDetViewDimRequestLinearGroup> {};

/// A chain of linear dimensions. Table "DetViewDimRequestLinear".
struct StructDetViewDimRequestLinear {
    int key = -1;
    KorString runName;
    int direction = -1;
    int allowCombine = 0;
    int arrangeAbove = 0;
    int arrangeGlobally = 0;
    int groupRelatedDimensions = 0;
    int oneChainPerObjectInFirstSelection = 0;
    KorString labelContents;
    int labelPosition = 0; // 0 none, 1 before, 2 behind the chain
    int group = -1;
    int sortOrder = 0;
    KorString ownerText;
    int numberPoints = 0;
    KorArray<int> points; // point selection keys, in chain order

    int getKey() const { return key; }
    void setKey(int newKey) { key = newKey; }
};
struct StructDetViewDimRequestLinearMarshal : RecordMarshal<StructDetViewDimRequestLinear> {};

/// The points of some objects that dimensions end at. Table "DetViewDimPointSelection".
struct StructDetViewDimPointSelection {
    int key = -1;
    KorString runName;
    int type = -1;
    int objects = -1;
    int geometricRestrictions = -1;
    int outermostOnly = 0;
    KorString ownerText;
};

struct StructDetViewDimPointSelectionMarshal : RecordMarshal<StructDetViewDimPointSelection> {
    /// Appends the selections of a point type to `records`; 1 when there are any.
    static int getByType(long type, KorArray<StructDetViewDimPointSelection>& records)
    {
        return getWhere<&StructDetViewDimPointSelection::type>(type, records);
    }
};
