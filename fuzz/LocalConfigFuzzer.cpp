// libFuzzer target: any text as a stored action record, decoded as the providers decode it, with fallback.
#include "FuzzRequire.h"
#include "LocalConfig.h"

#include <VendelSDK/ConfigCoding.h>

#include <QJsonDocument>
#include <QString>

#include <cstddef>
#include <cstdint>

using namespace MusicPlugin;
using namespace VendelSDK;

namespace {

// A fallback that no valid record of the fuzzer's making is likely to equal, so that the two outcomes can
// be told apart; a record that does equal it is checked the same way.
const LocalConfig fallback{LocalConfig::Action::pause, QStringLiteral("\u0001fallback"), true};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char*>(data), qsizetype(size));
    const QString text = QString::fromUtf8(bytes);
    const LocalConfig decoded = decodeConfig(text, fallback);

    // Whatever was decoded is a record the editor can show and write back: its JSON reads as itself.
    const QString encoded = encodeConfig(decoded);
    require(!encoded.isEmpty(), "a decoded record encodes");
    require(decodeConfig(encoded, LocalConfig{}) == decoded, "a decoded record survives its own JSON");
    require(decodeConfig(encoded, fallback) == decoded, "a written record never reads as the fallback");

    // Only an object holding a valid "action" and "shouldShuffle" yields anything but the fallback.
    if (!(decoded == fallback)) {
        const QJsonDocument document = QJsonDocument::fromJson(text.toUtf8());
        require(document.isObject(), "a record comes only from a JSON object");
        const QJsonObject object = document.object();
        require(object.value(QLatin1String(LocalConfig::shouldShuffleKey)).isBool(),
                "a record needs a Boolean shouldShuffle");
        const QJsonValue action = object.value(QLatin1String(LocalConfig::actionKey));
        require(action.isDouble() && (action.toDouble() == 0 || action.toDouble() == 1),
                "a record's action is 0 or 1");
    }
    // The same text always gives the same record.
    require(decodeConfig(text, fallback) == decoded, "decoding is deterministic");
    return 0;
}
