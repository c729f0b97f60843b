#include "Commands.h"
#include "DetailFile.h"
#include "Records.h"
#include "records/detail/DetailStyleRecords.h"
#include "repository/KorDatabaseAccess.h"
#include "repository/RecordAccess.h"
#include "transfer/KorDetailTableDependencies.h"
#include "transfer/KorODBCDetailStyleExports.h"

#include <cstdio>
#include <filesystem>

namespace fs = std::filesystem;
using Exports = KorODBCDetailStyleExports;

namespace {

/// The message of a failed transfer, and what to do about it.
std::string transferError(const std::string& what)
{
    KorString message;
    Exports::GetErrorMessage(message, 1);
    if (message.isEmpty())
        return what + because();
    const std::string text = what + ": " + message.toUtf8() + (message.endsWith(L"!") ? "" : "!");
    if (message.find(L"older than") >= 0)
        return text + " Bring the database up to version 5.1 first";
    if (message.find(L"dependencies") >= 0)
        return text + " A row that it refers to, or its detail master, is missing; see: korodbc tree";
    const std::string reason = korodbc::host::lastError();
    return text + (reason.empty() ? "" : " (" + reason + ")") + " Make the database writable and try again";
}

std::vector<std::string> styleNames()
{
    KorArray<KorString> names;
    StructDetailStyleMarshal::getOrderedRunNameList(names);
    std::vector<std::string> texts;
    for (const KorString& name : names)
        texts.push_back(name.toUtf8());
    return texts;
}

/// A file attached as a data source, until this object goes.
class AttachedFile {
public:
    AttachedFile(eDSN dsn, const std::string& file) : m_dsn(dsn), m_file(KorString::fromUtf8(file))
    {
        KorDatabaseAccess::getConnectionString(dsn, m_before);
        if (KorDatabaseAccess::setConnection(dsn, m_file) != 1)
            throw Failure{kFailed, file + " cannot be attached" + because()};
    }
    ~AttachedFile()
    {
        KorDatabaseAccess::setConnectionString(m_dsn, m_before);
        KorDatabaseAccess::detachDatabase(m_file);
    }
    AttachedFile(const AttachedFile&) = delete;
    AttachedFile& operator=(const AttachedFile&) = delete;

private:
    eDSN m_dsn;
    KorString m_file, m_before;
};

} // namespace

StructDetailStyle styleNamed(const std::string& style, const Source& source)
{
    const KorDSNRequest request(source.dsn, source.index);
    requireReadable(descriptionOf<StructDetailStyle>());
    StructDetailStyle record;
    if (!readRecord(descriptionOf<StructDetailStyle>(), style, &record))
        throw Failure{kNotFound, "there is no detail style " + quote(style) + " in " + source.name +
                                     nearest(style, styleNames()) + "; list them with: korodbc styles"};
    return record;
}

void runStyles(const GlobalOptions& global, const std::string& sourceName)
{
    const StartedSession session(global);
    const Source source = sourceNamed(sourceName);
    const KorDSNRequest request(source.dsn, source.index);
    KorArray<StructDetailStyle> styles;
    if (StructDetailStyleMarshal::getTable(styles) != 1)
        throw Failure{kFailed, "data source " + source.name + " has no detail styles" + because()};
    Sheet sheet{
        {{"Key", true}, {"Style", false}, {"Category", false}, {"No", true}, {"Views", true}, {"Owner", false}},
        {}};
    for (const StructDetailStyle& style : styles) {
        StructDetailMaster master;
        const bool hasMaster = StructDetailMasterMarshal::getByStyleKey(style.key, master) == 1;
        sheet.rows.push_back(
            {std::to_string(style.key), style.runName.toUtf8(),
             hasMaster ? runNameOf(descriptionOf<StructDetBaseCategory>(), master.baseCategory) : "-",
             hasMaster ? std::to_string(master.subCategory) : "-", std::to_string(style.requests.length()),
             style.ownerText.toUtf8()});
    }
    printText(sheet);
}

Exported exportStyle(const std::string& style, const Source& source, const std::string& file)
{
    if (source.dsn != KorDSNDefinitions::kDetails && source.dsn != KorDSNDefinitions::kAddin)
        throw Failure{kUsage, "styles are exported from Details or Addin, not from " + source.name};
    const StructDetailStyle record = styleNamed(style, source);
    checkSound(source.file);
    const bool isNew = checkExportTarget(file);
    const int exported = Exports::exportDetail(Exports::kDetailStyle, KorOdbcKey(record.key), source.dsn,
                                               source.index, KorString::fromUtf8(file));
    if (exported != 1) {
        Failure failure{kFailed, transferError("style " + quote(style) + " was not exported")};
        Exports::setExportInProgress(0);
        std::error_code code;
        if (isNew)
            fs::remove(file, code);
        throw failure;
    }
    return {record.runName.toUtf8(), KorDetailTableDependencies::m_NrRowsToWrite};
}

void runExport(const GlobalOptions& global, const std::string& style, const std::string& sourceName,
               const std::string& file)
{
    const StartedSession session(global);
    const Exported exported = exportStyle(style, sourceNamed(sourceName), file);
    std::printf("Exported %s with everything that it refers to, %s, to %s.\n", quote(exported.style).c_str(),
                counted(exported.rows, "row").c_str(), file.c_str());
}

Imported importStyle(const ImportOptions& options)
{
    const Source target = sourceNamed(options.into);
    if (target.dsn != KorDSNDefinitions::kDetails && target.dsn != KorDSNDefinitions::kAddin &&
        target.dsn != KorDSNDefinitions::kCountryAddin)
        throw Failure{kUsage, "data source " + target.name +
                                  " holds no detail tables; import into Details, Addin or a "
                                  "country add-in"};
    checkSound(target.file);
    checkImportFile(options.file);
    // the file takes the place of a source that is not the target
    const eDSN dsn =
        target.dsn == KorDSNDefinitions::kAddin ? KorDSNDefinitions::kDetails : KorDSNDefinitions::kAddin;
    const eIndex index =
        dsn == KorDSNDefinitions::kAddin ? KorDSNDefinitions::kFirstAddin : KorDSNDefinitions::kBase;
    refuseSameFile(options.file, target);
    const AttachedFile attached(dsn, options.file);
    Imported imported;
    imported.into = target.name;
    {
        const KorDSNRequest request(dsn, index);
        const std::vector<std::string> names = styleNames();
        if (names.empty())
            throw Failure{kNotFound,
                          options.file + " holds no detail style; export one into it with: korodbc export-style"};
        if (options.style.empty() && names.size() > 1) {
            std::string list;
            for (std::size_t i = 0; i < names.size() && i < 10; ++i)
                list += (i == 0 ? "" : ", ") + quote(names[i]);
            throw Failure{kUsage, options.file + " holds " + std::to_string(names.size()) +
                                      " styles; name one with --style: " + list +
                                      (names.size() > 10 ? ", ..." : "")};
        }
        StructDetailStyle style;
        const std::string wanted = options.style.empty() ? names.front() : options.style;
        if (!readRecord(descriptionOf<StructDetailStyle>(), wanted, &style))
            throw Failure{kNotFound,
                          options.file + " holds no detail style " + quote(wanted) + nearest(wanted, names)};
        imported.key = style.key;
        imported.style = style.runName.toUtf8();
    }
    const int result = Exports::importDetail(Exports::kDetailStyle, KorOdbcKey(imported.key), dsn, index,
                                             target.dsn, target.index);
    if (result != 1)
        throw Failure{kFailed, transferError("style " + quote(imported.style) + " was not imported")};
    // the style is the first one collected
    const rowInfo identity{L"StructDetailStyle", 0, static_cast<std::int32_t>(imported.key)};
    long newKey = -1;
    KorDetailTableDependencies::m_writeTransferKeyMap.lookup(identity, newKey);
    imported.key = static_cast<int>(newKey);
    imported.rows = KorDetailTableDependencies::SetRowNr();
    const KorDSNRequest request(target.dsn, target.index);
    imported.name = runNameOf(descriptionOf<StructDetailStyle>(), imported.key);
    return imported;
}

void runImport(const GlobalOptions& global, const ImportOptions& options)
{
    const StartedSession session(global);
    const Imported imported = importStyle(options);
    std::printf("Imported %s into %s as %s, key %d; %s taken over.\n", quote(imported.style).c_str(),
                imported.into.c_str(), quote(imported.name).c_str(), imported.key,
                counted(imported.rows, "row").c_str());
}
