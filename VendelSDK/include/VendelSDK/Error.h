// An error value in a named domain with a code and user information, thrown and shown by the whole system.
#pragma once

#include <VendelSDK/Export.h>

#include <QString>
#include <QVariantMap>

#include <exception>

namespace VendelSDK {

/// The error domain of every error that the SDK itself reports.
inline constexpr auto sdkErrorDomain = "org.vendel.VendelSDK";
/// The domain of errors that scripting engines and operating-system services report.
inline constexpr auto osStatusErrorDomain = "NSOSStatusErrorDomain";

/// Keys of the user information that carry the texts an alert shows.
inline constexpr auto localizedDescriptionKey = "NSLocalizedDescription";
/// The key of the failure reason, shown under the description.
inline constexpr auto localizedFailureReasonKey = "NSLocalizedFailureReason";

/// An error that the SDK throws and shows: a domain, a code and user information that holds its texts.
/// Catch it as `const VendelSDK::Error&`; Alert::fromError() makes the alert that shows it.
class VENDELSDK_EXPORT Error : public std::exception
{
public:
    /// An error of `domain` with `code`; `userInfo` holds its texts (localizedDescriptionKey and
    /// localizedFailureReasonKey).
    Error(QString domain, qint64 code, QVariantMap userInfo = {});

    /// The error's domain, such as sdkErrorDomain.
    const QString& domain() const { return m_domain; }
    /// The error's code within its domain.
    qint64 code() const { return m_code; }
    /// The user information, as given.
    const QVariantMap& userInfo() const { return m_userInfo; }

    /// The description from the user information, or a generic sentence naming the domain and code.
    QString localizedDescription() const;
    /// The failure reason from the user information, or the empty text.
    QString localizedFailureReason() const;

    /// The description, in UTF-8, for logs.
    const char* what() const noexcept override;

private:
    QString m_domain;
    qint64 m_code;
    QVariantMap m_userInfo;
    QByteArray m_what;
};

/// SDK error codes; their texts are fixed by makeError's callers.
enum class SdkErrorCode : qint64
{
    couldNotCreateURL = 0,
    couldNotRunScript = 1,
    couldNotReadScriptOutput = 2,
};

/// Builds an SDK error whose user information holds exactly the description and the failure reason.
VENDELSDK_EXPORT Error makeError(qint64 code, const QString& description, const QString& failureReason);

/// The SDK's error 0, with its localised texts: a URL could not be made.
VENDELSDK_EXPORT Error couldNotCreateURLError();
/// The SDK's error 1: a script could not be run.
VENDELSDK_EXPORT Error couldNotRunScriptError();
/// The SDK's error 2: a command that reads got no text back.
VENDELSDK_EXPORT Error couldNotReadScriptOutputError();

} // namespace VendelSDK
