#include <korodbc/records/DescriptionBuilder.h>
#include <korodbc/records/detail/DetailCatalogueRecords.h>
#include <korodbc/records/detail/DetailObjectRecords.h>
#include <korodbc/records/detail/DetailProcessRecords.h>
#include <korodbc/records/detail/DetailStyleRecords.h>
#include <korodbc/records/Registry.h>

using namespace records;

template <>
const RecordDescription& descriptionOf<StructDetailProcessDefinition>()
{
    using R = StructDetailProcessDefinition;
    return described([] {
        return describe<R>("StructDetailProcessDefinition",
                           "DetailProcessDefinition",
                           inDetails,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           reference<&R::category, StructDetailProcessCategory>("Category"),
                           column<&R::description>("Description"),
                           column<&R::bitmapId>("BitmapId"),
                           sortOrder<&R::sortOrder>("SortOrder"),
                           owner<&R::ownerText>("OwnerText"),
                           itemCount<&R::numberSteps>("NumberSteps"),
                           numberedReferences<&R::steps, StructDetailProcessStep>("Step%d", 24));
    });
}

template <>
const RecordDescription& descriptionOf<StructDetailProcessStep>()
{
    using R = StructDetailProcessStep;
    return described([] {
        return describe<R>("StructDetailProcessStep",
                           "DetailProcessStep",
                           inDetails,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           reference<&R::category, StructDetailProcessCategory>("Category"),
                           reference<&R::filenameSelector, StructDetailFilenameSelector>("FilenameSelector"),
                           reference<&R::alternativeScales, StructDetProcessScales>("AlternativeScales"),
                           reference<&R::dependOnMainView, StructDetailProcessMain2CutScale>("DependOnMainView"),
                           reference<&R::styleMap, StructDetailStyleMap>("StyleMap"),
                           lookup<&R::selection, StructDetailProcessSelection>("Selection"),
                           lookup<&R::sort, StructDetailProcessSort>("Sort"),
                           column<&R::stepOrder>("StepOrder"),
                           column<&R::detailsPerSheet>("DetailsPerSheet"),
                           column<&R::fitSheetToDetails>("FitSheetToDetails"),
                           column<&R::marginX>("MarginX"),
                           column<&R::marginY>("MarginY"),
                           column<&R::detailGap>("DetailGap"),
                           owner<&R::ownerText>("OwnerText"));
    });
}

template <>
const RecordDescription& descriptionOf<StructDetailFilenameSelector>()
{
    using R = StructDetailFilenameSelector;
    return described([] {
        return describe<R>("StructDetailFilenameSelector",
                           "DetailFilenameSelector",
                           inDetails,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::folder>("Folder"),
                           column<&R::nameFormat>("NameFormat"),
                           column<&R::firstNumber>("FirstNumber"),
                           column<&R::digits>("Digits"),
                           owner<&R::ownerText>("OwnerText"));
    });
}

template <>
const RecordDescription& descriptionOf<StructDetailProcessSelection>()
{
    using R = StructDetailProcessSelection;
    return described([] {
        return describe<R>("StructDetailProcessSelection",
                           "DetailProcessSelection",
                           inDetails,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::selection>("Selection"),
                           owner<&R::ownerText>("OwnerText"));
    });
}

template <>
const RecordDescription& descriptionOf<StructDetailProcessSort>()
{
    using R = StructDetailProcessSort;
    return described([] {
        return describe<R>("StructDetailProcessSort",
                           "DetailProcessSort",
                           inDetails,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::script>("Script"),
                           owner<&R::ownerText>("OwnerText"));
    });
}

template <>
const RecordDescription& descriptionOf<StructDetailStyleMap>()
{
    using R = StructDetailStyleMap;
    return described([] {
        return describe<R>("StructDetailStyleMap",
                           "DetailStyleMapNew",
                           inDetails,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           owner<&R::ownerText>("OwnerText"),
                           itemCount<&R::numberItems>("NumberItems"),
                           items<&R::items>());
    });
}

template <>
const RecordDescription& descriptionOf<StructDetailStyleMapItem>()
{
    using R = StructDetailStyleMapItem;
    return described([] {
        return describe<R>("StructDetailStyleMapItem",
                           "DetailStyleMapItems",
                           inDetails,
                           itemOwner<&R::key>("Key"),
                           itemOrder<&R::order>("Order"),
                           column<&R::script>("Script"),
                           reference<&R::objQualifierSet, StructDetObjQualifierSet>("ObjQualifierSet"),
                           reference<&R::detailStyle, StructDetailStyle>("DetailStyle"),
                           column<&R::detailStyleOverrides>("DetailStyleOverrides")
                               .names<StructDetailStyleOverrides>()
                               .noneAllowed()
                               .zeroIsNone());
    });
}

template <>
const RecordDescription& descriptionOf<StructDetProcessScales>()
{
    using R = StructDetProcessScales;
    return described([] {
        return describe<R>("StructDetProcessScales",
                           "DetailProcessScales",
                           inDetails,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           owner<&R::ownerText>("OwnerText"),
                           itemCount<&R::numberItems>("NumberItems"),
                           items<&R::items>());
    });
}

template <>
const RecordDescription& descriptionOf<StructDetProcessScalesItem>()
{
    using R = StructDetProcessScalesItem;
    return described([] {
        return describe<R>("StructDetProcessScalesItem",
                           "DetailProcessScalesItem",
                           inDetails,
                           key<&R::key>("Key"),
                           itemOwner<&R::scales>("DetProcScaleId"),
                           itemOrder<&R::order>("Order"),
                           column<&R::scale>("Scale"),
                           column<&R::maxLength>("MaxLength"));
    });
}

template <>
const RecordDescription& descriptionOf<StructDetailProcessMain2CutScale>()
{
    using R = StructDetailProcessMain2CutScale;
    using Item = StructDetailProcessMain2CutScaleItem;
    return described([] {
        return describe<R>("StructDetailProcessMain2CutScale",
                           "DetailProcessMain2CutScale",
                           inDetails,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           owner<&R::ownerText>("OwnerText"),
                           itemCount<&R::numberItems>("NumberItems"),
                           numberedGroup<&R::items>(12,
                                                    column<&Item::mainViewScale>("MainViewScale%d"),
                                                    column<&Item::cutScale>("CutScale%d")));
    });
}

template <>
const RecordDescription& descriptionOf<StructDetailProcessCategory>()
{
    using R = StructDetailProcessCategory;
    return described([] {
        return describe<R>("StructDetailProcessCategory",
                           "DetailProcessCategories",
                           inDetails,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           sortOrder<&R::sortOrder>("SortOrder"),
                           owner<&R::ownerText>("OwnerText"));
    });
}

template <>
const RecordDescription& descriptionOf<StructDetProcessesSuiteDefinition>()
{
    using R = StructDetProcessesSuiteDefinition;
    return described([] {
        return describe<R>("StructDetProcessesSuiteDefinition",
                           "DetProcessesSuiteDefinition",
                           inDetails,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::description>("Description"),
                           owner<&R::ownerText>("OwnerText"),
                           itemCount<&R::numberItems>("NumberItems"),
                           items<&R::items>());
    });
}

template <>
const RecordDescription& descriptionOf<StructDetProcessesSuiteItem>()
{
    using R = StructDetProcessesSuiteItem;
    return described([] {
        return describe<R>("StructDetProcessesSuiteItem",
                           "DetProcessesSuiteItems",
                           inDetails,
                           itemOwner<&R::key>("Key"),
                           itemOrder<&R::order>("Order"),
                           reference<&R::process, StructDetailProcessDefinition>("Process"),
                           lookup<&R::objectSelection, StructDetailProcessSelection>("ObjectSelection"),
                           owner<&R::ownerText>("OwnerText"));
    });
}

template <>
const RecordDescription& descriptionOf<StructDetailStyleOverrides>()
{
    using R = StructDetailStyleOverrides;
    return described([] {
        return describe<R>(
            "StructDetailStyleOverrides",
            "DetailStyleOverrides",
            inDetails,
            key<&R::key>("Key"),
            runName<&R::runName>("RunName"),
            reference<&R::viewArrangeStrategy, StructDetViewArrangeStrategy>("ViewArrangeStrategy").noneAllowed(),
            column<&R::scaleFactor>("ScaleFactor"),
            column<&R::titleFormat>("TitleFormat"),
            column<&R::frameAppearance>("FrameAppearance"),
            owner<&R::ownerText>("OwnerText"));
    });
}

template <>
const RecordDescription& descriptionOf<StructCoordSystemSelector>()
{
    using R = StructCoordSystemSelector;
    return described([] {
        return describe<R>("StructCoordSystemSelector",
                           "DetCoordSystemSelector",
                           inDetailCatalogue,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           lookup<&R::modelType, StructDetModelType>("ModelType").noneAllowed(),
                           lookup<&R::systemSource, StructDetViewSystemSource>("SystemSource"),
                           column<&R::keepUpright>("KeepUpright"));
    });
}

template <>
const RecordDescription& descriptionOf<StructDetailProcessStepPrecondition>()
{
    using R = StructDetailProcessStepPrecondition;
    return described([] {
        return describe<R>("StructDetailProcessStepPrecondition",
                           "DetProcStepPrecondition",
                           inDetailCatalogue,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::script>("Script"),
                           column<&R::stopProcess>("StopProcess"));
    });
}

std::span<const DescriptionFunction> records::detailProcessRecords()
{
    static constexpr DescriptionFunction types[] = {
        &descriptionOf<StructDetailProcessDefinition>,
        &descriptionOf<StructDetailProcessStep>,
        &descriptionOf<StructDetailFilenameSelector>,
        &descriptionOf<StructDetailProcessSelection>,
        &descriptionOf<StructDetailProcessSort>,
        &descriptionOf<StructDetailStyleMap>,
        &descriptionOf<StructDetailStyleMapItem>,
        &descriptionOf<StructDetProcessScales>,
        &descriptionOf<StructDetProcessScalesItem>,
        &descriptionOf<StructDetailProcessMain2CutScale>,
        &descriptionOf<StructDetailProcessCategory>,
        &descriptionOf<StructDetProcessesSuiteDefinition>,
        &descriptionOf<StructDetProcessesSuiteItem>,
        &descriptionOf<StructDetailStyleOverrides>,
        &descriptionOf<StructCoordSystemSelector>,
        &descriptionOf<StructDetailProcessStepPrecondition>,
    };
    return types;
}
