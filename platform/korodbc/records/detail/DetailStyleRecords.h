#pragma once

#include <korodbc/repository/RecordMarshal.h>

/// A detail style: how one kind of object is drawn. Table "DetailStyle".
struct StructDetailStyle {
    int key = -1;
    KorString runName;
    int viewArrangeStrategy = -1;
    int detailOrientation = 0;
    int objectSelectionStrategy = 0;
    KorString titleFormat;
    int titlePosition = 0;
    KorString cutViewTitleFormat;
    int cutViewTitlePosition = 0;
    KorString scaleFormat;
    KorString dateFormat;
    int frameAppearance = 0;
    int objectPosition = 0;
    int automaticClipping = 0;
    KorString ownerText;
    int numberRequests = 0;
    KorArray<int> requests; // view request keys, in drawing order

    int getKey() const { return key; }
    void setKey(int newKey) { key = newKey; }
};

struct StructDetViewRequest;

struct StructDetailStyleMarshal : RecordMarshal<StructDetailStyle> {
    /// Appends the styles that use the view arrangement to `records`; 1 when there are any.
    static int getStructByViewArrangeStrategy(long key, KorArray<StructDetailStyle>& records)
    {
        return getWhere<&StructDetailStyle::viewArrangeStrategy>(key, records);
    }
};

/// A detail style's place in the menus: base category and number inside it. Table "DetailMasterTable".
struct StructDetailMaster {
    int key = -1;
    KorString runName;
    int detailStyle = -1;
    int baseCategory = -1;
    int subCategory = 0;
    KorString ownerText;
};

struct StructDetailMasterMarshal : RecordMarshal<StructDetailMaster> {
    /// The first master of a style.
    static int getByStyleKey(long styleKey, StructDetailMaster& record)
    {
        return getFirstWhere<&StructDetailMaster::detailStyle>(styleKey, record);
    }
    static int getByBaseCategoryAndSubCategory(long baseCategory, long subCategory, StructDetailMaster& record)
    {
        return getFirstWhere<&StructDetailMaster::baseCategory, &StructDetailMaster::subCategory>(
            baseCategory, subCategory, record);
    }
    /// The whole table, and its run names, by base category and number inside it.
    static int getTableOrdered(KorArray<StructDetailMaster>& records);
    static int getRunNameListOrdered(KorArray<KorString>& names);
};

/// A category of detail styles and view requests. Table "DetBaseCategories".
struct StructDetBaseCategory {
    int key = -1;
    KorString runName;
    int sortOrder = 0;
    KorString ownerText;
};
struct StructDetBaseCategoryMarshal : RecordMarshal<StructDetBaseCategory> {};

/// How the views of a style are placed on the sheet. Table "DetViewArrangeStrategy".
struct StructDetViewArrangeStrategy {
    int key = -1;
    KorString runName;
    int arrangeDirection = 0;
    double horizontalGap = 0; // mm on paper
    double verticalGap = 0;   // mm on paper
    int alignViews = 0;
    KorString ownerText;
};
struct StructDetViewArrangeStrategyMarshal : RecordMarshal<StructDetViewArrangeStrategy> {};
