// Mails of a list put into a zip archive.
//
//   MailExport mails(list, rows);
//   if (!mails.Start(path, password, error))
//       return Tell(error);
//   while (mails.Step(20, error))               // for 20 ms each
//       ShowProgress(mails.GetDone(), mails.GetTotal());
//   if (!error.empty())
//       return Tell(error);
//
// Each mail is one .eml file in the archive, as it was sent: under the name of its file or, of an
// mbox file, under its subject. Characters that some system has no names with become "_". Names
// that are there already get a number. The archive is written beside its place, under its name with
// ".part" behind it (".part2" and so on when there is such a file), and comes there when it is
// whole, so that a failure costs no archive that was there before. The list has to stay as it is
// meanwhile.

#pragma once

#include "persist/zip/zip.h"
#include "viewer/mail_list.h"

#include <map>

namespace tlvn {

// The subject as the name of an .eml file on any system, at most 80 characters long; `number`
// when nothing of it is left.
std::string MakeMailFileName(std::string_view subject, int number);

class MailExport {
public:
    // Mails in these rows, in that order.
    MailExport(const MailList& list, std::vector<int> rows);
    // Gives up an archive that is not complete.
    ~MailExport();
    MailExport(const MailExport&) = delete;
    MailExport& operator=(const MailExport&) = delete;

    // Begins the archive at a path of platform/folder.h, with a password (UTF-8) unless that is
    // empty. False with the reason. Passwords go in as bytes of the multibyte code page.
    bool Start(const std::string& path, const std::string& password, std::string& error);

    // Adds mails until `milliseconds` have gone by. True while there is more to do; at the end
    // the archive is in its place and `error` is empty, after a failure there is none.
    bool Step(int milliseconds, std::string& error);

    int GetDone() const { return m_done; }
    int GetTotal() const { return static_cast<int>(m_rows.size()); }

private:
    bool ReservePart(std::string& error);
    bool AddMail(int row, std::string& error);
    bool Finish(std::string& error);
    void GiveUp();
    std::string MakeName(int row);

    const MailList& m_list;
    std::vector<int> m_rows;
    int m_done = 0;
    CZip m_zip;
    std::string m_target;               // narrow
    std::string m_part;                 // narrow; empty while there is no archive
    std::map<std::string, int> m_names; // in lower case, with the last number given
};

} // namespace tlvn
