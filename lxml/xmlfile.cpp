// lxml/xmlfile.cpp - a file read by an XML parser and written by an XML creator.
#include <lxml/xmlfile.h>

namespace lxml {
namespace {
unsigned long const kBufferSize = 255;
}

XMLFile::XMLFile(unsigned char const& newLine, unsigned char const& indent)
    : liop::File(), mReadBuffer(*this, kBufferSize), mWriteBuffer(*this, kBufferSize), mParser(),
      mCreator(newLine, indent) {}

XMLFile::~XMLFile() {}

int XMLFile::Open(lstd::String const& path, liop::File::OpenFileMode const& mode) {
    int const result = liop::File::Open(path, mode, liop::File::FILE_TEXT);
    if ((mode & liop::File::OPEN_READ) != 0)
        mParser.InitParse(mReadBuffer);
    if ((mode & liop::File::OPEN_WRITE) != 0)
        mCreator.InitCreate(mWriteBuffer);
    return result;
}
}  // namespace lxml
