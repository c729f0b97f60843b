#include <korodbc/records/configuration/WizardRecords.h>
#include <korodbc/records/DescriptionBuilder.h>

using namespace records;

template <std::same_as<StructDisplayControl> R>
constexpr Entry listOf<R>[] = {
    table("DisplayControl", inConfiguration),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::controlType, "ControlType"),
    column(&R::readOnly, "ReadOnly"),
};

template <std::same_as<StructWizardSteps> R>
constexpr Entry listOf<R>[] = {
    table("WizardSteps", DataSources{KorDSNDefinitions::kWizards}),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::task, "TaskID"),
    column(&R::position, "Position"),
};

template <std::same_as<StructWizardControl> R>
constexpr Entry listOf<R>[] = {
    table("WizardControl", DataSources{KorDSNDefinitions::kWizards}),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    lookup<StructWizardSteps>(&R::step, "StepID"),
    column(&R::position, "Position"),
    lookup<StructDisplayControl>(&R::displayControl, "DisplayControl"),
};

constinit const Family records::wizardRecords =
    family<StructDisplayControl, StructWizardSteps, StructWizardControl>;
