// lstd text side by side with the standard library: cutting words, building a long text from
// pieces, formatting and replacing. Each pair <work>/lkit/<size>, <work>/<peer>/<size> runs
// on the same input and checks that both sides computed the same result.
#include <benchmark/benchmark.h>
#include <lkit.h>

#include <algorithm>
#include <cstdio>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace {
using lstd::String;

void Expect(benchmark::State& state, bool same) {
    if (!same)
        state.SkipWithError("lkit and its peer computed different results");
}

// About n bytes of words of 1 to 10 letters, separated by one blank or now and then by a
// line break or a tab; no separator at either end.
std::string Words(std::size_t n) {
    std::mt19937 rng(7);
    std::string text;
    while (text.size() < n) {
        if (!text.empty())
            text += " \n\t"[rng() % 16 == 0 ? 1 + rng() % 2 : 0];
        for (unsigned length = 1 + rng() % 10; length > 0; --length)
            text += static_cast<char>('a' + rng() % 26);
    }
    return text;
}

// Number of tokens and sum of their lengths: what both tokenizing sides must agree on.
struct Tally {
    unsigned long tokens = 0, bytes = 0;
    bool operator==(Tally const& o) const { return tokens == o.tokens && bytes == o.bytes; }
};

// The words of Words(n) are separated by single blanks: one more word than blanks.
Tally Expected(std::string const& words) {
    unsigned long const blanks = static_cast<unsigned long>(std::count_if(
        words.begin(), words.end(), [](char c) { return c == ' ' || c == '\n' || c == '\t'; }));
    return Tally{blanks + 1, words.size() - blanks};
}

void TokenizeLkit(benchmark::State& state) {
    std::string const words = Words(static_cast<std::size_t>(state.range(0)));
    String const text(words.data(), words.size());
    Tally const expected = Expected(words);
    for (auto _ : state) {
        lstd::Tokenizer tokenizer(text);
        String token;
        Tally tally;
        while (tokenizer.Next(token)) {
            ++tally.tokens;
            tally.bytes += token.GetLength();
        }
        benchmark::DoNotOptimize(tally);
        Expect(state, tally == expected);
    }
    state.SetBytesProcessed(state.iterations() * static_cast<long>(words.size()));
}

void TokenizeStd(benchmark::State& state) {
    std::string const words = Words(static_cast<std::size_t>(state.range(0)));
    std::string_view const text(words);
    Tally const expected = Expected(words);
    for (auto _ : state) {
        std::string token;
        Tally tally;
        for (std::size_t at = text.find_first_not_of(" \r\n\t"); at != std::string_view::npos;) {
            std::size_t const end = text.find_first_of(" \r\n\t", at);
            token.assign(text.substr(at, end == std::string_view::npos ? end : end - at));
            ++tally.tokens;
            tally.bytes += token.size();
            at = end == std::string_view::npos ? end : text.find_first_not_of(" \r\n\t", end);
        }
        benchmark::DoNotOptimize(tally);
        Expect(state, tally == expected);
    }
    state.SetBytesProcessed(state.iterations() * static_cast<long>(words.size()));
}

// n appends of 16-byte pieces, then the whole text.
std::vector<std::string> Pieces() {
    std::vector<std::string> pieces;
    for (char c = 'a'; c <= 'p'; ++c)
        pieces.push_back(std::string(15, c) + '\n');
    return pieces;
}

void BuildTextLkit(benchmark::State& state) {
    long const n = state.range(0);
    std::vector<String> pieces;
    for (std::string const& p : Pieces())
        pieces.emplace_back(p.data(), p.size());
    for (auto _ : state) {
        lstd::StringBuilder builder;
        for (long i = 0; i < n; ++i)
            builder.Append(pieces[static_cast<std::size_t>(i) % pieces.size()]);
        String const text = builder.ToString();
        benchmark::DoNotOptimize(text.GetStdChar());
        Expect(state, text.GetLength() == static_cast<unsigned long>(16 * n) &&
                          text.GetStdChar()[16 * n - 2] == 'a' + (n - 1) % 16);
    }
    state.SetItemsProcessed(state.iterations() * n);
}

void BuildTextStd(benchmark::State& state) {
    long const n = state.range(0);
    std::vector<std::string> const pieces = Pieces();
    for (auto _ : state) {
        std::string text;
        for (long i = 0; i < n; ++i)
            text.append(pieces[static_cast<std::size_t>(i) % pieces.size()]);
        benchmark::DoNotOptimize(text.data());
        Expect(state, text.size() == static_cast<std::size_t>(16 * n) &&
                          text[static_cast<std::size_t>(16 * n - 2)] == 'a' + (n - 1) % 16);
    }
    state.SetItemsProcessed(state.iterations() * n);
}

// n formats of "%s=%d" with short keys and growing numbers; the lengths are summed.
char const* const kKeys[] = {"id", "width", "name", "x", "border-colour", "y2"};

void FormatLkit(benchmark::State& state) {
    long const n = state.range(0);
    String target;
    for (auto _ : state) {
        unsigned long total = 0;
        for (long i = 0; i < n; ++i) {
            target.Sprintf("%s=%d", kKeys[i % 6], static_cast<int>(i * 37));
            total += target.GetLength();
        }
        benchmark::DoNotOptimize(total);
        char last[64];
        Expect(state, target.GetLength() == static_cast<unsigned long>(std::snprintf(
                                                last, sizeof last, "%s=%d", kKeys[(n - 1) % 6],
                                                static_cast<int>((n - 1) * 37))) &&
                          target == last);
    }
    state.SetItemsProcessed(state.iterations() * n);
}

void FormatSnprintf(benchmark::State& state) {
    long const n = state.range(0);
    char buffer[64];
    for (auto _ : state) {
        unsigned long total = 0;
        for (long i = 0; i < n; ++i)
            total += static_cast<unsigned long>(std::snprintf(
                buffer, sizeof buffer, "%s=%d", kKeys[i % 6], static_cast<int>(i * 37)));
        benchmark::DoNotOptimize(total);
        benchmark::DoNotOptimize(buffer);
    }
    state.SetItemsProcessed(state.iterations() * n);
}

// Every "&amp;" of a text of about n bytes replaced by "&" (matches that never overlap).
std::string Escaped(std::size_t n) {
    std::string const words = Words(n);
    std::string text;
    for (std::size_t i = 0; i < words.size(); ++i)
        text += (i % 9 == 4) ? std::string("&amp;") : std::string(1, words[i]);
    return text;
}

std::string Unescaped(std::string const& escaped) {
    std::string out;
    out.reserve(escaped.size());
    std::size_t from = 0;
    for (std::size_t at = escaped.find("&amp;"); at != std::string::npos;
         from = at + 5, at = escaped.find("&amp;", from)) {
        out.append(escaped, from, at - from);
        out += '&';
    }
    out.append(escaped, from, std::string::npos);
    return out;
}

void ReplaceAllLkit(benchmark::State& state) {
    std::string const escaped = Escaped(static_cast<std::size_t>(state.range(0)));
    std::string const expected = Unescaped(escaped);
    String const source(escaped.data(), escaped.size()), find("&amp;"), with("&");
    for (auto _ : state) {
        state.PauseTiming();
        String text(source);
        state.ResumeTiming();
        text.ReplaceAll(find, with);
        benchmark::DoNotOptimize(text.GetStdChar());
        state.PauseTiming();
        Expect(state, std::string(text.GetStdChar(), text.GetLength()) == expected);
        state.ResumeTiming();
    }
    state.SetBytesProcessed(state.iterations() * static_cast<long>(escaped.size()));
}

void ReplaceAllStd(benchmark::State& state) {
    std::string const escaped = Escaped(static_cast<std::size_t>(state.range(0)));
    std::string const expected = Unescaped(escaped);
    for (auto _ : state) {
        std::string const out = Unescaped(escaped);
        benchmark::DoNotOptimize(out.data());
        state.PauseTiming();
        Expect(state, out == expected);
        state.ResumeTiming();
    }
    state.SetBytesProcessed(state.iterations() * static_cast<long>(escaped.size()));
}
}  // namespace

BENCHMARK(TokenizeLkit)->Name("Tokenize/lkit")->Arg(1 << 20);
BENCHMARK(TokenizeStd)->Name("Tokenize/stdstring")->Arg(1 << 20);
BENCHMARK(BuildTextLkit)->Name("BuildText/lkit")->Arg(100000);
BENCHMARK(BuildTextStd)->Name("BuildText/stdstring")->Arg(100000);
BENCHMARK(FormatLkit)->Name("Format/lkit")->Arg(1000);
BENCHMARK(FormatSnprintf)->Name("Format/snprintf")->Arg(1000);
BENCHMARK(ReplaceAllLkit)->Name("ReplaceAll/lkit")->Arg(1 << 20);
BENCHMARK(ReplaceAllStd)->Name("ReplaceAll/stdstring")->Arg(1 << 20);
