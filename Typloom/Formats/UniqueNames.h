#pragma once

#include <map>
#include <set>
#include <string>

/// Gives out identifiers, each once: what is asked for, or that with "#2", "#3" and so on behind it.
class UniqueNames {
public:
    std::string take(std::string const& wanted)
    {
        std::string name = wanted;
        auto& repeats = m_repeats[wanted]; // Thousands may ask for one name.
        while (!m_taken.insert(name).second) {
            name = wanted + "#" + std::to_string(++repeats + 1);
        }
        return name;
    }

private:
    std::set<std::string, std::less<>> m_taken;
    std::map<std::string, std::size_t, std::less<>> m_repeats;
};
