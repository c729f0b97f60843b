#include "engine/Claims.h"

#include "engine/Names.h"

#include <korodbc/repository/KorTableCopies.h>
#include <korodbc/roots/KorString.h>

namespace korodbc::host {

std::string Claims::nameOf(std::string_view table)
{
    static const std::vector<std::string> copies = [] {
        std::vector<std::string> names;
        for (const wchar_t* suffix : KorTableCopies::suffixes)
            names.push_back(lowerCase(KorString(suffix).toUtf8()));
        return names;
    }();
    const std::string name = lowerCase(table);
    for (const std::string& copy : copies) {
        if (name.size() > copy.size() && name.ends_with(copy))
            return name.substr(0, name.size() - copy.size());
    }
    return name;
}

std::string Claims::heldBy(const Claim& claim)
{
    return "is being edited by " + claim.holder + "; try again when that edit is closed";
}

bool Claims::take(const std::string& table, HostError& reason)
{
    const std::string name = nameOf(table);
    if (m_held.contains(name))
        return true;
    if (!lock(name, table, reason))
        return false;
    m_held.insert(name);
    return true;
}

void Claims::giveBack(const std::string& table)
{
    const std::string name = nameOf(table);
    m_leaving.erase(name);
    if (m_held.erase(name) != 0)
        unlock(name);
}

void Claims::setLeaving(const std::string& table, bool leaving)
{
    if (leaving)
        m_leaving.insert(nameOf(table));
    else
        m_leaving.erase(nameOf(table));
}

} // namespace korodbc::host
