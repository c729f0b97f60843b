#include <korodbc/records/configuration/AuthorRecords.h>
#include <korodbc/records/DescriptionBuilder.h>

using namespace records;

template <std::same_as<StructAuthor> R>
constexpr Entry listOf<R>[] = {
    table("Authors", inConfiguration),
    key(&R::companyText, "CompanyText"),
    runName(&R::companyName, "CompanyName"),
};

template <std::same_as<StructDevelopersID> R>
constexpr Entry listOf<R>[] = {
    table("DevelopersIDs", inConfiguration),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::rangeStart, "RangeStart"),
    column(&R::rangeEnd, "RangeEnd"),
};

constinit const Family records::authorRecords = family<StructAuthor, StructDevelopersID>;
