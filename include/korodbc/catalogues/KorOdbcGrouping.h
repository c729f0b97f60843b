#pragma once

#include <korodbc/catalogues/CatalogueReader.h>
#include <korodbc/records/configuration/MaterialRecords.h>
#include <korodbc/records/configuration/PreferredSizesRecords.h>

/// The choice lists of the modelling dialogs, restricted to the sizes that the active profiles prefer. What is
/// preferred stands in "PreferredSizesItems" of the add-in, the names in the catalogues of the main configuration;
/// materials, coatings and model roles of the add-in are offered as well. Without an active profile every list is
/// empty.
class KorOdbcGrouping : public CatalogueReader<StructCountry> {
public:
    /// What a list is for. Lists that take a kind raise an assertion when it, or a key that they need, does not
    /// fit, and go on.
    enum eRole {
        kBeam = 1,
        kPlate = 2,
        kBolt = 3,
        kStudShears = 4,
        kWeld = 5,
        kGrating = 6,
        kAnchor = 8,
        kWall = 9,
        kSlab = 10,
        kFootingIsolated = 11
    };

    // Profiles

    /// The setting "Region Key" as the number that it begins with, 0 for none; -1 when it is absent.
    static int getRegionKey();
    /// The profiles of the add-in whose selected flag is set, in table order. 1 when the table could be read; the
    /// array is empty otherwise.
    static int getSelectedPreferredProfiles(KorArray<StructPreferredSizesProfiles>& profiles);
    /// Sorts the keys and makes them the active profiles. Preferred sizes are reset when these are other ones than
    /// before, and only then. A database engine may refuse the condition of more
    /// than some 900 profiles; every list is empty then.
    static void setPreferredProfiles(KorArray<int>& profiles);
    /// Makes the first selected profile of the region the active one. When no selected profile is of the region,
    /// or the table cannot be read, the active profiles stay as they are.
    static void setDefaultPreferredProfiles();
    /// The active profiles, ascending.
    static KorArray<int> getPreferredProfiles() { return m_preferredProfiles; }

    // Lists. Each replaces what the list held by the run names of the preferred rows, in the order of their
    // catalogue. Results are non-zero when there are any; the list is empty otherwise, also when a table cannot be
    // read. Keys are the row keys of the catalogues as texts, also those of plate thicknesses. Names of an add-in
    // that the configuration does not have are put among its names by binary search, exact texts compared.

    /// The option makes no difference.
    static int getMaterialList(KorArray<KorString>& list, eRole e, long option);
    static int getCoatingList(eRole e, KorArray<KorString>& list);
    static int getModelRoleList(eRole e, KorArray<KorString>& list);
    static int getPlateThicknessList(eRole e, KorArray<KorString>& list);

    // A key that is chosen before restricts the names to what exists with it; an empty one restricts nothing.

    /// Shear studs: "ConnectorRelations" tells what exists.
    static int getConnectorMaterialList(eRole e, KorArray<KorString>& list);
    static int getConnectorMaterialList(eRole e, const KorString& standardKey, KorArray<KorString>& list);
    static int getConnectorDiameterList(eRole e, const KorString& standardKey, const KorString& materialKey,
                                        KorArray<KorString>& list);
    static int getConnectorStandardsList(eRole e, KorArray<KorString>& list);

    /// Bolts: "ScrewNew" tells what exists.
    static int getStandardsList(eRole e, KorArray<KorString>& list);
    static int getStrengthClassList(eRole e, const KorString& normKey, KorArray<KorString>& list);
    static int getSetList(eRole e, const KorString& normKey, const KorString& strengthClassKey,
                          KorArray<KorString>& list);
    static int getDiameterList(eRole e, const KorString& normKey, const KorString& strengthClassKey,
                               const KorString& setKey, KorArray<KorString>& list);

    /// Anchors: "AnchorsName" tells what exists; their materials are strength classes.
    static int getAnchorsStandardsList(KorArray<KorString>& list, eRole e);
    static int getAnchorsMaterialList(KorArray<KorString>& list, eRole e, const KorString& standardKey);
    static int getAnchorsSetList(KorArray<KorString>& list, eRole e, const KorString& normKey,
                                 const KorString& strengthClassKey);
    static int getAnchorsDiameterList(KorArray<KorString>& list, eRole e, const KorString& normKey,
                                      const KorString& strengthClassKey, const KorString& setKey);

    static int getBasicWeldingList(eRole e, KorArray<KorString>& list);
    static int getCombiWeldingList(eRole e, KorArray<KorString>& list);
    static int getFaceShapeDescriptionList(eRole e, KorArray<KorString>& list);
    static int getSeamExecutingDescriptionList(eRole e, KorArray<KorString>& list);

    /// Classes of gratings of fixed size or cut to size, and the gratings of a class, given by its key; with an
    /// empty key those of every class, class by class.
    static int getGratingClassesGrouping(KorArray<KorString>& list);
    static int getGratingItemsGrouping(const KorString& gratingClass, KorArray<KorString>& list);
    static int getGratingVariableClassesGrouping(KorArray<KorString>& list);
    static int getGratingVariableItemsGrouping(const KorString& gratingClass, KorArray<KorString>& list);

    /// Sections: the subtypes, the classes of a subtype (with an empty key: of all), and the sections of a class,
    /// both given by their keys; with an empty key those of every class. A number stands for its text.
    static int getProfileSubTypesList(KorArray<KorString>& list);
    static int GetMenuSubList(const KorString& menu, KorArray<KorString>& list);
    static int GetMenuList(const KorString& menu, KorArray<KorString>& list);
    static int GetMenuList(long menu, KorArray<KorString>& list);

    static int getScaleTable(KorArray<StructScale>& list);
    static int getScaleList(KorArray<KorString>& list);

    // Countries

    static int getCountry(const KorString& runName, StructCountry& country) { return byRunName(runName, country); }
    static int getCountry(const KorOdbcKey& key, StructCountry& country) { return byKey(key, country); }
    static int getCountryList(KorArray<KorString>& names) { return runNames(names); }
    static int getCountryTable(KorArray<StructCountry>& countries) { return table(countries); }

private:
    static KorArray<int> m_preferredProfiles;
};
