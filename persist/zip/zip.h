// Zip archives: reading one that the caller holds in memory, writing a new one to a file.
//
//   CZip zip;
//   if (!zip.OpenZip(data, size, password))
//       return Complain(zip.GetLastErrorMsg());
//   ZIPENTRY entry;
//   zip.GetZipItem(-1, &entry);                     // entry.index is now the number of entries
//   zip.GetZipItem(0, &entry);
//   CBuffer content(entry.unc_size);
//   while (zip.UnzipItem(0, chunk, sizeof chunk) == 0x600)
//       ...                                         // a full chunk, and there is more
//
//   CZip zip;
//   if (zip.CreateZip(TW("backup.zip"), password) && zip.ZipAdd(TW("mail/1.eml"), text, length) &&
//       zip.Close())
//       ...
//
// Every operation stores its result code, which GetLastErrorID gives and GetLastErrorMsg puts
// into words:
//
//   0          success
//   0x200      the archive cannot be opened or created
//   0x300      no memory
//   0x400      the file cannot be written, or would grow beyond what the format can address
//   0x600      more data of the entry remain (UnzipItem only)
//   0x700      an entry's headers contradict themselves or the archive's size
//   0x800      an entry's headers lie outside the archive
//   0x1000     wrong password, or none for an encrypted entry
//   0x10000    no archive, or a wrong argument
//   0x40000    the writer failed before
//   0x50000    the writer is closed
//   0x80000    a reader's operation on a writer, or the reverse
//   0x5000000  the entry's data do not come out as its header says, or their method is unknown
//
// Passwords are those of the traditional PKWARE encryption, which keeps out the curious and no one
// else; they are bytes and are not converted.
//
// Copies of an object share one archive. Whoever closes it, closes it for all; a destructor
// closes it too. Operations through the copies left give 0x10000 then (ZipAdd 0x50000).
//
// Not for use by two threads at a time, nor are the copies of one object.

#pragma once

#include "framework/framework.h"

#include <cstddef>
#include <memory>

namespace tlvn {
struct ZipArchive;
}

// What GetZipItem tells of an entry.
struct ZIPENTRY {
    int index;       // of the entry; the number of entries after a query with index -1
    WCHAR name[260]; // cleaned, see CZip::GetZipItem; terminated
    DWORD attr;      // 1 read-only, 2 hidden, 4 system, 16 directory, 32 archive
    FILETIME atime;  // last access, UTC
    FILETIME ctime;  // creation
    FILETIME mtime;  // last write
    int comp_size;   // in bytes; an encryption header counts
    int unc_size;    // in bytes
};
static_assert(offsetof(ZIPENTRY, name) == 4 && offsetof(ZIPENTRY, attr) == 524 &&
              offsetof(ZIPENTRY, atime) == 528 && offsetof(ZIPENTRY, ctime) == 536 &&
              offsetof(ZIPENTRY, mtime) == 544 && offsetof(ZIPENTRY, comp_size) == 552 &&
              offsetof(ZIPENTRY, unc_size) == 556 && sizeof(ZIPENTRY) == 560);

// Operations return 1 for success and 0 for failure, unless said otherwise.
class TLVN_API CZip {
public:
    CZip();
    // Share the archive.
    CZip(const CZip& other);
    CZip& operator=(const CZip& other);
    // Closes the archive, also for the copies.
    ~CZip();

    // Opens an archive of `size` bytes at `data`, which stay the caller's, are read in place and
    // have to stay as they are until Close. `password` is null or empty for none; entries that
    // are not encrypted can be read with any. An archive of the object is closed first. 0x200 when
    // there is no archive; zip64 archives and leading foreign bytes are accepted, archives of
    // several volumes are not.
    int OpenZip(void* data, unsigned int size, const char* password);

    // Describes entry `index`, or tells the number of entries for index -1 (name empty, all else
    // zero). The record is zero after a failure.
    //
    // The name is read in UTF-8 where the entry says so, else in the multibyte code page, and
    // loses a drive, leading separators and what stands before its last "\..\" (either separator).
    // The steps are taken in turn, once each: "a/../../b" gives "../b", and a name that begins
    // with ".." keeps it. Whoever makes a path of a name has to look for that. Names are cut to
    // 259 units. Attributes come from the DOS bits or the Unix mode, times from the DOS time in
    // the local zone (zero when it is no time) or, better, from an extended-timestamp field.
    // 0x700 also where a size does not fit the record.
    int GetZipItem(int index, ZIPENTRY* entry);

    // Extracts the next `size` bytes of entry `index`, or fewer at its end, to `buffer`. Returns
    // the result code: 0 when the entry is complete with this call, 0x600 when more remains; every
    // chunk but the last is full. A call for another index begins that entry, a call after
    // the end or a failure begins anew.
    //
    // A wrong password is known by the check byte before the data, which one or two wrong passwords
    // in 256 pass. When then the data fail, the byte before that decides, in which most programs
    // keep the other half of a check word: if it is right, the data are damaged (0x5000000), else
    // the password is wrong (0x1000).
    int UnzipItem(int index, void* buffer, unsigned int size);

    // Creates the file, or empties it, and begins an archive in it. With a password that is not
    // empty every entry is encrypted. An archive of the object is closed first.
    int CreateZip(const WCHAR* fileName, const char* password);

    // Adds an entry with `size` bytes from `data` (null only for none), at once and with the
    // present time. "\" in the name becomes "/"; characters that the multibyte code page or a
    // Windows file name does not have become "_"; names are cut to 259 bytes. A name that ends in
    // a separator is a directory. Files that are packed already (.zip, .gz, .lzh, ...) are stored,
    // others deflated. A wrong argument leaves the archive as it was, and so does an entry that
    // would begin behind 4 GB or has all of 4 GB - 1 byte, which is refused (0x400); after any
    // other failure it is lost.
    int ZipAdd(const WCHAR* name, void* data, unsigned int size);

    // Closes the archive; a writer first writes the directory, without which the file is worth
    // nothing. When that or an addition has failed, the file is left empty and the result is
    // that of the failure. Closing twice does nothing and succeeds.
    int Close();

    // The result code of the last operation.
    DWORD GetLastErrorID() const;
    // The same in words, with the display name behind it when there is one.
    CStringW GetLastErrorMsg();
    int Succeeded() const;
    int Failed() const;

    // Sets the display name (null for none), used in messages only. CreateZip sets it to the file.
    void SetZipName(const WCHAR* name);

private:
    int Record(DWORD result);

    std::shared_ptr<tlvn::ZipArchive> m_archive; // null, or shared with the copies
    CStringW m_name;
    DWORD m_result = 0;
};
