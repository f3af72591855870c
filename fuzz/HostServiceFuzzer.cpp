// libFuzzer target: what the host service does with any identifiers, configuration texts and paths that its
// methods are given: the input checks, then the storage, on a real database in a private folder. (The methods
// themselves answer over the bus only.) Fields of the input are separated by NUL bytes.
#include "FuzzRequire.h"

#include "HostInput.h"
#include "HostStorage.h"
#include "PluginInstaller.h"

#include <QCoreApplication>
#include <QDir>
#include <QTemporaryDir>

#include <cstddef>
#include <cstdint>

using namespace VendelHost;

namespace {

struct Host
{
    Host()
        : folder(QDir(QStringLiteral("/dev/shm")).exists()
                     ? QStringLiteral("/dev/shm/vendel-fuzz-XXXXXX")
                     : QDir::tempPath() + QStringLiteral("/vendel-fuzz-XXXXXX")),
          storage(folder.path()), actionID(storage.createAction(QStringLiteral("plugin")))
    {}

    QTemporaryDir folder;
    HostStorage storage;
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
// come back as it was sent; configurations start with "{", so only the rest is checked.
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

    // A configuration is checked before anything is stored; one that passes reads back as it was sent,
    // and one that does not is refused with a reason and leaves the stored one alone.
    const QString before = h.storage.action(h.actionID)->config;
    const auto problem = HostInput::configProblem(config);
    if (problem) {
        require(!problem->isEmpty(), "a refused configuration says why");
        require(h.storage.action(h.actionID)->config == before, "a refused configuration stores nothing");
    } else {
        const QString json = config.trimmed();
        require(config.isEmpty() || json.startsWith(u'{') || json.startsWith(u'[') ||
                    startsWithAByteOrderMark(config),
                "an accepted configuration is empty or a JSON object or array");
        require(config.toUtf8().size() <= HostInput::maxConfigBytes, "an accepted configuration is small");
        require(h.storage.setConfig(h.actionID, config), "the known action takes a configuration");
        require(startsWithAByteOrderMark(config) || h.storage.action(h.actionID)->config == asStored(config),
                "a configuration reads back unchanged");
    }

    // Any other identifier is no action: it has no configuration, and a write for it stores nothing.
    if (identifier != h.actionID) {
        require(!h.storage.action(identifier), "an unknown action is not found");
        require(!h.storage.setConfig(identifier, QStringLiteral("{}")),
                "a write for an unknown action fails");
        require(!h.storage.action(identifier), "a failed write makes no action");
    }

    // A plugin-wide configuration is kept only under a reverse-DNS bundle identifier.
    if (HostInput::isBundleIdentifier(bundleID)) {
        require(bundleID.size() <= HostInput::maxBundleIdentifierLength && bundleID.contains(u'.'),
                "a bundle identifier has labels and a bounded length");
        if (!problem) {
            h.storage.setGlobalConfig(bundleID, config);
            require(startsWithAByteOrderMark(config) || h.storage.globalConfig(bundleID) == asStored(config),
                    "a global configuration reads back unchanged");
        }
    }

    // Nothing is installed: no path counts as installed, and no name finds a plugin.
    require(!PluginInstaller(h.storage).isInstalledAtPath(path), "nothing is installed at any path");
    require(!h.storage.plugin(identifier), "no plugin is found");
    return 0;
}
