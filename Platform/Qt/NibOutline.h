#pragma once

#include <QByteArray>
#include <QString>

#include <string>
#include <vector>

class QIODevice;

/// What an interface description says that the toolkit's reader does not tell.
struct NibOutline {
    /// A text that a person may see, to be translated.
    struct Text {
        QString widget; ///< Its object name.
        QByteArray property;
        QString english;
    };

    std::vector<std::string> topClasses; ///< More than one in a file that is wrong.
    std::vector<Text> texts;
};

/// Reads up to the first error, and leaves the file at its beginning.
NibOutline readNibOutline(QIODevice& file);
