#include "CatalogueFixture.h"
#include "catalogues/DetailSettings.h"
#include "catalogues/KorCompoundMaster.h"
#include "catalogues/KorModelRolesRules.h"
#include "catalogues/KorODBCHRLDefinition.h"

#include <functional>

namespace {

class CatalogueSourcesTest : public CatalogueTest {
protected:
    static constexpr eDSN definitions = KorDSNDefinitions::kDefinitions;
    static constexpr eDSN sections = KorDSNDefinitions::kUserSections;
    static constexpr eIndex base = KorDSNDefinitions::kBase;
    static constexpr eIndex firstAddin = KorDSNDefinitions::kFirstAddin;
};

TEST_F(CatalogueSourcesTest, JointsOfTheAddInGoBeforeThoseOfTheBase)
{
    sql(definitions, {"DELETE FROM HRLDefinition",
                      "INSERT INTO HRLDefinition VALUES (1, 'it''s both', 'Both', 7, "
                      "'{1}', 'base')",
                      "INSERT INTO HRLDefinition VALUES (2, 'base only', 'Base', 8, '{2}', 'base')",
                      "INSERT INTO HRLDefinition VALUES (3, 'base too', 'Base2', 7, '{3}', 'base')"});
    sql(addin, {"INSERT INTO HRLDefinition VALUES (1, 'it''s both', 'Both', 7, '{1}', 'add-in')",
                "INSERT INTO HRLDefinition VALUES (2, 'add-in only', 'Addin', 9, '{9}', 'add-in')"});

    using Joints = KorODBCHRLDefinition;
    using Read = std::function<int(KorArray<StructHRLDefinition>&)>;
    const auto single = [](auto read) {
        return [read](KorArray<StructHRLDefinition>& found) {
            StructHRLDefinition joint;
            joint.libraryName = L"unchanged";
            const int result = read(joint);
            if (result == 1)
                found.append(joint);
            else
                EXPECT_EQ(joint.libraryName, L"unchanged");
            return result;
        };
    };
    struct Operation {
        const char* name;
        std::function<Read(const wchar_t* what)> addInFirst;
        std::function<Read(const wchar_t* what, eIndex, eDSN)> explicitly;
        const wchar_t *both, *baseOnly, *addInOnly, *none;
        int inBase; // records of `both` there
    };
    for (const Operation& one : {
             Operation{
                 "name",
                 [&](auto*n) { return single([n](auto& r) { return Joints::getHRLDefinitionByName(n, r); }); },
                 [&](auto*n, eIndex i, eDSN d) {
                     return single([=](auto& r) { return Joints::getByName(n, r, i, d); });
                 },
                 L"it's both", L"base only", L"add-in only", L"neither", 1},
             Operation{"internal name",
                       [&](auto*n) {
                           return single([n](auto& r) { return Joints::getHRLDefinitionByInternalName(n, r); });
                       },
                       [&](auto*n, eIndex i, eDSN d) {
                           return single([=](auto& r) { return Joints::getByInternalName(n, r, i, d); });
                       },
                       L"Both", L"Base", L"Addin", L"it's both", 1},
             Operation{
                 "class id",
                 [&](auto*n) { return single([n](auto& r) { return Joints::getHRLDefinitionByClassID(n, r); }); },
                 [&](auto*n, eIndex i, eDSN d) {
                     return single([=](auto& r) { return Joints::getByClassID(n, r, i, d); });
                 },
                 L"{1}", L"{2}", L"{9}", L"1", 1},
             Operation{"category",
                       [](auto*n) -> Read {
                           return [c = KorString(n).toInteger()](auto& r) {
                               return Joints::getHRLDefinitionByCategory(c, r);
                           };
                       },
                       [](auto*n, eIndex i, eDSN d) -> Read {
                           return [=, c = KorString(n).toInteger()](auto& r) {
                               return Joints::getByCategory(c, r, i, d);
                           };
                       },
                       L"7", L"8", L"9", L"10", 2},
         }) {
        SCOPED_TRACE(one.name);
        const auto expect = [&](const Read& read, int result, int count, const wchar_t* library) {
            KorArray<StructHRLDefinition> found;
            EXPECT_EQ(read(found), result);
            ASSERT_EQ(found.length(), count);
            for (const StructHRLDefinition& joint : found)
                EXPECT_EQ(joint.libraryName, library);
            EXPECT_FALSE(KorDSNManager::getInstance().isRequested());
        };
        expect(one.addInFirst(one.both), 1, 1, L"add-in");
        expect(one.addInFirst(one.baseOnly), 1, 1, L"base");
        expect(one.addInFirst(one.addInOnly), 1, 1, L"add-in");
        expect(one.addInFirst(one.none), 0, 0, L"");
        expect(one.explicitly(one.both, base, definitions), 1, one.inBase, L"base");
        expect(one.explicitly(one.both, firstAddin, addin), 1, 1, L"add-in");
        expect(one.explicitly(one.addInOnly, base, definitions), 0, 0, L"");
        expect(one.explicitly(one.baseOnly, firstAddin, addin), 0, 0, L"");
        expect(one.explicitly(one.both, base, details), 0, 0, L""); // has no such table
    }
}

TEST_F(CatalogueSourcesTest, ManualAnnotationsComeFromTheGivenSource)
{
    sql(addin, {"INSERT INTO DetManualAnnotationType ([Key], RunName, NumberItems) VALUES (77, 'add-in''s', 0)"});
    StructDetManualAnnotationType type;
    EXPECT_EQ(KorODBCDetManualAnnotationType::getDetManualAnnotation(L"add-in's", addin, type), 1);
    EXPECT_EQ(type.key, 77);
    EXPECT_EQ(KorODBCDetManualAnnotationType::getDetManualAnnotation(L"add-in's", details, type), 0);
    EXPECT_EQ(type.key, 77);
    EXPECT_EQ(KorODBCDetManualAnnotationType::getDetManualAnnotation(L"Bolt label", details, type), 1);
    EXPECT_EQ(type.key, 3);
    EXPECT_EQ(KorODBCDetManualAnnotationType::getDetManualAnnotation(L"Bolt label", addin, type), 0);
    EXPECT_FALSE(KorDSNManager::getInstance().isRequested());
}

TEST_F(CatalogueSourcesTest, RulesOfTheAddInReplaceThoseOfTheConfiguration)
{
    using ModelRolesRulesNS::KorModelRolesRules;
    using Rule = StructModelRolesRules;
    sql(configuration, {"DELETE FROM ModelRolesRules", "INSERT INTO ModelRolesRules VALUES (1, 'Beam', 1, 1)",
                        "INSERT INTO ModelRolesRules VALUES (2, 'Beam', 2, 1)",
                        "INSERT INTO ModelRolesRules VALUES (3, 'Beam', 2, 0)",
                        "INSERT INTO ModelRolesRules VALUES (4, 'Post', 1, 0)"});
    const KorModelRolesRules ofConfiguration;
    sql(addin, {"INSERT INTO ModelRolesRules VALUES (9, 'Column', 1, 1)"});
    const KorModelRolesRules ofAddIn;
    struct Case {
        const KorModelRolesRules& rules;
        const wchar_t* role;
        Rule::eAction action;
        bool byDefault, valid;
    };
    for (const Case& one : {
             Case{ofConfiguration, L"Beam", Rule::kDetail, true, false},
             {ofConfiguration, L"Beam", Rule::kDetail, false, false},
             {ofConfiguration, L"Beam", Rule::kList, false, true}, // the last rule decides
             {ofConfiguration, L"Beam", Rule::kNumber, true, true},
             {ofConfiguration, L"Beam", Rule::kNumber, false, false},
             {ofConfiguration, L"beam", Rule::kDetail, true, true}, // the name counts as written
             {ofConfiguration, L"Post", Rule::kDetail, false, true},
             {ofAddIn, L"Column", Rule::kDetail, true, false},
             {ofAddIn, L"Beam", Rule::kDetail, true, true}, // never merged
         }) {
        SCOPED_TRACE(KorString(one.role).toUtf8());
        EXPECT_EQ(one.rules.IsActionValidForModelRole(one.role, one.action, one.byDefault), one.valid);
    }

    KorArray<Rule> rules;
    rules.setLogicalLength(20);
    EXPECT_EQ(KorModelRolesRules::getAllRecords(rules), 1);
    EXPECT_EQ(rules.length(), 1);
    sql(addin, {"DELETE FROM ModelRolesRules"});
    EXPECT_EQ(KorModelRolesRules::getAllRecords(rules), 1);
    EXPECT_EQ(rules.length(), 4);
    sql(addin, {"DROP TABLE ModelRolesRules"});
    EXPECT_EQ(KorModelRolesRules::getAllRecords(rules), 1);
    EXPECT_EQ(rules.length(), 4);
    sql(configuration, {"DROP TABLE ModelRolesRules"});
    EXPECT_EQ(KorModelRolesRules::getAllRecords(rules), 0);
    EXPECT_EQ(rules.length(), 0);
}

class CompoundMasterTest : public CatalogueSourcesTest {
protected:
    void SetUp() override
    {
        CatalogueSourcesTest::SetUp();
        sql(sections, {"DELETE FROM CompoundMasterTable",
                       "INSERT INTO CompoundMasterTable VALUES (1, 'Doppelwinkel Ä', '2L', 'Angles', '')",
                       "INSERT INTO CompoundMasterTable VALUES (2, 'Lost', 'LOST', 'Missing', '')",
                       "INSERT INTO CompoundMasterTable VALUES (3, 'Narrow', 'NRW', 'OneColumn', '')",
                       "INSERT INTO CompoundMasterTable VALUES (4, 'Two', 'TWO', 'TwoColumns', '')",
                       "CREATE TABLE Angles ([Key] INTEGER PRIMARY KEY, RunName TEXT, SectionName TEXT)",
                       "INSERT INTO Angles VALUES (1, 'Zwei L50, it''s 8', '2L50/8')",
                       "INSERT INTO Angles VALUES (2, 'Zwei L80', '2L80/10')",
                       "CREATE TABLE OneColumn ([Key] INTEGER PRIMARY KEY)", "INSERT INTO OneColumn VALUES (1)",
                       "CREATE TABLE TwoColumns ([Key] INTEGER PRIMARY KEY, RunName TEXT)",
                       "INSERT INTO TwoColumns VALUES (1, 'alone')"});
    }
};

TEST_F(CompoundMasterTest, ListsTheSectionsOfAClass)
{
    struct Case {
        const wchar_t* compoundClass;
        Texts names;
    };
    for (const Case& one : {
             Case{L"doppelwinkel ä", {"Zwei L50, it's 8", "Zwei L80"}},
             {L"Two", {"alone"}},
             {L"Narrow", {}}, // a class whose table has no names empties the list all the same
             {L"Lost", {}},
             {L"2L", {"old"}}, // no class of that run name
         }) {
        SCOPED_TRACE(KorString(one.compoundClass).toUtf8());
        KorArray<KorString> names = korTexts({"old"});
        EXPECT_EQ(KorCompoundMaster::getCompoundSectionRunNames(one.compoundClass, names), 1);
        EXPECT_EQ(utf8(names), one.names);
    }
}

TEST_F(CompoundMasterTest, MapsRunNamesToNamesAndBack)
{
    struct Case {
        const wchar_t *compoundClass, *runName;
        int result;
        const wchar_t *className, *sectionName;
    };
    for (const Case& one : {
             Case{L"DOPPELWINKEL ä", L"zwei l50, IT'S 8", 1, L"2L", L"2L50/8"},
             {L"Doppelwinkel Ä", L"Zwei L80", 1, L"2L", L"2L80/10"},
             {L"Doppelwinkel Ä", L"Zwei L100", 0, L"2L", L"old"}, // the class is known
             {L"Two", L"alone", 0, L"TWO", L"old"},               // has no section names
             {L"Lost", L"alone", 0, L"LOST", L"old"},
             {L"2L", L"Zwei L80", 0, L"old", L"old"},
         }) {
        SCOPED_TRACE(KorString(one.compoundClass).toUtf8() + ", " + KorString(one.runName).toUtf8());
        KorString className = L"old", sectionName = L"old", runName = L"old";
        EXPECT_EQ(KorCompoundMaster::getCompoundClassAndSectionName(one.compoundClass, one.runName, className,
                                                                    sectionName),
                  one.result);
        EXPECT_EQ(className, one.className);
        EXPECT_EQ(sectionName, one.sectionName);
        EXPECT_EQ(KorCompoundMaster::getCompoundSectionRunName(className, sectionName, runName), one.result);
        EXPECT_EQ(runName.compareNoCase(one.result == 1 ? one.runName : L"old"), 0);
    }
    KorString runName = L"old";
    EXPECT_EQ(KorCompoundMaster::getCompoundSectionRunName(L"2l", L"2l80/10", runName), 1);
    EXPECT_EQ(runName, L"Zwei L80");
    EXPECT_EQ(KorCompoundMaster::getCompoundSectionRunName(L"Doppelwinkel Ä", L"2L80/10", runName), 0);
}

TEST_F(CompoundMasterTest, SeesWhatAnotherProcessChangedInTheSections)
{
    KorArray<KorString> names;
    EXPECT_EQ(KorCompoundMaster::getCompoundSectionRunNames(L"Two", names), 1);
    folder().executeOutside("usersections.db", "INSERT INTO TwoColumns VALUES (2, 'second')");
    EXPECT_EQ(KorCompoundMaster::getCompoundSectionRunNames(L"Two", names), 1);
    EXPECT_EQ(utf8(names), Texts({"alone", "second"}));
}

TEST_F(CompoundMasterTest, FailsWithoutItsTable)
{
    StructCompoundMaster master;
    EXPECT_EQ(KorCompoundMaster::getCompoundMasterStruct(L"Two", master), 1);
    EXPECT_EQ(master.key, 4);
    EXPECT_EQ(KorCompoundMaster::getCompoundMasterStruct(L"Three", master), 0);
    EXPECT_EQ(master.key, 4);
    dropTable(descriptionOf<StructCompoundMaster>());
    KorArray<KorString> names = korTexts({"old"});
    KorString className = L"old", sectionName = L"old";
    EXPECT_NE(KorCompoundMaster::getCompoundSectionRunNames(L"Two", names), 1);
    EXPECT_NE(KorCompoundMaster::getCompoundClassAndSectionName(L"Two", L"alone", className, sectionName), 1);
    EXPECT_NE(KorCompoundMaster::getCompoundSectionRunName(L"TWO", L"alone", sectionName), 1);
    EXPECT_EQ(utf8(names), Texts({"old"}));
    EXPECT_EQ(className, L"old");
    EXPECT_EQ(sectionName, L"old");
}

} // namespace
