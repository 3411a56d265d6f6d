#include "persist/random.h"

#include <climits>
#include <random>

int GetRandom()
{
    std::random_device source;
    return std::uniform_int_distribution<int>(0, INT_MAX)(source);
}
