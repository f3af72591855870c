// A tiny host behind the fake script engine: stores what "set config" sends and answers "get config" with it.
#pragma once

#include "FakeScriptEngine.h"

#include <QElapsedTimer>
#include <QHash>
#include <QList>
#include <QObject>

namespace VendelSDK::Testing {

class FakeHost : public QObject
{
    Q_OBJECT

public:
    struct Write
    {
        // The action identifier, or the bundle identifier for the global configuration.
        QString key;
        // The configuration text as the host understood it, with the script escaping undone.
        QString text;
        // Milliseconds since the host was made.
        qint64 atMs = 0;
    };

    // Answers every source that the engine runs from now on.
    explicit FakeHost(FakeScriptEngine& engine);

    // Stored texts by action identifier, and the global ones by bundle identifier; missing means "".
    QHash<QString, QString> configs;
    QHash<QString, QString> globalConfigs;
    QList<Write> writes;
    // Whether reading and writing commands fail as an unreachable host makes them fail.
    bool failReads = false;
    bool failWrites = false;
    // Answer reads with no result at all, as a host that printed nothing.
    bool answerReadsWithNothing = false;

    QElapsedTimer clock;

Q_SIGNALS:
    void written(const QString& key, const QString& text);

private:
    ScriptOutcome answer(const QString& source);
    ScriptOutcome read(const QString& text);
    ScriptOutcome store(QHash<QString, QString>& table, const QString& key, const QString& text);
};

} // namespace VendelSDK::Testing
