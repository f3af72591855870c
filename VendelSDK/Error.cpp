// Error values and the SDK's error factory.
#include <VendelSDK/Error.h>

#include <QCoreApplication>

namespace VendelSDK {

Error::Error(QString domain, qint64 code, QVariantMap userInfo)
    : m_domain(std::move(domain)), m_code(code), m_userInfo(std::move(userInfo))
{
    m_what = QStringLiteral("%1 (%2 error %3)").arg(localizedDescription(), m_domain).arg(m_code).toUtf8();
}

QString Error::localizedDescription() const
{
    const auto description = m_userInfo.value(QString::fromLatin1(localizedDescriptionKey));
    if (description.typeId() == QMetaType::QString) {
        return description.toString();
    }
    //: Generic description of an error that carries no text of its own; %1 is the domain, %2 the code.
    return QCoreApplication::translate("VendelSDK", "The operation couldn’t be completed. (%1 error %2.)")
        .arg(m_domain)
        .arg(m_code);
}

QString Error::localizedFailureReason() const
{
    const auto reason = m_userInfo.value(QString::fromLatin1(localizedFailureReasonKey));
    return reason.typeId() == QMetaType::QString ? reason.toString() : QString();
}

const char* Error::what() const noexcept
{
    return m_what.constData();
}

Error makeError(qint64 code, const QString& description, const QString& failureReason)
{
    return Error(QString::fromLatin1(sdkErrorDomain), code,
                 {{QString::fromLatin1(localizedDescriptionKey), description},
                  {QString::fromLatin1(localizedFailureReasonKey), failureReason}});
}

Error couldNotCreateURLError()
{
    return makeError(qint64(SdkErrorCode::couldNotCreateURL),
                     //: Error
                     QCoreApplication::translate("VendelSDK", "Could not create URL"), QString());
}

Error couldNotRunScriptError()
{
    return makeError(qint64(SdkErrorCode::couldNotRunScript),
                     //: Error
                     QCoreApplication::translate("VendelSDK", "Could not run script"),
                     //: No Vendel 2 or disallowed.
                     QCoreApplication::translate(
                         "VendelSDK", "It looks like you haven't got Vendel 2 app or you didn't "
                                      "allow to communicate the plugin (this app) via Apple Script"));
}

Error couldNotReadScriptOutputError()
{
    return makeError(qint64(SdkErrorCode::couldNotReadScriptOutput),
                     //: Error
                     QCoreApplication::translate("VendelSDK", "Could not read data from script output"),
                     QString());
}

} // namespace VendelSDK
