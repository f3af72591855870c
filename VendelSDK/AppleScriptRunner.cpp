// Every failure becomes the same SDK error: the user's remedy is the same whatever the engine said.
#include <VendelSDK/AppleScriptRunner.h>

#include <VendelSDK/Error.h>
#include <VendelSDK/Platform.h>
#include <VendelSDK/TerminationSignals.h>

namespace VendelSDK {

namespace {

template <class... Ts> struct Overloaded : Ts...
{
    using Ts::operator()...;
};
template <class... Ts> Overloaded(Ts...) -> Overloaded<Ts...>;

} // namespace

std::optional<QString> AppleScriptRunner::run(const QString& source)
{
    // A termination signal that came during the previous step is carried out now, and this script never
    // starts.
    TerminationSignals::deliverPending();
    return std::visit(
        Overloaded{
            [](const ScriptErrorRecord&) -> std::optional<QString> { throw couldNotRunScriptError(); },
            [](const QString& result) -> std::optional<QString> { return result; },
            [](ScriptNoResult) -> std::optional<QString> { return std::nullopt; },
        },
        Platform::scriptEngine().execute(source));
}

} // namespace VendelSDK
