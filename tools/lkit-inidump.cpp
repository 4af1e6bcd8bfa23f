// lkit-inidump - prints every value of an ini file, sorted by section then key.
#include "toolinput.h"

#include <liop/file.h>
#include <liop/inifile.h>
#include <lstd/string.h>

#include <algorithm>
#include <cstdio>
#include <string>
#include <utility>
#include <vector>

namespace {
char const* const TOOL = "lkit-inidump";

void Help() {
    std::printf(
        "Usage: %s FILE\n"
        "Reads the ini file FILE (\"-\" for standard input) with liop::IniFile's rules and\n"
        "prints one line per value: \"[section] key = value\", sorted by section and then\n"
        "by key in byte order; keys before the first section are in section \"\".\n"
        "A key given twice in a section shows its last value. Exit status: 0, or 2 when\n"
        "FILE cannot be read.\n",
        TOOL);
}

std::string Text(lstd::String const& s) { return std::string(s.GetStdChar(), s.GetLength()); }
lstd::String Lkit(std::string const& s) { return lstd::String(s.data(), s.size()); }
void Put(std::string const& s) { std::fwrite(s.data(), 1, s.size(), stdout); }
}  // namespace

int main(int argc, char** argv) {
    liop::File file;
    liop::File* input = nullptr;
    int const status = lkit_tools::OpenSingleInput(argc, argv, TOOL, &Help, file, input);
    if (status >= 0)
        return status;

    // The loader's own steps, through its public helpers, so that the (section, key) pairs
    // are known: the ini file keeps them in one flat map that it does not list.
    liop::IniFile ini;
    std::vector<std::pair<std::string, std::string>> keys;
    lstd::String line, section, name, key, value;
    while (input->Read(line)) {
        lstd::String const trimmed = static_cast<lstd::String const&>(line).Trim();
        if (trimmed.IsNull() || trimmed[0] == ';')
            continue;
        if (liop::IniFile::IsSectionName(trimmed, &name)) {  // name is "" for other lines
            section = name;
            continue;
        }
        liop::IniFile::SplitKeyAndValue(trimmed, &key, &value);
        ini.AppendKeyAndValue(section, key, value);
        keys.emplace_back(Text(section), Text(key));
    }
    std::sort(keys.begin(), keys.end());
    keys.erase(std::unique(keys.begin(), keys.end()), keys.end());
    for (auto const& k : keys) {
        Put("[" + k.first + "] " + k.second + " = " +
            Text(ini.GetString(Lkit(k.first), Lkit(k.second))) + "\n");
    }
    return 0;
}
