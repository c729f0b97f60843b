#include <korodbc/edit/KorOdbcMan.h>
#include <korodbc/foundation/KorODBCDatabase.h>
#include <korodbc/repository/KorDatabaseAccess.h>
#include <korodbc/startup/KorOdbcDSNDefinitions.h>

int KorOdbcDSNDefinitions::initOEDbConnections()
{
    KorODBCDatabase::resetExtDataInterf();
    KorOdbcMan::InitializeStatics::build();
    return KorDatabaseAccess::checkDbEngine(true) ? 1 : 0;
}
