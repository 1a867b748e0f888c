#pragma once

#include "Tests/Program/TestFiles.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>

#include <map>
#include <vector>

/// What the program did.
struct Outcome {
    int status { -1 }; ///< -1 when it did not end by itself.
    std::string output;
    std::string errors;

    QJsonObject json() const { return QJsonDocument::fromJson(QByteArray::fromStdString(output)).object(); }
};

/// Starts the built program as a process of its own and waits for its end. `platform` is the toolkit's;
/// an empty one leaves the choice to the program, on a machine without a screen. Variables are added.
inline Outcome runProgram(std::vector<std::string> const& arguments, QString const& platform = "offscreen",
    std::map<QString, QString> const& variables = {})
{
    QStringList list;
    for (auto const& argument : arguments) {
        list.append(QString::fromStdString(argument));
    }
    QProcess process;
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.remove("QT_SCALE_FACTOR");
    environment.remove("DISPLAY");
    environment.remove("WAYLAND_DISPLAY");
    environment.insert("QT_QPA_PLATFORM", platform);
    for (auto const& [name, value] : variables) {
        environment.insert(name, value);
    }
    process.setProcessEnvironment(environment);
    process.start(PROGRAM, list);
    if (!process.waitForFinished(60'000)) {
        process.kill();
        process.waitForFinished();
        return {};
    }
    bool const hasEnded = process.exitStatus() == QProcess::NormalExit;
    return { hasEnded ? process.exitCode() : -1, process.readAllStandardOutput().toStdString(),
        process.readAllStandardError().toStdString() };
}

/// A family of two masters, Light (100) and Bold (900), with the glyphs A and B; the advance of A goes
/// from 500 to 700. The designspace file.
inline std::filesystem::path makeSmallFamily(TestFolder const& folder)
{
    auto const xml = std::string("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n");
    auto const source = [](std::string const& name, int weight) {
        return "<source filename=\"" + name + ".ufo\" name=\"" + name + "\" stylename=\"" + name
            + "\"><location><dimension name=\"Weight\" xvalue=\"" + std::to_string(weight)
            + "\"/></location></source>";
    };
    auto const plist
        = [&](std::string const& content) { return xml + "<plist version=\"1.0\">" + content + "</plist>"; };
    auto const glyph = [&](std::string const& name, char const* unicode, int advance) {
        return xml + "<glyph name=\"" + name + "\" format=\"2\"><unicode hex=\"" + unicode
            + "\"/><advance width=\"" + std::to_string(advance)
            + "\"/><outline><contour><point x=\"50\" y=\"0\" type=\"line\"/><point x=\""
            + std::to_string(advance - 50)
            + "\" y=\"0\" type=\"line\"/><point x=\"250.5\" y=\"700\" type=\"line\"/>"
            + "</contour></outline></glyph>";
    };
    auto const master = [&](std::string const& name, int advance) {
        auto const ufo = folder / (name + ".ufo");
        writeFile(ufo / "metainfo.plist",
            plist("<dict><key>creator</key><string>test</string><key>formatVersion</key><integer>3</"
                  "integer></dict>"));
        writeFile(ufo / "layercontents.plist",
            plist("<array><array><string>public.default</string><string>glyphs</string></array></array>"));
        writeFile(ufo / "glyphs/contents.plist",
            plist("<dict><key>A</key><string>A_.glif</string><key>B</key><string>B_.glif</string></dict>"));
        writeFile(ufo / "glyphs/A_.glif", glyph("A", "0041", advance));
        writeFile(ufo / "glyphs/B_.glif", glyph("B", "0042", 600));
    };
    master("Light", 500);
    master("Bold", 700);
    auto const file = folder / "Small.designspace";
    writeFile(file,
        xml
            + "<designspace format=\"5.0\"><axes><axis tag=\"wght\" name=\"Weight\" minimum=\"100\" "
              "maximum=\"900\" "
              "default=\"100\"/></axes><sources>"
            + source("Light", 100) + source("Bold", 900) + "</sources></designspace>");
    return file;
}
