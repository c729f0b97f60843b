#include <korodbc/records/configuration/ToolbarRecords.h>
#include <korodbc/records/DescriptionBuilder.h>

using namespace records;

template <std::same_as<StructToolbarsTable> R>
constexpr Entry listOf<R>[] = {
    table("Toolbars", DataSources{KorDSNDefinitions::kToolbars}),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::toolTip, "ToolTip"),
    column(&R::parent, "Parent"),
    column(&R::position, "Position"),
    column(&R::visible, "Visible"),
    column(&R::docking, "Docking"),
};

template <std::same_as<StructToolbarsDefault> R>
constexpr Entry listOf<R>[] = {
    table("ToolbarsDefault", DataSources{KorDSNDefinitions::kToolbars}),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::toolTip, "ToolTip"),
    column(&R::parent, "Parent"),
    column(&R::position, "Position"),
    column(&R::visible, "Visible"),
    column(&R::docking, "Docking"),
};

constinit const Family records::toolbarRecords = family<StructToolbarsTable, StructToolbarsDefault>;
