#include <korodbc/addins/AddInManagerInterface.h>
#include <korodbc/foundation/KorCountryAddIns.h>
#include <korodbc/repository/KorDSNManager.h>
#include <korodbc/repository/KRRepositoryProxyMan.h>
#include <korodbc/roots/KorAssert.h>

void KorCountryAddIns::switchKorvaDetailsCurrent(const KorAddInId& id)
{
    AddInManagerInterface* manager = AddInManagerInterface::getInstance();
    if (manager == nullptr)
        return;
    KorAddIn* pAddIn = manager->getAddIn(id);
    if (pAddIn == nullptr) {
        KorAssert::korAssert("pAddIn != NULL", "KorODBCMain", __LINE__);
        return;
    }
    manager->setCurrentForDetails(*pAddIn);
    resetAddIns();
}

void KorCountryAddIns::resetAddIns()
{
    AddInManagerInterface* manager = AddInManagerInterface::getInstance();
    if (manager == nullptr)
        return;
    KorArray<KorAddInId> ids;
    manager->getInstalledCountryAddInIds(ids);
    const int first = KorDSNManager::getAddInIdx(0);
    for (int i = 0; i < ids.length(); ++i)
        KRRepositoryProxyMan::resetTableCache(first + i);
}
