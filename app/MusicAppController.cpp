// The player's scripts are sent exactly as written here; a playlist name is inserted without escaping.
#include "MusicAppController.h"

#include <QCoreApplication>

#include <VendelSDK/Platform.h>
#include <VendelSDK/TerminationSignals.h>
#include <VendelSDK/VendelAPI.h>

namespace MusicPlugin {

using namespace VendelSDK;

namespace {

constexpr auto errorNumberKey = "NSAppleScriptErrorNumber";
constexpr auto errorMessageKey = "NSAppleScriptErrorMessage";
constexpr auto errorBriefMessageKey = "NSAppleScriptErrorBriefMessage";
constexpr qint64 unknownError = -1753;
constexpr qint64 syntaxError = -2741;

void show(const ScriptErrorRecord& record)
{
    Platform::alertPresenter().runModal(Alert::fromError(MusicAppController::errorFrom(record)));
}

} // namespace

QString MusicAppController::shuffleScript(bool shuffle)
{
    return QStringLiteral("tell application \"Music\" to set shuffle enabled to ") +
           (shuffle ? QStringLiteral("true") : QStringLiteral("false"));
}

QString MusicAppController::playScript(const QString& playlist)
{
    return QStringLiteral("tell application \"Music\" to play playlist \"") + playlist + u'"';
}

QString MusicAppController::pauseScript()
{
    return QStringLiteral("tell application \"Music\" to pause");
}

Error MusicAppController::errorFrom(const ScriptErrorRecord& record)
{
    QVariantMap userInfo;
    if (record.number) {
        userInfo.insert(QString::fromLatin1(errorNumberKey), *record.number);
    }
    if (record.message) {
        userInfo.insert(QString::fromLatin1(errorMessageKey), *record.message);
        userInfo.insert(QString::fromLatin1(localizedFailureReasonKey), *record.message);
    }
    if (record.briefMessage) {
        userInfo.insert(QString::fromLatin1(errorBriefMessageKey), *record.briefMessage);
        userInfo.insert(QString::fromLatin1(localizedDescriptionKey), *record.briefMessage);
    }
    return Error(QString::fromLatin1(osStatusErrorDomain), record.number.value_or(unknownError), userInfo);
}

void MusicAppController::runScript(const QString& source)
{
    // A termination signal that came during the previous script (the shuffle before a play) is carried out
    // now, and this script never starts.
    TerminationSignals::deliverPending();
    const ScriptOutcome outcome = Platform::scriptEngine().execute(source);
    // A record that cannot be read as one keyed by text makes no error to show: the call just returns.
    if (const auto* failure = std::get_if<ScriptErrorRecord>(&outcome); failure && failure->keyedByText) {
        show(*failure);
    }
}

void MusicAppController::play(const QString& playlist, bool shuffle)
{
    runScript(shuffleScript(shuffle));
    // A name that could end the string literal would compile to another script; it fails as the
    // broken script would, without running.
    if (!VendelAPI::isSafeUnescaped(playlist)) {
        //: The script compiler's message for a playlist name that would end the script's text
        const QString message = QCoreApplication::translate(
            "MusicAppController", "Expected end of line but found a double quote, a backslash or a control "
                                  "character in the playlist name.");
        show(ScriptErrorRecord{syntaxError, message, message});
        return;
    }
    runScript(playScript(playlist));
}

} // namespace MusicPlugin
