#include "platform/ozConsoleStreams.h"

#include <windows.h>

#include <iostream>
#include <streambuf>
#include <string>

#include "platform/ozTextConversion.h"

namespace {

// A stream buffer that collects narrow text and writes it to a standard handle: as UTF-16 to
// a console, as UTF-8 with CR LF line ends to anything else. Text is written at each flush
// (std::cerr flushes after every output, std::cout at std::endl, std::flush and the program's end)
// and when the collected text grows long; a double-byte character is never split between two
// writes.
class ConsoleStreamBuffer final : public std::streambuf {
public:
    explicit ConsoleStreamBuffer(DWORD standardHandle) : m_handle(GetStdHandle(standardHandle))
    {
        DWORD mode = 0;
        m_console = m_handle != nullptr && m_handle != INVALID_HANDLE_VALUE &&
                    GetConsoleMode(m_handle, &mode) != 0;
    }

protected:
    int_type overflow(int_type c) override
    {
        if (!traits_type::eq_int_type(c, traits_type::eof())) {
            m_pending += traits_type::to_char_type(c);
            if (m_pending.size() >= kWriteSize)
                Write(false);
        }
        return traits_type::not_eof(c);
    }

    std::streamsize xsputn(const char* text, std::streamsize count) override
    {
        m_pending.append(text, static_cast<size_t>(count));
        if (m_pending.size() >= kWriteSize)
            Write(false);
        return count;
    }

    int sync() override { return Write(true) ? 0 : -1; }

private:
    static constexpr size_t kWriteSize = 4096;

    // Writes the collected text; without `all`, a lead byte at its end waits for its trail.
    bool Write(bool all)
    {
        size_t complete = all ? m_pending.size() : CompleteLength();
        std::string text = m_pending.substr(0, complete);
        m_pending.erase(0, complete);
        if (text.empty())
            return true;
        if (m_console) {
            std::basic_string<WCHAR> wide = ozWideText(text.c_str());
            return WriteAll(wide, [this](const WCHAR* units, DWORD count, DWORD* written) {
                return WriteConsoleW(m_handle, units, count, written, nullptr) != 0;
            });
        }
        // Line ends as the C runtime's text mode writes them.
        std::string utf8;
        for (char c : ozUtf8FromNarrow(text)) {
            if (c == '\n')
                utf8 += '\r';
            utf8 += c;
        }
        return WriteAll(utf8, [this](const char* bytes, DWORD count, DWORD* written) {
            return WriteFile(m_handle, bytes, count, written, nullptr) != 0;
        });
    }

    // Hands `text` to `write` in pieces until all of it is written or a write fails.
    template <class Unit, class WriteUnits>
    static bool WriteAll(const std::basic_string<Unit>& text, WriteUnits write)
    {
        const Unit* next = text.data();
        for (size_t left = text.size(); left > 0;) {
            DWORD written = 0;
            DWORD piece = static_cast<DWORD>(left < 16384 ? left : 16384);
            if (!write(next, piece, &written) || written == 0)
                return false;
            next += written;
            left -= written;
        }
        return true;
    }

    // The length of the collected text without a lead byte at its end.
    size_t CompleteLength() const
    {
        size_t at = 0;
        while (at < m_pending.size())
            at += IsDBCSLeadByte(static_cast<BYTE>(m_pending[at])) ? 2 : 1;
        return at > m_pending.size() ? m_pending.size() - 1 : m_pending.size();
    }

    HANDLE m_handle;
    bool m_console = false;
    std::string m_pending;
};

// The rearranged streams; at the program's end they are flushed and get their buffers back
// before the standard library flushes them a last time.
class ConsoleStreams {
public:
    ConsoleStreams()
        : m_outBuffer(STD_OUTPUT_HANDLE),
          m_errorBuffer(STD_ERROR_HANDLE),
          m_outOriginal(std::cout.rdbuf(&m_outBuffer)),
          m_errorOriginal(std::cerr.rdbuf(&m_errorBuffer))
    {
    }
    ~ConsoleStreams()
    {
        std::cout.flush();
        std::cerr.flush();
        std::cout.rdbuf(m_outOriginal);
        std::cerr.rdbuf(m_errorOriginal);
    }
    ConsoleStreams(const ConsoleStreams&) = delete;
    ConsoleStreams& operator=(const ConsoleStreams&) = delete;

private:
    ConsoleStreamBuffer m_outBuffer;
    ConsoleStreamBuffer m_errorBuffer;
    std::streambuf* m_outOriginal;
    std::streambuf* m_errorOriginal;
};

}  // namespace

void ozUseConsoleStreams()
{
    static ConsoleStreams streams;
}
