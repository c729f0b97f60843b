#pragma once

#include <korodbc/catalogues/CatalogueReader.h>
#include <korodbc/records/exchange/ConversionRecords.h>

/// Materials of applications under neutral names. Names are compared exactly; of several rows the first counts.
class KorODBCQXT_Material_Conversion : public CatalogueReader<StructQXT_Material_Conversion> {
public:
    /// The row that gives an application's material its neutral name.
    static int getQXTMaterials(const KorString& material, int application, StructQXT_Material_Conversion& record)
    {
        return StructQXT_Material_ConversionMarshal::getQXTMaterials(material, application, record);
    }
    /// The row of an application for a neutral material.
    static int getAppMaterials(int application, const KorString& material, StructQXT_Material_Conversion& record)
    {
        return StructQXT_Material_ConversionMarshal::getAppMaterials(application, material, record);
    }
    /// The row of another application for a material of this one, or with `toNative` the other way round.
    static int getMappedMaterial(const KorString& material, int application, bool toNative,
                                 StructQXT_Material_Conversion& record);
};
