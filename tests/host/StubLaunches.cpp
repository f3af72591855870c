// The stub reads its variables from its environment, which the host passes on to the plugins it starts.
#include "StubLaunches.h"

#include "HostStorage.h"

#include <QFile>

namespace VendelHost::Testing {

StubLaunches::StubLaunches() : m_held(m_folder.filePath(QStringLiteral("hold"))) {}

StubLaunches::~StubLaunches()
{
    for (const QString& variable : environment().keys()) {
        qunsetenv(variable.toUtf8().constData());
    }
}

QString StubLaunches::stub()
{
    return QStringLiteral(VENDEL_TEST_PLUGIN_STUB);
}

QString StubLaunches::contents(const QString& name) const
{
    QFile file(path(name));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

QHash<QString, QString> StubLaunches::environment() const
{
    return {{QStringLiteral("VENDEL_STUB_RECORD"), path(QStringLiteral("record"))},
            {QStringLiteral("VENDEL_STUB_DONE"), path(QStringLiteral("done"))},
            {QStringLiteral("VENDEL_STUB_HOLD"), m_held.path()}};
}

void StubLaunches::exportEnvironment() const
{
    const auto variables = environment();
    for (auto variable = variables.begin(); variable != variables.end(); ++variable) {
        qputenv(variable.key().toUtf8().constData(), QFile::encodeName(variable.value()));
    }
}

void StubLaunches::installStub() const
{
    HostStorage(dataDirectory())
        .recordPlugin(
            {QStringLiteral("stub"), stub(), QStringLiteral("Stub Player"), QStringLiteral("stub-player")});
}

} // namespace VendelHost::Testing
