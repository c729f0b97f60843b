#pragma once

#include <korodbc/catalogues/CatalogueReader.h>
#include <korodbc/records/configuration/FootingRecords.h>

/// Formulas that size isolated footings.
class FootingIsolatedFormula
    : public CatalogueReader<StructFootingIsolatedFormulaDefault, StructFootingIsolatedFormulaMask> {
public:
    static int getFormulaDefault(const KorOdbcKey& key, StructFootingIsolatedFormulaDefault& record)
    {
        return byKey(key, record);
    }
    static int getFormulaDefaultsList(KorArray<KorString>& names) { return orderedRunNames(names); }
    static int getFormulaMask(const KorOdbcKey& key, StructFootingIsolatedFormulaMask& record)
    {
        return byKey(key, record);
    }
};
