// bench_ratios - prints one lkit / peer throughput ratio per benchmark pair.
//
// Reads the JSON files that Google Benchmark programs write with --benchmark_out=FILE
// --benchmark_out_format=json. A pair is two benchmarks named <work>/lkit/<size> and
// <work>/<peer>/<size> (any further components must match too); its ratio is the lkit
// throughput divided by the peer's, both the median of the repetitions when the run was
// repeated, else the single run's. Throughput is items per second, else bytes per second,
// else the inverse of the real time. Exits 1 when a benchmark reported an error (both sides
// of a pair must compute the same result, or they skip with an error) or a file cannot be
// read, 0 otherwise.
#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <map>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

namespace {

// Just enough JSON for the benchmark output: objects, arrays, strings, numbers, literals.
struct Value {
    enum Kind { NONE, BOOL, NUMBER, STRING, ARRAY, OBJECT } kind = NONE;
    bool flag = false;
    double number = 0;
    std::string text;
    std::vector<Value> items;
    std::vector<std::pair<std::string, Value>> fields;

    Value const* Field(std::string const& name) const {
        for (auto const& field : fields)
            if (field.first == name)
                return &field.second;
        return nullptr;
    }
};

class Parser {
public:
    explicit Parser(std::string const& text) : mText(text), mAt(0) {}
    bool Parse(Value& out) {
        if (!ParseValue(out))
            return false;
        SkipBlanks();
        return mAt == mText.size();
    }

private:
    void SkipBlanks() {
        while (mAt < mText.size() && std::isspace(static_cast<unsigned char>(mText[mAt])))
            ++mAt;
    }
    bool Take(char c) {
        SkipBlanks();
        if (mAt < mText.size() && mText[mAt] == c) {
            ++mAt;
            return true;
        }
        return false;
    }
    bool Literal(char const* word) {
        std::string const w(word);
        if (mText.compare(mAt, w.size(), w) != 0)
            return false;
        mAt += w.size();
        return true;
    }
    bool ParseString(std::string& out) {
        if (!Take('"'))
            return false;
        while (mAt < mText.size() && mText[mAt] != '"') {
            char c = mText[mAt++];
            if (c == '\\' && mAt < mText.size()) {
                char const e = mText[mAt++];
                c = e == 'n' ? '\n' : e == 't' ? '\t' : e;
                if (e == 'u') {  // names and units are ASCII; keep the escape as text
                    out += "\\u";
                    continue;
                }
            }
            out += c;
        }
        return Take('"');
    }
    bool ParseValue(Value& out) {
        SkipBlanks();
        if (mAt >= mText.size())
            return false;
        char const c = mText[mAt];
        if (c == '{') {
            out.kind = Value::OBJECT;
            ++mAt;
            if (Take('}'))
                return true;
            do {
                std::pair<std::string, Value> field;
                if (!ParseString(field.first) || !Take(':') || !ParseValue(field.second))
                    return false;
                out.fields.push_back(std::move(field));
            } while (Take(','));
            return Take('}');
        }
        if (c == '[') {
            out.kind = Value::ARRAY;
            ++mAt;
            if (Take(']'))
                return true;
            do {
                out.items.emplace_back();
                if (!ParseValue(out.items.back()))
                    return false;
            } while (Take(','));
            return Take(']');
        }
        if (c == '"') {
            out.kind = Value::STRING;
            return ParseString(out.text);
        }
        if (Literal("true") || Literal("false")) {
            out.kind = Value::BOOL;
            out.flag = mText[mAt - 4] == 't';
            return true;
        }
        if (Literal("null"))
            return true;
        char* end = nullptr;
        out.number = std::strtod(mText.c_str() + mAt, &end);
        if (end == mText.c_str() + mAt)
            return false;
        out.kind = Value::NUMBER;
        mAt = static_cast<std::size_t>(end - mText.c_str());
        return true;
    }

    std::string const& mText;
    std::size_t mAt;
};

std::string Text(Value const& run, char const* name) {
    Value const* v = run.Field(name);
    return v != nullptr && v->kind == Value::STRING ? v->text : std::string();
}

double Number(Value const& run, char const* name) {
    Value const* v = run.Field(name);
    return v != nullptr && v->kind == Value::NUMBER ? v->number : 0;
}

std::vector<std::string> Split(std::string const& name) {
    std::vector<std::string> parts;
    std::string part;
    std::istringstream in(name);
    while (std::getline(in, part, '/'))
        parts.push_back(part);
    return parts;
}

struct Measure {
    double throughput = 0;
    std::string unit;
    int repetitions = 1;
};

struct Pair {
    std::string work;  // the name without the implementation component
    Measure lkit;
    std::string peer;
    Measure other;
    bool hasLkit = false, hasPeer = false;
};
}  // namespace

int main(int argc, char** argv) {
    int status = 0;
    std::vector<Pair> pairs;
    std::map<std::string, std::size_t> index;
    for (int a = 1; a < argc; ++a) {
        std::ifstream in(argv[a], std::ios::binary);
        std::stringstream content;
        content << in.rdbuf();
        std::string const text = content.str();
        Value root;
        if (!in || !Parser(text).Parse(root) || root.Field("benchmarks") == nullptr) {
            std::fprintf(stderr, "bench_ratios: cannot read %s\n", argv[a]);
            status = 1;
            continue;
        }
        for (Value const& run : root.Field("benchmarks")->items) {
            Value const* error = run.Field("error_occurred");
            if (error != nullptr && error->flag) {
                std::printf("ERROR %s: %s\n", Text(run, "name").c_str(),
                            Text(run, "error_message").c_str());
                status = 1;
                continue;
            }
            // A repeated run is represented by its median; a single run by itself.
            bool const aggregate = Text(run, "run_type") == "aggregate";
            if (aggregate && Text(run, "aggregate_name") != "median")
                continue;
            std::string const name =
                Text(run, "run_name").empty() ? Text(run, "name") : Text(run, "run_name");
            std::vector<std::string> parts = Split(name);
            if (parts.size() < 3)
                continue;
            std::string const impl = parts[1];
            parts.erase(parts.begin() + 1);
            std::string work;
            for (std::string const& p : parts)
                work += (work.empty() ? "" : "/") + p;
            Measure m;
            if (Number(run, "items_per_second") > 0) {
                m.throughput = Number(run, "items_per_second");
                m.unit = "items/s";
            } else if (Number(run, "bytes_per_second") > 0) {
                m.throughput = Number(run, "bytes_per_second");
                m.unit = "bytes/s";
            } else if (Number(run, "real_time") > 0) {
                m.throughput = 1 / Number(run, "real_time");
                m.unit = "1/time";
            }
            m.repetitions = static_cast<int>(Number(run, "repetitions"));
            if (m.repetitions < 1)
                m.repetitions = 1;
            auto found = index.find(work);
            if (found == index.end()) {
                found = index.emplace(work, pairs.size()).first;
                pairs.emplace_back();
                pairs.back().work = work;
            }
            Pair& pair = pairs[found->second];
            // A repeated run also lists its single repetitions: the median replaces them.
            if (impl == "lkit") {
                if (!pair.hasLkit || aggregate)
                    pair.lkit = m;
                pair.hasLkit = true;
            } else {
                if (!pair.hasPeer || aggregate)
                    pair.other = m;
                pair.peer = impl;
                pair.hasPeer = true;
            }
        }
    }
    std::printf("\nlkit / peer throughput (median of the repetitions):\n");
    for (Pair const& pair : pairs) {
        if (!pair.hasLkit || !pair.hasPeer || pair.other.throughput <= 0)
            continue;
        std::printf("  %-44s lkit / %-16s %7.3f   (%s, %d repetition%s)\n", pair.work.c_str(),
                    pair.peer.c_str(), pair.lkit.throughput / pair.other.throughput,
                    pair.lkit.unit.c_str(), pair.lkit.repetitions,
                    pair.lkit.repetitions == 1 ? "" : "s");
    }
    return status;
}
