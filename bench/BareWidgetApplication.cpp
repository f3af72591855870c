// The yardstick of the edit-window benchmark: a Qt widget application that shows one window and waits.
#include <QApplication>
#include <QLabel>

int main(int argc, char* argv[])
{
    QApplication app(argc, argv);
    QLabel window(QStringLiteral("One widget"));
    window.setWindowTitle(QStringLiteral("Bare Window"));
    window.setMargin(40);
    window.show();
    return app.exec();
}
