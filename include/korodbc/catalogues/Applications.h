#pragma once

#include <korodbc/catalogues/CatalogueReader.h>
#include <korodbc/records/configuration/ApplicationRecords.h>

/// Programs that data are exchanged with.
class KorODBCApplication_ImportExport
    : public CatalogueReader<StructSTDApplication_ImportExport, StructPRFApplication_ImportExport> {
public:
    enum eInterface { kProduct, kSections }; // whole models, section tables only

    static int getApplicationKey(const KorString& runName, CatalogueKey auto& key, eInterface kind = kProduct)
    {
        return kind == kProduct ? keyOf<StructSTDApplication_ImportExport>(runName, key)
                                : keyOf<StructPRFApplication_ImportExport>(runName, key);
    }
    static int getApplicationList(KorArray<KorString>& names, eInterface kind = kProduct)
    {
        return kind == kProduct ? runNames<StructSTDApplication_ImportExport>(names)
                                : runNames<StructPRFApplication_ImportExport>(names);
    }
};
