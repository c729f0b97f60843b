#include <korodbc/records/configuration/ApplicationRecords.h>
#include <korodbc/records/DescriptionBuilder.h>
#include <korodbc/records/Registry.h>

using namespace records;

template <>
const RecordDescription& descriptionOf<StructSTDApplication_ImportExport>()
{
    using R = StructSTDApplication_ImportExport;
    return described([] {
        return describe<R>("StructSTDApplication_ImportExport",
                           "STD_Application",
                           inConfiguration,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::imports>("Imports"),
                           column<&R::exports>("Exports"));
    });
}

template <>
const RecordDescription& descriptionOf<StructPRFApplication_ImportExport>()
{
    using R = StructPRFApplication_ImportExport;
    return described([] {
        return describe<R>("StructPRFApplication_ImportExport",
                           "PRF_Application",
                           inConfiguration,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::imports>("Imports"),
                           column<&R::exports>("Exports"));
    });
}

template <>
const RecordDescription& descriptionOf<StructNCDBStyle>()
{
    using R = StructNCDBStyle;
    return described([] {
        return describe<R>("StructNCDBStyle",
                           "NCDBStyle",
                           inConfiguration,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::fileExtension>("FileExtension"),
                           column<&R::decimals>("Decimals"),
                           owner<&R::ownerText>("OwnerText"));
    });
}

template <>
const RecordDescription& descriptionOf<StructNCDBProcess>()
{
    using R = StructNCDBProcess;
    return described([] {
        return describe<R>("StructNCDBProcess",
                           "NCDBProcess",
                           inConfiguration,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::folder>("Folder"),
                           owner<&R::ownerText>("OwnerText"));
    });
}

template <>
const RecordDescription& descriptionOf<StructNCDBProcessStep>()
{
    using R = StructNCDBProcessStep;
    return described([] {
        return describe<R>("StructNCDBProcessStep",
                           "NCDBProcessStep",
                           inConfiguration,
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           lookup<&R::process, StructNCDBProcess>("Process"),
                           lookup<&R::style, StructNCDBStyle>("Style"),
                           column<&R::position>("Position"),
                           column<&R::selection>("Selection"),
                           owner<&R::ownerText>("OwnerText"));
    });
}

template <>
const RecordDescription& descriptionOf<StructNSAModule>()
{
    using R = StructNSAModule;
    return described([] {
        return describe<R>("StructNSAModule",
                           "NSAModule",
                           DataSources{KorDSNDefinitions::kRules},
                           key<&R::key>("Key"),
                           runName<&R::runName>("RunName"),
                           column<&R::internalName>("InternalName"),
                           column<&R::version>("Version"));
    });
}

template <>
const RecordDescription& descriptionOf<StructNSAModuleDefinition>()
{
    using R = StructNSAModuleDefinition;
    return described([] {
        return describe<R>("StructNSAModuleDefinition",
                           "NSAModuleDefinition",
                           DataSources{KorDSNDefinitions::kRules},
                           key<&R::key>("Key"),
                           lookup<&R::module, StructNSAModule>("Module"),
                           column<&R::standard>("Standard"),
                           column<&R::jointName>("JointName"));
    });
}

template <>
const RecordDescription& descriptionOf<StructNSAModuleDllSigned>()
{
    using R = StructNSAModuleDllSigned;
    return described([] {
        return describe<R>("StructNSAModuleDllSigned",
                           "NSAModuleDllSigned",
                           DataSources{KorDSNDefinitions::kRules},
                           key<&R::key>("Key"),
                           lookup<&R::module, StructNSAModule>("Module"),
                           column<&R::fileName>("FileName"),
                           column<&R::signature>("Signature"));
    });
}

std::span<const DescriptionFunction> records::applicationRecords()
{
    static constexpr DescriptionFunction list[] = {descriptionOf<StructSTDApplication_ImportExport>,
                                                   descriptionOf<StructPRFApplication_ImportExport>,
                                                   descriptionOf<StructNCDBStyle>,
                                                   descriptionOf<StructNCDBProcess>,
                                                   descriptionOf<StructNCDBProcessStep>,
                                                   descriptionOf<StructNSAModule>,
                                                   descriptionOf<StructNSAModuleDefinition>,
                                                   descriptionOf<StructNSAModuleDllSigned>};
    return list;
}
