#include <korodbc/records/configuration/ToolbarRecords.h>
#include <korodbc/records/DescriptionBuilder.h>
#include <korodbc/records/Registry.h>

using namespace records;

template <>
const RecordDescription& descriptionOf<StructToolbarsTable>()
{
    using R = StructToolbarsTable;
    return described([] {
        return describe<R>("StructToolbarsTable",
                           "Toolbars",
                           DataSources{KorDSNDefinitions::kToolbars},
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::toolTip>("ToolTip"),
                           column<&R::parent>("Parent"),
                           column<&R::position>("Position"),
                           column<&R::visible>("Visible"),
                           column<&R::docking>("Docking"));
    });
}

template <>
const RecordDescription& descriptionOf<StructToolbarsDefault>()
{
    using R = StructToolbarsDefault;
    return described([] {
        return describe<R>("StructToolbarsDefault",
                           "ToolbarsDefault",
                           DataSources{KorDSNDefinitions::kToolbars},
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::toolTip>("ToolTip"),
                           column<&R::parent>("Parent"),
                           column<&R::position>("Position"),
                           column<&R::visible>("Visible"),
                           column<&R::docking>("Docking"));
    });
}

std::span<const DescriptionFunction> records::toolbarRecords()
{
    static constexpr DescriptionFunction list[] = {descriptionOf<StructToolbarsTable>,
                                                   descriptionOf<StructToolbarsDefault>};
    return list;
}
