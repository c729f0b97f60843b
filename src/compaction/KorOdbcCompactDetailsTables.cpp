#include "CompactTables.h"
#include "foundation/ManagerDatabase.h"
#include "QualifierSetNumbers.h"
#include "references/DetailReferences.h"

#include <korodbc/compaction/KorOdbcCompactDetailsTables.h>
#include <korodbc/edit/KorOdbcMan.h>
#include <korodbc/records/detail/DetailAnnotationRecords.h>
#include <korodbc/records/detail/DetailObjectRecords.h>
#include <korodbc/records/detail/DetailProcessRecords.h>
#include <korodbc/records/detail/DetailStyleRecords.h>
#include <korodbc/records/detail/DetailViewRecords.h>
#include <korodbc/repository/KorDatabaseAccess.h>
#include <korodbc/repository/KorDSNManager.h>
#include <korodbc/repository/RecordAccess.h>
#include <korodbc/roots/KorProgressCtrl.h>

#include <map>

using namespace korodbc;

using Compact = KorOdbcCompactDetailsTables;

namespace {

CompactTables& tables() { return CompactTables::current(); }

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

/// A run from its beginning to its end: its database is the current one, and nothing of it is left in memory.
class Run {
public:
    Run(eDSN database, Compact::eCompactType type, bool onlyPreview)
        : m_tables(CompactTables::begin(database, type, onlyPreview)),
          m_database(m_tables.database, m_tables.index)
    {
    }
    ~Run() { m_tables.clear(m_undone); }
    Run(const Run&) = delete;
    Run& operator=(const Run&) = delete;

    /// Locks the database; what a program that has ended left of edits comes back before anything is read.
    bool lock() const
    {
        if (KorDatabaseBatch::lock(m_tables.database) != 1)
            return false;
        KorOdbcMan::bringBackLeftCopies(); // a table whose copy stays is refused
        return true;
    }
    /// Ends the batch of the run, which is kept as a whole or not at all.
    int end(KorDatabaseBatch& batch, int result)
    {
        result = result == 1 && !m_tables.hasFailed() ? batch.end(1) : batch.undo(0);
        m_undone = result != 1;
        return result;
    }

private:
    CompactTables& m_tables;
    const ManagerDatabase m_database;
    bool m_undone = false;
};

bool ofStyles() { return tables().ofStyles(); }
bool ofProcesses() { return tables().ofProcesses(); }

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

/// References to deleted rows in tables that a run of this type leaves alone.
int findStranded(KorArray<KorDetailReference>& stranded)
{
    return findReferences(
        [](const StoredReference& reference) {
            const CompactTable* from = tables().find(reference.from);
            const CompactTable* target = tables().find(reference.column.target());
            return from != nullptr && !from->isIn(tables().type) && target != nullptr &&
                   target->report.deleted > 0 && target->standingFor(reference.target) != reference.target;
        },
        stranded);
}

/// What belongs to the deletions: no reference to a deleted row is left.
void finishDeletions()
{
    if (!tables().hasFailed())
        tables().redirectOthers();
    if (!tables().hasFailed())
        tables().checkReferences();
}

/// Lets `work` do in memory alone what a run does.
template <class Work>
int preview(eDSN database, Compact::eCompactType type, KorArray<KorCompactedTable>& compacted,
            KorArray<KorDetailReference>& stranded, Work work)
{
    const Run run(database, type, true);
    const KorDatabaseReading reading(database);
    if (!tables().areUsable(false) || Compact::loadTables() != 1)
        return 0;
    work();
    finishDeletions();
    if (tables().hasFailed())
        return 0;
    Compact::getCompactedTables(compacted);
    return findStranded(stranded);
}

template <class... T>
void resetCaches()
{
    (RecordAccess::resetCache(descriptionOf<T>()), ...);
}

} // namespace

int Compact::startCompactProcess(eDSN database, int deleteFlag, eCompactType type)
{
    Run run(database, type, false);
    KorDatabaseBatch batch;
    if (!run.lock())
        return run.end(batch, 0);
    const bool usable = tables().areUsable(true);
    if (usable)
        updateTablesStatus();
    progress(0);
    if (loadTables() != 1 || !usable || tables().hasFailed())
        return run.end(batch, 0);
    progress(20);
    mergeAll();
    progress(90);
    int result = 1;
    if (deleteFlag != 0 && !tables().hasFailed()) {
        result = deleteAll();
        finishDeletions();
    }
    progress(100);
    KorProgressCtrl::reset();
    result = run.end(batch, result);
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
    for (const KorCompactedTable& other : tables().others())
        compacted.append(other);
}

KorString Compact::getFailure() { return tables().failure(); }

int Compact::compactQualifierSets(eDSN database, int deleteFlag, eCompactType type)
{
    Run run(database, type, false);
    KorDatabaseBatch batch;
    if (!run.lock())
        return run.end(batch, 0);
    const bool usable = tables().areUsable(false);
    progress(0);
    if (loadTables() != 1 || !usable)
        return run.end(batch, 0);
    progress(20);
    mergeQualifierSets();
    progress(90);
    int result = 1;
    if (deleteFlag != 0 && type == kCompactDetailStyles && !tables().hasFailed()) {
        result = tables().deleteDuplicates(table<StructDetObjQualifierSet>());
        finishDeletions();
    }
    progress(100);
    resetCaches<StructDetObjQualifierSet, StructDetObjReprMap, StructDetViewDimPointSelection,
                StructDetailStyleMap, StructDetailStyleMapItem>();
    if (!tables().hasFailed())
        numberQualifierSets(tables());
    KorProgressCtrl::reset();
    return run.end(batch, result);
}

int Compact::loadTables()
{
    const KorDSNRequest request(tables().database, tables().index);
    int result = 1;
    const std::map<const RecordDescription*, int> percentages = {
        {&descriptionOf<StructDetViewSystemAndBox>(), 5},
        {&descriptionOf<StructDetArrangerControl>(), 5},
        {&descriptionOf<StructDetObjQualifierSet>(), 10},
        {&descriptionOf<StructDetViewDimRequestLinear>(), 15},
    };
    for (CompactTable& table : tables().all()) {
        if (!table.isIn(tables().type))
            continue;
        if (const auto before = percentages.find(&table.type()); ofStyles() && before != percentages.end())
            progress(before->second);
        if (!table.load())
            result = 0;
    }
    return result;
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
