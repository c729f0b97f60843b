#include "CatalogueFixture.h"

#include <korodbc/catalogues/DetailSettings.h>
#include <korodbc/catalogues/KorCompoundMaster.h>
#include <korodbc/catalogues/KorModelRolesRules.h>
#include <korodbc/catalogues/KorODBCHRLDefinition.h>

#include <type_traits>

namespace {

class CatalogueSourcesTest : public CatalogueTest {
protected:
    static constexpr eDSN definitions = KorDSNDefinitions::kDefinitions;
    static constexpr eDSN sections = KorDSNDefinitions::kUserSections;
    static constexpr eIndex base = KorDSNDefinitions::kBase;
    static constexpr eIndex firstAddin = KorDSNDefinitions::kFirstAddin;

    /// What is asked for, by where there is such a joint.
    template <class By>
    struct Asked {
        By both, baseOnly, addInOnly, nowhere;
    };
    /// A reader of joints and its counterpart for one data source; the base has `inBase` joints for `both`.
    template <class By, class Found>
    static void expectAddInFirst(int (*addInFirst)(By, Found&), int (*within)(By, Found&, eIndex, eDSN),
                                 const std::type_identity_t<Asked<std::remove_cvref_t<By>>>& asked,
                                 std::size_t inBase = 1)
    {
        const auto expect = [](const Texts& libraries, auto read) {
            Found found;
            EXPECT_EQ(read(found), libraries.empty() ? 0 : 1);
            Texts texts;
            if constexpr (std::is_same_v<Found, StructHRLDefinition>)
                texts.push_back(found.libraryName.toUtf8());
            else
                for (const StructHRLDefinition& joint : found)
                    texts.push_back(joint.libraryName.toUtf8());
            std::erase(texts, "");
            EXPECT_EQ(texts, libraries);
            EXPECT_FALSE(KorDSNManager::getInstance().isRequested());
        };
        expect({"add-in"}, [&](Found& found) { return addInFirst(asked.both, found); });
        expect({"base"}, [&](Found& found) { return addInFirst(asked.baseOnly, found); });
        expect({"add-in"}, [&](Found& found) { return addInFirst(asked.addInOnly, found); });
        expect({}, [&](Found& found) { return addInFirst(asked.nowhere, found); });
        const auto expectIn = [&](eDSN dsn, eIndex index, const auto& by, const Texts& libraries) {
            expect(libraries, [&](Found& found) { return within(by, found, index, dsn); });
        };
        expectIn(definitions, base, asked.both, Texts(inBase, "base"));
        expectIn(addin, firstAddin, asked.both, {"add-in"});
        expectIn(definitions, base, asked.addInOnly, {});
        expectIn(addin, firstAddin, asked.baseOnly, {});
        expectIn(details, base, asked.both, {}); // has no such table
    }
};

TEST_F(CatalogueSourcesTest, JointsOfTheAddInGoBeforeThoseOfTheBase)
{
    sql(definitions, {"DELETE FROM HRLDefinition",
                      "INSERT INTO HRLDefinition VALUES (1, 'it''s both', 'Both', 7, '{1}', 'base'), "
                      "(2, 'base only', 'Base', 8, '{2}', 'base'), (3, 'base too', 'Base2', 7, '{3}', 'base')"});
    sql(addin, {"INSERT INTO HRLDefinition VALUES (1, 'it''s both', 'Both', 7, '{1}', 'add-in'), "
                "(2, 'add-in only', 'Addin', 9, '{9}', 'add-in')"});
    using Joints = KorODBCHRLDefinition;
    expectAddInFirst(&Joints::getHRLDefinitionByName, &Joints::getByName,
                     {L"it's both", L"base only", L"add-in only", L"neither"});
    expectAddInFirst(&Joints::getHRLDefinitionByInternalName, &Joints::getByInternalName,
                     {L"Both", L"Base", L"Addin", L"it's both"});
    expectAddInFirst(&Joints::getHRLDefinitionByClassID, &Joints::getByClassID, {L"{1}", L"{2}", L"{9}", L"1"});
    expectAddInFirst(&Joints::getHRLDefinitionByCategory, &Joints::getByCategory, {7, 8, 9, 10}, 2);
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
    sql(configuration,
        {"DELETE FROM ModelRolesRules", "INSERT INTO ModelRolesRules VALUES (1, 'Beam', 1, 1), (2, 'Beam', 2, 1), "
                                        "(3, 'Beam', 2, 0), (4, 'Post', 1, 0)"});
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
    for (const auto& [change, length] : {std::pair("DELETE FROM ModelRolesRules WHERE [Key] = 0", 1),
                                         {"DELETE FROM ModelRolesRules", 4},
                                         {"DROP TABLE ModelRolesRules", 4}}) {
        sql(addin, {change});
        EXPECT_EQ(KorModelRolesRules::getAllRecords(rules), 1);
        EXPECT_EQ(rules.length(), length);
    }
}

class CompoundMasterTest : public CatalogueSourcesTest {
protected:
    void SetUp() override
    {
        CatalogueSourcesTest::SetUp();
        sql(sections, {"DELETE FROM CompoundMasterTable",
                       "INSERT INTO CompoundMasterTable VALUES (1, 'Doppelwinkel Ä', '2L', 'Angles', ''), "
                       "(2, 'Lost', 'LOST', 'Missing', ''), (3, 'Narrow', 'NRW', 'OneColumn', ''), "
                       "(4, 'Two', 'TWO', 'TwoColumns', '')",
                       "CREATE TABLE Angles ([Key] INTEGER PRIMARY KEY, RunName TEXT, SectionName TEXT)",
                       "INSERT INTO Angles VALUES (1, 'Zwei L50, it''s 8', '2L50/8'), (2, 'Zwei L80', '2L80/10')",
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

} // namespace
