#include "foundation/KorODBCDatabase.h"

#include "foundation/ProcessConstants.h"
#include "roots/KorPromptsProxy.h"

void KorODBCDatabase::resetExtDataInterf()
{
    if (korodbc::shutDown != 1)
        KorPromptsProxy::getInstance()->resetPromptsCache();
}
