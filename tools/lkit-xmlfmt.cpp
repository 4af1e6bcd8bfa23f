// lkit-xmlfmt - parses an XML file and writes it back indented.
#include "toolinput.h"
#include "xmltree.h"

#include <liop/file.h>
#include <liop/stringreadbuffer.h>
#include <lstd/string.h>
#include <lxml/xmlcreator.h>
#include <lxml/xmlnode.h>
#include <lxml/xmlparser.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <string>

namespace {
char const* const TOOL = "lkit-xmlfmt";

void Help() {
    std::printf(
        "Usage: %s FILE [-o OUTPUT]\n"
        "Parses the XML file FILE (\"-\" for standard input) into lxml nodes and writes them\n"
        "back with line breaks and tab indentation (lxml::XMLCreator's layout, one line\n"
        "feed at the end) to standard output, or to OUTPUT. Declarations and comments are\n"
        "left out, and so is text that stands beside child elements. Nothing is written\n"
        "unless the whole input was read. Exit status: 0, 1 for malformed XML, 2 when FILE\n"
        "cannot be read or OUTPUT cannot be written.\n",
        TOOL);
}

unsigned long long errorPosition = 0;
bool failed = false;
void OnError(unsigned long long const& position) {
    failed = true;
    errorPosition = position;
}

// Writes text to path through a temporary file renamed into place, so that a failure leaves
// no partial output behind.
bool WriteFile(std::string const& path, lstd::String const& text) {
    std::string const temporary = path + ".tmp";
    int error = 0;
    try {
        liop::File out;
        out.Open(temporary.c_str(), liop::File::OPEN_WRITE, liop::File::FILE_TEXT);
        bool const written = out.Print(text) != EOF && out.Flush() == 0;
        error = errno;
        out.Close();
        if (written && std::rename(temporary.c_str(), path.c_str()) == 0)
            return true;
        error = errno != 0 ? errno : error;
        std::remove(temporary.c_str());
    } catch (liop::IOException const&) {
        error = errno;
    }
    std::fprintf(stderr, "%s: cannot write '%s': %s\n", TOOL, path.c_str(),
                 std::strerror(error != 0 ? error : EIO));
    return false;
}
}  // namespace

int main(int argc, char** argv) {
    std::string inputPath, outputPath;
    bool haveInput = false;
    for (int i = 1; i < argc; ++i) {
        if (std::strcmp(argv[i], "--help") == 0) {
            Help();
            return 0;
        }
        if (std::strcmp(argv[i], "-o") == 0) {
            if (i + 1 == argc)
                return lkit_tools::UsageError(TOOL, "-o needs a file name");
            outputPath = argv[++i];
        } else if (!haveInput) {
            inputPath = argv[i];
            haveInput = true;
        } else {
            return lkit_tools::UsageError(TOOL, "expects one FILE");
        }
    }
    if (!haveInput)
        return lkit_tools::UsageError(TOOL, "expects one FILE");
    liop::File file;
    liop::File* input = lkit_tools::OpenInput(TOOL, inputPath, file);
    if (input == nullptr)
        return lkit_tools::EXIT_INPUT;

    lxml::XMLCreator tree(1, 1);  // no buffer: it only holds the nodes
    lkit_tools::TreeBuilder builder(tree);
    liop::StringReadBuffer buffer(*input, 255);
    lxml::XMLParser parser;
    builder.Connect(parser);
    parser.mErrorSignal.Connect(&OnError);
    parser.InitParse(buffer);
    parser.Parse();
    if (failed) {
        std::fprintf(stderr, "%s: %s: malformed tag at byte %llu\n", TOOL, inputPath.c_str(),
                     errorPosition);
        return 1;
    }
    lstd::String const error = builder.GetError();
    if (!error.IsNull()) {
        std::fprintf(stderr, "%s: %s: %s\n", TOOL, inputPath.c_str(), error.GetStdChar());
        return 1;
    }
    if (builder.GetDroppedTextCount() > 0)
        std::fprintf(stderr, "%s: %lu text(s) beside child elements left out\n", TOOL,
                     builder.GetDroppedTextCount());

    lstd::String text;
    for (auto const* node = tree.GetNodeList().GetHead(); node != nullptr; node = node->mNext) {
        text += node->mItem->ToString(1, 1, 0);
        text += "\n";
    }
    if (outputPath.empty()) {
        std::fwrite(text.GetStdChar(), 1, text.GetLength(), stdout);
        return 0;
    }
    return WriteFile(outputPath, text) ? 0 : lkit_tools::EXIT_INPUT;
}
