// lxml/xmlparser.h - event-driven XML reader: open tags, close tags, text and errors as signals.
#ifndef LXML_XMLPARSER_H
#define LXML_XMLPARSER_H

#include <lstd/enclosuretokenizer.h>
#include <lstd/exception.h>
#include <lstd/signal.h>
#include <lstd/string.h>
#include <lstd/valhashmap.h>

namespace liop {
class StringReadBuffer;
}

namespace lxml {

/// A tag that cannot be read; the message is the text given (the parser gives the tag
/// followed by " is invalid XML tag definition").
class InvalidXMLTag : public lstd::Exception {
public:
    /// The message is tag's text; file and line are those of the throw.
    InvalidXMLTag(lstd::String const& tag, char const* file, unsigned long long const& line);
    virtual ~InvalidXMLTag();
};

/// Reads XML text chunk by chunk from a read buffer and reports it through four signals; it
/// builds no tree. Only three kinds of tag are known: open, close and self-closing ("/" at
/// the end). Deliberate, kept so for its consumers, who ignore names they do not know:
/// declarations and comments are open tags whose names begin with "?" and "!", and nothing
/// checks that close tags match open tags.
///
/// Events, for a document read as one text:
/// - Tags are cut between "<" and ">"; a marker directly followed by a copy of itself is
///   text, so in a run of "<" only the last one opens a tag, and in a run of ">" inside a tag
///   only the last one closes it. A "<" inside a tag is an error.
/// - The trimmed tag text is a close tag ("/" first: mCloseTagSignal with the rest), a
///   self-closing tag ("/" last: mOpenTagSignal and mCloseTagSignal) or an open tag
///   (mOpenTagSignal). The name is the first run of non-blank bytes, the properties follow as
///   XML (xml.h) describes; an open tag without a name is an error.
/// - mTextSignal: by design only for the text that stands directly before a close tag since
///   the previous tag, trimmed and unescaped (XML::UnescapeText), and only when not empty.
///   Text before an open tag (mixed content) is dropped, and so is the text after a
///   self-closing tag up to the next tag.
/// - mErrorSignal, once: for an unreadable tag, or when a slot raises InvalidXMLTag or
///   lstd::InvalidEnclosureToken. Its argument is the position, counted in bytes from the
///   start of the document, of the "<" that opens the faulty tag. The parse then stops;
///   events already emitted stand.
/// The events do not depend on how the document is cut into chunks: a line longer than the
/// read buffer arrives in pieces, and a chunk may end anywhere, even inside a "<<" or ">>".
/// Whatever stays pending when the document ends (an unclosed tag, text after the last tag)
/// is not reported.
///
/// Slots get references to objects that the parser reuses for the next event: copy what
/// you keep. The same is true of the property map, which holds exactly the tag's properties
/// while its slots run. Time and memory are linear in the size of the input.
class XMLParser {
public:
    /// Property name to unquoted, unescaped value.
    typedef lstd::ValHashMap<lstd::String, lstd::String> PropertyMap;

    /// No buffer, nothing pending, not terminated, no connection. Throws
    /// lstd::NotEnoughMemoryException.
    XMLParser();
    XMLParser(XMLParser const&) = delete;
    XMLParser& operator=(XMLParser const&) = delete;
    /// Deletes the signals' connections; the buffer is left alone.
    virtual ~XMLParser();

    /// Reads from buffer (not owned) from now on: nothing pending, not terminated, not failed.
    void InitParse(liop::StringReadBuffer& buffer);
    /// Runs the whole parse: Load(), then ReadFromBuffer() and ContinueReading() in turn.
    /// Returns false at the end of the input and after the error signal, true when a slot
    /// called Terminate(). Throws liop::IOException "Invalid buffer" without InitParse, and
    /// passes on the buffer's liop::IOException (a file not open for reading). An exception
    /// raised by a slot (other than the two that make an error event) passes out and ends
    /// the parse. After the error signal Parse() keeps returning false until InitParse().
    /// A slot that calls Parse() of its own parser gets false.
    bool Parse();
    /// Stops the parse once the tag being handled is done; Parse() then returns true.
    void Terminate();
    /// Appends the buffer's current chunk to the pending text and analyses it
    /// (AnalyzeRudeText); returns its result. Throws liop::IOException "Invalid buffer"
    /// without InitParse.
    bool ReadFromBuffer();
    /// Reports every tag completed in the pending text since the last call; what follows the
    /// last complete tag stays pending. False after the error signal, else true.
    bool AnalyzeRudeText();
    /// Handles one trimmed tag text found by tokenizer in the pending text: the tag step of
    /// the analysis, for callers that cut the pending text themselves. For a close tag,
    /// tagStart becomes the tokenizer's start position and the pending text from lastTagEnd
    /// to it is the text reported; lastTagEnd becomes the tokenizer's end position, or -1
    /// after a self-closing tag. Throws InvalidXMLTag for an open tag without a name.
    void AnalyzeTag(lstd::String const& tag, lstd::EnclosureTokenizer const& tokenizer,
                    long long& lastTagEnd, long long& tagStart);
    /// The text received after the last complete tag.
    lstd::String GetPendingText() const;

    /// Every open or self-closing tag: its name and its properties (name to value).
    lstd::sign::TwoArgSignal<lstd::String const&, PropertyMap const&> mOpenTagSignal;
    /// Every close or self-closing tag: its name.
    lstd::sign::OneArgSignal<lstd::String const&> mCloseTagSignal;
    /// The text before a close tag, when it is not empty.
    lstd::sign::OneArgSignal<lstd::String const&> mTextSignal;
    /// Once, when the parse stops on an error: the position of the faulty tag.
    lstd::sign::OneArgSignal<unsigned long long const&> mErrorSignal;

private:
    struct Scan;

    // The analysis of the bytes received, from where the last call stopped; atEnd settles
    // what waited for the next byte. False after an error.
    bool Run(bool const& atEnd);
    // Appends the buffer's chunk and runs the analysis.
    bool Feed();
    // Reports the tag between the markers at tagStart and tagClose; throws InvalidXMLTag for
    // an open tag without a name.
    void HandleTag(unsigned long const& tagStart, unsigned long const& tagClose);
    void Fail(unsigned long long const& position);
    void Append(char const* data, unsigned long const& length);

    liop::StringReadBuffer* mSourceBuffer;
    // The bytes received and not yet consumed, [begin, end) of the scan state. The block
    // beyond end is spare room (its length is the room's size), so that a chunk is appended
    // in time proportional to the chunk, never to what is pending.
    lstd::String mPendingText;
    bool mTerminated;
    Scan* mScan;
};
}  // namespace lxml
#endif  // LXML_XMLPARSER_H
