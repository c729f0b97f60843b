#pragma once

#include <korodbc/catalogues/CatalogueReader.h>
#include <korodbc/records/configuration/NameMapRecords.h>
#include <korodbc/records/configuration/UnitRecords.h>

/// The names that other applications use, and the units of measurement. Results: 1 found, another value
/// otherwise; outputs are unchanged on failure.
class KorODBCMapping : public CatalogueReader<StructMapInternToExtern> {
public:
    /// The entry with that key: of the drawing's project data, else of the configuration. The user's own entries
    /// are not asked for, since their keys mean other names.
    static int getMapInternToExtern(const KorOdbcKey& key, StructMapInternToExtern& record);
    /// The entry of an internal name: of the drawing's project data when the default
    /// "MapExternalNameInProjectDB" is there and not 0, else of the add-in, else of the configuration.
    static int getMapInternToExtern(const KorString& name, StructMapInternToExtern& record);

    // Units. The record says what is looked for, by its key or run name, and receives what is found. Lists are run
    // names in sort order.

    template <UnitKind Kind>
    static int getUnitByKey(StructUnitsOf<Kind>& record)
    {
        return byOwnKey(record);
    }
    template <UnitKind Kind>
    static int getUnitByName(StructUnitsOf<Kind>& record)
    {
        return byOwnName(record);
    }
    template <UnitKind Kind>
    static int getUnitList(KorArray<KorString>& names)
    {
        return orderedRunNames<StructUnitsOf<Kind>>(names);
    }

    static constexpr auto& getUnitOfDistanceByKey = getUnitByKey<UnitKind::Distance>;
    static constexpr auto& getUnitOfDistanceByName = getUnitByName<UnitKind::Distance>;
    static constexpr auto& getUnitOfDistanceList = getUnitList<UnitKind::Distance>;
    static constexpr auto& getUnitOfAngleByKey = getUnitByKey<UnitKind::Angle>;
    static constexpr auto& getUnitOfAngleByName = getUnitByName<UnitKind::Angle>;
    static constexpr auto& getUnitOfAngleList = getUnitList<UnitKind::Angle>;
    static constexpr auto& getUnitOfWeightByKey = getUnitByKey<UnitKind::Weight>;
    static constexpr auto& getUnitOfWeightByName = getUnitByName<UnitKind::Weight>;
    static constexpr auto& getUnitOfWeightList = getUnitList<UnitKind::Weight>;
    static constexpr auto& getUnitOfAreaByKey = getUnitByKey<UnitKind::Area>;
    static constexpr auto& getUnitOfAreaByName = getUnitByName<UnitKind::Area>;
    static constexpr auto& getUnitOfAreaList = getUnitList<UnitKind::Area>;
    static constexpr auto& getUnitOfStressByKey = getUnitByKey<UnitKind::Stress>;
    static constexpr auto& getUnitOfStressByName = getUnitByName<UnitKind::Stress>;
    static constexpr auto& getUnitOfStressList = getUnitList<UnitKind::Stress>;
    static constexpr auto& getUnitOfForceByKey = getUnitByKey<UnitKind::Force>;
    static constexpr auto& getUnitOfForceByName = getUnitByName<UnitKind::Force>;
    static constexpr auto& getUnitOfForceList = getUnitList<UnitKind::Force>;
    static constexpr auto& getUnitOfWeightPerDistanceByKey = getUnitByKey<UnitKind::WeightPerDistance>;
    static constexpr auto& getUnitOfWeightPerDistanceByName = getUnitByName<UnitKind::WeightPerDistance>;
    static constexpr auto& getUnitOfWeightPerDistanceList = getUnitList<UnitKind::WeightPerDistance>;
    static constexpr auto& getUnitOfAreaPerDistanceByKey = getUnitByKey<UnitKind::AreaPerDistance>;
    static constexpr auto& getUnitOfAreaPerDistanceByName = getUnitByName<UnitKind::AreaPerDistance>;
    static constexpr auto& getUnitOfAreaPerDistanceList = getUnitList<UnitKind::AreaPerDistance>;
    static constexpr auto& getUnitOfMomentByKey = getUnitByKey<UnitKind::Moment>;
    static constexpr auto& getUnitOfMomentByName = getUnitByName<UnitKind::Moment>;
    static constexpr auto& getUnitOfMomentList = getUnitList<UnitKind::Moment>;
    static constexpr auto& getUnitOfSectionModulusByKey = getUnitByKey<UnitKind::SectionModulus>;
    static constexpr auto& getUnitOfSectionModulusByName = getUnitByName<UnitKind::SectionModulus>;
    static constexpr auto& getUnitOfSectionModulusList = getUnitList<UnitKind::SectionModulus>;
    static constexpr auto& getUnitOfMomentOfInertiaByKey = getUnitByKey<UnitKind::MomentOfInertia>;
    static constexpr auto& getUnitOfMomentOfInertiaByName = getUnitByName<UnitKind::MomentOfInertia>;
    static constexpr auto& getUnitOfMomentOfInertiaList = getUnitList<UnitKind::MomentOfInertia>;
    static constexpr auto& getUnitOfVolumeByKey = getUnitByKey<UnitKind::Volume>;
    static constexpr auto& getUnitOfVolumeByName = getUnitByName<UnitKind::Volume>;
    static constexpr auto& getUnitOfVolumeList = getUnitList<UnitKind::Volume>;
    static constexpr auto& getUnitOfDensityByKey = getUnitByKey<UnitKind::Density>;
    static constexpr auto& getUnitOfDensityByName = getUnitByName<UnitKind::Density>;
    static constexpr auto& getUnitOfDensityList = getUnitList<UnitKind::Density>;

    // Unit types: the ways in which values of a kind are written

    static int getUnitTypeByKey(StructUnitsType& record) { return byOwnKey(record); }
    static int getUnitTypeByName(StructUnitsType& record) { return byOwnName(record); }
    /// Run names of the types that serve a kind, given by its number in UnitKind; types without a kind serve all.
    /// 0 when none does.
    static int getUnitTypeList(const KorOdbcKey& kind, KorArray<KorString>& names)
    {
        return StructUnitsTypeMarshal::getRunNameListOfKind(kind, names);
    }
    template <UnitKind Kind>
    static int getUnitTypeListOf(KorArray<KorString>& names)
    {
        return getUnitTypeList(static_cast<long>(Kind), names);
    }
    static constexpr auto& getUnitTypeAreaList = getUnitTypeListOf<UnitKind::Area>;
    static constexpr auto& getUnitTypeSectionModulusList = getUnitTypeListOf<UnitKind::SectionModulus>;
    static constexpr auto& getUnitTypeMomentInertiaList = getUnitTypeListOf<UnitKind::MomentOfInertia>;
    static constexpr auto& getUnitTypeVolumeList = getUnitTypeListOf<UnitKind::Volume>;
    static constexpr auto& getUnitTypeDensityList = getUnitTypeListOf<UnitKind::Density>;

    // Precisions

    static int getUnitPrecisionByKey(StructUnits& record) { return byOwnKey(record); }
    /// By the run name and the unit type of the record: several types have precisions of one name.
    static int getUnitPrecisionByNameAndType(StructUnits& record);
    /// Run names of the precisions of a unit type; 0 when it has none.
    static int getUnitPrecisionList(const KorOdbcKey& unitType, KorArray<KorString>& names)
    {
        return StructUnitsMarshal::getRunNameListOfType(unitType, names);
    }

private:
    template <class T>
    static int byOwnKey(T& record)
    {
        return byKey(KorOdbcKey(record.key), record);
    }
    template <class T>
    static int byOwnName(T& record)
    {
        const KorString name = record.runName; // stays while the record is replaced
        return byRunName(name, record);
    }
};
