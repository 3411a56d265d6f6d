#include "mailtext/address_check.h"

#include "charcode/flagged_char.h"
#include "mailtext/character_set.h"
#include "platform/multibyte.h"

using namespace tlvn;

namespace {

constexpr CharacterSet kForbidden("()<>;\"\\");
constexpr CharacterSet kAt("@");

bool IsEmptyText(const char* text)
{
    return text == nullptr || *text == '\0';
}

bool HoldsOneOf(const char* text, const CharacterSet& set)
{
    for (; *text != '\0'; text += IsDoubleByte(text) ? 2 : 1) {
        if (set.Has(*text))
            return true;
    }
    return false;
}

bool HoldsDoubleByte(const char* text)
{
    while (*text != '\0' && !IsDoubleByte(text))
        ++text;
    return *text != '\0';
}

// Sets the message of a fault, or clears it for 0, and returns the result.
int Report(int result, UINT messageId, CString& message)
{
    message.Empty();
    if (messageId != 0)
        message.LoadString(messageId);
    return result;
}

int CheckAddress(const char* address, bool needsAt, CString& message)
{
    if (IsEmptyText(address))
        return Report(ADDRCHECK_EMPTY, 3103, message);
    if (needsAt && !HoldsOneOf(address, kAt))
        return Report(ADDRCHECK_NO_AT, 3104, message);
    if (HoldsOneOf(address, kForbidden))
        return Report(ADDRCHECK_FORBIDDEN, 3105, message);
    if (HoldsDoubleByte(address))
        return Report(ADDRCHECK_NOT_PORTABLE, 3106, message);
    if (FindHankakuKatakana(address, -1) >= 0)
        return Report(ADDRCHECK_NOT_PORTABLE, 3132, message);
    return Report(ADDRCHECK_OK, 0, message);
}

int CheckDisplayText(const char* text, UINT katakanaId, UINT machineDependentId, CString& message)
{
    if (FindHankakuKatakana(text, -1) >= 0)
        return Report(ADDRCHECK_NOT_PORTABLE, katakanaId, message);
    if (FindMachineDependChar(text, -1) >= 0)
        return Report(ADDRCHECK_NOT_PORTABLE, machineDependentId, message);
    return Report(ADDRCHECK_OK, 0, message);
}

} // namespace

int CheckEMailAddress(const char* address, CString& message)
{
    return CheckAddress(address, true, message);
}

int CheckWildEMailAddress(const char* address, CString& message)
{
    return CheckAddress(address, false, message);
}

int CheckEMailName(const char* name, CString& message)
{
    return CheckDisplayText(name, 3116, 3129, message);
}

int CheckEMailOrgani(const char* organisation, CString& message)
{
    return CheckDisplayText(organisation, 3130, 3131, message);
}

int CheckServerName(const char* server, int mayBeEmpty, CString& message)
{
    if (IsEmptyText(server))
        return mayBeEmpty != 0 ? Report(ADDRCHECK_OK, 0, message)
                               : Report(ADDRCHECK_EMPTY, 3107, message);
    if (HoldsOneOf(server, kForbidden))
        return Report(ADDRCHECK_FORBIDDEN, 3108, message);
    if (HoldsDoubleByte(server))
        return Report(ADDRCHECK_NOT_PORTABLE, 3109, message);
    return Report(ADDRCHECK_OK, 0, message);
}

int CheckAccountName(const char* account, CString& message)
{
    if (IsEmptyText(account))
        return Report(ADDRCHECK_EMPTY, 3110, message);
    if (HoldsDoubleByte(account))
        return Report(ADDRCHECK_NOT_PORTABLE, 3111, message);
    return Report(ADDRCHECK_OK, 0, message);
}
