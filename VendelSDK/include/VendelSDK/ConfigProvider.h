// The common base of the configuration providers, naming the kind of object as a type.
#pragma once

#include <VendelSDK/Export.h>

namespace VendelSDK {

/// Deliberately empty: the providers share no operations, since each works on its own configuration type.
class VENDELSDK_EXPORT ConfigProvider
{
public:
    virtual ~ConfigProvider() = default;

protected:
    ConfigProvider() = default;
    /// Copies nothing, as the base holds nothing.
    ConfigProvider(const ConfigProvider&) = default;
    /// Assigns nothing, as the base holds nothing.
    ConfigProvider& operator=(const ConfigProvider&) = default;
};

} // namespace VendelSDK
