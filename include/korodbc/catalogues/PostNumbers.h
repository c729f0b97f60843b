#pragma once

#include <korodbc/catalogues/CatalogueReader.h>
#include <korodbc/records/configuration/ClassificationRecords.h>

/// How equal numbers are told apart after numbering.
class KorODBCPostNumberSolution : public CatalogueReader<StructPostNumberSolution> {
public:
    static int getPostNumberSolutionByKey(const KorOdbcKey& key, StructPostNumberSolution& record)
    {
        return byKey(key, record);
    }
    static int getPostNumberSolutionByRunname(const KorString& runName, StructPostNumberSolution& record)
    {
        return byRunName(runName, record);
    }
    static int getPostNumberSolutionList(KorArray<KorString>& names) { return orderedRunNames(names); }
};
