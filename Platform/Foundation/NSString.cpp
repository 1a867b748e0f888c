#include "Platform/Foundation/NSString.h"

#include "Platform/Qt/Conversions.h"

#include <QLocale>

#include <algorithm>
#include <array>
#include <span>

/// The form in which texts that differ only in letter case, or in how accents are encoded, are
/// the same. Lower case is the locale's, as a Turkish I is no i; a final sigma is a sigma.
static QString searchForm(std::string_view text)
{
    return QLocale()
        .toLower(toQString(text).normalized(QString::NormalizationForm_C))
        .normalized(QString::NormalizationForm_C)
        .replace(QChar(0x03C2), QChar(0x03C3));
}

bool NSLocalizedCaseInsensitiveContains(std::string_view text, std::string_view query)
{
    if (query.empty()) {
        return false;
    }
    QString const searched = searchForm(text);
    QString const wanted = searchForm(query);
    for (auto at = searched.indexOf(wanted); at >= 0; at = searched.indexOf(wanted, at + 1)) {
        // A letter whose accent follows as a character of its own is another letter.
        auto const next = at + wanted.size();
        if (next == searched.size() || !searched[next].isMark()) {
            return true;
        }
    }
    return false;
}

bool NSStringIsEqual(std::string_view left, std::string_view right)
{
    return left == right
        || toQString(left).normalized(QString::NormalizationForm_C)
        == toQString(right).normalized(QString::NormalizationForm_C);
}

std::string NSStringByTrimming(std::string_view text, NSCharacterSet set)
{
    // UTF-8 of the members, so that text which is no valid UTF-8 keeps its bytes; the first 18 are
    // category Zs and the tab.
    static constexpr std::array<std::string_view, 25> members { " ", "\t", "\u00A0", "\u1680", "\u2000",
        "\u2001", "\u2002", "\u2003", "\u2004", "\u2005", "\u2006", "\u2007", "\u2008", "\u2009", "\u200A",
        "\u202F", "\u205F", "\u3000", //
        "\n", "\v", "\f", "\r", "\u0085", "\u2028", "\u2029" };
    auto const trimmed = std::span(members).first(set == NSCharacterSet::whitespace ? 18 : members.size());
    auto find = [&](auto test) {
        auto const found = std::find_if(trimmed.begin(), trimmed.end(), test);
        return found == trimmed.end() ? std::size_t(0) : found->size();
    };
    while (auto const size = find([&](auto member) { return text.starts_with(member); })) {
        text.remove_prefix(size);
    }
    while (auto const size = find([&](auto member) { return text.ends_with(member); })) {
        text.remove_suffix(size);
    }
    return std::string(text);
}
