// A table of measurements, each of our code beside a peer in the same run.
//
//   BenchTable table;
//   table.Compare("append", 64 << 20, "std::string", [] { ... }, [] { ... });
//   table.Print();
//
// The two sides run by turns, so that what else the machine does falls on both; the best time
// of each counts. Bytes say how much one run processes, for the speed columns.

#pragma once

#include <functional>
#include <string>
#include <vector>

class BenchTable {
public:
    using Run = std::function<void()>;

    // Measures `ours` and `peer`, each at least `rounds` times.
    void Compare(const std::string& what, double bytes, const std::string& peerName,
                 const Run& ours, const Run& peer, int rounds = 9);

    // Measures how the time grows with the size: the last column is the time per byte at the
    // largest size over that at the smallest, 1 for linear.
    void Growth(const std::string& what, const std::vector<int>& sizes,
                const std::function<Run(int size)>& prepare, int rounds = 5);

    // A row of figures that were measured otherwise.
    void Add(const std::string& what, const std::string& ours, const std::string& peerName,
             const std::string& peer, const std::string& ratio)
    {
        m_rows.push_back({what, ours, peerName, peer, ratio});
    }

    void Print() const;

private:
    struct Row {
        std::string what, ours, peerName, peer, ratio;
    };
    std::vector<Row> m_rows;
};

// Keeps the compiler from leaving out work whose result nobody looks at.
void Use(const void* result);
