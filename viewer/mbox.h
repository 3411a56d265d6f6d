// Mbox files: many mails in one file, each behind a line that starts with "From ".
//
// Such a line parts mails only at the start of the file or behind an empty line. The empty line
// before it belongs to it. Inside a mail a line of ">"s and "From " has one ">" more than the mail
// had (the form called mboxrd; RFC 4155 tells of the format). Lines end in LF or CR LF.
//
//   MboxScanner scanner;
//   while (ReadPiece(piece))
//       scanner.Feed(piece, found);             // mails that have come to their end
//   scanner.Finish(found);
//
// A file is scanned in pieces of any size, in one pass, and of the open mail only the beginning
// is kept: the size of a file costs no memory.

#pragma once

#include "platform/types.h"

#include <string>
#include <string_view>
#include <vector>

namespace tlvn {

struct MboxMail {
    INT64 start = 0;  // in the file, behind the "From " line
    INT64 size = 0;   // in bytes, without the line end in front of the next "From " line
    std::string head; // the first bytes of it, MboxScanner::kHeadBytes at most
};

class MboxScanner {
public:
    static constexpr std::size_t kHeadBytes = 16'384;

    // Goes on with the next bytes of the file; appends the mails that end there. What stands
    // before the first "From " line is passed over.
    void Feed(std::string_view piece, std::vector<MboxMail>& found);
    // The file has ended, and so has the last mail.
    void Finish(std::vector<MboxMail>& found);

private:
    void BeginLine();
    void EndLine(INT64 next, std::vector<MboxMail>& found);
    void CloseMail(INT64 end, std::vector<MboxMail>& found);

    INT64 m_pos = 0; // bytes fed so far
    bool m_lineOpen = false;
    bool m_separator = false; // the line is one, as far as it is seen
    bool m_afterEmpty = true; // the line before it was empty, or there was none
    bool m_onlyReturn = true; // the line holds nothing but a CR at most
    std::size_t m_lineBytes = 0;
    INT64 m_lineStart = 0;
    INT64 m_emptyStart = 0; // where the empty line before it starts

    bool m_inMail = false;
    MboxMail m_mail;
};

// True when a file that begins so is an mbox file: its first line that is not empty starts with
// "From ".
bool IsMboxBeginning(std::string_view head);

// Takes the ">" back that lines starting with "From " got in the file.
void UnescapeMboxMail(std::string& mail);

} // namespace tlvn
