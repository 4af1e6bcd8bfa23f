// lkit.h - umbrella header of the lkit class library.
//
// Includes the version macros and every public header of the library.
// Copyright (c) 2026 The lkit developers. MIT licensed, see LICENSE.
#ifndef LKIT_H
#define LKIT_H

#include <lkit_version.h>

#include <lstd/exception.h>
#include <lstd/debug.h>
#include <lstd/collection.h>
#include <lstd/iptrcollection.h>
#include <lstd/iptrorderlist.h>
#include <lstd/ivalcollection.h>
#include <lstd/ivalorderlist.h>
#include <lstd/iterator.h>
#include <lstd/listiterator.h>
#include <lstd/iptrorderlistiterator.h>
#include <lstd/ivalorderlistiterator.h>
#include <lstd/ptrdlabstractlist.h>
#include <lstd/ptrdlinklist.h>
#include <lstd/valdlabstractlist.h>
#include <lstd/valdlinklist.h>
#include <lstd/valqueue.h>
#include <lstd/valsortlist.h>
#include <lstd/comparator.h>
#include <lstd/dlinkops.h>
#include <lstd/blockchain.h>
#include <lstd/memory.h>
#include <lstd/hashgenerator.h>
#include <lstd/string.h>
#include <lstd/stringbuilder.h>
#include <lstd/wstring.h>
#include <lstd/character.h>
#include <lstd/integer.h>
#include <lstd/array.h>
#include <lstd/parray.h>
#include <lstd/signal.h>
#include <lstd/system.h>
#include <lstd/console.h>
#include <lstd/hashindex.h>
#include <lstd/hashcollection.h>
#include <lstd/hashmap.h>
#include <lstd/ptrhashmap.h>
#include <lstd/valhashmap.h>
#include <lstd/tokenizer.h>
#include <lstd/enclosuretokenizer.h>
#include <lstd/circularbuffer.h>
#include <lstd/valmatrix.h>
#include <lstd/regexpr.h>
#include <lstd/time.h>
#include <lstd/date.h>
#include <lstd/timer.h>
#include <lstd/bitset.h>

#include <liop/iodevice.h>
#include <liop/inputstream.h>
#include <liop/outputstream.h>
#include <liop/iserializable.h>
#include <liop/serializable.h>
#include <liop/ipersistence.h>
#include <liop/ioexception.h>
#include <liop/file.h>
#include <liop/stringbuffer.h>
#include <liop/stringreadbuffer.h>
#include <liop/stringwritebuffer.h>
#include <liop/directory.h>
#include <liop/fileiterator.h>
#include <liop/inifile.h>
#include <liop/inifilekeyiterator.h>

#include <lxml/xml.h>
#include <lxml/xmlpropvalue.h>
#include <lxml/xmlproperty.h>
#include <lxml/xmlnode.h>
#include <lxml/xmldatanode.h>
#include <lxml/xmltextnode.h>
#include <lxml/xmlparser.h>
#include <lxml/xmlcreator.h>
#include <lxml/xmlfile.h>

#include <lmth/graph.h>
#include <lmth/adjacentlistgraph.h>
#include <lmth/matrixgraph.h>
#include <lmth/graphbsflistener.h>
#include <lmth/graphislandbsflistener.h>
#include <lmth/graphbsfexecutor.h>
#include <lmth/graphwriter.h>

#include <llog/logconfig.h>
#include <llog/logger.h>

/// \namespace lstd
/// Containers, byte strings, tokenizers, signals, exit handlers, clock and time.
/// \namespace liop
/// Files, directories, ini files and buffered text streams.
/// \namespace lxml
/// The XML model, its event-driven parser and its writer.
/// \namespace llog
/// The logger.
/// \namespace lmth
/// Graphs and their breadth-first traversal.

#endif // LKIT_H
