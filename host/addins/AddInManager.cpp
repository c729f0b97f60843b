#include "service/Service.h"

#include <korodbc/host/AddInManager.h>

#include <algorithm>

namespace korodbc::host {

class CountryAddInEntry final : public KorAddIn {
public:
    CountryAddInEntry(const CountryAddIn& addIn)
        : m_id(KorString::fromUtf8(addIn.id)), m_name(KorString::fromUtf8(addIn.name))
    {
    }
    const KorAddInId& getId() const override { return m_id; }
    const KorString& getName() const override { return m_name; }
    bool isCountryAddIn() const override { return true; }
    void completeLoading() override { m_loaded = true; }

private:
    KorAddInId m_id;
    KorString m_name;
    bool m_loaded = false;
};

namespace {
std::unique_ptr<AddInManager> manager;
} // namespace

AddInManager* addInManager() { return manager.get(); }

void openAddInManager()
{
    manager = std::make_unique<AddInManager>();
    manager->takeInstalled();
}

void closeAddInManager() { manager.reset(); }

AddInManager::AddInManager() = default;
AddInManager::~AddInManager() = default;

void AddInManager::registerReactor(KorAddInReactorInterface& reactor, int activate)
{
    if (activate != 0 && std::find(m_reactors.begin(), m_reactors.end(), &reactor) == m_reactors.end())
        m_reactors.push_back(&reactor);
}

void AddInManager::unregisterReactor(KorAddInReactorInterface& reactor) { std::erase(m_reactors, &reactor); }

void AddInManager::getInstalledCountryAddInIds(KorArray<KorAddInId>& ids)
{
    ids.removeAll();
    for (const auto& addIn : m_addIns)
        ids.append(addIn->getId());
}

KorAddIn* AddInManager::getAddIn(const KorAddInId& id)
{
    for (const auto& addIn : m_addIns)
        if (addIn->getId() == id)
            return addIn.get();
    return nullptr;
}

void AddInManager::setCurrentForDetails(KorAddIn& addIn)
{
    for (std::size_t i = 0; i < m_addIns.size(); ++i)
        if (m_addIns[i].get() == &addIn)
            KorDSNManager::getInstance().setCurrent(KorDSNDefinitions::kCountryAddin,
                                                    KorDSNManager::getAddInIdx(static_cast<int>(i)));
}

void AddInManager::takeInstalled()
{
    m_addIns.clear();
    for (const CountryAddIn& addIn : service().manifest().countryAddIns)
        m_addIns.push_back(std::make_unique<CountryAddInEntry>(addIn));
}

bool AddInManager::load(const KorAddInId& id)
{
    KorAddIn* addIn = getAddIn(id);
    for (std::size_t i = 0; addIn != nullptr && i < m_reactors.size(); ++i)
        m_reactors[i]->onCountryAddInLoaded(*addIn);
    return addIn != nullptr;
}

bool AddInManager::unload(const KorAddInId& id)
{
    KorAddIn* addIn = getAddIn(id);
    for (std::size_t i = 0; addIn != nullptr && i < m_reactors.size(); ++i)
        m_reactors[i]->onCountryAddInUnloaded(*addIn);
    return addIn != nullptr;
}

} // namespace korodbc::host

AddInManagerInterface* AddInManagerInterface::getInstance() { return korodbc::host::addInManager(); }
