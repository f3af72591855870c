// Data folders of the test's own for the XDG lookups of desktop entries, with entries written into them.
#pragma once

#include <QByteArray>
#include <QString>
#include <QTemporaryDir>

namespace VendelHost::Testing {

class XdgDataFolders
{
public:
    // Points XDG_DATA_HOME and XDG_DATA_DIRS (two folders) at empty folders, for the test and its children;
    // the destructor puts the environment back.
    XdgDataFolders();
    ~XdgDataFolders();
    XdgDataFolders(const XdgDataFolders&) = delete;
    XdgDataFolders& operator=(const XdgDataFolders&) = delete;

    enum Folder
    {
        Home,
        FirstSystem,
        SecondSystem,
    };
    // Writes applications/<file name> in the folder.
    void writeEntry(Folder folder, const QString& fileName, const QByteArray& contents);
    // A plain application entry with this name and icon.
    static QByteArray entry(const QByteArray& name, const QByteArray& icon);

private:
    QString path(Folder folder) const;

    QTemporaryDir m_root;
    QByteArray m_previousHome;
    QByteArray m_previousDirs;
    bool m_hadHome;
    bool m_hadDirs;
};

} // namespace VendelHost::Testing
