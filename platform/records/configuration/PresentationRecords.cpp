#include "records/configuration/PresentationRecords.h"

#include "records/DescriptionBuilder.h"
#include "records/Registry.h"

using namespace records;

template <>
const RecordDescription& descriptionOf<StructRenderMaterial>()
{
    using R = StructRenderMaterial;
    static constexpr auto list = describe<R>("StructRenderMaterial",
                                             "RenderMaterial",
                                             inConfiguration,
                                             key<&R::key>("Key"),
                                             runName<&R::runName>("RunName"),
                                             column<&R::red>("Red"),
                                             column<&R::green>("Green"),
                                             column<&R::blue>("Blue"),
                                             column<&R::transparency>("Transparency"),
                                             column<&R::shininess>("Shininess"),
                                             column<&R::texture>("Texture"),
                                             owner<&R::ownerText>("OwnerText"));
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
}

template <>
const RecordDescription& descriptionOf<StructSymbols>()
{
    using R = StructSymbols;
    static constexpr auto list = describe<R>("StructSymbols",
                                             "Symbols",
                                             inConfiguration,
                                             key<&R::key>("Key"),
                                             runName<&R::runName>("RunName"),
                                             column<&R::fileName>("FileName"),
                                             column<&R::height>("Height"),
                                             column<&R::rotation>("Rotation"),
                                             owner<&R::ownerText>("OwnerText"));
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
}

template <>
const RecordDescription& descriptionOf<StructSource>()
{
    using R = StructSource;
    static constexpr auto list = describe<R>("StructSource",
                                             "Sources",
                                             inConfiguration,
                                             key<&R::key>("Key"),
                                             runName<&R::runName>("RunName"),
                                             column<&R::description>("Description"),
                                             owner<&R::ownerText>("OwnerText"));
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
}

std::span<const DescriptionFunction> records::presentationRecords()
{
    static constexpr DescriptionFunction list[] = {
        descriptionOf<StructRenderMaterial>, descriptionOf<StructSymbols>, descriptionOf<StructSource>};
    return list;
}
