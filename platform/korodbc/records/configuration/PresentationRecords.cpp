#include <korodbc/records/configuration/PresentationRecords.h>
#include <korodbc/records/DescriptionBuilder.h>

using namespace records;

template <std::same_as<StructRenderMaterial> R>
constexpr Entry listOf<R>[] = {
    table("RenderMaterial", inConfiguration),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::red, "Red"),
    column(&R::green, "Green"),
    column(&R::blue, "Blue"),
    column(&R::transparency, "Transparency"),
    column(&R::shininess, "Shininess"),
    column(&R::texture, "Texture"),
    owner(&R::ownerText, "OwnerText"),
};

template <std::same_as<StructSymbols> R>
constexpr Entry listOf<R>[] = {
    table("Symbols", inConfiguration),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::fileName, "FileName"),
    column(&R::height, "Height"),
    column(&R::rotation, "Rotation"),
    owner(&R::ownerText, "OwnerText"),
};

template <std::same_as<StructSource> R>
constexpr Entry listOf<R>[] = {
    table("Sources", inConfiguration),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::description, "Description"),
    owner(&R::ownerText, "OwnerText"),
};

constinit const Family records::presentationRecords = family<StructRenderMaterial, StructSymbols, StructSource>;
