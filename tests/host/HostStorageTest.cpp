// Tests the host's SQLite storage on temporary folders: what it keeps, and how it refuses bad folders.
#include "HostStorage.h"
#include "HostError.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

#include <atomic>
#include <thread>

using namespace VendelHost;

namespace {

// The error message of constructing storage on the folder, or the empty text when it opened.
QString openingError(const QString& folder)
{
    try {
        HostStorage storage(folder);
        return {};
    } catch (const HostError& error) {
        return error.message();
    }
}

} // namespace

class HostStorageTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void createsTheFolderTheDatabaseAndThePluginFolder()
    {
        QTemporaryDir temporary;
        const QString folder = temporary.filePath(QStringLiteral("nested/data"));
        HostStorage storage(folder);
        QCOMPARE(storage.dataDirectory(), folder);
        QVERIFY(QFileInfo(storage.databasePath()).isFile());
        QCOMPARE(storage.pluginFolder(), folder + QStringLiteral("/plugins"));
        QVERIFY(QFileInfo(storage.pluginFolder()).isDir());
        QVERIFY(storage.actions().isEmpty());
    }

    void theDataFolderVariableMovesTheDefaultFolder()
    {
        qputenv("VENDEL_HOST_DATA_DIR", "/tmp/somewhere");
        QCOMPARE(HostStorage::defaultDataDirectory(), QStringLiteral("/tmp/somewhere"));
        qunsetenv("VENDEL_HOST_DATA_DIR");
        QVERIFY(HostStorage::defaultDataDirectory().endsWith(QStringLiteral("/vendel")));
    }

    void keepsActionsAndTheirConfigurationAcrossReopening()
    {
        QTemporaryDir temporary;
        QString first;
        QString second;
        {
            HostStorage storage(temporary.path());
            first = storage.createAction(QStringLiteral("music"));
            second = storage.createAction(QStringLiteral("other"));
            QVERIFY(first != second);
            QCOMPARE(storage.action(first)->config, QString());
            QVERIFY(
                storage.setConfig(first, QStringLiteral("{\"action\":0,\"name\":\"Road \\\"Trip\\\"\"}")));
        }
        HostStorage storage(temporary.path());
        const auto actions = storage.actions();
        QCOMPARE(actions.size(), 2);
        QCOMPARE(actions.at(0).id, first);
        QCOMPARE(actions.at(0).plugin, QStringLiteral("music"));
        QCOMPARE(actions.at(0).config, QStringLiteral("{\"action\":0,\"name\":\"Road \\\"Trip\\\"\"}"));
        QCOMPARE(actions.at(1).id, second);
        QCOMPARE(actions.at(1).config, QString());
    }

    void aConfigurationForAnUnknownActionIsNotWritten()
    {
        QTemporaryDir temporary;
        HostStorage storage(temporary.path());
        QVERIFY(!storage.setConfig(QStringLiteral("nope"), QStringLiteral("{}")));
        QVERIFY(!storage.action(QStringLiteral("nope")));
        QVERIFY(storage.actions().isEmpty());
    }

    void anEmptyConfigurationIsStoredHoweverItsTextWasMade()
    {
        QTemporaryDir temporary;
        HostStorage storage(temporary.path());
        const QString id = storage.createAction(QStringLiteral("music"));
        QVERIFY(storage.setConfig(id, QStringLiteral("{}")));
        // A null text, as a decoder may make of an empty string, is the empty configuration, not a failure.
        QVERIFY(storage.setConfig(id, QString()));
        QCOMPARE(storage.action(id)->config, QString());
        storage.setGlobalConfig(QStringLiteral("org.vendel.music"), QString());
        QCOMPARE(storage.globalConfig(QStringLiteral("org.vendel.music")), QString());
    }

    void keepsGlobalConfigurationsPerBundle()
    {
        QTemporaryDir temporary;
        HostStorage storage(temporary.path());
        QCOMPARE(storage.globalConfig(QStringLiteral("org.vendel.music")), QString());
        storage.setGlobalConfig(QStringLiteral("org.vendel.music"), QStringLiteral("{\"a\":1}"));
        storage.setGlobalConfig(QStringLiteral("org.vendel.other"), QStringLiteral("{\"b\":2}"));
        storage.setGlobalConfig(QStringLiteral("org.vendel.music"), QStringLiteral("{\"a\":3}"));
        QCOMPARE(storage.globalConfig(QStringLiteral("org.vendel.music")), QStringLiteral("{\"a\":3}"));
        QCOMPARE(storage.globalConfig(QStringLiteral("org.vendel.other")), QStringLiteral("{\"b\":2}"));
    }

    void aPluginOfTheSameNameReplacesTheEarlierOne()
    {
        QTemporaryDir temporary;
        HostStorage storage(temporary.path());
        storage.recordPlugin({QStringLiteral("zeta"), QStringLiteral("/opt/zeta")});
        storage.recordPlugin({QStringLiteral("music"), QStringLiteral("/old/music")});
        storage.recordPlugin({QStringLiteral("music"), QStringLiteral("/new/music")});
        QCOMPARE(storage.plugin(QStringLiteral("music"))->path, QStringLiteral("/new/music"));
        QVERIFY(!storage.pluginWithPath(QStringLiteral("/old/music")));
        QCOMPARE(storage.pluginWithPath(QStringLiteral("/new/music"))->name, QStringLiteral("music"));
        QVERIFY(!storage.plugin(QStringLiteral("nope")));
        const auto plugins = storage.plugins();
        QCOMPARE(plugins.size(), 2);
        QCOMPARE(plugins.at(0).name, QStringLiteral("music"));
        QCOMPARE(plugins.at(1).name, QStringLiteral("zeta"));
    }

    void keepsResourcesInTheOrderTheyCame()
    {
        QTemporaryDir temporary;
        HostStorage storage(temporary.path());
        const HostResource docs{QStringLiteral("folder"), QStringLiteral("Docs"),
                                QStringLiteral("file:///tmp/docs")};
        const HostResource site{QStringLiteral("website"), QStringLiteral("Site"),
                                QStringLiteral("https://x.test/")};
        const HostResource app{QStringLiteral("application"), QStringLiteral("Ed"),
                               QStringLiteral("file:///usr/bin/ed")};
        storage.addResources({docs, site});
        storage.addResources({});
        storage.addResources({app});
        QCOMPARE(storage.resources(), (QList<HostResource>{docs, site, app}));
    }

    void refusesADataFolderThatIsAFile()
    {
        QTemporaryDir temporary;
        const QString file = temporary.filePath(QStringLiteral("file"));
        QFile(file).open(QIODevice::WriteOnly);
        const QString message = openingError(file);
        QVERIFY2(message.contains(file) && message.contains(QStringLiteral("not a folder")),
                 qPrintable(message));
        QVERIFY(openingError(file + QStringLiteral("/below")).contains(QStringLiteral("Cannot create")));
    }

    void refusesADatabaseThatIsAFolder()
    {
        QTemporaryDir temporary;
        QDir(temporary.path()).mkdir(QStringLiteral("host.sqlite"));
        const QString message = openingError(temporary.path());
        QVERIFY2(message.contains(temporary.filePath(QStringLiteral("host.sqlite"))), qPrintable(message));
    }

    void refusesAFileThatIsNotADatabaseAndLeavesItAlone()
    {
        QTemporaryDir temporary;
        const QString path = temporary.filePath(QStringLiteral("host.sqlite"));
        const QByteArray content(4096, 'x');
        {
            QFile file(path);
            QVERIFY(file.open(QIODevice::WriteOnly));
            file.write(content);
        }
        const QString message = openingError(temporary.path());
        QVERIFY2(message.contains(path) && message.contains(QStringLiteral("not a database")),
                 qPrintable(message));
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), content);
    }

    // Two connections, as the served host and the CLI have, write at once: each waits for the other's
    // transaction instead of failing.
    void twoConnectionsWriteAtOnce()
    {
        QTemporaryDir temporary;
        QString id;
        {
            HostStorage storage(temporary.path());
            id = storage.createAction(QStringLiteral("music"));
        }
        constexpr int writes = 100;
        std::atomic<int> failures = 0;
        const auto writer = [&](const QString& plugin) {
            try {
                HostStorage storage(temporary.path());
                for (int index = 0; index < writes; ++index) {
                    storage.createAction(plugin);
                    if (!storage.setConfig(
                            id, QStringLiteral("{\"by\":\"%1\",\"n\":%2}").arg(plugin).arg(index))) {
                        ++failures;
                    }
                }
            } catch (const HostError& error) {
                qWarning("%s", qPrintable(error.message()));
                ++failures;
            }
        };
        std::thread first(writer, QStringLiteral("first"));
        std::thread second(writer, QStringLiteral("second"));
        first.join();
        second.join();
        QCOMPARE(failures.load(), 0);

        HostStorage storage(temporary.path());
        QCOMPARE(storage.actions().size(), 1 + 2 * writes);
        const QString last = storage.action(id)->config;
        QVERIFY2(last == QStringLiteral("{\"by\":\"first\",\"n\":99}") ||
                     last == QStringLiteral("{\"by\":\"second\",\"n\":99}"),
                 qPrintable(last));
    }
};

QTEST_GUILESS_MAIN(HostStorageTest)
#include "HostStorageTest.moc"
