#pragma once

#include <korodbc/repository/RecordMarshal.h>

/// A material. Strengths and modulus in N/mm2, density in kg/m3. Table "Material".
struct StructMaterial {
    int key = -1;
    KorString runName;
    KorString standard;
    KorString materialNumber;
    double yieldStrength = 0;        // up to 40 mm thick
    double tensileStrength = 0;      // up to 40 mm thick
    double yieldStrengthThick = 0;   // above 40 up to 80 mm
    double tensileStrengthThick = 0; // above 40 up to 80 mm
    double elasticModulus = 0;
    double density = 0;
    int sortOrder = 0;
    KorString ownerText;
};
struct StructMaterialMarshal : RecordMarshal<StructMaterial> {
    using RecordMarshal::getOrderedRunNameListByKeys;
    /// The same; the option makes no difference.
    template <class Key>
    static int getOrderedRunNameListByKeys(const KorArray<Key>& keys, long, KorArray<KorString>& names)
    {
        return getOrderedRunNameListByKeys(keys, names);
    }
};

/// The class of a material: the row has the material's key. Table "MaterialClass".
struct StructMaterialClass {
    int key = -1;
    KorString name;
    int classNumber = 0; // 1 structural steel, 2 stainless steel, 3 aluminium, 4 concrete, 5 timber
};
struct StructMaterialClassMarshal : RecordMarshal<StructMaterialClass> {};

/// A protection of members and plates against corrosion. Table "Coating".
struct StructCoating {
    int key = -1;
    KorString runName;
    double thickness = 0; // micrometres
    int sortOrder = 0;
    KorString ownerText;
};
struct StructCoatingMarshal : RecordMarshal<StructCoating> {};

/// A plate thickness. To callers the thickness itself, in mm, is the key; rows are stored under an integer.
/// Table "PlateThickness".
struct StructPlateThickness {
    int key = -1;
    KorString runName;
    double thickness = 0;
    KorString ownerText;
};
struct StructPlateThicknessMarshal : RecordMarshal<StructPlateThickness> {
    using RecordMarshal::getKeyByRunName;
    using RecordMarshal::getKeyList;
    using RecordMarshal::getRunNameByKey;
    /// The thicknesses of all rows in table order.
    static int getKeyList(KorArray<double>& thicknesses);
    static int getKeyByRunName(const KorString& runName, double& thickness);
    /// Name of exactly this thickness.
    static int getRunNameByKey(double thickness, KorString& runName);
};

/// A drawing scale. Table "Scale".
struct StructScale {
    enum ScaleUnitType { kMetric = 0, kImperial = 1 };

    int key = -1;
    KorString runName;
    double factor = 0; // length on paper by real length
    int unitType = 0;  // ScaleUnitType
    int sortOrder = 0;
};
struct StructScaleMarshal : RecordMarshal<StructScale> {
    /// Scales of one unit type, in table order.
    static int getScaleTable(StructScale::ScaleUnitType unitType, KorArray<StructScale>& scales);
    /// Their run names.
    static int getScaleList(StructScale::ScaleUnitType unitType, KorArray<KorString>& names);
    static int getSpecificScale(const KorString& runName, StructScale::ScaleUnitType unitType, StructScale& scale);
    /// Run name of the scale with this factor, within a millionth of it. With `anyUnit`, a scale of another
    /// unit type is taken when the wanted type has none.
    static int getScaleDescription(double factor, KorString& text, StructScale::ScaleUnitType unitType,
                                   bool anyUnit);
    /// Such a run name for every factor in `factors`, empty where no scale has it. 1 when any has.
    static int getListScaleDescription(const KorArray<double>& factors, KorArray<KorString>& texts,
                                       StructScale::ScaleUnitType unitType, bool anyUnit);
};
