#include "fields/EditMask.h"

#include "MessageError.h"

#include <vector>

namespace kb {

namespace {

constexpr int MaxDepth = 16;
constexpr int MaxStates = 4096;
constexpr int MaxEntry = 256;
constexpr int MaxRepeat = 64;

enum class CharClass { Literal, Digit, Letter, LetterUpper, LetterLower, Any, AnyUpper };

} // namespace

// The picture as a tree, read once; matching runs on the automaton built from it.
struct EditMask::Node
{
    enum class Kind { Sequence, Char, Optional, Choice, Repeat };
    Kind kind = Kind::Sequence;
    CharClass cls = CharClass::Literal;
    QChar literal;
    int count = -1; // Repeat: how often; -1 for any number
    std::vector<std::unique_ptr<Node>> children;
};

namespace {

using Node = EditMask::Node;

class PictureReader
{
public:
    explicit PictureReader(const QString& picture) : m_text(picture) {}

    std::unique_ptr<Node> read()
    {
        auto root = sequence(QString(), 0);
        if (m_pos < m_text.size()) fail();
        return root;
    }

private:
    [[noreturn]] void fail() const
    {
        throw MessageError(QStringLiteral("The entry mask \"%1\" cannot be read.").arg(m_text));
    }

    // Elements up to one of the closing characters (not consumed).
    std::unique_ptr<Node> sequence(const QString& closers, int depth)
    {
        if (depth > MaxDepth) fail();
        auto seq = std::make_unique<Node>();
        while (m_pos < m_text.size() && !closers.contains(m_text[m_pos]))
            seq->children.push_back(element(depth));
        return seq;
    }

    std::unique_ptr<Node> element(int depth)
    {
        if (m_pos >= m_text.size()) fail();
        const QChar c = m_text[m_pos++];
        auto node = std::make_unique<Node>();
        node->kind = Node::Kind::Char;
        switch (c.unicode()) {
        case u'#':
            node->cls = CharClass::Digit;
            return node;
        case u'?':
            node->cls = CharClass::Letter;
            return node;
        case u'&':
            node->cls = CharClass::LetterUpper;
            return node;
        case u'~':
            node->cls = CharClass::LetterLower;
            return node;
        case u'@':
            node->cls = CharClass::Any;
            return node;
        case u'!':
            node->cls = CharClass::AnyUpper;
            return node;
        case u';':
            if (m_pos >= m_text.size()) fail();
            node->literal = m_text[m_pos++];
            return node;
        case u'[': {
            node->kind = Node::Kind::Optional;
            node->children.push_back(sequence(QStringLiteral("]"), depth + 1));
            expect(u']');
            return node;
        }
        case u'{': {
            node->kind = Node::Kind::Choice;
            for (;;) {
                node->children.push_back(sequence(QStringLiteral(",}"), depth + 1));
                if (m_pos >= m_text.size()) fail();
                if (m_text[m_pos++] == u'}') return node;
            }
        }
        case u'*': {
            node->kind = Node::Kind::Repeat;
            qsizetype start = m_pos;
            while (m_pos < m_text.size() && m_text[m_pos].isDigit())
                ++m_pos;
            if (m_pos > start) {
                node->count = m_text.mid(start, m_pos - start).toInt();
                if (node->count > MaxRepeat) fail();
            }
            node->children.push_back(element(depth + 1));
            return node;
        }
        case u']':
        case u'}':
            fail();
        default:
            node->literal = c;
            return node;
        }
    }

    void expect(char16_t c)
    {
        if (m_pos >= m_text.size() || m_text[m_pos] != c) fail();
        ++m_pos;
    }

    const QString& m_text;
    qsizetype m_pos = 0;
};

// A Thompson automaton: a state takes one character, or splits into two
// ways without taking any, or accepts.
struct State
{
    enum class Kind { Take, Split, Accept };
    Kind kind = Kind::Accept;
    CharClass cls = CharClass::Literal;
    QChar literal;
    int out = -1;
    int out1 = -1;
};

class Automaton
{
public:
    explicit Automaton(const Node& root)
    {
        const int accept = add(State{});
        m_start = build(root, accept);
    }
    const std::vector<State>& states() const { return m_states; }
    int start() const { return m_start; }

private:
    int add(State s)
    {
        if (int(m_states.size()) >= MaxStates)
            throw MessageError(QStringLiteral("The entry mask is too long."));
        m_states.push_back(s);
        return int(m_states.size()) - 1;
    }

    // Builds the node so that it continues at `next`; gives its first state.
    int build(const Node& node, int next)
    {
        switch (node.kind) {
        case Node::Kind::Char: {
            State s;
            s.kind = State::Kind::Take;
            s.cls = node.cls;
            s.literal = node.literal;
            s.out = next;
            return add(s);
        }
        case Node::Kind::Sequence: {
            int first = next;
            for (auto it = node.children.rbegin(); it != node.children.rend(); ++it)
                first = build(**it, first);
            return first;
        }
        case Node::Kind::Optional:
            return split(build(*node.children.front(), next), next);
        case Node::Kind::Choice: {
            int first = build(*node.children.back(), next);
            for (auto it = node.children.rbegin() + 1; it != node.children.rend(); ++it)
                first = split(build(**it, next), first);
            return first;
        }
        case Node::Kind::Repeat: {
            if (node.count >= 0) {
                int first = next;
                for (int i = 0; i < node.count; ++i)
                    first = build(*node.children.front(), first);
                return first;
            }
            // Any number: a split that either enters the element, which
            // comes back to the split, or goes on.
            const int loop = split(-1, next);
            m_states[size_t(loop)].out = build(*node.children.front(), loop);
            return loop;
        }
        }
        return next;
    }

    int split(int a, int b)
    {
        State s;
        s.kind = State::Kind::Split;
        s.out = a;
        s.out1 = b;
        return add(s);
    }

    std::vector<State> m_states;
    int m_start = 0;
};

// Whether a state takes a character, and the character as stored.
bool take(const State& s, QChar c, QChar& stored)
{
    switch (s.cls) {
    case CharClass::Literal:
        // Letters of the picture match either case; they are stored as written.
        stored = s.literal;
        return c == s.literal || (c.isLetter() && c.toUpper() == s.literal.toUpper());
    case CharClass::Digit:
        stored = c;
        return c.isDigit() && c.unicode() < 128;
    case CharClass::Letter:
        stored = c;
        return c.isLetter();
    case CharClass::LetterUpper:
        stored = c.toUpper();
        return c.isLetter();
    case CharClass::LetterLower:
        stored = c.toLower();
        return c.isLetter();
    case CharClass::Any:
        stored = c;
        return true;
    case CharClass::AnyUpper:
        stored = c.toUpper();
        return true;
    }
    return false;
}

struct Outcome
{
    EditMask::Fit fit = EditMask::Fit::Invalid;
    QString normalized;
};

// Runs the automaton over the entry, keeping for each state the stored
// form of the first way that reached it.
Outcome run(const Automaton& automaton, const QString& entry)
{
    const auto& states = automaton.states();
    std::vector<int> current;
    std::vector<QString> texts(states.size());
    std::vector<int> seen(states.size(), -1);

    auto addState = [&](auto&& self, std::vector<int>& set, int state, const QString& text,
                        int step) -> void {
        if (state < 0 || seen[size_t(state)] == step) return;
        seen[size_t(state)] = step;
        texts[size_t(state)] = text;
        const State& s = states[size_t(state)];
        if (s.kind == State::Kind::Split) {
            self(self, set, s.out, text, step);
            self(self, set, s.out1, text, step);
            return;
        }
        set.push_back(state);
    };

    addState(addState, current, automaton.start(), QString(), 0);
    for (qsizetype i = 0; i < entry.size(); ++i) {
        std::vector<int> next;
        std::vector<QString> carried;
        for (int state : current) {
            const State& s = states[size_t(state)];
            QChar stored;
            if (s.kind == State::Kind::Take && take(s, entry[i], stored)) {
                next.push_back(s.out);
                carried.push_back(texts[size_t(state)] + stored);
            }
        }
        current.clear();
        for (size_t k = 0; k < next.size(); ++k)
            addState(addState, current, next[k], carried[k], int(i) + 1);
        if (current.empty()) return {};
    }
    Outcome outcome;
    outcome.fit = EditMask::Fit::Incomplete;
    for (int state : current) {
        if (states[size_t(state)].kind == State::Kind::Accept)
            return {EditMask::Fit::Complete, texts[size_t(state)]};
    }
    return outcome;
}

} // namespace

EditMask::EditMask(const QString& picture) : m_picture(picture)
{
    if (!picture.isEmpty()) m_root = PictureReader(picture).read();
}

EditMask::~EditMask() = default;
EditMask::EditMask(EditMask&&) noexcept = default;
EditMask& EditMask::operator=(EditMask&&) noexcept = default;

EditMask::Fit EditMask::fit(const QString& entry) const
{
    if (entry.isEmpty() || !m_root) return Fit::Complete;
    if (entry.size() > MaxEntry) return Fit::Invalid;
    return run(Automaton(*m_root), entry).fit;
}

QString EditMask::normalized(const QString& entry) const
{
    if (entry.isEmpty() || !m_root || entry.size() > MaxEntry) return entry;
    const Outcome outcome = run(Automaton(*m_root), entry);
    return outcome.fit == Fit::Complete ? outcome.normalized : entry;
}

} // namespace kb
