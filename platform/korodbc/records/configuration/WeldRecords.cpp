#include <korodbc/records/configuration/WeldRecords.h>
#include <korodbc/records/DescriptionBuilder.h>
#include <korodbc/records/Registry.h>

using namespace records;

template <>
const RecordDescription& descriptionOf<StructWeldSeamBasic>()
{
    using R = StructWeldSeamBasic;
    return described([] {
        return describe<R>("StructWeldSeamBasic",
                           "WeldType",
                           inConfiguration,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::symbol>("Symbol"),
                           column<&R::filletWeld>("FilletWeld"),
                           sortOrder<&R::sortOrder>("SortOrder"));
    });
}

template <>
const RecordDescription& descriptionOf<StructWeldSeam>()
{
    using R = StructWeldSeam;
    return described([] {
        return describe<R>("StructWeldSeam",
                           "CombiWelding",
                           inConfiguration,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           lookup<&R::firstWeld, StructWeldSeamBasic>("FirstWeld"),
                           lookup<&R::secondWeld, StructWeldSeamBasic>("SecondWeld").noneAllowed(),
                           sortOrder<&R::sortOrder>("SortOrder"));
    });
}

template <>
const RecordDescription& descriptionOf<StructFaceShape>()
{
    using R = StructFaceShape;
    return described([] {
        return describe<R>("StructFaceShape",
                           "WeldShape",
                           inConfiguration,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::symbol>("Symbol"));
    });
}

template <>
const RecordDescription& descriptionOf<StructSeamExecuting>()
{
    using R = StructSeamExecuting;
    return described([] {
        return describe<R>("StructSeamExecuting",
                           "WeldDesign",
                           inConfiguration,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::siteWeld>("SiteWeld"),
                           column<&R::allAround>("AllAround"));
    });
}

template <>
const RecordDescription& descriptionOf<StructWeldSeamText>()
{
    using R = StructWeldSeamText;
    return described([] {
        return describe<R>("StructWeldSeamText",
                           "Texts",
                           inConfigurationAndAddin,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"));
    });
}

int StructWeldSeamMarshal::getKeyOfWelds(long firstWeld, long secondWeld, int& key)
{
    StructWeldSeam weld;
    const int result =
        getFirstWhere<&StructWeldSeam::firstWeld, &StructWeldSeam::secondWeld>(firstWeld, secondWeld, weld);
    if (result == 1)
        key = weld.key;
    return result;
}

std::span<const DescriptionFunction> records::weldRecords()
{
    static constexpr DescriptionFunction list[] = {descriptionOf<StructWeldSeamBasic>,
                                                   descriptionOf<StructWeldSeam>,
                                                   descriptionOf<StructFaceShape>,
                                                   descriptionOf<StructSeamExecuting>,
                                                   descriptionOf<StructWeldSeamText>};
    return list;
}
