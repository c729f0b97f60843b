#include <korodbc/records/configuration/FootingRecords.h>
#include <korodbc/records/DescriptionBuilder.h>
#include <korodbc/records/Registry.h>

using namespace records;

template <>
const RecordDescription& descriptionOf<StructFootingIsolatedFormulaMask>()
{
    using R = StructFootingIsolatedFormulaMask;
    return described([] {
        return describe<R>("StructFootingIsolatedFormulaMask",
                           "FootingIsolatedFormulaMask",
                           inConfiguration,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::mask>("Mask"));
    });
}

template <>
const RecordDescription& descriptionOf<StructFootingIsolatedFormulaDefault>()
{
    using R = StructFootingIsolatedFormulaDefault;
    return described([] {
        return describe<R>("StructFootingIsolatedFormulaDefault",
                           "FootingIsolatedFormulaDefault",
                           inConfiguration,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           lookup<&R::mask, StructFootingIsolatedFormulaMask>("Mask"),
                           column<&R::formula>("Formula"),
                           sortOrder<&R::sortOrder>("SortOrder"));
    });
}

std::span<const DescriptionFunction> records::footingRecords()
{
    static constexpr DescriptionFunction list[] = {descriptionOf<StructFootingIsolatedFormulaMask>,
                                                   descriptionOf<StructFootingIsolatedFormulaDefault>};
    return list;
}
