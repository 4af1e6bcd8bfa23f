// Signals: activation order, equality of function connections, ownership of connections.
#include <expect_throw.h>
#include <lkit.h>

#include <string>
#include <vector>

namespace {
using lstd::String;
using lstd::sign::NoArgSignal;
using Names = lstd::ValDLinkList<String>;
using TextSignal = lstd::sign::OneArgSignal<String const&>;
using PairSignal = lstd::sign::TwoArgSignal<String const&, Names const&>;
using Calls = std::vector<std::string>;

Calls calls;
void const* seen[3];  // the argument addresses See and SeePair received
void First() { calls.push_back("first"); }
void Second() { calls.push_back("second"); }
void Fails() { throw lstd::InvalidOperationException("stop", "here", 1); }
int Answer() { return 42; }
void See(String const& s) { seen[0] = &s; }
void SeePair(String const& s, Names const& names) {
    seen[1] = &s;
    seen[2] = &names;
    calls.push_back(s.GetStdChar() + std::to_string(names.GetNumberOfEntry()));
}

// Connect Second (resp. See) to the signal being emitted.
NoArgSignal* growing;
TextSignal* growingText;
void Grows() {
    calls.push_back("grows");
    growing->Connect(Second);
}
void GrowsText(String const& s) {
    calls.push_back(s.GetStdChar());
    growingText->Connect(See);
}

// A connection of another kind (type 2) over any connection base, counting destructions.
int destroyed;
template <typename Base, typename... Args>
struct Counting : Base {
    ~Counting() override { ++destroyed; }
    int GetConnectionType() const override { return 2; }
    bool operator==(lstd::sign::Signal::Connection const& other) const override {
        return &other == this;
    }
    void Activate(Args...) override { calls.push_back("counted"); }
};
using NoArgCounting = Counting<NoArgSignal::NoArgConnection>;

struct Signals : ::testing::Test {
    void SetUp() override {
        calls.clear();
        destroyed = 0;
    }
};
}  // namespace

TEST_F(Signals, ActivatesInOrderUntilOneThrowsAndRemovesOneEqualConnectionAtATime) {
    NoArgSignal s;
    for (void (*f)() : {First, Second, First, Fails, First})
        s.Connect(f);  // no duplicate check
    s.Connect(new NoArgCounting);
    ExpectThrow<lstd::InvalidOperationException>([&] { s(); }, "stop");
    EXPECT_EQ(calls, (Calls{"first", "second", "first"}));
    NoArgSignal::NoArgFunctionConnection<void> probe(First);
    delete s.GetConnections().Remove(&probe);  // removed items belong to the caller
    EXPECT_TRUE(s.Disconnect(First) && s.Disconnect(Fails));
    s();
    EXPECT_EQ(calls, (Calls{"first", "second", "first", "second", "first", "counted"}));
    EXPECT_TRUE(s.Disconnect(First) && !s.Disconnect(First) && destroyed == 0);
}

TEST_F(Signals, FunctionConnectionsEqualBySameClassAndFunction) {
    NoArgSignal::NoArgFunctionConnection<void> a(First), b(First), c(Second);
    NoArgSignal::NoArgFunctionConnection<int> d(Answer), e(Answer);
    TextSignal::OneArgFunctionConnection<void> f(See), g(See);
    PairSignal::TwoArgFunctionConnection<void> h(SeePair), i(SeePair);
    NoArgCounting other;
    EXPECT_EQ(a.GetConnectionType(), 1);
    EXPECT_TRUE(a == b && d == e && f == g && h == i);
    EXPECT_FALSE(a == c || a == other || a == d);  // other: type 2; d: type 1, another class
}

TEST_F(Signals, EmptyDoNothingArgumentsGoByReferenceAndConnectionsAreDeletedOnce) {
    String const text("n");
    Names names;
    names.Append("a");
    {
        NoArgSignal none;
        TextSignal one;
        PairSignal two;
        none();  // nothing connected yet
        one(text);
        two(text, names);
        EXPECT_FALSE(none.IsConnecting() || one.IsConnecting() || two.IsConnecting());
        none.Connect(new NoArgCounting);
        none.Connect(First);
        none.Connect(new NoArgCounting);
        one.Connect(See);
        one.Connect(new Counting<TextSignal::OneArgConnection, String const&>);
        two.Connect(SeePair);
        two.Connect(new Counting<PairSignal::TwoArgConnection, String const&, Names const&>);
        two.Connect(SeePair);
        none();
        one(text);
        two(text, names);
        EXPECT_EQ(calls, (Calls{"counted", "first", "counted", "counted", "n1", "counted", "n1"}));
        EXPECT_TRUE(seen[0] == &text && seen[1] == &text && seen[2] == &names);
        EXPECT_TRUE(one.Disconnect(See) && two.Disconnect(SeePair) && two.Disconnect(SeePair));
        none.DisconnectAll();
        EXPECT_TRUE(!none.IsConnecting() && destroyed == 2);
    }
    EXPECT_EQ(destroyed, 4);
}

// An emission walks the connections that existed when it started: one connected meanwhile
// runs from the next emission on.
TEST_F(Signals, ConnectionMadeDuringAnEmissionRunsFromTheNextOne) {
    NoArgSignal s;
    growing = &s;
    s.Connect(Grows);
    s.Connect(First);
    s();
    EXPECT_EQ(calls, (Calls{"grows", "first"}));
    s();
    EXPECT_EQ(calls, (Calls{"grows", "first", "grows", "first", "second"}));
    TextSignal t;
    growingText = &t;
    t.Connect(GrowsText);
    seen[0] = nullptr;
    t(String("x"));
    EXPECT_TRUE(seen[0] == nullptr && t.GetConnections().GetNumberOfEntry() == 2);
}
