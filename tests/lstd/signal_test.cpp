// Signals: activation order, equality of function connections, ownership of connections.
#include <expect_throw.h>
#include <gtest/gtest.h>
#include <lkit.h>

#include <string>
#include <vector>

namespace {
using lstd::String;
using lstd::sign::NoArgSignal;
using Names = lstd::ValDLinkList<String>;
using TextSignal = lstd::sign::OneArgSignal<String const &>;
using PairSignal = lstd::sign::TwoArgSignal<String const &, Names const &>;
using Calls = std::vector<std::string>;

Calls calls;
void const *seen[2];
unsigned long long total;
void First() { calls.push_back("first"); }
void Second() { calls.push_back("second"); }
void Fails() { throw lstd::InvalidOperationException("stop", "here", 1); }
int Answer() { return 42; }
void See(String const &s) {
    seen[0] = &s;
    calls.push_back(s.GetStdChar());
}
void Add(unsigned long long const &v) { total += v; }
void SeePair(String const &s, Names const &names) {
    seen[0] = &s;
    seen[1] = &names;
    calls.push_back(s.GetStdChar() + std::to_string(names.GetNumberOfEntry()));
}

// A connection of another kind (type 2) over any connection base, counting destructions.
int destroyed;
template <typename Base, typename... Args> struct Counting : Base {
    ~Counting() override { ++destroyed; }
    int GetConnectionType() const override { return 2; }
    bool operator==(lstd::sign::Signal::Connection const &other) const override {
        return &other == this;
    }
    void Activate(Args...) override { calls.push_back("counted"); }
};
using NoArgCounting = Counting<NoArgSignal::NoArgConnection>;

struct Signals : ::testing::Test {
    void SetUp() override {
        calls.clear();
        destroyed = 0;
        total = 0;
    }
};
} // namespace

TEST_F(Signals, ActivatesInConnectionOrderUntilOneThrows) {
    NoArgSignal s;
    for (void (*f)() : {First, Second, First, Fails, Second})
        s.Connect(f); // no duplicate check
    EXPECT_TRUE(s.IsConnecting());
    ExpectThrow<lstd::InvalidOperationException>([&] { s(); }, "stop");
    EXPECT_EQ(calls, (Calls{"first", "second", "first"}));
}

TEST_F(Signals, FunctionConnectionsEqualBySameClassAndFunction) {
    NoArgSignal::NoArgFunctionConnection<void> a(First), b(First), c(Second);
    NoArgSignal::NoArgFunctionConnection<int> d(Answer), e(Answer);
    NoArgCounting other;
    EXPECT_EQ(a.GetConnectionType(), 1);
    EXPECT_TRUE(a == b);
    EXPECT_FALSE(a == c);
    EXPECT_FALSE(a == other); // type 2
    EXPECT_FALSE(a == d);     // type 1 as well, but another class
    EXPECT_TRUE(d == e);
    TextSignal::OneArgFunctionConnection<void> f(See), g(See);
    PairSignal::TwoArgFunctionConnection<void> h(SeePair), i(SeePair);
    EXPECT_TRUE(f == g && h == i);
}

TEST_F(Signals, ListRemoveAndDisconnectTakeOneEqualConnection) {
    NoArgSignal s;
    for (void (*f)() : {First, Second, First, First})
        s.Connect(f);
    s.Connect(new NoArgCounting);
    NoArgSignal::NoArgFunctionConnection<void> probe(First);
    delete s.GetConnections().Remove(&probe);
    EXPECT_TRUE(s.Disconnect(First));
    EXPECT_FALSE(s.Disconnect(Fails));
    s();
    EXPECT_EQ(calls, (Calls{"second", "first", "counted"}));
    EXPECT_TRUE(s.Disconnect(First));
    EXPECT_FALSE(s.Disconnect(First));
    EXPECT_EQ(destroyed, 0);
}

TEST_F(Signals, EmptyDoNothingAndDestructorsDeleteEveryConnectionOnce) {
    {
        NoArgSignal none;
        TextSignal one;
        PairSignal two;
        none();
        one("x");
        two("x", Names());
        EXPECT_FALSE(none.IsConnecting() || one.IsConnecting() || two.IsConnecting());
        none.Connect(new NoArgCounting);
        none.Connect(First);
        none.Connect(new NoArgCounting);
        one.Connect(new Counting<TextSignal::OneArgConnection, String const &>);
        two.Connect(new Counting<PairSignal::TwoArgConnection, String const &, Names const &>);
        none();
        one("x");
        two("x", Names());
        EXPECT_EQ(calls, (Calls{"counted", "first", "counted", "counted", "counted"}));
    }
    EXPECT_EQ(destroyed, 4);
    NoArgSignal s;
    s.Connect(new NoArgCounting);
    s.DisconnectAll();
    EXPECT_FALSE(s.IsConnecting());
    EXPECT_EQ(destroyed, 5);
}

TEST_F(Signals, ArgumentsReachEveryReceiverByReference) {
    String const text("n");
    Names names;
    names.Append("a");
    TextSignal one;
    one.Connect(See);
    one(text);
    EXPECT_EQ(seen[0], &text);
    PairSignal two;
    two.Connect(SeePair);
    two.Connect(SeePair);
    two(text, names);
    EXPECT_EQ(seen[0], &text);
    EXPECT_EQ(seen[1], &names);
    EXPECT_EQ(calls, (Calls{"n", "n1", "n1"}));
    EXPECT_TRUE(one.Disconnect(See) && two.Disconnect(SeePair) && two.Disconnect(SeePair));
    EXPECT_FALSE(one.IsConnecting() || two.IsConnecting());
    lstd::sign::OneArgSignal<unsigned long long const &> sum;
    sum.Connect(Add);
    sum(5);
    EXPECT_EQ(total, 5u);
}
