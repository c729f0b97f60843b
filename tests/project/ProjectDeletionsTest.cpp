#include "project/ProjectFixture.h"

#include <functional>
#include <random>
#include <set>

using namespace project;

namespace {

class ProjectDeletionsTest : public ProjectTest {};

TEST_F(ProjectDeletionsTest, DeletionsGiveTheirResultsAndLeaveWhatHasChildren)
{
    const Texts rowsOf = {
        "INSERT INTO ReportTypes VALUES (1, 'used', 1, '', ''), (2, 'unused', 1, '', '')",
        "INSERT INTO ReportTemplates VALUES (1, 'used', 1, 1, '', '', ''), (2, 'unused', 1, 2, '', '', ''), "
        "(3, 'without document', 1, -1, '', '', ''), (4, 'its document is gone', 1, 99, '', '', '')",
        "INSERT INTO Reports VALUES (1, 'r', 1, 1, '', '', '')",
        "INSERT INTO XMLData VALUES (1, 1, 'a'), (2, 1, 'b'), (3, 1, 'c'), (4, 1, 'd')",
        "INSERT INTO ModelSelections VALUES (1, 'used', '', 3, ''), (2, 'unused', '', 4, ''), (3, 'bare', '', -1, "
        "'')",
        "INSERT INTO ModelSelectionApplications VALUES (1, 'used', 1, '', ''), (2, 'unused', 1, '', '')",
        "INSERT INTO ModelExtracts VALUES (1, 'used', 1, -1, '', '')"};
    using P = KorODBCProject;
    const auto of = [](auto remove, auto record) { return [=] { return remove(record); }; };
    const auto without = [](const std::string& table, auto act) {
        return [=] {
            sql(drawing, {"DROP TABLE " + table});
            return act();
        };
    };
    const struct {
        std::function<int()> act;
        int result;
        Texts gone;
    } cases[] = {
        {of(P::deleteTemplate, keyed<Template>(1)), -2, {}},
        {of(P::deleteTemplate, keyed<Template>(2)), 1, {"XMLData: 2|1|b", "ReportTemplates: 2|unused|1|2|||"}},
        {of(P::deleteTemplate, keyed<Template>(3)), 0, {}},
        {of(P::deleteTemplate, keyed<Template>(4)), 0, {}},
        {of(P::deleteTemplate, keyed<Template>(9)), 0, {}},
        {of(P::deleteReportType, keyed<Type>(1)), 1, {}},
        {of(P::deleteReportType, keyed<Type>(2)), 1, {"ReportTypes: 2|unused|1||"}},
        {of(P::deleteModelSelection, keyed<Selection>(1)), 1, {}},
        {of(P::deleteModelSelection, keyed<Selection>(2)), 1, {"XMLData: 4|1|d", "ModelSelections: 2|unused||4|"}},
        {of(P::deleteModelSelection, keyed<Selection>(3)), 1, {"ModelSelections: 3|bare||-1|"}},
        {of(P::deleteModelSelectionApplication, keyed<Application>(1)), -2, {}},
        {of(P::deleteModelSelectionApplication, keyed<Application>(2)),
         1,
         {"ModelSelectionApplications: 2|unused|1||"}},
        {of(P::deleteModelExtract, keyed<Extract>(1)), 1, {"ModelExtracts: 1|used|1|-1||"}},
        {of(P::deleteReport, keyed<Report>(1)), 1, {"Reports: 1|r|1|1|||"}},
        {of(P::deleteXMLData, keyed<Xml>(2)), 1, {"XMLData: 2|1|b"}},
        {of(P::deleteXMLData, keyed<Xml>(9)), 0, {}},
        {P::deleteModelSelectionApplications, 2, {"ModelSelectionApplications: 2|unused|1||"}},
        {P::deleteModelExtracts, 1, {"ModelExtracts: 1|used|1|-1||"}},
        // tables that are not there: children that cannot be counted, and no document of another database goes
        {without("Reports", of(P::deleteTemplate, keyed<Template>(2))), -1, {"Reports: 1|r|1|1|||"}},
        {without("ModelSelectionApplications", of(P::deleteModelSelection, keyed<Selection>(2))),
         -1,
         {"ModelSelectionApplications: 1|used|1||", "ModelSelectionApplications: 2|unused|1||"}},
        {without("XMLData", of(P::deleteTemplate, keyed<Template>(2))),
         0,
         {"XMLData: 1|1|a", "XMLData: 2|1|b", "XMLData: 3|1|c", "XMLData: 4|1|d"}},
    };
    for (const auto& one : cases) {
        SCOPED_TRACE(&one - cases);
        std::string error;
        ASSERT_TRUE(korodbc::host::openRepositoryInMemory({}, error));
        for (const Place& place : places)
            sql(place.dsn, rowsOf);
        Texts expected = everything(drawing);
        const Texts elsewhere = everything(advanced);
        std::erase_if(expected, [&](const std::string& row) {
            return std::find(one.gone.begin(), one.gone.end(), row) != one.gone.end();
        });
        EXPECT_EQ(one.act(), one.result);
        EXPECT_EQ(everything(drawing), expected);
        for (const Place& place : places)
            if (place.dsn != drawing) {
                EXPECT_EQ(everything(place.dsn), elsewhere);
            }
    }
}

TEST_F(ProjectDeletionsTest, RandomDeletionsLeaveNoReferenceToNothing)
{
    std::mt19937 random(7);
    const auto below = [&](int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)) + 1; };
    constexpr int number = 60;
    const Place place{user, first};
    put(place, keyed<Category>(-1));
    for (int i = 0; i < number; ++i) {
        put(place, child<Type, &Type::category>(1));
        put(place, madeFrom(below(i + 1), putXml(place, L"<a/>")));
        put(place, child<Selection, &Selection::xmlData>(putXml(place, L"<b/>")));
        put(place, child<Application, &Application::modelSelection>(below(i + 1)));
        if (i % 3 == 0) {
            put(place, child<Extract, &Extract::modelSelectionApplication>(below(i + 1)));
            put(place, child<Report, &Report::templateKey>(below(i + 1)));
        }
    }
    ASSERT_EQ(dangling(place), 0);
    long before = static_cast<long>(everything(user).size());
    std::set<int> results;
    for (int i = 0; i < 400; ++i) {
        const int key = below(number);
        switch (below(5)) {
        case 1:
            results.insert(KorODBCProjectUser::deleteTemplate(keyed<Template>(key)));
            break;
        case 2:
            results.insert(KorODBCProjectUser::deleteReportType(keyed<Type>(key)));
            break;
        case 3:
            results.insert(KorODBCProjectUser::deleteModelSelection(keyed<Selection>(key)));
            break;
        case 4:
            results.insert(KorODBCProjectUser::deleteModelSelectionApplication(keyed<Application>(key)));
            break;
        default:
            results.insert(KorODBCProjectUser::deleteReport(keyed<Report>(key)));
        }
        if (i % 20 == 0) {
            ASSERT_EQ(dangling(place), 0) << i;
        }
    }
    EXPECT_EQ(dangling(place), 0);
    EXPECT_EQ(results, std::set<int>({-2, 0, 1}));
    EXPECT_LT(static_cast<long>(everything(user).size()), before);
    // no document is left without its record
    EXPECT_EQ(rows(user, "XMLData").size(),
              rows(user, "ReportTemplates").size() + rows(user, "ModelSelections").size());
}

} // namespace
