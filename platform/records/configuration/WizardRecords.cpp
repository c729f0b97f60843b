#include "records/configuration/WizardRecords.h"

#include "records/DescriptionBuilder.h"
#include "records/Registry.h"

using namespace records;

template <>
const RecordDescription& descriptionOf<StructDisplayControl>()
{
    using R = StructDisplayControl;
    static constexpr auto list = describe<R>("StructDisplayControl",
                                             "DisplayControl",
                                             inConfiguration,
                                             key<&R::key>("Key"),
                                             runName<&R::runName>("RunName"),
                                             column<&R::controlType>("ControlType"),
                                             column<&R::readOnly>("ReadOnly"));
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
}

template <>
const RecordDescription& descriptionOf<StructWizardSteps>()
{
    using R = StructWizardSteps;
    static constexpr auto list = describe<R>("StructWizardSteps",
                                             "WizardSteps",
                                             DataSources{KorDSNDefinitions::kWizards},
                                             key<&R::key>("Key"),
                                             runName<&R::runName>("RunName"),
                                             column<&R::task>("TaskID"),
                                             column<&R::position>("Position"));
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
}

template <>
const RecordDescription& descriptionOf<StructWizardControl>()
{
    using R = StructWizardControl;
    static constexpr auto list = describe<R>("StructWizardControl",
                                             "WizardControl",
                                             DataSources{KorDSNDefinitions::kWizards},
                                             key<&R::key>("Key"),
                                             runName<&R::runName>("RunName"),
                                             lookup<&R::step, StructWizardSteps>("StepID"),
                                             column<&R::position>("Position"),
                                             lookup<&R::displayControl, StructDisplayControl>("DisplayControl"));
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
}

std::span<const DescriptionFunction> records::wizardRecords()
{
    static constexpr DescriptionFunction list[] = {
        descriptionOf<StructDisplayControl>, descriptionOf<StructWizardSteps>, descriptionOf<StructWizardControl>};
    return list;
}
