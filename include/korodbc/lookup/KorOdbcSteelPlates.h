#pragma once

#include <korodbc/records/configuration/MaterialRecords.h>

// Plate thicknesses, scales and material classes. Results: 1 found or read, 0 not; outputs are unchanged on
// failure. Threads: one. Needs: an open repository.

/// Thicknesses in mm as texts with six decimals, "12.000000". The thickness 0.1 alone is shown by its run name.
int kor_odbc_getPlateThicknessList(KorArray<KorString>& texts);
/// The same list for slabs and for walls.
int kor_odbc_getSlabThicknessList(KorArray<KorString>& texts);
int kor_odbc_getWallThicknessList(KorArray<KorString>& texts);
/// Thickness, in mm, of a run name, and run name of exactly that thickness.
int kor_odbc_getPlateThicknessKey(const KorString& runName, double& thickness);
int kor_odbc_getPlateThicknessDescription(double thickness, KorString& runName);

/// Run names of the scales of a unit type.
int kor_odbc_getScaleList(StructScale::ScaleUnitType unitType, KorArray<KorString>& names);
int kor_odbc_getScaleTable(StructScale::ScaleUnitType unitType, KorArray<StructScale>& scales);
int kor_odbc_getSpecificScale(const KorString& runName, StructScale::ScaleUnitType unitType, StructScale& scale);
/// Run name of the scale with this factor; with `anyUnit`, one of another unit type when there is none of this.
int kor_odbc_getScaleDescription(double factor, KorString& text, StructScale::ScaleUnitType unitType,
                                 bool anyUnit);
/// Run name of a scale's key.
int kor_odbc_getScaleDescription(KorString key, KorString& text);
/// Run names of the scales with these factors, empty where there is none; 0 when no factor has one.
int kor_odbc_getListScaleDescription(const KorArray<double>& factors, KorArray<KorString>& texts,
                                     StructScale::ScaleUnitType unitType, bool anyUnit);

/// Number of a material's class; 0 when the class has no name.
int kor_odbc_getMaterialClass(long material, int& classNumber);
