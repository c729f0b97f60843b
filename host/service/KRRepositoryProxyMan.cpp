#include "repository/KRRepositoryProxyMan.h"

#include "service/Service.h"

void KRRepositoryProxyMan::resetTableCache(int index)
{
    if (index == 0)
        korodbc::host::service().checkAll();
    else
        korodbc::host::service().check(static_cast<eIndex>(index));
}

// Preferred sizes are read through the cached tables; there is nothing else kept of them.
void KRRepositoryProxyMan::resetAllPreferredSizeData() { korodbc::host::service().checkAll(); }
