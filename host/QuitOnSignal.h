// Ends the event loop on SIGTERM or SIGINT, so that a served host closes its database and exits normally.
#pragma once

#include <QObject>

#include <memory>

namespace Vendel {
class SignalPipe;
}

namespace VendelHost {

class QuitOnSignal : public QObject
{
    Q_OBJECT

public:
    // Only one may exist at a time: the signal handlers are process-wide.
    explicit QuitOnSignal(QObject* parent = nullptr);
    ~QuitOnSignal() override;

private:
    std::unique_ptr<Vendel::SignalPipe> m_pipe;
};

} // namespace VendelHost
