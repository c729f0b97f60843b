#pragma once

#include <korodbc/edit/KorOdbcMan.h>
#include <korodbc/transfer/RowInfo.h>

/// Deep-copies a detail process with everything that it refers to: steps, categories, file names, scales, style
/// maps and their qualifier sets, and, when wanted (m_bDeepCopyWithDetailStyles), the detail styles themselves.
/// Works as KorDetailTableDependencies does, and reports progress and names rows through it.
class KorDetailProcessTableDependencies {
public:
    /// Collects the row with that key and everything that it reaches. Returns the row's position in its list, or
    /// -1. On return `record` holds the collected row. For every record type that has a list.
    template <class T>
    static long GetDependencies(T& record, long key)
    {
        return collect(descriptionOf<T>(), &record, key);
    }
    /// Writes the collected row at that position, and first everything that it reaches, to the target.
    /// `record` is a copy of the list entry. Returns the row's new key, or -1. For every record type that has a
    /// list.
    template <class T>
    static long Save(T& record, long index)
    {
        return save(descriptionOf<T>(), &record, index);
    }

    /// Empties the lists and the transfer key map, those of the detail styles included; called before each deep
    /// copy.
    static void ResetDeepCopyInfo();
    /// Starts counting the rows to write.
    static void SetRowNr();

    // Collected rows
    static KorArray<StructDetailProcessDefinition> m_DetailProcessDefinition;
    static KorArray<StructDetailProcessStep> m_DetailProcessStep;
    static KorArray<StructDetailProcessCategory> m_DetailProcessCategory;
    static KorArray<StructDetailFilenameSelector> m_DetailProcessFileNameSelector;
    static KorArray<StructDetProcessScales> m_DetailProcessScales;
    static KorArray<StructDetailProcessMain2CutScale> m_DetailProcessMain2CutScales;
    static KorArray<StructDetailStyleMap> m_DetailProcessStyleMap;

    // Rows newly written by the copy, as they stand in the target
    static KorArray<StructDetailProcessStep> m_DetailProcessStepsResultedFromDeepCopy;
    static KorArray<StructDetailStyleMap> m_DetailStyleMapsResultedFromDeepCopy;

    static KorTransferKeyMap m_writeTransferKeyMap; // collected row to its key in the target

    static int m_NrRowsToWrite;             // of the lists above
    static int m_bDeepCopyWithDetailStyles; // not 0: the styles that style maps name are copied too
    static bool m_bDeepCopyCanceledByUser;  // set by the host
    /// Puts the next written definition or step into a category of the host's choice; -1: as the source has it.
    static long detProcessCategory;

    static constexpr unsigned m_scuiReading = 21034;
    static constexpr unsigned m_scuiWriting = 21035;
    static constexpr unsigned m_scuiDialogCreateNewItem = 22200;

private:
    static long collect(const RecordDescription& type, void* record, long key);
    static long save(const RecordDescription& type, void* record, long index);
};
