// Exceptions: exact messages, places, deep copies and the stack-trace layout.
#include <lstd/exception.h>
#include <lstd/string.h>
#include <lstd/stringbuilder.h>

#include <expect_throw.h>
#include <failing_alloc.h>

#include <cstring>
#include <sstream>
#include <string>
#include <vector>

#if defined(__SANITIZE_ADDRESS__)
constexpr size_t kInterceptorFrames = 1;  // AddressSanitizer's backtrace() adds its frame
#else
constexpr size_t kInterceptorFrames = 0;
#endif

volatile int gUnwound = 0;

// Named, not inlined and exported (the test program exports its symbols) so that each of
// its frames is symbolised in the trace; the store after the call keeps the recursion.
__attribute__((noinline)) void ThrowInvalidIndexFromHere(int depth) {
    if (depth > 0)
        ThrowInvalidIndexFromHere(depth - 1);
    else
        throw lstd::InvalidIndexException("bad %d %s", "here.cpp", 42);
    gUnwound = gUnwound + 1;
}

namespace {

std::vector<std::string> Lines(std::string const& text) {
    EXPECT_TRUE(!text.empty() && text.back() == '\n') << "the trace must end with a line feed";
    std::vector<std::string> lines;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);)
        lines.push_back(line);
    return lines;
}

std::string Format(char const* line) {
    std::vector<char> copy(line, line + std::strlen(line) + 1);
    lstd::StringBuilder builder;
    lstd::FormatStackFrame(builder, copy.data());
    lstd::String const text = builder.ToString();
    return std::string(text.GetStdChar(), text.GetLength());
}

TEST(Exception, KeepsMessageFileAndLineExactly) {
    lstd::NotEnoughMemoryException const e("100% of %s used", "lstd/string.cpp", 77);
    std::exception const& root = e;  // what() through the standard root
    EXPECT_EQ((std::vector<std::string>{"100% of %s used", "lstd/string.cpp", "77"}),
              (std::vector<std::string>{root.what(), e.GetFile(), std::to_string(e.GetLine())}));
    lstd::Exception const empty(nullptr, nullptr, 0);
    EXPECT_TRUE(empty.what() == nullptr && empty.GetFile() == nullptr);
}

TEST(Exception, CopiesAreDeepAndOutliveTheOriginal) {
    auto* original = new lstd::InvalidIndexException("message", "file.cpp", 9);
    lstd::InvalidIndexException copy(*original);
    lstd::InvalidIndexException assigned("other", "x", 1);
    assigned = *original;
    EXPECT_NE(original->what(), copy.what());
    EXPECT_NE(original->GetStackTrace(), copy.GetStackTrace());
    std::string const trace = original->GetStackTrace();
    delete original;
    for (lstd::Exception const* e :
         {static_cast<lstd::Exception*>(&copy), static_cast<lstd::Exception*>(&assigned)}) {
        EXPECT_STREQ("message", e->what());
        EXPECT_STREQ("file.cpp", e->GetFile());
        EXPECT_EQ(9u, e->GetLine());
        EXPECT_EQ(trace, e->GetStackTrace());
    }
}

TEST(Exception, TraceStartsAtTheThrowerAndSkipsTheCaptureFrames) {
    try {
        ThrowInvalidIndexFromHere(2);
        FAIL() << "nothing thrown";
    } catch (lstd::InvalidIndexException const& e) {
        EXPECT_STREQ("bad %d %s", e.what());
        std::vector<std::string> const lines = Lines(e.GetStackTrace());
        EXPECT_EQ("Stack trace:", lines[0]);
        // The capture itself, the Exception constructor and the thrown class's constructor
        // are left out: the first frame shown is the throw site (the compiler may have moved
        // it to an unnamed cold section), then the two outer recursion levels. Under
        // AddressSanitizer the interceptor of backtrace() adds one frame of its own, so the
        // thrown class's constructor shows first there.
        size_t const first = 1 + kInterceptorFrames;
        ASSERT_GE(lines.size(), first + 4);
        std::string const red = "\033[31mThrowInvalidIndexFromHere(int)\033[0m + 0x";
        for (size_t i = 1; i < lines.size(); ++i) {
            SCOPED_TRACE(lines[i]);
            EXPECT_EQ(0u, lines[i].rfind("  ", 0));
            EXPECT_NE(std::string::npos, lines[i].find(" ] [0x"));
            if (i >= first) {
                EXPECT_EQ(std::string::npos, lines[i].find("lstd::")) << "a capture frame is shown";
            }
        }
        EXPECT_NE(std::string::npos, lines[first].find("lstd_tests"));
        EXPECT_NE(std::string::npos, lines[first + 1].find(red));
        EXPECT_NE(std::string::npos, lines[first + 2].find(red));
        EXPECT_EQ(std::string::npos, lines[first + 3].find("ThrowInvalidIndexFromHere"));
    }
}

TEST(Exception, FramesAreFormattedByShape) {
    EXPECT_EQ("  /lib/m.so [ \033[31mfoo(int)\033[0m + 0x10 ] [0x1234]\n",
              Format("/lib/m.so(_Z3fooi+0x10) [0x1234]"));
    // A name that does not demangle is shown raw; an empty one stays empty.
    EXPECT_EQ("  prog [ \033[31mplain_c\033[0m + 0x2 ] [0x9]\n", Format("prog(plain_c+0x2) [0x9]"));
    EXPECT_EQ("  prog [ \033[31m\033[0m + 0x2a ] [0x9]\n", Format("prog(+0x2a) [0x9]"));
    // Without an offset the text up to the bracket is the name.
    EXPECT_EQ("  prog [ name)     ] [0x1]\n", Format("prog(name) [0x1]"));
    // A line without "(" is printed whole.
    EXPECT_EQ("  prog [0x5]\n", Format("prog [0x5]"));
}

// Building a trace needs memory; when that runs out, the NotEnoughMemoryException raised
// inside the capture would capture a trace again, and so on until the stack overflowed.
// The inner exception carries no trace, and the outer one then has none either.
TEST(Exception, TraceCaptureIsNotReenteredWhenMemoryRunsOut) {
    if (!FailingAllocations::Available())
        GTEST_SKIP() << "malloc is replaced by the tool running the tests";
    lstd::InvalidIndexException const warm("warm", "here", 1);  // loads the unwinder
    ASSERT_NE(nullptr, warm.GetStackTrace());
    FailingAllocations failing(2);  // the copies of message and file, then nothing
    lstd::InvalidIndexException const e("message", "file.cpp", 7);
    failing.Stop();
    EXPECT_EQ((std::vector<std::string>{"message", "file.cpp"}),
              (std::vector<std::string>{e.what(), e.GetFile()}));
    EXPECT_EQ(nullptr, e.GetStackTrace());
    lstd::InvalidIndexException const after("after", "file.cpp", 8);
    EXPECT_NE(nullptr, after.GetStackTrace());  // the next capture works again
}

// An operation that declares what it raises lets those types (and their subclasses) pass and
// ends the process for anything else.
TEST(ExceptionDeathTest, UndeclaredExceptionsEndTheProcess) {
    auto declaring = [](auto raise) {
        try {
            raise();
        } catch (...) {
            lstd::RethrowDeclared<lstd::InvalidOperationException, lstd::UnknownException>();
        }
    };
    ExpectThrow<lstd::UnknownException>(
        [&] { declaring([] { throw lstd::UnknownException("declared", "f.cpp", 1); }); },
        "declared");
    EXPECT_DEATH(declaring([] { throw lstd::InvalidIndexException("other", "f.cpp", 2); }), "");
    EXPECT_DEATH(declaring([] { throw 7; }), "");
    EXPECT_DEATH(
        [] {
            try {
                throw lstd::UnknownException("none declared", "f.cpp", 3);
            } catch (...) {
                lstd::RethrowDeclared<>();
            }
        }(),
        "");
}
}  // namespace
