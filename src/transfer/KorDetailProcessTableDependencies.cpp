#include "CopyPass.h"
#include "StyleGraph.h"

#include <korodbc/transfer/KorDetailProcessTableDependencies.h>
#include <korodbc/transfer/KorDetailTableDependencies.h>

using namespace korodbc;

using Copy = KorDetailProcessTableDependencies;
using Man = KorOdbcMan;

KorArray<StructDetailProcessDefinition> Copy::m_DetailProcessDefinition;
KorArray<StructDetailProcessStep> Copy::m_DetailProcessStep;
KorArray<StructDetailProcessCategory> Copy::m_DetailProcessCategory;
KorArray<StructDetailFilenameSelector> Copy::m_DetailProcessFileNameSelector;
KorArray<StructDetProcessScales> Copy::m_DetailProcessScales;
KorArray<StructDetailProcessMain2CutScale> Copy::m_DetailProcessMain2CutScales;
KorArray<StructDetailStyleMap> Copy::m_DetailProcessStyleMap;

KorArray<StructDetailProcessStep> Copy::m_DetailProcessStepsResultedFromDeepCopy;
KorArray<StructDetailStyleMap> Copy::m_DetailStyleMapsResultedFromDeepCopy;

KorTransferKeyMap Copy::m_writeTransferKeyMap;

int Copy::m_NrRowsToWrite = 1;
int Copy::m_bDeepCopyWithDetailStyles = 0;
bool Copy::m_bDeepCopyCanceledByUser = false;
long Copy::detProcessCategory = -1;

DeepCopyGraph& korodbc::processGraph()
{
    static DeepCopyGraph graph = [] {
        const CopyTable tables[] = {
            CopyTable(Copy::m_DetailProcessDefinition),
            CopyTable(Copy::m_DetailProcessStep, &Copy::m_DetailProcessStepsResultedFromDeepCopy),
            CopyTable(Copy::m_DetailProcessCategory),
            CopyTable(Copy::m_DetailProcessFileNameSelector),
            CopyTable(Copy::m_DetailProcessScales),
            CopyTable(Copy::m_DetailProcessMain2CutScales),
            CopyTable(Copy::m_DetailProcessStyleMap, &Copy::m_DetailStyleMapsResultedFromDeepCopy),
        };
        static_assert(std::size(tables) == copiedTables(DetailTable::Travel::WithProcesses));
        DeepCopyGraph made(tables, Copy::m_writeTransferKeyMap, &styleGraph());
        for (const Man::eTableType type : {Man::kDetailProcessDefinition, Man::kDetailProcessStep})
            made.setEdge(type, Man::kDetailProcessCategories, {.override = &Copy::detProcessCategory});
        // without the styles, items keep the style keys of the source
        made.setEdge(Man::kDetailStyleMap, Man::kDetailStyle,
                     {.followedWith = &Copy::m_bDeepCopyWithDetailStyles});
        return made;
    }();
    return graph;
}

long Copy::collect(const RecordDescription& type, void* record, long key)
{
    return collecting([&] { return processGraph().collect(type, record, key); });
}

long Copy::save(const RecordDescription& type, void* record, long index)
{
    return saving(processGraph(), [&] { return processGraph().save(type, record, index); });
}

void Copy::ResetDeepCopyInfo()
{
    m_bDeepCopyCanceledByUser = false;
    processGraph().reset();
    KorDetailTableDependencies::ResetDeepCopyInfo();
}

void Copy::SetRowNr()
{
    using Styles = KorDetailTableDependencies;
    m_NrRowsToWrite = static_cast<int>(processGraph().rows());
    int beyond = Styles::SetRowNr();
    if (m_bDeepCopyWithDetailStyles == 0)
        beyond = Styles::m_DetObjQualifierSetGroup.length() + Styles::m_DetObjQualifierSet.length();
    Styles::m_NrRowsToWrite = m_NrRowsToWrite + beyond;
}
