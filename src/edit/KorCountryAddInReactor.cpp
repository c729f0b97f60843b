#include "foundation/ManagerDatabase.h"

#include <korodbc/addins/AddInManagerInterface.h>
#include <korodbc/edit/KorOdbcMan.h>
#include <korodbc/foundation/KorCountryAddIns.h>
#include <korodbc/repository/KRRepositoryProxyMan.h>
#include <korodbc/roots/KorAssert.h>

using namespace korodbc;

KorCountryAddInReactor KorOdbcMan::m_countryAddInReactor;

namespace {

int registrations = 0;
const bool told = (KRRepositoryProxyMan::whenSwitched([] { registrations = 0; }), true); // with its add-in manager

} // namespace

void KorOdbcMan::registerCountryAddinReactor()
{
    AddInManagerInterface* manager = AddInManagerInterface::getInstance();
    if (registrations != 0 || manager == nullptr)
        return;
    manager->registerReactor(m_countryAddInReactor, 1);
    ++registrations;
}

void KorOdbcMan::unregisterCountryAddinReactor()
{
    AddInManagerInterface* manager = AddInManagerInterface::getInstance();
    if (registrations != 1 || manager == nullptr)
        return;
    manager->unregisterReactor(m_countryAddInReactor);
    --registrations;
}

void KorCountryAddInReactor::onCountryAddInLoaded(KorAddIn& addIn)
{
    if (!addIn.isCountryAddIn())
        return;
    if (registrations == 0)
        KorAssert::korAssert("FALSE", "KorOdbcMan", __LINE__);
    KorOdbcMan::reloadInfoForAllManagers(1);
    KorCountryAddIns::resetAddIns();
    addIn.completeLoading();
    setManagerDatabase(KorDSNDefinitions::kCountryAddin, KorDSNManager::getAddInIdx(0));
    KorOdbcMan::bringBackLeftCopies();
    KorCountryAddIns::resetAddIns();
}

void KorCountryAddInReactor::onCountryAddInUnloaded(KorAddIn& addIn)
{
    if (!addIn.isCountryAddIn())
        return;
    KorOdbcMan::reloadInfoForAllManagers(1);
    KorCountryAddIns::resetAddIns();
    setManagerDatabase(KorDSNDefinitions::kDetails, KorDSNDefinitions::kBase);
}
