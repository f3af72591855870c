// Tests the display-less alert: message text, then the informative text on its own line when present.
#include <VendelSDK/StderrAlertPresenter.h>

#include <QTest>

#include <cstdio>

using namespace VendelSDK;

namespace {

QByteArray shown(const Alert& alert)
{
    std::FILE* stream = std::tmpfile();
    StderrAlertPresenter presenter(stream);
    const int answer = presenter.runModal(alert);
    std::rewind(stream);
    QByteArray text;
    for (int c = std::fgetc(stream); c != EOF; c = std::fgetc(stream)) {
        text.append(char(c));
    }
    std::fclose(stream);
    return answer == 0 ? text : QByteArray("unexpected answer");
}

} // namespace

class StderrAlertPresenterTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void messageThenInformativeTextOnTheNextLine()
    {
        QCOMPARE(shown(Alert{QStringLiteral("Could not run script"), QStringLiteral("It looks like…"), {}}),
                 QByteArray("Could not run script\nIt looks like\xe2\x80\xa6\n"));
    }

    void emptyInformativeTextPrintsOneLine()
    {
        QCOMPARE(shown(Alert{QStringLiteral("This plugin must be run by Vendel app."),
                             QString(),
                             {QStringLiteral("OK")}}),
                 QByteArray("This plugin must be run by Vendel app.\n"));
    }

    void countsEveryAlertItWrote()
    {
        std::FILE* stream = std::tmpfile();
        StderrAlertPresenter presenter(stream);
        QCOMPARE(presenter.shownCount(), 0);
        presenter.runModal(Alert{QStringLiteral("First"), QString(), {}});
        presenter.runModal(Alert{QStringLiteral("Second"), QString(), {}});
        std::fclose(stream);
        QCOMPARE(presenter.shownCount(), 2);
    }
};

QTEST_GUILESS_MAIN(StderrAlertPresenterTest)
#include "StderrAlertPresenterTest.moc"
