#include <korodbc/lookup/KorOdbcSteelPlates.h>

#include <charconv>
#include <string>

namespace {

double number(const KorString& text)
{
    const std::string narrow = text.toUtf8();
    double value = 0;
    std::from_chars(narrow.data(), narrow.data() + narrow.size(), value);
    return value;
}

} // namespace

int kor_odbc_getPlateThicknessList(KorArray<KorString>& texts)
{
    KorArray<double> keys;
    const int result = StructPlateThicknessMarshal::getKeyList(keys);
    if (result != 1)
        return result;
    texts.setLogicalLength(keys.length());
    for (int i = 0; i < keys.length(); ++i) {
        KorString text = KorString::format(L"%f", keys[i]);
        if (number(text) == 0.1) // only this thickness goes by its name
            StructPlateThicknessMarshal::getRunNameByKey(keys[i], text);
        texts[i] = text;
    }
    return result;
}

int kor_odbc_getSlabThicknessList(KorArray<KorString>& texts) { return kor_odbc_getPlateThicknessList(texts); }

int kor_odbc_getWallThicknessList(KorArray<KorString>& texts) { return kor_odbc_getPlateThicknessList(texts); }

int kor_odbc_getPlateThicknessKey(const KorString& runName, double& thickness)
{
    return StructPlateThicknessMarshal::getKeyByRunName(runName, thickness);
}

int kor_odbc_getPlateThicknessDescription(double thickness, KorString& runName)
{
    return StructPlateThicknessMarshal::getRunNameByKey(thickness, runName);
}

int kor_odbc_getScaleList(StructScale::ScaleUnitType unitType, KorArray<KorString>& names)
{
    return StructScaleMarshal::getScaleList(unitType, names);
}

int kor_odbc_getScaleTable(StructScale::ScaleUnitType unitType, KorArray<StructScale>& scales)
{
    return StructScaleMarshal::getScaleTable(unitType, scales);
}

int kor_odbc_getSpecificScale(const KorString& runName, StructScale::ScaleUnitType unitType, StructScale& scale)
{
    return StructScaleMarshal::getSpecificScale(runName, unitType, scale);
}

int kor_odbc_getScaleDescription(double factor, KorString& text, StructScale::ScaleUnitType unitType, bool anyUnit)
{
    return StructScaleMarshal::getScaleDescription(factor, text, unitType, anyUnit);
}

int kor_odbc_getScaleDescription(KorString key, KorString& text)
{
    return StructScaleMarshal::getRunNameByKey(key, text);
}

int kor_odbc_getListScaleDescription(const KorArray<double>& factors, KorArray<KorString>& texts,
                                     StructScale::ScaleUnitType unitType, bool anyUnit)
{
    return StructScaleMarshal::getListScaleDescription(factors, texts, unitType, anyUnit);
}

int kor_odbc_getMaterialClass(long material, int& classNumber)
{
    StructMaterialClass record;
    if (StructMaterialClassMarshal::getStructByKey(material, record) != 1 || record.name.isEmpty())
        return 0;
    classNumber = record.classNumber;
    return 1;
}
