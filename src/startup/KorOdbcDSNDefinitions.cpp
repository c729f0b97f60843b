#include "startup/KorOdbcDSNDefinitions.h"

#include "edit/KorOdbcMan.h"
#include "foundation/KorODBCDatabase.h"
#include "repository/KorDatabaseAccess.h"

int KorOdbcDSNDefinitions::initOEDbConnections()
{
    KorODBCDatabase::resetExtDataInterf();
    KorOdbcMan::InitializeStatics::build();
    return KorDatabaseAccess::checkDbEngine(true) ? 1 : 0;
}
