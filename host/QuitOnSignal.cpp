// The host's policy on top of the shared self-pipe: SIGTERM and SIGINT quit the event loop, every time.
#include "QuitOnSignal.h"

#include "SignalPipe.h"

#include <QCoreApplication>

#include <csignal>

namespace VendelHost {

namespace {

const int quitSignals[] = {SIGTERM, SIGINT};

} // namespace

QuitOnSignal::QuitOnSignal(QObject* parent)
    : QObject(parent),
      m_pipe(std::make_unique<Vendel::SignalPipe>(quitSignals, Vendel::SignalPipe::Repeat::reported))
{
    connect(m_pipe.get(), &Vendel::SignalPipe::received, this, [] { QCoreApplication::quit(); });
}

QuitOnSignal::~QuitOnSignal() = default;

} // namespace VendelHost
