// A child process for the fatal defaults: dispatches its argument to a controller with no handlers.
// With a second argument, "pending-write", a provider first has a save waiting for its delayed write;
// every script the probe sends is printed to standard error, so the report's order can be read.
#include "SampleConfig.h"
#include "TestPlatform.h"

#include <VendelSDK/LocalConfigProvider.h>
#include <VendelSDK/PluginController.h>

#include <QCoreApplication>
#include <QString>

#include <cstdio>

using namespace VendelSDK;
using namespace VendelSDK::Testing;

int main(int argc, char* argv[])
{
    const bool pendingWrite = argc == 3 && QByteArray(argv[2]) == "pending-write";
    if (argc != 2 && !pendingWrite) {
        std::fputs("usage: PluginControllerProbe <launch URL> [pending-write]\n", stderr);
        return 2;
    }
    QCoreApplication app(argc, argv);
    TestPlatform platform;
    platform.engine->responder = [](const QString& source) -> ScriptOutcome {
        std::fprintf(stderr, "script: %s\n", source.toUtf8().constData());
        return source.contains(QStringLiteral("get config")) ? ScriptOutcome(QString()) : ScriptNoResult{};
    };
    std::shared_ptr<LocalConfigProvider<SampleConfig>> provider;
    if (pendingWrite) {
        provider = LocalConfigProvider<SampleConfig>::create(QStringLiteral("P-1"), SampleConfig{});
        provider->config.count = 77;
        provider->save();
    }
    VendelSDK::PluginController controller;
    // Reaching the end means no default stopped the process.
    return controller.handle(QString::fromUtf8(argv[1])) ? 0 : 3;
}
