#include "catalogues/ReaderCases.h"

#include <korodbc/exchange/ExchangeApplications.h>
#include <korodbc/exchange/FormatConversions.h>
#include <korodbc/exchange/MaterialConversions.h>
#include <korodbc/exchange/SectionConversions.h>
#include <korodbc/records/configuration/BoltRecords.h>
#include <korodbc/records/configuration/MaterialRecords.h>
#include <korodbc/records/exchange/ProfileFamilyRecords.h>
#include <korodbc/repository/KorDatabaseProfileAccess.h>

#include <set>

using Native = KorODBCQXT_Profile_Conversion;
using Exports = KorODBCProfile_Exports_Conversion;
using Materials = KorODBCQXT_Material_Conversion;

namespace {

class ShippedConversionsTest : public ReaderTest {
protected:
    /// Calls `act` with each class and section of the catalogue.
    template <class Act>
    static void eachSection(Act act)
    {
        KorArray<StructProfileClass> classes;
        ASSERT_EQ(StructProfileClassMarshal::getTable(classes), 1);
        for (const StructProfileClass& profileClass : classes) {
            KorArray<StructSection> sections;
            ASSERT_EQ(KorDatabaseProfileAccess::getProfileTable(profileClass, sections, 0), 1);
            ASSERT_GT(sections.length(), 0);
            for (const StructSection& section : sections)
                act(profileClass, section.sectionName);
        }
    }
    static KorArray<StructQXT_Application> applications()
    {
        KorArray<StructQXT_Application> all;
        EXPECT_EQ(StructQXT_ApplicationMarshal::getTable(all), 1);
        EXPECT_GT(all.length(), 4);
        return all;
    }
};

TEST_F(ShippedConversionsTest, EverySectionMapsOutAndBack)
{
    for (const StructQXT_Application& application : applications()) {
        SCOPED_TRACE(application.runName.toUtf8());
        std::set<std::pair<KorString, KorString>> names;
        long sections = 0;
        eachSection([&](const StructProfileClass& profileClass, const KorString& section) {
            KorString outClass, out, backClass, back;
            EXPECT_EQ(Exports::getMappedSection(profileClass.key, section, application.key, false, outClass, out),
                      1)
                << section.toUtf8();
            EXPECT_EQ(Exports::getMappedSection(outClass, out, application.key, true, backClass, back), 1)
                << out.toUtf8();
            EXPECT_EQ(backClass, profileClass.key);
            EXPECT_EQ(back, section);
            names.emplace(outClass, out);
            ++sections;
        });
        EXPECT_EQ(static_cast<long>(names.size()), sections);
    }
    KorArray<KorExchangeRule> faulty;
    EXPECT_EQ(Native::getFaultyRules(faulty) + Exports::getFaultyRules(faulty), 2);
    EXPECT_EQ(faulty.length(), 0);
}

TEST_F(ShippedConversionsTest, EverySectionAndBoltHasAnotherNameInEachFormat)
{
    std::set<std::pair<KorString, KorString>> kissNames;
    eachSection([&](const StructProfileClass& profileClass, const KorString& section) {
        StructKISS_Profile_Conversion kiss;
        EXPECT_EQ(KorODBCKISS_Profile_Conversion::getKISSProfiles(section, 1, kiss), 1);
        EXPECT_TRUE(kissNames.emplace(kiss.kissShape, kiss.kissSection).second) << section.toUtf8();
        StructSDNF_Profile_Conversion sdnf, back;
        EXPECT_EQ(KorODBCSDNF_Profile_Conversion::getSDNFProfiles(section, 1, sdnf), 1);
        EXPECT_EQ(KorODBCSDNF_Profile_Conversion::getHSProfiles(sdnf.sdnfSection, back), 1);
        EXPECT_EQ(back.runName, section);
        StructSDNF_Profile_Definition definition;
        EXPECT_EQ(KorODBCSDNF_Profile_Definition::getClassRotation(profileClass.key, 1, 1, definition), 1);
    });
    KorArray<StructStandard> standards;
    ASSERT_EQ(StructStandardMarshal::getTable(standards), 1);
    for (const StructStandard& standard : standards) {
        StructCIS2_Bolt_Conversion out, back;
        EXPECT_EQ(KorODBCCIS2_Bolt_Conversion::getCIS2Standards(standard.runName, 1, out), 1);
        EXPECT_EQ(KorODBCCIS2_Bolt_Conversion::getKRStandards(out.cis2Standard, back), 1);
        EXPECT_EQ(back.runName, standard.runName);
    }
}

TEST_F(ShippedConversionsTest, EveryMaterialMapsOutAndBack)
{
    KorArray<StructMaterial> materials;
    ASSERT_EQ(StructMaterialMarshal::getTable(materials), 1);
    for (const StructQXT_Application& application : applications())
        for (const StructMaterial& material : materials) {
            StructQXT_Material_Conversion out, back;
            EXPECT_EQ(Materials::getMappedMaterial(material.runName, application.key, false, out), 1)
                << material.runName.toUtf8();
            EXPECT_EQ(out.application, application.key);
            EXPECT_EQ(Materials::getMappedMaterial(out.material, application.key, true, back), 1);
            EXPECT_EQ(back.material, material.runName);
            EXPECT_EQ(back.application, 1);
            StructKISS_Material_Conversion kiss;
            EXPECT_EQ(KorODBCKISS_Material_Conversion::getKISSMaterials(material.runName, 1, kiss), 1);
        }
    // without the row of one of the steps there is no answer
    sql(configuration, {"DELETE FROM QXT_Material_Conversion WHERE Application = 2 AND Material = 'S235JR'"});
    StructQXT_Material_Conversion row;
    row.material = L"before";
    for (const bool toNative : {false, true}) {
        EXPECT_EQ(Materials::getMappedMaterial(L"S235JR", 2, toNative, row), 0);
        EXPECT_EQ(Materials::getMappedMaterial(L"it's", 2, toNative, row), 0);
    }
    EXPECT_EQ(row.material, L"before");
}

TEST_F(ShippedConversionsTest, ReadersOfApplicationsAndTypes)
{
    byKey(&KorODBCQXT_Application::getApplications);
    byKey(&KorODBCQXT_Object_Type::getObjectType);
    runNames<StructQXT_Application>(&KorODBCQXT_Application::getApplicationsList);
    runNames<StructObject_Type>(&KorODBCQXT_Object_Type::getObjectTypeList);
    runNames<StructKISS_Application>(&KorODBCKISS_Application::getApplicationsList);
    long key = 0;
    EXPECT_EQ(KorODBCQXT_Application::getApplicationKey(L"SDNF", key), 1);
    EXPECT_EQ(key, 3);
    EXPECT_EQ(KorODBCQXT_Application::getApplicationKey(L"' OR 1 = 1", key), 0);
    EXPECT_EQ(KorODBCQXT_Object_Type::getObjectTypeKey(L"Plate", key), 1);
    EXPECT_EQ(KorODBCQXT_Object_Type::getObjectTypeKey(L"plates", key), 0);
    EXPECT_EQ(key, 3);
    StructKISSPlate_Material plate;
    EXPECT_EQ(KorODBCKISS_Plate_Material::getKissPlateMaterial(L"End plate", plate), 1);
    EXPECT_EQ(plate.kissMaterial, L"S355J2");
}

TEST_F(ShippedConversionsTest, FamiliesOfOtherApplications)
{
    const struct {
        const wchar_t *family, *section;
        const char* profileClass; // empty: none
    } cases[] = {{L"H sections", L"heb200", "HEB"},         {L"H sections", L"IPE200", ""},
                 {L"I and H sections", L"IPE200", "IPE"},   {L"no family", L"IPE200", ""},
                 {L"Hollow sections", L"CHS48.3x4", "CHS"}, {L"Hollow sections", L"it's", ""}};
    for (const auto& [family, section, expected] : cases) {
        KorString profileClass, name = section;
        EXPECT_EQ(Native::getKRProfileForHalden(family, name, profileClass, name), *expected == '\0' ? 0 : 1);
        EXPECT_EQ(profileClass.toUtf8(), expected);
        EXPECT_EQ(name, section);
    }
    KorArray<KorString> families;
    EXPECT_EQ(Native::getHaldenFamilyNamesForKRProfile(L"no section", families), 0);
    EXPECT_EQ(Native::getHaldenFamilyNamesForKRProfile(L"HEA200", families), 1);
    EXPECT_EQ(utf8(families), (Texts{"H sections", "I and H sections"}));
    // the order of the tables decides, a table that is gone or without a class does not stop the search
    sql(configuration, {"UPDATE ProfileFamilyTables SET SortOrder = -SortOrder",
                        "INSERT INTO ProfileFamilyTables VALUES (90, 2, 'Gone', -9)"});
    KorString profileClass, name;
    EXPECT_EQ(Native::getKRProfileForHalden(L"H sections", L"HEA200", profileClass, name), 1);
    EXPECT_EQ(profileClass, L"HEA");
    sql(KorDSNDefinitions::kProfiles,
        {"UPDATE Profiles_HEB SET SectionName = 'HEA200' WHERE SectionName = 'HEB200'"});
    EXPECT_EQ(Native::getKRProfileForHalden(L"H sections", L"HEA200", profileClass, name), 1);
    EXPECT_EQ(profileClass, L"HEB");
    sql(KorDSNDefinitions::kProfiles, {"DELETE FROM ProfileMasterTable WHERE [Key] = 'HEB'"});
    EXPECT_EQ(Native::getKRProfileForHalden(L"H sections", L"HEA200", profileClass, name), 0);
}

} // namespace
