// libFuzzer target: the host service's methods with any identifiers, configuration texts and paths, on a
// real database in a private folder. Fields of the input are separated by NUL bytes.
#include "FuzzRequire.h"

#include "HostError.h"
#include "HostService.h"
#include "HostStorage.h"

#include <QCoreApplication>
#include <QDir>
#include <QTemporaryDir>

#include <cstddef>
#include <cstdint>
#include <memory>

using namespace VendelHost;

namespace {

struct Host
{
    Host()
        : folder(QDir(QStringLiteral("/dev/shm")).exists()
                     ? QStringLiteral("/dev/shm/vendel-fuzz-XXXXXX")
                     : QDir::tempPath() + QStringLiteral("/vendel-fuzz-XXXXXX")),
          storage(folder.path()), service(storage), actionID(storage.createAction(QStringLiteral("plugin")))
    {}

    QTemporaryDir folder;
    HostStorage storage;
    HostService service;
    QString actionID;
};

Host& host()
{
    static int argc = 1;
    static char name[] = "HostServiceFuzzer";
    static char* argv[] = {name, nullptr};
    static QCoreApplication app(argc, argv);
    static Host instance;
    return instance;
}

// SQLite reads U+FFFE and U+FFFF back as U+FFFD (both are noncharacters, never meant for interchange).
// It also takes U+FEFF or U+FFFE at the very start of a text as a byte order mark, so such a text does not
// come back as it was sent; a configuration is JSON and starts with "{", so only the rest is checked.
bool startsWithAByteOrderMark(const QString& text)
{
    return !text.isEmpty() && (text.front().unicode() == 0xFEFF || text.front().unicode() == 0xFFFE);
}

QString asStored(QString text)
{
    for (QChar& c : text) {
        if (c.unicode() == 0xFFFE || c.unicode() == 0xFFFF) {
            c = QChar::ReplacementCharacter;
        }
    }
    return text;
}

QString field(const QList<QByteArray>& fields, qsizetype index)
{
    return QString::fromUtf8(fields.value(index));
}

template <typename Call> bool refusedWithAMessage(Call call)
{
    try {
        call();
        return false;
    } catch (const HostError& error) {
        require(!error.message().isEmpty(), "a refusal says why");
        return true;
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    Host& h = host();
    const QList<QByteArray> fields =
        QByteArray(reinterpret_cast<const char*>(data), qsizetype(size)).split('\0');
    const QString identifier = field(fields, 0);
    const QString config = field(fields, 1);
    const QString bundleID = field(fields, 2);
    const QString path = field(fields, 3);

    // The known action keeps the text it was given, whatever it holds.
    h.service.SetConfig(config, h.actionID);
    require(startsWithAByteOrderMark(config) || h.service.GetConfig(h.actionID) == asStored(config),
            "a configuration reads back unchanged");

    // Any other identifier is no action: reading gives the empty text, writing is refused and stores nothing.
    if (identifier != h.actionID) {
        require(h.service.GetConfig(identifier).isEmpty(), "an unknown action has no configuration");
        require(refusedWithAMessage([&] { h.service.SetConfig(config, identifier); }),
                "a write for an unknown action is refused");
        require(h.service.GetConfig(identifier).isEmpty(), "a refused write stores nothing");
    }

    // A plugin-wide configuration is kept under any non-empty bundle identifier.
    if (bundleID.isEmpty()) {
        require(refusedWithAMessage([&] { h.service.SetGlobalConfig(config, bundleID); }),
                "an empty bundle identifier is refused");
    } else {
        h.service.SetGlobalConfig(config, bundleID);
        require(startsWithAByteOrderMark(config) || h.service.GetGlobalConfig(bundleID) == asStored(config),
                "a global configuration reads back unchanged");
    }

    // Nothing is installed: no path counts as installed, and no name finds a plugin.
    QString installed;
    if (!refusedWithAMessage([&] { installed = h.service.IsPluginInstalledAtPath(path); })) {
        require(installed == QStringLiteral("false"), "nothing is installed at any path");
    }
    require(refusedWithAMessage([&] { h.service.GetPathOfPlugin(identifier); }), "no plugin is found");
    return 0;
}
