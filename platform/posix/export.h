// POSIX: TLVN_API marks what the shared library exports.

#pragma once

#define TLVN_API __attribute__((visibility("default")))
