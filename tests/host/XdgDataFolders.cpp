// Changes the process's environment, which QStandardPaths reads on every lookup and children inherit.
#include "XdgDataFolders.h"

#include <QDir>
#include <QFile>

namespace VendelHost::Testing {

XdgDataFolders::XdgDataFolders()
    : m_previousHome(qgetenv("XDG_DATA_HOME")), m_previousDirs(qgetenv("XDG_DATA_DIRS")),
      m_hadHome(qEnvironmentVariableIsSet("XDG_DATA_HOME")),
      m_hadDirs(qEnvironmentVariableIsSet("XDG_DATA_DIRS"))
{
    for (const Folder folder : {Home, FirstSystem, SecondSystem}) {
        QDir().mkpath(path(folder) + QStringLiteral("/applications"));
    }
    qputenv("XDG_DATA_HOME", QFile::encodeName(path(Home)));
    qputenv("XDG_DATA_DIRS", QFile::encodeName(path(FirstSystem) + u':' + path(SecondSystem)));
}

XdgDataFolders::~XdgDataFolders()
{
    const auto restore = [](const char* name, bool had, const QByteArray& value) {
        if (had) {
            qputenv(name, value);
        } else {
            qunsetenv(name);
        }
    };
    restore("XDG_DATA_HOME", m_hadHome, m_previousHome);
    restore("XDG_DATA_DIRS", m_hadDirs, m_previousDirs);
}

QString XdgDataFolders::path(Folder folder) const
{
    static const char* const names[] = {"home", "system1", "system2"};
    return m_root.filePath(QString::fromLatin1(names[folder]));
}

void XdgDataFolders::writeEntry(Folder folder, const QString& fileName, const QByteArray& contents)
{
    QFile file(path(folder) + QStringLiteral("/applications/") + fileName);
    if (file.open(QIODevice::WriteOnly)) {
        file.write(contents);
    }
}

QByteArray XdgDataFolders::entry(const QByteArray& name, const QByteArray& icon)
{
    return "[Desktop Entry]\nType=Application\nName=" + name + "\nIcon=" + icon +
           "\nExec=true %u\nNoDisplay=true\n";
}

} // namespace VendelHost::Testing
