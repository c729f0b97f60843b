#include "transfer/KorOdbcCompactDetailsTables.h"

#include "CompactTables.h"
#include "DetailReferences.h"
#include "edit/KorOdbcMan.h"
#include "foundation/ProcessConstants.h"
#include "records/Registry.h"
#include "repository/KorDatabaseAccess.h"
#include "repository/KorDSNManager.h"
#include "repository/RecordAccess.h"
#include "roots/KorProgressCtrl.h"

using namespace korodbc;

using Compact = KorOdbcCompactDetailsTables;

namespace {

CompactTables& tables() { return CompactTables::ofLastRun(); }

template <class T>
CompactTable& table()
{
    return tables().of(descriptionOf<T>());
}

void progress(int percentage)
{
    if (!tables().onlyPreview)
        KorProgressCtrl::setPercentage(percentage, 1);
}

void begin(eDSN database, Compact::eCompactType type, bool onlyPreview)
{
    tables().database = database;
    tables().type = type;
    tables().onlyPreview = onlyPreview;
    for (CompactTable& table : tables().all())
        table.report = {};
}

bool ofStyles() { return tables().type == Compact::kCompactDetailStyles || tables().type == Compact::kCompactAll; }
bool ofProcesses()
{
    return tables().type == Compact::kCompactDetailProcesses || tables().type == Compact::kCompactAll;
}

template <class... T>
void merge()
{
    (table<T>().findDuplicates(), ...);
}
template <class T>
void redirect()
{
    tables().redirect(table<T>());
}

/// Referenced tables before those that refer to them.
void mergeAll()
{
    if (ofStyles()) {
        merge<StructDetViewSystemAndBox, StructDetAnnotationType, StructDetArrangerControl,
              StructDetArrangerStrategy>();
        progress(25);
        merge<StructDetViewArrangeStrategy, StructDetViewLengthClip, StructDetObjQualifierSet>();
    } else if (ofProcesses()) {
        merge<StructDetObjQualifierSet>();
    }
    if (ofProcesses())
        merge<StructDetailProcessMain2CutScale, StructDetProcessScales, StructDetailFilenameSelector>();
    if (ofStyles()) {
        progress(30);
        Compact::updateDetObjAnnotationStrategy();
        progress(35);
        merge<StructDetObjAnnotationStrategy>();
        progress(40);
        Compact::updateDetObjReprMap();
        progress(45);
        merge<StructDetObjReprMap>();
        progress(50);
        Compact::updateDetViewDimPointSelection();
        progress(55);
        merge<StructDetViewDimPointSelection>();
        Compact::updateDetViewDimRequestLinear();
        progress(60);
        merge<StructDetViewDimRequestLinear>();
        progress(65);
        Compact::updateDetViewDimStrategy();
        progress(70);
        merge<StructDetViewDimStrategy>();
        Compact::updateDetViewRequest();
        progress(75);
        merge<StructDetViewRequest>();
        progress(80);
        Compact::updateDetailStyle();
        progress(85);
        merge<StructDetailStyle>();
        Compact::updateDetViewRequestCategory();
        merge<StructDetViewRequestCategory>();
        Compact::updateDetailStyleMap();
        merge<StructDetailStyleMap>();
    }
    if (ofProcesses()) {
        // for both groups the second time: this one sees the redirected styles
        Compact::updateDetailStyleMap();
        merge<StructDetailStyleMap>();
        Compact::updateDetailProcessStep();
        merge<StructDetailProcessStep>();
        Compact::updateDetailProcessDefinition();
    }
}

/// Qualifier sets alone, and the references to them.
void mergeQualifierSets()
{
    if (ofStyles()) {
        progress(25);
        merge<StructDetObjQualifierSet>();
        progress(40);
        Compact::updateDetObjReprMap();
        progress(45);
        progress(50);
        Compact::updateDetViewDimPointSelection();
        progress(55);
    }
    Compact::updateDetailStyleMap();
}

/// Duplicate detail styles stay in their table, unreferenced.
int deleteAll()
{
    CompactTables& all = tables();
    const auto deleted = [&](auto... of) { return (... && (all.deleteDuplicates(all.of(of())) != 0)); };
    const auto deletedIfAny = [&](auto of) { return all.of(of()).length() == 0 || deleted(of); };
    if (ofStyles() &&
        !(deleted(descriptionOf<StructDetViewSystemAndBox>, descriptionOf<StructDetAnnotationType>,
                  descriptionOf<StructDetArrangerControl>, descriptionOf<StructDetArrangerStrategy>,
                  descriptionOf<StructDetViewArrangeStrategy>, descriptionOf<StructDetViewLengthClip>,
                  descriptionOf<StructDetViewDimStrategy>, descriptionOf<StructDetObjQualifierSet>,
                  descriptionOf<StructDetObjAnnotationStrategy>, descriptionOf<StructDetObjReprMap>) &&
          deletedIfAny(descriptionOf<StructDetViewDimPointSelection>) &&
          deletedIfAny(descriptionOf<StructDetViewDimRequestLinear>) &&
          deleted(descriptionOf<StructDetViewRequest>, descriptionOf<StructDetViewRequestCategory>)))
        return 0;
    if (!ofProcesses())
        return 1;
    if (!ofStyles() && !deleted(descriptionOf<StructDetObjQualifierSet>))
        return 0;
    return deleted(descriptionOf<StructDetailFilenameSelector>, descriptionOf<StructDetailProcessMain2CutScale>,
                   descriptionOf<StructDetProcessScales>, descriptionOf<StructDetailProcessStep>,
                   descriptionOf<StructDetailStyleMap>)
               ? 1
               : 0;
}

/// References to deleted rows in tables that the run does not redirect.
int findStranded(KorArray<KorDetailReference>& stranded)
{
    return findReferences(
        [](const StoredReference& reference) {
            const CompactTable* from = tables().find(reference.from);
            const CompactTable* target = tables().find(reference.column.target());
            return (from == nullptr || !from->isIn(tables().type)) && target != nullptr &&
                   target->report.deleted > 0 && target->standingFor(reference.target) != reference.target;
        },
        stranded);
}

void clearAll()
{
    for (CompactTable& table : tables().all())
        table.clear();
}

/// Lets `run` do its work in memory alone.
template <class Run>
int preview(eDSN database, Compact::eCompactType type, KorArray<KorCompactedTable>& compacted,
            KorArray<KorDetailReference>& stranded, Run run)
{
    begin(database, type, true);
    int result = Compact::loadTables();
    if (result == 1) {
        run();
        Compact::getCompactedTables(compacted);
        const KorDSNRequest request(database, tables().index());
        result = findStranded(stranded);
    }
    clearAll();
    tables().onlyPreview = false;
    return result;
}

/// Copies of the tables of the add-in: `act` gives -1 for failure.
template <class Act>
int forEachCopy(Act act)
{
    int result = 1;
    for (const CompactTable& table : tables().all())
        if (act(KorDatabaseAccess::getTableName(table.name()),
                KorDatabaseAccess::getTableName(table.name() + firstCopySuffix)) == -1)
            result = 0;
    return result;
}

template <class... T>
void resetCaches()
{
    (RecordAccess::resetCache(descriptionOf<T>()), ...);
}

} // namespace

int Compact::startCompactProcess(eDSN database, int deleteFlag, eCompactType type)
{
    begin(database, type, false);
    KorDatabaseBatch batch;
    updateTablesStatus();
    progress(0);
    if (loadTables() != 1)
        return batch.end(0);
    progress(20);
    mergeAll();
    progress(90);
    int result = deleteFlag != 0 ? deleteAll() : 1;
    progress(100);
    if (result == 1)
        clearAll();
    KorProgressCtrl::reset();
    result = batch.end(result);
    resetTablesContent();
    return result;
}

int Compact::previewCompactProcess(eDSN database, eCompactType type, KorArray<KorCompactedTable>& compacted,
                                   KorArray<KorDetailReference>& stranded)
{
    return preview(database, type, compacted, stranded, [] {
        mergeAll();
        deleteAll();
    });
}

int Compact::previewQualifierSets(eDSN database, KorArray<KorCompactedTable>& compacted,
                                  KorArray<KorDetailReference>& stranded)
{
    return preview(database, kCompactDetailStyles, compacted, stranded, [] {
        mergeQualifierSets();
        tables().deleteDuplicates(table<StructDetObjQualifierSet>());
    });
}

void Compact::getCompactedTables(KorArray<KorCompactedTable>& compacted)
{
    compacted.removeAll();
    for (const CompactTable& table : tables().all())
        if (table.isIn(tables().type))
            compacted.append(table.report);
}

int Compact::compactQualifierSets(eDSN database, int deleteFlag, eCompactType type)
{
    begin(database, type, false);
    KorDatabaseBatch batch;
    progress(0);
    if (loadTables() != 1)
        return batch.end(0);
    progress(20);
    mergeQualifierSets();
    progress(90);
    int result = 1;
    if (deleteFlag != 0 && type == kCompactDetailStyles)
        result = tables().deleteDuplicates(table<StructDetObjQualifierSet>());
    progress(100);
    if (result == 1) {
        const KorDSNRequest request(database, tables().index());
        resetCaches<StructDetObjQualifierSet, StructDetObjReprMap, StructDetViewDimPointSelection,
                    StructDetailStyleMap, StructDetailStyleMapItem>();
        for (CompactTable* done : {&table<StructDetObjQualifierSet>(), &table<StructDetObjReprMap>(),
                                   &table<StructDetViewDimPointSelection>(), &table<StructDetailStyleMap>()})
            done->clear();
    }
    rearrangeQualifierSets();
    KorProgressCtrl::reset();
    return batch.end(result);
}

int Compact::loadTables()
{
    const KorDSNRequest request(tables().database, tables().index());
    int result = 1;
    const auto load = [&](auto... of) { (..., (result = tables().of(of()).load() && result == 1 ? 1 : 0)); };
    if (ofStyles()) {
        progress(5);
        load(descriptionOf<StructDetViewSystemAndBox>, descriptionOf<StructDetViewLengthClip>,
             descriptionOf<StructDetViewDimStrategy>, descriptionOf<StructDetViewArrangeStrategy>);
        progress(5);
        load(descriptionOf<StructDetArrangerControl>, descriptionOf<StructDetArrangerStrategy>,
             descriptionOf<StructDetAnnotationType>, descriptionOf<StructDetailStyle>,
             descriptionOf<StructDetObjAnnotationStrategy>);
        progress(10);
        load(descriptionOf<StructDetObjQualifierSet>, descriptionOf<StructDetObjReprMap>,
             descriptionOf<StructDetViewDimPointSelection>);
        progress(15);
        load(descriptionOf<StructDetViewDimRequestLinear>, descriptionOf<StructDetViewRequest>,
             descriptionOf<StructDetViewRequestCategory>);
    } else {
        load(descriptionOf<StructDetObjQualifierSet>);
    }
    if (ofProcesses())
        load(descriptionOf<StructDetailProcessDefinition>, descriptionOf<StructDetailProcessStep>,
             descriptionOf<StructDetailFilenameSelector>, descriptionOf<StructDetailProcessMain2CutScale>,
             descriptionOf<StructDetProcessScales>);
    load(descriptionOf<StructDetailStyleMap>);
    return result;
}

int Compact::backupTables()
{
    return forEachCopy([](const KorString& table, const KorString& copy) {
        return KorDatabaseAccess::copyTable(KorDSNDefinitions::kAddin, table, copy, false);
    });
}

int Compact::dropCopiesOfTables()
{
    return forEachCopy([](const KorString&, const KorString& copy) {
        const int result =
            KorDatabaseAccess::doSQLStatement(KorDSNDefinitions::kAddin, L"DROP TABLE [" + copy + L"]");
        KorDatabaseAccess::resetCachedTable(KorDSNDefinitions::kAddin, copy);
        return result;
    });
}

void Compact::updateTablesStatus()
{
    const auto modify = [](std::initializer_list<int> types) {
        for (const int type : types)
            KorOdbcMan::setStatus(static_cast<KorOdbcMan::eTableType>(type), KorOdbcMan::eModified,
                                  KorOdbcMan::kFirstCopy);
    };
    if (ofStyles())
        modify({5, 8, 7, 29, 1, 11, 12, 10, 0, 9, 16, 4, 25, 14, 2, 3, 13, 22});
    else if (ofProcesses())
        modify({16});
    if (ofProcesses())
        modify({34, 40, 39, 33, 32, 37, 38});
}

void Compact::resetTablesContent()
{
    const KorDSNRequest request(tables().database, tables().index());
    for (const CompactTable& table : tables().all())
        if (table.isIn(tables().type)) {
            RecordAccess::resetCache(table.type());
            if (table.type().items.exists())
                RecordAccess::resetCache(table.type().items.item());
        }
    if (ofStyles())
        resetCaches<StructLinetypes>();
}

void Compact::updateDetObjAnnotationStrategy() { redirect<StructDetObjAnnotationStrategy>(); }
void Compact::updateDetObjReprMap() { redirect<StructDetObjReprMap>(); }
void Compact::updateDetViewDimPointSelection() { redirect<StructDetViewDimPointSelection>(); }
void Compact::updateDetViewDimRequestLinear() { redirect<StructDetViewDimRequestLinear>(); }
void Compact::updateDetViewDimStrategy() { redirect<StructDetViewDimStrategy>(); }
void Compact::updateDetViewRequest() { redirect<StructDetViewRequest>(); }
void Compact::updateDetViewRequestCategory() { redirect<StructDetViewRequestCategory>(); }
void Compact::updateDetailStyle() { redirect<StructDetailStyle>(); }
void Compact::updateDetailStyleMap() { redirect<StructDetailStyleMap>(); }
void Compact::updateDetailProcessStep() { redirect<StructDetailProcessStep>(); }
void Compact::updateDetailProcessDefinition() { redirect<StructDetailProcessDefinition>(); }

int Compact::deleteDetObjReprMapRecords() { return tables().deleteDuplicates(table<StructDetObjReprMap>()); }
int Compact::deleteDetViewDimStrategyRecords()
{
    return tables().deleteDuplicates(table<StructDetViewDimStrategy>());
}
int Compact::deleteDetailStyleMapRecords() { return tables().deleteDuplicates(table<StructDetailStyleMap>()); }
