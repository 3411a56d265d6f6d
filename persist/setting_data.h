// A settings file in memory: keys, each with name/value pairs, both in the order of the file.
//
//   CSettingData settings;
//   if (!settings.LoadFile(path))
//       return settings.GetErrorMessage();
//   settings.GetValue("Window", "Rect", rect);
//   settings.SetValue("Window", "Rect", newRect);
//   settings.SaveSdWithRetry(path, ASK_RETRY_CANCEL, 1, nullptr, &message, this);
//
// Key names and value names are narrow text of the multibyte code page and compared without
// regard to case; values are UTF-16 text, converted to and from other types on access. A null
// name is the empty one. The file (setting_text.h) is UTF-16 with a byte-order mark and may be
// enciphered as a whole (cipher_container.h). What the file cannot hold is not taken: setting a
// value with an empty name, or in a key called "DATA-START" or "DATA-END", does nothing.
//
// Functions that return an int give 1 for yes, done or found and 0 otherwise, unless they say
// something else. Lack of memory throws the memory exception.
//
// `setUpdated` says whether a change counts for the updated flag: with 0 the flag stays as it
// is. What changes nothing never sets it.
//
// Not for sharing between threads.

#pragma once

#include "foundation/buffer.h"
#include "persist/setting_text.h"
#include "persist/whole_file.h"

#include <concepts>
#include <type_traits>

// What the user is asked when a file cannot be saved. Any other value asks nothing.
enum IfErrAsk : int {
    ASK_NOTHING = 0,
    ASK_RETRY_CANCEL = 1,
    ASK_RETRY_CONTINUE = 2,
    ASK_RETRY_CANCEL_CONTINUE = 3,
};

class TLVN_API CSettingData {
public:
    // Arrays of what belongs to the object.
    using KeyArray = CTypedPtrArray<CPtrArray, CSettingDataKey*>;
    using PairArray = CSettingDataKey::PairArray;

    CSettingData();
    virtual ~CSettingData();
    CSettingData(const CSettingData&) = delete;
    CSettingData& operator=(const CSettingData&) = delete;

    // --- loading and saving ------------------------------------------------------------------
    // Does nothing when already loaded; else replaces all data by the file's. An empty file is
    // an empty object. After a failure (0) the error message says why and the object is empty
    // and not loaded. A file that held a key or a name twice sets the updated flag.
    int LoadFile(const char* path);
    // Makes the object loaded and empty.
    void LoadNone();
    // Back to the state after construction: no data, no path, no key, no message, no flag.
    void InitSD();

    int IsLoaded() const { return m_loaded; }
    int IsUpdated() const { return m_updated; }
    void SetUpdated(int updated) { m_updated = updated != 0; }
    // The path of LoadFile.
    const CString& GetFilePath() const { return m_path; }

    // Saves when the updated flag is set (it is cleared then), else succeeds at once. Returns 1,
    // or 0 with the reason in `message` (may be null), which is else emptied. On failure the user
    // is asked as `ask` says, again and again: retry, cancel (0), or continue, which takes a
    // second question (`ignoreQuestion`, or a standard one when null or empty). Continuing
    // returns 1 with the flag still set; with `emergencySave` the data goes first into a file in
    // the folder for temporary files, whose name the user is told. A null path means that of
    // LoadFile. The owner of the boxes may be null.
    int SaveSdWithRetry(const char* path, IfErrAsk ask, int emergencySave,
                        const char* ignoreQuestion, CString* message, CWnd* owner);

    // Whether files are enciphered, and the key text. With an empty text they never are. Does
    // not touch the updated flag.
    void SetCryptKey(int on, const char* key);
    // On for a text that is not empty.
    void SetCryptKey(const CString& key);

    const CString& GetErrorMessage() const { return m_errorMessage; }
    void ClearErrorMessage() { m_errorMessage.Empty(); }

    // --- values ------------------------------------------------------------------------------
    // Creates an empty key if there is none.
    void SetKey(const char* key);

    // Sets a value, appending what is missing. Arrays of numbers are joined by commas, arrays of
    // strings by tabs; a CRect is "left,top,right,bottom".
    void SetValue(const char* key, const char* name, const CStringW& value);
    void SetValue(const char* key, const char* name, const WCHAR* value);
    void SetValue(const char* key, const char* name, const CString& value);
    void SetValue(const char* key, const char* name, const char* value);
    void SetValue(const char* key, const char* name, int value);
    void SetValue(const char* key, const char* name, DWORD value);
    void SetValue(const char* key, const char* name, INT64 value);
    void SetValue(const char* key, const char* name, const CRect& value);
    void SetValue(const char* key, const char* name, const CUIntArray& value);
    void SetValue(const char* key, const char* name, const CArray<int, int>& value);
    void SetValue(const char* key, const char* name, const CStringArray& value);
    // Any other integer as the one of these nearest in size and sign; so are they read.
    template <std::integral Integer>
    void SetValue(const char* key, const char* name, Integer value)
    {
        SetValue(key, name, static_cast<Nearest<Integer>>(value));
    }
    // As "0x%08X".
    void SetHexValue(const char* key, const char* name, DWORD value);
    // One pair for each string, named prefix and index from 0. Nothing changes when the values
    // under the prefix are these already; else all pairs under it are replaced.
    void SetValueBegin(const char* key, const char* prefix, const CStringArray& values);

    // Return 1, or 0 with `out` untouched when there is no such pair. Numbers are decimal, with
    // a sign or none; they end before the first character that is no digit, none at all being 0,
    // and stop at the limits of their type. An array is replaced; an empty text is an empty one.
    int GetValue(const char* key, const char* name, CStringW& out) const;
    int GetValue(const char* key, const char* name, CString& out) const;
    int GetValue(const char* key, const char* name, int& out) const;
    int GetValue(const char* key, const char* name, DWORD& out) const;
    int GetValue(const char* key, const char* name, INT64& out) const;
    int GetValue(const char* key, const char* name, CRect& out) const;
    int GetValue(const char* key, const char* name, CUIntArray& out) const;
    int GetValue(const char* key, const char* name, CArray<int, int>& out) const;
    int GetValue(const char* key, const char* name, CStringArray& out) const;
    template <std::integral Integer>
    int GetValue(const char* key, const char* name, Integer& out) const
    {
        Nearest<Integer> value;
        const int found = GetValue(key, name, value);
        if (found != 0)
            out = static_cast<Integer>(value);
        return found;
    }
    // Up to 32 bits in hexadecimal digits, with "0x" before them or not.
    int GetHexValue(const char* key, const char* name, DWORD& out) const;
    template <std::unsigned_integral Integer>
    int GetHexValue(const char* key, const char* name, Integer& out) const
    {
        DWORD value;
        const int found = GetHexValue(key, name, value);
        if (found != 0)
            out = static_cast<Integer>(value);
        return found;
    }
    // The values of all pairs whose names begin with the prefix, in order; 0 and `out` untouched
    // when there is none.
    int GetValueBegin(const char* key, const char* prefix, CStringArray& out) const;

    // The truth of a stored number, or `defaultValue` (as it is) when there is none.
    int GetBoolValue(const char* key, const char* name, int defaultValue) const;
    // A stored number brought into the range, or `defaultValue` (as it is) when there is none.
    int GetIntValue(const char* key, const char* name, int minimum, int maximum,
                    int defaultValue) const;

    // The pairs of a key, in order, or null; valid until the key goes. To be looked at only.
    PairArray* GetPairList(const char* key) const;
    // All keys, in order.
    const KeyArray& GetKeyList() const { return m_keys.GetItems(); }

    // --- keys and names ------------------------------------------------------------------------
    int RemoveKey(const char* key, int setUpdated = 1);
    void RemoveKeyAll();
    // Every key whose name begins with the prefix; returns how many.
    int RemoveKeyBegin(const char* prefix, int setUpdated = 1);
    // Puts newPrefix in the place of oldPrefix in every key name that begins with it; returns how
    // many. A key that gets the name of another is merged into the one that comes first, the
    // values of the later one winning. A name that no key can have leaves its key as it was.
    int RenameKeyBegin(const char* oldPrefix, const char* newPrefix);
    // Makes the key the one at `position` (0: the first), a position out of range being the
    // nearest one in it. 0 when there is no such key.
    int MoveKeyPosition(const char* key, int position);
    int RemoveName(const char* key, const char* name);
    int RemoveNameAt(const char* key, int index);
    // Every pair whose name begins with the prefix; returns how many.
    int RemoveNameBegin(const char* key, const char* prefix);

    // --- from another object ---------------------------------------------------------------------
    // Make all data, one key (in its place here), one pair, or the pairs under a prefix what they
    // are in `other`; 0, and nothing changes, when it has no such key or pair. Flags, path and
    // cipher key are not copied.
    void CopySD(const CSettingData& other, int setUpdated = 1);
    int CopySdKey(const CSettingData& other, const char* key, int setUpdated = 1);
    int CopySdName(const CSettingData& other, const char* key, const char* name,
                   int setUpdated = 1);
    int CopySdNameBegin(const CSettingData& other, const char* key, const char* prefix,
                        int setUpdated = 1);
    // 1 when both have the same keys with the same pairs in the same order; names are compared
    // without regard to case, values with.
    int EqualSD(const CSettingData& other) const;

    // --- one key ---------------------------------------------------------------------------------
    // 1 with the value in `value`, or 0 when there is no such pair, or no key.
    static int LookupSettingData(CSettingDataKey* key, const char* name, CStringW& value);
    // Replaces the value of a pair and returns 1, or appends a new one and returns 0.
    static int SetAtSettingData(CSettingDataKey* key, const char* name, const CStringW& value);

protected:
    // Writes the file, whole or not at all (whole_file.h), and clears the updated flag. Others
    // may read the file meanwhile. 0 sets the error message.
    int SaveFile(const char* path);

private:
    template <class Integer>
    using Nearest = std::conditional_t<(sizeof(Integer) > sizeof(int)), INT64,
                                       std::conditional_t<std::is_signed_v<Integer>, int, DWORD>>;

    CSettingDataKey* FindKey(const char* key) const;
    const CSettingDataPair* FindPair(const char* key, const char* name) const;
    // The key, made when it is missing; null when no key can have that name.
    CSettingDataKey* MakeKey(std::string_view key, int setUpdated);
    void Store(const char* key, const char* name, tlvn::WStringView value, int setUpdated = 1);
    void Changed(int setUpdated);

    bool IsEnciphered() const;
    int WriteFile(const char* path);
    int ReadFile(const char* path);
    int SaveEmergencyCopy(const char* path, CWnd* owner);
    void SetError(const CString& text, const char* path, const CString& data);
    void SetFileError(const tlvn::FileResult& result, const char* path);

    // The file as it was read, with what nobody asked for yet: given up behind the keys.
    std::unique_ptr<CBuffer> m_image;
    tlvn::SettingKeyList m_keys;
    int m_loaded;
    int m_updated;
    int m_encipher;
    CString m_errorMessage;
    CString m_path;
    CString m_cryptKey; // wiped before it changes or goes
};
