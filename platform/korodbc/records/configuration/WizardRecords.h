#pragma once

#include <korodbc/repository/RecordMarshal.h>

/// How a value is entered in a dialog. Table "DisplayControl".
struct StructDisplayControl {
    int key = -1;
    KorString runName;
    int controlType = 0; // 0 text, 1 number, 2 check box, 3 list
    int readOnly = 0;
};
struct StructDisplayControlMarshal : RecordMarshal<StructDisplayControl> {};

/// A step of a wizard. Table "WizardSteps".
struct StructWizardSteps {
    int key = -1;
    KorString runName;
    int task = 0;
    int position = 0;
};

struct StructWizardStepsMarshal : RecordMarshal<StructWizardSteps> {
    /// The steps of a task, in table order.
    static int getByTaskID(long task, KorArray<StructWizardSteps>& records)
    {
        return recordsWith<&StructWizardSteps::task>(task, records);
    }
};

/// A control on the page of a wizard's step. Table "WizardControl".
struct StructWizardControl {
    int key = -1;
    KorString runName;
    int step = -1;
    int position = 0;
    int displayControl = -1;
};

struct StructWizardControlMarshal : RecordMarshal<StructWizardControl> {
    /// The controls of a step, in table order.
    static int getByStepID(long step, KorArray<StructWizardControl>& records)
    {
        return recordsWith<&StructWizardControl::step>(step, records);
    }
};
