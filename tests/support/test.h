// What nearly every test includes: the test framework, the parts of the standard library that
// tables and random texts are made of, and the helpers of text.h.

#pragma once

#include "tests/support/text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cstring>
#include <random>
#include <string>
#include <tuple>
#include <vector>
