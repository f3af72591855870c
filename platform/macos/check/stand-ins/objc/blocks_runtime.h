// For the Linux compile check only: GNUstep's headers ask for the blocks runtime under this name.
#pragma once

#include <Block.h>
