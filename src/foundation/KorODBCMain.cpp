#include "edit/KorOdbcMan.h"
#include "foundation/KorODBCDatabase.h"
#include "foundation/KorOdbcDSNDefinitions.h"
#include "foundation/KorOdbcGlobals.h"
#include "foundation/ProcessConstants.h"
#include "repository/KorDatabaseAccess.h"
#include "roots/KorPromptsProxy.h"

int KorOdbcDSNDefinitions::initOEDbConnections()
{
    KorODBCDatabase::resetExtDataInterf();
    KorOdbcMan::InitializeStatics::build();
    return KorDatabaseAccess::checkDbEngine(true) ? 1 : 0;
}

void KorODBCDatabase::resetExtDataInterf()
{
    if (korodbc::shutDown != 1)
        KorPromptsProxy::getInstance()->resetPromptsCache();
}

int KorOdbcGlobals::getDeveloperIDRange(const KorString& name, StructDevelopersID& range)
{
    return StructDevelopersIDMarshal::getStructByRunName(name, range);
}
