#include "Platform/Qt/NibOutline.h"

#include "Platform/Qt/Conversions.h"

#include <QIODevice>
#include <QXmlStreamReader>

namespace {

class OutlineReader {
public:
    explicit OutlineReader(QIODevice& file)
        : m_reader(&file)
    {
    }

    NibOutline read()
    {
        while (!m_reader.atEnd()) {
            auto const token = m_reader.readNext();
            if (token == QXmlStreamReader::StartElement) {
                startElement();
            } else if (token == QXmlStreamReader::EndElement) {
                endElement();
            }
        }
        return std::move(m_outline);
    }

private:
    QString attribute(char const* name) const
    {
        return m_reader.attributes().value(QLatin1String(name)).toString();
    }

    void startElement()
    {
        if (m_reader.name() == QLatin1String("widget")) {
            if (m_widgets.empty()) {
                m_outline.topClasses.push_back(fromQString(attribute("class")));
            }
            m_widgets.push_back(attribute("name"));
        } else if (m_reader.name() == QLatin1String("property")) {
            m_property = attribute("name").toUtf8();
        } else if (m_reader.name() == QLatin1String("string")) {
            readText();
        }
    }

    void endElement()
    {
        if (m_reader.name() == QLatin1String("widget")) {
            m_widgets.pop_back();
        } else if (m_reader.name() == QLatin1String("property")) {
            m_property.clear();
        }
    }

    void readText()
    {
        bool const isTranslated = attribute("notr") != QLatin1String("true");
        auto const text = m_reader.readElementText();
        if (isTranslated && !text.isEmpty() && !m_property.isEmpty() && !m_widgets.empty()) {
            m_outline.texts.push_back({ m_widgets.back(), m_property, text });
        }
    }

    QXmlStreamReader m_reader;
    NibOutline m_outline;
    std::vector<QString> m_widgets; ///< Around the place, the outermost first.
    QByteArray m_property;
};

} // namespace

NibOutline readNibOutline(QIODevice& file)
{
    auto outline = OutlineReader(file).read();
    file.seek(0);
    return outline;
}
