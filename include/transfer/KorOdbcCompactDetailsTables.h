#pragma once

#include "repository/KorDSNDefinitions.h"
#include "roots/KorArray.h"
#include "roots/KorString.h"
#include "transfer/KorDetailReferences.h"

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
/// referred to equal rows become equal in turn. A run is stored whole or, when the process dies, not at all. It
/// marks the tables modified in the edit manager's current database, which has to be the same; the host's OK or
/// Cancel decides. Not marked by a run over the styles are the style maps: a host that may cancel begins a
/// KorTableEdit over the tables first, in the same batch as the run and the OK where all are to be one. One run at
/// a time.
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
    /// when a table could not be read, with nothing changed, or rows could not be deleted.
    static int startCompactProcess(eDSN database, int deleteFlag, eCompactType type);
    /// Merges qualifier sets alone and numbers them from 1. Duplicates are deleted with type 0 and the delete flag
    /// only.
    static int compactQualifierSets(eDSN database, int deleteFlag, eCompactType type);

    /// Finds out what a run would do, and changes nothing. `tables` receives the tables of the run, `stranded` the
    /// references to rows that would be deleted, in tables that the run does not redirect. Returns 1, or 0 when a
    /// table could not be read.
    static int previewCompactProcess(eDSN database, eCompactType type, KorArray<KorCompactedTable>& tables,
                                     KorArray<KorDetailReference>& stranded);
    /// The same for merging qualifier sets alone.
    static int previewQualifierSets(eDSN database, KorArray<KorCompactedTable>& tables,
                                    KorArray<KorDetailReference>& stranded);
    /// What the last run did, table by table.
    static void getCompactedTables(KorArray<KorCompactedTable>& tables);

    // Steps of a run, on the database and type of the last one

    /// Numbers the qualifier sets from 1, in the order of their keys.
    static void rearrangeQualifierSets();
    /// Reads the tables of the type into memory; 1 when all could be read.
    static int loadTables();
    /// Copies the tables of the add-in beforehand, and drops those copies. 1 when nothing gave -1; all are tried.
    static int backupTables();
    static int dropCopiesOfTables();
    /// Marks the tables of the type modified for the edit manager.
    static void updateTablesStatus();
    /// Lets the tables of the type be read anew.
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
