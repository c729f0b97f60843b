#include <korodbc/records/configuration/WeldRecords.h>
#include <korodbc/records/DescriptionBuilder.h>

using namespace records;

template <std::same_as<StructWeldSeamBasic> R>
constexpr Entry listOf<R>[] = {
    table("WeldType", inConfiguration),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::symbol, "Symbol"),
    column(&R::filletWeld, "FilletWeld"),
    sortOrder(&R::sortOrder, "SortOrder"),
};

template <std::same_as<StructWeldSeam> R>
constexpr Entry listOf<R>[] = {
    table("CombiWelding", inConfiguration),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    lookup<StructWeldSeamBasic>(&R::firstWeld, "FirstWeld"),
    lookup<StructWeldSeamBasic>(&R::secondWeld, "SecondWeld").noneAllowed(),
    sortOrder(&R::sortOrder, "SortOrder"),
};

template <std::same_as<StructFaceShape> R>
constexpr Entry listOf<R>[] = {
    table("WeldShape", inConfiguration),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::symbol, "Symbol"),
};

template <std::same_as<StructSeamExecuting> R>
constexpr Entry listOf<R>[] = {
    table("WeldDesign", inConfiguration),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::siteWeld, "SiteWeld"),
    column(&R::allAround, "AllAround"),
};

template <std::same_as<StructWeldSeamText> R>
constexpr Entry listOf<R>[] = {
    table("Texts", inConfigurationAndAddin),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
};

int StructWeldSeamMarshal::getKeyOfWelds(long firstWeld, long secondWeld, int& key)
{
    StructWeldSeam weld;
    const int result =
        getFirstWhere<&StructWeldSeam::firstWeld, &StructWeldSeam::secondWeld>(firstWeld, secondWeld, weld);
    if (result == 1)
        key = weld.key;
    return result;
}

constinit const Family records::weldRecords =
    family<StructWeldSeamBasic, StructWeldSeam, StructFaceShape, StructSeamExecuting, StructWeldSeamText>;
