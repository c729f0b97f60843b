#include "Commands.h"
#include "Records.h"

#include <korodbc/records/detail/DetailAnnotationRecords.h>
#include <korodbc/records/detail/DetailObjectRecords.h>
#include <korodbc/records/detail/DetailProcessRecords.h>
#include <korodbc/records/detail/DetailStyleRecords.h>
#include <korodbc/records/detail/DetailViewRecords.h>
#include <korodbc/records/Registry.h>
#include <korodbc/repository/RecordAccess.h>

#include <map>

namespace {

template <class T>
KorArray<T> allOf(const Source& source, const std::string& what)
{
    KorArray<T> records;
    if (RecordAccess::readTable(descriptionOf<T>(), &records) != 1)
        throw Failure{kFailed, "data source " + source.name + " has no " + what + because()};
    return records;
}

/// Number of rows by the group that they name.
std::map<int, long> membersOf(const RecordDescription& group)
{
    std::map<int, long> members;
    for (const auto describe : records::all()) {
        const RecordDescription& type = describe();
        if (!records::isDetailTable(type))
            continue;
        for (const ColumnDescription& column : type.columns)
            if (column.link != LinkKind::None && &column.target() == &group)
                RecordAccess::visit(type, [&](const void* record) {
                    ++members[column.integer(record)];
                    return true;
                });
    }
    return members;
}

template <class Group>
void addGroups(const Source& source, Sheet& sheet)
{
    const RecordDescription& type = descriptionOf<Group>();
    std::map<int, long> members = membersOf(type);
    for (const Group& group : allOf<Group>(source, "table " + std::string(type.table)))
        sheet.rows.push_back({std::string(type.table), std::to_string(group.key), group.runName.toUtf8(),
                              std::to_string(group.bitmapId), std::to_string(members[group.key])});
}

/// Prints a sheet that `fill` fills from a data source.
template <class Fill>
void printFrom(const GlobalOptions& global, const std::string& sourceName, Format format, const Sheet& sheet,
               Fill fill)
{
    const StartedSession session(global);
    const Source source = sourceNamed(sourceName);
    noteOpenEdits(source);
    const KorDSNRequest request(source.dsn, source.index);
    fill(source);
    printSheet(sheet, format);
}

} // namespace

void runStyles(const GlobalOptions& global, const std::string& sourceName, Format format)
{
    Sheet sheet{
        {{"Key", true}, {"Style", false}, {"Category", false}, {"No", true}, {"Views", true}, {"Owner", false}},
        {}};
    printFrom(global, sourceName, format, sheet, [&](const Source& source) {
        for (const StructDetailStyle& style : allOf<StructDetailStyle>(source, "detail styles")) {
            StructDetailMaster master;
            const bool hasMaster = StructDetailMasterMarshal::getByStyleKey(style.key, master) == 1;
            sheet.rows.push_back(
                {std::to_string(style.key), style.runName.toUtf8(),
                 hasMaster ? runNameOf(descriptionOf<StructDetBaseCategory>(), master.baseCategory) : "-",
                 hasMaster ? std::to_string(master.subCategory) : "-", std::to_string(style.requests.length()),
                 style.ownerText.toUtf8()});
        }
    });
}

void runProcesses(const GlobalOptions& global, const std::string& sourceName, Format format)
{
    Sheet sheet{{{"Key", true}, {"Process", false}, {"Category", false}, {"Steps", true}, {"Owner", false}}, {}};
    printFrom(global, sourceName, format, sheet, [&](const Source& source) {
        for (const StructDetailProcessDefinition& process :
             allOf<StructDetailProcessDefinition>(source, "detail processes"))
            sheet.rows.push_back({std::to_string(process.key), process.runName.toUtf8(),
                                  runNameOf(descriptionOf<StructDetailProcessCategory>(), process.category),
                                  std::to_string(process.steps.length()), process.ownerText.toUtf8()});
    });
}

void runGroups(const GlobalOptions& global, const std::string& sourceName, Format format)
{
    Sheet sheet{{{"Table", false}, {"Key", true}, {"Group", false}, {"Bitmap", true}, {"Members", true}}, {}};
    printFrom(global, sourceName, format, sheet, [&](const Source& source) {
        addGroups<StructDetObjAnnotationGroup>(source, sheet);
        addGroups<StructDetObjQualifierSetGroup>(source, sheet);
        addGroups<StructDetViewDimRequestLinearGroup>(source, sheet);
    });
}
