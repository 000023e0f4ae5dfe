#include "wizard/vorgaben.h"

#include <algorithm>

void Vorgabentabelle::add(const Vorgabe &vorgabe)
{
    const auto sameName = [&](const Vorgabe &entry) { return entry.name == vorgabe.name; };
    if (std::none_of(m_entries.begin(), m_entries.end(), sameName))
        m_entries.push_back(vorgabe);
}

std::optional<Vorgabe> Vorgabentabelle::completion(const Vorgabe &entered) const
{
    const int filled = (entered.name.isEmpty() ? 0 : 1) + (entered.einheit.isEmpty() ? 0 : 1) +
                       (entered.formelzeichen.isEmpty() ? 0 : 1);
    if (filled != 1)
        return std::nullopt;
    const auto agrees = [&](const Vorgabe &entry) {
        return (!entered.name.isEmpty() && entered.name == entry.name) ||
               (!entered.einheit.isEmpty() && entered.einheit == entry.einheit) ||
               (!entered.formelzeichen.isEmpty() && entered.formelzeichen == entry.formelzeichen);
    };
    const auto found = std::find_if(m_entries.begin(), m_entries.end(), agrees);
    if (found == m_entries.end())
        return std::nullopt;
    return *found;
}
