#pragma once

#include <set>
#include <string>

/// Gives out identifiers, each once: what is asked for, or that with "#2", "#3" and so on behind it.
class UniqueNames {
public:
    std::string take(std::string const& wanted)
    {
        std::string name = wanted;
        for (std::size_t number = 2; !m_taken.insert(name).second; ++number) {
            name = wanted + "#" + std::to_string(number);
        }
        return name;
    }

private:
    std::set<std::string, std::less<>> m_taken;
};
