#include "support/CrashOperations.h"

#include "repository/DetailDatabase.h"
#include "repository/Manifest.h"

#include <korodbc/catalogues/KorODBCExplodeObjects.h>
#include <korodbc/catalogues/KorOdbcNumberingPrefix.h>
#include <korodbc/edit/KorTableEdit.h>
#include <korodbc/project/KorODBCProjectUser.h>
#include <korodbc/references/KorDetailReferences.h>
#include <korodbc/transfer/KorDetailProcessTableDependencies.h>
#include <korodbc/transfer/KorODBCDetailStyleExports.h>

#include <fstream>

namespace crash {

fs::path repository;

namespace {

using Exports = KorODBCDetailStyleExports;

// Edits

/// Changes of every kind under copies of that depth, to the style whose keys start behind `base`.
void edit(Man::eCopyDepth depth, int base = 0)
{
    using namespace details;
    const int a = base + 1, b = base + 2;
    CRASH_REQUIRE(Man::setAttribute(Man::kDetailStyle, KorOdbcKey(a), 5, text(awkward), 1, depth) == 1);
    CRASH_REQUIRE(Man::setAttribute(Man::kDetViewArrangeStrategy, KorOdbcKey(a), 3, 77.5, depth) == 1);
    CRASH_REQUIRE(Man::deleteRecord(Man::kDetViewRequest, KorOdbcKey(b), depth) == 1);

    // more items than the table has columns
    CRASH_REQUIRE(StructDetailStyleMarshal::getStructByKey(a, Man::m_structDetailStyle) == 1);
    Man::m_structDetailStyle.requests = list<int>({a, b, a, b, a, b, a, b, a});
    CRASH_REQUIRE(Man::appendNewRecord(Man::kDetailStyle, 0, depth) > b);
    StructDetArrangerControlMarshal::getStructByKey(a, Man::m_structDetArrangerControl);
    for (int i = 0; i < 7; ++i)
        Man::m_structDetArrangerControl.items.append({1.0 * i, 2.0, 3.0});
    CRASH_REQUIRE(Man::appendNewRecord(Man::kDetArrangerControl, 0, depth) > a);

    // items in tables of their own
    StructDetViewDimStrategyMarshal::getStructByKey(a, Man::m_structDetViewDimStrategy);
    CRASH_REQUIRE(Man::appendNewRecord(Man::kDetViewDimStrategy, 0, depth) > a);
    StructDetObjReprMapMarshal::getStructByKey(a, Man::m_structDetObjReprMap);
    CRASH_REQUIRE(Man::storeCurrentRecord(Man::kDetObjReprMap, depth) == 1);
}

const std::initializer_list<Man::eTableType> dialogTables = {Man::kDetailStyle, Man::kDetViewArrangeStrategy,
                                                             Man::kDetObjQualifierSet, Man::kDetObjReprMap};

/// A dialog over several tables.
KorTableEdit dialog(Man::eCopyDepth depth = Man::kFirstCopy)
{
    KorTableEdit tables(dialogTables, depth);
    CRASH_REQUIRE(tables.begin() == 1);
    CRASH_REQUIRE(Man::setAttribute(Man::kDetailStyle, KorOdbcKey(1), 5, L"edited", 1, depth) == 1);
    CRASH_REQUIRE(Man::setAttribute(Man::kDetViewArrangeStrategy, KorOdbcKey(1), 3, 1.5, depth) == 1);
    StructDetObjQualifierSetMarshal::getStructByKey(1, Man::m_structDetObjQualifierSet);
    Man::m_structDetObjQualifierSet.items.getAt(0).modelRole = details::text(details::awkward);
    CRASH_REQUIRE(Man::storeCurrentRecord(Man::kDetObjQualifierSet, depth) == 1);
    StructDetObjReprMapMarshal::getStructByKey(1, Man::m_structDetObjReprMap);
    Man::m_structDetObjReprMap.items.deleteAt(0);
    CRASH_REQUIRE(Man::storeCurrentRecord(Man::kDetObjReprMap, depth) == 1);
    return tables;
}

void editTwoDatabases()
{
    edit(Man::kFirstCopy);
    const KorDSNRequest addIn(inAddin, KorDSNDefinitions::kFirstAddin);
    Man::setCurrentDSN(inAddin);
    Man::setCurrentAddIn(KorDSNDefinitions::kFirstAddin);
    edit(Man::kFirstCopy, 100);
    Man::setCurrentDSN(inDetails);
    Man::setCurrentAddIn(KorDSNDefinitions::kBase);
}

void styleTitle(const wchar_t* title, Man::eCopyDepth depth)
{
    CRASH_REQUIRE(Man::setAttribute(Man::kDetailStyle, KorOdbcKey(1), 5, title, 1, depth) == 1);
}

/// Edits of the styles at some depths, one after the other.
template <Man::eCopyDepth... depths>
void titles()
{
    (styleTitle(KorString::format(L"at depth %d", depths).c_str(), depths), ...);
}

constexpr auto first = Man::kFirstCopy, second = Man::kSecondCopy, third = Man::kThirdCopy,
               fourth = Man::kFourthCopy;
void ok(Man::eCopyDepth depth) { CRASH_REQUIRE(Man::setStatusOnOK(Man::kDetailStyle, depth) == 1); }
void update(Man::eCopyDepth depth) { CRASH_REQUIRE(Man::setStatusOnUpdate(Man::kDetailStyle, depth) == 1); }
void cancel(Man::eCopyDepth depth) { CRASH_REQUIRE(Man::setStatusOnCancel(Man::kDetailStyle, depth) == 1); }
void okToAll() { CRASH_REQUIRE(Exports::setStatusOnOK() == 1); }

// Transfers

KorString transferFile() { return details::text((repository / "transfer.db").string()); }

template <Exports::eType what>
void exportIt()
{
    KorDetailProcessTableDependencies::m_bDeepCopyWithDetailStyles = 1;
    CRASH_REQUIRE(
        Exports::exportDetail(what, KorOdbcKey(1), inDetails, KorDSNDefinitions::kBase, transferFile()) == 1);
}

template <Exports::eType what, int withStyles = 1>
void importIt()
{
    KorDetailProcessTableDependencies::m_bDeepCopyWithDetailStyles = withStyles;
    CRASH_REQUIRE(Exports::importDetail(what, KorOdbcKey(101), inAddin, KorDSNDefinitions::kFirstAddin, inDetails,
                                        KorDSNDefinitions::kBase) == 1);
}

// Prefixes of the drawing, what objects become when they are exploded

void drawingTable() { CRASH_REQUIRE(KorOdbcNumberingPrefix::createDWGNumberingPrefixTable() == 1); }

void drawingPrefix()
{
    CRASH_REQUIRE(KorOdbcNumberingPrefix::appendDWGNumberingPrefix(
                      {-1, details::text(details::awkward), L"s", L"m", L"o", 1, -1, L"", L"p"}) > 0);
}

void drawingPrefixes()
{
    drawingTable();
    drawingPrefix();
}

/// Rows of the user's, more than a page holds.
void explodeObjects()
{
    KorArray<StructExplodeObjects> objects;
    for (int i = 0; i < 100; ++i)
        objects.append(
            {KorString::format(L"%d", i), details::text(details::awkward), 1, L"Lines", 1, L"Text", 0, i});
    CRASH_REQUIRE(KorODBCExplodeObjects::setExplodeObjectsTable(objects) == 1);
}

// Compactions

void compact(Compact::eCompactType type)
{
    CRASH_REQUIRE(Compact::startCompactProcess(inDetails, 1, type) == 1);
    KorArray<KorCompactedTable> tables;
    Compact::getCompactedTables(tables);
    int deleted = 0;
    for (const KorCompactedTable& table : tables)
        deleted += table.deleted;
    CRASH_REQUIRE(deleted > 4);
}

void compactAllAndLeaveOpen()
{
    CRASH_REQUIRE(compactionEdit().begin() == 1);
    compact(Compact::kCompactAll);
}

void confirm() { CRASH_REQUIRE(compactionEdit().ok() == 1); }

/// Compacts and confirms in one.
template <Compact::eCompactType type>
void compactForGood()
{
    KorDatabaseBatch batch;
    compact(type);
    confirm();
    CRASH_REQUIRE(batch.end(1) == 1);
}

template <int deletes>
void compactSets()
{
    CRASH_REQUIRE(Compact::compactQualifierSets(inDetails, deletes, Compact::kCompactDetailStyles) == 1);
}

// Project records

using User = KorODBCProjectUser;

/// A report template with its document, a report of it and a selection; keys 1.
void projectRecords()
{
    StructProjXMLData xml, other;
    xml.xmlText = L"<template/>";
    CRASH_REQUIRE(User::putXMLData(xml) == 1 && User::putXMLData(other) == 1);
    StructProjTemplate made;
    made.runName = details::text(details::awkward);
    made.xmlData = xml.key;
    CRASH_REQUIRE(User::save(made) == 1);
    StructProjModelSelection selection;
    selection.xmlData = other.key;
    CRASH_REQUIRE(User::save(selection) == 1);
    for (int i = 0; i < 3; ++i) {
        StructProjModelExtract extract;
        extract.fileName = details::text(details::awkward);
        CRASH_REQUIRE(User::save(extract) == 1);
    }
}

/// Stores a document of many pages, in a new row or instead of the first.
template <int key>
void putDocument()
{
    StructProjXMLData xml;
    xml.key = key;
    for (int i = 0; i < 500; ++i)
        xml.xmlText += KorString::format(L"<row number=\"%d\">it's</row>\n", i);
    CRASH_REQUIRE(User::putXMLData(xml) == 1);
}

template <class Record>
Record firstOne()
{
    Record record;
    record.key = 1;
    return record;
}

constexpr auto Nothing = Operation::Nothing, Something = Operation::Something;
constexpr auto style = Exports::kDetailStyle, process = Exports::kDetailProcess;

const Operation allOperations[] = {
    {"edit at depth 0", nullptr, [] { edit(first); }, Nothing},
    {"edit at depth 1", nullptr, [] { edit(second); }, Nothing},
    {"edit at depth 2", nullptr, [] { edit(third); }, Nothing},
    {"edit at depth 3", nullptr, [] { edit(fourth); }, Nothing},
    {"edit nested in an edit", [] { edit(first); }, [] { edit(second); }, Nothing},
    {"edit nested four deep", titles<first, second>,
     [] {
         titles<third, fourth>();
         ok(fourth);
         update(third);
         cancel(second);
     },
     Nothing},
    {"OK of one table", titles<first>, [] { ok(first); }, Something},
    {"OK at depth 2", titles<third>, [] { ok(third); }, Something},
    {"Cancel of one table", [] { edit(first); }, [] { cancel(first); }, Nothing},
    {"Update of one table, then another edit", titles<first>,
     [] {
         update(first);
         styleTitle(L"after the update", first);
     },
     Something},
    {"OK of the inner dialog only", titles<first, second>, [] { ok(second); }, Nothing},
    {"Cancel of the inner dialog, OK of the outer one",
     [] {
         titles<first, second>();
         cancel(second);
     },
     [] { ok(first); }, Something},
    {"dialog over several tables, left open", nullptr, [] { dialog(); }, Nothing},
    {"dialog over several tables, at depth 3", nullptr, [] { dialog(fourth); }, Nothing},
    {"dialog over several tables, OK", nullptr, [] { CRASH_REQUIRE(dialog().ok() == 1); }, Something},
    {"dialog over several tables, Cancel", nullptr, [] { CRASH_REQUIRE(dialog().cancel() == 1); }, Nothing},
    {"dialog over several tables, Update, then another edit", nullptr,
     [] {
         KorTableEdit tables = dialog();
         CRASH_REQUIRE(tables.update() == 1);
         styleTitle(L"after the update", first);
     },
     Something},
    {"all tables of a transfer, OK", [] { edit(first); }, okToAll, Something},
    {"edit in two databases, OK", editTwoDatabases, okToAll, Something},
    {"export into a new file", nullptr, exportIt<style>, Something},
    {"export into a file with a style", exportIt<style>, exportIt<style>, Something},
    {"import", nullptr, importIt<style>, Something, true},
    {"export of a process into a new file", nullptr, exportIt<process>, Something, true},
    {"export of a process into a file with a style", exportIt<style>, exportIt<process>, Something, true},
    {"import of a process with its styles", nullptr, importIt<process>, Something, true},
    {"import of a process alone", nullptr, importIt<process, 0>, Something},
    {"table of the drawing's prefixes", nullptr, drawingTable, Something},
    {"new prefix of the drawing", drawingPrefixes, drawingPrefix, Something},
    {"deleted prefix of the drawing", drawingPrefixes,
     [] {
         StructNumberingPrefix prefix;
         CRASH_REQUIRE(KorOdbcNumberingPrefix::getDWGNumberingPrefix(KorOdbcKey(1), prefix) == 1);
         CRASH_REQUIRE(KorOdbcNumberingPrefix::deleteDWGNumberingPrefix(prefix) == 1);
     },
     Something},
    {"new explode object", nullptr,
     [] {
         StructExplodeObjects object;
         object.linesTo = details::text(details::awkward);
         CRASH_REQUIRE(KorODBCExplodeObjects::setExplodeObjects(object.linesTo, object) == 1);
     },
     Something},
    {"new explode objects", nullptr, explodeObjects, Something},
    {"compaction of styles", nullptr, compactForGood<Compact::kCompactDetailStyles>, Something, true, true},
    {"compaction of processes", nullptr, compactForGood<Compact::kCompactDetailProcesses>, Something, true, true,
     Compact::kCompactDetailProcesses},
    {"compaction of all", nullptr, compactForGood<Compact::kCompactAll>, Something, true, true},
    {"compaction of all without copies", nullptr,
     [] {
         Exports::CancelBackupTables(1);
         compact(Compact::kCompactAll);
     },
     Something, true, true},
    {"compaction of all, left open", nullptr, compactAllAndLeaveOpen, Nothing, true, true},
    {"compaction of all, then OK", nullptr,
     [] {
         compactAllAndLeaveOpen();
         confirm();
     },
     Something, true, true},
    {"OK after a compaction of all", compactAllAndLeaveOpen, confirm, Something, true, true},
    {"compaction of qualifier sets", nullptr, compactSets<1>, Something, true, true},
    {"numbering of qualifier sets", nullptr, compactSets<0>, Something, true, true},
    {"new project record", nullptr,
     [] {
         StructProjModelExtract extract;
         extract.runName = details::text(details::awkward);
         CRASH_REQUIRE(User::save(extract) == 1 && extract.key == 1);
     },
     Something},
    {"changed project record", projectRecords,
     [] {
         StructProjTemplate made;
         CRASH_REQUIRE(User::getTemplate(1, made, 0) == 1);
         made.description = made.fileName = L"changed";
         CRASH_REQUIRE(User::save(made) == 1);
     },
     Something},
    {"new document", projectRecords, putDocument<-1>, Something},
    {"changed document", projectRecords, putDocument<1>, Something},
    {"deletion of a template", projectRecords,
     [] { CRASH_REQUIRE(User::deleteTemplate(firstOne<StructProjTemplate>()) == 1); }, Something, true},
    {"deletion of a selection", projectRecords,
     [] { CRASH_REQUIRE(User::deleteModelSelection(firstOne<StructProjModelSelection>()) == 1); }, Something,
     true},
};

} // namespace

std::span<const Operation> operations() { return allOperations; }

std::set<std::string> dangling(const fs::path& folder, std::optional<Compact::eCompactType> preview)
{
    const fs::path file = scratch() / "references";
    fs::remove(file);
    inChild(0, [&] {
        start(folder);
        KorArray<KorDetailReference> references;
        CRASH_REQUIRE(KorDetailReferences::getDangling(inDetails, KorDSNDefinitions::kBase, references) == 1);
        KorArray<KorCompactedTable> tables;
        if (preview)
            CRASH_REQUIRE(Compact::previewCompactProcess(inDetails, *preview, tables, references) == 1);
        std::ofstream out(file);
        for (const KorDetailReference& reference : references)
            // whatever the referring row is numbered
            out << reference.table.toUtf8() << '|' << reference.column.toUtf8() << '|' << reference.target.toUtf8()
                << '|' << reference.targetKey << '\n';
        out << "read\n";
    });
    std::ifstream in(file);
    std::set<std::string> lines;
    for (std::string line; std::getline(in, line);)
        lines.insert(line);
    EXPECT_TRUE(lines.contains("read"));
    return lines;
}

void makeRepositories()
{
    fs::remove_all(scratch());
    fs::create_directories(base());
    korodbc::host::Manifest manifest;
    std::string error;
    for (const auto& [dsn, file] : {std::pair(inDetails, "details.db"), std::pair(inAddin, "addin.db"),
                                    std::pair(KorDSNDefinitions::kProject, "project.db"),
                                    std::pair(KorDSNDefinitions::kConfiguration, "configuration.db")}) {
        manifest.connections[dsn] = std::string("sqlite:") + file;
        korodbc::host::HostError reason;
        const auto database = korodbc::host::Database::open((base() / file).string(),
                                                            korodbc::host::Database::Access::Create, reason);
        ASSERT_TRUE(database != nullptr && korodbc::host::createTables(*database, dsn, reason)) << reason.text;
        // of the configuration only what the operations read: a cycle parses every table there is
        for (const std::string& table : database->tableNames())
            if (dsn == KorDSNDefinitions::kConfiguration && table != "Authors" && table != "Default_STR") {
                ASSERT_TRUE(database->run("DROP TABLE [" + table + "]"));
            }
    }
    ASSERT_TRUE(manifest.save(base(), error)) << error;
    ASSERT_TRUE(done([] {
        start(base());
        details::fillConfiguration();
        details::fillStyle(inDetails, details::awkward);
        details::fillStyle(inAddin, "add-in", 100);
        details::fillProcess(inDetails, details::awkward);
        details::fillProcess(inAddin, "add-in", 100);
        // what the steps of the add-in look up by key
        details::put(inDetails, StructDetailProcessSelection{101, L"all", L"ALL", L""});
        details::put(inDetails, StructDetailProcessSort{101, L"none", L"", L""});
        details::put(inAddin, StructDetViewArrangeStrategy{1, L"first", 0, 1, 2, 0, L"x"});
        korodbc::host::closeRepository();
    }));
    copyFolder(base(), twins());
    ASSERT_TRUE(done([] {
        start(twins());
        fillTwins(inDetails);
        korodbc::host::closeRepository();
    }));
}

} // namespace crash
