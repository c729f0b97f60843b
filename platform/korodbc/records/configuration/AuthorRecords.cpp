#include <korodbc/records/configuration/AuthorRecords.h>
#include <korodbc/records/DescriptionBuilder.h>
#include <korodbc/records/Registry.h>

using namespace records;

template <>
const RecordDescription& descriptionOf<StructAuthor>()
{
    using R = StructAuthor;
    return described([] {
        return describe<R>("StructAuthor",
                           "Authors",
                           inConfiguration,
                           key<&R::companyText>("CompanyText"),
                           runName<&R::companyName>("CompanyName"));
    });
}

template <>
const RecordDescription& descriptionOf<StructDevelopersID>()
{
    using R = StructDevelopersID;
    return described([] {
        return describe<R>("StructDevelopersID",
                           "DevelopersIDs",
                           inConfiguration,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::rangeStart>("RangeStart"),
                           column<&R::rangeEnd>("RangeEnd"));
    });
}

std::span<const DescriptionFunction> records::authorRecords()
{
    static constexpr DescriptionFunction list[] = {descriptionOf<StructAuthor>, descriptionOf<StructDevelopersID>};
    return list;
}
