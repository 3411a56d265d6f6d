// Random numbers.

#pragma once

#include "platform/types.h"

// A number from 0 to INT_MAX that nobody can foretell, from the system's source.
TLVN_API int GetRandom();
