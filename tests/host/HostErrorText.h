// The message of the host error an action throws, for tests that check how host operations fail.
#pragma once

#include "HostError.h"

#include <QString>

#include <functional>

// The empty text when the action threw nothing.
inline QString errorOf(const std::function<void()>& action)
{
    try {
        action();
        return {};
    } catch (const VendelHost::HostError& error) {
        return error.message();
    }
}
