#include <QApplication>
#include <benchmark/benchmark.h>

#include <clocale>

/// The offscreen platform says at every window what it does not do.
static void dropMessage(QtMsgType, QMessageLogContext const&, QString const&) { }

int main(int argc, char** argv)
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    qInstallMessageHandler(dropMessage);
    QApplication application(argc, argv);
    std::setlocale(LC_NUMERIC, "C");
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 1;
    }
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
