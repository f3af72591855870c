// Holds a lock on a host database from the test, as another process's long write or set-up would.
#pragma once

#include <QString>
#include <QStringList>

namespace VendelHost::Testing {

class DatabaseLock
{
public:
    enum class Kind
    {
        // The write lock of a write-ahead log: readers go on, writers wait.
        Write,
        // Everything waits, as while a database still in its first journal mode is written.
        Exclusive,
    };

    // Opens the database (creating the file when missing), runs the statements, then takes the lock.
    // Fails the test's QVERIFY when it cannot; check isHeld().
    DatabaseLock(const QString& databasePath, Kind kind, const QStringList& statements = {});
    ~DatabaseLock();
    DatabaseLock(const DatabaseLock&) = delete;
    DatabaseLock& operator=(const DatabaseLock&) = delete;

    bool isHeld() const { return m_held; }
    // Commits what was done under the lock and lets the others go.
    void release();

private:
    QString m_connectionName;
    bool m_held = false;
};

} // namespace VendelHost::Testing
