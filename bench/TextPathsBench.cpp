// Measures the text paths that hostile input reaches, at growing sizes, so that a cost growing faster than
// the input shows: the configuration's escaping (against the former two replacements), the tell engine's
// reading of the resulting command, and the host's decoding of a command URL.
#include "CommandUrl.h"
#include "TellScriptEngine.h"

#include <VendelSDK/VendelAPI.h>

#include <QElapsedTimer>
#include <QString>

#include <cstdio>
#include <functional>

using namespace VendelSDK;

namespace {

// The fastest of three, in seconds: the figure least disturbed by other work on the machine.
double seconds(const std::function<void()>& work)
{
    double best = 1e9;
    for (int round = 0; round < 3; ++round) {
        QElapsedTimer clock;
        clock.start();
        work();
        best = std::min(best, double(clock.nsecsElapsed()) / 1e9);
    }
    return best;
}

QString twoReplacements(const QString& text)
{
    QString result = text;
    result.replace(u'\\', QStringLiteral("\\\\"));
    result.replace(u'"', QStringLiteral("\\\""));
    return result;
}

} // namespace

int main()
{
    const qsizetype sizes[] = {1'250'000, 2'500'000, 5'000'000, 10'000'000};
    std::printf("%-44s %12s %10s\n", "path", "quotes", "seconds");
    for (const qsizetype size : sizes) {
        const QString quotes(size, u'"');
        qsizetype length = 0;
        const double escaping = seconds([&] { length = VendelAPI::escaped(quotes).size(); });
        std::printf("%-44s %12lld %10.3f\n", "VendelAPI::escaped (one pass)", qlonglong(size), escaping);
        if (length != 2 * size) {
            std::fprintf(stderr, "wrong length %lld\n", qlonglong(length));
            return 1;
        }
    }
    // The former way is quadratic; its smaller sizes are enough to show it.
    for (const qsizetype size : {sizes[0], sizes[1]}) {
        const QString quotes(size, u'"');
        const double former = seconds([&] { twoReplacements(quotes); });
        std::printf("%-44s %12lld %10.3f\n", "two replacements (former escaping)", qlonglong(size), former);
    }
    for (const qsizetype size : sizes) {
        const QString command = QStringLiteral("    tell application \"Vendel\" to set config \"") +
                                VendelAPI::escaped(QString(size, u'"')) + QStringLiteral("\" action \"A\"");
        const double parsing = seconds([&] { TellScriptEngine::parse(command); });
        std::printf("%-44s %12lld %10.3f\n", "TellScriptEngine::parse (set config)", qlonglong(size),
                    parsing);
    }
    for (const qsizetype size : sizes) {
        QString url = QStringLiteral("vendel://add-resources/");
        url.reserve(url.size() + 3 * size);
        for (qsizetype i = 0; i < size; ++i) {
            url.append(QLatin1String("%22"));
        }
        const double decoding = seconds([&] { VendelHost::CommandUrl::parse(url); });
        std::printf("%-44s %12lld %10.3f\n", "CommandUrl::parse (percent-encoded quotes)", qlonglong(size),
                    decoding);
    }
    return 0;
}
