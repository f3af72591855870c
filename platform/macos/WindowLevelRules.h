// How a plugin window is kept above floating windows on macOS, and what that means for the application's
// other windows; decided in plain C++ so that every platform's tests cover it.
#pragma once

#include <QEvent>
#include <QStringView>

#include <optional>

namespace VendelSDK {

// Levels as AppKit numbers them: the floating level of panels and palettes, and the plugin's, one above.
inline constexpr long floatingWindowLevel = 3;
inline constexpr long pluginWindowLevel = floatingWindowLevel + 1;

// Only the cocoa platform has an NSView behind a window's native id. Every other one (offscreen in the
// tests, minimal) keeps the window up the portable way, with the toolkit's stays-on-top hint.
bool setsNativeWindowLevel(QStringView platformName);

// The toolkit sets a level of its own when it creates or shows the native window, when the window's flags
// change (which recreates it) and when its state changes, leaving full screen among them: the level is
// set again after each of these.
bool resetsWindowLevel(QEvent::Type type);

// The level another window of the application (the updater's, an alert) takes when it comes forward:
// raised to the plugin windows' level while one of them is shown, so that it does not open hidden behind
// them. Nothing changes otherwise, and no window is ever lowered.
std::optional<long> liftedWindowLevel(long level, bool pluginWindowShown);

} // namespace VendelSDK
