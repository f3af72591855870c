// The plugin's policy on top of the shared self-pipe: three signals, the first reported once, a second fatal.
#include <VendelSDK/TerminationSignals.h>

#include "SignalPipe.h"

#include <csignal>

namespace VendelSDK {

const std::array<int, 3> TerminationSignals::numbers{SIGTERM, SIGINT, SIGHUP};

TerminationSignals::TerminationSignals(QObject* parent) : QObject(parent)
{
    auto pipe = std::make_unique<Vendel::SignalPipe>(numbers, Vendel::SignalPipe::Repeat::endsProcess);
    connect(pipe.get(), &Vendel::SignalPipe::received, this, [this](int number) {
        if (!m_reported) {
            m_reported = true;
            Q_EMIT received(number);
        }
    });
    m_pipe = std::move(pipe);
}

TerminationSignals::~TerminationSignals() = default;

int TerminationSignals::first() const
{
    return Vendel::SignalPipe::first();
}

int TerminationSignals::descriptor()
{
    return Vendel::SignalPipe::descriptor();
}

void TerminationSignals::deliverPending()
{
    Vendel::SignalPipe::deliver();
}

void TerminationSignals::endAs(int number)
{
    Vendel::SignalPipe::endAs(number);
}

} // namespace VendelSDK
