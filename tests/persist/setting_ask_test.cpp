// What the user is asked when a save fails, by script.

#include "setting_support.h"

#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <vector>

namespace {

// Answers the boxes of one save and writes down what they showed.
struct Script {
    std::vector<int> buttons; // to press, for each box with the caller's buttons
    std::vector<int> answers; // for each message box
    // Each box: the first letters of its buttons and which of them closing it means, or "?" for
    // a question and "!" for anything else, with the text.
    std::vector<std::string> log;
    std::string text;            // of the last box with buttons
    std::function<void()> atBox; // called at each box with buttons
};
Script g_script;

std::string Narrow(const WCHAR* text)
{
    return CString(CStringW(text)).GetString();
}

int TakeFirst(std::vector<int>& list, int otherwise)
{
    if (list.empty()) {
        ADD_FAILURE() << "one box too many";
        return otherwise;
    }
    const int first = list.front();
    list.erase(list.begin());
    return first;
}

int AnswerButtons(const tlvn::ButtonBox& box)
{
    const CString names[] = {Message(3191), Message(3193), Message(3192)};
    std::string log;
    for (int i = 0; i < box.count; ++i)
        for (int k = 0; k < 3; ++k)
            if (Narrow(box.buttons[i]) == names[k].GetString())
                log += "RCG"[k]; // retry, cancel, go on
    g_script.log.push_back(log + std::to_string(box.cancel));
    g_script.text = Narrow(box.text);
    EXPECT_EQ(box.icon, UINT{MB_ICONEXCLAMATION});
    if (g_script.atBox)
        g_script.atBox();
    return TakeFirst(g_script.buttons, box.count - 1);
}

int AnswerMessage(HWND, const WCHAR* text, const WCHAR*, UINT type)
{
    const bool question = type == (MB_YESNO | MB_DEFBUTTON2 | MB_ICONEXCLAMATION);
    EXPECT_TRUE(question || type == (MB_OK | MB_ICONINFORMATION));
    g_script.log.push_back((question ? "?" : "!") + Narrow(text));
    return TakeFirst(g_script.answers, IDYES);
}

// A file that holds "1" while the object holds "2", opened by somebody else.
class SettingAsk : public testing::Test {
protected:
    void SetUp() override
    {
        m_oldButtons = tlvn::SetButtonBoxProcedure(&AnswerButtons);
        m_oldMessages = tlvn::SetMessageBoxProcedure(&AnswerMessage);
        Begin();
    }
    void TearDown() override
    {
        tlvn::SetButtonBoxProcedure(m_oldButtons);
        tlvn::SetMessageBoxProcedure(m_oldMessages);
    }
    void Begin()
    {
        g_script = Script();
        m_other.reset();
        m_data.SetValue("a", "x", "1");
        ASSERT_EQ(m_data.SaveFile(m_file.Path()), 1);
        m_data.SetValue("a", "x", "2");
        m_other.emplace(m_file.Path(), CFile::modeRead | CFile::shareDenyWrite);
    }
    std::string Stored() const
    {
        Settings back;
        back.LoadFile(m_file.Path());
        return CString(back.Get("a", "x")).GetString();
    }

    TempFile m_file;
    std::optional<CFile> m_other;
    Settings m_data;
    CString m_message;
    tlvn::ButtonBoxProcedure m_oldButtons = nullptr;
    tlvn::MessageBoxProcedure m_oldMessages = nullptr;
};

} // namespace

TEST_F(SettingAsk, Answers)
{
    constexpr std::size_t kNever = 99;
    const std::string sure = "?" + std::string(Message(3173));
    const struct {
        int ask;
        const char* question;
        std::vector<int> buttons, answers;
        std::size_t freeAt; // the box at which the file is closed
        int result;
        const char* stored;
        std::vector<std::string> log;
    } cases[] = {
        {ASK_RETRY_CANCEL, nullptr, {}, {}, 0, 1, "2", {}},
        {ASK_NOTHING, nullptr, {}, {}, kNever, 0, "1", {}},
        {-1, nullptr, {}, {}, kNever, 0, "1", {}},
        // The three boxes; an empty question is none.
        {ASK_RETRY_CANCEL, nullptr, {1}, {}, kNever, 0, "1", {"RC1"}},
        {ASK_RETRY_CONTINUE, "", {1}, {IDYES}, kNever, 1, "1", {"RG-1", sure}},
        {ASK_RETRY_CANCEL_CONTINUE, nullptr, {1}, {}, kNever, 0, "1", {"RCG1"}},
        {ASK_RETRY_CANCEL_CONTINUE, nullptr, {2}, {IDYES}, kNever, 1, "1", {"RCG1", sure}},
        // Retry saves again.
        {ASK_RETRY_CANCEL, nullptr, {0, 0, 0}, {}, 3, 1, "2", {"RC1", "RC1", "RC1"}},
        // No shows the first box again, without a save in between, which would succeed.
        {ASK_RETRY_CANCEL_CONTINUE, "No?", {2, 1}, {IDNO}, 1, 0, "1", {"RCG1", "?No?", "RCG1"}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(&c - cases);
        Begin();
        g_script.buttons = c.buttons;
        g_script.answers = c.answers;
        g_script.atBox = [&] {
            if (g_script.log.size() == c.freeAt)
                m_other.reset();
        };
        if (c.freeAt == 0)
            m_other.reset();
        EXPECT_EQ(m_data.SaveSdWithRetry(m_file.Path(), static_cast<IfErrAsk>(c.ask), 0, c.question,
                                         &m_message, nullptr),
                  c.result);
        EXPECT_EQ(g_script.log, c.log);
        EXPECT_EQ(Stored(), c.stored);
        EXPECT_EQ(m_data.IsUpdated(), *c.stored == '1'); // so that a later save still saves
        if (c.result == 0) {
            EXPECT_EQ(m_message.Find(Message(3171) + "\n"), 0);
            EXPECT_GE(m_message.Find(CString("\nFile: ") + m_file.Path()), 0);
            EXPECT_TRUE(c.log.empty() || g_script.text == m_message.GetString());
        }
    }
}

TEST_F(SettingAsk, EmergencySave)
{
    g_script.buttons = {1};
    g_script.answers = {IDYES, IDOK};
    EXPECT_EQ(
        m_data.SaveSdWithRetry(m_file.Path(), ASK_RETRY_CONTINUE, 1, nullptr, &m_message, nullptr),
        1);
    EXPECT_EQ(m_data.IsUpdated(), 1);
    ASSERT_EQ(g_script.log.size(), 3u);
    const std::string told = g_script.log[2];

    // <temporary folder><name>_yymmdd_hhmmss, then the real path.
    const std::string path = tlvn::GetTempFolder() + "s";
    const std::size_t at = told.find(path + "_");
    ASSERT_TRUE(told[0] == '!' && at != std::string::npos) << told;
    const std::string copy = told.substr(at, path.size() + 14);
    EXPECT_EQ(copy.rfind('_'), copy.size() - 7);
    EXPECT_EQ(copy.find_first_not_of("0123456789_", path.size()), std::string::npos) << copy;
    EXPECT_NE(told.find(std::string(m_file.Path()) + "\n", at + copy.size()), std::string::npos);

    Settings saved;
    EXPECT_EQ(saved.LoadFile(copy.c_str()), 1);
    EXPECT_EQ(saved.EqualSD(m_data), 1);
    EXPECT_EQ(Stored(), "1");
    EXPECT_TRUE(tlvn::RemoveFile(copy.c_str()));
}
