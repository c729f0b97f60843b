#pragma once

#include <korodbc/references/KorDetailReferences.h>
#include <korodbc/repository/KorDSNDefinitions.h>
#include <korodbc/roots/KorArray.h>
#include <korodbc/roots/KorString.h>

/// What a compaction did to one table, or would do.
struct KorCompactedTable {
    KorString table;
    int rows = 0;       // before
    int duplicates = 0; // rows that another row stands for
    int redirected = 0; // references of this table that now name the row that stands for another
    int deleted = 0;
};

/// Merges duplicates in the detail tables of one database. Rows whose values are equal, whatever their keys and
/// names, become one: the row with the lowest key stands for the others, every reference to one of those is
/// redirected to it, and they are deleted. Referenced tables come first, so that rows that differ only in what
/// referred to equal rows become equal in turn. A run takes the write lock of the database before it reads, and is
/// stored whole or not at all: when it gives 0, or the program ends, the tables are as before. References that
/// named a row and would name none, or another, end it, but for those that previewCompactProcess announces. It
/// marks the tables modified in the edit manager's slot of that database; the host's OK or Cancel decides. Not
/// marked by a run over the styles are the style maps: a host that may cancel begins a KorTableEdit over the
/// tables first, in the same batch as the run and the OK where all are to be one. A run is refused while an edit
/// is open on some of its tables, but not all: its Cancel would bring back references to rows that are gone. Of
/// the country add-ins the one in the manager's slot is compacted. Threads: one, one run at a time. Needs: what
/// KorOdbcMan needs.
class KorOdbcCompactDetailsTables {
public:
    enum eCompactType {
        kCompactDetailStyles = 0,
        kCompactDetailProcesses = 1, // with qualifier sets and style maps
        kCompactAll = 2,
    };

    KorOdbcCompactDetailsTables() = default;
    KorOdbcCompactDetailsTables(const KorOdbcCompactDetailsTables&) = default;
    KorOdbcCompactDetailsTables& operator=(const KorOdbcCompactDetailsTables&) = default;
    virtual ~KorOdbcCompactDetailsTables() = default;

    /// The whole run. With a delete flag of 0 references are redirected and the duplicates stay. Returns 1, or 0
    /// with nothing changed: when a table cannot be used, a statement failed, or a reference would be lost.
    static int startCompactProcess(eDSN database, int deleteFlag, eCompactType type);
    /// Merges qualifier sets alone and numbers them from 1. Duplicates are deleted with type 0 and the delete flag
    /// only. A reference that names no set keeps its value, and so may name one afterwards. Returns as above; 0
    /// also when a rule of NecessaryViewsConfiguration would move while an edit is open on the qualifier sets.
    static int compactQualifierSets(eDSN database, int deleteFlag, eCompactType type);

    /// Finds out what a run would do, and changes nothing. `tables` receives the tables of the run, `stranded` the
    /// references to rows that would be deleted, in tables that runs of another type redirect. Returns 1, or 0
    /// when a table cannot be used or the run would fail.
    static int previewCompactProcess(eDSN database, eCompactType type, KorArray<KorCompactedTable>& tables,
                                     KorArray<KorDetailReference>& stranded);
    /// The same for merging qualifier sets alone.
    static int previewQualifierSets(eDSN database, KorArray<KorCompactedTable>& tables,
                                    KorArray<KorDetailReference>& stranded);
    /// What the last run did, table by table. Behind the tables of its type come those that no compaction merges,
    /// where their references were redirected.
    static void getCompactedTables(KorArray<KorCompactedTable>& tables);
    /// Why the last run or preview gave 0, for a person; empty when the host has the reason.
    static KorString getFailure();

    // Steps of a run, on the database and type of the last one

    /// Numbers the qualifier sets from 1, in the order of their keys; all or none.
    static void rearrangeQualifierSets();
    /// Reads the tables of the type into memory; 1 when all could be read.
    static int loadTables();
    /// Copies the tables of the add-in beforehand, and drops those copies. 1 when nothing gave -1; all are tried.
    static int backupTables();
    static int dropCopiesOfTables();
    /// Marks the tables of the type modified for the edit manager.
    static void updateTablesStatus();
    /// The next reads of the tables of the type see what other programs have stored.
    static void resetTablesContent();

    // Redirect the references of one table to the rows that stand for others, in memory and in the database
    static void updateDetObjAnnotationStrategy();
    static void updateDetObjReprMap();
    static void updateDetViewDimPointSelection();
    static void updateDetViewDimRequestLinear();
    static void updateDetViewDimStrategy();
    static void updateDetViewRequest();
    static void updateDetViewRequestCategory();
    static void updateDetailStyle();
    static void updateDetailStyleMap();
    static void updateDetailProcessStep();
    static void updateDetailProcessDefinition();

    // Delete the duplicates of a table and their items; 1, or 0 when the last statement failed
    static int deleteDetObjReprMapRecords();
    static int deleteDetViewDimStrategyRecords();
    static int deleteDetailStyleMapRecords();
};
