// The alert that the configuration providers show when the host could not be asked or told.
#pragma once

#include <VendelSDK/Error.h>
#include <VendelSDK/Export.h>

#include <concepts>
#include <optional>
#include <type_traits>
#include <utility>

namespace VendelSDK {

/// Shows "Could not read action data in Vendel." (or, when `read` is false, the save title) with the
/// error's description and one "OK" button, and returns when it has been dismissed.
VENDELSDK_EXPORT void showConfigAlert(const Error& error, bool read);

/// Runs the operation; on an SDK error shows the configuration alert and returns nothing. The read title is
/// shown for every failure, writes included: users know this message, and the save title stays unused.
template <std::invocable F>
auto withErrorAlert(F&& operation) -> std::conditional_t<std::is_void_v<std::invoke_result_t<F>>, bool,
                                                         std::optional<std::invoke_result_t<F>>>
{
    try {
        if constexpr (std::is_void_v<std::invoke_result_t<F>>) {
            std::forward<F>(operation)();
            return true;
        } else {
            return std::forward<F>(operation)();
        }
    } catch (const Error& error) {
        showConfigAlert(error, true);
        return {};
    }
}

} // namespace VendelSDK
