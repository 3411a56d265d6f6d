// What the viewer's tests share.

#pragma once

#include "viewer/mail_list.h"

#include <gtest/gtest.h>

#include <string>

// The piece again and again, until there are `size` bytes.
inline std::string Repeated(const std::string& piece, std::size_t size)
{
    std::string all;
    while (all.size() < size)
        all += piece;
    return all;
}

// Multiparts in one another, which are not closed.
inline std::string NestedParts(int depth)
{
    std::string mail;
    for (int i = 0; i < depth; ++i) {
        const std::string boundary = "b" + std::to_string(i);
        mail += "Content-Type: multipart/mixed; boundary=" + boundary + "\n\n--" + boundary + "\n";
    }
    return mail + "\nthe innermost text\n";
}

inline void ReadAll(tlvn::MailList& list, const std::string& path)
{
    std::string error;
    ASSERT_TRUE(list.Open(path, error)) << error;
    while (list.Step(1000))
        continue;
}
