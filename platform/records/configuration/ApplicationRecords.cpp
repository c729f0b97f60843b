#include "records/configuration/ApplicationRecords.h"

#include "records/DescriptionBuilder.h"
#include "records/Registry.h"

using namespace records;

template <>
const RecordDescription& descriptionOf<StructSTDApplication_ImportExport>()
{
    using R = StructSTDApplication_ImportExport;
    static constexpr auto list = describe<R>("StructSTDApplication_ImportExport",
                                             "STD_Application",
                                             inConfiguration,
                                             key<&R::key>("Key"),
                                             runName<&R::runName>("RunName"),
                                             column<&R::imports>("Imports"),
                                             column<&R::exports>("Exports"));
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
}

template <>
const RecordDescription& descriptionOf<StructPRFApplication_ImportExport>()
{
    using R = StructPRFApplication_ImportExport;
    static constexpr auto list = describe<R>("StructPRFApplication_ImportExport",
                                             "PRF_Application",
                                             inConfiguration,
                                             key<&R::key>("Key"),
                                             runName<&R::runName>("RunName"),
                                             column<&R::imports>("Imports"),
                                             column<&R::exports>("Exports"));
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
}

template <>
const RecordDescription& descriptionOf<StructNCDBStyle>()
{
    using R = StructNCDBStyle;
    static constexpr auto list = describe<R>("StructNCDBStyle",
                                             "NCDBStyle",
                                             inConfiguration,
                                             key<&R::key>("Key"),
                                             runName<&R::runName>("RunName"),
                                             column<&R::fileExtension>("FileExtension"),
                                             column<&R::decimals>("Decimals"),
                                             owner<&R::ownerText>("OwnerText"));
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
}

template <>
const RecordDescription& descriptionOf<StructNCDBProcess>()
{
    using R = StructNCDBProcess;
    static constexpr auto list = describe<R>("StructNCDBProcess",
                                             "NCDBProcess",
                                             inConfiguration,
                                             key<&R::key>("Key"),
                                             runName<&R::runName>("RunName"),
                                             column<&R::folder>("Folder"),
                                             owner<&R::ownerText>("OwnerText"));
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
}

template <>
const RecordDescription& descriptionOf<StructNCDBProcessStep>()
{
    using R = StructNCDBProcessStep;
    static constexpr auto list = describe<R>("StructNCDBProcessStep",
                                             "NCDBProcessStep",
                                             inConfiguration,
                                             key<&R::key>("Key"),
                                             runName<&R::runName>("RunName"),
                                             lookup<&R::process, StructNCDBProcess>("Process"),
                                             lookup<&R::style, StructNCDBStyle>("Style"),
                                             column<&R::position>("Position"),
                                             column<&R::selection>("Selection"),
                                             owner<&R::ownerText>("OwnerText"));
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
}

template <>
const RecordDescription& descriptionOf<StructNSAModule>()
{
    using R = StructNSAModule;
    static constexpr auto list = describe<R>("StructNSAModule",
                                             "NSAModule",
                                             DataSources{KorDSNDefinitions::kRules},
                                             key<&R::key>("Key"),
                                             runName<&R::runName>("RunName"),
                                             column<&R::internalName>("InternalName"),
                                             column<&R::version>("Version"));
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
}

template <>
const RecordDescription& descriptionOf<StructNSAModuleDefinition>()
{
    using R = StructNSAModuleDefinition;
    static constexpr auto list = describe<R>("StructNSAModuleDefinition",
                                             "NSAModuleDefinition",
                                             DataSources{KorDSNDefinitions::kRules},
                                             key<&R::key>("Key"),
                                             lookup<&R::module, StructNSAModule>("Module"),
                                             column<&R::standard>("Standard"),
                                             column<&R::jointName>("JointName"));
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
}

template <>
const RecordDescription& descriptionOf<StructNSAModuleDllSigned>()
{
    using R = StructNSAModuleDllSigned;
    static constexpr auto list = describe<R>("StructNSAModuleDllSigned",
                                             "NSAModuleDllSigned",
                                             DataSources{KorDSNDefinitions::kRules},
                                             key<&R::key>("Key"),
                                             lookup<&R::module, StructNSAModule>("Module"),
                                             column<&R::fileName>("FileName"),
                                             column<&R::signature>("Signature"));
    static_assert(valid(list), "column names of the record are not unique, or it has two keys or run names");
    static const RecordDescription description = list.erased();
    return description;
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
