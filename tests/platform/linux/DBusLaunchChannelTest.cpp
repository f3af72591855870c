// Tests the single instance over a private session bus: the first launch runs, later ones hand over.
#include "DBusLaunchChannel.h"

#include "InterfaceDescription.h"

#include <QTest>
#include <QThread>

#include <atomic>

using namespace VendelSDK;

namespace {

const QString applicationID = QStringLiteral("org.vendel.test.LaunchChannel");
using Urls = QList<std::optional<QString>>;

// A later launch, on its own connection and thread, as a second process would make it.
class LaterLaunch
{
public:
    LaterLaunch(std::optional<QString> url,
                std::chrono::milliseconds handOverTimeout = DBusLaunchChannel::defaultHandOverTimeout)
        : m_thread(QThread::create([this, url, handOverTimeout] {
              // The thread's own session bus connection, closed when the thread ends.
              DBusLaunchChannel channel(SdBus::Bus::session(), handOverTimeout);
              role = channel.claim(applicationID, url, [](const std::optional<QString>&) { return true; });
          }))
    {
        m_thread->start();
    }
    ~LaterLaunch() { m_thread->wait(); }

    bool finished() const { return m_thread->isFinished(); }

    std::atomic<LaunchChannel::Role> role{LaunchChannel::Role::running};

private:
    std::unique_ptr<QThread> m_thread;
};

} // namespace

class DBusLaunchChannelTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void firstLaunchBecomesTheRunningInstance()
    {
        DBusLaunchChannel channel;
        QCOMPARE(channel.claim(applicationID, QStringLiteral("vendelplugin://run/A"), {}),
                 LaunchChannel::Role::running);
    }

    void laterLaunchHandsItsUrlToTheRunningInstance()
    {
        DBusLaunchChannel running;
        Urls received;
        QCOMPARE(running.claim(applicationID, std::nullopt,
                               [&](const std::optional<QString>& url) {
                                   received.append(url);
                                   return true;
                               }),
                 LaunchChannel::Role::running);

        LaterLaunch later(QStringLiteral("vendelplugin://edit/B"));
        QTRY_VERIFY(later.finished());
        QCOMPARE(later.role.load(), LaunchChannel::Role::forwarded);
        QCOMPARE(received, Urls{QStringLiteral("vendelplugin://edit/B")});
    }

    void laterLaunchWithoutUrlHandsOverNoUrl()
    {
        DBusLaunchChannel running;
        Urls received;
        running.claim(applicationID, std::nullopt, [&](const std::optional<QString>& url) {
            received.append(url);
            return true;
        });

        LaterLaunch later(std::nullopt);
        QTRY_VERIFY(later.finished());
        QCOMPARE(later.role.load(), LaunchChannel::Role::forwarded);
        QCOMPARE(received, Urls{std::nullopt});
    }

    void refusedLaunchTakesOverWhenTheRunningInstanceEnds()
    {
        DBusLaunchChannel running;
        Urls refused;
        running.claim(applicationID, std::nullopt, [&](const std::optional<QString>& url) {
            refused.append(url);
            return false;
        });

        LaterLaunch later(QStringLiteral("vendelplugin://run/C"));
        QTRY_COMPARE(refused, Urls{QStringLiteral("vendelplugin://run/C")});
        QVERIFY(!later.finished());
        running.release();
        QTRY_VERIFY(later.finished());
        QCOMPARE(later.role.load(), LaunchChannel::Role::running);
    }

    void refusedLaunchGoesOnAloneWhenTheRunningInstanceNeverEnds()
    {
        DBusLaunchChannel running;
        running.claim(applicationID, std::nullopt, [](const std::optional<QString>&) { return false; });

        LaterLaunch later(QStringLiteral("vendelplugin://run/D"), std::chrono::milliseconds(200));
        QTRY_VERIFY(later.finished());
        QCOMPARE(later.role.load(), LaunchChannel::Role::running);
    }

    void launchBeforeTheReceiverIsSetIsRefused()
    {
        LaunchService service;
        QVERIFY(!service.Launch({QStringLiteral("vendelplugin://run/E")}));
        service.receiver = [](const std::optional<QString>&) { return true; };
        QVERIFY(service.Launch({QStringLiteral("vendelplugin://run/E")}));
        QVERIFY(!service.Launch({QStringLiteral("a"), QStringLiteral("b")}));
    }

    // Launches from builds of either side meet on the committed interface description.
    void theLaunchMethodIsTheOneThePluginInterfaceDescribes()
    {
        const auto described = Testing::describedMethods(QStringLiteral("org.vendel.Plugin1.xml"),
                                                         DBusLaunchChannel::interfaceName);
        QCOMPARE(described.keys(), QStringList{QString::fromLatin1(DBusLaunchChannel::launchMethod)});
        const auto launch = described.value(QString::fromLatin1(DBusLaunchChannel::launchMethod));
        QCOMPARE(launch.in, QString::fromLatin1(DBusLaunchChannel::launchSignature));
        QCOMPARE(launch.out, QString::fromLatin1(DBusLaunchChannel::launchResult));
    }

    void busNameKeepsAValidIdentifier()
    {
        QCOMPARE(DBusLaunchChannel::busName(QStringLiteral("org.vendel.MusicPlugin")),
                 QStringLiteral("org.vendel.MusicPlugin"));
    }

    void busNameCleansWhatABusNameCannotHold()
    {
        QCOMPARE(DBusLaunchChannel::busName(QStringLiteral("com.example.9lives")),
                 QStringLiteral("com.example._9lives"));
        QCOMPARE(DBusLaunchChannel::busName(QStringLiteral("my plugin")),
                 QStringLiteral("org.vendel.plugin.my_plugin"));
        QCOMPARE(DBusLaunchChannel::busName(QStringLiteral("a..b")), QStringLiteral("a._.b"));
        QCOMPARE(DBusLaunchChannel::busName(QString()), QStringLiteral("org.vendel.plugin._"));
        QCOMPARE(DBusLaunchChannel::busName(QString(300, QLatin1Char('x')) + QStringLiteral(".y")).size(),
                 255);
    }
};

QTEST_GUILESS_MAIN(DBusLaunchChannelTest)
#include "DBusLaunchChannelTest.moc"
