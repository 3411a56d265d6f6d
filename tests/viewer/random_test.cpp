// The sample mails, damaged at random: pieces lost, moved and put in where they do not belong.

#include "tests/support/mail_properties.h"
#include "viewer/mail_file.h"

#include <gtest/gtest.h>

#include <random>

namespace {

const char* const kNames[] = {"01-iso-2022-jp", "04-utf-8-base64", "05-utf-8-quoted-printable",
                              "07-no-label",    "09-attachments",  "10-links"};
const char* const kPieces[] = {"\r\n",
                               "\n ",
                               "--b\n",
                               "--b--\n",
                               "--=_outer_7f3a\r\n",
                               "=?utf-8?Q?",
                               "?=",
                               "\"",
                               "; name*0*=",
                               "Content-Type: multipart/mixed; boundary=b\n\n",
                               "\x1B$B",
                               "\x1B(",
                               "\x0E",
                               "\xE3\x81",
                               "=",
                               "Content-Transfer-Encoding: base64\n",
                               "http://",
                               "@",
                               "\xED\xA0\x80"};

class Damage {
public:
    explicit Damage(unsigned seed) : m_random(seed)
    {
        for (const char* name : kNames) {
            std::string error;
            m_mails.emplace_back();
            EXPECT_TRUE(tlvn::LoadMailFile(
                std::string(TLVN_SOURCE_DIR) + "/samples/" + name + ".eml", m_mails.back(), error));
        }
    }

    std::string Next()
    {
        std::string mail = m_mails[Number(m_mails.size())];
        for (std::size_t steps = 1 + Number(12); steps > 0 && !mail.empty(); --steps) {
            const std::size_t at = Number(mail.size());
            const std::string& other = m_mails[Number(m_mails.size())];
            switch (Number(16)) {
            case 0:
                mail.resize(at);
                break;
            case 1:
            case 2:
            case 3:
                mail[at] = static_cast<char>(Number(256));
                break;
            case 4:
            case 5:
                mail.erase(at, Number(40));
                break;
            case 6:
            case 7:
                mail.insert(at, other.substr(Number(other.size()), Number(200)));
                break;
            default:
                mail.insert(at, kPieces[Number(std::size(kPieces))]);
                break;
            }
        }
        return mail;
    }

private:
    std::size_t Number(std::size_t below) { return m_random() % below; }

    std::mt19937 m_random;
    std::vector<std::string> m_mails;
};

// Fails when a boundary is missed, a view leaves its part, or raw bytes reach the output (an
// encoded word that stays as written did that).
TEST(DamagedMails, KeepTheProperties)
{
    Damage damage(20250922);
    for (int i = 0; i < 3000; ++i) {
        const std::string mail = damage.Next();
        ASSERT_EQ(CheckMail(mail), "") << "mail " << i << ":\n" << mail;
    }
}

} // namespace
