// XML: parsing a 20 MB document against expat, three hostile 10 MB documents, and writing a
// tree of 100,000 nodes against fprintf of the same text. Compare the pairs within one run:
//   build/bench/bench/lxml_bench --benchmark_repetitions=5 --benchmark_report_aggregates_only
// Inputs are generated once per run into a temporary directory, removed at exit.
#include <benchmark/benchmark.h>
#include <expat.h>
#include <lkit.h>

#include <malloc.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include <ftw.h>
#include <unistd.h>

namespace {
using lstd::String;

// ---- inputs ---------------------------------------------------------------------------------

int RemoveEntry(char const* path, struct stat const*, int, struct FTW*) { return ::remove(path); }

std::string const& Directory() {
    static std::string const path = [] {
        char pattern[] = "/tmp/lxml_bench_XXXXXX";
        std::string made = ::mkdtemp(pattern) != nullptr ? pattern : "/tmp";
        std::atexit([] { ::nftw(Directory().c_str(), &RemoveEntry, 16, FTW_DEPTH | FTW_PHYS); });
        return made;
    }();
    return path;
}

void WriteFile(std::string const& path, std::string const& text) {
    std::FILE* file = std::fopen(path.c_str(), "wb");
    std::fwrite(text.data(), 1, text.size(), file);
    std::fclose(file);
}

// Records with 2 to 5 attributes, nested elements, text with the five entities, every line
// under 200 bytes; no text after a self-closing tag and no mixed content, so that expat's
// character data and the parser's text events can be counted alike.
std::string const& NormalDocument() {
    static std::string const path = [] {
        std::string text = "<catalog>\n";
        unsigned long seed = 12345;
        auto next = [&seed] {
            seed = seed * 6364136223846793005UL + 1442695040888963407UL;
            return seed >> 33;
        };
        char const* const kinds[] = {"book", "disc", "tool&amp;part", "food", "&quot;misc&quot;"};
        char line[256];
        for (unsigned long i = 0; text.size() < (20UL << 20);) {
            unsigned long const attributes = 2 + next() % 4;
            text.append(line,
                        std::snprintf(line, sizeof line, "  <record id=\"%lu\" name=\"item %lu\"",
                                      i++, next() % 100000));
            if (attributes > 2)
                text.append(line,
                            std::snprintf(line, sizeof line, " kind=\"%s\"", kinds[next() % 5]));
            if (attributes > 3)
                text.append(line, std::snprintf(line, sizeof line, " stock='%lu'", next() % 1000));
            if (attributes > 4)
                text.append(" flag=\"y\"");
            text.append(">\n");
            text.append(line,
                        std::snprintf(line, sizeof line,
                                      "    <title lang=\"en\">Title &lt;%lu&gt; &quot;q&quot; "
                                      "it&apos;s &amp; more</title>\n",
                                      next() % 10000));
            text.append(line,
                        std::snprintf(line, sizeof line,
                                      "    <price currency=\"EUR\" tax=\"%lu\">%lu.%02lu</price>\n",
                                      next() % 30, next() % 1000, next() % 100));
            text.append("    <tags><tag>alpha</tag><tag>beta gamma</tag></tags>\n");
            if (next() % 2 == 0)
                text.append("    <note/>\n");
            text.append("    <description>A plain line of text that describes the record in a "
                        "few words.</description>\n  </record>\n");
        }
        text.append("</catalog>\n");
        std::string const file = Directory() + "/normal.xml";
        WriteFile(file, text);
        return file;
    }();
    return path;
}

// One tag of 10 MB with many attributes.
std::string const& TagDocument() {
    static std::string const path = [] {
        std::string text = "<big";
        for (unsigned long i = 0; text.size() < 10000000; ++i)
            text += " name" + std::to_string(i) + "=\"some value of moderate length " +
                    std::to_string(i) + "\"";
        text += ">";
        std::string const file = Directory() + "/tag.xml";
        WriteFile(file, text);
        return file;
    }();
    return path;
}

// 10 MB of text without any tag, on lines of a few hundred bytes.
std::string const& TextDocument() {
    static std::string const path = [] {
        std::string text;
        while (text.size() < 10000000)
            text += "just text, never a tag, with an entity &amp; now and then; " +
                    std::to_string(text.size()) + (text.size() % 7 == 0 ? "\n" : " ");
        std::string const file = Directory() + "/text.xml";
        WriteFile(file, text);
        return file;
    }();
    return path;
}

// 10 MB of "<".
std::string const& AngleDocument() {
    static std::string const path = [] {
        std::string const file = Directory() + "/angles.xml";
        WriteFile(file, std::string(10000000, '<'));
        return file;
    }();
    return path;
}

std::string ReadFileText(std::string const& path) {
    std::string text;
    std::FILE* file = std::fopen(path.c_str(), "rb");
    char block[65536];
    std::size_t n;
    while ((n = std::fread(block, 1, sizeof block, file)) > 0)
        text.append(block, n);
    std::fclose(file);
    return text;
}

long FileSize(std::string const& path) {
    std::FILE* file = std::fopen(path.c_str(), "rb");
    std::fseek(file, 0, SEEK_END);
    long const size = std::ftell(file);
    std::fclose(file);
    return size;
}

// ---- parsing --------------------------------------------------------------------------------

struct Counts {
    unsigned long open = 0, close = 0, text = 0, properties = 0, errors = 0;
    bool operator==(Counts const& o) const {
        return open == o.open && close == o.close && text == o.text && properties == o.properties &&
               errors == o.errors;
    }
};

Counts counts;
void CountOpen(String const&, lxml::XMLParser::PropertyMap const& properties) {
    ++counts.open;
    counts.properties += properties.Length();
}
void CountClose(String const&) { ++counts.close; }
void CountText(String const&) { ++counts.text; }
void CountError(unsigned long long const&) { ++counts.errors; }

Counts ParseLkit(std::string const& path) {
    counts = Counts();
    lxml::XMLFile file(0, 0);
    file.Open(path.c_str(), liop::File::OPEN_READ);
    lxml::XMLParser& parser = file.GetParser();
    parser.mOpenTagSignal.Connect(&CountOpen);
    parser.mCloseTagSignal.Connect(&CountClose);
    parser.mTextSignal.Connect(&CountText);
    parser.mErrorSignal.Connect(&CountError);
    parser.Parse();
    return counts;
}

// expat reports character data in pieces; a text event is a run of them, since the last tag,
// that is not blank and ends at a close tag: what the parser reports for this document.
struct ExpatCounts {
    Counts counts;
    bool blank = true;
};
void XMLCALL ExpatOpen(void* data, XML_Char const*, XML_Char const** attributes) {
    ExpatCounts& c = *static_cast<ExpatCounts*>(data);
    ++c.counts.open;
    for (; *attributes != nullptr; attributes += 2)
        ++c.counts.properties;
    c.blank = true;
}
void XMLCALL ExpatClose(void* data, XML_Char const*) {
    ExpatCounts& c = *static_cast<ExpatCounts*>(data);
    ++c.counts.close;
    if (!c.blank)
        ++c.counts.text;
    c.blank = true;
}
void XMLCALL ExpatText(void* data, XML_Char const* s, int length) {
    ExpatCounts& c = *static_cast<ExpatCounts*>(data);
    for (int i = 0; i < length && c.blank; ++i)
        c.blank = s[i] == ' ' || s[i] == '\n' || s[i] == '\t' || s[i] == '\r';
}

Counts ParseExpat(std::string const& path) {
    ExpatCounts c;
    XML_Parser parser = XML_ParserCreate(nullptr);
    XML_SetUserData(parser, &c);
    XML_SetElementHandler(parser, &ExpatOpen, &ExpatClose);
    XML_SetCharacterDataHandler(parser, &ExpatText);
    std::FILE* file = std::fopen(path.c_str(), "rb");
    static char block[64 * 1024];
    std::size_t n;
    while ((n = std::fread(block, 1, sizeof block, file)) > 0)
        if (XML_Parse(parser, block, static_cast<int>(n), 0) == XML_STATUS_ERROR)
            ++c.counts.errors;
    if (XML_Parse(parser, block, 0, 1) == XML_STATUS_ERROR)
        ++c.counts.errors;
    std::fclose(file);
    XML_ParserFree(parser);
    return c.counts;
}

template <Counts (*Parse)(std::string const&), Counts (*Peer)(std::string const&)>
void ParseNormal(benchmark::State& state) {
    std::string const& path = NormalDocument();
    static Counts const expected = Peer(path);
    for (auto _ : state) {
        if (!(Parse(path) == expected)) {
            state.SkipWithError("the event counts differ");
            break;
        }
    }
    state.SetBytesProcessed(state.iterations() * FileSize(path));
}

// Hostile documents: what the parser must report, and the MB/s it keeps.
template <std::string const& (*Document)(), unsigned long Open, unsigned long Properties>
void ParseHostile(benchmark::State& state) {
    std::string const& path = Document();
    for (auto _ : state) {
        Counts const c = ParseLkit(path);
        if (c.open != Open || c.properties != Properties || c.close != 0 || c.text != 0 ||
            c.errors != 0) {
            state.SkipWithError("unexpected events");
            break;
        }
    }
    state.SetBytesProcessed(state.iterations() * FileSize(path));
}

BENCHMARK(ParseNormal<&ParseLkit, &ParseExpat>)
    ->Name("Parse/lkit/20MB")
    ->Unit(benchmark::kMillisecond);
BENCHMARK(ParseNormal<&ParseExpat, &ParseExpat>)
    ->Name("Parse/expat/20MB")
    ->Unit(benchmark::kMillisecond);
BENCHMARK(ParseHostile<&TagDocument, 1, 204445>)
    ->Name("ParseOneTag/lkit/10MB")
    ->Unit(benchmark::kMillisecond);
BENCHMARK(ParseHostile<&TextDocument, 0, 0>)
    ->Name("ParseNoTag/lkit/10MB")
    ->Unit(benchmark::kMillisecond);
BENCHMARK(ParseHostile<&AngleDocument, 0, 0>)
    ->Name("ParseAngles/lkit/10MB")
    ->Unit(benchmark::kMillisecond);

// ---- writing --------------------------------------------------------------------------------

unsigned long const kNodes = 100000;
char const* const kKinds[] = {"plain", "tool&part", "\"quoted\"", "a<b"};
char const* const kEscapedKinds[] = {"plain", "tool&amp;part", "&quot;quoted&quot;", "a&lt;b"};

std::size_t HeapInUse() {
    struct mallinfo2 const info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

// The text both sides write: the tree printed with both flags. The properties of a record
// print in the order of its property set, found here from the names' buckets.
void WriteFprintf(std::string const& path) {
    char const* names[] = {"id", "name", "kind"};
    unsigned long buckets[3];
    for (int i = 0; i < 3; ++i)
        buckets[i] = String::Hash(String(names[i])) % 32767;
    int order[] = {0, 1, 2};
    std::sort(order, order + 3, [&](int a, int b) { return buckets[a] < buckets[b]; });
    std::FILE* file = std::fopen(path.c_str(), "wb");
    std::fputs("<catalog >", file);
    char id[32], name[32];
    for (unsigned long i = 0; i < kNodes; ++i) {
        std::snprintf(id, sizeof id, "%lu", i);
        std::snprintf(name, sizeof name, "item %lu", i * 7);
        char const* values[] = {id, name, kEscapedKinds[i % 4]};
        std::fprintf(file, "\n\t<record %s=\"%s\"%s=\"%s\"%s=\"%s\"/>", names[order[0]],
                     values[order[0]], names[order[1]], values[order[1]], names[order[2]],
                     values[order[2]]);
    }
    std::fputs("\n</catalog>", file);
    std::fclose(file);
}

void WritePeer(benchmark::State& state) {
    std::string const path = Directory() + "/fprintf.xml";
    for (auto _ : state)
        WriteFprintf(path);
    state.SetBytesProcessed(state.iterations() * FileSize(path));
}

// The tree of the write benchmarks, built through creator: a catalog of kNodes records with
// three text properties each. Returns the heap it holds per record.
double BuildTree(lxml::XMLCreator& creator) {
    std::size_t const before = HeapInUse();
    lxml::XMLDataNode* root = creator.CreateDataNode("catalog");
    char text[32];
    for (unsigned long i = 0; i < kNodes; ++i) {
        lxml::XMLDataNode* record = root->CreateSubNode("record");
        std::snprintf(text, sizeof text, "%lu", i);
        record->CreateProperty("id")->mValue.SetStringValue(text);
        std::snprintf(text, sizeof text, "item %lu", i * 7);
        record->CreateProperty("name")->mValue.SetStringValue(text);
        record->CreateProperty("kind")->mValue.SetStringValue(kKinds[i % 4]);
    }
    return static_cast<double>(HeapInUse() - before) / kNodes;
}

// What the creator writes, without the deletion of the nodes that follows it: the tree's
// text, through a write buffer of 255 bytes into a file.
void WriteLkit(benchmark::State& state) {
    std::string const path = Directory() + "/lkit.xml";
    double bytesPerNode = 0;
    for (auto _ : state) {
        state.PauseTiming();
        auto* creator = new lxml::XMLCreator(1, 1);
        bytesPerNode = BuildTree(*creator);
        state.ResumeTiming();
        {
            liop::File file;
            file.Open(path.c_str(), liop::File::OPEN_WRITE, liop::File::FILE_TEXT);
            liop::StringWriteBuffer buffer(file, 255);
            buffer.Write(creator->GetNodeList().GetHead()->mItem->ToString(1, 1, 0));
        }
        state.PauseTiming();
        delete creator;
        state.ResumeTiming();
    }
    std::string const peer = Directory() + "/peer.xml";
    WriteFprintf(peer);
    if (ReadFileText(path) != ReadFileText(peer))
        state.SkipWithError("the texts differ");
    state.counters["bytes_per_node"] = bytesPerNode;
    state.SetBytesProcessed(state.iterations() * FileSize(path));
}

// The whole of it through an XMLFile: its destruction makes the creator write and delete
// the nodes, and closes the file.
void WriteAndDestroyLkit(benchmark::State& state) {
    std::string const path = Directory() + "/lkit_file.xml";
    for (auto _ : state) {
        state.PauseTiming();
        auto* file = new lxml::XMLFile(1, 1);
        file->Open(path.c_str(), liop::File::OPEN_WRITE);
        BuildTree(file->GetCreator());
        state.ResumeTiming();
        delete file;
    }
    std::string const peer = Directory() + "/peer.xml";
    WriteFprintf(peer);
    if (ReadFileText(path) != ReadFileText(peer))
        state.SkipWithError("the texts differ");
    state.SetBytesProcessed(state.iterations() * FileSize(path));
}

BENCHMARK(WriteLkit)->Name("Write/lkit/100000")->Unit(benchmark::kMillisecond);
BENCHMARK(WriteAndDestroyLkit)->Name("WriteAndDestroy/lkit/100000")->Unit(benchmark::kMillisecond);
BENCHMARK(WritePeer)->Name("Write/fprintf/100000")->Unit(benchmark::kMillisecond);
}  // namespace
