#include "conformance/ScratchRecords.h"

#include <korodbc/records/DescriptionBuilder.h>

using namespace records;

template <>
const RecordDescription& descriptionOf<ConformanceRow>()
{
    using R = ConformanceRow;
    return described([] {
        return describe<R>("ConformanceRow", "ConformanceRows", inConfiguration, key<&R::key>("Key"),
                           runName<&R::runName>("RunName"), column<&R::number>("Number"), column<&R::real>("Real"),
                           sortOrder<&R::sortOrder>("SortOrder"), itemCount<&R::parts>("Parts"),
                           numberedGroup<&R::items>(3, column<&ConformancePart::number>("Part%d")));
    });
}

template <>
const RecordDescription& descriptionOf<ConformanceWideRow>()
{
    using R = ConformanceWideRow;
    return described([] {
        return describe<R>("ConformanceWideRow", "ConformanceRows", inConfiguration, key<&R::key>("Key"),
                           runName<&R::runName>("RunName"), column<&R::later>("Later"));
    });
}

template <>
const RecordDescription& descriptionOf<ConformanceItem>()
{
    using R = ConformanceItem;
    return described([] {
        return describe<R>("ConformanceItem", "ConformanceItems", inConfiguration, key<&R::key>("Key"),
                           itemOwner<&R::list>("List"), itemOrder<&R::position>("Position"),
                           column<&R::text>("Text"));
    });
}

template <>
const RecordDescription& descriptionOf<ConformanceList>()
{
    using R = ConformanceList;
    return described([] {
        return describe<R>("ConformanceList", "ConformanceLists", inConfiguration, key<&R::key>("Key"),
                           runName<&R::runName>("RunName"), items<&R::items>());
    });
}

template <>
const RecordDescription& descriptionOf<ConformanceName>()
{
    using R = ConformanceName;
    return described([] {
        return describe<R>("ConformanceName", "ConformanceNames", inConfiguration, key<&R::key>("Key"),
                           runName<&R::runName>("RunName"));
    });
}

template <>
const RecordDescription& descriptionOf<ConformanceMissing>()
{
    using R = ConformanceMissing;
    return described([] {
        return describe<R>("ConformanceMissing", "ConformanceMissing", inConfiguration, key<&R::key>("Key"),
                           runName<&R::runName>("RunName"));
    });
}
