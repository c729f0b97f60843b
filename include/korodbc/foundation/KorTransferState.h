#pragma once

/// Flags that transfers set and writers heed. Threads: one.
class KorTransferState {
public:
    static void setExportInProgress(int inProgress) { m_bExportInProgress = inProgress; }
    static int isExportInProgress() { return m_bExportInProgress; }
    static void setImportInProgress(int inProgress) { m_bImportInProgress = inProgress; }
    static int isImportInProgress() { return m_bImportInProgress; }
    /// True while an export or an import runs: rows keep their owners.
    static bool isTransferInProgress() { return m_bExportInProgress != 0 || m_bImportInProgress != 0; }
    static void CancelBackupTables(int cancel) { m_bCancelBackupTables = cancel; }
    static int isTableBackupProcessCanceled() { return m_bCancelBackupTables; }

    static inline int m_bExportInProgress = 0;
    static inline int m_bImportInProgress = 0;
    static inline int m_bCancelBackupTables = 0; // while not 0, edits take no copies
};
