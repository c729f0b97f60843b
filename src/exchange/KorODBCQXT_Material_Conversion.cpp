#include <korodbc/exchange/MaterialConversions.h>

int KorODBCQXT_Material_Conversion::getMappedMaterial(const KorString& material, int application, bool toNative,
                                                      StructQXT_Material_Conversion& record)
{
    constexpr int thisApplication = 1;
    StructQXT_Material_Conversion neutral;
    const int result = getQXTMaterials(material, toNative ? application : thisApplication, neutral);
    return result == 1 ? getAppMaterials(toNative ? thisApplication : application, neutral.qxtMaterial, record)
                       : result;
}
