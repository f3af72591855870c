// A modal message: what an alert presenter shows and what the user answered.
#pragma once

#include <VendelSDK/Error.h>
#include <VendelSDK/Export.h>

#include <QString>
#include <QStringList>

#include <optional>

namespace VendelSDK {

/// A modal alert: its texts and buttons, shown by Platform::alertPresenter().
struct VENDELSDK_EXPORT Alert
{
    /// The alert's title, in bold on most platforms.
    QString messageText;
    /// The text under the title; may be empty.
    QString informativeText;
    /// Button titles in order; none means the presenter's single default button.
    QStringList buttons;
    /// The error an alert was made from, for platforms that build error alerts from the error itself.
    std::optional<Error> error = std::nullopt;

    /// The alert made from an error: its description, and its failure reason when there is one.
    static Alert fromError(const Error& error);

    /// Two alerts are the same when they show the same texts and buttons.
    friend bool operator==(const Alert& left, const Alert& right)
    {
        return left.messageText == right.messageText && left.informativeText == right.informativeText &&
               left.buttons == right.buttons;
    }
};

} // namespace VendelSDK
