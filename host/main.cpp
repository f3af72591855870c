// The vendel-host executable: hands its command line to the CLI.
#include "HostCli.h"

#include <QCoreApplication>

#include <cstdio>

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    QTextStream out(stdout);
    QTextStream err(stderr);
    // The bytes as given: Qt's own decoding would turn invalid UTF-8 into stand-in characters unseen.
    QList<QByteArray> arguments;
    for (int index = 1; index < argc; ++index) {
        arguments.append(QByteArray(argv[index]));
    }
    return VendelHost::HostCli(out, err).run(arguments);
}
