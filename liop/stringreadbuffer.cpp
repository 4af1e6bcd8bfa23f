// liop/stringreadbuffer.cpp - the string buffers between a file and its reader or writer.
#include <liop/stringreadbuffer.h>

#include <liop/file.h>
#include <liop/stringwritebuffer.h>
#include <lstd/exception.h>

#include <cstdarg>

namespace liop {
StringBuffer::StringBuffer(File& file, unsigned long const& bufferSize)
    : mFile(&file), mBufferSize(bufferSize) {}

StringBuffer::~StringBuffer() {}

StringReadBuffer::StringReadBuffer(File& file, unsigned long const& bufferSize)
    : StringBuffer(file, bufferSize) {}

StringReadBuffer::~StringReadBuffer() {}

bool StringReadBuffer::Load() {
    try {
        if (!mFile->IsOpened(File::OPEN_READ))
            LSTD_THROW(IOException, "File is not opened or open mode is invalid");
        return ReadFromFile();
    } catch (...) {
        lstd::RethrowDeclared<IOException>();
    }
}

bool StringReadBuffer::ContinueReading() {
    try {
        mBuffer.Clear();
        if (mFile->IsEOF())
            return false;
        return ReadFromFile();
    } catch (...) {
        lstd::RethrowDeclared<IOException>();
    }
}

bool StringReadBuffer::ReadFromFile() {
    try {
        return mFile->Read(mBuffer, mBufferSize);
    } catch (...) {
        lstd::RethrowDeclared<IOException>();
    }
}

StringWriteBuffer::StringWriteBuffer(File& file, unsigned long const& bufferSize)
    : StringBuffer(file, bufferSize) {}

StringWriteBuffer::~StringWriteBuffer() {
    if (mBuffer.IsNull())
        return;
    try {
        mFile->Print(mBuffer);
        mBuffer.Clear();
    } catch (...) {
        lstd::RethrowDeclared<>();
    }
}

void StringWriteBuffer::Write(lstd::String const& text) {
    mBuffer += text;
    if (mBuffer.GetLength() >= mBufferSize) {
        mFile->Print(mBuffer);
        mBuffer.Clear();
    }
}

// va_start after a reference parameter: the signature is part of the interface. GCC and
// clang place the variadic arguments the same way whatever the last named parameter is.
#if defined(__clang__)
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wvarargs"
#endif
void StringWriteBuffer::FPrint(lstd::String const& format, ...) {
    lstd::String text;
    va_list args;
    va_start(args, format);
    try {
        lstd::String::Sprintf(text, format.GetStdChar(), args);
    } catch (...) {
        // Deliberate: a formatting failure writes nothing and is not reported.
        va_end(args);
        return;
    }
    va_end(args);
    Write(text);
}
#if defined(__clang__)
#pragma clang diagnostic pop
#endif
}  // namespace liop
