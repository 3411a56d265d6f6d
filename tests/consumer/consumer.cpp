// A client of the installed library: buffers, a decoder, a conversion, an exception by type.

#include <TlvnMisc.h>

#include <cstdio>
#include <cstring>

int main()
{
    CBuffer decoded;
    DecodeBase64("GyRCJSIbKEI=", decoded);   // ア in ISO-2022-JP
    CBuffer utf8;
    if (ConvertToOtherCodeType2(CT_JIS, decoded, decoded.GetLength(), CT_UTF8, utf8, 0) != 0 ||
        std::strcmp(utf8, "\xE3\x82\xA2") != 0)
        return 1;
    try {
        throw new CStrException("thrown and caught by type");
    } catch (CStrException* e) {
        std::printf("%s\n", GetExceptionMessage(e).GetString());
        e->Delete();
    }
    try {
        CFile missing("no such file", CFile::modeRead);
        return 2;
    } catch (CFileException* e) {
        const bool right = e->m_cause == CFileException::fileNotFound;
        e->Delete();
        return right ? 0 : 3;
    }
}
