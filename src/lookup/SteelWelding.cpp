#include "lookup/TwoSources.h"

#include <korodbc/lookup/KorOdbcSteelWelding.h>

namespace {

constexpr int lastBasicWeld = 1000;

template <class Marshal>
KorString nameOfKey(int key)
{
    KorString name;
    Marshal::getRunNameByKey(static_cast<long>(key), name);
    return name;
}

} // namespace

KorString kor_odbc_getWeldingDescription(int key)
{
    KorString name;
    const long weld = key;
    switch (key <= lastBasicWeld ? StructWeldSeamBasicMarshal::getRunNameByKey(weld, name)
                                 : StructWeldSeamMarshal::getRunNameByKey(weld, name)) {
    case -1:
        return L"access denied";
    case 0:
        return L"key not found";
    default:
        return name;
    }
}

int kor_odbc_getBasicWeldingList(KorArray<KorString>& names)
{
    return StructWeldSeamBasicMarshal::getOrderedRunNameList(names);
}

int kor_odbc_getCombiWeldingList(KorArray<KorString>& names)
{
    return StructWeldSeamMarshal::getOrderedRunNameList(names);
}

int kor_odbc_getWeldTypes(KorArray<StructWeldSeamBasic>& welds)
{
    return StructWeldSeamBasicMarshal::getTable(welds);
}

int kor_odbc_getCombiWeldTypes(KorArray<StructWeldSeam>& welds) { return StructWeldSeamMarshal::getTable(welds); }

int kor_odbc_getCombiWelding(const KorString& runName, int& key)
{
    return StructWeldSeamMarshal::getKeyByRunName(runName, key);
}

int kor_odbc_getCombiWelding(int key, int& firstWeld, int& secondWeld)
{
    StructWeldSeam weld;
    const int result = StructWeldSeamMarshal::getStructByKey(key, weld);
    if (result != 0) {
        firstWeld = weld.firstWeld;
        secondWeld = weld.secondWeld;
    }
    return result;
}

int kor_odbc_getCombiWelding(int key, KorString& runName)
{
    return StructWeldSeamMarshal::getRunNameByKey(static_cast<long>(key), runName);
}

int kor_odbc_getCombiWeldingFor(int firstWeld, int secondWeld, int& key)
{
    return StructWeldSeamMarshal::getKeyOfWelds(firstWeld, secondWeld, key);
}

KorString kor_odbc_getFaceShapeDescription(int key) { return nameOfKey<StructFaceShapeMarshal>(key); }

int kor_odbc_getFaceShapeDescription(const KorString& runName, int& key)
{
    return StructFaceShapeMarshal::getKeyByRunName(runName, key);
}

int kor_odbc_getFaceShapeDescriptionList(KorArray<KorString>& names)
{
    return StructFaceShapeMarshal::getRunNameList(names);
}

int kor_odbc_getWeldShapes(KorArray<StructFaceShape>& shapes) { return StructFaceShapeMarshal::getTable(shapes); }

KorString kor_odbc_getSeamExecutingDescription(int key) { return nameOfKey<StructSeamExecutingMarshal>(key); }

int kor_odbc_getSeamExecutingDescription(const KorString& runName, int& key)
{
    return StructSeamExecutingMarshal::getKeyByRunName(runName, key);
}

int kor_odbc_getSeamExecutingDescriptionList(KorArray<KorString>& names)
{
    return StructSeamExecutingMarshal::getRunNameList(names);
}

int kor_odbc_getWeldDesign(KorArray<StructSeamExecuting>& designs)
{
    return StructSeamExecutingMarshal::getTable(designs);
}

int kor_odbc_getTextDescription(const KorString& key, KorString& runName)
{
    {
        const KorDSNRequest request(KorDSNDefinitions::kConfiguration, KorDSNDefinitions::kBase);
        const int result = StructWeldSeamTextMarshal::getRunNameByKey(key, runName);
        if (result == 1)
            return result;
    }
    const KorDSNRequest request(KorDSNDefinitions::kAddin, KorDSNDefinitions::kFirstAddin);
    return StructWeldSeamTextMarshal::getRunNameByKey(key, runName);
}

int kor_odbc_getWelSeamTextDescriptionList(KorArray<KorString>& keys)
{
    KorArray<KorString> found = korodbc::keysOfBothSources<StructWeldSeamTextMarshal>();
    if (found.isEmpty())
        return 0;
    keys = std::move(found);
    return 1;
}
