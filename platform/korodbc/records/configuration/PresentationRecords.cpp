#include <korodbc/records/configuration/PresentationRecords.h>
#include <korodbc/records/DescriptionBuilder.h>
#include <korodbc/records/Registry.h>

using namespace records;

template <>
const RecordDescription& descriptionOf<StructRenderMaterial>()
{
    using R = StructRenderMaterial;
    return described([] {
        return describe<R>("StructRenderMaterial",
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
    });
}

template <>
const RecordDescription& descriptionOf<StructSymbols>()
{
    using R = StructSymbols;
    return described([] {
        return describe<R>("StructSymbols",
                           "Symbols",
                           inConfiguration,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::fileName>("FileName"),
                           column<&R::height>("Height"),
                           column<&R::rotation>("Rotation"),
                           owner<&R::ownerText>("OwnerText"));
    });
}

template <>
const RecordDescription& descriptionOf<StructSource>()
{
    using R = StructSource;
    return described([] {
        return describe<R>("StructSource",
                           "Sources",
                           inConfiguration,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::description>("Description"),
                           owner<&R::ownerText>("OwnerText"));
    });
}

std::span<const DescriptionFunction> records::presentationRecords()
{
    static constexpr DescriptionFunction list[] = {
        descriptionOf<StructRenderMaterial>, descriptionOf<StructSymbols>, descriptionOf<StructSource>};
    return list;
}
