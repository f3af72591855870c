// The one error type of the host: a sentence for the person or the D-Bus client that asked.
#pragma once

#include <QByteArray>
#include <QString>

#include <exception>

namespace VendelHost {

class HostError : public std::exception
{
public:
    explicit HostError(QString message) : m_message(std::move(message)), m_what(m_message.toUtf8()) {}

    const QString& message() const { return m_message; }
    const char* what() const noexcept override { return m_what.constData(); }

private:
    QString m_message;
    QByteArray m_what;
};

} // namespace VendelHost
