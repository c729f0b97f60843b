#include "foundation/ProcessConstants.h"

#include <korodbc/foundation/KorTransferState.h>
#include <korodbc/project/KorODBCUserProfile.h>
#include <korodbc/records/configuration/AuthorRecords.h>
#include <korodbc/repository/KorColumn.h>
#include <korodbc/repository/KorDatabaseAccess.h>
#include <korodbc/repository/KorDefaults.h>
#include <korodbc/repository/KorDSNManager.h>

using namespace korodbc;

KorString KorODBCUserProfile::m_charOwnerText;
KorString KorODBCUserProfile::m_charSectionTypeName;

namespace {

KorString defaultOr(const KorString& key, const wchar_t* fallback)
{
    KorString value;
    return kor_odbc_getDefault(key, value) == 1 ? value : KorString(fallback);
}

/// The limit, or without it the result of reading it.
int limit(const KorString& key)
{
    int value = 0;
    const int result = kor_odbc_getDefault(key, value);
    return result == 1 ? value : result;
}

} // namespace

void KorODBCUserProfile::resetOwnerText()
{
    const KorString ownerKey = defaultOr(defaultOwnerKey, L"-");
    // the authors stand in the configuration, whichever database is current
    const KorDSNRequest request(KorDSNDefinitions::kConfiguration, KorDSNDefinitions::kBase);
    KorString company;
    if (StructAuthorMarshal::getRunNameByKey(ownerKey, company) != 1 &&
        KorDatabaseAccess::doSQLStatement(
            KorDSNDefinitions::kConfiguration,
            KorString::format(L"INSERT INTO Authors (CompanyText,CompanyName) VALUES ('%s','%s')",
                              quoted(ownerKey), quoted(defaultOr(defaultOwnerText, L"-")))) == 1)
        StructAuthorMarshal::resetTableCache(0);
    m_charOwnerText = ownerKey;
}

void KorODBCUserProfile::getOwnerText(KorString& owner)
{
    if (!KorTransferState::isTransferInProgress())
        owner = m_charOwnerText;
}

int KorODBCUserProfile::getMaxPointsUserSection() { return limit(defaultProfileMaxPoints); }

int KorODBCUserProfile::getMaxContoursUserSection() { return limit(defaultProfileMaxContours); }
