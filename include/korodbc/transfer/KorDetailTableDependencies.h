#pragma once

#include <korodbc/edit/KorOdbcMan.h>
#include <korodbc/transfer/RowInfo.h>

/// Deep-copies a detail style, with everything that it refers to, in two passes: collecting reads the source and
/// fills one list per table, in which references are positions in those lists; saving writes the collected rows to
/// the target under new keys, referenced rows first. The source is the requested data source, without a request
/// the manager's database; the target is the manager's database always. What a callback throws ends the operation
/// as a failure; what the operation wrote is undone. Threads: one, one deep copy at a time; callbacks start none.
/// Needs: what KorOdbcMan needs.
class KorDetailTableDependencies {
public:
    /// Collects the row with that key and everything that it reaches. Returns the row's position in its list, or
    /// -1. On return `record` holds the collected row. For every record type that has a list, detail masters
    /// excepted.
    template <class T>
    static long GetDependencies(T& record, long key)
    {
        return collect(descriptionOf<T>(), &record, key);
    }
    /// Writes the collected row at that position, and first everything that it reaches, to the target.
    /// `record` is a copy of the list entry. Returns the row's new key, or -1. For every record type that has a
    /// list; of a request category, `index` is the new key of its request.
    template <class T>
    static long Save(T& record, long index)
    {
        return save(descriptionOf<T>(), &record, index);
    }

    /// Collects the detail master of a style, and with it the style. Returns the master's position, or -1, also
    /// when the style has no master.
    static long GetDependenciesByDetailKey(long styleKey);
    /// Collects a detail master and its style. Returns the master's position, or -1.
    static long GetDependenciesByMasterKey(StructDetailMaster& master, long masterKey);
    /// The same for a deep copy that a command of the host runs.
    static long GetDependenciesFromCommand(StructDetailMaster& master, long masterKey);

    /// Empties all lists and the transfer key map; called before each deep copy.
    static void ResetDeepCopyInfo();
    /// Starts counting the rows to write; returns their number.
    static int SetRowNr();
    static void ProgressBar(KorOdbcMan::eTableType type, int writing);
    static int getRunningFromCommand() { return m_RunningFromCommand; }
    static void setRunningFromCommand(int running) { m_RunningFromCommand = running; }

    /// Names a row that is about to be written: by the host's callback, otherwise by GetDefaultNameForRow. Returns
    /// the callback's result, or 1.
    static int GetNameForRow(KorOdbcMan::eTableType type, KorString& name);
    /// Makes `name` unique among the row names of the table. Returns 1 when it changed the name, else 0.
    static int GetDefaultNameForRow(KorOdbcMan::eTableType type, KorString& name);

    // Collected rows
    static KorArray<StructDetailStyle> m_DetStyleCopy;
    static KorArray<StructDetViewArrangeStrategy> m_DetViewArrangeStrategyCopy;
    static KorArray<StructDetViewRequest> m_DetViewRequest;
    static KorArray<StructDetViewRequestCategory> m_DetViewRequestCategory;
    static KorArray<StructDetObjReprMap> m_DetObjReprMap;
    static KorArray<StructDetViewSystemAndBox> m_DetViewSystemAndBox;
    static KorArray<StructDetObjAppearance> m_DetObjAppearance;
    static KorArray<StructDetViewDimStrategy> m_DetViewDimStrategy;
    static KorArray<StructDetViewLengthClip> m_DetViewLengthClip;
    static KorArray<StructDetObjAnnotationStrategy> m_DetObjAnnotationStrategy;
    static KorArray<StructDetAnnotationType> m_DetAnnotationType;
    static KorArray<StructDetArrangerControl> m_DetArrangerControl;
    static KorArray<StructDetArrangerStrategy> m_DetArrangerStrategy;
    static KorArray<StructDetViewDimRequestLinear> m_DetViewDimRequestLinear;
    static KorArray<StructDetViewDimPointSelection> m_DetViewDimPointSelection;
    static KorArray<StructDetailMaster> m_DetMasterCopy;
    static KorArray<StructDetObjQualifierSet> m_DetObjQualifierSet;
    static KorArray<StructLinetypes> m_LineType;
    static KorArray<StructDetBaseCategory> m_DetBaseCategory;
    static KorArray<StructDetObjAnnotationGroup> m_DetObjAnnotationGroup;
    static KorArray<StructDetViewDimRequestLinearGroup> m_DetViewDimRequestLinearGroup;
    static KorArray<StructDetObjQualifierSetGroup> m_DetObjQualifierSetGroup;
    static KorArray<StructDetHatchSettings> m_DetHatchSettings;

    // Rows newly written by the copy, as they stand in the target
    static KorArray<StructDetObjQualifierSet> m_QualifierSetsResultedFromDeepCopy;
    static KorArray<StructDetBaseCategory> m_BaseCategoriesResultedFromDeepCopy;
    static KorArray<StructDetViewDimRequestLinear> m_LinearDimRequestsResultedFromDeepCopy;
    static KorArray<StructDetObjAnnotationStrategy> m_AnnotationStrategiesResultedFromDeepCopy;

    static KorTransferKeyMap m_writeTransferKeyMap; // collected row to its key in the target

    static int m_NrRowsToWrite;
    static int m_CurrRowsToWrite;
    /// Rows of the current copy, both graphs: newly written, and found in the target by name or as an equal. A row
    /// that several others refer to counts once.
    static int m_RowsWritten;
    static int m_RowsReused;
    static KorOdbcMan::eTableType mainType; // root of the current copy, for the naming callback
    static int m_RunningFromCommand;
    static bool m_bDeepCopyCanceledByUser; // set by the host
    static int m_bKernelNewerThan42;       // not 0: groups are copied too

    // Put the next written row into a group or category of the host's choice; -1: as the source has it
    static long detQualifierSetGroup;
    static long detDimStrategyGroup;
    static long detAnnotationGroup;
    static long detBaseCategory;

    // Host callbacks; without them the library reports progress and names rows itself
    static void (*pInitProgressBar)(int start, int total);
    static void (*pUpdateProgressBar)(int row, KorString label);
    static void (*pResetProgressBar)();
    static int (*pGetNameForRowFn)(KorOdbcMan::eTableType type, KorOdbcMan::eTableType mainType, KorString& name);

    static constexpr unsigned m_scuiReading = 21034;
    static constexpr unsigned m_scuiWriting = 21035;
    static constexpr unsigned m_scuiDialogCreateNewItem = 22200;

private:
    static long collect(const RecordDescription& type, void* record, long key);
    static long save(const RecordDescription& type, void* record, long index);
};
