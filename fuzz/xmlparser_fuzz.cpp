// fuzz/xmlparser_fuzz.cpp - the XML parser on arbitrary bytes, read from a file by XMLFile.
// Properties: Parse returns, and returns false (no slot terminates); the events are those
// of the reading of the same bytes as one text with the enclosure tokenizer and the tag
// helpers (tests/lxml/xml_events.h), so chunk borders change nothing; an error event comes
// once and last; every close event's name was opened before, or stands after a "/" in the
// input (a close tag in the text).
#include "../tests/lxml/xml_events.h"

#include <lkit.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include <unistd.h>

namespace {
struct Event {
    char kind;  // 'O', 'C', 'T' or 'E'
    std::string name;
};
std::vector<Event> events;

void Open(lstd::String const& name, lxml::XMLParser::PropertyMap const&) {
    events.push_back({'O', xml_events::Text(name)});
}
void Close(lstd::String const& name) { events.push_back({'C', xml_events::Text(name)}); }
void Text(lstd::String const&) { events.push_back({'T', std::string()}); }
void Error(unsigned long long const&) { events.push_back({'E', std::string()}); }

std::string const& InputPath() {
    static std::string const path = [] {
        char pattern[] = "/tmp/xmlparser_fuzz_XXXXXX";
        int const fd = ::mkstemp(pattern);
        if (fd >= 0)
            ::close(fd);
        std::atexit([] { std::remove(InputPath().c_str()); });
        return std::string(pattern);
    }();
    return path;
}

[[noreturn]] void Fail(char const* what, std::string const& detail) {
    std::fprintf(stderr, "xmlparser_fuzz: %s\n%s\n", what, detail.c_str());
    std::abort();
}
}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    std::string const input(reinterpret_cast<char const*>(data), size);
    std::FILE* file = std::fopen(InputPath().c_str(), "wb");
    if (file == nullptr)
        return 0;
    std::fwrite(input.data(), 1, input.size(), file);
    std::fclose(file);

    events.clear();
    xml_events::Log().clear();
    bool result;
    {
        lxml::XMLFile xml(0, 0);
        xml.Open(InputPath().c_str(), liop::File::OPEN_READ);
        lxml::XMLParser& parser = xml.GetParser();
        xml_events::Connect(parser);
        parser.mOpenTagSignal.Connect(&Open);
        parser.mCloseTagSignal.Connect(&Close);
        parser.mTextSignal.Connect(&Text);
        parser.mErrorSignal.Connect(&Error);
        result = parser.Parse();
    }
    if (result)
        Fail("Parse returned true", input);
    std::string const reference = xml_events::Reference(input);
    if (xml_events::Log() != reference)
        Fail("events differ from the whole-text reading", xml_events::Log() + "\n" + reference);
    std::vector<std::string> opened;
    for (std::size_t i = 0; i < events.size(); ++i) {
        Event const& event = events[i];
        if (event.kind == 'E' && i + 1 != events.size())
            Fail("an event after the error event", input);
        if (event.kind == 'O')
            opened.push_back(event.name);
        if (event.kind == 'C') {
            bool known = false;
            for (std::string const& name : opened)
                known = known || name == event.name;
            if (!known && input.find("/" + event.name) == std::string::npos)
                Fail("a close event for a name never opened nor written", event.name);
        }
    }
    return 0;
}
