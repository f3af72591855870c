// A server program that a test runs in a private folder: its output kept there, and ended with the test.
#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <initializer_list>

namespace VendelSDK::Testing {

class ServerProcess
{
public:
    // Makes a temporary folder named after the server, with these subfolders.
    ServerProcess(const char* name, std::initializer_list<const char*> subfolders);
    ~ServerProcess();
    ServerProcess(const ServerProcess&) = delete;
    ServerProcess& operator=(const ServerProcess&) = delete;

    QString folder() const { return m_directory.path(); }
    // A path inside the private folder.
    QString filePath(const QString& relativePath) const;
    // Starts the program; on failure, says why in `error`.
    bool start(const QString& program, const QStringList& arguments, QString& error);
    // Asks the server to end, and kills it when it does not within ten seconds.
    void stop();
    bool isRunning() const;
    qint64 processId() const { return m_process.processId(); }
    // The end of the server's output and of these files of the folder, for the message of a failed check.
    QString tail(std::initializer_list<const char*> files = {}) const;

private:
    QTemporaryDir m_directory;
    QProcess m_process;
};

} // namespace VendelSDK::Testing
