#include "service/RepositorySwitch.h"
#include "service/Service.h"

#include <korodbc/repository/KRRepositoryProxyMan.h>

#include <vector>

namespace {

std::vector<void (*)()>& listeners()
{
    static std::vector<void (*)()> list;
    return list;
}

} // namespace

void korodbc::host::repositorySwitched()
{
    for (void (*const forget)() : listeners())
        forget();
}

void KRRepositoryProxyMan::whenSwitched(void (*forget)()) { listeners().push_back(forget); }

void KRRepositoryProxyMan::resetTableCache(int index)
{
    if (index == 0)
        korodbc::host::service().checkAll();
    else
        korodbc::host::service().check(static_cast<eIndex>(index));
}

// Preferred sizes are read through cached tables and kept column reads; the latter look for changes each time.
void KRRepositoryProxyMan::resetAllPreferredSizeData() { korodbc::host::service().checkAll(); }
