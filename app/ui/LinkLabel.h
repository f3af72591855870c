// A text label that turns its own text into a link to the address that the interface file gives it.
#pragma once

#include <QLabel>
#include <QString>
#include <QUrl>

namespace MusicPlugin {

class LinkLabel : public QLabel
{
    Q_OBJECT
    // Read once, by awakeFromNib(); a later change does not change the text shown.
    Q_PROPERTY(QString link READ link WRITE setLink)

public:
    explicit LinkLabel(QWidget* parent = nullptr);
    explicit LinkLabel(const QString& text, QWidget* parent = nullptr);

    const QString& link() const { return m_link; }
    void setLink(const QString& link) { m_link = link; }

    // Called once the form has set the text and the link: with a valid address the whole text becomes a
    // clickable link; otherwise the label stays plain.
    void awakeFromNib();

    // Rich text of `text` in the system font, with the first occurrence of `linkedText` linked to `url` in
    // the system link colour. Without an occurrence nothing is linked.
    static QString makeLinkText(const QString& text, const QString& linkedText, const QUrl& url);

private:
    QString m_link;
};

} // namespace MusicPlugin
