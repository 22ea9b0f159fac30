// The XML document reader of the POSIX build, over pugixml. The document is brought to UTF-8
// first (UTF-16 files are common among templates), so that pugixml's offsets and our line and
// column count refer to one buffer.
#include "platform/ozXmlDocument.h"

#include <pugixml.hpp>

#include <algorithm>
#include <new>

#include "ozUtf8.h"

namespace {

// Lines and columns of offsets into a UTF-8 buffer.
class TextPositions {
public:
    explicit TextPositions(std::string_view text) : m_text(text)
    {
        m_lineStarts.push_back(0);
        for (size_t at = text.find('\n'); at != std::string_view::npos;
             at = text.find('\n', at + 1))
            m_lineStarts.push_back(at + 1);
    }

    // Offsets asked for in increasing order (the elements in document order) continue from
    // the last one, so that a document written on one long line is not counted again and
    // again.
    void Place(size_t offset, unsigned& line, unsigned& column)
    {
        offset = std::min(offset, m_text.size());
        auto after = std::upper_bound(m_lineStarts.begin(), m_lineStarts.end(), offset);
        size_t lineStart = *(after - 1);
        line = static_cast<unsigned>(after - m_lineStarts.begin());
        if (line != m_lastLine || offset < m_lastOffset) {
            m_lastLine = line;
            m_lastOffset = lineStart;
            m_lastColumn = 1;
        }
        // Characters, not bytes: continuation bytes do not start one.
        m_lastColumn += static_cast<unsigned>(std::count_if(
            m_text.begin() + m_lastOffset, m_text.begin() + offset,
            [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0) != 0x80; }));
        m_lastOffset = offset;
        column = m_lastColumn;
    }

private:
    std::string_view m_text;
    std::vector<size_t> m_lineStarts;
    unsigned m_lastLine = 0;
    size_t m_lastOffset = 0;
    unsigned m_lastColumn = 1;
};

ozStatus Failure(TextPositions& positions, size_t offset, const std::string& reason)
{
    unsigned line = 0;
    unsigned column = 0;
    positions.Place(offset, line, column);
    return ozStatus::Error(
        "line " + std::to_string(line) + ", column " + std::to_string(column) + ": " + reason, 0,
        line, column);
}

// The document as UTF-8 without a byte-order mark; false for UTF-16 of an odd length.
bool AsUtf8(std::string_view bytes, std::string& utf8)
{
    auto starts = [&](std::string_view mark) { return bytes.substr(0, mark.size()) == mark; };
    if (starts("\xEF\xBB\xBF")) {
        utf8.assign(bytes.substr(3));
        return true;
    }
    bool little = starts("\xFF\xFE");
    if (!little && !starts("\xFE\xFF")) {
        utf8.assign(bytes);
        return true;
    }
    bytes.remove_prefix(2);
    if (bytes.size() % 2 != 0)
        return false;
    std::u16string wide(bytes.size() / 2, u'\0');
    for (size_t unit = 0; unit < wide.size(); ++unit) {
        unsigned char first = static_cast<unsigned char>(bytes[2 * unit]);
        unsigned char second = static_cast<unsigned char>(bytes[2 * unit + 1]);
        wide[unit] = little ? static_cast<char16_t>(first | second << 8)
                            : static_cast<char16_t>(second | first << 8);
    }
    utf8 = ozEncodeUtf8(wide);
    return true;
}

class TreeCopy {
public:
    explicit TreeCopy(TextPositions& positions) : m_positions(positions) {}

    ozStatus Copy(const pugi::xml_node& from, ozXmlElement& to, unsigned depth)
    {
        ptrdiff_t nameOffset = from.offset_debug();
        // The offset is the name's; the "<" stands before it.
        size_t tagOffset = nameOffset > 0 ? static_cast<size_t>(nameOffset) - 1 : 0;
        if (depth > ozXmlMaximumDepth)
            return Failure(m_positions, tagOffset,
                           "elements nested deeper than " + std::to_string(ozXmlMaximumDepth));
        m_positions.Place(tagOffset, to.line, to.column);
        to.name = from.name();
        // pugixml keeps an attribute given twice; XML refuses it, as the Windows reader does.
        for (const pugi::xml_attribute& attribute : from.attributes()) {
            if (to.Attribute(attribute.name()) != nullptr)
                return Failure(m_positions, tagOffset,
                               std::string("attribute ") + attribute.name() + " given twice");
            to.attributes.push_back({attribute.name(), attribute.value()});
        }
        for (const pugi::xml_node& child : from.children()) {
            if (child.type() == pugi::node_pcdata || child.type() == pugi::node_cdata) {
                to.text += child.value();
            } else if (child.type() == pugi::node_element) {
                to.children.emplace_back();
                ozStatus copied = Copy(child, to.children.back(), depth + 1);
                if (!copied)
                    return copied;
            }
        }
        return ozStatus::Ok();
    }

private:
    TextPositions& m_positions;
};

}  // namespace

ozStatus ozReadXmlDocument(std::string_view bytes, ozXmlElement& root)
{
    root = ozXmlElement();
    try {
        std::string utf8;
        if (!AsUtf8(bytes, utf8))
            return ozStatus::Error("line 1, column 1: UTF-16 text of an odd number of bytes", 0, 1,
                                   1);
        TextPositions positions(utf8);
        pugi::xml_document document;
        pugi::xml_parse_result parsed = document.load_buffer(
            utf8.data(), utf8.size(), pugi::parse_default, pugi::encoding_utf8);
        if (!parsed)
            return Failure(positions, static_cast<size_t>(std::max<ptrdiff_t>(parsed.offset, 0)),
                           parsed.description());
        ozStatus copied = TreeCopy(positions).Copy(document.document_element(), root, 1);
        if (!copied)
            root = ozXmlElement();
        return copied;
    } catch (const std::bad_alloc&) {
        root = ozXmlElement();
        return ozStatus::Error("out of memory reading the XML document");
    }
}
