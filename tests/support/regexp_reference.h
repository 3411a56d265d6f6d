// A plain matcher of regular expressions to judge the machine by: it walks the pattern's text
// by recursion, turns each construct into a function that matches it and then whatever comes
// after, and lets the process's own stack do the backtracking. No program, no tables.
//
// It is for short patterns that compile, and gives up after so many steps.

#pragma once

#include "platform/multibyte.h"
#include "platform/nls.h"

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

class RegExpReference {
public:
    // Characters by value; the pattern and the text without terminator, already folded when
    // case does not count.
    using Text = std::vector<unsigned>;
    // First and behind the last character of the match; the end may be one past the text.
    using Found = std::optional<std::pair<int, int>>;

    // `widths`: the units of each character of the text, which say how many characters a
    // reference to a group compares.
    RegExpReference(const Text& pattern, const Text& text, const std::vector<int>& widths)
        : m_pattern(pattern), m_text(text), m_widths(widths)
    {
        m_pattern.push_back(0);
        m_text.push_back(0);
        if (Peek() == '^') {
            m_anchored = true;
            ++m_at;
        }
        m_match = ParseSequence();
    }

    // True when the steps were too many to tell.
    bool GaveUp() const { return m_steps > kMostSteps; }

    Found Match()
    {
        for (int start = 0; m_text[At(start)] != 0 && !GaveUp(); ++start) {
            m_position = start;
            if (m_match([] { return true; }))
                return std::pair(start, m_position);
            if (m_anchored)
                break;
        }
        return std::nullopt;
    }

private:
    using Rest = std::function<bool()>;
    // Matches at m_position and then the rest; on failure m_position is where it came to.
    using Matcher = std::function<bool(const Rest&)>;
    struct Group {
        int start = -1, end = -1;
    };

    static constexpr int kMostSteps = 20000;

    static std::size_t At(int i) { return static_cast<std::size_t>(i); }
    unsigned Peek() const { return m_pattern[m_at]; }
    unsigned Take() { return m_pattern[m_at++]; }
    bool Accept(unsigned c)
    {
        if (Peek() != c)
            return false;
        ++m_at;
        return true;
    }
    bool CannotStart() const
    {
        return Peek() == 0 || Peek() == '}' || Peek() == ']' || Peek() == ')';
    }

    Matcher ParseSequence()
    {
        std::vector<Matcher> items;
        while (!CannotStart()) {
            Matcher item = ParseItem();
            if (item)
                items.push_back(std::move(item));
        }
        return Chain(items);
    }

    static Matcher Chain(std::vector<Matcher> items)
    {
        Matcher chain = [](const Rest& rest) { return rest(); };
        for (; !items.empty(); items.pop_back())
            chain = [first = items.back(), chain](const Rest& rest) {
                return first([&] { return chain(rest); });
            };
        return chain;
    }

    Matcher ParseItem()
    {
        Matcher left = ParseRepeated();
        if (!left || !Accept('|'))
            return left;
        Matcher right = CannotStart() ? nullptr : ParseItem();
        if (!right)
            right = Chain({});
        return [this, left, right](const Rest& rest) {
            const int old = m_position;
            if (left(rest))
                return true;
            m_position = old;
            return right(rest);
        };
    }

    Matcher ParseRepeated()
    {
        const std::size_t start = m_at;
        const int groups = m_groupCount;
        Matcher x = ParseAtom();
        if (!x || (Peek() != '*' && Peek() != '+' && Peek() != '?'))
            return x;
        const unsigned sign = Take();
        const bool lazy = Accept('?');
        // A copy of its own for the loop, as what is inside keeps something between attempts.
        const std::size_t behind = m_at;
        m_at = start;
        m_groupCount = groups;
        const Matcher again = ParseAtom();
        m_at = behind;
        const Matcher loop = lazy ? LazyLoop(again, sign == '?') : GreedyLoop(again, sign == '?');
        return sign == '+' ? Chain({x, loop}) : loop;
    }

    Matcher GreedyLoop(const Matcher& x, bool once)
    {
        const auto last = std::make_shared<int>(-1); // where the latest turn began or ended
        const auto loop = std::make_shared<Matcher>();
        m_kept.push_back(loop);
        Matcher* const self = loop.get();
        *loop = [this, x, once, last, self](const Rest& rest) {
            const int old = m_position;
            const int oldLast = std::exchange(*last, m_position);
            const auto after = [&] {
                if (m_position == *last)
                    return false;
                *last = m_position;
                return once ? rest() : (*self)(rest);
            };
            if (x(after))
                return true;
            m_position = old;
            *last = oldLast;
            return rest();
        };
        return [self](const Rest& rest) { return (*self)(rest); };
    }

    // Goes on, after a failure, from where the failure was.
    Matcher LazyLoop(const Matcher& x, bool once)
    {
        const auto loop = std::make_shared<Matcher>();
        m_kept.push_back(loop);
        Matcher* const self = loop.get();
        *loop = [x, once, self](const Rest& rest) {
            return rest() || x([&] { return once ? rest() : (*self)(rest); });
        };
        return [self](const Rest& rest) { return (*self)(rest); };
    }

    Matcher ParseAtom()
    {
        const unsigned c = Take();
        switch (c) {
        case '{':
            return ParseGroup();
        case '(': {
            Matcher body = ParseSequence();
            Accept(')');
            return body;
        }
        case '!':
            return ParseNegation();
        case '[':
            return ParseClass();
        case '.':
            return One([](unsigned t) { return t != 0; });
        case '\\':
            return ParseEscape();
        case '$':
            return Equal(Peek() == 0 ? 0 : c);
        default:
            return Equal(c);
        }
    }

    Matcher One(std::function<bool(unsigned)> accepts)
    {
        return [this, accepts](const Rest& rest) {
            if (++m_steps > kMostSteps || !accepts(m_text[At(m_position)]))
                return false;
            ++m_position;
            return rest();
        };
    }

    Matcher Equal(unsigned c)
    {
        return One([c](unsigned t) { return t == c; });
    }

    Matcher ParseGroup()
    {
        const int number = m_groupCount++;
        if (Accept('}'))
            return Chain({});
        const Matcher body = ParseSequence();
        Accept('}');
        return [this, number, body](const Rest& rest) {
            const Group old = m_groups[number];
            m_groups[number].start = m_position;
            if (body([&] {
                    m_groups[number].end = m_position;
                    return rest();
                }))
                return true;
            m_groups[number] = old;
            return false;
        };
    }

    Matcher ParseNegation()
    {
        const Matcher x = CannotStart() ? nullptr : ParseAtom();
        if (!x)
            return nullptr;
        return [this, x](const Rest& rest) {
            const int old = m_position;
            const bool matches = x([] { return true; });
            m_position = old;
            return !matches && rest();
        };
    }

    Matcher ParseClass()
    {
        const bool negated = Accept('^');
        std::vector<std::pair<unsigned, unsigned>> ranges;
        while (!Accept(']')) {
            unsigned low = Take();
            if (low == '\\') {
                const unsigned c = Take();
                low = c == 't' ? 9 : c == 'r' ? 13 : c == 'f' ? 10 : c;
            }
            const unsigned high = Accept('-') ? Take() : low;
            ranges.emplace_back(low, high);
        }
        return One([negated, ranges](unsigned t) {
            bool within = false;
            for (const auto& [low, high] : ranges)
                within = within || (t >= low && t <= high);
            return t != 0 && within != negated;
        });
    }

    Matcher ParseEscape()
    {
        if (Peek() == 0)
            return Equal('\\');
        if (Peek() >= '0' && Peek() <= '9') {
            int number = 0;
            while (Peek() >= '0' && Peek() <= '9')
                number = number * 10 + static_cast<int>(Take() - '0');
            return BackReference(number);
        }
        const unsigned c = Take();
        const auto among = [](const char* low, const char* high) {
            return [low, high](unsigned t) {
                for (int i = 0; low[i] != 0; ++i)
                    if (t >= static_cast<unsigned>(low[i]) && t <= static_cast<unsigned>(high[i]))
                        return true;
                return false;
            };
        };
        switch (c) {
        case 'a':
            return One(among("aA0", "zZ9"));
        case 'b':
            return One(among(" \t", " \t"));
        case 'c':
            return One(among("aA", "zZ"));
        case 'd':
            return One(among("0", "9"));
        case 'h':
            return One(among("0aA", "9fF"));
        case 'w':
        case 'z': {
            const Matcher x = One(c == 'w' ? among("aA", "zZ") : among("0", "9"));
            return Chain({x, GreedyLoop(x, false)});
        }
        case 'n': {
            const Matcher lf = Equal('\n');
            const Matcher cr = Equal('\r');
            const Matcher both = Chain({GreedyLoop(cr, true), lf});
            return [this, cr, both](const Rest& rest) {
                const int old = m_position;
                if (cr(rest))
                    return true;
                m_position = old;
                return both(rest);
            };
        }
        case 'q': {
            const Matcher quote = Equal('"');
            const Matcher other = One([](unsigned t) { return t != 0 && t != '"'; });
            return Chain({quote, GreedyLoop(other, false), quote});
        }
        default:
            return Equal(c);
        }
    }

    Matcher BackReference(int number)
    {
        return [this, number](const Rest& rest) {
            const Group group = m_groups[number];
            if (group.start < 0 || group.end <= group.start)
                return rest();
            int units = 0;
            for (int i = group.start; i < group.end; ++i)
                units += m_widths[At(i)];
            for (int i = 0; i < units; ++i) {
                const unsigned a = m_text[At(group.start + i)];
                if (a != m_text[At(m_position + i)])
                    return false;
                if (a == 0)
                    break;
            }
            m_position += group.end - group.start;
            return rest();
        };
    }

    Text m_pattern;
    Text m_text;
    std::vector<int> m_widths;
    std::size_t m_at = 0;
    int m_groupCount = 0;
    bool m_anchored = false;
    Matcher m_match;
    std::vector<std::shared_ptr<Matcher>> m_kept;
    std::map<int, Group> m_groups;
    int m_position = 0;
    int m_steps = 0;
};
