#include "Typloom/Formats/Result.h"

std::string FormatError::sentence() const
{
    std::string const place = line == 0 ? std::string {} : ", line " + std::to_string(line);
    return "Cannot " + std::string(verb) + " " + (item.empty() ? item : item + " in ") + inQuotes(file)
        + place + ": " + reason + ".";
}

std::string inQuotes(std::string_view text)
{
    static constexpr std::size_t longest = 200;
    std::string result = "'";
    for (char const character : text) {
        auto const byte = static_cast<unsigned char>(character);
        bool const continues = (byte & 0xC0) == 0x80;
        if (result.size() > longest && !continues) {
            result += "…";
            break;
        }
        result += byte < 0x20 || byte == 0x7F ? ' ' : character;
    }
    return result + "'";
}
