#include <korodbc/records/DescriptionBuilder.h>
#include <korodbc/records/detail/DetailCatalogueRecords.h>
#include <korodbc/records/detail/DetailObjectRecords.h>
#include <korodbc/records/detail/DetailSettingRecords.h>
#include <korodbc/records/detail/DetailStyleRecords.h>
#include <korodbc/records/detail/DetailViewRecords.h>
#include <korodbc/records/Registry.h>

#include <utility>

using namespace records;

template <>
const RecordDescription& descriptionOf<StructDetViewRequestCategory>()
{
    using R = StructDetViewRequestCategory;
    return described([] {
        return describe<R>("StructDetViewRequestCategory",
                           "DetViewRequestCategories",
                           inDetails,
                           key<&R::key>("Key"),
                           reference<&R::baseCategory, StructDetBaseCategory>("BaseCategory"),
                           itemOwner<&R::detViewRequest>("DetViewRequest").names<StructDetViewRequest>(),
                           unstored<&R::deleted>());
    });
}

template <>
const RecordDescription& descriptionOf<StructDetViewRequest>()
{
    using R = StructDetViewRequest;
    return described([] {
        return describe<R>("StructDetViewRequest",
                           "DetViewRequest",
                           inDetails,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           reference<&R::systemAndBox, StructDetViewSystemAndBox>("SystemAndBox"),
                           reference<&R::objReprMap, StructDetObjReprMap>("ObjReprMap"),
                           reference<&R::dimStrategy, StructDetViewDimStrategy>("DimStrategy"),
                           reference<&R::lengthClipXY, StructDetViewLengthClip>("LengthClipXY"),
                           column<&R::usedForCutsAndCallouts>("UsedForCutsAndCallouts"),
                           column<&R::titlePosition>("TitlePosition"),
                           column<&R::calloutTitleTemplate>("CalloutTitleTemplate"),
                           column<&R::scaleFactor>("ScaleFactor").tolerant(),
                           column<&R::rotation>("Rotation").tolerant(),
                           owner<&R::ownerText>("OwnerText"),
                           unstored<&R::categories>());
    });
}

int StructDetViewRequestMarshal::loadCategories(StructDetViewRequest& record)
{
    KorArray<StructDetViewRequestCategory> categories;
    const int result = StructDetViewRequestCategoryMarshal::getByDetViewRequest(record.key, categories);
    record.categories = std::move(categories);
    return result;
}

template <>
const RecordDescription& descriptionOf<StructDetViewSystemAndBox>()
{
    using R = StructDetViewSystemAndBox;
    return described([] {
        return describe<R>("StructDetViewSystemAndBox",
                           "DetViewSystemAndBox",
                           inDetails,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           lookup<&R::systemSource, StructDetViewSystemSource>("SystemSource"),
                           lookup<&R::selectMode, StructDetViewSelectMode>("SelectMode"),
                           column<&R::viewDirection>("ViewDirection"),
                           column<&R::boxMode>("BoxMode"),
                           column<&R::rotationX>("RotationX"),
                           column<&R::rotationZ>("RotationZ"),
                           column<&R::depthFront>("DepthFront").tolerant(),
                           column<&R::depthBack>("DepthBack").tolerant(),
                           owner<&R::ownerText>("OwnerText"));
    });
}

template <>
const RecordDescription& descriptionOf<StructDetViewLengthClip>()
{
    using R = StructDetViewLengthClip;
    return described([] {
        return describe<R>("StructDetViewLengthClip",
                           "DetViewLengthClip",
                           inDetails,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::clipX>("ClipX"),
                           column<&R::clipY>("ClipY"),
                           lookup<&R::clippingType, StructClippingType>("ClippingType"),
                           column<&R::minimumLength>("MinimumLength").tolerant(),
                           column<&R::gap>("Gap").tolerant(),
                           owner<&R::ownerText>("OwnerText"));
    });
}

template <>
const RecordDescription& descriptionOf<StructDetViewDimStrategyItem>()
{
    using R = StructDetViewDimStrategyItem;
    return described([] {
        return describe<R>("StructDetViewDimStrategyItem",
                           "DetViewDimStrategyItems",
                           inDetails,
                           itemOwner<&R::key>("Key"),
                           itemOrder<&R::order>("Order"),
                           column<&R::description>("Description"),
                           owner<&R::ownerText>("OwnerText"),
                           lookup<&R::type, StructDetRequestType>("Type"),
                           reference<&R::requestLinear, StructDetViewDimRequestLinear>("RequestLinear"),
                           column<&R::groupEqualDistances>("GroupEqualDistances"),
                           column<&R::brokenRunningDimension>("BrokenRunningDimension"),
                           lookup<&R::runningDimensionTextAlignment, StructDetRunningDimensionTextAlignment>(
                               "RunningDimensionTextAlignment")
                               .zeroIsNone(),
                           column<&R::hideDimensionPoint>("HideDimensionPoint"));
    });
}

template <>
const RecordDescription& descriptionOf<StructDetViewDimStrategy>()
{
    using R = StructDetViewDimStrategy;
    return described([] {
        return describe<R>("StructDetViewDimStrategy",
                           "DetViewDimStrategyNew",
                           inDetails,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::oneChainPerBoltDiam>("OneChainPerBoltDiam"),
                           owner<&R::ownerText>("OwnerText"),
                           itemCount<&R::numberItems>("NumberItems"),
                           items<&R::items>());
    });
}

template <>
const RecordDescription& descriptionOf<StructDetViewDimRequestLinearGroup>()
{
    using R = StructDetViewDimRequestLinearGroup;
    return described([] {
        return describe<R>("StructDetViewDimRequestLinearGroup",
                           "DetViewDimRequestLinearGroup",
                           inDetails,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::bitmapId>("BitmapId"));
    });
}

template <>
const RecordDescription& descriptionOf<StructDetViewDimRequestLinear>()
{
    using R = StructDetViewDimRequestLinear;
    return described([] {
        return describe<R>("StructDetViewDimRequestLinear",
                           "DetViewDimRequestLinear",
                           inDetails,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           lookup<&R::direction, StructDetRequestLinearDirection>("Direction"),
                           column<&R::allowCombine>("AllowCombine"),
                           column<&R::arrangeAbove>("ArrangeAbove"),
                           column<&R::arrangeGlobally>("ArrangeGlobally"),
                           column<&R::groupRelatedDimensions>("GroupRelatedDimensions"),
                           column<&R::oneChainPerObjectInFirstSelection>("OneChainPerObjectInFirstSelection"),
                           column<&R::labelContents>("LabelContents"),
                           column<&R::labelPosition>("LabelPosition"),
                           reference<&R::group, StructDetViewDimRequestLinearGroup>("Group"),
                           sortOrder<&R::sortOrder>("SortOrder"),
                           owner<&R::ownerText>("OwnerText"),
                           itemCount<&R::numberPoints>("NumberPoints"),
                           numberedReferences<&R::points, StructDetViewDimPointSelection>("Point%d", 8));
    });
}

template <>
const RecordDescription& descriptionOf<StructDetViewDimPointSelection>()
{
    using R = StructDetViewDimPointSelection;
    return described([] {
        return describe<R>(
            "StructDetViewDimPointSelection",
            "DetViewDimPointSelection",
            inDetails,
            key<&R::key>("Key"),
            runName<&R::runName>("RunName"),
            lookup<&R::type, StructDetViewDimPointtype>("Type"),
            reference<&R::objects, StructDetObjQualifierSet>("Objects"),
            lookup<&R::geometricRestrictions, StructDetVwDimGeomRestrictions>("GeometricRestrictions"),
            column<&R::outermostOnly>("OutermostOnly"),
            owner<&R::ownerText>("OwnerText"));
    });
}

std::span<const DescriptionFunction> records::detailViewRecords()
{
    static constexpr DescriptionFunction types[] = {
        &descriptionOf<StructDetViewRequest>,
        &descriptionOf<StructDetViewRequestCategory>,
        &descriptionOf<StructDetViewSystemAndBox>,
        &descriptionOf<StructDetViewLengthClip>,
        &descriptionOf<StructDetViewDimStrategy>,
        &descriptionOf<StructDetViewDimStrategyItem>,
        &descriptionOf<StructDetViewDimRequestLinear>,
        &descriptionOf<StructDetViewDimRequestLinearGroup>,
        &descriptionOf<StructDetViewDimPointSelection>,
    };
    return types;
}
