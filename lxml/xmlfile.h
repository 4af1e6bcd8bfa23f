// lxml/xmlfile.h - a file read by an XML parser and written by an XML creator.
#ifndef LXML_XMLFILE_H
#define LXML_XMLFILE_H

#include <liop/file.h>
#include <liop/stringreadbuffer.h>
#include <liop/stringwritebuffer.h>
#include <lstd/string.h>
#include <lxml/xmlcreator.h>
#include <lxml/xmlparser.h>

namespace lxml {

/// A text file with a read buffer and a write buffer of 255 bytes each, a parser reading
/// the one and a creator writing the other. Callers reach the parser and the creator through
/// GetParser() and GetCreator(): connect slots and call Parse(), or build nodes. The file
/// operations themselves stay private; the file is closed when the object is destroyed,
/// after the creator has written its nodes and the write buffer has handed its text on, so
/// a document built through an XMLFile reaches the disk at its destruction. Open it once.
class XMLFile : private liop::File {
public:
    /// Not opened: an empty path, the text type, the two buffers, a parser, and a creator
    /// with the two flags.
    XMLFile(unsigned char const& newLine, unsigned char const& indent);
    /// Destroys, in this order, the creator (which writes its nodes), the parser, the write
    /// buffer (which hands its text to the file), the read buffer and the file (closed).
    virtual ~XMLFile();

    /// Opens path as text with mode and returns mode: with the read bit the parser reads the
    /// read buffer, with the write bit the creator writes the write buffer. Throws
    /// liop::IOException "Cannot open file '%s'." (nothing is wired then).
    virtual int Open(lstd::String const& path, liop::File::OpenFileMode const& mode);

    /// Whether the file is open, and with every bit of mode.
    using liop::File::IsOpened;

    /// The parser: connect slots to its signals and call Parse().
    XMLParser& GetParser() { return mParser; }
    /// The creator: build the nodes to write here.
    XMLCreator& GetCreator() { return mCreator; }

private:
    using liop::File::Open;

    liop::StringReadBuffer mReadBuffer;
    liop::StringWriteBuffer mWriteBuffer;
    XMLParser mParser;
    XMLCreator mCreator;
};
}  // namespace lxml
#endif  // LXML_XMLFILE_H
