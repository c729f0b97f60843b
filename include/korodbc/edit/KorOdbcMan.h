#pragma once

#include <korodbc/addins/KorAddInReactorInterface.h>
#include <korodbc/foundation/KorCurrentDatabase.h>
#include <korodbc/foundation/KorOdbcKey.h>
#include <korodbc/records/detail/DetailAnnotationRecords.h>
#include <korodbc/records/detail/DetailObjectRecords.h>
#include <korodbc/records/detail/DetailProcessRecords.h>
#include <korodbc/records/detail/DetailStyleRecords.h>
#include <korodbc/records/detail/DetailViewRecords.h>
#include <korodbc/records/detail/NumberingRecords.h>
#include <korodbc/repository/KorCellData.h>
#include <korodbc/roots/KorArray.h>
#include <korodbc/roots/KorString.h>

class KorCountryAddInReactor;

/// Edits the detail tables: the 48 tables that a detail style or process is made of. Tables are edited in place
/// while copies, up to four nested ones, keep the state that Cancel brings back. All operations work on the
/// manager's database (KorCurrentDatabase) unless they say otherwise. Results: 1 for success; 0 and -1 for
/// failure; -2 for a type without a table. Each write is a batch of its own, or a part of the caller's.
/// Threads: one. Needs: start-up (KorOdbcDSNDefinitions), then initializeTables.
class KorOdbcMan : public KorCurrentDatabase {
public:
    enum eTableType {
        kDetailStyle = 0,
        kDetViewArrangeStrategy = 1,
        kDetViewRequest = 2,
        kDetViewRequestCategories = 3,
        kDetObjReprMap = 4,
        kDetViewSystemAndBox = 5,
        kDetObjAppearance = 6,
        kDetViewDimStrategy = 7,
        kDetViewLengthClip = 8,
        kDetObjAnnotationStrategy = 9,
        kDetAnnotationType = 10,
        kDetArrangerControl = 11,
        kDetArrangerStrategy = 12,
        kDetViewDimRequestLinear = 13,
        kDetViewDimPointSelection = 14,
        kDetailMaster = 15,
        kDetObjQualifierSet = 16,
        kDetObjQualifierFilter = 17,
        kNumberingPrefix = 18,
        kExplodeSettings = 19,
        kObjectStructure = 20,
        kExplodeProfile = 21,
        kLinetypes = 22,
        kDetBaseCategories = 23,
        kDetManualAnnotationType = 24,
        kDetObjReprMapItems = 25,
        kDetObjAnnotationGroup = 26,
        kDetViewDimRequestLinearGroup = 27,
        kDetObjQualifierSetGroup = 28,
        kDetViewDimStrategyItems = 29,
        kDetHatchSettings = 30,
        kDetGridReferenceSettings = 31,
        kDetailProcessDefinition = 32,
        kDetailProcessStep = 33,
        kDetailFilenameSelector = 34,
        kDetailProcessSelection = 35,
        kDetailProcessSort = 36,
        kDetailStyleMap = 37,
        kDetailStyleMapItems = 38,
        kDetailProcessScales = 39,
        kDetailProcessMain2CutScale = 40,
        kDetailProcessCategories = 41,
        kDetProcessesSuiteDefinition = 42,
        kDetProcessesSuiteItems = 43,
        kNumberingPrefixProfile = 44,
        kProfileShapeRunName = 45,
        kDetObjQualifierSetItem = 46,
        kDetailProcessScalesItem = 47,
    };
    static constexpr int kTableTypes = 48;

    /// How deep edits are nested; each depth has a copy of its own.
    enum eCopyDepth { kFirstCopy = 0, kSecondCopy = 1, kThirdCopy = 2, kFourthCopy = 3, kCopies = 4 };
    enum eStatus { eNotModified = 0, eModified = 1 };

    // Table types

    /// Logical table name of a type; -1, with an assertion and `name` unchanged, for any other value.
    static int getTableName(eTableType type, KorString& name);
    /// Number of columns of the type's table.
    static int getNumberOfColumns(eTableType type, int& count);
    /// Key of the type's current record; -1 for types without one.
    static long getRecordKey(eTableType type);
    /// Key of the current qualifier filter; the empty text for every other type.
    static KorString getRecordStringKey(eTableType type);
    /// Sets all reload counters.
    static void reloadInfoForAllManagers(int value);

    // Edit copies and status

    static eStatus getStatus(eTableType type, eCopyDepth depth);
    /// Marks a table modified, taking the copy of that depth first when it was clean. A modified table cannot be
    /// marked clean here. Does nothing while a transfer writes.
    static void setStatus(eTableType type, eStatus status, eCopyDepth depth);

    /// Takes, brings back, drops the copy of that depth; the first claims the table, the others release it with
    /// its last copy. 1 also when there was nothing to do.
    static int backupTable(eTableType type, eCopyDepth depth);
    static int restoreCopyOfTable(eTableType type, eCopyDepth depth);
    static int dropCopyOfTable(eTableType type, eCopyDepth depth);

    /// Confirms the edits of one table at one depth in every database: the copy goes. Returns 1, or the first
    /// result other than 1 of what was done.
    static int setStatusOnOK(eTableType type, eCopyDepth depth);
    /// Undoes the edits: the copy comes back.
    static int setStatusOnCancel(eTableType type, eCopyDepth depth);
    /// Confirms the edits so far and takes a fresh copy; the table counts as not modified.
    static int setStatusOnUpdate(eTableType type, eCopyDepth depth);

    /// At its first call in a repository brings back every left copy, those of tables that other programs edit now
    /// excepted; a copy that does not fit its table stays. Clears all backup flags.
    /// Returns 1, or 0 when the databases could not be written or no repository is open.
    static int initializeTables();
    /// Does that for the manager's database alone, at any time: for operations that write without taking copies. 0
    /// also when a copy stays.
    static int bringBackLeftCopies();
    /// Renames a left copy that cannot be brought back, so that nothing takes it for one; `aside` becomes its
    /// name. 0 when there is no such copy, or the table is being edited.
    static int putCopyAside(eTableType type, eCopyDepth depth, KorString& aside);
    /// True when the table is edited under a copy that was really taken at that depth; a copy that could not be
    /// taken counts as taken, but brings nothing back.
    static bool canCancel(eTableType type, eCopyDepth depth);
    /// True when this program edits the table at that depth: in the manager's database, in any database.
    static bool isOpen(eTableType type, eCopyDepth depth);
    static bool isOpenAnywhere(eTableType type, eCopyDepth depth);
    /// Number of the edit that the table is open in at the first depth; each edit has one of its own. 0 without.
    static int openingOf(eTableType type);
    /// Brings back the copies of the first three depths in the three fixed databases.
    static void restoreDetailTablesCopies();

    static void registerCountryAddinReactor();
    static void unregisterCountryAddinReactor();

    static void DebugStatus() {}
    static void DebugBackupAvailable() {}

    // Record store. Columns are counted from 0 in stored order; `flag` makes no difference.

    /// Writes one column of a row without marking the table modified.
    static int setTableColumnValue(eTableType type, const KorOdbcKey& key, int column, const KorCellData& value,
                                   int flag);
    static int setTableColumnValue(eTableType type, const KorString& key, int column, const KorCellData& value,
                                   int flag);

    /// Writes one column of a row; the table is marked modified first.
    static int setAttribute(eTableType type, const KorOdbcKey& key, int column, long value, eCopyDepth depth);
    static int setAttribute(eTableType type, const KorOdbcKey& key, int column, double value, eCopyDepth depth);
    static int setAttribute(eTableType type, const KorOdbcKey& key, int column, const KorString& value, int flag,
                            eCopyDepth depth);
    static int setAttribute(eTableType type, const KorOdbcKey& key, int column, void*& value,
                            KorItemType& itemType, int flag, eCopyDepth depth);
    static int setAttribute(eTableType type, const KorString& key, int column, long value, eCopyDepth depth);
    static int setAttribute(eTableType type, const KorString& key, int column, double value, eCopyDepth depth);
    static int setAttribute(eTableType type, const KorString& key, int column, const KorString& value, int flag,
                            eCopyDepth depth);
    static int setAttribute(eTableType type, const KorString& key, int column, void*& value, KorItemType& itemType,
                            int flag, eCopyDepth depth);

    /// Appends the type's current record as a new row and stores it with its items; the record gets the row's key
    /// and, outside transfers, the owner. With `keepKey` 1 it keeps its own key where that is free, in the base
    /// details during transfers only. Returns the new key (for text keys 1), or a negative value on failure, with
    /// nothing appended; the record may hold another key then.
    static int appendNewRecord(eTableType type, int keepKey, eCopyDepth depth);
    /// Writes all columns and items of the type's current record over its row. 1 also for a type without one.
    static int storeCurrentRecord(eTableType type, eCopyDepth depth);
    /// 1 also when there is no such row.
    static int deleteRecord(eTableType type, const KorOdbcKey& key, eCopyDepth depth);

    /// Adds the columns of one more item, counted from 1, to the type's table.
    static int AddItemColumns(eTableType type, int item);
    /// Adds the last `count` columns of an item's group.
    static int AddItemColumns(eTableType type, int item, int count, eDSN dsn);
    /// Adds columns until the table holds that many items. 1 also when the database refuses one: the write of the
    /// record fails then.
    static int setColumnsForNewItems(eTableType type, int items);

    /// The next reads of the type's records see what other programs have stored.
    static void resetTable(eTableType type);
    /// Removes the items of the type's current record that refer to rows that do not exist.
    static void checkItems(eTableType type);

    /// True when this installation is the owner of the system's own records.
    static bool isCurrentOwnerVEL();
    /// True when the type's current record may be edited here.
    static bool getAttributeStatus(eTableType type);
    static bool getEditableStatus();

    // State

    /// Builds the status arrays. The single instance does so at load when the host is ready by then; otherwise
    /// start-up does.
    class InitializeStatics {
    public:
        InitializeStatics() { build(); }
        ~InitializeStatics() { release(); }
        static void build();
        /// Empties the arrays, for the host's shutdown or before another repository is opened.
        static void release();
    };

    static bool m_bInitializeTables;
    static bool m_bAppending;

    using StatusRows = KorArray<KorArray<eStatus>>; // by database slot, then table type
    using FlagRows = KorArray<KorArray<bool>>;
    static StatusRows m_Status, m_SecondStatus, m_ThirdStatus, m_FourthStatus;
    static FlagRows m_BackupAvailable, m_SecondBackupAvailable, m_ThirdBackupAvailable, m_FourthBackupAvailable;
    static FlagRows m_TemporaryBackupedTables;

    static const int (&m_numberOfColumns)[kTableTypes][2]; // fixed columns, columns per item
    static const wchar_t* const ccKorVELCopyString[kCopies];
    static const KorString korstrVEL, korstrPCVEL;

    // Reload counters: not 0 when the application's managers have to read their data anew
    static int m_DSMReloadInfo, m_DSMNewReloadInfo, m_DPMReloadInfo, m_AnnotationManagerReloadInfo;
    static int m_ProcessesSuiteReloadInfo, m_QuickDocManagerReloadInfo, m_DSMResetDetViewRequestCache;

    static KorCountryAddInReactor m_countryAddInReactor;

    static KorArray<StructNumberingPrefix> m_numberingPrefixes;
    static KorArray<StructExplodeSettings> m_explodeSettings;
    static KorArray<StructObjectStructure> m_objectStructures;

    // Current records: filled by the editors, written by storeCurrentRecord
    static StructDetailStyle m_structDetailStyle;
    static StructDetViewArrangeStrategy m_structDetViewArrangeStrategy;
    static StructDetViewRequest m_structDetViewRequest;
    static StructDetViewRequestCategory m_structDetViewRequestCategory;
    static StructDetObjReprMap m_structDetObjReprMap;
    static StructDetViewSystemAndBox m_structDetViewSystemAndBox;
    static StructDetObjAppearance m_structDetObjAppearance;
    static StructDetViewDimStrategy m_structDetViewDimStrategy;
    static StructDetViewLengthClip m_structDetViewLengthClip;
    static StructDetObjAnnotationStrategy m_structDetObjAnnotationStrategy;
    static StructDetAnnotationType m_structDetAnnotationType;
    static StructDetArrangerControl m_structDetArrangerControl;
    static StructDetArrangerStrategy m_structDetArrangerStrategy;
    static StructDetViewDimRequestLinear m_structDetViewDimRequestLinear;
    static StructDetViewDimPointSelection m_structDetViewDimPointSelection;
    static StructDetailMaster m_structDetailMaster;
    static StructDetObjQualifierSet m_structDetObjQualifierSet;
    static StructDetObjQualifierFilter m_structDetObjQualifierFilter;
    static StructNumberingPrefix m_structNumberingPrefix;
    static StructExplodeSettings m_structExplodeSettings;
    static StructObjectStructure m_structObjectStructure;
    static StructExplodeProfile m_structExplodeProfile;
    static StructLinetypes m_structLinetypes;
    static StructDetBaseCategory m_structDetBaseCategory;
    static StructDetManualAnnotationType m_structDetManualAnnotationType;
    static StructDetObjAnnotationGroup m_structDetObjAnnotationStrategyGroup;
    static StructDetViewDimRequestLinearGroup m_structDetViewDimRequestLinearGroup;
    static StructDetObjQualifierSetGroup m_structDetObjQualifierSetGroup;
    static StructDetHatchSettings m_structDetHatchSettings;
    static StructDetGridRefSettings m_structDetGridRefSettings;
    static StructDetailProcessDefinition m_structDetailProcessDefinition;
    static StructDetailProcessStep m_structDetailProcessStep;
    static StructDetailFilenameSelector m_structDetailFilenameSelector;
    static StructDetailProcessSelection m_structDetailProcessSelection;
    static StructDetailProcessSort m_structDetailProcessSort;
    static StructDetailStyleMap m_structDetailStyleMap;
    static StructDetProcessScales m_structDetProcessScales;
    static StructDetailProcessMain2CutScale m_structDetProcessMain2CutScales;
    static StructDetailProcessCategory m_structDetProcessCategory;
    static StructDetProcessesSuiteDefinition m_structDetProcessesSuiteDefinition;
    static StructNumberingPrefixProfile m_structNumberingPrefixProfile;
    static StructProfileShapeRunName m_structProfileShapeRunName;

private:
    static int getIndex();
    static void restoreDetailTablesCopiesFor(eDSN dsn);
};

/// Follows country add-ins: when one is loaded, left copies in its database are brought back.
class KorCountryAddInReactor : public KorAddInReactorInterface {
public:
    void onCountryAddInLoaded(KorAddIn& addIn) override;
    void onCountryAddInUnloaded(KorAddIn& addIn) override;
};
