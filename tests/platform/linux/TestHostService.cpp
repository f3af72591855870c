// The stand-in host process: claims org.vendel.Host on the session bus and serves it until it is ended.
#include "TestHostService.h"

#include "TestHostAdaptor.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMetaType>

#include <cstdio>

TestHost::TestHost()
{
    reset();
}

void TestHost::reset()
{
    using Kind = Behaviour::Kind;
    m_behaviours.clear();
    // Each reading method answers its own text, so that a command sent to the wrong method shows.
    m_behaviours.insert(QStringLiteral("GetConfig"),
                        {Kind::text, QStringLiteral("{\"action\":\"pause\"}"), {}});
    m_behaviours.insert(QStringLiteral("GetGlobalConfig"),
                        {Kind::text, QStringLiteral("{\"global\":1}"), {}});
    m_behaviours.insert(QStringLiteral("GetPluginFolderPath"),
                        {Kind::text, QStringLiteral("/home/test/.local/share/vendel/plugins"), {}});
    m_behaviours.insert(QStringLiteral("GetPathOfPlugin"),
                        {Kind::text, QStringLiteral("/home/test/.local/share/vendel/plugins/music"), {}});
    m_behaviours.insert(QStringLiteral("IsPluginInstalledAtPath"), {Kind::text, QStringLiteral("true"), {}});
    m_calls.clear();
    m_lastCallerPid = 0;
}

void TestHost::answer(const QStringList& call)
{
    m_calls.append(call);
    m_lastCallerPid = connection().interface()->servicePid(message().service()).value();

    setDelayedReply(true);
    const Behaviour behaviour = m_behaviours.value(call.constFirst());
    switch (behaviour.kind) {
    case Behaviour::Kind::text:
        connection().send(message().createReply(behaviour.text));
        break;
    case Behaviour::Kind::nothing:
        connection().send(message().createReply());
        break;
    case Behaviour::Kind::error:
        connection().send(message().createErrorReply(behaviour.errorName, behaviour.text));
        break;
    case Behaviour::Kind::freeze:
        m_frozen.append(message());
        break;
    }
}

QString TestHost::GetConfig(const QString& actionID)
{
    answer({QStringLiteral("GetConfig"), actionID});
    return {};
}

void TestHost::SetConfig(const QString& config, const QString& actionID)
{
    answer({QStringLiteral("SetConfig"), config, actionID});
}

QString TestHost::GetGlobalConfig(const QString& bundleID)
{
    answer({QStringLiteral("GetGlobalConfig"), bundleID});
    return {};
}

void TestHost::SetGlobalConfig(const QString& config, const QString& bundleID)
{
    answer({QStringLiteral("SetGlobalConfig"), config, bundleID});
}

QString TestHost::GetPluginFolderPath()
{
    answer({QStringLiteral("GetPluginFolderPath")});
    return {};
}

QString TestHost::GetPathOfPlugin(const QString& pluginID)
{
    answer({QStringLiteral("GetPathOfPlugin"), pluginID});
    return {};
}

QString TestHost::IsPluginInstalledAtPath(const QString& path)
{
    answer({QStringLiteral("IsPluginInstalledAtPath"), path});
    return {};
}

void TestHost::InstallPlugin()
{
    answer({QStringLiteral("InstallPlugin")});
}

void TestHostControl::AnswerText(const QString& method, const QString& text)
{
    m_host.setBehaviour(method, {TestHost::Behaviour::Kind::text, text, {}});
}

void TestHostControl::AnswerNothing(const QString& method)
{
    m_host.setBehaviour(method, {TestHost::Behaviour::Kind::nothing, {}, {}});
}

void TestHostControl::AnswerError(const QString& method, const QString& errorName, const QString& message)
{
    m_host.setBehaviour(method, {TestHost::Behaviour::Kind::error, message, errorName});
}

void TestHostControl::Freeze(const QString& method)
{
    m_host.setBehaviour(method, {TestHost::Behaviour::Kind::freeze, {}, {}});
}

void TestHostControl::Reset()
{
    m_host.reset();
}

QList<QStringList> TestHostControl::Calls()
{
    return m_host.calls();
}

uint TestHostControl::LastCallerPid()
{
    return m_host.lastCallerPid();
}

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    qDBusRegisterMetaType<QList<QStringList>>();

    TestHost host;
    new Host1Adaptor(&host);
    TestHostControl control(host);

    QDBusConnection bus = QDBusConnection::sessionBus();
    // The objects are in place before the name is claimed, so a client that sees the name can call at once.
    if (!bus.registerObject(QStringLiteral("/org/vendel/Host"), &host) ||
        !bus.registerObject(QStringLiteral("/org/vendel/Test"), &control, QDBusConnection::ExportAllSlots) ||
        !bus.registerService(QStringLiteral("org.vendel.Host"))) {
        std::fprintf(stderr, "TestHostService: %s\n", qPrintable(bus.lastError().message()));
        return 1;
    }
    return application.exec();
}
