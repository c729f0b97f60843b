#pragma once

#include <korodbc/repository/RecordMarshal.h>

/// A text in the language of the installation. Table "LanguageDependet_Strings".
struct StructLanguageDependet_Strings {
    KorString key;
    KorString runName;
    int unitUsed = 0;       // kind of unit that its values are shown in, 0 none
    int displayControl = 0; // 0 as typed, 1 check box, 2 list, 3 read only
};
struct StructLanguageDependet_StringsMarshal : RecordMarshal<StructLanguageDependet_Strings> {
    static int getUserUnitUsedForRunname(const KorString& runName, long& unit);
    static int getUserDisplayControl(const KorString& runName, long& control);
};

/// A note for drawings; the key is its title. Table "Notes".
struct StructNotes {
    KorString key;
    KorString runName;
};
struct StructNotesMarshal : RecordMarshal<StructNotes> {};

/// What the help button of a dialog shows; the key is the dialog's name. Table "HelpButtons".
struct StructHelpButtons {
    KorString key;
    KorString helpTag; // place in the help
    int stringId = 0;  // number of the button's prompt
};
struct StructHelpButtonsMarshal : RecordMarshal<StructHelpButtons> {};
