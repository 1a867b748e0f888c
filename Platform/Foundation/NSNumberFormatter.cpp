#include "Platform/Foundation/NSNumberFormatter.h"

#include "Platform/Foundation/NSString.h"
#include "Platform/Qt/Conversions.h"

#include <QLocale>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

/// Longer than any finite number's shortest text without exponent.
static constexpr std::size_t maximumNumberLength = 512;

/// Adds one to the last digit of a decimal text, with carry.
static void incrementLastDigit(std::string& digits)
{
    for (auto digit = digits.rbegin(); digit != digits.rend(); ++digit) {
        if (*digit == '.') {
            continue;
        }
        if (*digit != '9') {
            ++*digit;
            return;
        }
        *digit = '0';
    }
    digits.insert(digits.begin(), '1');
}

/// The magnitude in decimal digits with a full stop, halves rounded to even. What is rounded is the
/// shortest text of the number, which is what people see: 0.145 is a half at two digits, though
/// the binary number lies beside it.
static std::string roundedDigits(double magnitude, std::size_t maximumFractionDigits)
{
    std::array<char, maximumNumberLength> buffer;
    auto const end
        = std::to_chars(buffer.data(), buffer.data() + buffer.size(), magnitude, std::chars_format::fixed)
              .ptr;
    std::string digits(buffer.data(), end);
    auto const point = digits.find('.');
    if (point == std::string::npos) {
        return digits;
    }
    auto const length = point + 1 + maximumFractionDigits;
    if (digits.size() > length) {
        auto const dropped = digits.substr(length);
        digits.resize(length);
        bool const isHalf = dropped == "5"; // The shortest text has no trailing zeros.
        char const last = digits.back() == '.' ? digits[point - 1] : digits.back();
        if (isHalf ? (last - '0') % 2 == 1 : dropped.front() >= '5') {
            incrementLastDigit(digits);
        }
    }
    digits.erase(digits.find_last_not_of('0') + 1);
    if (digits.back() == '.') {
        digits.pop_back();
    }
    return digits;
}

std::optional<std::string> NSNumberFormatter::stringFromNumber(double number) const
{
    if (!std::isfinite(number)) {
        return std::nullopt;
    }
    auto const digits
        = roundedDigits(std::abs(number), static_cast<std::size_t>(std::max(m_maximumFractionDigits, 0)));
    QLocale const locale;
    char32_t const zero = locale.zeroDigit().toUcs4().at(0);
    QString text = number < 0 && digits != "0" ? locale.negativeSign() : QString();
    for (char const digit : digits) {
        char32_t const localized = zero + static_cast<char32_t>(digit - '0');
        text += digit == '.' ? locale.decimalPoint() : QString::fromUcs4(&localized, 1);
    }
    return fromQString(text);
}

/// Invisible marks that keep a sign at its number in text from right to left.
static bool isDirectionMark(QChar character)
{
    return character == QChar(0x200E) || character == QChar(0x200F) || character == QChar(0x061C);
}

static QString withoutDirectionMarks(QString text)
{
    return text.removeIf(isDirectionMark);
}

/// The text in plain digits with a full stop: digits and signs of any script, and a comma or a full stop
/// for the decimals. Nothing separates groups, so that 1.500 and 1,500 mean one and a half everywhere.
static std::string plainNumberText(QString plain, QLocale const& locale)
{
    for (auto const& sign : { withoutDirectionMarks(locale.negativeSign()), QString(QChar(0x2212)) }) {
        plain.replace(sign, QStringLiteral("-"));
    }
    plain.replace(withoutDirectionMarks(locale.positiveSign()), QStringLiteral("+"));
    plain.replace(locale.decimalPoint(), QStringLiteral("."));
    for (QChar const separator : { QChar(','), QChar(0x066B) }) {
        plain.replace(separator, QChar('.'));
    }
    for (QChar& character : plain) {
        if (int const digit = character.digitValue(); digit >= 0 && character.isDigit()) {
            character = QChar('0' + digit);
        }
    }
    return fromQString(plain);
}

std::optional<double> NSNumberFormatter::numberFromString(std::string_view text) const
{
    auto const typed = toQString(NSStringByTrimming(text, NSCharacterSet::whitespaceAndNewlines));
    auto const number = NSNumberFromText(plainNumberText(withoutDirectionMarks(typed), QLocale()));
    if (!number) {
        return std::nullopt;
    }
    auto const atLeast = std::max(*number, m_minimum.value_or(*number));
    return std::min(atLeast, m_maximum.value_or(atLeast)) + 0.0;
}

std::string NSNumberDescription(double number)
{
    std::array<char, maximumNumberLength> buffer;
    // Adding zero makes a negative zero positive.
    auto const end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number + 0.0).ptr;
    return { buffer.data(), end };
}

std::optional<double> NSNumberFromText(std::string_view text)
{
    if (text.starts_with('+')) {
        text.remove_prefix(1);
        if (text.starts_with('-')) {
            return std::nullopt;
        }
    }
    double number = 0;
    auto const end = text.data() + text.size();
    auto const [read, error] = std::from_chars(text.data(), end, number);
    if (error != std::errc() || read != end || !std::isfinite(number)) {
        return std::nullopt;
    }
    return number;
}
