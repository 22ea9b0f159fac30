// The engine's last error: its number, description and the place in a file where it happened,
// and the host's numbered message texts that error messages are made of. Process-wide, like
// the engine itself.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>

// The numbered texts of a string list.
class ozMessageList {
public:
    // Files a copy of text under code, replacing an earlier text.
    void Add(unsigned short code, const char* text);
    // The text under code, or the empty string; valid until the text is replaced.
    const char* Get(unsigned short code) const;

private:
    std::unordered_map<unsigned short, std::string> m_texts;
};

// Where an error happened: a file and, when known, a line and column (1-based; 0 unknown).
struct ozErrorPlace {
    std::string file;
    unsigned line = 0;
    unsigned column = 0;
};

// The line and column (1-based, the column counted in bytes) of offset in text.
ozErrorPlace ozPlaceInText(std::string_view file, std::string_view text, size_t offset);

// The last error. Actions set its number and description through the engine's error
// functions; the engine marks it failed, with the place, when a load fails.
class ozEngineError {
public:
    static ozEngineError& Instance();

    // Forgets the last error (number 0, no description, not failed).
    void Clear();
    void Code(int code) { m_code = code; }
    int Code() const { return m_code; }
    void Description(std::string_view description) { m_description = description; }
    const std::string& Description() const { return m_description; }
    // Marks the error as the reason a load failed, at place.
    void Fail(ozErrorPlace place);
    // Sets number and description and marks the error failed at place.
    void Fail(int code, std::string_view description, ozErrorPlace place);
    bool Failed() const { return m_failed; }

    // The string list the texts come from (not owned; null for none).
    void Messages(const ozMessageList* messages) { m_messages = messages; }
    bool UsesMessages(const ozMessageList* messages) const { return m_messages == messages; }
    // "FILE:LINE:COLUMN: error N: TEXT: DESCRIPTION", leaving out what is unknown or empty;
    // empty when nothing failed.
    const char* Message();

private:
    int m_code = 0;
    std::string m_description;
    ozErrorPlace m_place;
    bool m_failed = false;
    const ozMessageList* m_messages = nullptr;
    std::string m_message;
};
