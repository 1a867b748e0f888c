#include "Benchmarks/Peers.h"
#include "Benchmarks/Themes.h"
#include "Benchmarks/Tick.h"

#include <QApplication>

#include <clocale>
#include <cstdio>
#include <cstring>

namespace {

struct Theme {
    char const* name;
    void (*measure)(Table&);
    bool isInShortForm { true };
};

constexpr Theme themes[] = {
    { "refresh", measureRefreshes },
    { "slider", measureSlider, false },
    { "search", measureSearches },
    { "difference", measureDifferences },
    { "interpolation", measureInterpolation },
    { "paint", measurePainting, false },
    { "files", measureFiles },
    { "list", measureLists },
    { "growth", measureGrowth, false },
    { "soak", measureSoak },
};

constexpr char const* usage = R"(./bench [--json] [--short] [--counts] [--only THEME] [--size T|B|X] [--peers]
./bench tick --family FILE --text TEXT --axis NAME [--ticks 60] [--json]
--short: with less care and more room. --counts: nothing that depends on time.
Themes: refresh slider search difference interpolation paint files list growth soak
)";

struct Options {
    bool isTick { false };
    bool asJson { false };
    bool withPeers { false };
    std::string only;
    TickOptions tick;
};

/// The offscreen platform says at every window what it does not do.
void dropMessage(QtMsgType, QMessageLogContext const&, QString const&) { }

/// False for what is not understood.
bool readOptions(int argc, char** argv, Options& options)
{
    for (int index = 1; index < argc; ++index) {
        std::string const word = argv[index];
        auto const next = [&] { return index + 1 < argc ? argv[++index] : ""; };
        if (word == "tick" && index == 1) {
            options.isTick = true;
        } else if (word == "--json") {
            options.asJson = options.tick.asJson = true;
        } else if (word == "--short") {
            effort().pairs = 3;
            effort().secondsPerSample = 0.005;
            effort().isShort = true;
            effort().room = 4;
        } else if (word == "--counts") {
            effort().isShort = true;
            effort().looksAtRatios = false;
        } else if (word == "--peers") {
            options.withPeers = true;
        } else if (word == "--size") {
            effort().onlySize = next();
        } else if (word == "--only") {
            options.only = next();
        } else if (word == "--family") {
            options.tick.family = next();
        } else if (word == "--text") {
            options.tick.text = next();
        } else if (word == "--axis") {
            options.tick.axis = next();
        } else if (word == "--ticks") {
            options.tick.ticks = std::strtoul(next(), nullptr, 10);
        } else {
            return false;
        }
    }
    return true;
}

int runTable(Options const& options)
{
    Table table(options.asJson);
    if (options.withPeers) {
        measurePeers(table);
    } else {
        for (auto const& theme : themes) {
            if (options.only.empty() ? theme.isInShortForm || !effort().isShort
                                     : options.only == theme.name) {
                theme.measure(table);
            }
        }
    }
    table.finish();
    return table.hasMissed() ? 2 : 0;
}

} // namespace

int main(int argc, char** argv)
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    qInstallMessageHandler(dropMessage);
    QApplication application(argc, argv);
    std::setlocale(LC_NUMERIC, "C");
    Options options;
    if (!readOptions(argc, argv, options)) {
        std::fputs(usage, stderr);
        return 1;
    }
    return options.isTick ? runTicks(options.tick) : runTable(options);
}
