#include "Fuzzing/FuzzInput.h"
#include "Moravel/Model/NumberText.h"
#include "Platform/Foundation/NSLocale.h"
#include "Platform/Foundation/NSNumberFormatter.h"
#include "Typloom/Formats/Numbers.h"

#include <bit>
#include <clocale>
#include <cmath>
#include <cstring>

namespace {

bool isSame(double one, double other)
{
    return std::bit_cast<std::uint64_t>(one) == std::bit_cast<std::uint64_t>(other)
        || (std::isnan(one) && std::isnan(other));
}

void tryNumber(std::string const& text)
{
    auto const number = parseNumber(text);
    auto const general = NSNumberFromText(text);
    bool const hasPlus = text.starts_with('+');
    fuzzExpect(
        number.has_value() == (general && !hasPlus), "files read the numbers that the rest does", text);
    fuzzExpect(!general || std::isfinite(*general), "numbers are finite", text);
    if (!number) {
        return;
    }
    fuzzExpect(*number == *general, "with the same value", text);
    fuzzExpect(std::isfinite(*number) && !isSame(*number, -0.0), "a number is finite, and 0 has no sign");
    for (auto const& written : { describeNumber(*number), NSNumberDescription(*number) }) {
        auto const again = parseNumber(written);
        fuzzExpect(again && isSame(*again, *number), "what is written reads back", written);
    }
}

/// The C library is the measure.
void tryDefaultValue(std::string const& text)
{
    auto const number = numberInCLocale(text);
    char* end = nullptr;
    double const expected = std::strtod(text.c_str(), &end); // NOLINT: the process is in the "C" locale.
    bool const isWhole = !text.empty() && end == text.c_str() + text.size()
        && std::strchr(" \t\n\v\f\r", text.front()) == nullptr;
    fuzzExpect(number.has_value() == isWhole, "the C library takes the same texts", text);
    fuzzExpect(!number || isSame(*number, expected), "and makes the same of them", text);
}

void tryFormatter(NSNumberFormatter& formatter, std::string const& text, std::uint8_t digits)
{
    formatter.setMaximumFractionDigits(digits % 17);
    formatter.setMinimum(digits & 0x40 ? std::optional(-100.0) : std::nullopt);
    formatter.setMaximum(digits & 0x80 ? std::optional(1000.0) : std::nullopt);
    auto const number = formatter.numberFromString(text);
    if (!number) {
        return;
    }
    fuzzExpect(std::isfinite(*number), "a field takes finite numbers only", text);
    fuzzExpect(*number >= formatter.minimum().value_or(*number), "not below its minimum", text);
    fuzzExpect(*number <= formatter.maximum().value_or(*number), "not above its maximum", text);
    auto const shown = formatter.stringFromNumber(*number);
    fuzzExpect(shown.has_value(), "and shows them");
    auto const again = formatter.numberFromString(*shown);
    fuzzExpect(again.has_value(), "what a field shows can be typed", *shown);
    fuzzExpect(formatter.stringFromNumber(*again) == shown, "and is shown as it was", *shown);
}

} // namespace

/// The first byte chooses a locale and a formatter.
int LLVMFuzzerTestOneInput(std::uint8_t const* bytes, std::size_t size)
{
    static constexpr char const* locales[] { "en_US", "de_DE", "ar_EG", "fr_CH" };
    if (size == 0) {
        return 0;
    }
    std::string const text(fuzzInput(bytes, size).substr(1));
    tryNumber(text);
    if (text.find('\0') == std::string::npos) {
        tryDefaultValue(text);
    }
    if (auto const character = parseCharacter(text)) {
        fuzzExpect(
            parseCharacter(describeCharacter(*character)) == character, "a character reads back", text);
    }
    NSSetCurrentLocale(locales[bytes[0] % std::size(locales)]);
    NSNumberFormatter formatter;
    tryFormatter(formatter, text, bytes[0]);
    return 0;
}
