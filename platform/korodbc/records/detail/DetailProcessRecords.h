#pragma once

#include <korodbc/repository/RecordMarshal.h>

/// A category of detail processes and steps. Table "DetailProcessCategories".
struct StructDetailProcessCategory {
    int key = -1;
    KorString runName;
    int sortOrder = 0;
    KorString ownerText;

    int getKey() const { return key; }
    void setKey(int newKey) { key = newKey; }
};
struct StructDetailProcessCategoryMarshal : RecordMarshal<StructDetailProcessCategory> {};

/// A recipe by which drawings are made. Table "DetailProcessDefinition".
struct StructDetailProcessDefinition {
    int key = -1;
    KorString runName;
    int category = -1;
    KorString description;
    int bitmapId = 0;
    int sortOrder = 0;
    KorString ownerText;
    int numberSteps = 0;
    KorArray<int> steps; // step keys, in working order
};

struct StructDetailProcessDefinitionMarshal : RecordMarshal<StructDetailProcessDefinition> {
    /// Appends the processes of a category to `records`; 1 when there are any.
    static int getByCategory(long category, KorArray<StructDetailProcessDefinition>& records)
    {
        return getWhere<&StructDetailProcessDefinition::category>(category, records);
    }
};

/// One step of a process: the drawings of some objects. Table "DetailProcessStep".
struct StructDetailProcessStep {
    int key = -1;
    KorString runName;
    int category = -1;
    int filenameSelector = -1;
    int alternativeScales = -1;
    int dependOnMainView = -1;
    int styleMap = -1;
    int selection = -1;
    int sort = -1;
    int stepOrder = 0;
    int detailsPerSheet = 0; // 0: as many as fit
    int fitSheetToDetails = 0;
    double marginX = 0;   // mm on paper
    double marginY = 0;   // mm on paper
    double detailGap = 0; // mm on paper
    KorString ownerText;
};

struct StructDetailProcessStepMarshal : RecordMarshal<StructDetailProcessStep> {
    /// Appends the steps of a category to `records`; 1 when there are any.
    static int getByCategory(long category, KorArray<StructDetailProcessStep>& records)
    {
        return getWhere<&StructDetailProcessStep::category>(category, records);
    }
};

/// How drawing files are named. Table "DetailFilenameSelector".
struct StructDetailFilenameSelector {
    int key = -1;
    KorString runName;
    KorString folder;
    KorString nameFormat;
    int firstNumber = 1;
    int digits = 3;
    KorString ownerText;
};
struct StructDetailFilenameSelectorMarshal : RecordMarshal<StructDetailFilenameSelector> {};

/// Which objects a step draws. Table "DetailProcessSelection".
struct StructDetailProcessSelection {
    int key = -1;
    KorString runName;
    KorString selection; // for example ALL_SINGLEPARTS
    KorString ownerText;
};
struct StructDetailProcessSelectionMarshal : RecordMarshal<StructDetailProcessSelection> {};

/// In which order a step draws its objects. Table "DetailProcessSort".
struct StructDetailProcessSort {
    int key = -1;
    KorString runName;
    KorString script;
    KorString ownerText;
};
struct StructDetailProcessSortMarshal : RecordMarshal<StructDetailProcessSort> {};

/// The detail style of some objects. Table "DetailStyleMapItems".
struct StructDetailStyleMapItem {
    int key = -1; // of the map
    int order = 0;
    KorString script;
    int objQualifierSet = -1;
    int detailStyle = -1;
    int detailStyleOverrides = 0;
};
struct StructDetailStyleMapItemMarshal : RecordMarshal<StructDetailStyleMapItem> {};

/// Which objects are drawn in which detail style. Table "DetailStyleMapNew".
struct StructDetailStyleMap {
    int key = -1;
    KorString runName;
    KorString ownerText;
    int numberItems = 0;
    KorArray<StructDetailStyleMapItem> items;
};
struct StructDetailStyleMapMarshal : ItemRecordMarshal<StructDetailStyleMap> {};

/// One scale of a list. Table "DetailProcessScalesItem".
struct StructDetProcessScalesItem {
    int key = -1;
    int scales = -1; // key of the list
    int order = 0;
    double scale = 0;     // paper over model
    double maxLength = 0; // mm, longest object for the scale; 0: any
};
struct StructDetProcessScalesItemMarshal : RecordMarshal<StructDetProcessScalesItem> {};

/// The scales tried until a detail fits its sheet. Table "DetailProcessScales".
struct StructDetProcessScales {
    int key = -1;
    KorString runName;
    KorString ownerText;
    int numberItems = 0;
    KorArray<StructDetProcessScalesItem> items;

    int getKey() const { return key; }
    void setKey(int newKey) { key = newKey; }
};
struct StructDetProcessScalesMarshal : ItemRecordMarshal<StructDetProcessScales> {};

/// Scale of cuts beside a scale of the main view; both paper over model.
struct StructDetailProcessMain2CutScaleItem {
    double mainViewScale = 0;
    double cutScale = 0;
};

/// Scales of cuts by the scale of the main view. Table "DetailProcessMain2CutScale".
struct StructDetailProcessMain2CutScale {
    int key = -1;
    KorString runName;
    KorString ownerText;
    int numberItems = 0;
    KorArray<StructDetailProcessMain2CutScaleItem> items;

    int getKey() const { return key; }
    void setKey(int newKey) { key = newKey; }
};
struct StructDetailProcessMain2CutScaleMarshal : RecordMarshal<StructDetailProcessMain2CutScale> {};

/// One process of a suite. Table "DetProcessesSuiteItems".
struct StructDetProcessesSuiteItem {
    int key = -1; // of the suite
    int order = 0;
    int process = -1;
    int objectSelection = -1;
    KorString ownerText;
};
struct StructDetProcessesSuiteItemMarshal : RecordMarshal<StructDetProcessesSuiteItem> {};

/// Processes that run one after another. Table "DetProcessesSuiteDefinition".
struct StructDetProcessesSuiteDefinition {
    int key = -1;
    KorString runName;
    KorString description;
    KorString ownerText;
    int numberItems = 0;
    KorArray<StructDetProcessesSuiteItem> items;

    int getKey() const { return key; }
    void setKey(int newKey) { key = newKey; }
};
struct StructDetProcessesSuiteDefinitionMarshal : ItemRecordMarshal<StructDetProcessesSuiteDefinition> {};

/// What some items of a style map draw otherwise than their detail style says. Table "DetailStyleOverrides"; keys
/// from 1.
struct StructDetailStyleOverrides {
    int key = -1;
    KorString runName;
    int viewArrangeStrategy = -1; // -1: of the style
    double scaleFactor = 1;       // of the scale that the step chooses
    KorString titleFormat;        // empty: of the style
    int frameAppearance = -1;     // -1: of the style
    KorString ownerText;
};
struct StructDetailStyleOverridesMarshal : RecordMarshal<StructDetailStyleOverrides> {};

/// Which coordinate system the views of an object are laid in. Table "DetCoordSystemSelector".
struct StructCoordSystemSelector {
    int key = -1;
    KorString runName;
    int modelType = -1; // of the object; -1: any
    int systemSource = -1;
    int keepUpright = 0; // 1: turned until its y axis points up
};
struct StructCoordSystemSelectorMarshal : RecordMarshal<StructCoordSystemSelector> {};

/// What must hold before a step may run. Table "DetProcStepPrecondition".
struct StructDetailProcessStepPrecondition {
    int key = -1;
    KorString runName;
    KorString script;    // condition that every object must meet; empty: none
    int stopProcess = 0; // 1: the process ends when it is not met; 0: the step is left out
};
struct StructDetailProcessStepPreconditionMarshal : RecordMarshal<StructDetailProcessStepPrecondition> {};
