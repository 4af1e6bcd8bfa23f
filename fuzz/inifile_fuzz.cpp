// fuzz/inifile_fuzz.cpp - IniFile::Load over arbitrary bytes, checked against a small model.
//
// The input is written to a temporary file and loaded. A model written here from the file
// rules (lines as File::Read(String&) cuts them, trimming, ";" comments, "[name]" sections,
// the first "=" splitting key from value, flat "section key" entries where the last one
// wins) must agree with GetString for every stored key, and with the key iterator for the
// first sections. The static line helpers are checked on the whole input as one line.
#include <liop/inifile.h>
#include <liop/inifilekeyiterator.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <set>
#include <string>
#include <unistd.h>
#include <utility>
#include <vector>

namespace {
using lstd::String;

std::string Std(String const& s) { return std::string(s.GetStdChar(), s.GetLength()); }
String Lstd(std::string const& s) { return String(s.data(), s.size()); }

[[noreturn]] void Fail(char const* what) {
    std::fprintf(stderr, "inifile_fuzz: %s\n", what);
    std::abort();
}

// The lines File::Read(String&) returns: through a line feed, in pieces of at most 1023
// bytes, a piece ending in a carriage return ending the line; the end of the data yields
// one last (possibly empty) line unless the last read already hit it.
std::vector<std::string> Lines(std::string const& data) {
    std::vector<std::string> lines;
    std::size_t pos = 0;
    bool eof = false;
    while (!eof) {
        std::string line;
        while (!eof) {
            std::string piece;
            while (piece.size() < 1023) {
                if (pos >= data.size()) {
                    eof = true;
                    break;
                }
                piece += data[pos++];
                if (piece.back() == '\n')
                    break;
            }
            if (piece.empty())
                break;
            line += piece;
            if (line.back() == '\n' || line.back() == '\r')
                break;
        }
        lines.push_back(line);
    }
    return lines;
}

bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }

std::string Trim(std::string const& s) {
    std::size_t begin = 0;
    std::size_t end = s.size();
    while (begin < end && IsBlank(s[begin]))
        ++begin;
    while (end > begin && IsBlank(s[end - 1]))
        --end;
    return s.substr(begin, end - begin);
}

bool IsSection(std::string const& t) {
    return t.size() >= 2 && t.front() == '[' && t.back() == ']';
}

std::pair<std::string, std::string> Split(std::string const& t) {
    std::size_t const equals = t.find('=');
    if (equals == std::string::npos)
        return {t, ""};
    return {Trim(t.substr(0, equals)), Trim(t.substr(equals + 1))};
}

std::string const& TempPath() {
    static std::string const path = [] {
        char const* dir = std::getenv("TMPDIR");
        std::string pattern = std::string(dir != nullptr ? dir : "/tmp") + "/lkit_ini_XXXXXX";
        int const fd = ::mkstemp(&pattern[0]);
        if (fd < 0)
            Fail("cannot create a temporary file");
        ::close(fd);
        return pattern;
    }();
    return path;
}

void RemoveTemp() { std::remove(TempPath().c_str()); }
}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    TempPath();
    std::atexit(RemoveTemp);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(uint8_t const* bytes, std::size_t size) {
    std::string const data(reinterpret_cast<char const*>(bytes), size);
    FILE* out = std::fopen(TempPath().c_str(), "wb");
    if (out == nullptr || std::fwrite(data.data(), 1, size, out) != size || std::fclose(out) != 0)
        Fail("cannot write the temporary file");

    liop::IniFile ini;
    if (!ini.Load(Lstd(TempPath())))
        Fail("Load of an existing file returned false");

    std::map<std::string, std::string> model;  // "section key" -> value
    std::vector<std::pair<std::string, std::string>> stored;
    std::vector<std::string> sections;  // in order of first key
    std::string section;
    for (std::string const& line : Lines(data)) {
        std::string const t = Trim(line);
        if (t.empty() || t[0] == ';')
            continue;
        if (IsSection(t)) {
            section = t.substr(1, t.size() - 2);
            continue;
        }
        std::pair<std::string, std::string> const kv = Split(t);
        model[section + " " + kv.first] = kv.second;
        stored.emplace_back(section, kv.first);
        if (std::find(sections.begin(), sections.end(), section) == sections.end())
            sections.push_back(section);
    }
    for (auto const& sk : stored)
        if (Std(ini.GetString(Lstd(sk.first), Lstd(sk.second))) !=
            model[sk.first + " " + sk.second])
            Fail("GetString disagrees with the model");

    for (std::size_t i = 0; i < sections.size() && i < 8; ++i) {
        std::string const prefix = sections[i] + " ";
        std::map<std::string, std::string> expected;
        for (auto const& entry : model)
            if (entry.first.compare(0, prefix.size(), prefix) == 0)
                expected[entry.first.substr(prefix.size())] = entry.second;
        std::map<std::string, std::string> walked;
        for (liop::IniFileKeyIterator it(ini, Lstd(sections[i])); ++it;)
            if (!walked.emplace(Std(it.GetKey()), Std(it.GetValue())).second)
                Fail("the key iterator yielded a key twice");
        if (walked != expected)
            Fail("the key iterator disagrees with the model");
    }

    // The whole input as one line.
    std::string const t = Trim(data);
    String name("unset");
    String key("unset");
    String value("unset");
    if (t.empty()) {
        try {
            liop::IniFile::IsSectionName(Lstd(data), &name);
            Fail("IsSectionName accepted an empty line");
        } catch (lstd::InvalidIndexException const&) {
        }
        if (liop::IniFile::SplitKeyAndValue(Lstd(data), &key, &value) || Std(key) != "unset")
            Fail("SplitKeyAndValue accepted an empty line");
        return 0;
    }
    bool const isSection = liop::IniFile::IsSectionName(Lstd(data), &name);
    if (isSection != IsSection(t) || Std(name) != (isSection ? t.substr(1, t.size() - 2) : ""))
        Fail("IsSectionName disagrees with the model");
    std::pair<std::string, std::string> const kv = Split(t);
    if (!liop::IniFile::SplitKeyAndValue(Lstd(data), &key, &value) || Std(key) != kv.first ||
        Std(value) != kv.second)
        Fail("SplitKeyAndValue disagrees with the model");
    return 0;
}
