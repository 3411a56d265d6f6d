// Deletes the temporary objects of each kind that the calling thread made (see handle_map.h).

#pragma once

#include "platform/types.h"

namespace tlvn {

void ForgetTemporaryGdiObjects();
void ForgetTemporaryDcs();
// The temporary object of one context that is given back.
void ForgetTemporaryDc(HDC dc);
void ForgetTemporaryMenus();
void ForgetTemporaryWindows();

} // namespace tlvn
