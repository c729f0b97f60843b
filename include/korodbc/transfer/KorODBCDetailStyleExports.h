#pragma once

#include <korodbc/foundation/KorOdbcKey.h>
#include <korodbc/foundation/KorTransferState.h>
#include <korodbc/repository/KorDSNDefinitions.h>
#include <korodbc/roots/KorString.h>

/// Transfers one detail style or detail process, with everything that it refers to, from one database to another.
/// A transfer is refused while an edit is open on some of the tables that it writes, but not all: its Cancel would
/// take back a part of the rows. It leaves its target as the manager's database; who goes on editing sets that
/// first (KorOdbcMan::setCurrentDSN, setCurrentAddIn). Its writes are one batch, or a part of the caller's.
/// Threads: one, one transfer at a time. Needs: what KorOdbcMan needs.
class KorODBCDetailStyleExports : public KorTransferState {
public:
    enum eType { kDetailStyle = 0, kDetailProcess = 1 };

    /// Writes a detail into a detail database file, which is made when it is missing. Returns 1, or 0 with the
    /// error messages set; a user's cancel leaves them empty. A file that was made stays, empty, when the host
    /// undoes its batch: another program may have it open by then. A failure before the file could be read leaves
    /// the export in progress (setExportInProgress).
    static int exportDetail(eType type, const KorOdbcKey& key, eDSN sourceDsn, eIndex sourceIndex,
                            const KorString& file);
    /// Copies a detail from one database into another. Returns 1, or 0 with the error messages set.
    static int importDetail(eType type, const KorOdbcKey& key, eDSN sourceDsn, eIndex sourceIndex, eDSN targetDsn,
                            eIndex targetIndex);
    /// The last error, localised, or in English with `standard` not 0.
    static void GetErrorMessage(KorString& out, int standard);

    /// 1 when the data source lacks one of the tables that version 5.1 brought. Of the country add-ins it looks at
    /// the requested one, else at the one in the manager's slot.
    static int isDatabaseOlderThan5_1(eDSN dsn);
    /// Where an export from `source` goes, and that target's connection string. Returns the result of reading it.
    static int GetDSNAndIndexToUse(eDSN source, eDSN& targetDsn, eIndex& targetIndex, KorString& connection);
    /// Makes a detail database without rows; another value than 1 when that fails or the file exists.
    static int CreateDbFile(const KorString& file);
    /// 1 when the path exists and is no directory.
    static int FileExists(const KorString& file);
    /// Catalogue id of the table of a record type, by the type's name; -1 for any other name.
    static int getTableIndex(KorString& recordTypeName);
    /// The next reads of all tables that a transfer touches see what other programs have stored.
    static void deleteCache(int index);
    /// Confirms the edits of all tables of a transfer, all or nothing in each database. Returns 1 when all were.
    static int setStatusOnOK();

    static void EnableAdvancedDeepCopyMode(int enabled) { m_bAdvancedDeepCopyMode = enabled; }
    static int isAdvancedDeepCopyModeEnabled() { return m_bAdvancedDeepCopyMode; }

    static eType m_pType;
    static int m_bAdvancedDeepCopyMode;
    static KorString m_ErrorMessage;
    static KorString m_StandardErrorMessage;
};
