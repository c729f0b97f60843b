#include <korodbc/records/configuration/WizardRecords.h>
#include <korodbc/records/DescriptionBuilder.h>
#include <korodbc/records/Registry.h>

using namespace records;

template <>
const RecordDescription& descriptionOf<StructDisplayControl>()
{
    using R = StructDisplayControl;
    return described([] {
        return describe<R>("StructDisplayControl",
                           "DisplayControl",
                           inConfiguration,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::controlType>("ControlType"),
                           column<&R::readOnly>("ReadOnly"));
    });
}

template <>
const RecordDescription& descriptionOf<StructWizardSteps>()
{
    using R = StructWizardSteps;
    return described([] {
        return describe<R>("StructWizardSteps",
                           "WizardSteps",
                           DataSources{KorDSNDefinitions::kWizards},
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::task>("TaskID"),
                           column<&R::position>("Position"));
    });
}

template <>
const RecordDescription& descriptionOf<StructWizardControl>()
{
    using R = StructWizardControl;
    return described([] {
        return describe<R>("StructWizardControl",
                           "WizardControl",
                           DataSources{KorDSNDefinitions::kWizards},
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           lookup<&R::step, StructWizardSteps>("StepID"),
                           column<&R::position>("Position"),
                           lookup<&R::displayControl, StructDisplayControl>("DisplayControl"));
    });
}

std::span<const DescriptionFunction> records::wizardRecords()
{
    static constexpr DescriptionFunction list[] = {
        descriptionOf<StructDisplayControl>, descriptionOf<StructWizardSteps>, descriptionOf<StructWizardControl>};
    return list;
}
