// lkit-tour - one run through every subsystem of lkit, on the data in examples/data/.
//
// It reads its settings with liop::IniFile, parses a catalogue of records through
// lxml::XMLFile into a node tree, keeps the recent records sorted by price in a
// lstd::ValSortList, writes them back as indented XML with a typed property added, builds a
// graph of the references between records and prints the island of one record with
// lmth::GraphWriter, logs each step with llog::Logger and times itself with lstd::Timer.
// Nothing is written unless the settings and the whole catalogue were read.
#include "xmltree.h"

#include <liop/directory.h>
#include <liop/file.h>
#include <liop/inifile.h>
#include <liop/ioexception.h>
#include <llog/logconfig.h>
#include <llog/logger.h>
#include <lmth/adjacentlistgraph.h>
#include <lmth/graphwriter.h>
#include <lstd/exception.h>
#include <lstd/string.h>
#include <lstd/system.h>
#include <lstd/timer.h>
#include <lstd/valsortlist.h>
#include <lxml/xmlcreator.h>
#include <lxml/xmldatanode.h>
#include <lxml/xmlfile.h>
#include <lxml/xmltextnode.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#ifndef LKIT_TOUR_SETTINGS
#define LKIT_TOUR_SETTINGS "examples/data/settings.ini"
#endif

namespace {

/// A failure that ends the tour with exit status 2 before anything is written.
struct DataError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

std::string Str(lstd::String const& s) { return std::string(s.GetStdChar(), s.GetLength()); }

std::string Join(std::string const& dir, std::string const& name) {
    if (name.empty() || name[0] == '/' || dir.empty())
        return name;
    return dir.back() == '/' ? dir + name : dir + "/" + name;
}

/// The settings the tour needs; each one must be present.
struct Settings {
    std::string catalogue, outCatalogue, outGraph, logDir, logFile, start;
    long fromYear = 0;
};

Settings ReadSettings(std::string const& path) {
    liop::IniFile ini;
    if (!liop::File::Exist(path.c_str()) || !ini.Load(path.c_str()))
        throw DataError("cannot read settings '" + path + "'");
    auto get = [&](char const* section, char const* key) {
        std::string const value = Str(ini.GetString(section, key));
        if (value.empty())
            throw DataError(path + ": [" + section + "] " + key + " is missing");
        return value;
    };
    Settings s;
    std::string const dir = path.find('/') == std::string::npos
                                ? std::string()
                                : path.substr(0, path.rfind('/') + 1);
    s.catalogue = Join(dir, get("catalogue", "file"));
    std::string const year = get("catalogue", "from_year");
    if (!lstd::String::IsDigit(year.c_str()))
        throw DataError(path + ": [catalogue] from_year is not a year: '" + year + "'");
    s.fromYear = std::atol(year.c_str());
    s.outCatalogue = get("output", "catalogue");
    s.outGraph = get("output", "graph");
    s.logDir = get("log", "dir");
    s.logFile = get("log", "file");
    s.start = get("graph", "start");
    return s;
}

/// One record of the catalogue, as the tour uses it.
struct Record {
    std::string id, title;
    long year = 0;
    double price = 0;
    std::vector<std::string> cites;
    lxml::XMLDataNode const* node = nullptr;
};

lstd::String PropertyText(lxml::XMLNode const& node, char const* name) {
    lxml::XMLProperty const* property = node.FindProperty(name);
    return property != nullptr ? property->mValue.GetStringValue() : lstd::String();
}

std::vector<Record> ReadRecords(lxml::XMLCreator const& tree, std::string const& path) {
    auto const* top = tree.GetNodeList().GetHead();
    if (top == nullptr || top->mItem->GetType() != 1 || Str(*top->mItem) != "catalogue")
        throw DataError(path + ": no <catalogue> element");
    std::vector<Record> records;
    auto const& books = static_cast<lxml::XMLDataNode const*>(top->mItem)->GetSubNodeList();
    for (auto const* link = books.GetHead(); link != nullptr; link = link->mNext) {
        if (link->mItem->GetType() != 1 || Str(*link->mItem) != "book")
            continue;
        Record r;
        r.node = static_cast<lxml::XMLDataNode const*>(link->mItem);
        r.id = Str(PropertyText(*r.node, "id"));
        std::string const year = Str(PropertyText(*r.node, "year"));
        if (r.id.empty() || !lstd::String::IsDigit(year.c_str()))
            throw DataError(path + ": record " + std::to_string(records.size() + 1) +
                            " needs an id and a numeric year");
        r.year = std::atol(year.c_str());
        for (auto const* c = r.node->GetSubNodeList().GetHead(); c != nullptr; c = c->mNext) {
            std::string const name = Str(*c->mItem);
            if (name == "title" && c->mItem->GetType() == 0)
                r.title = Str(static_cast<lxml::XMLTextNode const*>(c->mItem)->GetText());
            else if (name == "price" && c->mItem->GetType() == 0)
                r.price = std::atof(
                    static_cast<lxml::XMLTextNode const*>(c->mItem)->GetText().GetStdChar());
            else if (name == "cites")
                r.cites.push_back(Str(PropertyText(*c->mItem, "ref")));
        }
        records.push_back(r);
    }
    return records;
}

unsigned long long errorPosition = 0;
bool parseFailed = false;
void OnParseError(unsigned long long const& position) {
    parseFailed = true;
    errorPosition = position;
}

/// The sort key of the selection: cheapest first, the id breaking ties.
struct ByPrice {
    double price;
    std::string id;
    std::size_t index;
    bool operator<(ByPrice const& o) const {
        return price < o.price || (price == o.price && id < o.id);
    }
    bool operator==(ByPrice const& o) const { return price == o.price && id == o.id; }
};

template <typename T, typename F>
void ForEach(lstd::ValSortList<T> const& list, F f) {
    std::unique_ptr<lstd::IValOrderListIterator<T>> it(list.CreateIterator());
    while (++*it)
        f(it->Get());
}

/// Copies a parsed node, with its properties and subtree, under parent.
void CopyInto(lxml::XMLDataNode& parent, lxml::XMLNode const& node) {
    lxml::XMLNode* copy;
    if (node.GetType() == 0) {
        lxml::XMLTextNode* text = parent.CreateSubTextNode(node);
        text->SetText(static_cast<lxml::XMLTextNode const&>(node).GetText());
        copy = text;
    } else {
        lxml::XMLDataNode* data = parent.CreateSubNode(node);
        auto const& children = static_cast<lxml::XMLDataNode const&>(node).GetSubNodeList();
        for (auto const* c = children.GetHead(); c != nullptr; c = c->mNext)
            CopyInto(*data, *c->mItem);
        copy = data;
    }
    lstd::PtrHashSetIterator<lxml::XMLProperty> it(node.GetPropertySet());
    while (++it)
        copy->CreateProperty(*it.Get())->mValue = it.Get()->mValue;
}

void Help() {
    std::printf(
        "Usage: lkit-tour [--settings FILE] [--out DIR] [--help]\n"
        "Runs through lkit on a catalogue of records: reads the settings (default\n"
        "%s), parses the catalogue they name, writes the recent\n"
        "records sorted by price, a reference graph and a log into DIR (default\n"
        "tour-output). A missing or malformed data file ends it with status 2, before\n"
        "anything is written.\n",
        LKIT_TOUR_SETTINGS);
}

int Run(std::string const& settingsPath, std::string const& outDir) {
    lstd::Timer timer;
    timer.Start();
    Settings const settings = ReadSettings(settingsPath);

    // 1. Parse the whole catalogue into nodes held by the XML file's creator.
    lxml::XMLFile in(0, 0);
    try {
        in.Open(settings.catalogue.c_str(), liop::File::OPEN_READ);
    } catch (liop::IOException const&) {
        throw DataError("cannot read catalogue '" + settings.catalogue + "'");
    }
    lkit_tools::TreeBuilder builder(in.GetCreator());
    builder.Connect(in.GetParser());
    in.GetParser().mErrorSignal.Connect(&OnParseError);
    in.GetParser().Parse();
    if (parseFailed)
        throw DataError(settings.catalogue + ": malformed tag at byte " +
                        std::to_string(errorPosition));
    if (!builder.GetError().IsNull())
        throw DataError(settings.catalogue + ": " + Str(builder.GetError()));
    std::vector<Record> const records = ReadRecords(in.GetCreator(), settings.catalogue);
    unsigned long long const parseUs = timer.GetElapsedTime(lstd::Timer::ELAPSED_MICROSECOND);

    // 2. The recent records, kept sorted as they are appended.
    lstd::ValSortList<ByPrice> selection;
    for (std::size_t i = 0; i < records.size(); ++i)
        if (records[i].year >= settings.fromYear)
            selection.Append(ByPrice{records[i].price, records[i].id, i});

    // 3. The references as a directed graph: record i cites record j.
    std::map<std::string, unsigned long> vertexOf;
    for (std::size_t i = 0; i < records.size(); ++i)
        vertexOf[records[i].id] = i;
    auto start = vertexOf.find(settings.start);
    if (start == vertexOf.end())
        throw DataError(settingsPath + ": [graph] start names no record: '" + settings.start +
                        "'");
    lmth::AdjacentListGraph graph(records.size());
    unsigned long edges = 0, dangling = 0;
    for (std::size_t i = 0; i < records.size(); ++i)
        for (std::string const& ref : records[i].cites) {
            auto to = vertexOf.find(ref);
            if (to == vertexOf.end()) {
                ++dangling;
                continue;
            }
            graph.AddEdge(i, to->second);
            ++edges;
        }
    lstd::ValSortList<unsigned long> island;
    graph.GetConnectingIsland(start->second, island);

    // Everything was read: from here on the tour writes.
    liop::Directory::CreateAll(outDir.c_str(), 0);
    std::string const logDir = Join(outDir, settings.logDir);
    liop::Directory::CreateAll(logDir.c_str(), 0);
    llog::LogConfig::SetOutputDir(logDir.c_str());
    llog::Logger log(settings.logFile.c_str());  // closed by lstd::System at the end of main
    log.Info(1, "settings read from %s\n", settingsPath.c_str());
    log.Info(2, "%s: %lu records, %lu elements parsed in %llu us\n", settings.catalogue.c_str(),
             static_cast<unsigned long>(records.size()), builder.GetElementCount(), parseUs);
    if (dangling > 0)
        log.Warning(3, "%lu references name no record\n", dangling);

    // 4. The selection, written through the XML creator into a file renamed into place.
    std::string const outCatalogue = Join(outDir, settings.outCatalogue);
    std::string const temporary = outCatalogue + ".tmp";
    {
        lxml::XMLFile out(1, 1);
        out.Open(temporary.c_str(), liop::File::OPEN_WRITE);
        lxml::XMLDataNode* root = out.GetCreator().CreateDataNode("catalogue");
        // A typed value prints bare (from=2000); it stays alone in its tag because the
        // writer puts no blank between two properties.
        root->CreateProperty("from")->mValue.SetInt32Value(settings.fromYear);
        ForEach(selection,
                [&](ByPrice const& entry) { CopyInto(*root, *records[entry.index].node); });
    }  // the creator writes the nodes and the file is closed here
    if (std::rename(temporary.c_str(), outCatalogue.c_str()) != 0)
        throw std::runtime_error("cannot rename '" + temporary + "'");
    log.Info(4, "%lu of %lu records from %ld on written to %s\n", selection.GetNumberOfEntry(),
             static_cast<unsigned long>(records.size()), settings.fromYear,
             outCatalogue.c_str());

    // 5. The whole graph listed into a file.
    std::string const outGraph = Join(outDir, settings.outGraph);
    {
        liop::File file(outGraph.c_str(), liop::File::FILE_TEXT);
        file.Open(liop::File::OPEN_WRITE);
        lmth::GraphWriter(graph).Writer(&file);
        file.Close();
    }
    log.Info(5, "graph of %lu vertices and %lu edges listed in %s\n",
             static_cast<unsigned long>(records.size()), edges, outGraph.c_str());

    // 6. What a reader sees.
    std::printf("lkit tour, settings %s\n", settingsPath.c_str());
    std::printf("  liop::IniFile       catalogue %s, records from %ld, island of %s\n",
                settings.catalogue.substr(settings.catalogue.rfind('/') + 1).c_str(),
                settings.fromYear, settings.start.c_str());
    std::printf("  lxml::XMLFile       %lu records, %lu elements, entities decoded\n",
                static_cast<unsigned long>(records.size()), builder.GetElementCount());
    std::printf("  lstd::ValSortList   %lu records from %ld on, cheapest and dearest:\n",
                selection.GetNumberOfEntry(), settings.fromYear);
    if (selection.GetNumberOfEntry() > 0) {
        ByPrice const* ends[] = {&selection.GetFirst(), &selection.GetLast()};
        for (ByPrice const* entry : ends)
            std::printf("                      %s %6.2f  %s\n", entry->id.c_str(),
                        entry->price, records[entry->index].title.c_str());
    }
    std::printf("  lmth graph          %lu records citing each other %lu times\n",
                static_cast<unsigned long>(records.size()), edges);
    std::printf("  island of %-9s", settings.start.c_str());
    std::vector<unsigned long> members;
    ForEach(island, [&](unsigned long v) { members.push_back(v); });
    for (std::size_t k = 0; k < members.size(); ++k)
        std::printf(" %lu=%s", static_cast<unsigned long>(k), records[members[k]].id.c_str());
    std::printf(" (Graph::GetConnectingIsland)");
    std::printf("\n  lmth::GraphWriter   the island's references (k cites ...):\n");
    lmth::AdjacentListGraph sub(members.size());
    for (std::size_t a = 0; a < members.size(); ++a)
        for (std::size_t b = 0; b < members.size(); ++b)
            if (graph.HasEdge(members[a], members[b]))
                sub.AddEdge(a, b);
    std::fflush(stdout);
    lmth::GraphWriter(sub).Writer(&liop::File::GetStdout());
    liop::File::GetStdout().Flush();
    timer.Stop();
    std::printf("  lstd::Timer         done in %.1f ms\n",
                timer.GetElapsedTime(lstd::Timer::ELAPSED_MICROSECOND) / 1000.0);
    log.Info(6, "done in %llu us\n", timer.GetElapsedTime(lstd::Timer::ELAPSED_MICROSECOND));
    std::printf("Files written:\n  %s\n  %s\n  %s (closed at exit)\n", outCatalogue.c_str(),
                outGraph.c_str(), Join(logDir, settings.logFile).c_str());
    return 0;
}
}  // namespace

int main(int argc, char** argv) {
    lstd::System system;  // runs the exit handlers, which close the log, when main returns
    std::string settingsPath = LKIT_TOUR_SETTINGS, outDir = "tour-output";
    for (int i = 1; i < argc; ++i) {
        std::string const arg = argv[i];
        if (arg == "--help") {
            Help();
            return 0;
        }
        if ((arg == "--settings" || arg == "--out") && i + 1 < argc) {
            (arg == "--out" ? outDir : settingsPath) = argv[++i];
        } else {
            std::fprintf(stderr, "lkit-tour: unknown argument '%s' (try 'lkit-tour --help')\n",
                         arg.c_str());
            return 2;
        }
    }
    try {
        return Run(settingsPath, outDir);
    } catch (DataError const& e) {
        std::fprintf(stderr, "lkit-tour: %s\n", e.what());
        return 2;
    } catch (std::exception const& e) {  // lstd::Exception included: a failure while writing
        std::fprintf(stderr, "lkit-tour: %s\n", e.what());
        return 1;
    }
}
