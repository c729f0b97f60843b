#include <korodbc/host/SettingsStore.h>
#include <korodbc/roots/KRSettings.h>

#include <charconv>
#include <unordered_map>

namespace {

class MemoryStore final : public korodbc::host::SettingsStore {
public:
    bool get(const KorString& key, KorString& value) override
    {
        const auto found = m_values.find(key);
        if (found == m_values.end())
            return false;
        value = found->second;
        return true;
    }
    bool set(const KorString& key, const KorString& value) override
    {
        m_values[key] = value;
        return true;
    }

private:
    std::unordered_map<KorString, KorString> m_values;
};

std::shared_ptr<korodbc::host::SettingsStore>& installedStore()
{
    static std::shared_ptr<korodbc::host::SettingsStore> store = std::make_shared<MemoryStore>();
    return store;
}

} // namespace

void korodbc::host::setSettingsStore(std::shared_ptr<SettingsStore> store)
{
    installedStore() = store != nullptr ? std::move(store) : std::make_shared<MemoryStore>();
}

int KRSettings::getValue(const KorString& key, KorString& value)
{
    return installedStore()->get(key, value) ? 1 : 0;
}

int KRSettings::getValue(const KorString& key, int& value)
{
    KorString text;
    if (getValue(key, text) != 1)
        return 0;
    const std::string digits = text.trimmed().toUtf8();
    const char* last = digits.data() + digits.size();
    int number = 0;
    const auto [end, error] = std::from_chars(digits.data(), last, number);
    if (error != std::errc() || end != last)
        return 0;
    value = number;
    return 1;
}

int KRSettings::setValue(const KorString& key, const KorString& value)
{
    return installedStore()->set(key, value) ? 1 : 0;
}

int KRSettings::setValue(const KorString& key, int value)
{
    return setValue(key, KorString::format(L"%d", value));
}
