// The vendel-host executable: hands its command line to the CLI.
#include "HostCli.h"

#include <QCoreApplication>

#include <cstdio>

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    QTextStream out(stdout);
    QTextStream err(stderr);
    return VendelHost::HostCli(out, err).run(QCoreApplication::arguments().mid(1));
}
