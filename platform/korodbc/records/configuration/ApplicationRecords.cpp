#include <korodbc/records/configuration/ApplicationRecords.h>
#include <korodbc/records/DescriptionBuilder.h>

using namespace records;

template <std::same_as<StructSTDApplication_ImportExport> R>
constexpr Entry listOf<R>[] = {
    table("STD_Application", inConfiguration),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::imports, "Imports"),
    column(&R::exports, "Exports"),
};

template <std::same_as<StructPRFApplication_ImportExport> R>
constexpr Entry listOf<R>[] = {
    table("PRF_Application", inConfiguration),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::imports, "Imports"),
    column(&R::exports, "Exports"),
};

template <std::same_as<StructNCDBStyle> R>
constexpr Entry listOf<R>[] = {
    table("NCDBStyle", inConfiguration),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::fileExtension, "FileExtension"),
    column(&R::decimals, "Decimals"),
    owner(&R::ownerText, "OwnerText"),
};

template <std::same_as<StructNCDBProcess> R>
constexpr Entry listOf<R>[] = {
    table("NCDBProcess", inConfiguration),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::folder, "Folder"),
    owner(&R::ownerText, "OwnerText"),
};

template <std::same_as<StructNCDBProcessStep> R>
constexpr Entry listOf<R>[] = {
    table("NCDBProcessStep", inConfiguration),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    lookup<StructNCDBProcess>(&R::process, "Process"),
    lookup<StructNCDBStyle>(&R::style, "Style"),
    column(&R::position, "Position"),
    column(&R::selection, "Selection"),
    owner(&R::ownerText, "OwnerText"),
};

template <std::same_as<StructNSAModule> R>
constexpr Entry listOf<R>[] = {
    table("NSAModule", DataSources{KorDSNDefinitions::kRules}),
    key(&R::key, "Key"),
    runName(&R::runName, "RunName"),
    column(&R::internalName, "InternalName"),
    column(&R::version, "Version"),
};

template <std::same_as<StructNSAModuleDefinition> R>
constexpr Entry listOf<R>[] = {
    table("NSAModuleDefinition", DataSources{KorDSNDefinitions::kRules}),
    key(&R::key, "Key"),
    lookup<StructNSAModule>(&R::module, "Module"),
    column(&R::standard, "Standard"),
    column(&R::jointName, "JointName"),
};

template <std::same_as<StructNSAModuleDllSigned> R>
constexpr Entry listOf<R>[] = {
    table("NSAModuleDllSigned", DataSources{KorDSNDefinitions::kRules}),
    key(&R::key, "Key"),
    lookup<StructNSAModule>(&R::module, "Module"),
    column(&R::fileName, "FileName"),
    column(&R::signature, "Signature"),
};

constinit const Family records::applicationRecords =
    family<StructSTDApplication_ImportExport, StructPRFApplication_ImportExport, StructNCDBStyle,
           StructNCDBProcess, StructNCDBProcessStep, StructNSAModule, StructNSAModuleDefinition,
           StructNSAModuleDllSigned>;
