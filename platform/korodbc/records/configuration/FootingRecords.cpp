#include <korodbc/records/configuration/FootingRecords.h>
#include <korodbc/records/DescriptionBuilder.h>

using namespace records;

template <std::same_as<StructFootingIsolatedFormulaMask> R>
constexpr Entry listOf<R>[] = {
    table("FootingIsolatedFormulaMask", inConfiguration),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::mask, "Mask"),
};

template <std::same_as<StructFootingIsolatedFormulaDefault> R>
constexpr Entry listOf<R>[] = {
    table("FootingIsolatedFormulaDefault", inConfiguration),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    lookup<StructFootingIsolatedFormulaMask>(&R::mask, "Mask"),
    column(&R::formula, "Formula"),
    sortOrder(&R::sortOrder, "SortOrder"),
};

constinit const Family records::footingRecords =
    family<StructFootingIsolatedFormulaMask, StructFootingIsolatedFormulaDefault>;
