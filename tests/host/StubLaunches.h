// A test's own folder for the host's data and the stub plugin's launches: where the stub records how it was
// launched and that it ended, and the FIFO that holds its launches (see TestPluginStub.cpp).
#pragma once

#include "HeldLaunches.h"

#include <QHash>
#include <QString>
#include <QTemporaryDir>

namespace VendelHost::Testing {

class StubLaunches
{
public:
    StubLaunches();
    ~StubLaunches();
    StubLaunches(const StubLaunches&) = delete;
    StubLaunches& operator=(const StubLaunches&) = delete;

    // The stub plugin's executable.
    static QString stub();

    QString path(const QString& name) const { return m_folder.filePath(name); }
    // The host's data folder, inside this one.
    QString dataDirectory() const { return path(QStringLiteral("data")); }
    // The text of a file inside this folder; empty when there is none. The stub writes "record" (each
    // launch's URL) and "done" (each launch's URL once it has stopped waiting).
    QString contents(const QString& name) const;
    HeldLaunches& held() { return m_held; }
    // VENDEL_STUB_RECORD, VENDEL_STUB_DONE and VENDEL_STUB_HOLD, for the stub plugins the host starts.
    QHash<QString, QString> environment() const;
    // The same in this process's environment, for a host that the test starts itself and that passes its own
    // on to the plugins; the destructor takes them out again.
    void exportEnvironment() const;
    // Records the stub in the host's data as the installed plugin "stub", shown as "Stub Player".
    void installStub() const;

private:
    QTemporaryDir m_folder;
    HeldLaunches m_held;
};

} // namespace VendelHost::Testing
