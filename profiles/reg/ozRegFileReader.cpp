#include "ozRegFileReader.h"

#include "core/registry/ozHexDigit.h"
#include "ozRegRootNames.h"
#include "platform/ozAsciiCase.h"

namespace {

bool IsBlank(WCHAR c)
{
    return c == ' ' || c == '\t';
}

bool IsLineEnd(WCHAR c)
{
    return c == '\r' || c == '\n';
}

void TrimBlanks(ozWideString& text)
{
    while (!text.empty() && IsBlank(text.back()))
        text.pop_back();
}

}  // namespace

bool ozRegFileReader::Fail(unsigned long line, std::string problem)
{
    m_failure = ozStatus::Error(std::move(problem), 0, static_cast<unsigned>(line));
    return false;
}

WCHAR ozRegFileReader::Peek(size_t ahead) const
{
    size_t at = m_at + ahead;
    return at < m_text->size() ? (*m_text)[at] : WCHAR{0};
}

bool ozRegFileReader::AtLineEnd() const
{
    return AtEnd() || IsLineEnd(Peek());
}

void ozRegFileReader::SkipBlanks()
{
    while (!AtEnd() && IsBlank(Peek()))
        ++m_at;
}

void ozRegFileReader::SkipLineEnd()
{
    if (AtEnd())
        return;
    if (Peek() == '\r' && Peek(1) == '\n')
        ++m_at;
    ++m_at;
    ++m_currentLine;
}

void ozRegFileReader::SkipRestOfLine()
{
    while (!AtLineEnd())
        ++m_at;
}

bool ozRegFileReader::SkipContinuation()
{
    // A backslash followed by nothing but blanks up to the line end joins the next line.
    if (Peek() != '\\')
        return false;
    size_t ahead = 1;
    while (IsBlank(Peek(ahead)))
        ++ahead;
    if (m_at + ahead >= m_text->size() || !IsLineEnd(Peek(ahead)))
        return false;
    m_at += ahead;
    SkipLineEnd();
    return true;
}

bool ozRegFileReader::TakeWord(const char* word)
{
    size_t length = 0;
    for (; word[length] != '\0'; ++length) {
        WCHAR c = Peek(length);
        if (ozAsciiLower(c) != static_cast<WCHAR>(word[length]))
            return false;
    }
    m_at += length;
    return true;
}

ozStatus ozRegFileReader::Read(const ozWideString& text, const Sink& sink)
{
    m_text = &text;
    m_at = 0;
    m_currentLine = 1;
    m_inSection = false;
    m_failure = ozStatus::Ok();
    // Some writers pad a file with zero characters at its end; anywhere else one is an error.
    size_t end = text.size();
    while (end > 0 && text[end - 1] == 0)
        --end;
    unsigned long line = 1;
    for (size_t at = 0; at < end; ++at) {
        if (text[at] == '\n' || (text[at] == '\r' && (at + 1 >= end || text[at + 1] != '\n')))
            ++line;
        if (text[at] == 0) {
            Fail(line, "the file holds a zero character");
            return m_failure;
        }
    }
    ozWideString trimmed = text.substr(0, end);
    m_text = &trimmed;

    bool read = ReadHeader();
    while (read) {
        SkipBlanks();
        if (AtEnd())
            break;
        WCHAR c = Peek();
        if (IsLineEnd(c)) {
            SkipLineEnd();
        } else if (c == ';') {
            SkipRestOfLine();
        } else if (c == '[') {
            read = ReadSection(sink);
        } else if (c == '"' || c == '@') {
            read = ReadValue(sink);
        } else {
            read = Fail(m_currentLine,
                        "expected a [key] section, a value, a ';' comment or a blank line");
        }
    }
    m_text = nullptr;
    return read ? ozStatus::Ok() : m_failure;
}

bool ozRegFileReader::ReadHeader()
{
    size_t start = m_at;
    SkipRestOfLine();
    ozWideString header = m_text->substr(start, m_at - start);
    TrimBlanks(header);
    if (ozRegEqualsAscii(header, "Windows Registry Editor Version 5.00"))
        m_version5 = true;
    else if (ozRegEqualsAscii(header, "REGEDIT4"))
        m_version5 = false;
    else
        return Fail(1,
                    "the first line is neither \"Windows Registry Editor Version 5.00\" nor "
                    "\"REGEDIT4\"");
    SkipLineEnd();
    return true;
}

bool ozRegFileReader::ReadSection(const Sink& sink)
{
    unsigned long line = m_currentLine;
    size_t lineEnd = m_at;
    while (lineEnd < m_text->size() && !IsLineEnd((*m_text)[lineEnd]))
        ++lineEnd;
    // The last ']' of the line closes the section: key names may hold ']' themselves.
    size_t close = m_text->rfind(']', lineEnd == 0 ? 0 : lineEnd - 1);
    if (close == ozWideString::npos || close < m_at)
        return Fail(line, "the key section has no closing ']'");
    ozWideString inside = m_text->substr(m_at + 1, close - m_at - 1);
    m_at = close + 1;
    if (!FinishStatement("the key section"))
        return false;

    ozRegFileEntry entry;
    entry.line = line;
    entry.kind = ozRegFileEntry::Kind::Key;
    if (!inside.empty() && inside[0] == '-') {
        entry.kind = ozRegFileEntry::Kind::DeletedKey;
        inside.erase(0, 1);
    }
    size_t separator = inside.find('\\');
    ozWideString rootName = inside.substr(0, separator);
    ozWideString path =
        separator == ozWideString::npos ? ozWideString() : inside.substr(separator + 1);
    if (!ozRegRootNumber(rootName, entry.root))
        return Fail(line, "\"" + ozRegModelFromWide(rootName.data(), rootName.size()) +
                              "\" is not a predefined key");
    while (!path.empty() && path.back() == '\\')
        path.pop_back();
    if (path.find(ozRegAscii("\\\\")) != ozWideString::npos || (!path.empty() && path[0] == '\\'))
        return Fail(line, "the key path has an empty key name");
    if (path.empty()) {
        if (entry.kind == ozRegFileEntry::Kind::DeletedKey)
            return Fail(line, "a predefined key cannot be deleted");
        // Values directly below a predefined key have no key to go to; the section is read
        // and values in it are refused.
        m_inSection = true;
        m_root = entry.root;
        m_keyPath.clear();
        return true;
    }
    entry.keyPath = ozRegModelFromWide(path.data(), path.size());
    m_inSection = true;
    m_root = entry.root;
    m_keyPath = entry.keyPath;
    return Deliver(sink, entry);
}

bool ozRegFileReader::ReadValue(const Sink& sink)
{
    ozRegFileEntry entry;
    entry.line = m_currentLine;
    entry.kind = ozRegFileEntry::Kind::Value;
    if (!m_inSection)
        return Fail(entry.line, "a value before the first key section");
    if (m_keyPath.empty())
        return Fail(entry.line, "a value directly below a predefined key");
    entry.root = m_root;
    entry.keyPath = m_keyPath;
    if (Peek() == '@')
        ++m_at;
    else if (!ReadQuoted(entry.name))
        return false;
    SkipBlanks();
    if (Peek() != '=')
        return Fail(m_currentLine, "expected '=' after the value name");
    ++m_at;
    SkipBlanks();
    if (Peek() == '"') {
        entry.form = ozRegFileEntry::Form::String;
        entry.type = 1;
        if (!ReadQuoted(entry.data))
            return false;
    } else if (Peek() == '-') {
        ++m_at;
        entry.kind = ozRegFileEntry::Kind::DeletedValue;
    } else if (TakeWord("dword:")) {
        if (!ReadNumber(entry))
            return false;
    } else if (TakeWord("hex")) {
        if (!ReadHexList(entry))
            return false;
    } else {
        return Fail(m_currentLine,
                    "unknown value data: expected a quoted string, -, dword:, hex: or hex(n):");
    }
    return FinishStatement("the value") && Deliver(sink, entry);
}

bool ozRegFileReader::ReadQuoted(std::string& text)
{
    unsigned long startLine = m_currentLine;
    ++m_at;  // the opening quote
    ozWideString wide;
    for (;;) {
        if (AtEnd())
            return Fail(startLine, "the quoted text starting on this line has no closing quote");
        WCHAR c = Peek();
        if (c == '"') {
            ++m_at;
            break;
        }
        if (c == '\\' && (Peek(1) == '\\' || Peek(1) == '"')) {
            wide.push_back(Peek(1));
            m_at += 2;
        } else if (IsLineEnd(c)) {
            // Quoted text may run over line ends, which then belong to it.
            size_t start = m_at;
            SkipLineEnd();
            wide.append(*m_text, start, m_at - start);
        } else {
            // Any other backslash stands for itself, as in paths written without escapes.
            wide.push_back(c);
            ++m_at;
        }
    }
    text = ozRegModelFromWide(wide.data(), wide.size());
    return true;
}

bool ozRegFileReader::ReadNumber(ozRegFileEntry& entry)
{
    entry.form = ozRegFileEntry::Form::Number;
    entry.type = 4;
    unsigned long long number = 0;
    size_t digits = 0;
    for (int digit; (digit = ozHexDigitValue(Peek())) >= 0; ++m_at, ++digits) {
        number = number * 16 + static_cast<unsigned>(digit);
        if (number > 0xFFFFFFFFull)
            return Fail(m_currentLine, "the dword number does not fit 32 bits");
    }
    if (digits == 0)
        return Fail(m_currentLine, "dword: needs a hexadecimal number");
    entry.number = static_cast<unsigned long>(number);
    return true;
}

bool ozRegFileReader::ReadHexList(ozRegFileEntry& entry)
{
    entry.form = ozRegFileEntry::Form::Bytes;
    entry.type = 3;
    if (Peek() == '(') {
        ++m_at;
        unsigned long long type = 0;
        size_t digits = 0;
        for (int digit; (digit = ozHexDigitValue(Peek())) >= 0; ++m_at, ++digits) {
            type = type * 16 + static_cast<unsigned>(digit);
            if (type > 0xFFFFFFFFull)
                return Fail(m_currentLine, "the type of hex(n) does not fit 32 bits");
        }
        if (digits == 0 || Peek() != ')')
            return Fail(m_currentLine, "hex( needs a hexadecimal type and a closing ')'");
        ++m_at;
        entry.type = static_cast<unsigned long>(type);
    }
    if (Peek() != ':')
        return Fail(m_currentLine, "expected ':' after hex or hex(n)");
    ++m_at;

    std::string bytes;
    auto skipSpace = [this] {
        do
            SkipBlanks();
        while (SkipContinuation());
    };
    for (;;) {
        skipSpace();
        int high = ozHexDigitValue(Peek());
        if (high < 0)
            break;
        ++m_at;
        int low = ozHexDigitValue(Peek());
        int byte = high;
        if (low >= 0) {
            ++m_at;
            byte = high * 16 + low;
            if (ozHexDigitValue(Peek()) >= 0)
                return Fail(m_currentLine, "a byte of the hex list has more than two digits");
        }
        bytes.push_back(static_cast<char>(byte));
        skipSpace();
        if (Peek() != ',')
            break;
        ++m_at;
    }

    bool text = entry.type == 1 || entry.type == 2 || entry.type == 7;
    if (text && m_version5) {
        // Text data of a version 5.00 file is UTF-16LE; the model holds narrow text.
        if (bytes.size() % 2 != 0)
            return Fail(entry.line,
                        "text data given as hex must have an even number of bytes (UTF-16)");
        ozWideString units;
        for (size_t at = 0; at < bytes.size(); at += 2)
            units.push_back(static_cast<WCHAR>(static_cast<unsigned char>(bytes[at]) |
                                               static_cast<unsigned char>(bytes[at + 1]) << 8));
        bytes = ozRegModelFromWide(units.data(), units.size());
    }
    entry.data = std::move(bytes);
    return true;
}

bool ozRegFileReader::FinishStatement(const char* what)
{
    SkipBlanks();
    if (Peek() == ';')
        SkipRestOfLine();
    if (!AtLineEnd())
        return Fail(m_currentLine, std::string("unexpected text after ") + what);
    SkipLineEnd();
    return true;
}

bool ozRegFileReader::Deliver(const Sink& sink, const ozRegFileEntry& entry)
{
    if (ozStatus taken = sink(entry); !taken)
        return Fail(entry.line, taken.Message());
    return true;
}
