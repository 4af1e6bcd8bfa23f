// A small program that uses an installed lkit the way a client would.
#include <lkit.h>

#include <cstdio>
#include <cstring>

namespace {

int failures = 0;

void Check(bool ok, char const* what) {
    if (!ok) {
        std::fprintf(stderr, "consumer: check failed: %s\n", what);
        ++failures;
    }
}

}  // namespace

int main() {
    Check(std::strcmp(LKIT_VERSION_STRING, "0.1.0") == 0, "LKIT_VERSION_STRING");

    lstd::ValDLinkList<lstd::String> list;
    list.Append(lstd::String("a"));
    list.Append(lstd::String("b"));
    Check(list.GetNumberOfEntry() == 2, "two entries after two appends");
    Check(list.Get(0) == "a", "first entry is \"a\"");
    Check(list.Get(1) == "b", "second entry is \"b\"");

    lstd::String const joined = lstd::String::SSprintf("%s-%d", list.Get(0).GetStdChar(), 42);
    Check(joined == "a-42", "SSprintf(\"%s-%d\") gives \"a-42\"");
    Check(std::strcmp(joined.GetStdChar(), "a-42") == 0, "GetStdChar() of formatted string");

    bool thrown = false;
    try {
        list.Get(5);
    } catch (lstd::InvalidIndexException const& e) {
        thrown = true;
        Check(std::strcmp(e.what(), "The index '5' is out of range.") == 0,
              "InvalidIndexException message");
    }
    Check(thrown, "Get(5) on a two-entry list throws InvalidIndexException");

    lstd::String first("x");
    lstd::String second("y");
    lstd::PtrDLinkList<lstd::String> pointers;
    pointers.Append(&first);
    pointers.Append(&second);
    Check(pointers.Get(1) == &second, "PtrDLinkList keeps the pointer it was given");

    if (failures != 0) {
        std::fprintf(stderr, "consumer: %d check(s) failed\n", failures);
        return 1;
    }
    std::printf("consumer ok\n");
    return 0;
}
