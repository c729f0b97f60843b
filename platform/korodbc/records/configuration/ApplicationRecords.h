#pragma once

#include <korodbc/repository/RecordMarshal.h>

/// A program that models are exchanged with through the product interface. Table "STD_Application".
struct StructSTDApplication_ImportExport {
    int key = -1;
    KorString runName;
    int imports = 0;
    int exports = 0;
};
struct StructSTDApplication_ImportExportMarshal : RecordMarshal<StructSTDApplication_ImportExport> {};

/// A program that section tables are exchanged with. Table "PRF_Application".
struct StructPRFApplication_ImportExport {
    int key = -1;
    KorString runName;
    int imports = 0;
    int exports = 0;
};
struct StructPRFApplication_ImportExportMarshal : RecordMarshal<StructPRFApplication_ImportExport> {};

/// How files for a machine are written. Table "NCDBStyle".
struct StructNCDBStyle {
    int key = -1;
    KorString runName;
    KorString fileExtension;
    int decimals = 0;
    KorString ownerText;
};
struct StructNCDBStyleMarshal : RecordMarshal<StructNCDBStyle> {};

/// A run that writes machine files for a model. Table "NCDBProcess".
struct StructNCDBProcess {
    int key = -1;
    KorString runName;
    KorString folder;
    KorString ownerText;
};
struct StructNCDBProcessMarshal : RecordMarshal<StructNCDBProcess> {};

/// One step of a run: some parts in one style. Table "NCDBProcessStep".
struct StructNCDBProcessStep {
    int key = -1;
    KorString runName;
    int process = -1;
    int style = -1;
    int position = 0;
    KorString selection;
    KorString ownerText;
};
struct StructNCDBProcessStepMarshal : RecordMarshal<StructNCDBProcessStep> {};

/// A module of analysis. Table "NSAModule".
struct StructNSAModule {
    int key = -1;
    KorString runName;
    KorString internalName;
    KorString version;
};

struct StructNSAModuleMarshal : RecordMarshal<StructNSAModule> {
    static int getByInternalName(const KorString& internalName, StructNSAModule& record)
    {
        return recordWith<&StructNSAModule::internalName>(internalName, record);
    }
};

/// What a module of analysis checks. Table "NSAModuleDefinition".
struct StructNSAModuleDefinition {
    int key = -1;
    int module = -1;
    KorString standard;
    KorString jointName;
};
struct StructNSAModuleDefinitionMarshal : RecordMarshal<StructNSAModuleDefinition> {};

/// The library of a module of analysis and its checksum. Table "NSAModuleDllSigned".
struct StructNSAModuleDllSigned {
    int key = -1;
    int module = -1;
    KorString fileName;
    KorString signature;
};
struct StructNSAModuleDllSignedMarshal : RecordMarshal<StructNSAModuleDllSigned> {};
