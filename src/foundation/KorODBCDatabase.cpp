#include "foundation/ProcessConstants.h"

#include <korodbc/foundation/KorODBCDatabase.h>
#include <korodbc/roots/KorPromptsProxy.h>

void KorODBCDatabase::resetExtDataInterf()
{
    if (korodbc::shutDown != 1)
        KorPromptsProxy::getInstance()->resetPromptsCache();
}
