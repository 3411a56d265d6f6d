// The line markers of mails, kept beside them in a settings file.
//
//   MarkerFile markers;
//   markers.Load(path);
//   editor.SetLineMarkers(markers.Get(MarkerFile::MakeKey(mail, mailPath)));
//
// The markers of a mail are the text form of a marker array (SerializeLineMarkerArray of the
// editor), relative to the first line of the body. They belong to the mail by its message
// identifier, so that they go with it when its file is moved; a mail without one is told by its
// path and its header. Two windows on one folder do not lose each other's markers: saving reads the
// file again and changes only the mails that were set. See viewer/settings_file.h for what happens
// to a file that cannot be read.

#pragma once

#include "viewer/mail_reader.h"
#include "viewer/settings_file.h"

#include <map>

namespace tlvn {

class MarkerFile {
public:
    // What the markers of the mail are kept under: ASCII, at most 200 bytes.
    static std::string MakeKey(const Mail& mail, const std::string& path);

    // Starts anew with the file at a narrow path; what has not been saved to it stays set.
    SettingsFile::State Load(const std::string& path);
    // Writes what has been set. False with the reason in GetMessage.
    bool Save();
    const std::string& GetMessage() const { return m_file.GetMessage(); }

    // The markers, empty for none.
    std::string Get(const std::string& key) const;
    // Empty markers remove the mail from the file.
    void Set(const std::string& key, const std::string& markers);

private:
    void Put(const std::string& key, const std::string& markers);

    std::string m_path;
    SettingsFile m_file;
    std::map<std::string, std::string> m_unsaved; // markers by key
};

} // namespace tlvn
