// What the user is asked when a save fails, by script.

#include "setting_support.h"

#include <gtest/gtest.h>

#include <functional>
#include <vector>

namespace {

// Answers the boxes of one save and writes down what they showed.
struct Script {
    std::vector<int> buttons;           // for each box with the caller's buttons
    std::vector<int> answers;           // for each message box
    std::function<void()> beforeAnswer; // at each box with the caller's buttons
    std::vector<std::string> log;       // texts of buttons, or "<type>: text"
    std::vector<std::string> texts;     // of the boxes with buttons
};
Script g_script;

std::string Narrow(const WCHAR* text)
{
    return CString(CStringW(text)).GetString();
}

int AnswerButtons(const tlvn::ButtonBox& box)
{
    std::string log;
    for (int i = 0; i < box.count; ++i)
        log += Narrow(box.buttons[i]) + "|";
    log += box.cancel < 0 ? "-" : std::to_string(box.cancel);
    g_script.log.push_back(log);
    g_script.texts.push_back(Narrow(box.text));
    EXPECT_EQ(box.icon, UINT{MB_ICONEXCLAMATION});
    if (g_script.beforeAnswer)
        g_script.beforeAnswer();
    if (g_script.buttons.empty()) {
        ADD_FAILURE() << "one box too many";
        return box.count - 1;
    }
    const int pressed = g_script.buttons.front();
    g_script.buttons.erase(g_script.buttons.begin());
    return pressed;
}

int AnswerMessage(HWND, const WCHAR* text, const WCHAR*, UINT type)
{
    g_script.log.push_back(std::to_string(type) + ": " + Narrow(text));
    if (g_script.answers.empty()) {
        ADD_FAILURE() << "one message too many";
        return IDYES;
    }
    const int answer = g_script.answers.front();
    g_script.answers.erase(g_script.answers.begin());
    return answer;
}

std::string Message(UINT id)
{
    CString text;
    text.LoadString(id);
    return text.GetString();
}

class SettingAsk : public testing::Test {
protected:
    void SetUp() override
    {
        g_script = Script();
        m_oldButtons = tlvn::SetButtonBoxProcedure(&AnswerButtons);
        m_oldMessages = tlvn::SetMessageBoxProcedure(&AnswerMessage);
        m_data.SetValue("a", "x", "1");
        ASSERT_EQ(m_data.SaveFile(m_file.Path()), 1);
        m_data.SetValue("a", "x", "2");
        // Somebody has the file open.
        m_other.Open(m_file.Path(), CFile::modeRead | CFile::shareDenyWrite);
    }
    void TearDown() override
    {
        tlvn::SetButtonBoxProcedure(m_oldButtons);
        tlvn::SetMessageBoxProcedure(m_oldMessages);
        EXPECT_TRUE(g_script.buttons.empty() && g_script.answers.empty());
    }

    int Save(IfErrAsk ask, int emergency = 0, const char* question = nullptr)
    {
        return m_data.SaveSdWithRetry(m_file.Path(), ask, emergency, question, &m_message, nullptr);
    }
    std::string Stored() const
    {
        Settings back;
        return back.LoadFile(m_file.Path()) != 0 ? CString(back.Get("a", "x")).GetString()
                                                 : back.GetErrorMessage().GetString();
    }

    const std::string m_retry = Message(3191), m_goOn = Message(3192), m_cancel = Message(3193);
    const std::string m_question =
        std::to_string(MB_YESNO | MB_DEFBUTTON2 | MB_ICONEXCLAMATION) + ": ";
    TempFile m_file;
    CFile m_other;
    Settings m_data;
    CString m_message;
    tlvn::ButtonBoxProcedure m_oldButtons = nullptr;
    tlvn::MessageBoxProcedure m_oldMessages = nullptr;
};

} // namespace

TEST_F(SettingAsk, NothingToSaveAsksNothing)
{
    m_data.SetUpdated(0);
    m_message = "before";
    EXPECT_EQ(Save(ASK_RETRY_CANCEL), 1);
    EXPECT_TRUE(m_message.IsEmpty());
    EXPECT_EQ(Stored(), "1");
}

TEST_F(SettingAsk, SuccessAsksNothing)
{
    m_other.Close();
    EXPECT_EQ(Save(ASK_RETRY_CANCEL), 1);
    EXPECT_EQ(m_data.IsUpdated(), 0);
    EXPECT_EQ(Stored(), "2");
}

TEST_F(SettingAsk, WithoutAQuestionOnlyTheMessage)
{
    for (const int ask : {0, 4, -1}) {
        EXPECT_EQ(Save(static_cast<IfErrAsk>(ask)), 0);
        const std::string message = m_message.GetString();
        EXPECT_EQ(message.find(Message(3171) + "\n"), 0u);
        EXPECT_NE(message.find(std::string("\nFile: ") + m_file.Path()), std::string::npos);
    }
    EXPECT_EQ(m_data.SaveSdWithRetry(m_file.Path(), ASK_NOTHING, 0, nullptr, nullptr, nullptr), 0);
    EXPECT_TRUE(g_script.log.empty());
    EXPECT_EQ(m_data.IsUpdated(), 1);
    EXPECT_EQ(Stored(), "1");
}

// The three forms of the box: buttons in order and which one closing it means.
TEST_F(SettingAsk, Buttons)
{
    g_script.buttons = {1};
    EXPECT_EQ(Save(ASK_RETRY_CANCEL), 0);
    EXPECT_EQ(g_script.texts[0], m_message.GetString());
    g_script.buttons = {1};
    g_script.answers = {IDYES};
    EXPECT_EQ(Save(ASK_RETRY_CONTINUE), 1);
    g_script.buttons = {1};
    EXPECT_EQ(Save(ASK_RETRY_CANCEL_CONTINUE), 0);
    EXPECT_EQ(g_script.log,
              (std::vector<std::string>{m_retry + "|" + m_cancel + "|1",
                                        m_retry + "|" + m_goOn + "|-", m_question + Message(3173),
                                        m_retry + "|" + m_cancel + "|" + m_goOn + "|1"}));
    EXPECT_EQ(Stored(), "1");
}

TEST_F(SettingAsk, RetrySavesAgain)
{
    g_script.buttons = {0, 0, 0};
    g_script.beforeAnswer = [this] {
        if (g_script.log.size() == 3)
            m_other.Close();
    };
    EXPECT_EQ(Save(ASK_RETRY_CANCEL), 1);
    EXPECT_EQ(g_script.log.size(), 3u);
    EXPECT_TRUE(m_message.IsEmpty());
    EXPECT_EQ(Stored(), "2");
    EXPECT_EQ(m_data.IsUpdated(), 0);
}

// No to the question shows the first box again, without saving in between.
TEST_F(SettingAsk, NoAsksAgain)
{
    g_script.buttons = {2, 2, 1};
    g_script.answers = {IDNO, IDNO};
    g_script.beforeAnswer = [this] {
        if (g_script.log.size() == 3)
            m_other.Close(); // a save now would succeed
    };
    EXPECT_EQ(Save(ASK_RETRY_CANCEL_CONTINUE, 1, "Really?"), 0);
    EXPECT_EQ(g_script.log[1], m_question + "Really?");
    EXPECT_EQ(g_script.log.size(), 5u);
    EXPECT_EQ(Stored(), "1");
}

TEST_F(SettingAsk, ContinueAcceptsTheLoss)
{
    g_script.buttons = {2};
    g_script.answers = {IDYES};
    EXPECT_EQ(Save(ASK_RETRY_CANCEL_CONTINUE, 0, ""), 1);
    EXPECT_EQ(g_script.log[1], m_question + Message(3173)); // an empty question is none
    EXPECT_EQ(g_script.log.size(), 2u);
    EXPECT_EQ(m_data.IsUpdated(), 1); // so that a later save still saves
    EXPECT_EQ(Stored(), "1");
}

TEST_F(SettingAsk, EmergencySave)
{
    g_script.buttons = {1};
    g_script.answers = {IDYES, IDOK};
    EXPECT_EQ(Save(ASK_RETRY_CONTINUE, 1), 1);
    EXPECT_EQ(m_data.IsUpdated(), 1);
    ASSERT_EQ(g_script.log.size(), 3u);
    const std::string told = g_script.log[2];
    EXPECT_EQ(told.find(std::to_string(MB_OK | MB_ICONINFORMATION) + ": "), 0u);

    // <folder><name>_yymmdd_hhmmss, then the real path.
    const std::string path = m_file.Path();
    const std::size_t at = told.find(path + "_");
    ASSERT_NE(at, std::string::npos) << told;
    const std::string copy = told.substr(at, path.size() + 14);
    EXPECT_EQ(copy.size() - copy.rfind('_'), 7u);
    EXPECT_EQ(copy.find_first_not_of("0123456789_", path.size()), std::string::npos) << copy;
    EXPECT_NE(told.find(path + "\n", at + copy.size()), std::string::npos);

    Settings saved;
    EXPECT_EQ(saved.LoadFile(copy.c_str()), 1);
    EXPECT_EQ(saved.EqualSD(m_data), 1);
    EXPECT_EQ(Stored(), "1");
    EXPECT_TRUE(tlvn::RemoveFile(copy.c_str()));
}
