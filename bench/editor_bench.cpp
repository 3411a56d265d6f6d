// The editor with 50 MB of Japanese mail, beside QScintilla and QPlainTextEdit: loading, memory,
// typing in the middle, appending, painting, scrolling.
//
// Each editor works in a process of its own, so that its memory is its own. Times are those of
// the processor, which other programs on the machine disturb least; nothing here waits. Memory is
// by how much the process has grown at most since it had the text in the form that the editor
// takes.

#include "bench/allocation_count.h"
#include "bench/bench_table.h"
#include "bench/editor_window.h"
#include "bench/mail_text.h"

#include "foundation/allocation.h"
#include "framework/headless/headless.h"

#include <malloc.h>
#include <sys/wait.h>
#include <time.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <random>
#include <vector>

namespace {

constexpr std::size_t kTextBytes = 50'000'000;
constexpr int kAppendBatches = 10;

// Of one of many equal operations, in seconds.
struct Spread {
    double median, percentile99, most;
};

// What a process reports: plain numbers through a pipe.
struct Figures {
    double load, memory;
    Spread insert, enter, key, page, paint;
    double appendFirst, appendLast; // of a line in the first and last batch
    int lines, rows, allocations;
    double serialOfLine, lineOfSerial, serialOfFewLines;
};

double Now()
{
    timespec time{};
    ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

template <class Run>
double Seconds(Run run)
{
    const double start = Now();
    run();
    return Now() - start;
}

template <class Run>
Spread MeasureEach(int count, Run run)
{
    std::vector<double> times;
    for (int i = 0; i < count; ++i)
        times.push_back(Seconds(run));
    std::sort(times.begin(), times.end());
    return {times[times.size() / 2], times[times.size() * 99 / 100], times.back()};
}

// A line of /proc/self/status, in bytes.
double ReadStatus(const std::string& name)
{
    std::ifstream status("/proc/self/status");
    std::string word;
    double kilobytes = 0;
    while (status >> word) {
        if (word == name + ":" && status >> kilobytes)
            break;
    }
    return kilobytes * 1024;
}

// --- ours --------------------------------------------------------------------------------------

class OurEditor : public BenchEditor {
public:
    explicit OurEditor(const std::string& text) : m_text(text) { CreateBenchWindow(m_editor); }

    CEditorWnd& Get() { return m_editor; }

    void Load() override
    {
        m_editor.SetDocument(CT_SJIS, m_text.data(), static_cast<int>(m_text.size()));
        m_editor.UpdateWindow();
    }
    void GoToEnd() override
    {
        m_editor.CaretDocEnd();
        m_editor.UpdateWindow();
    }
    void GoToMiddle() override
    {
        CTextPos pos(m_editor.GetLogicalLineCt(1) / 2, 0);
        m_editor.ToLogicalLineEnd(pos);
        m_editor.MoveCaret(pos, 0, 1, CaretMoveText);
        m_editor.UpdateWindow();
    }
    void Insert(const char* ascii) override
    {
        m_editor.InsertText(m_editor.GetCaretTPos(), ascii, static_cast<int>(std::strlen(ascii)));
        m_editor.UpdateWindow();
    }
    void Press(char key) override
    {
        tlvn::headless::SendKeyPress(key == '\r' ? VK_RETURN : key - 'a' + 'A');
        tlvn::PumpPendingMessages();
    }
    void AppendLine() override
    {
        static constexpr char line[] = "one more line";
        m_editor.AppendText(line, static_cast<int>(sizeof line - 1), 0);
    }
    void GoPageDown() override
    {
        m_editor.ScrollPageDown();
        m_editor.UpdateWindow();
    }
    void PaintAll() override
    {
        m_editor.Invalidate(FALSE);
        m_editor.UpdateWindow();
    }

private:
    const std::string& m_text;
    CEditorWnd m_editor;
};

// Time of a call for lines all over a document.
template <class Run>
double MeasureLookup(int count, Run run)
{
    std::mt19937 random(1);
    std::vector<int> places(1'000'000);
    for (int& place : places)
        place = static_cast<int>(random() % static_cast<unsigned>(count));
    int sum = 0;
    const double taken = Seconds([&] {
        for (const int place : places)
            sum += run(place);
    });
    Use(&sum);
    return taken / static_cast<double>(places.size());
}

// Every line starts at the row that it is found by.
void CheckLookup(const CEditorWnd& editor)
{
    for (int line = 0; line < editor.GetLogicalLineCt(1); line += 997) {
        const CTextPos pos = editor.GetDoc().FindSerialLineP(editor.GetSerialLineP(line, 0));
        if (pos.line != line || pos.physical != 0)
            std::printf("WRONG: line %d is found as %d\n", line, pos.line);
    }
}

int CountPaintAllocations(OurEditor& ours)
{
    const int before = CountAllocations();
    tlvn::SetAllocationLimit(0); // fails, loudly, for what does not come from operator new
    ours.PaintAll();
    tlvn::SetAllocationLimit(-1);
    return CountAllocations() - before;
}

void MeasureLookups(CEditorWnd& editor, Figures& figures)
{
    const auto serialOfLine = [&editor](int line) { return editor.GetSerialLineP(line, 0); };
    figures.serialOfLine = MeasureLookup(editor.GetLogicalLineCt(1), serialOfLine);
    figures.lineOfSerial = MeasureLookup(editor.GetDocSize(), [&editor](int row) {
        return editor.GetDoc().FindSerialLineP(row).line;
    });
    CheckLookup(editor);
    const std::string few = MakeMailText(50'000);
    editor.SetDocument(CT_SJIS, few.data(), static_cast<int>(few.size()));
    figures.serialOfFewLines = MeasureLookup(editor.GetLogicalLineCt(1), serialOfLine);
}

// --- all ---------------------------------------------------------------------------------------

void MeasureLoad(BenchEditor& editor, Figures& figures)
{
    ::malloc_trim(0);
    std::ofstream("/proc/self/clear_refs") << "5"; // the most memory so far is that of now
    const double memory = ReadStatus("VmRSS");
    figures.load = Seconds([&] {
        editor.Load();
        editor.GoToEnd();
    });
    figures.memory = ReadStatus("VmHWM") - memory;
}

// How many times things are done that take some editors long.
struct Counts {
    int edits;
    int appended; // lines in each of kAppendBatches
    int pages;
    int paints;
};

void MeasureUse(BenchEditor& editor, const Counts& counts, Figures& figures)
{
    editor.GoToMiddle();
    figures.paint = MeasureEach(counts.paints, [&] { editor.PaintAll(); });
    figures.insert = MeasureEach(counts.edits, [&] { editor.Insert("a"); });
    figures.enter = MeasureEach(counts.edits, [&] { editor.Insert("\r\n"); });
    int keys = 0;
    figures.key = MeasureEach(counts.edits, [&] { editor.Press(++keys % 50 == 0 ? '\r' : 'a'); });
    figures.page = MeasureEach(counts.pages, [&] { editor.GoPageDown(); });
    for (int batch = 0; batch < kAppendBatches; ++batch) {
        const double taken = Seconds([&] {
            for (int i = 0; i < counts.appended; ++i)
                editor.AppendLine();
        });
        figures.appendLast = taken / counts.appended;
        if (batch == 0)
            figures.appendFirst = figures.appendLast;
    }
}

// Runs measure(figures), which is false when there is nothing to measure, in another process.
template <class Run>
bool MeasureApart(Run measure, Figures& figures)
{
    int ends[2];
    if (::pipe(ends) != 0)
        return false;
    std::fflush(stdout);
    const pid_t child = ::fork();
    if (child == 0) {
        figures = Figures();
        const bool done = measure(figures);
        std::fflush(stdout);
        if (done && ::write(ends[1], &figures, sizeof figures) != sizeof figures)
            ::_exit(1);
        ::_exit(0);
    }
    ::close(ends[1]);
    const bool done = ::read(ends[0], &figures, sizeof figures) == sizeof figures;
    ::close(ends[0]);
    int status = 0;
    ::waitpid(child, &status, 0);
    if (status != 0)
        std::printf("A measuring process ended with status %d.\n", status);
    return done && status == 0;
}

bool MeasureOurs(const std::string& text, Figures& figures)
{
    OurEditor ours(text);
    MeasureLoad(ours, figures);
    figures.lines = ours.Get().GetLogicalLineCt(1);
    figures.rows = ours.Get().GetDocSize();
    MeasureUse(ours, {1000, 1000, 20'000, 500}, figures);
    ours.GoToMiddle();
    ours.PaintAll();
    figures.allocations = CountPaintAllocations(ours);
    MeasureLookups(ours.Get(), figures);
    return true;
}

template <class Make>
bool MeasurePeer(Make make, const std::string& text, Figures& figures)
{
    std::unique_ptr<BenchEditor> peer;
    {
        tlvn::WString units;
        tlvn::ConvertToUtf16(932, text, units);
        peer = make(units);
    }
    if (peer == nullptr)
        return false;
    MeasureLoad(*peer, figures);
    MeasureUse(*peer, {20, 20, 20, 20}, figures);
    return true;
}

std::string Text(const char* format, double value)
{
    char text[64];
    std::snprintf(text, sizeof text, format, value);
    return text;
}

std::string Text(const Spread& spread)
{
    return Text("%8.3f", spread.median * 1e3) + Text(" %8.3f", spread.percentile99 * 1e3) +
           Text(" %8.3f ms", spread.most * 1e3);
}

void Compare(BenchTable& table, const std::string& peer, const Figures& a, const Figures& b)
{
    const auto add = [&](const char* what, const Spread& ours, const Spread& theirs) {
        table.Add(what, Text(ours), peer, Text(theirs), Text("%.1f", theirs.median / ours.median));
    };
    const double bytes = kTextBytes;
    table.Add("load 50 MB, go to the end", Text("%8.2f s", a.load), peer, Text("%8.2f s", b.load),
              Text("%.1f", b.load / a.load));
    table.Add("memory for it, times the text", Text("%8.2f", a.memory / bytes), peer,
              Text("%8.2f", b.memory / bytes), Text("%.1f", b.memory / a.memory));
    add("insert a character, repaint", a.insert, b.insert);
    add("insert a line end, repaint", a.enter, b.enter);
    add("press a key, repaint", a.key, b.key);
    add("paint a screen", a.paint, b.paint);
    add("scroll by a page, repaint", a.page, b.page);
    table.Add("append a line", Text("%8.4f ms", a.appendLast * 1e3), peer,
              Text("%8.4f ms", b.appendLast * 1e3), Text("%.1f", b.appendLast / a.appendLast));
}

void Report(const Figures& ours)
{
    std::printf("%d lines in %d rows; times are median, 99th percentile and worst.\n", ours.lines,
                ours.rows);
    std::printf("pages a second: %.0f\n", 1 / ours.page.median);
    std::printf(
        "appending 10,000 lines one by one: %.2f us for one of the first 1,000, %.2f of the last\n",
        ours.appendFirst * 1e6, ours.appendLast * 1e6);
    std::printf("allocations while painting an unchanged screen: %d\n", ours.allocations);
    std::printf("serial number of a line %.0f ns, back %.0f ns; among 1,000 lines %.0f ns\n",
                ours.serialOfLine * 1e9, ours.lineOfSerial * 1e9, ours.serialOfFewLines * 1e9);
}

} // namespace

int main()
{
    const std::string text = MakeMailText(kTextBytes);
    Figures ours;
    if (!MeasureApart([&](Figures& figures) { return MeasureOurs(text, figures); }, ours))
        return 1;
    Report(ours);

    const struct {
        const char* name;
        std::unique_ptr<BenchEditor> (*make)(const tlvn::WString& text);
    } peers[] = {{"QScintilla", MakeScintilla}, {"QPlainTextEdit", MakePlainTextEdit}};
    BenchTable table;
    for (const auto& peer : peers) {
        Figures figures;
        if (MeasureApart([&](Figures& f) { return MeasurePeer(peer.make, text, f); }, figures))
            Compare(table, peer.name, ours, figures);
        else
            std::printf("%s is not installed, or failed: not measured.\n", peer.name);
    }
    table.Print();
    return 0;
}
