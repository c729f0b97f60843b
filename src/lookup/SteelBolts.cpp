#include <korodbc/lookup/KorOdbcSteelBolts.h>

using Bolts = KorODBCScrewsDll;

int kor_odbc_getStandardsList(KorArray<KorString>& names)
{
    return StructStandardMarshal::getOrderedRunNameListAllSources(names);
}

int kor_odbc_getFestigkeitList(KorArray<KorString>& names)
{
    return StructStrengthClassMarshal::getOrderedRunNameListAllSources(names);
}

int kor_odbc_getGarniturList(KorArray<KorString>& names)
{
    return StructSetMarshal::getOrderedRunNameListAllSources(names);
}

int kor_odbc_getDiameterList(KorArray<KorString>& names)
{
    return StructScrewDiameterMarshal::getOrderedRunNameListAllSources(names);
}

int kor_odbc_getBoltComponents(KorArray<StructSetNutsBolts>& components)
{
    return StructSetNutsBoltsMarshal::getTableAllSources(components);
}

int kor_odbc_getBoltComponentTypes(KorArray<StructScrewType>& types)
{
    return StructScrewTypeMarshal::getTable(types);
}

int Bolts::kor_odbc_getNormKey(const KorString& runName, KorString& key)
{
    return StructStandardMarshal::getKeyByRunName(runName, key);
}

int Bolts::kor_odbc_getNormDescription(const KorString& key, KorString& runName)
{
    return StructStandardMarshal::getRunNameByKey(key, runName);
}

int Bolts::kor_odbc_getStandardNutsKey(const KorString& runName, KorString& key)
{
    return StructStandardNutsMarshal::getKeyByRunName(runName, key);
}

int Bolts::kor_odbc_getStandardNutsDescription(const KorString& key, KorString& runName)
{
    return StructStandardNutsMarshal::getRunNameByKey(key, runName);
}

int Bolts::kor_odbc_getFestigkeitKey(const KorString& runName, KorString& key)
{
    return StructStrengthClassMarshal::getKeyByRunName(runName, key);
}

int Bolts::kor_odbc_getFestigkeitDescription(const KorString& key, KorString& runName)
{
    return StructStrengthClassMarshal::getRunNameByKey(key, runName);
}

int Bolts::kor_odbc_getGarniturKey(const KorString& runName, KorString& key)
{
    return StructSetMarshal::getKeyByRunName(runName, key);
}

int Bolts::kor_odbc_getGarniturDescription(const KorString& key, KorString& runName)
{
    return StructSetMarshal::getRunNameByKey(key, runName);
}

int Bolts::kor_odbc_getAssemblyLocationKey(const KorString& runName, KorString& key)
{
    return StructAssemblyLocationMarshal::getKeyByRunName(runName, key);
}

int Bolts::kor_odbc_getAssemblyLocationDescription(const KorString& key, KorString& runName)
{
    return StructAssemblyLocationMarshal::getRunNameByKey(key, runName);
}

int Bolts::kor_odbc_getAssemblyLocationList(KorArray<KorString>& names)
{
    return StructAssemblyLocationMarshal::getOrderedRunNameList(names);
}

int Bolts::kor_odbc_getScrewCoating(const KorString& key, StructScrewCoating& coating)
{
    return StructScrewCoatingMarshal::getStructByKey(key, coating);
}

int Bolts::kor_odbc_getScrewCoatingList(KorArray<KorString>& names)
{
    return StructScrewCoatingMarshal::getRunNameList(names);
}

int Bolts::kor_odbc_getScrewCoatingRunname(const KorString& key, KorString& runName)
{
    return StructScrewCoatingMarshal::getRunNameByKey(key, runName);
}

int Bolts::kor_odbc_getScrewDistance(const KorString& key, StructScrewDistance& distance)
{
    return StructScrewDistanceMarshal::getStructByKey(key, distance);
}

int Bolts::kor_odbc_getScrewDistanceKey(const KorString& runName, KorString& key)
{
    return StructScrewDistanceMarshal::getKeyByRunName(runName, key);
}

int Bolts::kor_odbc_getScrewDiameterDescription(const KorString& key, KorString& runName)
{
    return StructScrewDiameterMarshal::getRunNameByKey(key, runName);
}
