// Tests the link label: the linked text in the link colour at the system font size, the click that opens
// the address, and the plain label that an empty or invalid link leaves.
#include "LinkLabel.h"

#include <QApplication>
#include <QDesktopServices>
#include <QFontDatabase>
#include <QSignalSpy>
#include <QTest>
#include <QTextBlock>
#include <QTextDocument>

#include <memory>

using namespace MusicPlugin;

namespace {

const QUrl website(QStringLiteral("https://vendel.example/plugins/music"));

// One run of text as the rich text lays it out.
struct Run
{
    QString text;
    QTextCharFormat format;
};

QList<Run> runsOf(const QString& html)
{
    QTextDocument document;
    document.setHtml(html);
    QList<Run> runs;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            runs.append({it.fragment().text(), it.fragment().charFormat()});
        }
    }
    return runs;
}

qreal systemPointSize()
{
    return QFontDatabase::systemFont(QFontDatabase::GeneralFont).pointSizeF();
}

} // namespace

// Takes the URLs that the desktop would open.
class UrlCatcher : public QObject
{
    Q_OBJECT

public:
    QList<QUrl> opened;

public Q_SLOTS:
    void open(const QUrl& url) { opened.append(url); }
};

class LinkLabelTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void linkedLabelShowsItsTextInTheLinkColourAtTheSystemSize()
    {
        LinkLabel label(QStringLiteral("Website"));
        QVERIFY(label.setProperty("link", website.toString()));
        label.awakeFromNib();
        QCOMPARE(label.textFormat(), Qt::RichText);
        QCOMPARE(label.text(),
                 LinkLabel::makeLinkText(QStringLiteral("Website"), QStringLiteral("Website"), website));
        const QList<Run> runs = runsOf(label.text());
        QCOMPARE(runs.size(), 1);
        QCOMPARE(runs.first().text, QStringLiteral("Website"));
        QVERIFY(runs.first().format.isAnchor());
        QCOMPARE(QUrl(runs.first().format.anchorHref()), website);
        QCOMPARE(runs.first().format.foreground().color(), QGuiApplication::palette().color(QPalette::Link));
        QCOMPARE(runs.first().format.font().pointSizeF(), systemPointSize());
        QVERIFY(label.textInteractionFlags().testFlag(Qt::TextSelectableByMouse));
        QVERIFY(label.textInteractionFlags().testFlag(Qt::LinksAccessibleByMouse));
        QVERIFY(label.textInteractionFlags().testFlag(Qt::LinksAccessibleByKeyboard));
        QCOMPARE(label.accessibleName(), QStringLiteral("Website"));
    }

    void clickingTheLinkOpensTheAddress()
    {
        UrlCatcher catcher;
        QDesktopServices::setUrlHandler(QStringLiteral("https"), &catcher, "open");
        LinkLabel label(QStringLiteral("Website"));
        label.setLink(website.toString());
        label.awakeFromNib();
        label.resize(label.sizeHint());
        label.show();
        QVERIFY(QTest::qWaitForWindowExposed(&label));
        QTest::mouseClick(&label, Qt::LeftButton, Qt::NoModifier, QPoint(6, label.height() / 2));
        QDesktopServices::unsetUrlHandler(QStringLiteral("https"));
        QCOMPARE(catcher.opened, QList<QUrl>{website});
    }

    void emptyLinkKeepsThePlainLook_data()
    {
        QTest::addColumn<QString>("link");
        QTest::newRow("empty") << QString();
        QTest::newRow("invalid") << QStringLiteral("http://exa mple.com");
    }

    void emptyLinkKeepsThePlainLook()
    {
        QFETCH(QString, link);
        LinkLabel label(QStringLiteral("Website <plain>"));
        label.setLink(link);
        const auto flags = label.textInteractionFlags();
        label.awakeFromNib();
        QCOMPARE(label.text(), QStringLiteral("Website <plain>"));
        QCOMPARE(label.textFormat(), Qt::PlainText);
        QCOMPARE(label.textInteractionFlags(), flags);
        QVERIFY(!label.textInteractionFlags().testFlag(Qt::TextSelectableByMouse));
        QVERIFY(!label.openExternalLinks());
    }

    void laterLinkChangesDoNotChangeTheText()
    {
        LinkLabel label(QStringLiteral("Website"));
        label.setLink(website.toString());
        label.awakeFromNib();
        const QString shown = label.text();
        label.setLink(QStringLiteral("https://elsewhere.example/"));
        QCOMPARE(label.text(), shown);
        QCOMPARE(label.link(), QStringLiteral("https://elsewhere.example/"));
    }

    void onlyTheFirstOccurrenceIsLinkedAndTextIsNeverMarkup()
    {
        const QString html =
            LinkLabel::makeLinkText(QStringLiteral("<b>Docs</b> & Docs"), QStringLiteral("Docs"), website);
        const QList<Run> runs = runsOf(html);
        QString all;
        for (const Run& run : runs) {
            all += run.text;
            QCOMPARE(run.format.font().pointSizeF(), systemPointSize());
            QVERIFY(!run.format.font().bold());
        }
        QCOMPARE(all, QStringLiteral("<b>Docs</b> & Docs"));
        QStringList linked;
        for (const Run& run : runs) {
            if (run.format.isAnchor()) {
                linked.append(run.text);
            }
        }
        QCOMPARE(linked, QStringList{QStringLiteral("Docs")});
        QCOMPARE(runs.at(0).text, QStringLiteral("<b>"));
        QVERIFY(runs.at(1).format.isAnchor());
    }

    void textWithoutTheLinkedPartLinksNothing()
    {
        const QList<Run> runs =
            runsOf(LinkLabel::makeLinkText(QStringLiteral("About"), QStringLiteral("Website"), website));
        QCOMPARE(runs.size(), 1);
        QCOMPARE(runs.first().text, QStringLiteral("About"));
        QVERIFY(!runs.first().format.isAnchor());
    }
};

QTEST_MAIN(LinkLabelTest)
#include "LinkLabelTest.moc"
