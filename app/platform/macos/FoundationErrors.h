// What a Foundation error says about itself, read for the application's framework errors.
#pragma once

#import <Foundation/Foundation.h>

#include "FrameworkError.h"

NS_ASSUME_NONNULL_BEGIN

namespace MusicPlugin {

// The error's domain, code, user information and the texts Foundation works out for it, for frameworkError().
FrameworkErrorFacts toFrameworkErrorFacts(NSError* error);

} // namespace MusicPlugin

NS_ASSUME_NONNULL_END
