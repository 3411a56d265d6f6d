// Built with Qt's settings: TLVN_BENCH_QT where Qt is there, TLVN_BENCH_SCINTILLA where
// QScintilla is.

#include "bench/editor_peers.h"

#ifdef TLVN_BENCH_SCINTILLA
#include <Qsci/qsciscintilla.h>
#endif
#ifdef TLVN_BENCH_QT
#include <QApplication>
#include <QKeyEvent>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTextBlock>

namespace {

// One application for the process, without a screen.
void StartQt()
{
    static int count = 1;
    static char name[] = "bench_editor";
    static char* arguments[] = {name, nullptr};
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static QApplication application(count, arguments);
}

QString ToQt(const tlvn::WString& text)
{
    return QString(reinterpret_cast<const QChar*>(text.data()), static_cast<int>(text.size()));
}

// What both peers have in common: a scrolling widget that takes key events.
class QtEditor : public BenchEditor {
public:
    void Press(char key) override
    {
        const int code = key == '\r' ? int{Qt::Key_Return} : key - 'a' + int{Qt::Key_A};
        SendKey(code, QString(QLatin1Char(key)));
    }
    void GoPageDown() override { SendKey(Qt::Key_PageDown, QString()); }
    void PaintAll() override { Get().viewport()->repaint(); }

protected:
    void Show()
    {
        Get().resize(kBenchWidth, kBenchHeight);
        Get().show();
        QApplication::processEvents();
    }
    // What was put off until there is nothing else to do belongs to the operation.
    void Finish()
    {
        QApplication::processEvents();
        PaintAll();
    }

private:
    virtual QAbstractScrollArea& Get() = 0;

    void SendKey(int key, const QString& text)
    {
        QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier, text);
        QApplication::sendEvent(&Get(), &press);
        Finish();
    }
};

class PlainTextEdit : public QtEditor {
public:
    explicit PlainTextEdit(const tlvn::WString& text) : m_text(ToQt(text))
    {
        m_edit.setFont(QFont(kBenchFont, kBenchFontPoints));
        Show();
    }

    void Load() override
    {
        m_edit.setPlainText(m_text);
        Finish();
    }
    void GoToEnd() override
    {
        m_edit.moveCursor(QTextCursor::End);
        Finish();
    }
    void GoToMiddle() override
    {
        const QTextDocument& document = *m_edit.document();
        QTextCursor cursor(document.findBlockByNumber(document.blockCount() / 2));
        cursor.movePosition(QTextCursor::EndOfBlock);
        m_edit.setTextCursor(cursor);
        Finish();
    }
    void Insert(const char* ascii) override
    {
        m_edit.insertPlainText(QString::fromLatin1(ascii));
        Finish();
    }
    void AppendLine() override { m_edit.appendPlainText(QStringLiteral("one more line")); }

private:
    QAbstractScrollArea& Get() override { return m_edit; }

    const QString m_text;
    QPlainTextEdit m_edit;
};

#ifdef TLVN_BENCH_SCINTILLA

class Scintilla : public QtEditor {
public:
    explicit Scintilla(const tlvn::WString& text)
    {
        tlvn::ConvertFromUtf16(65001, text, m_text);
        m_edit.setUtf8(true);
        m_edit.setFont(QFont(kBenchFont, kBenchFontPoints));
        m_edit.setWrapMode(QsciScintilla::WrapCharacter);
        Show();
    }

    void Load() override
    {
        Send(QsciScintilla::SCI_SETTEXT, 0, m_text.c_str());
        Finish();
    }
    void GoToEnd() override
    {
        Send(QsciScintilla::SCI_DOCUMENTEND);
        Finish();
    }
    void GoToMiddle() override
    {
        const long line = Send(QsciScintilla::SCI_GETLINECOUNT) / 2;
        Send(QsciScintilla::SCI_GOTOPOS,
             static_cast<unsigned long>(
                 Send(QsciScintilla::SCI_GETLINEENDPOSITION, static_cast<unsigned long>(line))));
        Finish();
    }
    void Insert(const char* ascii) override
    {
        Send(QsciScintilla::SCI_REPLACESEL, 0, ascii);
        Finish();
    }
    void AppendLine() override
    {
        static const std::string line = "\r\none more line";
        Send(QsciScintilla::SCI_APPENDTEXT, line.size(), line.c_str());
    }

private:
    QAbstractScrollArea& Get() override { return m_edit; }

    long Send(unsigned message, unsigned long first = 0, const char* text = nullptr) const
    {
        return m_edit.SendScintilla(message, first, text);
    }

    std::string m_text;
    QsciScintilla m_edit;
};

#endif

} // namespace

#endif

std::unique_ptr<BenchEditor> MakeScintilla([[maybe_unused]] const tlvn::WString& text)
{
#ifdef TLVN_BENCH_SCINTILLA
    StartQt();
    return std::make_unique<Scintilla>(text);
#else
    return nullptr;
#endif
}

std::unique_ptr<BenchEditor> MakePlainTextEdit([[maybe_unused]] const tlvn::WString& text)
{
#ifdef TLVN_BENCH_QT
    StartQt();
    return std::make_unique<PlainTextEdit>(text);
#else
    return nullptr;
#endif
}
