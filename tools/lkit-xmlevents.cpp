// lkit-xmlevents - prints the events of the XML parser, one line each.
#include "toolinput.h"

#include <liop/file.h>
#include <liop/stringreadbuffer.h>
#include <lstd/string.h>
#include <lstd/valhashmap.h>
#include <lxml/xmlparser.h>

#include <algorithm>
#include <cstdio>
#include <string>
#include <utility>
#include <vector>

namespace {
char const* const TOOL = "lkit-xmlevents";

void Help() {
    std::printf(
        "Usage: %s FILE\n"
        "Parses the XML file FILE (\"-\" for standard input) with lxml::XMLParser and prints\n"
        "one line per event, in order:\n"
        "  OPEN name a=\"1\" b=\"2\"   an open or self-closing tag, properties sorted by name\n"
        "  CLOSE name             a close or self-closing tag\n"
        "  TEXT text              the text before a close tag, trimmed and unescaped\n"
        "  ERROR position         the parse stopped at a malformed tag (byte offset)\n"
        "Text and values are escaped so that an event stays on one line: \\\\, \\n, \\r, \\t,\n"
        "\\\" in values and \\xHH for other control bytes. A count of each event goes to\n"
        "standard error. Exit status: 0, 1 when the parse ended in an error, 2 when FILE\n"
        "cannot be read.\n",
        TOOL);
}

struct Counts {
    unsigned long open = 0, close = 0, text = 0, error = 0;
} counts;

// Appends s with the bytes that would break the line (or, in a value, the quotes) escaped.
void Escaped(std::string& out, lstd::String const& s, bool inQuotes) {
    static char const hex[] = "0123456789abcdef";
    for (unsigned long i = 0; i < s.GetLength(); ++i) {
        unsigned char const c = static_cast<unsigned char>(s.GetStdChar()[i]);
        switch (c) {
        case '\\': out += "\\\\"; break;
        case '\n': out += "\\n"; break;
        case '\r': out += "\\r"; break;
        case '\t': out += "\\t"; break;
        case '"':
            out += inQuotes ? "\\\"" : "\"";
            break;
        default:
            if (c < 0x20 || c == 0x7f) {
                out += "\\x";
                out += hex[c >> 4];
                out += hex[c & 15];
            } else {
                out += static_cast<char>(c);
            }
        }
    }
}

void Line(std::string const& line) {
    std::fwrite(line.data(), 1, line.size(), stdout);
    std::fputc('\n', stdout);
}

void OnOpen(lstd::String const& name, lxml::XMLParser::PropertyMap const& properties) {
    ++counts.open;
    std::vector<std::pair<std::string, lstd::String>> sorted;
    lstd::ValHashMapIterator<lstd::String, lstd::String> it(properties);
    while (++it)
        sorted.emplace_back(std::string(it.GetKey().GetStdChar(), it.GetKey().GetLength()),
                            it.GetValue());
    std::sort(sorted.begin(), sorted.end(),
              [](auto const& a, auto const& b) { return a.first < b.first; });
    std::string line = "OPEN ";
    Escaped(line, name, false);
    for (auto const& property : sorted) {
        line += ' ';
        Escaped(line, lstd::String(property.first.data(), property.first.size()), false);
        line += "=\"";
        Escaped(line, property.second, true);
        line += '"';
    }
    Line(line);
}

void OnClose(lstd::String const& name) {
    ++counts.close;
    std::string line = "CLOSE ";
    Escaped(line, name, false);
    Line(line);
}

void OnText(lstd::String const& text) {
    ++counts.text;
    std::string line = "TEXT ";
    Escaped(line, text, false);
    Line(line);
}

void OnError(unsigned long long const& position) {
    ++counts.error;
    Line("ERROR " + std::to_string(position));
}
}  // namespace

int main(int argc, char** argv) {
    liop::File file;
    liop::File* input = nullptr;
    int const status = lkit_tools::OpenSingleInput(argc, argv, TOOL, &Help, file, input);
    if (status >= 0)
        return status;

    liop::StringReadBuffer buffer(*input, 255);
    lxml::XMLParser parser;
    parser.mOpenTagSignal.Connect(&OnOpen);
    parser.mCloseTagSignal.Connect(&OnClose);
    parser.mTextSignal.Connect(&OnText);
    parser.mErrorSignal.Connect(&OnError);
    parser.InitParse(buffer);
    parser.Parse();
    std::fflush(stdout);
    std::fprintf(stderr, "%s: %lu OPEN, %lu CLOSE, %lu TEXT, %lu ERROR\n", TOOL, counts.open,
                 counts.close, counts.text, counts.error);
    return counts.error > 0 ? 1 : 0;
}
