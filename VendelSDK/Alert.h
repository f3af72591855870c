// A modal message: what an alert presenter shows and what the user answered.
#pragma once

#include "Error.h"

#include <QString>
#include <QStringList>

namespace VendelSDK {

struct Alert
{
    QString messageText;
    QString informativeText;
    // Button titles in order; none means the presenter's single default button.
    QStringList buttons;

    // The alert made from an error: its description, and its failure reason when there is one.
    static Alert fromError(const Error& error);

    friend bool operator==(const Alert&, const Alert&) = default;
};

} // namespace VendelSDK
