// lxml/xml.h - static helpers of the XML classes: escaping, tag and node text, tag analysis.
#ifndef LXML_XML_H
#define LXML_XML_H

#include <lstd/hashcollection.h>
#include <lstd/ptrdlinklist.h>
#include <lstd/string.h>
#include <lstd/valhashmap.h>

#include <cstring>

namespace lxml {
class XMLNode;
class XMLDataNode;
class XMLTextNode;
class XMLProperty;

/// Static helpers shared by the model, the parser and the writer. Holds no state besides the
/// two escaping tables.
///
/// Property text. A tag's property text is cut into properties one at a time
/// (TokenPropTextForSeparator): blanks (space, tab, line feed, carriage return) are skipped;
/// the name runs to the next blank or "="; when an "=" follows (blanks around it allowed), the
/// value is either enclosed by its separator, a single or a double quote that the same quote
/// closes (so the other kind may stand inside it), or runs unquoted to the next blank. A
/// value whose closing quote is missing runs to the end of the text. A name without "=" gets
/// the empty value. The value is trimmed, then unescaped. A value with no name before its
/// "=" is skipped; when a name repeats, its last value wins.
class XML {
public:
    XML();
    virtual ~XML();

    /// Paired by position: mEscapseCharArr[i] stands for mUnescapseCharArr[i]
    /// ("&amp;" for "&", then the double quote, the apostrophe, "<" and ">").
    static lstd::String const mEscapseCharArr[5];
    /// The five characters that EscapeText replaces, paired by position with mEscapseCharArr.
    static lstd::String const mUnescapseCharArr[5];

    /// The text with "&", the double quote, "'", "<" and ">" replaced by their entities.
    static lstd::String EscapeText(lstd::String const& text);
    /// The text with the five entities replaced by their characters. Deliberate, kept for
    /// compatibility: "&amp;" is undone first and what it leaves is read again, so the
    /// ampersand entity followed by "lt;" gives "<". No other entity is recognised.
    static lstd::String UnescapeText(lstd::String const& text);
    /// The property as it stands in a tag, by the kind of its value: "%s=%d" (T_INT32),
    /// "%s=%u" (T_UINT32 and T_UINT64), "%s=%l" (T_INT64), "%s=%.6f" (both floats),
    /// "%s=\"%s\"" with the escaped text (T_STRING), "%d=\"\"" with the name as argument for
    /// an unset value. Kept as callers' files have it: numbers are bare, "%u" keeps the low 32
    /// bits, "%l" is an incomplete conversion (the C library prints the name and "=" only),
    /// and an unset value prints the name's address read as an int.
    static lstd::String PropertyToString(XMLProperty const& property);

    /// "<", name, one blank, the properties back to back, ">". A null set has no property.
    static lstd::String CreateOpenTagString(lstd::String const& name,
                                            lstd::PtrHashSet<XMLProperty> const* properties);
    /// "<", name, one blank, the properties back to back, "/>".
    static lstd::String CreateSingleTagString(lstd::String const& name,
                                              lstd::PtrHashSet<XMLProperty> const* properties);
    /// "</", name, ">".
    static lstd::String CreateCloseTagString(lstd::String const& name);
    /// The indentation (level tabs when indent is non-zero and level at least 1), the open
    /// tag, with newLine a line feed, the indentation and one tab (even without indent), the
    /// escaped text, with newLine a line feed and the indentation, the close tag.
    static lstd::String TextNodeToString(XMLTextNode const& node, unsigned char const& newLine,
                                         unsigned char const& indent, long const& level);
    /// The indentation; a node without children is its single tag. Otherwise the open tag,
    /// each child (after a line feed and this node's indentation when newLine is set) printed
    /// at level + 1 with its own indentation, then a line feed and the indentation (newLine),
    /// and the close tag. Deliberate, the required layout: a child line carries its parent's
    /// indentation and its own, (L - 1) + L tabs at level L >= 2. Children whose class
    /// overrides ToString are printed by it. Any depth is safe (no recursion).
    static lstd::String DataNodeToString(XMLDataNode const& node, unsigned char const& newLine,
                                         unsigned char const& indent, long const& level);

    /// Whether tag is not empty and begins with "/"; name (when not null) receives the rest.
    static bool IsCloseTagName(lstd::String const& tag, lstd::String* name);
    /// Whether tag is not empty and ends with "/"; inner (when not null) receives the rest.
    static bool IsSingleTagName(lstd::String const& tag, lstd::String* inner);
    /// TokenTagName, then TokenProperty on the rest. False, with properties untouched, when
    /// the tag has no name (only blanks).
    static bool SplitTagNameAndProperty(lstd::String const& tag, lstd::String& name,
                                        lstd::ValHashMap<lstd::String, lstd::String>& properties);
    /// The first run of non-blank bytes is the name; rest receives the text after the blank
    /// that ends it ("" when the name ends the tag). False when the tag holds only blanks.
    static bool TokenTagName(lstd::String const& tag, lstd::String& name, lstd::String& rest);
    /// Adds every property of a property text to properties (see the class comment).
    static void TokenProperty(lstd::String const& text,
                              lstd::ValHashMap<lstd::String, lstd::String>& properties);
    /// Reads the next property of text from position on: name and value (trimmed,
    /// unescaped) as in the class comment; position moves past it. False, nothing changed
    /// but position, when only blanks remain.
    static bool TokenPropTextForSeparator(lstd::String const& text, unsigned long& position,
                                          lstd::String& name, lstd::String& value);

private:
    // Text built in place: a String whose length is its room, of which the first Size()
    // bytes are written. Take() cuts the room off and hands the text over without a copy.
    // Running out of memory is lstd::NotEnoughMemoryException.
    class Sink {
    public:
        Sink() : mText(), mUsed(0), mBase(nullptr) {}
        void Put(char const* text, unsigned long const& length) {
            if (length > mText.GetLength() - mUsed)
                Grow(length);
            if (length != 0)
                std::memcpy(mBase + mUsed, text, length);
            mUsed += length;
        }
        void Put(char const c) {
            if (mUsed == mText.GetLength())
                Grow(1);
            mBase[mUsed++] = c;
        }
        void Put(char const* text) { Put(text, std::strlen(text)); }
        void Fill(char const c, unsigned long const& count);
        void Clear() { mUsed = 0; }
        char const* Data() const { return mBase; }
        unsigned long Size() const { return mUsed; }
        lstd::String Take();

    private:
        void Grow(unsigned long const& length);

        lstd::String mText;
        unsigned long mUsed;
        char* mBase;
    };

    // The cores behind the helpers above, on byte ranges, shared with the parser and the
    // writer so that they build no String where a position suffices.
    static bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }
    static void Trim(char const*& begin, char const*& end);
    static void AppendIndentation(Sink& out, unsigned char const& indent, long const& level);
    static void AppendEscaped(Sink& out, char const* text, unsigned long length);
    static void AppendUnescaped(Sink& out, char const* text, unsigned long length);
    static void AppendProperty(Sink& out, XMLProperty const& property);
    static void AppendProperties(Sink& out, lstd::PtrHashSet<XMLProperty> const* set);
    static void AppendTag(Sink& out, XMLNode const& node, char const* tail);
    static void AppendTextNode(Sink& out, XMLTextNode const& node, unsigned char const& newLine,
                               unsigned char const& indent, long const& level);
    static void AppendDataNode(Sink& out, XMLDataNode const& node, unsigned char const& newLine,
                               unsigned char const& indent, long const& level);
    // The node at level with its own layout: the built-in kinds directly, others by ToString.
    static void AppendNode(Sink& out, XMLNode const& node, unsigned char const& newLine,
                           unsigned char const& indent, long const& level);
    static lstd::String TagString(lstd::String const& name,
                                  lstd::PtrHashSet<XMLProperty> const* properties,
                                  char const* tail);
    // A new node appended to list (the children of a node, or a creator's nodes). Throws
    // lstd::NotEnoughMemoryException, and then nothing is appended.
    static XMLDataNode* AppendDataNode(lstd::PtrDLinkList<XMLNode>& list, lstd::String const& name);
    static XMLTextNode* AppendTextNode(lstd::PtrDLinkList<XMLNode>& list, lstd::String const& name);
    // [begin, end) with blanks skipped: nameEnd ends the name, rest is where properties begin.
    static bool CutTagName(char const*& begin, char const* end, char const*& nameEnd,
                           char const*& rest);
    // The next property from cursor: name [nameBegin, nameEnd), value [valueBegin, valueEnd)
    // trimmed, still escaped. False when only blanks remain.
    static bool CutProperty(char const*& cursor, char const* end, char const*& nameBegin,
                            char const*& nameEnd, char const*& valueBegin, char const*& valueEnd);

    friend class XMLDataNode;
    friend class XMLParser;
    friend class XMLCreator;
};
}  // namespace lxml
#endif  // LXML_XML_H
