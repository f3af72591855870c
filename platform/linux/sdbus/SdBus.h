// The sd-bus layer, for its users: each part has its own header, and this one brings them all.
#pragma once

#include "Bus.h"
#include "Call.h"
#include "EventLoopDispatcher.h"
#include "Match.h"
#include "Message.h"
#include "NameOwnership.h"
#include "ServedMethod.h"
#include "Wait.h"
