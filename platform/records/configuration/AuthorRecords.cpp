#include "records/configuration/AuthorRecords.h"

#include "records/DescriptionBuilder.h"
#include "records/Registry.h"

using namespace records;

template <>
const RecordDescription& descriptionOf<StructAuthor>()
{
    using R = StructAuthor;
    static constexpr auto list = describe<R>("StructAuthor",
                                             "Authors",
                                             inConfiguration,
                                             key<&R::companyText>("CompanyText"),
                                             runName<&R::companyName>("CompanyName"));
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
}

template <>
const RecordDescription& descriptionOf<StructDevelopersID>()
{
    using R = StructDevelopersID;
    static constexpr auto list = describe<R>("StructDevelopersID",
                                             "DevelopersIDs",
                                             inConfiguration,
                                             key<&R::key>("Key"),
                                             runName<&R::runName>("RunName"),
                                             column<&R::rangeStart>("RangeStart"),
                                             column<&R::rangeEnd>("RangeEnd"));
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
}

std::span<const DescriptionFunction> records::authorRecords()
{
    static constexpr DescriptionFunction list[] = {descriptionOf<StructAuthor>, descriptionOf<StructDevelopersID>};
    return list;
}
