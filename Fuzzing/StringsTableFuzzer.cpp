#include "Fuzzing/FuzzInput.h"
#include "Platform/Foundation/NSBundle.h"

namespace {

std::string inQuotes(std::string_view text)
{
    std::string result = "\"";
    for (char const character : text) {
        switch (character) {
        case '"':
            result += "\\\"";
            break;
        case '\\':
            result += "\\\\";
            break;
        case '\n':
            result += "\\n";
            break;
        case '\t':
            result += "\\t";
            break;
        case '\r':
            result += "\\r";
            break;
        default:
            result += character;
        }
    }
    return result + "\"";
}

} // namespace

int LLVMFuzzerTestOneInput(std::uint8_t const* bytes, std::size_t size)
{
    auto const strings = NSParseStringsTable(fuzzInput(bytes, size));
    if (!strings) {
        return 0;
    }
    std::string written;
    for (auto const& [key, value] : *strings) {
        written += "/* of \"it\"; */ " + inQuotes(key) + "\t= // here\n" + inQuotes(value) + ";\n";
    }
    fuzzExpect(NSParseStringsTable(written) == strings, "written out and read again it is the same", written);
    return 0;
}
