// A mail being written, and its way into an .eml file.
//
//   Draft draft;
//   draft.to = "佐藤 <sato@example.jp>";
//   draft.subject = "...";
//   draft.codeType = CT_JIS;                    // the text is in Shift_JIS then
//   draft.text = ...;
//   if (!SaveDraft(draft, path, error))
//       Tell(error);
//
// The mail is sent in the code that the library's rules give for the draft's: US-ASCII when it is
// all ASCII, else the default code for sending (CodeType2DefSend). What that cannot hold so that
// it comes back unchanged goes as UTF-8. Nothing is replaced or left out.

#pragma once

#include "foundation/buffer.h"
#include "foundation/code_type.h"

#include <string>
#include <utility>
#include <vector>

namespace tlvn {

struct Draft {
    // UTF-8. The first three are lists of addresses; empty ones make no field.
    std::string from;
    std::string to;
    std::string cc;
    std::string subject;
    std::vector<std::pair<std::string, std::string>> fields; // more of them: name, value

    // The text in the edit form of the type (CodeTypeSave2Edit), its line ends of any kind.
    CodeType codeType = CT_JIS;
    CBuffer text;
};

struct DraftSource {
    std::string bytes;            // of the mail, its lines ending in CR LF
    CodeType codeType = CT_ASCII; // in which the text is sent
};

// A number for a mail that no other has: "<...@domain>", of the sender's domain when the address
// has one.
std::string MakeMessageId(const std::string& from);

// Writes the mail with the date (seconds since 1970 UTC) and the identifier. False, with one or
// several lines of `error`, when an address is no valid one (the library's checks tell why), a
// field's name is none, or the text is not in its code.
bool FormatDraft(const Draft& draft, INT64 date, const std::string& messageId, DraftSource& source,
                 std::string& error);

// The same with the present time and a new identifier, into the file at a path of
// platform/folder.h. Its old content is only lost when the new one is whole.
bool SaveDraft(const Draft& draft, const std::string& path, std::string& error);

} // namespace tlvn
