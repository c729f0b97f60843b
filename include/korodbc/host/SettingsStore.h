#pragma once

#include <korodbc/roots/KorString.h>

#include <memory>

namespace korodbc::host {

/// Where settings are kept.
class SettingsStore {
public:
    virtual ~SettingsStore() = default;
    /// False when the key has no value, and `value` stays as it was then.
    virtual bool get(const KorString& key, KorString& value) = 0;
    virtual bool set(const KorString& key, const KorString& value) = 0;
};

/// Installs a store, until another is installed or a repository is opened or closed; nullptr starts an empty one
/// in memory.
void setSettingsStore(std::shared_ptr<SettingsStore> store);

} // namespace korodbc::host
