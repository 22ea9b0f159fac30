// The XML document reader of the Windows build, over the system's XmlLite. The cross toolchain
// has no import library for it, so xmllite.dll is loaded on first use and kept. XmlLite reads
// the byte-order mark itself and reports the line and column of every node; texts come as
// UTF-16 and are brought to the ANSI code page.
#include "platform/ozXmlDocument.h"

#include <windows.h>

#include <objidl.h>
#include <shlwapi.h>
#include <xmllite.h>

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

ozStatus Failure(unsigned line, unsigned column, const std::string& reason)
{
    return ozStatus::Error(
        "line " + std::to_string(line) + ", column " + std::to_string(column) + ": " + reason, 0,
        line, column);
}

// Reads node after node into the tree, keeping the path of open elements.
class TreeBuilder {
public:
    explicit TreeBuilder(IXmlReader& reader) : m_reader(reader) {}

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
        if (read != S_FALSE)
            return Failure(Line(), Column(), Reason(read));
        if (!rootSeen)
            return Failure(Line(), Column(), "no document element");
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
             more = m_reader.MoveToNextAttribute())
            element.attributes.push_back({Name(), Value()});
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
        return SUCCEEDED(m_reader.GetLinePosition(&column)) ? column : 0;
    }

    IXmlReader& m_reader;
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
        Held<IStream> stream;
        *stream.out() = SHCreateMemStream(reinterpret_cast<const BYTE*>(bytes.data()),
                                          static_cast<UINT>(bytes.size()));
        Held<IXmlReader> reader;
        if (stream.get() == nullptr ||
            FAILED(create(__uuidof(IXmlReader), reinterpret_cast<void**>(reader.out()), nullptr)))
            return ozStatus::Error("out of memory reading the XML document");
        // The reader would expand the entities a document type declaration defines, letting a
        // small document grow without bound; templates carry none, so it is refused.
        reader->SetProperty(XmlReaderProperty_DtdProcessing, DtdProcessing_Prohibit);
        if (FAILED(reader->SetInput(stream.get())))
            return ozStatus::Error("out of memory reading the XML document");
        ozStatus built = TreeBuilder(*reader.get()).Build(root);
        if (!built)
            root = ozXmlElement();
        return built;
    } catch (const std::bad_alloc&) {
        root = ozXmlElement();
        return ozStatus::Error("out of memory reading the XML document");
    }
}
