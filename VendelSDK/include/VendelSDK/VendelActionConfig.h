// What a configuration type needs to be kept by the host: a default value and a JSON form.
#pragma once

#include <QJsonObject>

#include <concepts>
#include <optional>

namespace VendelSDK {

/// `T{}` is the default value. `toJson()` may throw to report a value that cannot be encoded;
/// `fromJson()` returns nothing for an object that is not a valid `T`.
template <class T>
concept VendelActionConfig = std::default_initializable<T> && std::copy_constructible<T> &&
    requires(const T& value, const QJsonObject& object)
{
    {
        value.toJson()
        } -> std::same_as<QJsonObject>;
    {
        T::fromJson(object)
        } -> std::same_as<std::optional<T>>;
};

} // namespace VendelSDK
