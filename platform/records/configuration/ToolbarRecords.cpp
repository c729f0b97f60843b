#include "records/configuration/ToolbarRecords.h"

#include "records/DescriptionBuilder.h"
#include "records/Registry.h"

using namespace records;

template <>
const RecordDescription& descriptionOf<StructToolbarsTable>()
{
    using R = StructToolbarsTable;
    static constexpr auto list = describe<R>("StructToolbarsTable",
                                             "Toolbars",
                                             DataSources{KorDSNDefinitions::kToolbars},
                                             key<&R::key>("Key"),
                                             runName<&R::runName>("RunName"),
                                             column<&R::toolTip>("ToolTip"),
                                             column<&R::parent>("Parent"),
                                             column<&R::position>("Position"),
                                             column<&R::visible>("Visible"),
                                             column<&R::docking>("Docking"));
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
}

template <>
const RecordDescription& descriptionOf<StructToolbarsDefault>()
{
    using R = StructToolbarsDefault;
    static constexpr auto list = describe<R>("StructToolbarsDefault",
                                             "ToolbarsDefault",
                                             DataSources{KorDSNDefinitions::kToolbars},
                                             key<&R::key>("Key"),
                                             runName<&R::runName>("RunName"),
                                             column<&R::toolTip>("ToolTip"),
                                             column<&R::parent>("Parent"),
                                             column<&R::position>("Position"),
                                             column<&R::visible>("Visible"),
                                             column<&R::docking>("Docking"));
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
}

std::span<const DescriptionFunction> records::toolbarRecords()
{
    static constexpr DescriptionFunction list[] = {descriptionOf<StructToolbarsTable>,
                                                   descriptionOf<StructToolbarsDefault>};
    return list;
}
