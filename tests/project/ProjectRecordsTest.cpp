#include "project/ProjectFixture.h"

using namespace project;

namespace {

class ProjectRecordsTest : public ProjectTest {
protected:
    /// Saves, reads, changes and reads records of one type in one database; the others keep what they have.
    template <class Record, class Marshal>
    void expectStored(Place place)
    {
        const std::string table(descriptionOf<Record>().table);
        SCOPED_TRACE(table + " in " + std::to_string(place.dsn));
        std::map<eDSN, Texts> others;
        for (const Place& other : places)
            if (other.dsn != place.dsn)
                others[other.dsn] = everything(other.dsn);
        AssertionRecorder assertions;
        Texts expected, names;
        for (int seed = 1; seed <= 3; ++seed) {
            Record record = generated<Record>(seed);
            EXPECT_EQ(Intern::save(record, place.index, place.dsn), 1);
            EXPECT_EQ(record.key, seed);
            expected.push_back(line(record));
            names.push_back(record.runName.toUtf8());
        }
        Record changed = generated<Record>(7);
        changed.key = 2;
        EXPECT_EQ(Intern::save(changed, place.index, place.dsn), 1);
        expected[1] = line(changed);
        EXPECT_EQ(rows(place.dsn, table), expected);
        assertions.take(); // of what reports refer to

        const KorDSNRequest request(place.dsn, place.index);
        Record found;
        EXPECT_EQ(Marshal::getStructByRunName(changed.runName, found), 1);
        EXPECT_EQ(line(found), expected[1]);
        EXPECT_EQ(found.dataSource, place.dsn);
        EXPECT_EQ(Marshal::getStructByKey(long{99}, found), 0);
        EXPECT_EQ(line(found), expected[1]);
        for (const auto& [dsn, before] : others)
            EXPECT_EQ(everything(dsn), before);
    }
    template <class... Pair>
    void expectAllStored(Place place)
    {
        (expectStored<typename Pair::first_type, typename Pair::second_type>(place), ...);
    }
};

TEST_F(ProjectRecordsTest, EveryFieldOfEveryRecordIsStoredInItsDatabaseAlone)
{
    // no row may be referred to before it is there: its key would not be given out
    for (const Place& place : places)
        expectAllStored<
            std::pair<Category, StructProjReportCategoryMarshal>, std::pair<Type, StructProjReportTypeMarshal>,
            std::pair<Template, StructProjTemplateMarshal>, std::pair<Selection, StructProjModelSelectionMarshal>,
            std::pair<Application, StructProjModelSelectionApplicationMarshal>,

            std::pair<UpdateInfo, StructProjModelExtractUpdateInfoMarshal>,
            std::pair<Extract, StructProjModelExtractMarshal>, std::pair<Report, StructProjReportMarshal>>(place);
}

TEST_F(ProjectRecordsTest, WhatIsNotStoredRaisesAnAssertionAndIsSavedAllTheSame)
{
    const auto missing = []<class Record>(Record record) {
        record.key = 77;
        return Intern::save(record, base, drawing);
    };
    const std::string source = "KorODBCProjectIntern: ";
    const auto with = [&](const std::string& found, int fields) {
        Texts texts{source + found};
        texts.insert(texts.end(), static_cast<std::size_t>(fields), source + "1 == nOk");
        return texts;
    };
    AssertionRecorder assertions;
    const struct {
        std::function<int()> save;
        Texts raised;
    } cases[] = {
        {[&] { return missing(Category()); }, with("ReportCategoryFound == 1", 3)},
        {[&] { return missing(Type()); }, with("ReportTypeFound == 1", 4)},
        {[&] { return missing(Template()); }, with("TemplateFound == 1", 6)},
        {[&] { return missing(Selection()); }, with("retval == 1", 4)},
        {[&] { return missing(Application()); }, with("retval == 1", 4)},
        {[&] { return missing(Extract()); }, with("pio_StructProjModelExtract.m_key == -1 || retval == 1", 5)},
        {[&] { return missing(UpdateInfo()); }, with("retval == 1", 6)},
    };
    for (const auto& one : cases) {
        EXPECT_EQ(one.save(), 1) << one.raised.front();
        EXPECT_EQ(assertions.take(), one.raised);
    }
    EXPECT_EQ(everything(drawing), Texts{});

    Report report;
    report.modelExtract = 5;
    EXPECT_EQ(Intern::save(report, base, drawing), 1);
    EXPECT_EQ(assertions.take(), Texts({source + "TemplateFound == 1",
                                        source + "pio_StructProjReport.m_ModelExtractKey == -1 || retval == 1"}));
    EXPECT_EQ(report.key, 1);
    Template made = madeFrom(1, -1);
    EXPECT_EQ(Intern::save(made, base, drawing), 1);
    report.templateKey = made.key;
    report.modelExtract = -1;
    EXPECT_EQ(Intern::save(report, base, drawing), 1);
    EXPECT_EQ(assertions.take(), Texts{});
    // a table of an older version keeps what it has columns for
    sql(drawing, {"ALTER TABLE ReportCategories DROP COLUMN OwnerText"});
    Category category = generated<Category>(1);
    EXPECT_EQ(Intern::save(category, base, drawing), 1);
    EXPECT_EQ(assertions.take(), Texts{source + "1 == nOk"});
    // no row can be added
    sql(drawing, {"DROP TABLE ReportTypes"});
    Type type;
    EXPECT_EQ(Intern::save(type, base, drawing), 1);
    EXPECT_EQ(assertions.take(), Texts(4, source + "1 == nOk"));
    EXPECT_EQ(type.key, -1);
}

TEST_F(ProjectRecordsTest, ShippedRecordsAreReadBehindTheUsersAndTakenOverWhenSaved)
{
    sql(configuration, {"INSERT INTO ReportTypes VALUES (5, 'shipped', 1, 'csv', ''), (6, 'other', 1, 'csv', '')",
                        "INSERT INTO ReportTemplates VALUES (1, 'shipped', 5, 1, '', '', '')",
                        "INSERT INTO XMLData VALUES (1, 1, '<shipped/>')"});
    sql(user, {"INSERT INTO XMLData VALUES (1, 1, '<own/>')"});
    Template made;
    ASSERT_EQ(KorODBCProjectUser::getTemplate(1, made, 1), 1);
    EXPECT_EQ(made.dataSource, configuration);
    EXPECT_EQ(made.xmlText, L"<shipped/>"); // its own document, not the user's of that key
    EXPECT_EQ(KorODBCProject::getTemplate(1, made, 0), 0);
    EXPECT_EQ(KorODBCProjectUser::deleteTemplate(made), 0);
    Type type;
    ASSERT_EQ(KorODBCProjectUser::getReportType(L"shipped", type), 1);
    EXPECT_EQ(KorODBCProjectUser::deleteReportType(type), 0);

    AssertionRecorder assertions;
    type.runName = L"own";
    EXPECT_EQ(KorODBCProjectUser::save(type), 1);
    EXPECT_EQ(rows(user, "ReportTypes"), Texts{"5|own|1|csv|"});
    EXPECT_EQ(rows(configuration, "ReportTypes"), Texts({"5|shipped|1|csv|", "6|other|1|csv|"}));
    ASSERT_EQ(KorODBCProjectUser::getReportType(5, type), 1);
    EXPECT_EQ(type.runName, L"own");
    EXPECT_EQ(type.dataSource, user);
    EXPECT_EQ(assertions.take(), Texts{});

    // no new record hides a shipped one
    type = Type();
    EXPECT_EQ(KorODBCProjectUser::save(type), 1);
    EXPECT_EQ(type.key, 7);

    sql(user, {"DROP TABLE ReportTypes"});
    ASSERT_EQ(KorODBCProjectUser::getReportType(6, type), 1);
    EXPECT_EQ(KorODBCProjectUser::save(type), -1);
    EXPECT_EQ(assertions.take(), Texts{});
}

TEST_F(ProjectRecordsTest, DocumentsComeWithTheirRecords)
{
    const Place place{drawing, base};
    const int xml = putXml(place, L"<a>it's</a>");
    EXPECT_EQ(rows(drawing, "XMLData"), Texts{"1|1|<a>it's</a>"});
    Xml unknown = keyed<Xml>(77);
    EXPECT_EQ(KorODBCProject::putXMLData(unknown), 0);
    put(place, madeFrom(1, xml));  // 1
    put(place, madeFrom(1, -1));   // 2
    put(place, madeFrom(1, 9999)); // 3
    for (const int key : {xml, -1, 9999}) {
        Selection selection;
        selection.xmlData = key;
        put(place, selection);
    }
    const struct {
        int key, withoutXml, withXml, selection;
    } cases[] = {{1, 1, 1, 1}, {2, 1, 0, -1}, {3, 1, 0, -1}, {4, 0, 0, -1}};
    for (const auto& one : cases) {
        SCOPED_TRACE(one.key);
        Template plain, full;
        Selection selection;
        EXPECT_EQ(KorODBCProject::getTemplate(one.key, plain, 0), one.withoutXml);
        EXPECT_EQ(plain.xmlText, L"");
        EXPECT_EQ(KorODBCProject::getTemplate(one.key, full, 1), one.withXml);
        EXPECT_EQ(KorODBCProject::getModelSelection(one.key, selection), one.selection);
        const KorString text = one.key == 1 ? L"<a>it's</a>" : L"";
        EXPECT_EQ(full.xmlText, text);
        EXPECT_EQ(selection.xmlText, text);
        EXPECT_EQ(selection.key, one.key == 1 ? 1 : -1); // unchanged on failure
    }
}

TEST_F(ProjectRecordsTest, CountsAndQuestions)
{
    sql(drawing, {"INSERT INTO ReportCategories VALUES (1, 'Details', '', ''), (2, 'details', '', ''), (3, "
                  "'Lists', '', '')",
                  "INSERT INTO ReportTypes VALUES (1, 'a', 1, '', ''), (2, 'b', 2, '', ''), (3, 'c', 3, '', ''), "
                  "(4, 'd', 9, '', '')",
                  "INSERT INTO ReportTemplates VALUES (30, 'x', 1, -1, '', '', ''), (10, 'y', 1, -1, '', '', ''), "
                  "(20, 'z', 3, -1, '', '', '')",
                  "INSERT INTO ModelSelections VALUES (1, 's', '', -1, ''), (2, 't', '', -1, '')",
                  "INSERT INTO ModelSelectionApplications VALUES (1, 'p', 1, '', ''), (2, 'q', 1, '', '')"});
    for (const auto& [type, isDrawing] : {std::pair(1, true), {2, false}, {3, false}, {4, false}, {9, false}})
        EXPECT_EQ(KorODBCProject::isDrawingTemplate(madeFrom(type, -1)), isDrawing) << type;
    int count = 5;
    for (const auto& [type, templates] : {std::pair(1, 2), {2, 0}, {3, 1}, {99, 0}}) {
        EXPECT_EQ(KorODBCProject::getTemplatesOf(keyed<Type>(type), count), 1);
        EXPECT_EQ(count, templates);
        count = 5;
    }
    const auto deletable = [](int key) { return KorODBCProject::canBeDeleted(keyed<Selection>(key)); };
    EXPECT_EQ(deletable(1), 0);
    EXPECT_EQ(deletable(2), 1);
    EXPECT_EQ(deletable(9), 1);
    EXPECT_EQ(KorODBCProjectUser::canBeDeleted(keyed<Selection>(1)), 1);
    const MissingTable applications(descriptionOf<Application>()), templates(descriptionOf<Template>());
    EXPECT_EQ(deletable(1), 1);
    EXPECT_EQ(KorODBCProject::getTemplatesOf(keyed<Type>(1), count), -1);
    EXPECT_EQ(KorODBCProject::getModelApplicationsOf(keyed<Selection>(1), count), -1);
    EXPECT_EQ(count, 5);
    KorArray<KorString> names = korTexts({"old"});
    EXPECT_EQ(KorODBCProject::getTemplateList(names), 0);
    EXPECT_EQ(names.length(), 1);
}

/// Every operation of a database goes to its data source and slot.
template <class Project>
void expectAllIn(eDSN dsn, eIndex index)
{
    StatementRecorder recorder(true);
    KorArray<KorString> names;
    Category category;
    category.runName = L"c";
    Type type;
    type.runName = L"t";
    Selection selection;
    Application application;
    Extract extract;
    UpdateInfo info;
    Report report;
    Xml xml;
    AssertionRecorder ignored;
    EXPECT_EQ(Project::save(category), 1);
    type.category = category.key;
    EXPECT_EQ(Project::save(type), 1);
    EXPECT_EQ(Project::putXMLData(xml), 1);
    Template made;
    made.runName = L"m";
    made.reportType = type.key;
    made.xmlData = selection.xmlData = xml.key;
    EXPECT_EQ(Project::save(made), 1);
    report.templateKey = made.key;
    EXPECT_EQ(Project::save(report) + Project::save(selection) + Project::save(application) +
                  Project::save(extract) + Project::save(info),
              5);
    int count = 0;
    EXPECT_EQ(Project::getReportsOf(made, count), 1);
    EXPECT_EQ(count, 1);
    EXPECT_EQ(Project::getCategory(L"c", category) + Project::getReportCategory(1, category) +
                  Project::getReportType(L"t", type) + Project::getTemplate(L"m", made, 1) +
                  Project::getReport(1, report) + Project::getModelSelection(1, selection) +
                  Project::getModelSelectionApplication(1, application) + Project::getModelExtract(1, extract) +
                  Project::getModelExtractUpdateInfo(1, info) + Project::loadXMLDataByKey(xml),
              10);
    for (const auto list :
         {Project::getReportList, Project::getTemplateList, Project::getReportTypeList,
          Project::getModelSelectionList, Project::getModelSelectionApplicationsList, Project::getModelExtractList,
          Project::getModelExtractUpdateInfoList, Project::getReportCategoriesList, Project::getCategoriesList}) {
        EXPECT_EQ(list(names), 1);
        EXPECT_EQ(names.length(), 1);
    }
    StructMapInternToExtern map;
    EXPECT_EQ(Project::getMapInternToExtern(L"inside", map), 0);
    const KorString insert = L"INSERT INTO MapInternToExtern VALUES (1, 'inside', 'outside', '')";
    EXPECT_EQ(KorDatabaseAccess::doSQLStatement(dsn, insert), 1);
    EXPECT_EQ(Project::getMapInternToExtern(L"inside", map), 1);
    EXPECT_EQ(map.externalName, L"outside");
    EXPECT_EQ(Project::deleteReport(report) + Project::deleteTemplate(made) + Project::deleteReportType(type) +
                  Project::deleteModelExtract(extract) + Project::deleteModelSelectionApplication(application) +
                  Project::deleteModelSelection(selection) + Project::reopenDatabase(),
              7);
    int written = 0;
    for (const auto& event : recorder.events()) {
        const std::string text = event.sql.toUtf8();
        if (!text.starts_with("INSERT") && !text.starts_with("DELETE"))
            continue;
        ++written;
        EXPECT_EQ(event.dsn, dsn) << text;
        if (event.origin == StatementRecorder::Event::Origin::Host) {
            EXPECT_EQ(event.index, index) << text;
        }
    }
    EXPECT_GT(written, 15);
}

TEST_F(ProjectRecordsTest, EachDatabaseHasItsPlace)
{
    KorDSNSetDwgSource::SeteIndexForDwg(static_cast<eIndex>(3));
    expectAllIn<KorODBCProject>(drawing, static_cast<eIndex>(3));
    expectAllIn<KorODBCProjectUser>(user, first);
    expectAllIn<KorODBCProjectAdvance>(advanced, base);
}

TEST_F(ProjectRecordsTest, ReopeningShowsWhatAnotherProgramWrote)
{
    const RepositoryFolder folder;
    const auto reports = [] {
        KorArray<KorString> names;
        EXPECT_EQ(KorODBCProject::getReportList(names), 1);
        return names.length();
    };
    EXPECT_EQ(reports(), 0);
    folder.executeOutside("project.db", "INSERT INTO Reports([Key], RunName) VALUES (1, 'new')");
    EXPECT_EQ(reports(), 0);
    EXPECT_EQ(KorODBCProject::reopenDatabase(), 1);
    EXPECT_EQ(reports(), 1);
}

} // namespace
