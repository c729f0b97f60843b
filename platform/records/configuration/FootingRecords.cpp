#include "records/configuration/FootingRecords.h"

#include "records/DescriptionBuilder.h"
#include "records/Registry.h"

using namespace records;

template <>
const RecordDescription& descriptionOf<StructFootingIsolatedFormulaMask>()
{
    using R = StructFootingIsolatedFormulaMask;
    static constexpr auto list = describe<R>("StructFootingIsolatedFormulaMask",
                                             "FootingIsolatedFormulaMask",
                                             inConfiguration,
                                             key<&R::key>("Key"),
                                             runName<&R::runName>("RunName"),
                                             column<&R::mask>("Mask"));
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
}

template <>
const RecordDescription& descriptionOf<StructFootingIsolatedFormulaDefault>()
{
    using R = StructFootingIsolatedFormulaDefault;
    static constexpr auto list = describe<R>("StructFootingIsolatedFormulaDefault",
                                             "FootingIsolatedFormulaDefault",
                                             inConfiguration,
                                             key<&R::key>("Key"),
                                             runName<&R::runName>("RunName"),
                                             lookup<&R::mask, StructFootingIsolatedFormulaMask>("Mask"),
                                             column<&R::formula>("Formula"),
                                             sortOrder<&R::sortOrder>("SortOrder"));
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
}

std::span<const DescriptionFunction> records::footingRecords()
{
    static constexpr DescriptionFunction list[] = {descriptionOf<StructFootingIsolatedFormulaMask>,
                                                   descriptionOf<StructFootingIsolatedFormulaDefault>};
    return list;
}
