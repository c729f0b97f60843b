#pragma once

#include <korodbc/repository/RecordMarshal.h>

#include <array>
#include <cstddef>

/// What units measure. Unit types name a kind by its number.
enum class UnitKind {
    Distance,
    Angle,
    Weight,
    Area,
    Stress,
    Force,
    WeightPerDistance,
    AreaPerDistance,
    Moment,
    SectionModulus,
    MomentOfInertia,
    Volume,
    Density,
};

struct UnitKindDescription {
    std::string_view name;
    std::string_view record;
    std::string_view table;
    std::string_view baseUnit; // symbol of the unit whose factor is 1
};
/// In the order of UnitKind.
inline constexpr std::array<UnitKindDescription, 13> unitKinds = {{
    {"distance", "StructUnitsOfDistance", "UnitsOfDistance", "m"},
    {"angle", "StructUnitsOfAngle", "UnitsOfAngle", "rad"},
    {"weight", "StructUnitsOfWeight", "UnitsOfWeight", "kg"},
    {"area", "StructUnitsOfArea", "UnitsOfArea", "m2"},
    {"stress", "StructUnitsOfStress", "UnitsOfStress", "Pa"},
    {"force", "StructUnitsOfForce", "UnitsOfForce", "N"},
    {"weight per distance", "StructUnitsOfWeightPerDistance", "UnitsOfWeightPerDistance", "kg/m"},
    {"area per distance", "StructUnitsOfAreaPerDistance", "UnitsOfAreaPerDistance", "m2/m"},
    {"moment", "StructUnitsOfMoment", "UnitsOfMoment", "Nm"},
    {"section modulus", "StructUnitsOfSectionModulus", "UnitsOfSectionModulus", "m3"},
    {"moment of inertia", "StructUnitsOfMomentOfInertia", "UnitsOfMomentOfInertia", "m4"},
    {"volume", "StructUnitsOfVolume", "UnitsOfVolume", "m3"},
    {"density", "StructUnitsOfDensity", "UnitsOfDensity", "kg/m3"},
}};
constexpr const UnitKindDescription& describedBy(UnitKind kind)
{
    return unitKinds[static_cast<std::size_t>(kind)];
}

/// A unit. A value in it times `factor` is the value in the base unit of its kind; values are converted by the
/// quotient of two factors. Each kind has a table of its own.
template <UnitKind Kind>
struct StructUnitsOf {
    int key = -1;
    KorString runName;
    KorString symbol;
    double factor = 1;
    int precision = -1; // key of the precision that values are shown with, see StructUnits
    int unitSystem = 0; // 0 metric, 1 US
    int sortOrder = 0;
    KorString ownerText;
};

using StructUnitsOfDistance = StructUnitsOf<UnitKind::Distance>;
using StructUnitsOfAngle = StructUnitsOf<UnitKind::Angle>;
using StructUnitsOfWeight = StructUnitsOf<UnitKind::Weight>;
using StructUnitsOfArea = StructUnitsOf<UnitKind::Area>;
using StructUnitsOfStress = StructUnitsOf<UnitKind::Stress>;
using StructUnitsOfForce = StructUnitsOf<UnitKind::Force>;
using StructUnitsOfWeightPerDistance = StructUnitsOf<UnitKind::WeightPerDistance>;
using StructUnitsOfAreaPerDistance = StructUnitsOf<UnitKind::AreaPerDistance>;
using StructUnitsOfMoment = StructUnitsOf<UnitKind::Moment>;
using StructUnitsOfSectionModulus = StructUnitsOf<UnitKind::SectionModulus>;
using StructUnitsOfMomentOfInertia = StructUnitsOf<UnitKind::MomentOfInertia>;
using StructUnitsOfVolume = StructUnitsOf<UnitKind::Volume>;
using StructUnitsOfDensity = StructUnitsOf<UnitKind::Density>;

template <UnitKind Kind>
struct StructUnitsOfMarshal : RecordMarshal<StructUnitsOf<Kind>> {
};

/// A way to write values: decimal, fractional, feet and inches. Table "UnitsType".
struct StructUnitsType {
    int key = -1;
    KorString runName;
    int unitKind = -1; // number of the kind that it serves, -1: every kind
    int sortOrder = 0;
    KorString ownerText;
};
struct StructUnitsTypeMarshal : RecordMarshal<StructUnitsType> {
    /// Run names of the types that serve a kind, in sort order.
    static int getRunNameListOfKind(long kind, KorArray<KorString>& names);
};

/// A precision that values of a unit type are shown with. Table "Units".
struct StructUnits {
    int key = -1;
    KorString runName;
    int unitType = -1;
    int denominator = 1; // the smallest step is that part of the last unit shown: 100 for 0.01, 16 for 1/16
    int sortOrder = 0;
    KorString ownerText;
};
struct StructUnitsMarshal : RecordMarshal<StructUnits> {
    /// Types may have precisions of the same name.
    static int getStructByRunNameAndType(const KorString& runName, long unitType, StructUnits& record);
    /// Run names of the precisions of a type, in sort order.
    static int getRunNameListOfType(long unitType, KorArray<KorString>& names);
};
