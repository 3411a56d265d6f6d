#include "persist/regexp/parser.h"

#include "persist/regexp/characters.h"

#include <array>
#include <climits>
#include <limits>

namespace tlvn::regexp {

namespace {

struct Abbreviation {
    char letter;
    const char* expansion;
};

// Each expansion is read as one repeated atom: of "q" that is what precedes the "|".
constexpr Abbreviation kAbbreviations[] = {
    {'a', "([a-zA-Z0-9])"},
    {'b', "([ \t])"},
    {'c', "([a-zA-Z])"},
    {'d', "([0-9])"},
    {'h', "([0-9a-fA-F])"},
    {'n', "(\r|(\r?\n))"},
    {'q', "(\"[^\"]*\")|('[^']*')"},
    {'w', "([a-zA-Z]+)"},
    {'z', "([0-9]+)"},
};
constexpr std::size_t kLongestExpansion = 24;

// An expansion in the width of the pattern.
template <typename Char>
std::array<Char, kLongestExpansion> Widened(const char* ascii)
{
    std::array<Char, kLongestExpansion> text{};
    for (std::size_t i = 0; ascii[i] != '\0'; ++i)
        text[i] = static_cast<Char>(ascii[i]);
    return text;
}

template <typename Char>
class Parser {
public:
    Parser(const Char* pattern, SyntaxTree& tree) : m_p(pattern), m_tree(tree) {}

    REParseError ParseAll()
    {
        if (*m_p == '^') {
            m_tree.atStart = true;
            ++m_p;
        }
        Open(NodeKind::Sequence);
        while (m_error == REParseError::None && !m_open.empty()) {
            const int atom = ReadAtom();
            if (atom != kNoNode)
                FinishAtom(atom);
        }
        return m_error;
    }

private:
    // What waits for its end: a bracket (or, first of all, the pattern), a negation for its
    // atom, an alternation for its second half.
    struct Pending {
        NodeKind kind;
        int node; // sequence of a bracket, first half of an alternation
        int last; // last node of the sequence
        std::uint32_t group;
    };

    Node& At(int node) { return m_tree.nodes[static_cast<std::size_t>(node)]; }

    int Add(NodeKind kind, bool canBeEmpty, std::uint32_t value = 0)
    {
        if (m_tree.nodes.size() >= static_cast<std::size_t>(INT_MAX))
            return Fail(REParseError::OutOfMemory);
        Node node;
        node.kind = kind;
        node.canBeEmpty = canBeEmpty;
        node.value = value;
        m_tree.nodes.push_back(node);
        return static_cast<int>(m_tree.nodes.size()) - 1;
    }

    bool EndsHere() const { return m_singleAtom && m_open.size() == 1; }

    int Fail(REParseError error)
    {
        if (m_error == REParseError::None)
            m_error = error;
        return kNoNode;
    }

    unsigned Next()
    {
        int length = 0;
        const unsigned c = ReadCharacter(m_p, length);
        m_p += length;
        return c;
    }

    void Open(NodeKind kind, std::uint32_t group = 0)
    {
        const int sequence = Add(NodeKind::Sequence, true);
        m_open.push_back({kind, sequence, kNoNode, group});
    }

    // The next atom, or kNoNode when it is not complete yet (a bracket was opened or a
    // sequence closed) or there is an error.
    int ReadAtom()
    {
        switch (*m_p) {
        case '\0':
        case '}':
        case ']':
        case ')':
            CloseSequence();
            return kNoNode;
        case '{':
            ++m_p;
            Open(NodeKind::Group, static_cast<std::uint32_t>(m_tree.groupCount++));
            return kNoNode;
        case '(':
            ++m_p;
            Open(NodeKind::Parenthesis);
            return kNoNode;
        case '!':
            ++m_p;
            m_open.push_back({NodeKind::Negation, kNoNode, kNoNode, 0});
            return kNoNode;
        case '[':
            ++m_p;
            return ReadClass();
        case '.':
            ++m_p;
            return Add(NodeKind::Any, false);
        case '\\':
            return ReadEscape();
        case '$':
            ++m_p;
            return Add(NodeKind::Symbol, false, *m_p == '\0' ? 0U : unsigned{'$'});
        default:
            return Add(NodeKind::Symbol, false, Next());
        }
    }

    // Takes an atom into what waits for it, from the inside out.
    void FinishAtom(int atom)
    {
        while (m_open.back().kind == NodeKind::Negation) {
            const int negation = Add(NodeKind::Negation, true);
            At(negation).first = atom;
            m_open.pop_back();
            atom = negation;
        }
        const int repeated = ReadOperator(atom);
        if (repeated == kNoNode)
            return;
        if (*m_p == '|' && !EndsHere()) {
            ++m_p;
            m_open.push_back({NodeKind::Alternation, repeated, kNoNode, 0});
            return;
        }
        FinishItem(repeated);
    }

    void FinishItem(int item)
    {
        while (m_open.back().kind == NodeKind::Alternation) {
            const int left = m_open.back().node;
            m_open.pop_back();
            const int both = Add(NodeKind::Alternation, At(left).canBeEmpty || At(item).canBeEmpty);
            At(both).first = left;
            At(left).next = item;
            item = both;
        }
        Pending& sequence = m_open.back();
        Node& node = At(sequence.node);
        if (node.first == kNoNode)
            node.first = item;
        else
            At(sequence.last).next = item;
        node.canBeEmpty = node.canBeEmpty && At(item).canBeEmpty;
        sequence.last = item;
        if (EndsHere())
            m_open.clear();
    }

    // Something that cannot start an atom stands here.
    void CloseSequence()
    {
        while (m_open.back().kind == NodeKind::Negation)
            m_open.pop_back();
        if (m_open.back().kind == NodeKind::Alternation) {
            const int nothing = Add(NodeKind::Sequence, true);
            FinishItem(nothing);
        }
        const Pending closed = m_open.back();
        m_open.pop_back();
        if (closed.kind == NodeKind::Sequence) {
            m_tree.root = closed.node;
            return;
        }
        const bool group = closed.kind == NodeKind::Group;
        if (*m_p != (group ? '}' : ')')) {
            Fail(group ? REParseError::BraceExpected : REParseError::ParenthesisExpected);
            return;
        }
        ++m_p;
        if (group && At(closed.node).first == kNoNode) {
            FinishAtom(Add(NodeKind::Empty, true));
            return;
        }
        const int node = Add(closed.kind, At(closed.node).canBeEmpty, closed.group);
        At(node).first = closed.node;
        FinishAtom(node);
    }

    // The atom, repeated when an operator follows.
    int ReadOperator(int atom)
    {
        RepeatOperator repeat;
        if (*m_p != '*' && *m_p != '+' && *m_p != '?')
            return atom;
        repeat.atLeastOnce = *m_p == '+';
        repeat.once = *m_p == '?';
        ++m_p;
        if (*m_p == '?') {
            repeat.greedy = false;
            ++m_p;
        }
        if (!repeat.once && At(atom).canBeEmpty)
            return Fail(REParseError::EmptyRepeat);
        const int node = Add(NodeKind::Repeat, !repeat.atLeastOnce);
        At(node).first = atom;
        At(node).repeat = repeat;
        return node;
    }

    int ReadEscape()
    {
        ++m_p;
        if (*m_p == '\0')
            return Add(NodeKind::Symbol, false, '\\');
        if (*m_p >= '0' && *m_p <= '9')
            return ReadBackReference();
        for (const Abbreviation& abbreviation : kAbbreviations) {
            if (*m_p == static_cast<Char>(abbreviation.letter)) {
                ++m_p;
                return ReadExpansion(abbreviation.expansion);
            }
        }
        return Add(NodeKind::Symbol, false, Next());
    }

    int ReadBackReference()
    {
        std::int64_t number = 0;
        for (; *m_p >= '0' && *m_p <= '9'; ++m_p) {
            if (number <= INT_MAX)
                number = number * 10 + (*m_p - '0');
        }
        if (number >= m_tree.groupCount)
            return Fail(REParseError::InvalidGroup);
        // What it refers to can be unset, and that is empty.
        return Add(NodeKind::BackReference, true, static_cast<std::uint32_t>(number));
    }

    // The expansions hold no abbreviation, so this goes no deeper than once.
    int ReadExpansion(const char* ascii)
    {
        const auto text = Widened<Char>(ascii);
        Parser inner(text.data(), m_tree);
        inner.m_singleAtom = true;
        inner.Open(NodeKind::Sequence);
        const int sequence = inner.m_open.back().node;
        while (inner.m_error == REParseError::None && !inner.m_open.empty()) {
            const int atom = inner.ReadAtom();
            if (atom != kNoNode)
                inner.FinishAtom(atom);
        }
        if (inner.m_error != REParseError::None || At(sequence).first == kNoNode)
            return Fail(REParseError::Unexpected);
        return At(sequence).first;
    }

    int ReadClass()
    {
        const bool negated = *m_p == '^';
        if (negated)
            ++m_p;
        if (*m_p == ']')
            return Fail(REParseError::EmptyRange);

        const int node = Add(negated ? NodeKind::NotRange : NodeKind::Range, false,
                             static_cast<std::uint32_t>(m_tree.pairs.size()));
        while (*m_p != ']') {
            if (*m_p == '\0')
                return Fail(REParseError::BracketExpected);
            RangePair pair = {ReadClassCharacter(), 0};
            pair.high = pair.low;
            if (*m_p == '-') {
                ++m_p;
                if (*m_p == ']' || *m_p == '\0')
                    return Fail(REParseError::BracketExpected);
                pair.high = Next();
            }
            if (m_error == REParseError::None && pair.high < pair.low)
                return Fail(REParseError::InvalidRange);
            m_tree.pairs.push_back(pair);
        }
        ++m_p;
        At(node).count = static_cast<std::uint32_t>(m_tree.pairs.size()) - At(node).value;
        return m_error == REParseError::None ? node : kNoNode;
    }

    unsigned ReadClassCharacter()
    {
        if (*m_p != '\\')
            return Next();
        ++m_p;
        switch (*m_p) {
        case '\0':
            Fail(REParseError::BracketExpected);
            return 0;
        case 't':
            ++m_p;
            return '\t';
        case 'r':
            ++m_p;
            return '\r';
        case 'f': // a line feed here, not a form feed
            ++m_p;
            return '\n';
        default:
            return Next();
        }
    }

    const Char* m_p;
    SyntaxTree& m_tree;
    std::vector<Pending> m_open;
    bool m_singleAtom = false; // stop behind the first repeated atom
    REParseError m_error = REParseError::None;
};

} // namespace

template <typename Char>
REParseError ParsePattern(const Char* pattern, SyntaxTree& tree)
{
    return Parser<Char>(pattern, tree).ParseAll();
}

template REParseError ParsePattern<char>(const char*, SyntaxTree&);
template REParseError ParsePattern<WCHAR>(const WCHAR*, SyntaxTree&);

} // namespace tlvn::regexp
