// TLVN_API marks what the library exports.

#pragma once

#if !defined(_WIN32)
#define TLVN_API __attribute__((visibility("default")))
#elif defined(TLVN_BUILDING)
#define TLVN_API __declspec(dllexport)
#else
#define TLVN_API __declspec(dllimport)
#endif
