#pragma once

#include <korodbc/addins/AddInManagerInterface.h>

#include <memory>
#include <vector>

namespace korodbc::host {

class CountryAddInEntry;

/// The add-in manager of the embedded host: the country add-ins of the repository's manifest.
class AddInManager final : public AddInManagerInterface {
public:
    AddInManager();
    ~AddInManager() override;

    void registerReactor(KorAddInReactorInterface& reactor, int activate) override;
    void unregisterReactor(KorAddInReactorInterface& reactor) override;
    void getInstalledCountryAddInIds(KorArray<KorAddInId>& ids) override;
    KorAddIn* getAddIn(const KorAddInId& id) override;
    void setCurrentForDetails(KorAddIn& addIn) override;

    /// Takes the add-ins from the open repository.
    void takeInstalled();
    /// Tells the reactors that an installed add-in is loaded or unloaded; false when none has that id.
    bool load(const KorAddInId& id);
    bool unload(const KorAddInId& id);

private:
    std::vector<std::unique_ptr<CountryAddInEntry>> m_addIns;
    std::vector<KorAddInReactorInterface*> m_reactors;
};

/// The manager while a repository is open, which closing it destroys; nullptr otherwise. Threads: one.
AddInManager* addInManager();
void openAddInManager();
void closeAddInManager();

} // namespace korodbc::host
