#pragma once

#include <korodbc/catalogues/CatalogueReader.h>
#include <korodbc/records/configuration/TextRecords.h>

/// Standard views of the model; keys are texts.
class KorODBCCameras : public CatalogueReader<StructCameraType> {
public:
    static int getTypeByKey(const KorString& key, StructCameraType& record) { return byKey(key, record); }
    static int getTypeByRunname(const KorString& runName, StructCameraType& record)
    {
        return byRunName(runName, record);
    }
    /// Run name of a key, and the key itself when there is no such camera.
    static KorString getTypeRunNameByKey(const KorString& key)
    {
        return runNameOrKey<&StructCameraType::runName>(key);
    }
    static int getTypesList(KorArray<KorString>& names) { return orderedRunNames(names); }
};
