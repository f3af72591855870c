// A plugin's name and icon as the desktop shows them: the desktop entry named after its executable.
#pragma once

#include <QString>

#include <optional>

namespace VendelHost {

struct DesktopEntry
{
    // The icon a plugin without an entry of its own is shown with, from the freedesktop.org icon names.
    static constexpr auto genericIcon = "application-x-executable";

    // The Name, in the language of the environment when the entry has it, on one line: control characters
    // and line breaks become spaces.
    QString name;
    // A themed icon's name or an absolute path, as the entry gives it; empty when it gives none.
    QString icon;

    // The entry "<executable's name>.desktop" in the applications folder of the first XDG data folder that
    // has one ($XDG_DATA_HOME, then each of $XDG_DATA_DIRS). Nothing when there is none, or the first is
    // hidden, no application, unreadable or nameless: a later folder's entry does not count then, as the
    // desktop does not show it either.
    static std::optional<DesktopEntry> forExecutable(const QString& executableName);
    // One entry file, with the same rules.
    static std::optional<DesktopEntry> read(const QString& path);
};

} // namespace VendelHost
