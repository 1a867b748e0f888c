#include "Platform/Foundation/NSLocale.h"

#include "Platform/Qt/Conversions.h"

#include <QLocale>
#include <QStringList>

#include <algorithm>

std::vector<std::string> NSPreferredLanguages()
{
    std::vector<std::string> languages;
    auto add = [&](std::string language) {
        if (std::find(languages.begin(), languages.end(), language) == languages.end()) {
            languages.push_back(std::move(language));
        }
    };
    // A region's language stands in for the region, but only after all that the user asked for of
    // the same language: "de-CH, de-AT, fr" is looked for as de-CH, de-AT, de, fr.
    QStringList const asked = QLocale().uiLanguages();
    for (qsizetype i = 0; i < asked.size(); ++i) {
        add(fromQString(asked[i]));
        auto const primary = asked[i].section('-', 0, 0);
        bool const moreOfIt = i + 1 < asked.size() && asked[i + 1].section('-', 0, 0) == primary;
        if (!moreOfIt) {
            add(fromQString(primary));
        }
    }
    return languages;
}

void NSSetCurrentLocale(std::string_view name)
{
    QLocale::setDefault(name.empty() ? QLocale::system() : QLocale(toQString(name)));
}
