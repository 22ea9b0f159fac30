#include "ozPolFormat.h"

namespace {

constexpr std::uint32_t kVersion = 1;
constexpr char kSignature[] = "PReg";

// Reads the file front to back; every read checks the bytes left first, so that no length
// field can make it read beyond the end.
class Cursor {
public:
    explicit Cursor(std::string_view bytes) : m_bytes(bytes) {}

    // Why reading failed.
    const ozStatus& Failure() const { return m_failure; }

    std::size_t Position() const { return m_position; }
    bool AtEnd() const { return m_position == m_bytes.size(); }
    std::size_t Left() const { return m_bytes.size() - m_position; }

    bool Fail(std::size_t offset, const std::string& what)
    {
        m_failure = ozPolErrorAt(offset, what);
        return false;
    }

    // The next UTF-16 unit; false at the end (a lone last byte counts as the end).
    bool Unit(char16_t& unit)
    {
        if (Left() < 2)
            return false;
        unit = static_cast<char16_t>(Byte(m_position) | Byte(m_position + 1) << 8);
        m_position += 2;
        return true;
    }

    bool Number(std::uint32_t& number)
    {
        if (Left() < 4)
            return false;
        number = 0;
        for (int i = 3; i >= 0; --i)
            number = number << 8 | Byte(m_position + static_cast<std::size_t>(i));
        m_position += 4;
        return true;
    }

    // The punctuation character c as one UTF-16 unit; what names the place in the message.
    bool Expect(char16_t c, const char* what)
    {
        std::size_t at = m_position;
        char16_t unit = 0;
        if (!Unit(unit))
            return Fail(at, std::string("the file ends where ") + what + " should stand");
        if (unit != c)
            return Fail(at, std::string("expected ") + what);
        return true;
    }

    // Zero-terminated text up to, not including, its terminator. The terminator is found
    // first, so that the text is filled in one go.
    bool Text(std::u16string& text, const char* what)
    {
        std::size_t start = m_position;
        std::size_t end = start;
        while (end + 1 < m_bytes.size() && (m_bytes[end] != 0 || m_bytes[end + 1] != 0))
            end += 2;
        if (end + 1 >= m_bytes.size())
            return Fail(start, std::string("the ") + what + " has no terminating zero");
        text.resize((end - start) / 2);
        for (std::size_t i = 0; i < text.size(); ++i)
            text[i] = static_cast<char16_t>(Byte(start + 2 * i) | Byte(start + 2 * i + 1) << 8);
        m_position = end + 2;
        return true;
    }

    bool Data(std::string& data, std::uint32_t size)
    {
        if (size > Left())
            return Fail(m_position, "the data size " + std::to_string(size) + " runs " +
                                        std::to_string(size - Left()) +
                                        " bytes beyond the end of the file");
        data.assign(m_bytes.substr(m_position, size));
        m_position += size;
        return true;
    }

private:
    std::uint32_t Byte(std::size_t at) const { return static_cast<unsigned char>(m_bytes[at]); }

    std::string_view m_bytes;
    std::size_t m_position = 0;
    ozStatus m_failure;
};

bool ReadHeader(Cursor& cursor)
{
    std::uint32_t signature = 0;
    std::uint32_t version = 0;
    if (!cursor.Number(signature))
        return cursor.Fail(0, "the file is too short for the \"PReg\" header");
    std::uint32_t expected = 0;
    for (int i = 3; i >= 0; --i)
        expected = expected << 8 | static_cast<unsigned char>(kSignature[i]);
    if (signature != expected)
        return cursor.Fail(0, "the file does not begin with \"PReg\"");
    if (!cursor.Number(version))
        return cursor.Fail(4, "the file ends inside the header's version");
    if (version != kVersion)
        return cursor.Fail(
            4, "unsupported version " + std::to_string(version) + " (only version 1 is read)");
    return true;
}

bool ReadRecord(Cursor& cursor, ozPolRecord& record)
{
    record.offset = cursor.Position();
    if (!cursor.Expect(u'[', "'[' opening a record") || !cursor.Text(record.key, "key path") ||
        !cursor.Expect(u';', "';' after the key path") || !cursor.Text(record.name, "value name") ||
        !cursor.Expect(u';', "';' after the value name"))
        return false;
    std::size_t at = cursor.Position();
    if (!cursor.Number(record.type))
        return cursor.Fail(at, "the file ends inside the value type");
    if (!cursor.Expect(u';', "';' after the value type"))
        return false;
    at = cursor.Position();
    std::uint32_t size = 0;
    if (!cursor.Number(size))
        return cursor.Fail(at, "the file ends inside the data size");
    if (!cursor.Expect(u';', "';' after the data size"))
        return false;
    at = cursor.Position();
    if (!cursor.Data(record.data, size))
        return false;
    if (ozPolIsTextType(record.type) && size % 2 != 0)
        return cursor.Fail(at, "text data of type " + std::to_string(record.type) + " has " +
                                   std::to_string(size) +
                                   " bytes, which is not a whole number of UTF-16 characters");
    return cursor.Expect(u']', "']' closing the record");
}

void AppendNumber(std::string& out, std::uint32_t number)
{
    for (int i = 0; i < 4; ++i)
        out.push_back(static_cast<char>(number >> (8 * i) & 0xFF));
}

void AppendUnit(std::string& out, char16_t unit)
{
    out.push_back(static_cast<char>(unit & 0xFF));
    out.push_back(static_cast<char>(unit >> 8));
}

void AppendText(std::string& out, const std::u16string& text)
{
    for (char16_t unit : text)
        AppendUnit(out, unit);
    AppendUnit(out, 0);
}

}  // namespace

bool ozPolIsTextType(std::uint32_t type)
{
    return type == 1 || type == 2 || type == 7;
}

ozStatus ozPolErrorAt(std::size_t offset, const std::string& what)
{
    return ozStatus::Error("byte " + std::to_string(offset) + ": " + what);
}

ozStatus ozForEachPolRecord(std::string_view bytes, const ozPolVisitor& visit)
{
    Cursor cursor(bytes);
    if (!ReadHeader(cursor))
        return cursor.Failure();
    ozPolRecord record;
    while (!cursor.AtEnd()) {
        if (!ReadRecord(cursor, record))
            return cursor.Failure();
        if (ozStatus visited = visit(record); !visited)
            return visited;
    }
    return ozStatus::Ok();
}

ozStatus ozReadPolRecords(std::string_view bytes, std::vector<ozPolRecord>& records)
{
    return ozForEachPolRecord(bytes, [&records](const ozPolRecord& record) {
        records.push_back(record);
        return ozStatus::Ok();
    });
}

std::string ozPolHeader()
{
    std::string header(kSignature, 4);
    AppendNumber(header, kVersion);
    return header;
}

void ozAppendPolRecord(std::string& out, const ozPolRecord& record)
{
    AppendUnit(out, u'[');
    AppendText(out, record.key);
    AppendUnit(out, u';');
    AppendText(out, record.name);
    AppendUnit(out, u';');
    AppendNumber(out, record.type);
    AppendUnit(out, u';');
    AppendNumber(out, static_cast<std::uint32_t>(record.data.size()));
    AppendUnit(out, u';');
    out += record.data;
    AppendUnit(out, u']');
}
