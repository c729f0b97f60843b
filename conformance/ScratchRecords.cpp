#include "conformance/ScratchRecords.h"

#include <korodbc/records/DescriptionBuilder.h>

using namespace records;

template <std::same_as<ConformancePart> R>
constexpr Entry listOf<R>[] = {
    column(&R::number, "Part%d"),
};

template <std::same_as<ConformanceRow> R>
constexpr Entry listOf<R>[] = {
    table("ConformanceRows", inConfiguration),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::number, "Number"),
    column(&R::real, "Real"),
    sortOrder(&R::sortOrder, "SortOrder"),
    itemCount(&R::parts, "Parts"),
    numberedItems(&R::items, 3),
};

template <std::same_as<ConformanceWideRow> R>
constexpr Entry listOf<R>[] = {
    table("ConformanceRows", inConfiguration),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::later, "Later"),
};

template <std::same_as<ConformanceItem> R>
constexpr Entry listOf<R>[] = {
    table("ConformanceItems", inConfiguration), key(&R::key, "Key"),      itemOwner(&R::list, "List"),
    itemOrder(&R::position, "Position"),        column(&R::text, "Text"),
};

template <std::same_as<ConformanceList> R>
constexpr Entry listOf<R>[] = {
    table("ConformanceLists", inConfiguration),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    items(&R::items),
};

template <std::same_as<ConformanceName> R>
constexpr Entry listOf<R>[] = {
    table("ConformanceNames", inConfiguration),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
};

template <std::same_as<ConformanceMissing> R>
constexpr Entry listOf<R>[] = {
    table("ConformanceMissing", inConfiguration),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
};

template struct records::Described<ConformanceRow>;
template struct records::Described<ConformanceWideRow>;
template struct records::Described<ConformanceItem>;
template struct records::Described<ConformanceList>;
template struct records::Described<ConformanceName>;
template struct records::Described<ConformanceMissing>;
