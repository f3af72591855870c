// Tests the served host's GNOME Shell search provider as GNOME Shell meets it: started by the bus from the
// build's activation file, held to GNOME Shell's own description of the interface, each method called, its
// limits, the window it opens, and the key file that names it.
#include "ActivatedHost.h"
#include "HostStorage.h"
#include "InterfaceMembers.h"
#include "StubLaunches.h"
#include "XDisplay.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusVariant>
#include <QFile>
#include <QSettings>
#include <QTest>

#include <csignal>

using namespace VendelHost;
using namespace VendelHost::Testing;
using MusicPlugin::Testing::XKeyboard;
using MusicPlugin::Testing::XvfbDisplay;

namespace {

constexpr int generousMs = 30000;
const QString providerPath = QStringLiteral("/org/vendel/Host/SearchProvider");
const QString providerInterface = QStringLiteral("org.gnome.Shell.SearchProvider2");

QDBusMessage providerCall(const QString& method, const QVariantList& arguments)
{
    QDBusMessage message = QDBusMessage::createMethodCall(QStringLiteral("org.vendel.Host"), providerPath,
                                                          providerInterface, method);
    message.setArguments(arguments);
    return QDBusConnection::sessionBus().call(message);
}

QStringList resultsOf(const QDBusMessage& reply)
{
    if (reply.type() != QDBusMessage::ReplyMessage) {
        qWarning("%s: %s", qPrintable(reply.errorName()), qPrintable(reply.errorMessage()));
        return {QStringLiteral("(error)")};
    }
    return reply.arguments().constFirst().toStringList();
}

// A serialised icon, (sv), as "kind: value, value…".
QString iconOf(const QVariant& value)
{
    const auto argument = value.value<QDBusArgument>();
    QString kind;
    QDBusVariant data;
    argument.beginStructure();
    argument >> kind >> data;
    argument.endStructure();
    const QVariant inner = data.variant();
    return kind + QStringLiteral(": ") +
           (inner.canConvert<QStringList>() ? inner.toStringList().join(QStringLiteral(", "))
                                            : inner.toString());
}

} // namespace

class ShellSearchProviderTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        qDBusRegisterMetaType<QList<QVariantMap>>();
        QVERIFY2(m_display.start(), qPrintable(m_display.errorString()));
    }

    void init()
    {
        m_stub = std::make_unique<StubLaunches>();
        auto environment = m_stub->environment();
        environment.insert(QStringLiteral("VENDEL_HOST_DATA_DIR"), m_stub->dataDirectory());
        // The window that LaunchSearch opens shows on this test's X server; the bus, started by the test's
        // runner, would hand its offscreen platform on.
        environment.insert(QStringLiteral("DISPLAY"), m_display.name());
        environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
        QVERIFY(ActivatedHost::setEnvironment(environment));
        m_stub->installStub();
        HostStorage storage(m_stub->dataDirectory());
        storage.recordPlugin({QStringLiteral("pictured"), StubLaunches::stub(), QStringLiteral("Pictured"),
                              QStringLiteral("/usr/share/pixmaps/pictured.png")});
        for (const QString& title :
             {QStringLiteral("Road Trip"), QStringLiteral("Car Road"), QStringLiteral("road"),
              QStringLiteral("Railroad"), QStringLiteral("Focus")}) {
            m_ids.insert(title, storage.createAction(QStringLiteral("stub"), title));
        }
        m_ids.insert(QStringLiteral("Picture"),
                     storage.createAction(QStringLiteral("pictured"), QStringLiteral("Picture")));
    }

    void cleanup()
    {
        if (m_window > 0) {
            ::kill(pid_t(m_window), SIGKILL);
            m_window = 0;
        }
        QVERIFY(ActivatedHost::stop());
        m_ids.clear();
        m_stub.reset();
    }

    // GNOME Shell calls the provider with its own description of the interface, which Debian's
    // gnome-shell-common installs; the live object must be exactly that, and our copy too.
    void theLiveInterfaceIsGnomeShellsOwn()
    {
        QVERIFY(!ActivatedHost::pid());
        const QByteArray live = introspection(QStringLiteral("org.vendel.Host"), providerPath);
        QVERIFY(ActivatedHost::pid() > 0);
        QFile gnome(QStringLiteral("/usr/share/dbus-1/interfaces/org.gnome.ShellSearchProvider2.xml"));
        QVERIFY2(gnome.open(QIODevice::ReadOnly), "gnome-shell-common is not installed; run scripts/setup");
        const QStringList described = interfaceMembers(gnome.readAll(), providerInterface);
        QCOMPARE(described.size(), 5);
        QCOMPARE(interfaceMembers(live, providerInterface), described);
        QFile ours(QStringLiteral(VENDEL_SEARCH_PROVIDER_DESCRIPTION));
        QVERIFY(ours.open(QIODevice::ReadOnly));
        QCOMPARE(interfaceMembers(ours.readAll(), providerInterface), described);
    }

    void theInitialResultsAreRanked()
    {
        QCOMPARE(resultsOf(providerCall(QStringLiteral("GetInitialResultSet"),
                                        {QStringList{QStringLiteral("ROAD")}})),
                 ids({QStringLiteral("road"), QStringLiteral("Road Trip"), QStringLiteral("Car Road"),
                      QStringLiteral("Railroad")}));
        QCOMPARE(resultsOf(providerCall(QStringLiteral("GetInitialResultSet"),
                                        {QStringList{QStringLiteral("trip"), QStringLiteral("róad")}})),
                 ids({QStringLiteral("Road Trip")}));
    }

    void aSubsearchLooksOnlyAmongThePreviousResults()
    {
        const QStringList previous =
            ids({QStringLiteral("Car Road"), QStringLiteral("Railroad"), QStringLiteral("Focus")});
        QCOMPARE(resultsOf(providerCall(QStringLiteral("GetSubsearchResultSet"),
                                        {previous, QStringList{QStringLiteral("road")}})),
                 ids({QStringLiteral("Car Road"), QStringLiteral("Railroad")}));
        QCOMPARE(resultsOf(providerCall(
                     QStringLiteral("GetSubsearchResultSet"),
                     {QStringList{QStringLiteral("nope")}, QStringList{QStringLiteral("road")}})),
                 QStringList());
    }

    void longSearchesAndManyTermsFindNothing()
    {
        QCOMPARE(
            resultsOf(providerCall(QStringLiteral("GetInitialResultSet"), {QStringList{QString(257, u'r')}})),
            QStringList());
        QStringList terms(17, QStringLiteral("d"));
        QCOMPARE(resultsOf(providerCall(QStringLiteral("GetInitialResultSet"), {terms})), QStringList());
        terms.removeLast();
        QCOMPARE(resultsOf(providerCall(QStringLiteral("GetInitialResultSet"), {terms})).size(), 4);
    }

    void metasGiveTitlesPluginsAndSerialisedIcons()
    {
        const QDBusMessage reply =
            providerCall(QStringLiteral("GetResultMetas"),
                         {QStringList{m_ids.value(QStringLiteral("Picture")), QStringLiteral("gone"),
                                      m_ids.value(QStringLiteral("Focus"))}});
        QCOMPARE(reply.signature(), QStringLiteral("aa{sv}"));
        const auto metas = qdbus_cast<QList<QVariantMap>>(reply.arguments().constFirst());
        // An identifier the host does not know is left out.
        QCOMPARE(metas.size(), 2);
        QMap<QString, QVariantMap> byId;
        for (const QVariantMap& meta : metas) {
            QCOMPARE(QStringList(meta.keys()),
                     (QStringList{QStringLiteral("description"), QStringLiteral("icon"), QStringLiteral("id"),
                                  QStringLiteral("name")}));
            byId.insert(meta.value(QStringLiteral("id")).toString(), meta);
        }
        const QVariantMap focus = byId.value(m_ids.value(QStringLiteral("Focus")));
        QCOMPARE(focus.value(QStringLiteral("name")).toString(), QStringLiteral("Focus"));
        QCOMPARE(focus.value(QStringLiteral("description")).toString(), QStringLiteral("Stub Player"));
        QCOMPARE(iconOf(focus.value(QStringLiteral("icon"))),
                 QStringLiteral("themed: stub-player, application-x-executable"));
        const QVariantMap picture = byId.value(m_ids.value(QStringLiteral("Picture")));
        QCOMPARE(iconOf(picture.value(QStringLiteral("icon"))),
                 QStringLiteral("file: file:///usr/share/pixmaps/pictured.png"));
    }

    void moreThanFiftyIdentifiersAreRefused()
    {
        QStringList identifiers(50, m_ids.value(QStringLiteral("Focus")));
        QCOMPARE(providerCall(QStringLiteral("GetResultMetas"), {identifiers}).type(),
                 QDBusMessage::ReplyMessage);
        identifiers.append(m_ids.value(QStringLiteral("Focus")));
        QCOMPARE(providerCall(QStringLiteral("GetResultMetas"), {identifiers}).errorName(),
                 QStringLiteral("org.freedesktop.DBus.Error.InvalidArgs"));
    }

    void activatingAResultRunsItsAction()
    {
        const QString id = m_ids.value(QStringLiteral("Road Trip"));
        QCOMPARE(providerCall(QStringLiteral("ActivateResult"), {id, QStringList{QStringLiteral("road")}, 0u})
                     .type(),
                 QDBusMessage::ReplyMessage);
        QTRY_COMPARE_WITH_TIMEOUT(m_stub->contents(QStringLiteral("record")),
                                  QStringLiteral("vendelplugin://run/%1\n").arg(id), generousMs);
        QCOMPARE(providerCall(QStringLiteral("ActivateResult"), {QStringLiteral("nope"), QStringList(), 0u})
                     .errorName(),
                 QStringLiteral("org.vendel.Actions1.Error.NoSuchAction"));
        QCOMPARE(m_stub->contents(QStringLiteral("record")).count(u'\n'), 1);
    }

    // The terms reach the window after "--": one that looks like an option is a word of the filter.
    void launchingTheSearchOpensTheWindowFiltered()
    {
        QCOMPARE(providerCall(QStringLiteral("LaunchSearch"),
                              {QStringList{QStringLiteral("road"), QStringLiteral("--help")}, 0u})
                     .type(),
                 QDBusMessage::ReplyMessage);
        const XKeyboard keyboard(m_display.name());
        const QString window = keyboard.waitForWindow(0, QStringLiteral("Vendel Actions"), generousMs);
        QVERIFY2(!window.isEmpty(), qPrintable(keyboard.errorString()));
        m_window = keyboard.processOf(window);
        QFile commandLine(QStringLiteral("/proc/%1/cmdline").arg(m_window));
        QVERIFY(commandLine.open(QIODevice::ReadOnly));
        QCOMPARE(QString::fromUtf8(commandLine.readAll()).split(u'\0', Qt::SkipEmptyParts),
                 (QStringList{QStringLiteral(VENDEL_HOST_WINDOW), QStringLiteral("--filter=road --help")}));
        QCOMPARE(providerCall(QStringLiteral("LaunchSearch"), {QStringList(17, QStringLiteral("r")), 0u})
                     .errorName(),
                 QStringLiteral("org.freedesktop.DBus.Error.InvalidArgs"));
    }

    // GNOME Shell shows a provider only when its key file names a desktop entry that it would show.
    void theKeyFileNamesTheWindowsVisibleEntry()
    {
        QSettings keyFile(QStringLiteral(VENDEL_SEARCH_PROVIDER_KEY_FILE), QSettings::IniFormat);
        keyFile.beginGroup(QStringLiteral("Shell Search Provider"));
        QCOMPARE(keyFile.value(QStringLiteral("BusName")).toString(), QStringLiteral("org.vendel.Host"));
        QCOMPARE(keyFile.value(QStringLiteral("ObjectPath")).toString(), providerPath);
        QCOMPARE(keyFile.value(QStringLiteral("Version")).toString(), QStringLiteral("2"));
        const QString desktopId = keyFile.value(QStringLiteral("DesktopId")).toString();
        QCOMPARE(desktopId, QStringLiteral("org.vendel.Actions.desktop"));
        const QString entryPath = QStringLiteral(VENDEL_APPLICATIONS_DIRECTORY) + u'/' + desktopId;
        QVERIFY2(QFile::exists(entryPath), qPrintable(entryPath));
        QSettings entry(entryPath, QSettings::IniFormat);
        entry.beginGroup(QStringLiteral("Desktop Entry"));
        QCOMPARE(entry.value(QStringLiteral("Type")).toString(), QStringLiteral("Application"));
        QCOMPARE(entry.value(QStringLiteral("NoDisplay"), QStringLiteral("false")).toString(),
                 QStringLiteral("false"));
        QCOMPARE(entry.value(QStringLiteral("Hidden"), QStringLiteral("false")).toString(),
                 QStringLiteral("false"));
        QVERIFY(!entry.contains(QStringLiteral("OnlyShowIn")) &&
                !entry.contains(QStringLiteral("NotShowIn")));
        QVERIFY(entry.value(QStringLiteral("Exec")).toString().endsWith(QStringLiteral(" window")));
    }

private:
    QStringList ids(const QStringList& titles) const
    {
        QStringList found;
        for (const QString& title : titles) {
            found.append(m_ids.value(title));
        }
        return found;
    }

    XvfbDisplay m_display;
    std::unique_ptr<StubLaunches> m_stub;
    QHash<QString, QString> m_ids;
    qint64 m_window = 0;
};

QTEST_GUILESS_MAIN(ShellSearchProviderTest)
#include "ShellSearchProviderTest.moc"
