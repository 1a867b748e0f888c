#include "Typloom/TyploomCore/TLFreshIdentifier.h"

#include <random>

std::string TLFreshIdentifier()
{
    static constexpr std::string_view digits = "0123456789ABCDEF";
    static std::random_device device;
    std::uniform_int_distribution<std::size_t> digit(0, digits.size() - 1);
    std::string identifier(32, '0');
    for (char& character : identifier) {
        character = digits[digit(device)];
    }
    return identifier;
}
