#pragma once

#include <korodbc/catalogues/CatalogueReader.h>
#include <korodbc/records/configuration/WizardRecords.h>

/// Steps of wizards.
class KorODBCWizardSteps : public CatalogueReader<StructWizardSteps> {
public:
    static int getWizardStep(const KorOdbcKey& key, StructWizardSteps& record) { return byKey(key, record); }
    /// The steps of a task, in table order.
    static int getWizardStepsByTaskID(const KorOdbcKey& task, KorArray<StructWizardSteps>& records)
    {
        return StructWizardStepsMarshal::getByTaskID(task, records);
    }
    static int getWizardStepsTable(KorArray<StructWizardSteps>& records) { return table(records); }
};

/// Controls on the pages of wizards.
class KorODBCWizardControl : public CatalogueReader<StructWizardControl> {
public:
    static int getWizardControl(const KorOdbcKey& key, StructWizardControl& record) { return byKey(key, record); }
    static int getWizardControlTable(KorArray<StructWizardControl>& records) { return table(records); }
    /// The controls of a step, in table order.
    static int getWizardControlsByStepID(const KorOdbcKey& step, KorArray<StructWizardControl>& records)
    {
        return StructWizardControlMarshal::getByStepID(step, records);
    }
};

/// How values are entered in dialogs.
class KorODBCDisplayControl : public CatalogueReader<StructDisplayControl> {
public:
    static int getDisplayControl(const KorOdbcKey& key, StructDisplayControl& record)
    {
        return byKey(key, record);
    }
};
