// The link is rich text that the label opens with the desktop's handler; the label has no click code.
#include "LinkLabel.h"

#include <QFontDatabase>
#include <QGuiApplication>
#include <QPalette>

namespace MusicPlugin {

namespace {

// The system font as a style, so that the rich text does not take the label's own font.
QString systemFontStyle()
{
    const QFont font = QFontDatabase::systemFont(QFontDatabase::GeneralFont);
    const QString size = font.pointSizeF() > 0 ? QStringLiteral("%1pt").arg(font.pointSizeF())
                                               : QStringLiteral("%1px").arg(font.pixelSize());
    return QStringLiteral("font-family:'%1'; font-size:%2;").arg(font.family().toHtmlEscaped(), size);
}

} // namespace

LinkLabel::LinkLabel(QWidget* parent) : LinkLabel(QString(), parent) {}

LinkLabel::LinkLabel(const QString& text, QWidget* parent) : QLabel(text, parent)
{
    // Until it is linked, the text is shown as it is, never read as markup.
    setTextFormat(Qt::PlainText);
}

void LinkLabel::awakeFromNib()
{
    const QUrl url(m_link, QUrl::StrictMode);
    if (m_link.isEmpty() || !url.isValid()) {
        return;
    }
    const QString plain = text();
    if (accessibleName().isEmpty()) {
        setAccessibleName(plain);
    }
    // Links in a label are clickable only when the label lets the mouse and the keyboard reach them.
    setTextInteractionFlags(Qt::TextBrowserInteraction);
    setOpenExternalLinks(true);
    setTextFormat(Qt::RichText);
    setText(makeLinkText(plain, plain, url));
}

QString LinkLabel::makeLinkText(const QString& text, const QString& linkedText, const QUrl& url)
{
    const QString fontStyle = systemFontStyle();
    const qsizetype start = text.indexOf(linkedText);
    if (start < 0) {
        return QStringLiteral("<span style=\"%1\">%2</span>").arg(fontStyle, text.toHtmlEscaped());
    }
    const QString linkColour = QGuiApplication::palette().color(QPalette::Link).name();
    return QStringLiteral("<span style=\"%1\">%2<a href=\"%3\" style=\"color:%4; %1\">%5</a>%6</span>")
        .arg(fontStyle, text.left(start).toHtmlEscaped(), url.toString(QUrl::FullyEncoded).toHtmlEscaped(),
             linkColour, text.mid(start, linkedText.size()).toHtmlEscaped(),
             text.mid(start + linkedText.size()).toHtmlEscaped());
}

} // namespace MusicPlugin
