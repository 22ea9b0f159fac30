// An XML document read whole into memory as a tree of elements: the way the ADMX and ADML
// template readers take their files in. Only what those readers need is kept: element names as
// written (a prefix stays part of the name), attributes, the character data directly inside an
// element, and where each element starts, so that a reader can name the place of what it
// refuses. Comments, processing instructions and the document type declaration are passed
// over (Windows refuses a document type declaration, as its reader would expand the entities
// declared there; templates carry none). Character references and the five predefined entities are expanded; no other entity
// is, so a document cannot grow beyond its own size.
//
// Linux reads with pugixml; Windows with the system's XML reader (XmlLite). Both give the same
// tree and the same positions.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/ozStatus.h"

struct ozXmlAttribute {
    std::string name;
    std::string value;
};

struct ozXmlElement {
    // The name as written, with any namespace prefix ("policy", "xs:element").
    std::string name;
    std::vector<ozXmlAttribute> attributes;
    // The text and CDATA sections directly inside the element, joined; whitespace-only runs
    // between child elements are left out, line ends are "\n".
    std::string text;
    std::vector<ozXmlElement> children;
    // Where the start tag's "<" stands: line and column, 1-based, counted in characters of the
    // document as stored (a UTF-16 file counts its own characters too).
    unsigned line = 0;
    unsigned column = 0;

    // The attribute's value, or null without one.
    const std::string* Attribute(std::string_view attributeName) const;
    // The first child element of that name, or null.
    const ozXmlElement* Child(std::string_view childName) const;
};

// The deepest nesting of elements a document may have; deeper documents are refused.
inline constexpr unsigned ozXmlMaximumDepth = 256;

// Reads the document in bytes (UTF-8, with or without a byte-order mark, or UTF-16 little or
// big endian with its byte-order mark) into root, the document element. Texts and attribute
// values are in the narrow encoding (UTF-8 on Linux, the ANSI code page on Windows). Fails
// for a document that is not well formed, one with no document element, or one nested deeper
// than ozXmlMaximumDepth: the status then has line and column set and a message of the form
//   line 12, column 5: <reason>
// and root is left empty. Never throws (out of memory is a failure too).
ozStatus ozReadXmlDocument(std::string_view bytes, ozXmlElement& root);
