// lxml/xml.cpp - escaping, tag and node text, tag analysis.
#include <lxml/xml.h>

#include <lstd/exception.h>
#include <lxml/xmldatanode.h>
#include <lxml/xmlnode.h>
#include <lxml/xmlproperty.h>
#include <lxml/xmltextnode.h>

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <new>
#include <typeinfo>
#include <vector>

namespace lxml {

lstd::String const XML::mEscapseCharArr[5] = {"&amp;", "&quot;", "&apos;", "&lt;", "&gt;"};
lstd::String const XML::mUnescapseCharArr[5] = {"&", "\"", "'", "<", ">"};

XML::XML() {}
XML::~XML() {}

namespace {
// The String that fill writes into a sink; running out of memory is
// NotEnoughMemoryException.
template <typename S, typename F>
lstd::String Build(F const& fill) {
    try {
        S out;
        fill(out);
        return out.Take();
    } catch (std::bad_alloc const& e) {
        LSTD_THROW(lstd::NotEnoughMemoryException, e.what());
    }
}

// Appends a new N made of args to list; NotEnoughMemoryException when that fails, and then
// nothing is appended.
template <typename N, typename... Args>
N* AppendNew(lstd::PtrDLinkList<XMLNode>& list, Args const&... args) {
    N* node;
    try {
        node = new N(args...);
    } catch (std::bad_alloc const& e) {
        LSTD_THROW(lstd::NotEnoughMemoryException, e.what());
    }
    try {
        list.Append(node);
    } catch (...) {
        delete node;
        throw;
    }
    return node;
}

// The character that an entity name (after its "&") at [p, end) stands for, and its length
// with the ";"; 0 when none of the four single-character entities begins there.
unsigned long MatchEntity(char const* p, char const* end, char& c) {
    unsigned long const left = static_cast<unsigned long>(end - p);
    if (left >= 3 && p[1] == 't' && p[2] == ';') {
        if (p[0] == 'l') {
            c = '<';
            return 3;
        }
        if (p[0] == 'g') {
            c = '>';
            return 3;
        }
    }
    if (left >= 5) {
        if (std::memcmp(p, "quot;", 5) == 0) {
            c = '"';
            return 5;
        }
        if (std::memcmp(p, "apos;", 5) == 0) {
            c = '\'';
            return 5;
        }
    }
    return 0;
}

// Whether a byte is one of the five that escaping replaces.
struct Specials {
    Specials() : is() {
        is[static_cast<unsigned char>('&')] = is[static_cast<unsigned char>('"')] = true;
        is[static_cast<unsigned char>('\'')] = is[static_cast<unsigned char>('<')] = true;
        is[static_cast<unsigned char>('>')] = true;
    }
    bool is[256];
};
Specials const kSpecials;
}  // namespace

// ---- cores ----------------------------------------------------------------------------------

void XML::Sink::Grow(unsigned long const& length) {
    unsigned long room = mText.GetLength() * 2;
    if (room < mUsed + length)
        room = mUsed + length;
    if (room < 64)
        room = 64;
    mText.Resize(room);
    mBase = &mText[0];
}

void XML::AppendIndentation(Sink& out, unsigned char const& indent, long const& level) {
    if (indent != 0 && level >= 1)
        out.Fill('\t', static_cast<unsigned long>(level));
}

void XML::Sink::Fill(char const c, unsigned long const& count) {
    if (count > mText.GetLength() - mUsed)
        Grow(count);
    std::memset(mBase + mUsed, c, count);
    mUsed += count;
}

lstd::String XML::Sink::Take() {
    mText.Resize(mUsed);
    lstd::String text(static_cast<lstd::String&&>(mText));
    mText.Clear();
    mUsed = 0;
    mBase = nullptr;
    return text;
}

void XML::Trim(char const*& begin, char const*& end) {
    while (begin < end && IsBlank(*begin))
        ++begin;
    while (end > begin && IsBlank(end[-1]))
        --end;
}

void XML::AppendEscaped(Sink& out, char const* text, unsigned long length) {
    char const* const end = text + length;
    char const* run = text;
    for (char const* p = text; p < end; ++p) {
        if (!kSpecials.is[static_cast<unsigned char>(*p)])
            continue;
        out.Put(run, static_cast<unsigned long>(p - run));
        switch (*p) {
        case '&':
            out.Put("&amp;", 5);
            break;
        case '"':
            out.Put("&quot;", 6);
            break;
        case '\'':
            out.Put("&apos;", 6);
            break;
        case '<':
            out.Put("&lt;", 4);
            break;
        default:
            out.Put("&gt;", 4);
            break;
        }
        run = p + 1;
    }
    out.Put(run, static_cast<unsigned long>(end - run));
}

// One pass that gives what the five replacements in table order give. "&amp;" is undone
// first, over the whole text, and each ampersand it leaves may begin one of the later four
// entities with the bytes that follow it. Those four never overlap one another and their
// results (one character each, none of "&" or ";") cannot form a new entity, so they need
// no order among themselves.
void XML::AppendUnescaped(Sink& out, char const* text, unsigned long length) {
    char const* p = text;
    char const* const end = text + length;
    while (p < end) {
        char const* amp =
            static_cast<char const*>(std::memchr(p, '&', static_cast<unsigned long>(end - p)));
        if (amp == nullptr) {
            out.Put(p, static_cast<unsigned long>(end - p));
            return;
        }
        out.Put(p, static_cast<unsigned long>(amp - p));
        p = amp + 1;
        if (end - p >= 4 && std::memcmp(p, "amp;", 4) == 0)
            p += 4;  // the "&" left by "&amp;" is read as the start of an entity below
        char c;
        unsigned long const used = MatchEntity(p, end, c);
        if (used == 0) {
            out.Put('&');
        } else {
            out.Put(c);
            p += used;
        }
    }
}

void XML::AppendProperty(Sink& out, XMLProperty const& property) {
    // "%s" stops at the first NUL, so the name and the text go up to theirs.
    char const* name = property.GetStdChar();
    char number[512];  // "%.6f" of the largest double takes 316 bytes
    XMLPropValue const& value = property.mValue;
    switch (value.GetType()) {
    case XMLPropValue::T_INT32:
        // "%d" reads an int where a long was passed: on this platform, its low 32 bits.
        std::snprintf(number, sizeof number, "%d", static_cast<int>(value.GetInt32Value()));
        break;
    case XMLPropValue::T_UINT32:
        std::snprintf(number, sizeof number, "%u",
                      static_cast<unsigned int>(value.GetUInt32Value()));
        break;
    case XMLPropValue::T_INT64: {
        // Deliberate: the format is incomplete and is handed to the C library as it is.
        static lstd::String const format("%s=%l");
        lstd::String const text = lstd::String::SSprintf(format, name, value.GetInt64Value());
        out.Put(text.GetStdChar(), text.GetLength());
        return;
    }
    case XMLPropValue::T_UINT64:
        std::snprintf(number, sizeof number, "%u",
                      static_cast<unsigned int>(value.GetUInt64Value()));
        break;
    case XMLPropValue::T_FLOAT32:
        std::snprintf(number, sizeof number, "%.6f", static_cast<double>(value.GetFloat32Value()));
        break;
    case XMLPropValue::T_FLOAT64:
        std::snprintf(number, sizeof number, "%.6f", value.GetFloat64Value());
        break;
    case XMLPropValue::T_STRING: {
        out.Put(name);
        out.Put("=\"");
        char const* text = value.GetStringValue().GetStdChar();
        AppendEscaped(out, text, std::strlen(text));
        out.Put('"');
        return;
    }
    default:
        // Deliberate: "%d=\"\"" with the name as its argument prints the name's address
        // read as an int (its low 32 bits) in place of the name.
        std::snprintf(number, sizeof number, "%d=\"\"",
                      static_cast<int>(reinterpret_cast<std::uintptr_t>(name)));
        out.Put(number);
        return;
    }
    out.Put(name);
    out.Put('=');
    out.Put(number);
}

void XML::AppendProperties(Sink& out, lstd::PtrHashSet<XMLProperty> const* set) {
    if (set == nullptr || set->GetNumberOfEntry() == 0)
        return;
    lstd::PtrHashSetIterator<XMLProperty> it(*set);
    while (++it)
        AppendProperty(out, *it.Get());
}

// The open tag (tail ">") or the single tag (tail "/>") of node.
void XML::AppendTag(Sink& out, XMLNode const& node, char const* tail) {
    out.Put('<');
    out.Put(node.GetStdChar(), node.GetLength());
    out.Put(' ');
    if (node.mInSet == 1) {
        AppendProperties(out, &node.mPropertySet);
    } else {
        for (unsigned int i = 0; i < node.mCompactCount; ++i)
            AppendProperty(out, *node.mCompact[i]);
    }
    out.Put(tail);
}

void XML::AppendTextNode(Sink& out, XMLTextNode const& node, unsigned char const& newLine,
                         unsigned char const& indent, long const& level) {
    AppendIndentation(out, indent, level);
    AppendTag(out, node, ">");
    if (newLine != 0) {
        out.Put('\n');
        AppendIndentation(out, indent, level);
        out.Put('\t');  // deliberate: also without indent
    }
    AppendEscaped(out, node.GetText().GetStdChar(), node.GetText().GetLength());
    if (newLine != 0) {
        out.Put('\n');
        AppendIndentation(out, indent, level);
    }
    out.Put("</");
    out.Put(node.GetStdChar(), node.GetLength());
    out.Put('>');
}

void XML::AppendNode(Sink& out, XMLNode const& node, unsigned char const& newLine,
                     unsigned char const& indent, long const& level) {
    std::type_info const& type = typeid(node);
    if (type == typeid(XMLDataNode)) {
        AppendDataNode(out, static_cast<XMLDataNode const&>(node), newLine, indent, level);
    } else if (type == typeid(XMLTextNode)) {
        AppendTextNode(out, static_cast<XMLTextNode const&>(node), newLine, indent, level);
    } else {
        lstd::String const text = node.ToString(newLine, indent, level);
        out.Put(text.GetStdChar(), text.GetLength());
    }
}

void XML::AppendDataNode(Sink& out, XMLDataNode const& node, unsigned char const& newLine,
                         unsigned char const& indent, long const& level) {
    struct Frame {
        XMLDataNode const* node;
        lstd::PtrDoubleLink<XMLNode> const* next;  // the next child to print
        long level;
    };
    std::vector<Frame> open;
    // Prints the start of data node at depth: its single tag, or its open tag and a frame
    // for its children.
    auto start = [&](XMLDataNode const& data, long depth) {
        AppendIndentation(out, indent, depth);
        lstd::PtrDoubleLink<XMLNode> const* first = data.GetSubNodeList().GetHead();
        if (first == nullptr) {
            AppendTag(out, data, "/>");
            return;
        }
        AppendTag(out, data, ">");
        open.push_back(Frame{&data, first, depth});
    };
    start(node, level);
    while (!open.empty()) {
        Frame& frame = open.back();
        long const depth = frame.level;
        if (frame.next == nullptr) {
            if (newLine != 0) {
                out.Put('\n');
                AppendIndentation(out, indent, depth);
            }
            out.Put("</");
            out.Put(frame.node->GetStdChar(), frame.node->GetLength());
            out.Put('>');
            open.pop_back();
            continue;
        }
        XMLNode const* child = frame.next->mItem;
        frame.next = frame.next->mNext;
        if (newLine != 0) {
            out.Put('\n');
            AppendIndentation(out, indent, depth);
        }
        if (child == nullptr)
            continue;
        if (typeid(*child) == typeid(XMLDataNode))
            start(static_cast<XMLDataNode const&>(*child), depth + 1);  // frame may move
        else
            AppendNode(out, *child, newLine, indent, depth + 1);
    }
}

bool XML::CutTagName(char const*& begin, char const* end, char const*& nameEnd, char const*& rest) {
    while (begin < end && IsBlank(*begin))
        ++begin;
    if (begin == end)
        return false;
    nameEnd = begin;
    while (nameEnd < end && !IsBlank(*nameEnd))
        ++nameEnd;
    rest = nameEnd < end ? nameEnd + 1 : end;
    return true;
}

bool XML::CutProperty(char const*& cursor, char const* end, char const*& nameBegin,
                      char const*& nameEnd, char const*& valueBegin, char const*& valueEnd) {
    char const* p = cursor;
    while (p < end && IsBlank(*p))
        ++p;
    if (p == end) {
        cursor = p;
        return false;
    }
    nameBegin = p;
    while (p < end && *p != '=' && !IsBlank(*p))
        ++p;
    nameEnd = p;
    while (p < end && IsBlank(*p))
        ++p;
    if (p == end || *p != '=') {
        valueBegin = valueEnd = nameEnd;
        cursor = p;
        return true;
    }
    ++p;
    while (p < end && IsBlank(*p))
        ++p;
    if (p < end && (*p == '"' || *p == '\'')) {
        valueBegin = p + 1;
        char const* close = static_cast<char const*>(
            std::memchr(valueBegin, *p, static_cast<unsigned long>(end - valueBegin)));
        valueEnd = close != nullptr ? close : end;
        cursor = close != nullptr ? close + 1 : end;
    } else {
        valueBegin = p;
        while (p < end && !IsBlank(*p))
            ++p;
        valueEnd = p;
        cursor = p;
    }
    Trim(valueBegin, valueEnd);
    return true;
}

// ---- String helpers -------------------------------------------------------------------------

XMLDataNode* XML::AppendDataNode(lstd::PtrDLinkList<XMLNode>& list, lstd::String const& name) {
    return AppendNew<XMLDataNode>(list, name);
}

XMLTextNode* XML::AppendTextNode(lstd::PtrDLinkList<XMLNode>& list, lstd::String const& name) {
    return AppendNew<XMLTextNode>(list, name, lstd::String());
}

lstd::String XML::EscapeText(lstd::String const& text) {
    return Build<Sink>(
        [&text](Sink& out) { AppendEscaped(out, text.GetStdChar(), text.GetLength()); });
}

lstd::String XML::UnescapeText(lstd::String const& text) {
    if (std::memchr(text.GetStdChar(), '&', text.GetLength()) == nullptr)
        return text;
    return Build<Sink>(
        [&text](Sink& out) { AppendUnescaped(out, text.GetStdChar(), text.GetLength()); });
}

lstd::String XML::PropertyToString(XMLProperty const& property) {
    return Build<Sink>([&property](Sink& out) { AppendProperty(out, property); });
}

lstd::String XML::TagString(lstd::String const& name,
                            lstd::PtrHashSet<XMLProperty> const* properties, char const* tail) {
    return Build<Sink>([&](Sink& out) {
        out.Put('<');
        out.Put(name.GetStdChar(), name.GetLength());
        out.Put(' ');
        AppendProperties(out, properties);
        out.Put(tail);
    });
}

lstd::String XML::CreateOpenTagString(lstd::String const& name,
                                      lstd::PtrHashSet<XMLProperty> const* properties) {
    return TagString(name, properties, ">");
}

lstd::String XML::CreateSingleTagString(lstd::String const& name,
                                        lstd::PtrHashSet<XMLProperty> const* properties) {
    return TagString(name, properties, "/>");
}

lstd::String XML::CreateCloseTagString(lstd::String const& name) { return "</" + name + ">"; }

lstd::String XML::TextNodeToString(XMLTextNode const& node, unsigned char const& newLine,
                                   unsigned char const& indent, long const& level) {
    return Build<Sink>([&](Sink& out) { AppendTextNode(out, node, newLine, indent, level); });
}

lstd::String XML::DataNodeToString(XMLDataNode const& node, unsigned char const& newLine,
                                   unsigned char const& indent, long const& level) {
    return Build<Sink>([&](Sink& out) { AppendDataNode(out, node, newLine, indent, level); });
}

bool XML::IsCloseTagName(lstd::String const& tag, lstd::String* name) {
    if (tag.IsNull() || tag.GetStdChar()[0] != '/')
        return false;
    if (name != nullptr)
        *name = tag.GetSubString(1, -1);
    return true;
}

bool XML::IsSingleTagName(lstd::String const& tag, lstd::String* inner) {
    if (tag.IsNull() || tag.GetStdChar()[tag.GetLength() - 1] != '/')
        return false;
    if (inner != nullptr)
        *inner = lstd::String(tag.GetStdChar(), tag.GetLength() - 1);
    return true;
}

bool XML::TokenTagName(lstd::String const& tag, lstd::String& name, lstd::String& rest) {
    char const* begin = tag.GetStdChar();
    char const* const end = begin + tag.GetLength();
    char const* nameEnd;
    char const* after;
    if (!CutTagName(begin, end, nameEnd, after))
        return false;
    name = lstd::String(begin, static_cast<unsigned long>(nameEnd - begin));
    rest = lstd::String(after, static_cast<unsigned long>(end - after));
    return true;
}

bool XML::TokenPropTextForSeparator(lstd::String const& text, unsigned long& position,
                                    lstd::String& name, lstd::String& value) {
    char const* const base = text.GetStdChar();
    char const* const end = base + text.GetLength();
    char const* cursor = base + (position < text.GetLength() ? position : text.GetLength());
    char const *nameBegin, *nameEnd, *valueBegin, *valueEnd;
    bool const found = CutProperty(cursor, end, nameBegin, nameEnd, valueBegin, valueEnd);
    position = static_cast<unsigned long>(cursor - base);
    if (!found)
        return false;
    name = lstd::String(nameBegin, static_cast<unsigned long>(nameEnd - nameBegin));
    value =
        UnescapeText(lstd::String(valueBegin, static_cast<unsigned long>(valueEnd - valueBegin)));
    return true;
}

void XML::TokenProperty(lstd::String const& text,
                        lstd::ValHashMap<lstd::String, lstd::String>& properties) {
    unsigned long position = 0;
    lstd::String name;
    lstd::String value;
    while (TokenPropTextForSeparator(text, position, name, value))
        if (!name.IsNull())
            properties.Append(name, value);
}

bool XML::SplitTagNameAndProperty(lstd::String const& tag, lstd::String& name,
                                  lstd::ValHashMap<lstd::String, lstd::String>& properties) {
    lstd::String rest;
    if (!TokenTagName(tag, name, rest))
        return false;
    TokenProperty(rest, properties);
    return true;
}
}  // namespace lxml
