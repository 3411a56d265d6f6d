// Windows: TLVN_API marks what the DLL exports.

#pragma once

#ifdef TLVN_BUILDING
#define TLVN_API __declspec(dllexport)
#else
#define TLVN_API __declspec(dllimport)
#endif
