// The XML document reader of the Windows build, over the system's XmlLite. The cross toolchain
// has no import library for it, so xmllite.dll is loaded on first use and kept. XmlLite reads
// a UTF-8 document (a UTF-16 one is brought to UTF-8 first) and reports the line and column of
// every node; texts come as UTF-16 and are brought to the ANSI code page.
#include "platform/ozXmlDocument.h"

#include <windows.h>

#include <objidl.h>
#include <shlwapi.h>
#include <xmllite.h>

#include <algorithm>
#include <cstring>
#include <new>
#include <utility>

#include "platform/ozTextConversion.h"

namespace {

using CreateXmlReaderFunction = HRESULT(WINAPI*)(REFIID, void**, IMalloc*);

// The reader's factory from xmllite.dll, loaded once; null when the system has none.
CreateXmlReaderFunction ReaderFactory()
{
    static const CreateXmlReaderFunction factory = [] {
        HMODULE library = LoadLibraryW(L"xmllite.dll");
        return library != nullptr
                   ? reinterpret_cast<CreateXmlReaderFunction>(
                         reinterpret_cast<void*>(GetProcAddress(library, "CreateXmlReader")))
                   : nullptr;
    }();
    return factory;
}

// Releases a COM interface when it goes.
template <class Interface>
class Held {
public:
    Held() = default;
    ~Held()
    {
        if (m_pointer != nullptr)
            m_pointer->Release();
    }
    Held(const Held&) = delete;
    Held& operator=(const Held&) = delete;
    Interface* operator->() const { return m_pointer; }
    Interface* get() const { return m_pointer; }
    Interface** out() { return &m_pointer; }

private:
    Interface* m_pointer = nullptr;
};

// What a failure code of the reader means, in the words a template author understands.
const char* Reason(HRESULT code)
{
    switch (static_cast<unsigned long>(code)) {
        case MX_E_INPUTEND:
            return "the document ends early";
        case MX_E_ENCODING:
        case MX_E_ENCODINGSWITCH:
        case MX_E_ENCODINGSIGNATURE:
        case WC_E_ENCNAME:
            return "the text encoding cannot be read";
        case WC_E_ELEMENTMATCH:
            return "the end tag does not match the start tag";
        case WC_E_GREATERTHAN:
            return "'>' expected";
        case WC_E_QUOTE:
            return "quotation mark expected";
        case WC_E_EQUAL:
            return "'=' expected";
        case WC_E_LESSTHAN:
            return "'<' inside an attribute value";
        case WC_E_UNIQUEATTRIBUTE:
            return "an attribute given twice";
        case WC_E_ROOTELEMENT:
        case WC_E_MOREDATA:
            return "more than one document element";
        case WC_E_SEMICOLON:
        case WC_E_UNDECLAREDENTITY:
        case WC_E_ENTITYCONTENT:
            return "an entity reference that cannot be expanded";
        case WC_E_XMLCHARACTER:
        case WC_E_NAMECHARACTER:
        case WC_E_NAME:
            return "a character not allowed here";
        case WC_E_DTDPROHIBITED:
            return "a document type declaration";
        case NC_E_UNDECLAREDPREFIX:
            return "a namespace prefix that is not declared";
        default:
            return "the document is not well-formed XML";
    }
}

// A UTF-16 document (by its byte-order mark) as UTF-8, which every XmlLite reads alike: Wine's
// misreads UTF-16 documents longer than its read buffer. The declared encoding becomes "utf-8",
// blank-padded to as many characters, so that places on the first line stay where they were. Any
// other document is returned as it is; false for UTF-16 of an odd length.
bool AsUtf8(std::string_view bytes, std::string& utf8)
{
    bool little = bytes.substr(0, 2) == "\xFF\xFE";
    if (!little && bytes.substr(0, 2) != "\xFE\xFF") {
        utf8.assign(bytes);
        return true;
    }
    if (bytes.size() % 2 != 0)
        return false;
    std::wstring wide(bytes.size() / 2 - 1, L'\0');
    for (size_t unit = 0; unit < wide.size(); ++unit) {
        auto first = static_cast<unsigned char>(bytes[2 + 2 * unit]);
        auto second = static_cast<unsigned char>(bytes[3 + 2 * unit]);
        wide[unit] = static_cast<wchar_t>(little ? first | second << 8 : second | first << 8);
    }
    int size = WideCharToMultiByte(CP_UTF8, 0, wide.data(), static_cast<int>(wide.size()), nullptr,
                                   0, nullptr, nullptr);
    utf8.assign(static_cast<size_t>(size), '\0');
    WideCharToMultiByte(CP_UTF8, 0, wide.data(), static_cast<int>(wide.size()), utf8.data(), size,
                        nullptr, nullptr);
    if (utf8.rfind("<?xml", 0) == 0) {
        size_t end = utf8.find("?>");
        size_t name = utf8.find("encoding", 0);
        size_t value = name < end ? utf8.find_first_of("\"'", name) : std::string::npos;
        size_t close = value < end ? utf8.find(utf8[value], value + 1) : std::string::npos;
        // The closing quote moves in, blanks (allowed inside the declaration) fill the rest.
        if (close < end && close - value > 5) {
            std::string declared = "utf-8" + std::string(1, utf8[value]);
            declared.resize(close - value, ' ');
            utf8.replace(value + 1, close - value, declared);
        }
    }
    return true;
}

ozStatus Failure(unsigned line, unsigned column, const std::string& reason)
{
    return ozStatus::Error(
        "line " + std::to_string(line) + ", column " + std::to_string(column) + ": " + reason, 0,
        line, column);
}

// Reads node after node into the tree, keeping the path of open elements.
class TreeBuilder {
public:
    // firstLineShift: characters put before the document's first line, taken off the columns
    // of that line.
    TreeBuilder(IXmlReader& reader, unsigned firstLineShift)
        : m_reader(reader), m_firstLineShift(firstLineShift)
    {
    }

    ozStatus Build(ozXmlElement& root)
    {
        XmlNodeType type = XmlNodeType_None;
        HRESULT read;
        bool rootSeen = false;
        while ((read = m_reader.Read(&type)) == S_OK) {
            if (type == XmlNodeType_Element) {
                ozXmlElement* element = &root;
                if (rootSeen) {
                    m_open.back()->children.emplace_back();
                    element = &m_open.back()->children.back();
                }
                rootSeen = true;
                ozStatus begun = Begin(*element);
                if (!begun)
                    return begun;
            } else if (type == XmlNodeType_EndElement) {
                if (!m_open.empty())
                    m_open.pop_back();
            } else if ((type == XmlNodeType_Text || type == XmlNodeType_CDATA) && !m_open.empty()) {
                m_open.back()->text += Value();
            }
        }
        // A reader that has read nothing places its failure at 0, 0: the start.
        unsigned line = std::max(Line(), 1u);
        unsigned column = std::max(Column(), 1u);
        if (read != S_FALSE)
            return Failure(line, column, Reason(read));
        if (!rootSeen)
            return Failure(line, column, "no document element");
        return ozStatus::Ok();
    }

private:
    // The element just read: its place, name and attributes; opened unless written empty.
    ozStatus Begin(ozXmlElement& element)
    {
        element.line = Line();
        // The reader places an element at its name; the "<" stands before it.
        element.column = Column() > 1 ? Column() - 1 : 1;
        if (m_open.size() + 1 > ozXmlMaximumDepth)
            return Failure(element.line, element.column,
                           "elements nested deeper than " + std::to_string(ozXmlMaximumDepth));
        element.name = Name();
        bool empty = m_reader.IsEmptyElement() != FALSE;
        for (HRESULT more = m_reader.MoveToFirstAttribute(); more == S_OK;
             more = m_reader.MoveToNextAttribute()) {
            // Not every XmlLite refuses an attribute given twice (Wine's does not).
            std::string name = Name();
            if (element.Attribute(name) != nullptr)
                return Failure(element.line, element.column, "attribute " + name + " given twice");
            element.attributes.push_back({std::move(name), Value()});
        }
        if (!empty)
            m_open.push_back(&element);
        return ozStatus::Ok();
    }

    std::string Name()
    {
        const WCHAR* name = nullptr;
        UINT length = 0;
        if (FAILED(m_reader.GetQualifiedName(&name, &length)) || name == nullptr)
            return {};
        return ozNarrowText(name, length);
    }

    std::string Value()
    {
        const WCHAR* value = nullptr;
        UINT length = 0;
        if (FAILED(m_reader.GetValue(&value, &length)) || value == nullptr)
            return {};
        return ozNarrowText(value, length);
    }

    unsigned Line()
    {
        UINT line = 0;
        return SUCCEEDED(m_reader.GetLineNumber(&line)) ? line : 0;
    }

    unsigned Column()
    {
        UINT column = 0;
        if (FAILED(m_reader.GetLinePosition(&column)))
            return 0;
        if (Line() == 1)
            column = column > m_firstLineShift ? column - m_firstLineShift : 1;
        return column;
    }

    IXmlReader& m_reader;
    unsigned m_firstLineShift;
    // The elements whose end tag is still to come; each lives in its parent's children, which
    // do not grow while it is open (children are added only to the innermost open element).
    std::vector<ozXmlElement*> m_open;
};

}  // namespace

ozStatus ozReadXmlDocument(std::string_view bytes, ozXmlElement& root)
{
    root = ozXmlElement();
    try {
        CreateXmlReaderFunction create = ReaderFactory();
        if (create == nullptr)
            return ozStatus::Error("the system's XML reader (xmllite.dll) cannot be loaded");
        std::string utf8;
        if (!AsUtf8(bytes, utf8))
            return Failure(1, 1, "UTF-16 text of an odd number of bytes");
        // Wine's XmlLite finds no document element behind white space that no XML declaration
        // precedes (ADML files of real templates begin so); a declaration put first mends it.
        unsigned firstLineShift = 0;
        if (!utf8.empty() && std::strchr(" \t\r\n", utf8[0]) != nullptr) {
            static constexpr std::string_view declaration = "<?xml version=\"1.0\"?>";
            utf8.insert(0, declaration);
            firstLineShift = static_cast<unsigned>(declaration.size());
        }
        Held<IStream> stream;
        *stream.out() = SHCreateMemStream(reinterpret_cast<const BYTE*>(utf8.data()),
                                          static_cast<UINT>(utf8.size()));
        Held<IXmlReader> reader;
        if (stream.get() == nullptr ||
            FAILED(create(__uuidof(IXmlReader), reinterpret_cast<void**>(reader.out()), nullptr)))
            return ozStatus::Error("out of memory reading the XML document");
        // The reader would expand the entities a document type declaration defines, letting a
        // small document grow without bound; templates carry none, so it is refused.
        reader->SetProperty(XmlReaderProperty_DtdProcessing, DtdProcessing_Prohibit);
        // Deeper than the limit the reader's own refusal would come first, with other words.
        reader->SetProperty(XmlReaderProperty_MaxElementDepth, ozXmlMaximumDepth + 1);
        if (FAILED(reader->SetInput(stream.get())))
            return ozStatus::Error("out of memory reading the XML document");
        ozStatus built = TreeBuilder(*reader.get(), firstLineShift).Build(root);
        if (!built)
            root = ozXmlElement();
        return built;
    } catch (const std::bad_alloc&) {
        root = ozXmlElement();
        return ozStatus::Error("out of memory reading the XML document");
    }
}
