#include "foundation/ProcessConstants.h"

namespace korodbc {

int shutDown = 0;

const KorString firstCopySuffix(L"_VELCopy");

const KorString defaultNewKeyValueStart(L"ODBC_NewKeyValueStart");
const KorString defaultOwnerKey(L"ODBC_OwnerKey");
const KorString defaultOwnerText(L"ODBC_OwnerText");
const KorString defaultProfileMaxPoints(L"ODBC_ProfileMaxPoints");
const KorString defaultProfileMaxContours(L"ODBC_ProfileMaxContours");

KorLogfile odbcLog(L"velOdbc.log");
KorLogfile odbcDataLog(L"velOdbcData.log");

namespace {

// the last object made here, so the first one destroyed
struct ShutDownSignal {
    ~ShutDownSignal() { shutDown = 1; }
} shutDownSignal;

} // namespace

} // namespace korodbc
