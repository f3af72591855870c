// Desktop entries are read with GLib's key-file parser, the one the desktops themselves use: it knows the
// format's escapes, localised keys and groups. GLib is loaded with Qt Core already.
#include "DesktopEntry.h"

#include <QFile>
#include <QStandardPaths>

#include <glib.h>

#include <memory>

namespace VendelHost {

namespace {

constexpr auto group = "Desktop Entry";

struct KeyFileFree
{
    void operator()(GKeyFile* file) const { g_key_file_free(file); }
};

// A text GLib allocated, taken over; the empty text when there is none.
QString takeText(gchar* text)
{
    const QString result = text == nullptr ? QString() : QString::fromUtf8(text);
    g_free(text);
    return result;
}

// The escapes \n and \t can put line breaks into a name, which titles made from it must not carry.
QString oneLine(QString text)
{
    for (QChar& character : text) {
        const auto category = character.category();
        if (category == QChar::Other_Control || category == QChar::Separator_Line ||
            category == QChar::Separator_Paragraph) {
            character = u' ';
        }
    }
    return text.simplified();
}

} // namespace

std::optional<DesktopEntry> DesktopEntry::read(const QString& path)
{
    const std::unique_ptr<GKeyFile, KeyFileFree> file(g_key_file_new());
    if (!g_key_file_load_from_file(file.get(), QFile::encodeName(path).constData(), G_KEY_FILE_NONE,
                                   nullptr)) {
        return std::nullopt;
    }
    // A missing key reads as false, or as no text.
    if (g_key_file_get_boolean(file.get(), group, "Hidden", nullptr) ||
        takeText(g_key_file_get_string(file.get(), group, "Type", nullptr)) != u"Application") {
        return std::nullopt;
    }
    DesktopEntry entry;
    entry.name = oneLine(takeText(g_key_file_get_locale_string(file.get(), group, "Name", nullptr, nullptr)));
    entry.icon = takeText(g_key_file_get_string(file.get(), group, "Icon", nullptr)).trimmed();
    if (entry.name.isEmpty()) {
        return std::nullopt;
    }
    return entry;
}

std::optional<DesktopEntry> DesktopEntry::forExecutable(const QString& executableName)
{
    if (executableName.isEmpty() || executableName.contains(u'/')) {
        return std::nullopt;
    }
    const QString path = QStandardPaths::locate(QStandardPaths::ApplicationsLocation,
                                                executableName + QStringLiteral(".desktop"));
    return path.isEmpty() ? std::nullopt : read(path);
}

} // namespace VendelHost
