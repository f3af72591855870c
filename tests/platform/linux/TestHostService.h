// A stand-in host for tests: serves the host's D-Bus interface and answers each method as it is told.
#pragma once

#include <QDBusContext>
#include <QDBusMessage>
#include <QHash>
#include <QList>
#include <QObject>
#include <QStringList>

// The object behind the generated adaptor. Every call is recorded, then answered as its method's
// behaviour says, always by an explicit reply so that a reply without arguments can be sent too.
class TestHost : public QObject, protected QDBusContext
{
    Q_OBJECT

public:
    struct Behaviour
    {
        enum class Kind
        {
            text,
            nothing,
            error,
            freeze
        };

        Kind kind = Kind::nothing;
        QString text;
        QString errorName;
    };

    TestHost();

    // The interface's methods, called by the adaptor.
    QString GetConfig(const QString& actionID);
    void SetConfig(const QString& config, const QString& actionID);
    QString GetGlobalConfig(const QString& bundleID);
    void SetGlobalConfig(const QString& config, const QString& bundleID);
    QString GetPluginFolderPath();
    QString GetPathOfPlugin(const QString& pluginID);
    QString IsPluginInstalledAtPath(const QString& path);
    void InstallPlugin();

    void setBehaviour(const QString& method, Behaviour behaviour) { m_behaviours.insert(method, behaviour); }
    // Default answers and an empty call log.
    void reset();

    const QList<QStringList>& calls() const { return m_calls; }
    uint lastCallerPid() const { return m_lastCallerPid; }

private:
    void answer(const QStringList& call);

    QHash<QString, Behaviour> m_behaviours;
    QList<QStringList> m_calls;
    uint m_lastCallerPid = 0;
    // Calls that a frozen method never answers stay here, unanswered, until the service ends.
    QList<QDBusMessage> m_frozen;
};

// The test's handle on the host, on its own object and interface so that the host's interface stays
// exactly the one the plugin talks to.
class TestHostControl : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.vendel.test.HostControl")

public:
    explicit TestHostControl(TestHost& host) : m_host(host) {}

public Q_SLOTS:
    void AnswerText(const QString& method, const QString& text);
    void AnswerNothing(const QString& method);
    void AnswerError(const QString& method, const QString& errorName, const QString& message);
    void Freeze(const QString& method);
    void Reset();
    // Each call since the last reset: the method's name followed by its arguments.
    QList<QStringList> Calls();
    uint LastCallerPid();

private:
    TestHost& m_host;
};
