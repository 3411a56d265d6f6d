#include "bench/bench_table.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>

namespace {

double Seconds(const BenchTable::Run& run)
{
    const auto start = std::chrono::steady_clock::now();
    run();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

std::string Text(const char* format, double value)
{
    char text[64];
    std::snprintf(text, sizeof text, format, value);
    return text;
}

// The time of one run, with its speed.
std::string TimeAndSpeed(double seconds, double bytes)
{
    return Text("%9.3f ms", seconds * 1e3) + Text(" %9.1f MB/s", bytes / seconds / 1e6);
}

} // namespace

void BenchTable::Compare(const std::string& what, double bytes, const std::string& peerName,
                         const Run& ours, const Run& peer, int rounds)
{
    double oursBest = 1e9;
    double peerBest = 1e9;
    for (int i = 0; i < rounds; ++i) {
        oursBest = std::min(oursBest, Seconds(ours));
        peerBest = std::min(peerBest, Seconds(peer));
    }
    m_rows.push_back({what, TimeAndSpeed(oursBest, bytes), peerName, TimeAndSpeed(peerBest, bytes),
                      Text("%.2f", peerBest / oursBest)});
}

void BenchTable::Growth(const std::string& what, const std::vector<int>& sizes,
                        const std::function<Run(int size)>& prepare, int rounds)
{
    double first = 0;
    double last = 0;
    for (const int size : sizes) {
        const Run run = prepare(size);
        double best = 1e9;
        for (int i = 0; i < rounds; ++i)
            best = std::min(best, Seconds(run));
        last = best / size;
        if (first == 0)
            first = last;
        m_rows.push_back({what + ", " + Text("%.0f KB", size / 1024.0), TimeAndSpeed(best, size),
                          "time per byte", Text("%9.3f ns", last * 1e9),
                          Text("%.2f", last / first)});
    }
}

void BenchTable::Print() const
{
    std::size_t width = 0;
    for (const Row& row : m_rows)
        width = std::max(width, row.what.size());
    std::printf("%-*s  %-27s  %-14s %-27s  %s\n", static_cast<int>(width), "", "ours", "beside", "",
                "ratio");
    for (const Row& row : m_rows)
        std::printf("%-*s  %-27s  %-14s %-27s  %s\n", static_cast<int>(width), row.what.c_str(),
                    row.ours.c_str(), row.peerName.c_str(), row.peer.c_str(), row.ratio.c_str());
}

void Use(const void* result)
{
    static std::atomic<const void*> sink;
    sink.store(result, std::memory_order_relaxed);
}
