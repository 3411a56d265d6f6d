#include "platform/charset_service.h"

namespace tlvn {

UINT AskCharsetCodePage(const char*)
{
    return 0;
}

} // namespace tlvn
