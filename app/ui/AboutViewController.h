// The about panel: the application's icon, name, copyright and version, filled once from the bundle.
#pragma once

#include <QLabel>
#include <QObject>
#include <QPointer>

namespace MusicPlugin {

class AboutViewController : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    // Outlets: the form's views; the panel does not own them.
    QPointer<QLabel> icon;
    QPointer<QLabel> name;
    QPointer<QLabel> copyright;
    QPointer<QLabel> version;

    // Fills the views from the application's icon and the main bundle's information. A missing outlet is
    // a mistake in the form and stops the process.
    void viewDidLoad();

    // "Version: 1.2 (34)" for short version 1.2 and build 34.
    static QString versionLine(const QString& shortVersion, const QString& build);
};

} // namespace MusicPlugin
