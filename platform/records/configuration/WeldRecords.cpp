#include "records/configuration/WeldRecords.h"

#include "records/DescriptionBuilder.h"
#include "records/Registry.h"

using namespace records;

template <>
const RecordDescription& descriptionOf<StructWeldSeamBasic>()
{
    using R = StructWeldSeamBasic;
    static constexpr auto list = describe<R>("StructWeldSeamBasic",
                                             "WeldType",
                                             inConfiguration,
                                             key<&R::key>("Key"),
                                             runName<&R::runName>("RunName"),
                                             column<&R::symbol>("Symbol"),
                                             column<&R::filletWeld>("FilletWeld"),
                                             sortOrder<&R::sortOrder>("SortOrder"));
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
}

template <>
const RecordDescription& descriptionOf<StructWeldSeam>()
{
    using R = StructWeldSeam;
    static constexpr auto list =
        describe<R>("StructWeldSeam",
                    "CombiWelding",
                    inConfiguration,
                    key<&R::key>("Key"),
                    runName<&R::runName>("RunName"),
                    lookup<&R::firstWeld, StructWeldSeamBasic>("FirstWeld"),
                    lookup<&R::secondWeld, StructWeldSeamBasic>("SecondWeld").noneAllowed(),
                    sortOrder<&R::sortOrder>("SortOrder"));
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
}

template <>
const RecordDescription& descriptionOf<StructFaceShape>()
{
    using R = StructFaceShape;
    static constexpr auto list = describe<R>("StructFaceShape",
                                             "WeldShape",
                                             inConfiguration,
                                             key<&R::key>("Key"),
                                             runName<&R::runName>("RunName"),
                                             column<&R::symbol>("Symbol"));
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
}

template <>
const RecordDescription& descriptionOf<StructSeamExecuting>()
{
    using R = StructSeamExecuting;
    static constexpr auto list = describe<R>("StructSeamExecuting",
                                             "WeldDesign",
                                             inConfiguration,
                                             key<&R::key>("Key"),
                                             runName<&R::runName>("RunName"),
                                             column<&R::siteWeld>("SiteWeld"),
                                             column<&R::allAround>("AllAround"));
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
}

template <>
const RecordDescription& descriptionOf<StructWeldSeamText>()
{
    using R = StructWeldSeamText;
    static constexpr auto list = describe<R>("StructWeldSeamText",
                                             "Texts",
                                             inConfigurationAndAddin,
                                             key<&R::key>("Key"),
                                             runName<&R::runName>("RunName"));
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
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
