#include <korodbc/records/DescriptionBuilder.h>
#include <korodbc/records/detail/DetailCatalogueRecords.h>
#include <korodbc/records/detail/DetailObjectRecords.h>
#include <korodbc/records/detail/DetailProcessRecords.h>
#include <korodbc/records/detail/DetailStyleRecords.h>

using namespace records;

template <std::same_as<StructDetailProcessDefinition> R>
constexpr Entry listOf<R>[] = {
    table("DetailProcessDefinition", inDetails),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    reference<StructDetailProcessCategory>(&R::category, "Category"),
    column(&R::description, "Description"),
    column(&R::bitmapId, "BitmapId"),
    sortOrder(&R::sortOrder, "SortOrder"),
    owner(&R::ownerText, "OwnerText"),
    itemCount(&R::numberSteps, "NumberSteps"),
    numberedReferences<StructDetailProcessStep>(&R::steps, "Step%d", 24),
};

template <std::same_as<StructDetailProcessStep> R>
constexpr Entry listOf<R>[] = {
    table("DetailProcessStep", inDetails),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    reference<StructDetailProcessCategory>(&R::category, "Category"),
    reference<StructDetailFilenameSelector>(&R::filenameSelector, "FilenameSelector"),
    reference<StructDetProcessScales>(&R::alternativeScales, "AlternativeScales"),
    reference<StructDetailProcessMain2CutScale>(&R::dependOnMainView, "DependOnMainView"),
    reference<StructDetailStyleMap>(&R::styleMap, "StyleMap"),
    lookup<StructDetailProcessSelection>(&R::selection, "Selection"),
    lookup<StructDetailProcessSort>(&R::sort, "Sort"),
    column(&R::stepOrder, "StepOrder"),
    column(&R::detailsPerSheet, "DetailsPerSheet"),
    column(&R::fitSheetToDetails, "FitSheetToDetails"),
    column(&R::marginX, "MarginX"),
    column(&R::marginY, "MarginY"),
    column(&R::detailGap, "DetailGap"),
    owner(&R::ownerText, "OwnerText"),
};

template <std::same_as<StructDetailFilenameSelector> R>
constexpr Entry listOf<R>[] = {
    table("DetailFilenameSelector", inDetails),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::folder, "Folder"),
    column(&R::nameFormat, "NameFormat"),
    column(&R::firstNumber, "FirstNumber"),
    column(&R::digits, "Digits"),
    owner(&R::ownerText, "OwnerText"),
};

template <std::same_as<StructDetailProcessSelection> R>
constexpr Entry listOf<R>[] = {
    table("DetailProcessSelection", inDetails),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::selection, "Selection"),
    owner(&R::ownerText, "OwnerText"),
};

template <std::same_as<StructDetailProcessSort> R>
constexpr Entry listOf<R>[] = {
    table("DetailProcessSort", inDetails),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::script, "Script"),
    owner(&R::ownerText, "OwnerText"),
};

template <std::same_as<StructDetailStyleMap> R>
constexpr Entry listOf<R>[] = {
    table("DetailStyleMapNew", inDetails),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    owner(&R::ownerText, "OwnerText"),
    itemCount(&R::numberItems, "NumberItems"),
    items(&R::items),
};

template <std::same_as<StructDetailStyleMapItem> R>
constexpr Entry listOf<R>[] = {
    table("DetailStyleMapItems", inDetails),
    itemOwner(&R::key, "Key"),
    itemOrder(&R::order, "Order"),
    column(&R::script, "Script"),
    reference<StructDetObjQualifierSet>(&R::objQualifierSet, "ObjQualifierSet"),
    reference<StructDetailStyle>(&R::detailStyle, "DetailStyle"),
    names<StructDetailStyleOverrides>(&R::detailStyleOverrides, "DetailStyleOverrides").noneAllowed().zeroIsNone(),
};

template <std::same_as<StructDetProcessScales> R>
constexpr Entry listOf<R>[] = {
    table("DetailProcessScales", inDetails),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    owner(&R::ownerText, "OwnerText"),
    itemCount(&R::numberItems, "NumberItems"),
    items(&R::items),
};

template <std::same_as<StructDetProcessScalesItem> R>
constexpr Entry listOf<R>[] = {
    table("DetailProcessScalesItem", inDetails),
    key(&R::key, "Key"),
    itemOwner(&R::scales, "DetProcScaleId"),
    itemOrder(&R::order, "Order"),
    column(&R::scale, "Scale"),
    column(&R::maxLength, "MaxLength"),
};

template <std::same_as<StructDetailProcessMain2CutScaleItem> R>
constexpr Entry listOf<R>[] = {
    column(&R::mainViewScale, "MainViewScale%d"),
    column(&R::cutScale, "CutScale%d"),
};

template <std::same_as<StructDetailProcessMain2CutScale> R>
constexpr Entry listOf<R>[] = {
    table("DetailProcessMain2CutScale", inDetails),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    owner(&R::ownerText, "OwnerText"),
    itemCount(&R::numberItems, "NumberItems"),
    numberedItems(&R::items, 12),
};

template <std::same_as<StructDetailProcessCategory> R>
constexpr Entry listOf<R>[] = {
    table("DetailProcessCategories", inDetails),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    sortOrder(&R::sortOrder, "SortOrder"),
    owner(&R::ownerText, "OwnerText"),
};

template <std::same_as<StructDetProcessesSuiteDefinition> R>
constexpr Entry listOf<R>[] = {
    table("DetProcessesSuiteDefinition", inDetails),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::description, "Description"),
    owner(&R::ownerText, "OwnerText"),
    itemCount(&R::numberItems, "NumberItems"),
    items(&R::items),
};

template <std::same_as<StructDetProcessesSuiteItem> R>
constexpr Entry listOf<R>[] = {
    table("DetProcessesSuiteItems", inDetails),
    itemOwner(&R::key, "Key"),
    itemOrder(&R::order, "Order"),
    reference<StructDetailProcessDefinition>(&R::process, "Process"),
    lookup<StructDetailProcessSelection>(&R::objectSelection, "ObjectSelection"),
    owner(&R::ownerText, "OwnerText"),
};

template <std::same_as<StructDetailStyleOverrides> R>
constexpr Entry listOf<R>[] = {
    table("DetailStyleOverrides", inDetails),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    reference<StructDetViewArrangeStrategy>(&R::viewArrangeStrategy, "ViewArrangeStrategy").noneAllowed(),
    column(&R::scaleFactor, "ScaleFactor"),
    column(&R::titleFormat, "TitleFormat"),
    column(&R::frameAppearance, "FrameAppearance"),
    owner(&R::ownerText, "OwnerText"),
};

template <std::same_as<StructCoordSystemSelector> R>
constexpr Entry listOf<R>[] = {
    table("DetCoordSystemSelector", inDetailCatalogue),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    lookup<StructDetModelType>(&R::modelType, "ModelType").noneAllowed(),
    lookup<StructDetViewSystemSource>(&R::systemSource, "SystemSource"),
    column(&R::keepUpright, "KeepUpright"),
};

template <std::same_as<StructDetailProcessStepPrecondition> R>
constexpr Entry listOf<R>[] = {
    table("DetProcStepPrecondition", inDetailCatalogue),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::script, "Script"),
    column(&R::stopProcess, "StopProcess"),
};

constinit const Family records::detailProcessRecords =
    family<StructDetailProcessDefinition, StructDetailProcessStep, StructDetailFilenameSelector,
           StructDetailProcessSelection, StructDetailProcessSort, StructDetailStyleMap, StructDetailStyleMapItem,
           StructDetProcessScales, StructDetProcessScalesItem, StructDetailProcessMain2CutScale,
           StructDetailProcessCategory, StructDetProcessesSuiteDefinition, StructDetProcessesSuiteItem,
           StructDetailStyleOverrides, StructCoordSystemSelector, StructDetailProcessStepPrecondition>;
