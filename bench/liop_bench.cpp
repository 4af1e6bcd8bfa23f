// liop side by side with what a program would otherwise write: reading a text file line by
// line through File::Read(String&) against an fgets loop, and IniFile::Load against a
// std::getline reader filling a std::unordered_map with the same rules. The input files are
// generated at start in a fresh temporary directory, removed at exit.
//
// Run with repetitions and compare the medians of each pair within one run:
//   build/bench/bench/liop_bench --benchmark_repetitions=5 --benchmark_report_aggregates_only
#include <benchmark/benchmark.h>
#include <lkit.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <random>
#include <string>
#include <unordered_map>
#include <vector>

#include <ftw.h>
#include <unistd.h>

namespace {
using lstd::String;

std::string gDir;

struct Counts {
    long lines = 0;
    long bytes = 0;
    bool operator==(Counts const& o) const { return lines == o.lines && bytes == o.bytes; }
};

// size bytes of text lines of 1 to 150 printable bytes (some with a carriage return before
// the line feed), all shorter than the 1024-byte buffer of the fgets loop.
std::string MakeTextFile(long size) {
    std::string const path = gDir + "/lines_" + std::to_string(size) + ".txt";
    std::mt19937 rng(7);
    std::string text;
    text.reserve(static_cast<std::size_t>(size) + 256);
    while (static_cast<long>(text.size()) < size) {
        std::size_t const length = 1 + rng() % 150;
        for (std::size_t i = 0; i < length; ++i)
            text += static_cast<char>(' ' + rng() % 95);
        if (rng() % 8 == 0)
            text += '\r';
        text += '\n';
    }
    std::ofstream(path, std::ios::binary) << text;
    return path;
}

Counts ReadLkit(std::string const& path) {
    Counts counts;
    liop::File file(String(path.c_str()), liop::File::FILE_TEXT);
    file.Open(liop::File::OPEN_READ);
    String line;
    while (file.Read(line)) {
        if (line.GetLength() == 0)  // the empty read at the end of the file
            continue;
        ++counts.lines;
        counts.bytes += static_cast<long>(line.GetLength());
    }
    file.Close();
    return counts;
}

Counts ReadFgets(std::string const& path) {
    Counts counts;
    FILE* file = std::fopen(path.c_str(), "r");
    char buffer[1024];
    while (std::fgets(buffer, sizeof buffer, file) != nullptr) {
        ++counts.lines;
        counts.bytes += static_cast<long>(std::strlen(buffer));
    }
    std::fclose(file);
    return counts;
}

void ReadLines(benchmark::State& state, Counts (*read)(std::string const&), long size) {
    static std::string path;
    static long made = 0;
    if (made != size) {
        path = MakeTextFile(size);
        made = size;
    }
    Counts const expected = ReadFgets(path);
    for (auto _ : state) {
        Counts const counts = read(path);
        if (!(counts == expected)) {
            state.SkipWithError("the readers disagree on lines or bytes");
            break;
        }
        benchmark::DoNotOptimize(counts.bytes);
    }
    state.SetBytesProcessed(state.iterations() * expected.bytes);
}

// An ini file of about size bytes: sections of 50 keys, lines under 80 bytes, a comment
// and a blank line here and there.
std::string MakeIniFile(long size, long& entries) {
    std::string const path = gDir + "/config_" + std::to_string(size) + ".ini";
    std::mt19937 rng(11);
    std::string text;
    entries = 0;
    for (long section = 0; static_cast<long>(text.size()) < size; ++section) {
        text += "[section " + std::to_string(section) + "]\n; generated settings\n";
        for (int key = 0; key < 50; ++key) {
            text += "key_" + std::to_string(key) + "_" + std::to_string(rng() % 1000) +
                    (key % 3 == 0 ? " = " : "=") + "value " + std::to_string(rng()) + " of " +
                    std::to_string(section) + "\n";
            ++entries;
        }
        text += "\n";
    }
    std::ofstream(path, std::ios::binary) << text;
    return path;
}

bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }

void Trim(std::string const& s, std::size_t begin, std::size_t end, std::string& out) {
    while (begin < end && IsBlank(s[begin]))
        ++begin;
    while (end > begin && IsBlank(s[end - 1]))
        --end;
    out.assign(s, begin, end - begin);
}

// The same rules as IniFile: trimmed lines, ";" comments, "[name]" sections, the first "="
// splitting the trimmed key from the trimmed value, flat "section key" entries.
std::unordered_map<std::string, std::string> LoadStd(std::string const& path) {
    std::unordered_map<std::string, std::string> map;
    std::ifstream in(path, std::ios::binary);
    std::string line;
    std::string trimmed;
    std::string section;
    std::string key;
    std::string value;
    while (std::getline(in, line)) {
        Trim(line, 0, line.size(), trimmed);
        if (trimmed.empty() || trimmed[0] == ';')
            continue;
        if (trimmed.size() >= 2 && trimmed.front() == '[' && trimmed.back() == ']') {
            section.assign(trimmed, 1, trimmed.size() - 2);
            continue;
        }
        std::size_t const equals = trimmed.find('=');
        if (equals == std::string::npos) {
            key = trimmed;
            value.clear();
        } else {
            Trim(trimmed, 0, equals, key);
            Trim(trimmed, equals + 1, trimmed.size(), value);
        }
        map[section + " " + key] = value;
    }
    return map;
}

struct IniInput {
    std::string path;
    long entries = 0;
    long bytes = 0;
};

IniInput const& Ini(long size) {
    static std::unordered_map<long, IniInput> inputs;
    IniInput& input = inputs[size];
    if (input.path.empty()) {
        input.path = MakeIniFile(size, input.entries);
        input.bytes = liop::File::GetSize(String(input.path.c_str()));
    }
    return input;
}

// Whether ini holds every entry of expected under its flat key "section N key".
bool SameEntries(liop::IniFile const& ini,
                 std::unordered_map<std::string, std::string> const& expected) {
    for (auto const& entry : expected) {
        std::size_t const space = entry.first.find(' ', 8);  // after "section N"
        String const section(entry.first.data(), space);
        String const key(entry.first.data() + space + 1, entry.first.size() - space - 1);
        String const value = ini.GetString(section, key);
        if (entry.second != std::string(value.GetStdChar(), value.GetLength()))
            return false;
    }
    return true;
}

void IniLoadLkit(benchmark::State& state, long size) {
    IniInput const& input = Ini(size);
    std::unordered_map<std::string, std::string> const expected = LoadStd(input.path);
    String const path(input.path.c_str());
    {
        liop::IniFile ini;  // checked once, outside the timing: every entry
        if (static_cast<long>(expected.size()) != input.entries || !ini.Load(path) ||
            !SameEntries(ini, expected)) {
            state.SkipWithError("IniFile disagrees with the std reader");
            return;
        }
    }
    for (auto _ : state) {
        liop::IniFile ini;
        if (!ini.Load(path)) {
            state.SkipWithError("Load failed");
            break;
        }
        benchmark::DoNotOptimize(&ini);
    }
    state.SetBytesProcessed(state.iterations() * input.bytes);
}

void IniLoadStd(benchmark::State& state, long size) {
    IniInput const& input = Ini(size);
    for (auto _ : state) {
        std::unordered_map<std::string, std::string> const map = LoadStd(input.path);
        if (static_cast<long>(map.size()) != input.entries) {
            state.SkipWithError("the std reader lost entries");
            break;
        }
        benchmark::DoNotOptimize(map.size());
    }
    state.SetBytesProcessed(state.iterations() * input.bytes);
}

int RemoveEntry(char const* path, struct stat const*, int, struct FTW*) {
    std::remove(path);
    return 0;
}
}  // namespace

int main(int argc, char** argv) {
    char const* tmp = std::getenv("TMPDIR");
    std::string pattern = std::string(tmp != nullptr ? tmp : "/tmp") + "/lkit_bench_XXXXXX";
    if (::mkdtemp(&pattern[0]) == nullptr) {
        std::perror("mkdtemp");
        return 1;
    }
    gDir = pattern;
    long const mb = 1L << 20;
    benchmark::RegisterBenchmark("ReadLines/lkit/100MB", ReadLines, &ReadLkit, 100 * mb)
        ->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("ReadLines/fgets/100MB", ReadLines, &ReadFgets, 100 * mb)
        ->Unit(benchmark::kMillisecond);
    for (long size : {1 * mb, 10 * mb}) {
        std::string const label = std::to_string(size / mb) + "MB";
        benchmark::RegisterBenchmark(("IniLoad/lkit/" + label).c_str(), IniLoadLkit, size)
            ->Unit(benchmark::kMillisecond);
        benchmark::RegisterBenchmark(("IniLoad/std/" + label).c_str(), IniLoadStd, size)
            ->Unit(benchmark::kMillisecond);
    }
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    ::nftw(gDir.c_str(), &RemoveEntry, 16, FTW_DEPTH | FTW_PHYS);
    return 0;
}
