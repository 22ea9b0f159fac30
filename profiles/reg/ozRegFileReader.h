// Reading the statements of a .reg file: the header line, key sections ("[KEY]", "[-KEY]") and
// values ("name"=data, @=data, "name"=-), with comments, blank lines, quoted text that runs
// over line ends and hex lists continued with a trailing backslash. The reader knows nothing of
// the registry model: it hands each statement, with its data already in the model's form, to a
// callback.
#pragma once

#include <functional>
#include <string>

#include "ozRegFileText.h"

// One statement of a .reg file.
struct ozRegFileEntry {
    enum class Kind {
        Key,           // [KEY]
        DeletedKey,    // [-KEY]
        Value,         // "name"=data; data and type below
        DeletedValue,  // "name"=-
    };
    // How a value's data was given.
    enum class Form {
        String,  // a quoted string: data is the narrow text without terminator
        Number,  // dword:...; number holds it
        Bytes,   // hex: or hex(n):; data holds the model's bytes for type
    };

    Kind kind = Kind::Key;
    unsigned long line = 0;
    // The root number of the section's predefined key and the path below it, in narrow text.
    unsigned int root = 0;
    std::string keyPath;
    // For values: the name ("" for @), the form, the registry type and the data.
    std::string name;
    Form form = Form::String;
    unsigned long type = 0;
    unsigned long number = 0;
    std::string data;
};

class ozRegFileReader {
public:
    // Receives each statement in file order; a failure stops the reading (the reader places
    // it at the statement's line).
    using Sink = std::function<ozStatus(const ozRegFileEntry& entry)>;

    // Reads a decoded file. Hex data of types 1, 2 and 7 is UTF-16 in a version 5.00 file and
    // narrow text in a REGEDIT4 file; either way the sink gets narrow text. Fails at the first
    // malformed statement or refusal of the sink, saying what, placed at its line.
    ozStatus Read(const ozWideString& text, const Sink& sink);

private:
    bool Fail(unsigned long line, std::string problem);
    bool ReadHeader();
    bool ReadSection(const Sink& sink);
    bool ReadValue(const Sink& sink);
    bool ReadQuoted(std::string& text);
    bool ReadNumber(ozRegFileEntry& entry);
    bool ReadHexList(ozRegFileEntry& entry);
    bool FinishStatement(const char* what);
    bool Deliver(const Sink& sink, const ozRegFileEntry& entry);

    bool AtEnd() const { return m_at >= m_text->size(); }
    WCHAR Peek(size_t ahead = 0) const;
    bool AtLineEnd() const;
    void SkipBlanks();
    void SkipLineEnd();
    void SkipRestOfLine();
    bool SkipContinuation();
    bool TakeWord(const char* word);

    const ozWideString* m_text = nullptr;
    size_t m_at = 0;
    unsigned long m_currentLine = 1;
    bool m_version5 = true;
    // The section values go to; none before the first section.
    bool m_inSection = false;
    unsigned int m_root = 0;
    std::string m_keyPath;
    ozStatus m_failure;
};
