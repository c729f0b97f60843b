#pragma once

#include <korodbc/catalogues/KorOdbcGrouping.h>

#include <functional>
#include <string>
#include <vector>

/// The lists of KorOdbcGrouping, with the plain SQL that names their rows.
namespace grouping {

using Grouping = KorOdbcGrouping;
using Names = KorArray<KorString>;
using enum Grouping::eRole;

/// A list, which preferred sizes are its own, and what names them: `from` for plain SQL, c stands for the table.
struct Case {
    const char* name;
    std::function<int(Names&)> fill;
    int type, category, table;
    const char* from;
    const char* column = "RunName";
    const char* order = "c.SortOrder, c.rowid";
    const char* exists = "1"; // with what was chosen before
    int masterTable = 0;
    const char* master = "";
    int addInTable = 0;
};

inline constexpr const char* tableOrder = "c.rowid";
inline constexpr const char* screws = "EXISTS (SELECT 1 FROM ScrewNew s WHERE s.Standard = 1 AND ";
inline constexpr const char* anchors = "EXISTS (SELECT 1 FROM AnchorsName s WHERE s.Standard = 1 AND ";
inline constexpr const char* studs = "EXISTS (SELECT 1 FROM ConnectorRelations s WHERE s.Standard = 1 AND ";

inline const std::vector<Case>& cases()
{
    static const std::string strength = std::string(screws) + "s.StrengthClass = c.Key)",
                             set = std::string(screws) + "s.StrengthClass = 3 AND s.BoltSet = c.Key)",
                             diameter =
                                 std::string(screws) +
                                 "s.StrengthClass = 3 AND s.BoltSet = 2 AND abs(s.Diameter - c.Diameter) <= 1e-6)",
                             anchorMaterial = std::string(anchors) + "s.Material = c.Key)",
                             anchorSet = std::string(anchors) + "s.Material = 3 AND s.BoltSet = c.Key)",
                             anchorDiameter =
                                 std::string(anchors) + "s.Material = 3 AND s.BoltSet = 2 AND s.Diameter = c.Key)",
                             studMaterial = std::string(studs) + "s.Material = c.Key)",
                             studDiameter = std::string(studs) + "s.Material = 2 AND s.Diameter = c.Key)";
    static const std::vector<Case> all = {
        {"materials of beams", [](Names& n) { return Grouping::getMaterialList(n, kBeam, 0); }, 2, 1, 2,
         "Material", "RunName", "c.SortOrder, c.rowid", "1", 0, "", 24},
        {"materials of footings", [](Names& n) { return Grouping::getMaterialList(n, kFootingIsolated, 7); }, 2,
         11, 2, "Material", "RunName", "c.SortOrder, c.rowid", "1", 0, "", 24},
        {"coatings", [](Names& n) { return Grouping::getCoatingList(kPlate, n); }, 3, 2, 3, "Coating", "RunName",
         "c.SortOrder, c.rowid", "1", 0, "", 25},
        {"model roles", [](Names& n) { return Grouping::getModelRoleList(kBeam, n); }, 13, 1, 16, "ModelRole",
         "RunName", "c.SortOrder, c.rowid", "1", 0, "", 26},
        {"stud materials", [](Names& n) { return Grouping::getConnectorMaterialList(kStudShears, n); }, 2, 4, 10,
         "ConnectorMaterial"},
        {"of a standard", [](Names& n) { return Grouping::getConnectorMaterialList(kStudShears, L"1", n); }, 19, 4,
         10, "ConnectorMaterial", "RunName", "c.SortOrder, c.rowid", studMaterial.c_str()},
        {"stud diameters", [](Names& n) { return Grouping::getConnectorDiameterList(kStudShears, L"1", L"2", n); },
         8, 4, 9, "ConnectorDiameters", "RunName", "c.SortOrder, c.rowid", studDiameter.c_str()},
        {"stud standards", [](Names& n) { return Grouping::getConnectorStandardsList(kStudShears, n); }, 20, 4, 11,
         "ConnectorStandard"},
        {"thicknesses", [](Names& n) { return Grouping::getPlateThicknessList(kPlate, n); }, 4, 2, 4,
         "PlateThickness", "RunName", tableOrder},
        {"bolt standards", [](Names& n) { return Grouping::getStandardsList(kBolt, n); }, 5, 3, 5, "Standard"},
        {"strength classes", [](Names& n) { return Grouping::getStrengthClassList(kBolt, L"1", n); }, 16, 3, 8,
         "StrengthClass", "RunName", "c.SortOrder, c.rowid", strength.c_str()},
        {"bolt sets", [](Names& n) { return Grouping::getSetList(kBolt, L"1", L"3", n); }, 6, 3, 6, "Sets",
         "RunName", "c.SortOrder, c.rowid", set.c_str()},
        {"bolt diameters", [](Names& n) { return Grouping::getDiameterList(kBolt, L"1", L"3", L"2", n); }, 7, 3, 7,
         "BoltsDiameters", "RunName", "c.SortOrder, c.rowid", diameter.c_str()},
        {"basic welds", [](Names& n) { return Grouping::getBasicWeldingList(kWeld, n); }, 12, 5, 15, "WeldType"},
        {"combined welds", [](Names& n) { return Grouping::getCombiWeldingList(kWeld, n); }, 11, 5, 14,
         "CombiWelding"},
        {"weld shapes", [](Names& n) { return Grouping::getFaceShapeDescriptionList(kWeld, n); }, 10, 5, 13,
         "WeldShape", "RunName", tableOrder},
        {"weld designs", [](Names& n) { return Grouping::getSeamExecutingDescriptionList(kWeld, n); }, 9, 5, 12,
         "WeldDesign", "RunName", tableOrder},
        {"anchor standards", [](Names& n) { return Grouping::getAnchorsStandardsList(n, kAnchor); }, 22, 8, 23,
         "AnchorsStandard"},
        {"anchor materials", [](Names& n) { return Grouping::getAnchorsMaterialList(n, kAnchor, L"1"); }, 16, 8, 8,
         "StrengthClass", "RunName", "c.SortOrder, c.rowid", anchorMaterial.c_str()},
        {"anchor sets", [](Names& n) { return Grouping::getAnchorsSetList(n, kAnchor, L"1", L"3"); }, 6, 8, 6,
         "Sets", "RunName", "c.SortOrder, c.rowid", anchorSet.c_str()},
        {"anchor diameters",
         [](Names& n) { return Grouping::getAnchorsDiameterList(n, kAnchor, L"1", L"3", L"2"); }, 7, 8, 7,
         "BoltsDiameters", "RunName", "c.SortOrder, c.rowid", anchorDiameter.c_str()},
        {"subtypes", [](Names& n) { return Grouping::getProfileSubTypesList(n); }, 21, 1, 22,
         "sections.ProfileSubtypes"},
        {"classes of a subtype", [](Names& n) { return Grouping::GetMenuSubList(L"2", n); }, 1, 1, 1,
         "sections.ProfileMasterTable", "RunName", "c.SortOrder, c.rowid", "1", 22, "2"},
        {"sections", [](Names& n) { return Grouping::GetMenuList(L"RHS", n); }, 15, 1, 20, "sections.Profiles_RHS",
         "SectionName", tableOrder, "1", 1, "RHS"},
        {"grating classes", [](Names& n) { return Grouping::getGratingClassesGrouping(n); }, 17, 6, 17,
         "GratingStandardMaster", "RunName", tableOrder},
        {"gratings", [](Names& n) { return Grouping::getGratingItemsGrouping(L"1", n); }, 17, 6, 21,
         "Gratings_P30", "RunName", tableOrder, "1", 17, "1"},
        {"cut grating classes", [](Names& n) { return Grouping::getGratingVariableClassesGrouping(n); }, 18, 6, 18,
         "GratingVariableMaster", "RunName", tableOrder},
        {"cut gratings", [](Names& n) { return Grouping::getGratingVariableItemsGrouping(L"1", n); }, 18, 6, 21,
         "Gratings_G30", "RunName", tableOrder, "1", 18, "1"},
        {"scales", [](Names& n) { return Grouping::getScaleList(n); }, 14, 7, 19, "Scale"},
        {"scales as records",
         [](Names& n) {
             KorArray<StructScale> scales;
             const int result = Grouping::getScaleTable(scales);
             n.removeAll();
             for (const StructScale& scale : scales)
                 n.append(scale.runName);
             return result;
         },
         14, 7, 19, "Scale"},
    };
    return all;
}

} // namespace grouping
