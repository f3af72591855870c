// The yardstick of the start-up benchmark: a Qt core application that starts, runs its loop once, and exits.
#include <QCoreApplication>
#include <QTimer>

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    QTimer::singleShot(0, &app, &QCoreApplication::quit);
    return app.exec();
}
