#include "Typloom/TyploomCore/Storable.h"

#include <cmath>

std::string storableName(std::string name)
{
    std::erase_if(name, [](char character) {
        auto const code = static_cast<unsigned char>(character);
        return code < 0x20 && code != '\t' && code != '\n' && code != '\r';
    });
    for (auto const* character : { "\xEF\xBF\xBE", "\xEF\xBF\xBF" }) {
        for (auto place = name.find(character); place != std::string::npos; place = name.find(character)) {
            name.erase(place, 3);
        }
    }
    return name;
}

bool isStorableCoordinate(double value)
{
    return std::isfinite(value) && std::abs(value) <= 1e15;
}
