#pragma once

#include "catalogues/CatalogueFixture.h"

#include <korodbc/project/KorODBCProject.h>
#include <korodbc/project/KorODBCProjectAdvance.h>
#include <korodbc/project/KorODBCProjectUser.h>
#include <korodbc/references/KorDetailReferences.h>

/// Project records in a repository in memory, all tables empty.
namespace project {

using Intern = KorODBCProjectIntern;
using Category = StructProjReportCategory;
using Type = StructProjReportType;
using Template = StructProjTemplate;
using Report = StructProjReport;
using Selection = StructProjModelSelection;
using Application = StructProjModelSelectionApplication;
using Extract = StructProjModelExtract;
using UpdateInfo = StructProjModelExtractUpdateInfo;
using Xml = StructProjXMLData;

inline constexpr eDSN configuration = KorDSNDefinitions::kConfiguration,
                      advanced = KorDSNDefinitions::kProjectAdvance, drawing = KorDSNDefinitions::kProject,
                      user = KorDSNDefinitions::kAddin;
inline constexpr eIndex base = KorDSNDefinitions::kBase, first = KorDSNDefinitions::kFirstAddin;

struct Place {
    eDSN dsn;
    eIndex index;
};
inline constexpr Place places[] = {{user, first}, {configuration, base}, {advanced, base}, {drawing, base}};

template <class Record>
Record keyed(int key)
{
    Record record;
    record.key = key;
    return record;
}
template <class Record, auto Parent>
Record child(int parent)
{
    Record record;
    record.*Parent = parent;
    return record;
}

class ProjectTest : public RepositoryTest {
protected:
    /// Fills every field from a number.
    template <class Record>
    static Record generated(int seed)
    {
        Record record;
        int value = seed * 100;
        for (const ColumnDescription& column : descriptionOf<Record>().columns) {
            ++value;
            if (column.role == ColumnRole::Key)
                continue;
            if (column.kind == FieldKind::Integer)
                column.integer(&record) = value;
            else
                column.text(&record) = KorString::format(L"it's \"%d\" %% 梁 \U0001F529\n", value);
        }
        return record;
    }
    template <class Record>
    static std::string line(const Record& record)
    {
        std::string text;
        for (const ColumnDescription& column : descriptionOf<Record>().columns)
            text += (text.empty() ? "" : "|") + (column.kind == FieldKind::Integer
                                                     ? std::to_string(column.integer(&record))
                                                     : column.text(&record).toUtf8());
        return text;
    }
    /// A record of few words, stored.
    template <class Record>
    static int put(Place place, Record record)
    {
        AssertionRecorder ignored;
        const int result = Intern::save(record, place.index, place.dsn);
        return result == 1 ? record.key : result;
    }
    static int putXml(Place place, const KorString& text)
    {
        Xml xml;
        xml.xmlText = text;
        return Intern::putXMLData(xml, place.index, place.dsn) == 1 ? xml.key : -1;
    }
    static Template madeFrom(int type, int xml)
    {
        Template record;
        record.runName = L"made";
        record.reportType = type;
        record.xmlData = xml;
        return record;
    }
    /// All project tables of a database, row by row.
    static Texts everything(eDSN dsn)
    {
        Texts all;
        for (const auto describe : records::projectRecords)
            for (const std::string& row : rows(dsn, std::string(describe().table)))
                all.push_back(std::string(describe().table) + ": " + row);
        return all;
    }
    static long dangling(Place place)
    {
        KorArray<KorDetailReference> references;
        EXPECT_EQ(KorDetailReferences::getDangling(place.dsn, place.index, references), 1);
        return references.length();
    }
};

} // namespace project
