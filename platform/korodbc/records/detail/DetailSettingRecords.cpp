#include <korodbc/records/DescriptionBuilder.h>
#include <korodbc/records/detail/DetailCatalogueRecords.h>
#include <korodbc/records/detail/DetailSettingRecords.h>
#include <korodbc/records/Registry.h>

#include <utility>

using namespace records;

template <>
const RecordDescription& descriptionOf<StructDepthStatus>()
{
    using R = StructDepthStatus;
    return described([] {
        return describe<R>("StructDepthStatus",
                           "DepthStatus",
                           inDetailCatalogue,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           sortOrder<&R::sortOrder>("SortOrder"));
    });
}

template <>
const RecordDescription& descriptionOf<StructDetGeometricRestrictions>()
{
    using R = StructDetGeometricRestrictions;
    return described([] {
        return describe<R>("StructDetGeometricRestrictions",
                           "DetGeometricRestrictions",
                           inDetailCatalogue,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           sortOrder<&R::sortOrder>("SortOrder"));
    });
}

template <>
const RecordDescription& descriptionOf<StructDetRunningDimensionTextAlignment>()
{
    using R = StructDetRunningDimensionTextAlignment;
    return described([] {
        return describe<R>("StructDetRunningDimensionTextAlignment",
                           "DetRunningDimensionTextAlignment",
                           inDetailCatalogue,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"));
    });
}

template <>
const RecordDescription& descriptionOf<StructGridReferenceTokenFormat>()
{
    using R = StructGridReferenceTokenFormat;
    return described([] {
        return describe<R>("StructGridReferenceTokenFormat",
                           "GridReferenceTokenFormat",
                           inDetailCatalogue,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::script>("Script"),
                           owner<&R::ownerText>("OwnerText"));
    });
}

template <>
const RecordDescription& descriptionOf<StructDetailProcessScaleOverride>()
{
    using R = StructDetailProcessScaleOverride;
    return described([] {
        return describe<R>("StructDetailProcessScaleOverride",
                           "DetailProcessScaleOverride",
                           inDetailCatalogue,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::factor>("Factor"),
                           sortOrder<&R::sortOrder>("SortOrder"));
    });
}

template <>
const RecordDescription& descriptionOf<StructChangePrototypeScaleTo>()
{
    using R = StructChangePrototypeScaleTo;
    return described([] {
        return describe<R>("StructChangePrototypeScaleTo",
                           "ChangePrototypeScaleTo",
                           inDetailCatalogue,
                           key<&R::key>("Key"),
                           runName<&R::prototype>("Prototype"),
                           column<&R::scale>("Scale"));
    });
}

template <>
const RecordDescription& descriptionOf<StructHatchesMap>()
{
    using R = StructHatchesMap;
    return described([] {
        return describe<R>("StructHatchesMap",
                           "HatchesMap",
                           inDetailCatalogue,
                           key<&R::key>("Key"),
                           runName<&R::hatch>("Hatch"),
                           column<&R::correspondentHatch>("CorrespondentHatch"));
    });
}

template <>
const RecordDescription& descriptionOf<StructDetExternalObject>()
{
    using R = StructDetExternalObject;
    return described([] {
        return describe<R>("StructDetExternalObject",
                           "DetExternalObject",
                           inDetailCatalogue,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::className>("ClassName"),
                           lookup<&R::modelType, StructDetModelType>("ModelType"));
    });
}

template <>
const RecordDescription& descriptionOf<StructDetExternalObjectPropertyMap>()
{
    using R = StructDetExternalObjectPropertyMap;
    return described([] {
        return describe<R>("StructDetExternalObjectPropertyMap",
                           "DetExternalObjectPropertyMap",
                           inDetailCatalogue,
                           key<&R::key>("Key"),
                           lookup<&R::externalObject, StructDetExternalObject>("ExternalObject"),
                           column<&R::propertyName>("PropertyName"),
                           column<&R::token>("Token"));
    });
}

int StructDetExternalObjectPropertyMapMarshal::getTables(KorArray<StructDetExternalObject>& objects,
                                                         KorArray<StructDetExternalObjectPropertyMap>& properties)
{
    KorArray<StructDetExternalObject> read;
    const int result = StructDetExternalObjectMarshal::getTable(read);
    if (result != 1)
        return result;
    const int propertiesResult = getTable(properties);
    if (propertiesResult == 1)
        objects = std::move(read);
    return propertiesResult;
}

std::span<const DescriptionFunction> records::detailSettingRecords()
{
    static constexpr DescriptionFunction list[] = {descriptionOf<StructDepthStatus>,
                                                   descriptionOf<StructDetGeometricRestrictions>,
                                                   descriptionOf<StructDetRunningDimensionTextAlignment>,
                                                   descriptionOf<StructGridReferenceTokenFormat>,
                                                   descriptionOf<StructDetailProcessScaleOverride>,
                                                   descriptionOf<StructChangePrototypeScaleTo>,
                                                   descriptionOf<StructHatchesMap>,
                                                   descriptionOf<StructDetExternalObject>,
                                                   descriptionOf<StructDetExternalObjectPropertyMap>};
    return list;
}
