// Logger records beside fprintf of the same format into a FILE*: "[Info: %d] %s" with a
// 40-byte message, appended to a fresh file in a temporary directory. Both files must come
// out the same size.
#include <benchmark/benchmark.h>
#include <lkit.h>

#include <cstdio>
#include <cstdlib>
#include <string>

#include <sys/stat.h>
#include <unistd.h>

namespace {

char const kMessage[] = "connection from 10.0.0.7 closed cleanly\n";  // 40 bytes
static_assert(sizeof(kMessage) - 1 == 40, "the message is 40 bytes long");

int CodeOf(long i) { return static_cast<int>(i % 1000); }

// A fresh directory for one run's log file, removed with it afterwards.
struct Scratch {
    Scratch() {
        char pattern[] = "/tmp/lkit_bench_XXXXXX";
        char* made = ::mkdtemp(pattern);
        dir = made != nullptr ? made : "";
        file = dir + "/bench.log";
    }
    ~Scratch() {
        std::remove(file.c_str());
        ::rmdir(dir.c_str());
    }
    // Whether the file holds exactly the records 0 .. count - 1.
    bool Holds(long count) const {
        long long expected = 0;
        for (long i = 0; i < count; ++i)
            expected += std::snprintf(nullptr, 0, "[Info: %d] %s", CodeOf(i), kMessage);
        struct stat status;
        return ::stat(file.c_str(), &status) == 0 && status.st_size == expected;
    }
    std::string dir, file;
};

void LogLkit(benchmark::State& state) {
    Scratch scratch;
    lstd::String const message(kMessage);
    long count = 0;
    {
        llog::Logger const log(scratch.file.c_str());
        for (auto _ : state)
            log.Info(message, static_cast<unsigned long long>(CodeOf(count++)));
        llog::Logger::Terminate();
    }
    if (!scratch.Holds(count))
        state.SkipWithError("the log file does not hold the records written");
    state.SetItemsProcessed(count);
}

void LogFprintf(benchmark::State& state) {
    Scratch scratch;
    long count = 0;
    std::FILE* file = std::fopen(scratch.file.c_str(), "a");
    if (file == nullptr) {
        state.SkipWithError("cannot open the log file");
        return;
    }
    for (auto _ : state)
        std::fprintf(file, "[Info: %d] %s", CodeOf(count++), kMessage);
    std::fclose(file);
    if (!scratch.Holds(count))
        state.SkipWithError("the log file does not hold the records written");
    state.SetItemsProcessed(count);
}
}  // namespace

BENCHMARK(LogLkit)->Name("LogRecord/lkit")->Arg(40);
BENCHMARK(LogFprintf)->Name("LogRecord/fprintf")->Arg(40);
