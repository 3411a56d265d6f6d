#include "editor/line_index.h"
#include "tests/support/test.h"

#include <numeric>

namespace {

// A line of `count` physical lines.
CLLineData MakeLine(int count)
{
    std::vector<tlvn::PhysicalLine> rows;
    for (int i = 0; i < count; ++i)
        rows.push_back({i, count * 10});
    CLLineData line;
    line.SetPhysicalLines(rows);
    return line;
}

void ExpectSame(const tlvn::LineIndex& index, const std::vector<int>& model)
{
    ASSERT_EQ(index.GetCount(), static_cast<int>(model.size()));
    int serial = 0;
    int widest = 0;
    for (int i = 0; i < index.GetCount(); ++i) {
        const int count = model[static_cast<std::size_t>(i)];
        ASSERT_EQ(index.GetLine(i).GetPhysicalCount(), count);
        ASSERT_EQ(index.GetSerial(i), serial);
        ASSERT_EQ(index.FindLine(serial + count - 1), i);
        serial += count;
        widest = std::max(widest, count * 10);
    }
    EXPECT_EQ(index.GetPhysicalCount(), serial);
    EXPECT_EQ(index.GetSerial(index.GetCount()), serial);
    EXPECT_EQ(index.GetWidest(), widest);
}

} // namespace

// Insertions and removals of a few lines and of many blocks of them, against a vector: fails when
// a sum is not brought up to date, a block is lost, cut wrongly or left empty.
TEST(LineIndex, EqualsAVector)
{
    std::mt19937 random(3);
    const auto number = [&](int low, int high) {
        return low + static_cast<int>(random() % static_cast<unsigned>(high - low + 1));
    };
    tlvn::LineIndex index;
    std::vector<int> model;
    for (int step = 0; step < 300; ++step) {
        const int size = static_cast<int>(model.size());
        const int at = number(0, size);
        const int many = number(0, 9) == 0 ? 3000 : number(0, 3) == 0 ? 300 : 3;
        switch (number(0, 3)) {
        case 0: {
            const int to = std::min(size, at + number(0, size > 6000 ? size : many));
            index.Remove(at, to);
            model.erase(model.begin() + at, model.begin() + to);
            break;
        }
        case 1: {
            std::vector<CLLineData> lines;
            for (int i = number(0, many); i > 0; --i) {
                model.insert(model.begin() + at + static_cast<int>(lines.size()), number(1, 4));
                lines.push_back(MakeLine(model[static_cast<std::size_t>(at) + lines.size()]));
            }
            index.Insert(at, lines);
            break;
        }
        case 2:
            model.push_back(number(1, 4));
            index.Add(MakeLine(model.back()));
            break;
        default:
            if (at < size) {
                model[static_cast<std::size_t>(at)] = number(1, 9);
                index.GetLine(at) = MakeLine(model[static_cast<std::size_t>(at)]);
                index.LineChanged(at);
            }
        }
        ExpectSame(index, model);
    }
}
